// SPDX-License-Identifier: MIT
#include "tests/support/ExifBuilder.h"

#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"

#include <QBuffer>
#include <QFile>
#include <QImage>

#include <algorithm>

namespace lumi::test {

namespace {

constexpr std::size_t kIfd0 = 0;
constexpr std::size_t kExif = 1;
constexpr std::size_t kInteroperability = 2;
constexpr std::size_t kGps = 3;
constexpr std::size_t kIfd1 = 4;

struct Pointer
{
    std::size_t from;
    std::size_t to;
    quint16 tag;
};

constexpr Pointer kPointers[] = {
    {kExif, kInteroperability, kTagInteroperabilityPointer},
    {kIfd0, kExif, kTagExifPointer},
    {kIfd0, kGps, kTagGpsPointer},
};

std::size_t indexOf(ExifListKind list)
{
    return static_cast<std::size_t>(list);
}

/// The size of a directory with the values behind it; 0 without entries.
template <class Directory> quint32 sizeOf(const Directory &directory)
{
    if (directory.entries.empty()) {
        return 0;
    }
    auto size = static_cast<quint32>(kBareDirectorySize + kEntrySize * directory.entries.size());
    for (const auto &entry : directory.entries) {
        if (!entry.word && entry.bytes.size() > kInlineValueSize) {
            size += static_cast<quint32>((entry.bytes.size() + 1) & ~1);
        }
    }
    return size;
}

} // namespace

ExifBuilder::ExifBuilder(Order order)
    : m_order(order)
    , m_photo(jpeg(16, 12, 0x808080))
{ }

ExifBuilder &ExifBuilder::packed()
{
    m_isPacked = true;
    return *this;
}

ExifBuilder &ExifBuilder::laidOut(const std::array<ExifListKind, 5> &order)
{
    m_layout = order;
    return *this;
}

ExifBuilder &ExifBuilder::ascii(ExifListKind list, quint16 tag, const QByteArray &text)
{
    return value(list, tag, TiffAscii, static_cast<quint32>(text.size() + 1), text + '\0');
}

ExifBuilder &ExifBuilder::shorts(ExifListKind list, quint16 tag,
                                 std::initializer_list<quint16> values)
{
    QByteArray bytes;
    for (const quint16 one : values) {
        bytes += number(one, 2);
    }
    return value(list, tag, TiffShort, static_cast<quint32>(values.size()), bytes);
}

ExifBuilder &ExifBuilder::longs(ExifListKind list, quint16 tag,
                                std::initializer_list<quint32> values)
{
    QByteArray bytes;
    for (const quint32 one : values) {
        bytes += number(one, 4);
    }
    return value(list, tag, TiffLong, static_cast<quint32>(values.size()), bytes);
}

ExifBuilder &ExifBuilder::slongs(ExifListKind list, quint16 tag,
                                 std::initializer_list<qint32> values)
{
    QByteArray bytes;
    for (const qint32 one : values) {
        bytes += number(static_cast<quint32>(one), 4);
    }
    return value(list, tag, TiffSignedLong, static_cast<quint32>(values.size()), bytes);
}

ExifBuilder &ExifBuilder::rationals(ExifListKind list, quint16 tag,
                                    std::initializer_list<Fraction> values)
{
    QByteArray bytes;
    for (const Fraction &one : values) {
        bytes += number(one.first, 4) + number(one.second, 4);
    }
    return value(list, tag, TiffRational, static_cast<quint32>(values.size()), bytes);
}

ExifBuilder &ExifBuilder::srationals(ExifListKind list, quint16 tag,
                                     std::initializer_list<Fraction> values)
{
    rationals(list, tag, values);
    at(list).entries.back().type = TiffSignedRational;
    return *this;
}

ExifBuilder &ExifBuilder::undefined(ExifListKind list, quint16 tag, const QByteArray &bytes)
{
    return value(list, tag, TiffUndefined, static_cast<quint32>(bytes.size()), bytes);
}

ExifBuilder &ExifBuilder::value(ExifListKind list, quint16 tag, quint16 type, quint32 count,
                                const QByteArray &bytes)
{
    at(list).entries.push_back({tag, type, count, bytes, {}, {}});
    return *this;
}

ExifBuilder &ExifBuilder::word(ExifListKind list, quint16 tag, quint16 type, quint32 count,
                               quint32 word)
{
    at(list).entries.push_back({tag, type, count, {}, word, {}});
    return *this;
}

ExifBuilder &ExifBuilder::thumbnail(const QByteArray &jpeg)
{
    m_thumbnail = jpeg;
    return *this;
}

ExifBuilder &ExifBuilder::entryCount(ExifListKind list, quint16 count)
{
    at(list).entryCount = count;
    return *this;
}

ExifBuilder &ExifBuilder::link(ExifListKind list, quint32 offset)
{
    at(list).link = offset;
    return *this;
}

ExifBuilder &ExifBuilder::ifd0Offset(quint32 offset)
{
    m_ifd0Offset = offset;
    return *this;
}

ExifBuilder &ExifBuilder::app1Length(quint16 length)
{
    m_app1Length = length;
    return *this;
}

ExifBuilder &ExifBuilder::withoutPointers()
{
    m_hasPointers = false;
    return *this;
}

ExifBuilder &ExifBuilder::segmentsBefore(const QByteArray &segments)
{
    m_before = segments;
    return *this;
}

ExifBuilder &ExifBuilder::photo(const QByteArray &jpeg)
{
    m_photo = jpeg;
    return *this;
}

QByteArray ExifBuilder::block() const
{
    const quint32 first = m_isPacked ? offsetOf(ExifListKind::Ifd0) : kTiffHeaderSize;
    const QByteArray mark = m_order == Order::Little ? "II" : "MM";
    return mark + number(0x002A, 2) + number(m_ifd0Offset.value_or(first), 4)
        + (m_isPacked ? packedBlock() : spaciousBlock());
}

QByteArray ExifBuilder::packedBlock() const
{
    auto directories = resolved();
    const QByteArray values = sharedValues();
    QByteArray tables;
    for (std::size_t i = directories.size(); i-- > 0;) {
        for (Entry &entry : directories[i].entries) {
            if (!entry.word && entry.bytes.size() > kInlineValueSize) {
                entry.word = kTiffHeaderSize + static_cast<quint32>(values.indexOf(entry.bytes));
            }
        }
        tables += directoryBytes(directories[i], 0);
    }
    return values + m_thumbnail + tables;
}

/// The values of all directories that do not fit an entry, none twice.
QByteArray ExifBuilder::sharedValues() const
{
    QByteArray values;
    for (const Directory &directory : m_directories) {
        for (const Entry &entry : directory.entries) {
            const bool isStored = !entry.word && entry.bytes.size() > kInlineValueSize;
            values += isStored && !values.contains(entry.bytes) ? entry.bytes : QByteArray();
        }
    }
    return values;
}

QByteArray ExifBuilder::spaciousBlock() const
{
    const auto directories = resolved();
    QByteArray bytes(kTiffHeaderSize, '\0');
    for (const ExifListKind list : m_layout) {
        bytes += directoryBytes(directories[indexOf(list)], static_cast<quint32>(bytes.size()));
    }
    return bytes.mid(kTiffHeaderSize) + m_thumbnail;
}

QByteArray ExifBuilder::file() const
{
    const QByteArray exif = QByteArray(kExifMark, sizeof kExifMark) + block();
    const auto length = m_app1Length.value_or(static_cast<quint16>(exif.size() + 2));
    QByteArray bytes = kStartOfImage + m_before + kApp1Marker;
    bytes += static_cast<char>(length >> 8);
    bytes += static_cast<char>(length & 0xFF);
    return bytes + exif + m_photo.mid(2);
}

bool ExifBuilder::write(const QString &path) const
{
    const QByteArray bytes = file();
    QFile target(path);
    return target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size()
        && target.flush();
}

quint32 ExifBuilder::offsetOf(ExifListKind list) const
{
    const auto directories = resolved();
    const std::size_t index = indexOf(list);
    return directories[index].entries.empty() ? 0 : offsetIn(directories, index);
}

quint32 ExifBuilder::thumbnailOffset() const
{
    const auto directories = resolved();
    return offsetIn(directories, directories.size());
}

QByteArray ExifBuilder::jpeg(int width, int height, quint32 rgb)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(rgb | 0xFF000000U);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPEG", 95);
    return bytes;
}

