// SPDX-License-Identifier: MIT
// A directory that can be asked whether it holds an entry of a kind without listing it: it is
// read entry by entry and only up to the first match, so that a page full of folders costs
// little.
#pragma once

#include <QDir>
#include <QString>

class FPVDirectory : public QDir
{
public:
    explicit FPVDirectory(const QString &path);

    /// Whether an entry matches. nameFilter: wildcards separated by ";", without regard to
    /// case. filterSpec: QDir::Filters bits; with Hidden, "." and ".." are passed over. An
    /// unreadable directory is reported to the log and holds nothing.
    [[nodiscard]] bool hasEntries(const QString &nameFilter, int filterSpec) const;
};
