// SPDX-License-Identifier: MIT
// A file or folder that was chosen for something that is done later. Cameras number alike, so
// that its path may lead to a photo of another card by then. Numbers of inodes don't tell: cards
// have none, and the system makes them up anew at each mount.
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

    /// True while its medium has not been missed, whatever has become of it there; else only if
    /// size and time are those of then, as on the same card that is in again.
    [[nodiscard]] bool isStillIt() const;

    /// One for each path. Those of one folder share its medium: ten thousand are cheap.
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
