// SPDX-License-Identifier: MIT
#include "items/FPVItemFolder.h"

#include "items/FPVDirectory.h"

FPVItemFolder::FPVItemFolder(const QString &path, const QString &displayName, bool checked)
    : FPVItemObject(path, displayName, checked)
{ }

int FPVItemFolder::itemKind() const
{
    return static_cast<int>(lumi::ItemKind::Folder);
}

int FPVItemFolder::kindFlag1() const
{
    return 1;
}

int FPVItemFolder::kindFlag2() const
{
    return 0;
}

bool FPVItemFolder::hasPictures() const
{
    return FPVDirectory(path()).hasEntries(QStringLiteral("*.jpg;*.jpeg"),
                                           QDir::Files | QDir::Readable | QDir::Hidden);
}
