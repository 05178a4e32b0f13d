// SPDX-License-Identifier: MIT
#include "swap/SwapBlock.h"

#include "app/common/diskSpace.h"
#include "platform/debugLog.h"
#include "platform/files/NewFile.h"
#include "swap/IndexReader.h"
#include "swap/SwapPlace.h"
#include "swap/swapTime.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

/// Disk space that the cache leaves free for the user's own files.
constexpr int kReservedKB = 10240;

/// Numbers in the two reports of a missing buffer.
constexpr int kWriteAssertion = 221;
constexpr int kReadAssertion = 267;

constexpr const char *kJpeg = "JPEG";
constexpr qint64 kNotOpened = -1;

/// Larger than any thumbnail, but needs little memory.
constexpr qint64 kMostPixels = qint64(1024) * 1024;

void reportNullBuffer(int number)
{
    qWarning("ASSERT: \"%s\" in %s (%d)", "stSwap.buf != NULL", "SwapSystem", number);
}

const char *boolText(bool value)
{
    return value ? "true" : "false";
}

QDateTime fileTime(const QString &path)
{
    return QFileInfo(path).lastModified();
}

/// Returns the number of bytes written, or kNotOpened. A partly written file is removed. An old file
/// of this name is removed in any case.
qint64 writeFile(const QString &path, const QByteArray &bytes)
{
    QFile::remove(path);
    lumi::NewFile file(path);
    if (!file.open()) {
        return kNotOpened;
    }
    const qint64 written = file.write(bytes.constData(), bytes.size());
    if (written < bytes.size()) {
        return std::max<qint64>(written, 0);
    }
    return file.commit() ? written : kNotOpened;
}

} // namespace

SwapBlock::SwapBlock(const QString &sourceName, const QString &swapPath, int param,
                     signed char kind)
    : m_sourceName(sourceName)
    , m_swapPath(swapPath)
    , m_param(param)
    , m_kind(kind)
{ }

SwapBlock::SwapBlock(lumi::IndexReader &index, const QString &folder, const lumi::SwapPlace &place)
{
    lumi::BlockRecord record;
    if (!index.readBlock(record)) {
        return;
    }
    m_sourceName = record.sourceName;
    m_swapPath = record.swapPath;
    m_width = record.width;
    m_height = record.height;
    m_sourceTime = lumi::swapDateTime(record.sourceTime);
    m_swapTime = lumi::swapDateTime(record.swapTime);
    m_param = record.param;
    m_kind = record.kind;
    if (QFile::exists(folder + QLatin1Char('/') + m_sourceName)) {
        m_valid = place.holds(m_swapPath) && lumi::isRegular(m_swapPath);
    } else {
        place.removeFile(m_swapPath);
    }
}

bool SwapBlock::bWrite(stSwap &swap, QDateTime sourceTime)
{
    debugLog("[Write]%s -> %s", qUtf8Printable(m_sourceName), qUtf8Printable(m_swapPath));
    m_sourceTime = std::move(sourceTime);
    // The space of the user's documents counts, even if the swap folder is on another disk.
    const long freeKB = lumi::freeDocumentsKB();
    if (freeKB <= kReservedKB) {
        qWarning("SwapBlock::bWrite() No Disc Space (%ld KB)", freeKB);
        return false;
    }
    if (m_swapPath.isEmpty()) {
        qWarning("SwapBlock::bWrite() / Non String");
        return false;
    }
    return swap.image != nullptr ? writeImage(*swap.image) : writeBuffer(swap);
}

bool SwapBlock::writeImage(const QImage &image)
{
    QBuffer jpeg;
    jpeg.open(QIODevice::WriteOnly);
    m_valid = image.save(&jpeg, kJpeg) && writeFile(m_swapPath, jpeg.data()) == jpeg.size();
    debugLog("SwapBlock::bWrite() / Image(%s) [%s]", boolText(m_valid), qUtf8Printable(m_swapPath));
    if (m_valid) {
        m_swapTime = fileTime(m_swapPath);
    }
    return m_valid;
}

bool SwapBlock::writeBuffer(const stSwap &swap)
{
    if (swap.buf == nullptr) {
        reportNullBuffer(kWriteAssertion);
        return false;
    }
    const int size = std::max(swap.size, 0);
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(swap.buf), size);
    const qint64 written = writeFile(m_swapPath, bytes);
    if (written == kNotOpened) {
        qWarning("SwapBlock::bWrite() / File Open Error");
        return false;
    }
    m_valid = written == size;
    debugLog("SwapBlock::bWrite() / BufSize(%d) - WriteSize(%lld)", swap.size,
             static_cast<long long>(written));
    if (!m_valid) {
        qWarning("SwapBlock::bWrite() / Write Error");
    }
    // The swap time stays null, so the buffer form is never read back. This is required.
    return m_valid;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): part of the interface
bool SwapBlock::bRead(stSwap &swap, QDateTime sourceTime)
{
    debugLog("[Read]%s -> %s", qUtf8Printable(m_sourceName), qUtf8Printable(m_swapPath));
    if (!lumi::sameSwapTime(m_sourceTime, sourceTime)) {
        return false;
    }
    if (m_swapPath.isEmpty()) {
        qWarning("SwapBlock::bRead() / Non String");
        return false;
    }
    if (!m_valid || QFileInfo(m_swapPath).isSymLink()
        || !lumi::sameSwapTime(fileTime(m_swapPath), m_swapTime)) {
        return false;
    }
    return swap.image != nullptr ? readImage(*swap.image) : readBuffer(swap);
}

bool SwapBlock::readImage(QImage &image) const
{
    QImageReader reader(m_swapPath, kJpeg);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    image = qint64(size.width()) * size.height() <= kMostPixels ? reader.read() : QImage();
    image.setDevicePixelRatio(1); // a photo may be called "a@2x.jpg"
    const bool loaded = !image.isNull();
    debugLog("SwapBlock::bRead() / Image(%s) [%s]", boolText(loaded), qUtf8Printable(m_swapPath));
    return loaded;
}

bool SwapBlock::readBuffer(stSwap &swap) const
{
    if (swap.buf == nullptr) {
        reportNullBuffer(kReadAssertion);
        return false;
    }
    const int room = std::max(swap.size, 0);
    std::memset(swap.buf, 0, static_cast<std::size_t>(room));
    QFile file(m_swapPath);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("SwapBlock::bRead() / File Open Error");
        return false;
    }
    const qint64 got = file.read(reinterpret_cast<char *>(swap.buf), room);
    debugLog("SwapBlock::bRead() / BufSize(%d) - ReadSize(%lld)", swap.size,
             static_cast<long long>(got));
    swap.size = static_cast<int>(std::max<qint64>(got, 0));
    return true;
}

lumi::BlockRecord SwapBlock::record() const
{
    lumi::BlockRecord record;
    record.sourceName = m_sourceName;
    record.sourceTime = lumi::swapSeconds(m_sourceTime);
    record.width = m_width;
    record.height = m_height;
    record.param = m_param;
    record.kind = m_kind;
    record.swapPath = m_swapPath;
    record.swapTime = lumi::swapSeconds(m_swapTime);
    return record;
}

void SwapBlock::setSize(int width, int height)
{
    m_width = width;
    m_height = height;
}
