// SPDX-License-Identifier: MIT
#include "tests/exif/BlockCopy.h"

#include "tests/exif/tagLists.h"

#include <QFile>

#include <algorithm>
#include <iterator>

namespace lumi::test {

namespace {

constexpr int kPlaces[] = {0x8769, 0x8825, 0xA005, 0x0201};

ListCopy withoutPlaces(ListCopy list)
{
    for (TagCopy &tag : list) {
        if (std::find(std::begin(kPlaces), std::end(kPlaces), tag.tag) != std::end(kPlaces)) {
            tag.bytes.fill('\0');
        }
    }
    return list;
}

} // namespace

ListCopy copyOf(const ExifTagList &list)
{
    ListCopy copy;
    for (const FPVExifTag *tag : list) {
        copy.append({tag->tag(), tag->type(), tag->count(), bytesOf(tag)});
    }
    return copy;
}

QList<ListCopy> valuesOf(const FPVExifDocument &document)
{
    QList<ListCopy> lists;
    for (const ExifListKind kind : kAllLists) {
        lists.append(withoutPlaces(copyOf(document.list(kind))));
    }
    return lists;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray restOf(const QByteArray &file)
{
    return file.mid(4 + (quint8(file.at(4)) << 8 | quint8(file.at(5))));
}

QByteArray thumbnailBytes(FPVExifDocument &document)
{
    const bool found = document.hasThumbnail()
        && document.seek(qint64(document.tiffBase()) + document.thumbnailOffset());
    return found ? document.read(document.thumbnailLength()) : QByteArray();
}

} // namespace lumi::test
