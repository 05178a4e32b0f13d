// SPDX-License-Identifier: MIT
// The numbers of the browser form's menu entries, and the lines of dialogs that several of them open.
#pragma once

#include <QString>
#include <QStringList>
#include <QTest>

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

/// Adds a row for each entry that asks a question. The column "dialogs" has its question about
/// a00.jpg, and the message if all photos are gone before the answer.
inline void addQuestionsInVain()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QStringList>("dialogs");
    QTest::newRow("New Folder")
        << kNewFolder
        << QStringList{QStringLiteral("input New Folder: Enter the folder name: ''"),
                       QStringLiteral("critical Error: Folder cannot be created. OK*")};
    QTest::newRow("Rename") << kRename
                            << QStringList{QStringLiteral("input Change Name: Enter the new "
                                                          "folder name: 'a00'"),
                                           QStringLiteral("critical Error: Rename OK*")};
    QTest::newRow("Delete") << kDelete
                            << QStringList{QStringLiteral("warning Delete: a00.jpg will be "
                                                          "deleted. Are you sure? Yes/No*"),
                                           kWorking,
                                           QStringLiteral("critical Error: Deletion failed. OK*")};
    QTest::newRow("Delete Selected")
        << kDeleteChecked
        << QStringList{
               QStringLiteral("warning Delete Selected: Are you sure you want to delete "
                              "these photos? Yes/No*"),
               kWorking,
               QStringLiteral("critical Error: Part of the file could not be deleted. OK*")};
    QTest::newRow("Delete Empty Folder")
        << kDeleteEmpty
        << QStringList{QStringLiteral("warning Delete Empty Folder: Are you sure you want to "
                                      "delete this folder? Yes/No*"),
                       kWorking, QStringLiteral("critical Error: Folder deletion failed. OK*")};
}

} // namespace lumi::test