/// The directories with pointers, link and thumbnail tags. Sizes do not depend on offsets, so all
/// entries are added before the offsets are set.
std::array<ExifBuilder::Directory, 5> ExifBuilder::resolved() const
{
    auto directories = m_directories;
    if (!m_thumbnail.isEmpty()) {
        const auto length = static_cast<quint32>(m_thumbnail.size());
        directories[kIfd1].entries.push_back(
            {kTagThumbnailOffset, TiffLong, 1, {}, 0, directories.size()});
        directories[kIfd1].entries.push_back({kTagThumbnailLength, TiffLong, 1, {}, length, {}});
    }
    if (m_hasPointers) {
        for (const Pointer &pointer : kPointers) {
            if (!directories[pointer.to].entries.empty()) {
                directories[pointer.from].entries.push_back(
                    {pointer.tag, TiffLong, 1, {}, 0, pointer.to});
            }
        }
        if (!directories[kIfd0].link && !directories[kIfd1].entries.empty()) {
            directories[kIfd0].link = offsetIn(directories, kIfd1);
        }
    }
    for (Directory &directory : directories) {
        for (Entry &entry : directory.entries) {
            entry.word = entry.target ? offsetIn(directories, *entry.target) : entry.word;
        }
    }
    return directories;
}

quint32 ExifBuilder::offsetIn(const std::array<Directory, 5> &directories, std::size_t index) const
{
    quint32 offset = kTiffHeaderSize;
    if (m_isPacked) {
        offset += static_cast<quint32>(sharedValues().size());
        offset += static_cast<quint32>(index < directories.size() ? m_thumbnail.size() : 0);
        for (std::size_t i = directories.size(); i-- > index + 1;) {
            const std::size_t entries = directories[i].entries.size();
            offset += static_cast<quint32>(
                entries == 0 ? 0 : kBareDirectorySize + kEntrySize * entries);
        }
        return offset;
    }
    for (const ExifListKind list : m_layout) {
        if (indexOf(list) == index) {
            break;
        }
        offset += sizeOf(directories[indexOf(list)]);
    }
    return offset;
}

