// SPDX-License-Identifier: MIT
// The items of one folder in display order: folders first, then photos, each group by name. The
// only container of items in the program. A folder is reloaded in place.
// Owns: its items (clearing or destroying the list deletes them).
#pragma once

#include "app/common/Medium.h"
#include "items/FPVItemObject.h"
#include "platform/toolkit/PtrList.h"

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

    /// Lists the cleaned path. root, unless empty, becomes rootPath(). PathMissing changes neither
    /// items nor currentPath(). With RootMissing the user was told, once per process, and the
    /// application is about to end.
    lumi::ListResult load(const QString &path, const QString &root);
    /// A new item owned by the caller, or null for an entry that is not shown.
    [[nodiscard]] static FPVItemObject *makeItem(const QFileInfo &info);

    /// Absolute path of the medium's top folder.
    [[nodiscard]] QString rootPath() const { return m_rootPath; }

    /// Absolute path of the folder listed now.
    [[nodiscard]] QString currentPath() const { return m_currentPath; }

    /// The medium of that folder when it was listed.
    [[nodiscard]] const lumi::Medium &medium() const { return m_medium; }

    /// For tests: allows loads again after a missing root.
    static void resetRootMissing() { s_rootMissing = false; }

private:
    [[nodiscard]] lumi::ListResult reportMissingRoot();

    static bool s_rootMissing;
    QString m_rootPath;
    QString m_currentPath;
    lumi::Medium m_medium;
};
