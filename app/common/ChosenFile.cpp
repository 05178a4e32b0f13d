// SPDX-License-Identifier: MIT
#include "app/common/ChosenFile.h"

#include <QFile>

#include <utility>

#include <sys/stat.h>

namespace {

/// Cards store times in steps of two seconds. The system keeps finer times until the unmount.
constexpr qint64 kCardSeconds = 2;

} // namespace

lumi::ChosenFile::ChosenFile(const QString &path)
    : ChosenFile(path, std::make_shared<const Medium>(folderOf(path)))
{ }

lumi::ChosenFile::ChosenFile(const QString &path, std::shared_ptr<const Medium> medium)
    : m_path(path)
    , m_medium(std::move(medium))
    , m_figures(figuresOf(path))
{ }

QList<lumi::ChosenFile> lumi::ChosenFile::all(const QStringList &paths)
{
    QList<ChosenFile> files;
    files.reserve(paths.size());
    QString folder;
    for (const QString &path : paths) {
        const QString own = folderOf(path);
        if (files.isEmpty() || own != folder) {
            files.append(ChosenFile(path));
        } else {
            files.append(ChosenFile(path, files.last().m_medium));
        }
        folder = own;
    }
    return files;
}

bool lumi::ChosenFile::isStillIt() const
{
    return m_medium->isThere() || (m_figures && figuresOf(m_path) == m_figures);
}

QString lumi::ChosenFile::folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(QLatin1Char('/')));
}

std::optional<lumi::ChosenFile::Figures> lumi::ChosenFile::figuresOf(const QString &path)
{
    struct stat figures = {};
    if (::stat(QFile::encodeName(path).constData(), &figures) != 0) {
        return std::nullopt;
    }
    return Figures{qint64(figures.st_size), qint64(figures.st_mtim.tv_sec) / kCardSeconds};
}
