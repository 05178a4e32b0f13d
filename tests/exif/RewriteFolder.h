// SPDX-License-Identifier: MIT
// A folder whose photos can be rewritten: it lies on a machine with room on its disk, which is
// there as long as the folder.
#pragma once

#include "exif/write/FPVExifWriter.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/FakeMachine.h"

namespace lumi::test {

/// What a rewriting gives.
inline constexpr int kDone = 0;
inline constexpr int kNoRoom = 1;
inline constexpr int kFailed = 2;

class RewriteFolder : public PhotoFolder
{
public:
    RewriteFolder() { FakeMachine::install()->setFreeDiskKB(kFreeKB); }

    ~RewriteFolder() { Machine::install(nullptr); }

    RewriteFolder(const RewriteFolder &) = delete;
    RewriteFolder &operator=(const RewriteFolder &) = delete;

private:
    static constexpr int kFreeKB = 1000000;
};

/// Writes the photo anew without any change: the result of that.
[[nodiscard]] inline int rewritten(const QString &path)
{
    return FPVExifWriter(path).rewrite();
}

} // namespace lumi::test
