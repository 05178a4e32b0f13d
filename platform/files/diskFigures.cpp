// SPDX-License-Identifier: MIT
#include "platform/files/diskFigures.h"

#include <QByteArrayList>

#include <limits>

#include <sys/vfs.h>

namespace {

constexpr qsizetype kNumbers = 3;

bool holds(const QByteArray &folder, const QByteArray &path)
{
    return path == folder || folder == "/" || path.startsWith(QByteArray(folder + '/'));
}

/// Counts of file systems are unsigned; ours are signed.
qint64 toSigned(quint64 count)
{
    return static_cast<qint64>(qMin(count, quint64(std::numeric_limits<qint64>::max())));
}

/// The numbers at the end of a line; the path before them may contain blanks.
DiskFigures figuresOf(const QByteArrayList &fields)
{
    const qsizetype first = fields.size() - kNumbers;
    DiskFigures figures;
    figures.blockSize = fields.at(first).toLongLong();
    figures.blocks = fields.at(first + 1).toLongLong();
    figures.available = fields.at(first + 2).toLongLong();
    figures.ok = figures.blockSize > 0;
    return figures;
}

} // namespace

DiskFigures lumi::statDisk(const QByteArray &path)
{
    struct statfs answer = {};
    if (path.isNull() || statfs(path.constData(), &answer) != 0) {
        return {};
    }
    return {static_cast<qint64>(answer.f_bsize), toSigned(answer.f_blocks),
            toSigned(answer.f_bavail), true};
}

std::optional<DiskFigures> lumi::findDiskFigures(const QByteArray &text, const QByteArray &path)
{
    std::optional<DiskFigures> found;
    qsizetype longest = -1;
    const QByteArrayList lines = text.split('\n');
    for (const QByteArray &line : lines) {
        const QByteArrayList fields = line.simplified().split(' ');
        if (fields.size() <= kNumbers) {
            continue;
        }
        const QByteArray folder = fields.first(fields.size() - kNumbers).join(' ');
        if (folder.size() > longest && holds(folder, path)) {
            longest = folder.size();
            found = figuresOf(fields);
        }
    }
    return found;
}
