// SPDX-License-Identifier: MIT
// A photo of arbitrary bytes is read, written and read again: one that was refused is as it
// was; of the others the image data stay, and the first directory unless the segment wrapped,
// which only a thumbnail above 64 KB or a first directory from all over the file may cause.
#include "exif/FPVExifWriter.h"
#include "exif/exifBlockBytes.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cstdlib>

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto flat = [](const lumi::ExifTagList &list) {
        QString all;
        for (const FPVExifTag *tag : list) {
            const bool isPointer = tag->tag() == 0x8769 || tag->tag() == 0x8825;
            all += QString::number(tag->tag()) + (isPointer ? QString() : tag->text());
        }
        return all;
    };
    const QByteArray before(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    FPVExifWriter writer(lumi::fuzz::inputFile(data, size, "photo.jpg"));
    const int result = writer.rewrite();
    const FPVExifDocument after(writer.fileName());
    QFile photo(after.fileName());
    const QByteArray bytes = photo.open(QIODevice::ReadOnly) ? photo.readAll() : QByteArray();
    const QByteArray rest = before.mid(writer.app1Length() + 4);
    const bool mayWrap = writer.thumbnailLength() > 65518
        || int(lumi::ifdSize(writer.ifd0List())) > std::min(writer.app1Length(), 65518);
    const bool isWrapped = bytes.size() - rest.size() - 4 > 65535;
    if (isWrapped && !mayWrap) {
        std::abort();
    }
    const bool isRenewed = result == 0 && bytes.endsWith(rest)
        && (isWrapped || writer.ifd0List().isEmpty()
            || (after.isValid() && flat(after.ifd0List()) == flat(writer.ifd0List())));
    if (!isRenewed && (result != 2 || bytes != before)) {
        std::abort();
    }
    return 0;
}
