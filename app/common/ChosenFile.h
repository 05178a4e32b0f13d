// SPDX-License-Identifier: MIT
// A file or folder that the user chose and that is used later, such as a cut photo. All cameras
// number their photos in the same way, so after a card change its path may lead to another photo.
// Inode numbers don't help: FAT has none, and the system assigns new ones at each mount.
#pragma once

#include "app/common/Medium.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace lumi {

class ChosenFile
{
public:
    /// Chosen now.
    explicit ChosenFile(const QString &path);

    [[nodiscard]] const QString &path() const { return m_path; }

    /// True while its card or disk has been present all the time, even if the file has changed.
    /// If the card was out in between, true if the file has its old size and time.
    [[nodiscard]] bool isStillIt() const;

    /// One object for each path. Objects of one folder share its medium to save memory.
    [[nodiscard]] static QList<ChosenFile> all(const QStringList &paths);

private:
    struct Figures
    {
        bool operator==(const Figures &other) const = default;

        qint64 size;
        qint64 time; ///< of the last change, in the steps in which cards keep it
    };

    ChosenFile(const QString &path, std::shared_ptr<const Medium> medium);

    [[nodiscard]] static QString folderOf(const QString &path);
    /// None if it isn't there.
    [[nodiscard]] static std::optional<Figures> figuresOf(const QString &path);

    QString m_path;
    std::shared_ptr<const Medium> m_medium;
    std::optional<Figures> m_figures;
};

} // namespace lumi
