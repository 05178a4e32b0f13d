// SPDX-License-Identifier: MIT
// A photo of arbitrary bytes is read, written and read again: one that was refused is as it
// was; of the others the image data stay, the segment does not wrap, and the first directory
// stays unless a pointer left over leads to a directory among its values.
#include "exif/FPVExifWriter.h"
#include "fuzz/FuzzInput.h"

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
    const auto &first = writer.ifd0List();
    const bool isLeftOver = (writer.find(0x8769, first) && !writer.hasExifIfd())
        || (writer.find(0x8825, first) && !writer.hasGpsIfd());
    const bool isSame = isLeftOver || first.isEmpty() || flat(after.ifd0List()) == flat(first);
    const bool isWrapped = bytes.size() - rest.size() - 4 > 65535;
    const bool isRenewed = result == 0 && bytes.endsWith(rest) && !isWrapped
        && (first.isEmpty() || after.isValid()) && isSame;
    if (!isRenewed && (result != 2 || bytes != before)) {
        std::abort();
    }
    return 0;
}
