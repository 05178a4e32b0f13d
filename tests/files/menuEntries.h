// SPDX-License-Identifier: MIT
// The entries of the browser form's menus by their numbers, and the lines of the dialogs that more
// than one of them opens.
#pragma once

#include <QString>

namespace lumi::test {

inline constexpr int kNewFolder = 0;
inline constexpr int kRename = 1;
inline constexpr int kDelete = 2;
inline constexpr int kDeleteChecked = 3;
inline constexpr int kDeleteEmpty = 4;
inline constexpr int kCopy = 5;
inline constexpr int kCut = 6;
inline constexpr int kCopyChecked = 7;
inline constexpr int kCutChecked = 8;
inline constexpr int kPaste = 9;
inline constexpr int kCheckAll = 10;
inline constexpr int kReleaseCheck = 11;

inline const QString kWorking = QStringLiteral("wait Working...");
inline const QString kNotPasted = QStringLiteral("critical Error: It failed in sticking. OK*");

} // namespace lumi::test
