// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifFile.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/FPVExifTagNumber.h"
#include "exif/tag/FPVExifTagRational.h"
#include "exif/tag/FPVExifTagString.h"
#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kFirstWindowSize = 1024;

struct Pointer
{
    int tag;
    ExifIfdKind kind;
};

constexpr Pointer kPointers[] = {
    {lumi::kTagExifPointer, ExifIfdKind::Exif},
    {lumi::kTagGpsPointer, ExifIfdKind::Gps},
    {lumi::kTagInteroperabilityPointer, ExifIfdKind::Interoperability},
};

bool isSame(const uchar *bytes, QByteArrayView expected)
{
    return bytes && QByteArrayView(bytes, expected.size()) == expected;
}

} // namespace

FPVExifFile::FPVExifFile(const QString &path)
    : FPVFile(QString())
{
    if (!path.isEmpty()) {
        static_cast<void>(FPVExifFile::open(path));
    }
}

bool FPVExifFile::open(const QString &path)
{
    if (!FPVFile::open(path)) {
        return false;
    }
    m_ifds = {};
    m_valueRoom = lumi::kLargestValueSum;
    fill(kFirstWindowSize, -1);
    if (!isSame(readBytes(2), lumi::kStartOfImage)) {
        close();
        qWarning("FPVExifFile::open() no SOI marker %s", path.toLatin1().constData());
        return false;
    }
    m_segmentStart = tell();
    m_segmentLength = 0;
    if (!readHeader(path.toLatin1())) {
        close();
        qDebug("FPVExifFile::open() not found Exif header %s", path.toLatin1().constData());
        return false;
    }
    const quint32 offset = read32();
    fill(m_segmentLength, qint64(m_tiffBase) + offset);
    static_cast<void>(enterIfd(addIfd(offset, ExifIfdKind::Primary)));
    return true;
}

bool FPVExifFile::readHeader(const QByteArray &path)
{
    seek(m_segmentStart);
    const bool hasMarker = isSame(readBytes(2), lumi::kApp1Marker);
    setLittleEndian(false);
    m_segmentLength = read16();
    if (!hasMarker) {
        qDebug("FPVExifFile::open() not APP1 marker %s", path.constData());
        return false;
    }
    if (!isSame(readBytes(sizeof lumi::kExifMark), {lumi::kExifMark, sizeof lumi::kExifMark})) {
        qDebug("FPVExifFile::open() not \"Exif\" header %s", path.constData());
        return false;
    }
    m_tiffBase = tell();
    const uchar *order = readBytes(2);
    const bool isIntel = isSame(order, "II");
    if (!isIntel && !isSame(order, "MM")) {
        qDebug("FPVExifFile::open() not Intel/Motorola endian %s", path.constData());
        return false;
    }
    setLittleEndian(isIntel);
    if (read16() != 0x002A) {
        qDebug("FPVExifFile::open() endian check digit error %s", path.constData());
        return false;
    }
    return true;
}

int FPVExifFile::addIfd(quint32 offset, ExifIfdKind kind)
{
    const auto free = std::find_if(m_ifds.begin(), m_ifds.end(), [](const Ifd &ifd) {
        return ifd.offset == 0;
    });
    if (offset == 0 || free == m_ifds.end()) {
        return -1;
    }
    *free = {offset, -1, kind};
    return static_cast<int>(free - m_ifds.begin());
}

bool FPVExifFile::enterIfd(int index)
{
    if (index < 0 || index >= static_cast<int>(m_ifds.size())
        || m_ifds[static_cast<std::size_t>(index)].offset == 0) {
        return false;
    }
    Ifd &ifd = m_ifds[static_cast<std::size_t>(index)];
    seek(qint64(m_tiffBase) + ifd.offset);
    ifd.count = read16();
    m_currentIfd = index;
    m_currentEntry = 0;
    return true;
}

FPVExifTag *FPVExifFile::nextTag()
{
    if (!isOpen()) {
        return nullptr;
    }
    const Entry entry = {read16(), read16(), read32()};
    const int valuePosition = tell();
    std::unique_ptr<FPVExifTag> tag = decode(entry);
    seek(qint64(valuePosition) + lumi::kInlineValueSize);
    if (tag) {
        noteSubIfd(*tag);
    }
    finishEntry();
    return tag.release();
}

void FPVExifFile::noteSubIfd(const FPVExifTag &tag)
{
    for (const Pointer &pointer : kPointers) {
        if (pointer.tag == tag.tag()) {
            addIfd(static_cast<quint32>(tag.intValue()), pointer.kind);
        }
    }
}

void FPVExifFile::finishEntry()
{
    const Ifd &ifd = m_ifds[static_cast<std::size_t>(m_currentIfd)];
    ++m_currentEntry;
    // A directory with 0 entries yields one entry, too. Callers depend on it.
    if (m_currentEntry < ifd.count) {
        return;
    }
    const quint32 next = read32();
    addIfd(next, ifd.kind == ExifIfdKind::Primary ? ExifIfdKind::Thumbnail : ExifIfdKind::Further);
    if (!enterIfd(m_currentIfd + 1)) {
        close();
    }
}

std::unique_ptr<FPVExifTag> FPVExifFile::decode(const Entry &entry)
{
    const auto number = [&entry](quint32 value) {
        return std::make_unique<FPVExifTagNumber>(entry.tag, entry.type, entry.count,
                                                  static_cast<qint32>(value));
    };
    switch (entry.type) {
    case lumi::TiffByte:
        return number(readByte());
    case lumi::TiffShort:
        return number(read16());
    case lumi::TiffLong:
    case lumi::TiffSignedLong:
        return number(read32());
    case lumi::TiffAscii:
        return decodeText(entry);
    case lumi::TiffRational:
    case lumi::TiffSignedRational:
        return decodeRational(entry);
    case lumi::TiffUndefined:
        return decodeBytes(entry);
    default:
        return nullptr;
    }
}

std::unique_ptr<FPVExifTag> FPVExifFile::decodeRational(const Entry &entry)
{
    seek(qint64(m_tiffBase) + read32());
    const auto numerator = static_cast<qint32>(read32());
    const auto denominator = static_cast<qint32>(read32());
    return std::make_unique<FPVExifTagRational>(entry.tag, entry.type, entry.count, denominator,
                                                numerator);
}

std::unique_ptr<FPVExifTag> FPVExifFile::decodeText(const Entry &entry)
{
    followOffset(entry);
    const std::span<const char> window = rest();
    const auto size = std::find(window.begin(), window.end(), '\0') - window.begin();
    const int taken = static_cast<int>(std::min<qint64>(size, m_valueRoom));
    m_valueRoom -= taken;
    return std::make_unique<FPVExifTagString>(entry.tag, entry.type, entry.count,
                                              QString::fromLatin1(window.data(), taken));
}

std::unique_ptr<FPVExifTag> FPVExifFile::decodeBytes(const Entry &entry)
{
    followOffset(entry);
    const std::span<const char> window = rest();
    const qint64 size = std::min<qint64>({entry.count, lumi::kLargestValue, m_valueRoom});
    m_valueRoom -= static_cast<int>(size);
    std::vector<char> value(static_cast<std::size_t>(size), '\0');
    std::copy_n(window.begin(), std::min(window.size(), value.size()), value.begin());
    return std::make_unique<FPVExifTagBytes>(entry.tag, entry.type, entry.count, value);
}

void FPVExifFile::followOffset(const Entry &entry)
{
    if (qint64(entry.count) * typeSize(entry.type) > lumi::kInlineValueSize) {
        seek(qint64(m_tiffBase) + read32());
    }
}
