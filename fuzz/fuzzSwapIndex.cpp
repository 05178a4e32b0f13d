// SPDX-License-Identifier: MIT
// The swap index on arbitrary bytes: the records that were read must be the same after they are
// written and read again. A store that starts with the index holds only blocks with valid files.
#include "fuzz/FuzzInput.h"
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"
#include "swap/SwapSystem.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <algorithm>
#include <cstdlib>

namespace {

// The seeds use these names and times.
constexpr const char *kPhoto = "a.jpg";
constexpr const char *kSwapFile = "0000s_1_a.jpg.swp";
/// Without this file the store would be emptied before its index is read.
constexpr const char *kUprightFile = ".SwapMng.upright";
constexpr qint64 kPhotoTime = 1;
constexpr qint64 kSwapTime = 8;

QByteArray rewritten(const QByteArray &bytes)
{
    lumi::IndexReader reader(bytes);
    lumi::IndexWriter writer;
    lumi::IndexHeader header;
    lumi::ControlRecord control;
    lumi::BlockRecord block;
    if (reader.readHeader(header)) {
        writer.writeHeader(header);
    }
    for (int i = 0; i < header.controlCount && reader.readControl(control); ++i) {
        writer.writeControl(control);
        for (int k = 0; k < control.blockCount && reader.readBlock(block); ++k) {
            writer.writeBlock(block);
        }
    }
    return writer.bytes();
}

QByteArray smallJpeg()
{
    QImage image(8, 6, QImage::Format_RGB32);
    image.fill(Qt::green);
    QBuffer jpeg;
    jpeg.open(QIODevice::WriteOnly);
    image.save(&jpeg, "JPEG");
    return jpeg.data();
}

void makeFile(const char *name, const QByteArray &bytes, qint64 seconds)
{
    QFile file(QString::fromLatin1(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()
        || !file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds),
                             QFileDevice::FileModificationTime)) {
        std::abort();
    }
}

bool isVouchedFor(const SwapControl *control)
{
    return !control->folder().isEmpty() && !control->isEmpty()
        && std::all_of(control->begin(), control->end(), [](const SwapBlock *block) {
               return block->isValid() && block->swapPath().startsWith(QLatin1String("./"));
           });
}

/// The store lies in the working directory, so that an index can name it.
void startStore()
{
    static const QByteArray jpeg = smallJpeg();
    makeFile(kPhoto, "photo", kPhotoTime);
    makeFile(kSwapFile, jpeg, kSwapTime);
    makeFile(kUprightFile, {}, kSwapTime);
    SwapSystem store(".", QStringLiteral(".swp"));
    if (!std::all_of(store.controls().begin(), store.controls().end(), isVouchedFor)) {
        std::abort();
    }
    store.SetCurrent(QStringLiteral("."), -1);
    QImage image;
    if (store.bLoad(QString::fromLatin1(kPhoto), &image, 1, 's') && image.isNull()) {
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
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArray once = rewritten(bytes);
    if (rewritten(once) != once) {
        std::abort();
    }
    const QFileInfo index(lumi::fuzz::inputFile(data, size, ".SwapMng.bin"));
    if (!QDir::setCurrent(index.path())) {
        std::abort();
    }
    startStore();
    return 0;
}
