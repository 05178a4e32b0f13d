// SPDX-License-Identifier: MIT
// The thumbnail of a photo: its size, the embedded thumbnail, a reduced decode, scaling.
#include "fuzz/FuzzInput.h"
#include "items/FPVItemJpeg.h"

#include <QPixmap>

#include <cstdlib>
#include <memory>

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FPVItemJpeg item(lumi::fuzz::inputFile(data, size, "photo.jpg"), QString(), false);
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
    if (pixmap && (pixmap->width() > 174 || pixmap->height() > 123)) {
        std::abort();
    }
    return 0;
}
