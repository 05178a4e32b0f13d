// SPDX-License-Identifier: MIT
// The document reader on arbitrary bytes. Values must have the length of their type and count, and
// stay below the limit in all.
#include "exif/read/FPVExifDocument.h"
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/exifFormat.h"
#include "fuzz/FuzzInput.h"

#include <QImage>

#include <cstdlib>
#include <memory>

namespace {

/// The bytes of all values. Also makes the text of each value.
qint64 checkedSize(const lumi::ExifTagList &tags)
{
    qint64 sum = 0;
    for (const FPVExifTag *tag : tags) {
        const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tag);
        if (!bytes || bytes->size() != qint64(tag->count()) * typeSize(tag->type())) {
            std::abort();
        }
        sum += bytes->size();
        static_cast<void>(tag->text());
    }
    return sum;
}

} // namespace

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FPVExifDocument document(lumi::fuzz::inputFile(data, size, "photo.jpg"));
    qint64 sum = 0;
    for (int kind = 0; kind < 5; ++kind) {
        sum += checkedSize(document.list(static_cast<ExifListKind>(kind)));
    }
    const std::unique_ptr<QImage> image(document.thumbnail());
    if (sum > lumi::kLargestValueSum || (image && !document.hasThumbnail())) {
        std::abort();
    }
    return 0;
}
