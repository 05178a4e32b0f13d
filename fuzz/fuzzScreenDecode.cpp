// SPDX-License-Identifier: MIT
// A photo on its way to the screen, in one piece, at both depths, fitted and at full size.
#include "fuzz/FuzzInput.h"
#include "items/FPVItemJpeg.h"

#include <cstdlib>

namespace {

void decode(FPVItemJpeg *item, int depth, QSize *request)
{
    QSize size;
    const bool ok = item->startDecode(depth, &size, request);
    if (ok != (item->rasterBits() != nullptr)
        || ok != (item->errorCode() == lumi::DecodeError::None)) {
        std::abort();
    }
}

} // namespace

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FPVItemJpeg item(lumi::fuzz::inputFile(data, size, "photo.jpg"), QString(), false);
    item.setIncremental(false);
    QSize screen(64, 48);
    decode(&item, 16, &screen);
    decode(&item, 32, nullptr);
    return 0;
}
