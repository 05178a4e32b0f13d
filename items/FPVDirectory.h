// SPDX-License-Identifier: MIT
// A directory that can tell whether it has a certain entry without listing all of them. It is read
// up to the first match, so a page full of folders is cheap.
#pragma once

#include <QDir>
#include <QString>

class FPVDirectory : public QDir
{
public:
    explicit FPVDirectory(const QString &path);

    /// Whether an entry matches. nameFilter: wildcards separated by ";", case-insensitive.
    /// filterSpec: QDir::Filters bits; with Hidden, "." and ".." are skipped. An unreadable
    /// directory is reported to the log and counts as empty.
    [[nodiscard]] bool hasEntries(const QString &nameFilter, int filterSpec) const;
};
