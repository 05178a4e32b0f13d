// SPDX-License-Identifier: MIT
// A photo of arbitrary bytes is saved as the editor does it, which refuses a segment that is too
// long. A photo that was not saved must keep its bytes. A saved one must keep its image data and
// its first directory, and the length field of its segment must be right.
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "exif/write/FPVExifWriter.h"
#include "fuzz/FuzzInput.h"

#include <cstdlib>

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

namespace {

/// The numbers and texts of the tags, without those of pointers.
QString flat(const lumi::ExifTagList &list)
{
    QString all;
    for (const FPVExifTag *tag : list) {
        const bool isPointer
            = tag->tag() == lumi::kTagExifPointer || tag->tag() == lumi::kTagGpsPointer;
        all += QString::number(tag->tag()) + (isPointer ? QString() : tag->text());
    }
    return all;
}

QByteArray contentOf(const QString &path)
{
    QFile photo(path);
    return photo.open(QIODevice::ReadOnly) ? photo.readAll() : QByteArray();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray before(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    FPVExifWriter writer(lumi::fuzz::inputFile(data, size, "photo.jpg"));
    const qint64 length = writer.segmentLength();
    const int result = length <= lumi::kLongestSegment ? writer.rewrite() : 2;
    const QByteArray bytes = contentOf(writer.fileName());
    if (result != 0) {
        if (result != 2 || bytes != before) {
            std::abort();
        }
        return 0;
    }
    const FPVExifDocument after(writer.fileName());
    const bool isSame = flat(after.ifd0List()) == flat(writer.ifd0List());
    const QByteArray rest = before.mid(writer.app1Length() + lumi::kSegmentLengthPlace);
    // Without a first directory, other directories stand where the header says it is.
    const bool isRead = writer.ifd0List().isEmpty()
        || (after.isValid() && after.app1Length() == length && isSame);
    if (bytes.mid(static_cast<qsizetype>(length) + lumi::kSegmentLengthPlace) != rest || !isRead) {
        std::abort();
    }
    return 0;
}