QByteArray ExifBuilder::directoryBytes(const Directory &directory, quint32 offset) const
{
    if (directory.entries.empty()) {
        return {};
    }
    const std::size_t count = directory.entries.size();
    const auto valueBase = static_cast<quint32>(offset + kBareDirectorySize + kEntrySize * count);
    QByteArray head = number(directory.entryCount.value_or(static_cast<quint16>(count)), 2);
    QByteArray values;
    for (const Entry &entry : directory.entries) {
        head += number(entry.tag, 2) + number(entry.type, 2) + number(entry.count, 4);
        if (entry.word) {
            head += number(*entry.word, 4);
        } else if (entry.bytes.size() <= kInlineValueSize) {
            head += entry.bytes.leftJustified(kInlineValueSize, '\0');
        } else {
            head += number(valueBase + static_cast<quint32>(values.size()), 4);
            values += entry.bytes;
            values.append(values.size() & 1, '\0');
        }
    }
    return head + number(directory.link.value_or(0), 4) + values;
}

QByteArray ExifBuilder::number(quint64 value, int size) const
{
    QByteArray bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    if (m_order == Order::Big) {
        std::reverse(bytes.begin(), bytes.end());
    }
    return bytes;
}

ExifBuilder::Directory &ExifBuilder::at(ExifListKind list)
{
    return m_directories[indexOf(list)];
}

} // namespace lumi::test
