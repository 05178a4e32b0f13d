// SPDX-License-Identifier: MIT
// A photo is decoded for the screen at both depths, fitted and at full size: first in one piece,
// then in pieces and slices as in the viewer. Both ways must have the same result.
#include "fuzz/FuzzInput.h"
#include "items/FPVItemJpeg.h"

#include <algorithm>
#include <cstdlib>

namespace {

using lumi::DecodeError;

void check(bool ok)
{
    if (!ok) {
        std::abort();
    }
}

void decodeAtOnce(FPVItemJpeg *item, int depth, QSize *size, QSize *request)
{
    item->setIncremental(false);
    const bool ok = item->startDecode(depth, size, request);
    check(ok == (item->rasterBits() != nullptr));
    check(ok == (item->errorCode() == DecodeError::None));
}

/// Without the pauses.
void decodeInPieces(FPVItemJpeg *item, int depth, QSize *size, QSize *request)
{
    bool complete = false;
    QObject::connect(item, &FPVItemImage::decodeComplete, item, [&complete] {
        complete = true;
    });
    const bool started = item->startDecode(depth, size, request);
    check(started == (item->rasterBits() != nullptr));
    while (item->rasterBits() != nullptr && !complete) {
        item->decodeScreenImage();
    }
    check(complete == (item->errorCode() == DecodeError::None));
}

/// A photo that is read in pieces also needs memory for the scans that are still to be read.
/// Otherwise both results are the same.
void decodeBothWays(const QString &path, int depth, QSize *request)
{
    FPVItemJpeg whole(path, QString(), false);
    FPVItemJpeg pieces(path, QString(), false);
    QSize wholeSize;
    QSize piecesSize;
    decodeAtOnce(&whole, depth, &wholeSize, request);
    decodeInPieces(&pieces, depth, &piecesSize, request);
    if (pieces.errorCode() == DecodeError::OutOfMemory) {
        return;
    }
    check(pieces.errorCode() == whole.errorCode());
    if (whole.rasterBits() == nullptr) {
        return;
    }
    check(piecesSize == wholeSize);
    const qint64 bytes = qint64{wholeSize.width()} * wholeSize.height() * (depth >> 3);
    check(std::equal(whole.rasterBits(), whole.rasterBits() + bytes, pieces.rasterBits()));
}

} // namespace

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString path = lumi::fuzz::inputFile(data, size, "photo.jpg");
    QSize screen(64, 48);
    decodeBothWays(path, 16, &screen);
    decodeBothWays(path, 32, nullptr);
    return 0;
}
