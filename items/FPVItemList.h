// SPDX-License-Identifier: MIT
// The items of one folder, in the order in which they are shown: folders first, then photos,
// each group by name. The one container of items in the program; reloading a folder reloads
// the list in place.
// Owns: its items (clearing or destroying the list deletes them).
#pragma once

#include "app/common/Medium.h"
#include "items/FPVItemObject.h"
#include "platform/toolkit/PtrList.h"

#include <QObject>
#include <QString>

class QFileInfo;

namespace lumi {

enum class ListResult : int { Listed = 0, PathMissing = 1, RootMissing = 4 };

} // namespace lumi

class FPVItemList : public PtrList<FPVItemObject>
{
public:
    FPVItemList();
    /// Loads at once.
    FPVItemList(const QString &path, const QString &root);

    /// Lists the cleaned path. root, unless empty, becomes rootPath(). PathMissing leaves items and
    /// currentPath() as they were. RootMissing has told the user, once for the process, and is
    /// ending the application.
    lumi::ListResult load(const QString &path, const QString &root);
    /// A new item owned by the caller, or null for an entry that is not shown.
    [[nodiscard]] static FPVItemObject *makeItem(const QFileInfo &info);

    /// Absolute path of the medium's top folder.
    [[nodiscard]] QString rootPath() const { return m_rootPath; }

    /// Absolute path of the folder listed now.
    [[nodiscard]] QString currentPath() const { return m_currentPath; }

    /// What that folder was on when it was listed.
    [[nodiscard]] const lumi::Medium &medium() const { return m_medium; }

    /// Goes with the list: for those who let events in while they hold it.
    [[nodiscard]] QObject *life() { return &m_life; }

    /// Lets loads run again after a root had gone; only tests outlive that.
    static void resetRootMissing() { s_rootMissing = false; }

private:
    [[nodiscard]] lumi::ListResult reportMissingRoot();

    static bool s_rootMissing;
    QString m_rootPath;
    QString m_currentPath;
    lumi::Medium m_medium;
    QObject m_life;
};
