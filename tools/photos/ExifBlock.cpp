// SPDX-License-Identifier: MIT
#include "tools/photos/ExifBlock.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace lumi::photos {

namespace {

enum Type : quint16 {
    Byte = 1,
    Ascii = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    Undefined = 7,
    SignedRational = 10
};

/// Numbers in the block's byte order.
class Writer
{
public:
    explicit Writer(bool bigEndian)
        : m_bigEndian(bigEndian)
    { }

    [[nodiscard]] QByteArray number(quint32 value, int bytes) const
    {
        QByteArray text;
        for (int i = 0; i < bytes; ++i) {
            const int shift = 8 * (m_bigEndian ? bytes - 1 - i : i);
            text.append(static_cast<char>((value >> shift) & 0xFFU));
        }
        return text;
    }

    [[nodiscard]] QByteArray rational(quint32 numerator, quint32 denominator) const
    {
        return number(numerator, 4) + number(denominator, 4);
    }

private:
    bool m_bigEndian;
};

struct Entry
{
    quint16 tag = 0;
    quint16 type = 0;
    quint32 count = 0;
    QByteArray value;
};

/// One list of tags. Entries must be added by rising tag number.
class List
{
public:
    explicit List(const Writer &writer)
        : m_writer(writer)
    { }

    void text(quint16 tag, const QByteArray &value)
    {
        m_entries.push_back({tag, Ascii, static_cast<quint32>(value.size()) + 1, value + '\0'});
    }

    void bytes(quint16 tag, Type type, const QByteArray &value)
    {
        m_entries.push_back({tag, type, static_cast<quint32>(value.size()), value});
    }

    void small(quint16 tag, quint32 value)
    {
        m_entries.push_back({tag, Short, 1, m_writer.number(value, 2)});
    }

    void large(quint16 tag, quint32 value)
    {
        m_entries.push_back({tag, Long, 1, m_writer.number(value, 4)});
    }

    void rationals(quint16 tag, const QByteArray &pairs, Type type = Rational)
    {
        m_entries.push_back({tag, type, static_cast<quint32>(pairs.size() / 8), pairs});
    }

    [[nodiscard]] quint32 headSize() const
    {
        return 2 + 12 * static_cast<quint32>(m_entries.size()) + 4;
    }

    [[nodiscard]] quint32 size() const
    {
        quint32 sum = headSize();
        for (const Entry &entry : m_entries) {
            sum += outside(entry);
        }
        return sum;
    }

    /// start: where the list will stand; next: where the following list does, 0 for none.
    [[nodiscard]] QByteArray write(quint32 start, quint32 next) const
    {
        QByteArray head = m_writer.number(static_cast<quint32>(m_entries.size()), 2);
        QByteArray values;
        for (const Entry &entry : m_entries) {
            head += m_writer.number(entry.tag, 2) + m_writer.number(entry.type, 2)
                + m_writer.number(entry.count, 4);
            if (outside(entry) > 0) {
                head
                    += m_writer.number(start + headSize() + static_cast<quint32>(values.size()), 4);
                values += entry.value.leftJustified(static_cast<qsizetype>(outside(entry)), '\0');
            } else {
                head += entry.value.leftJustified(4, '\0');
            }
        }
        return head + m_writer.number(next, 4) + values;
    }

private:
    static quint32 outside(const Entry &entry)
    {
        const auto size = static_cast<quint32>(entry.value.size());
        return size <= 4 ? 0 : (size + 1) & ~1U;
    }

    const Writer &m_writer;
    std::vector<Entry> m_entries;
};

QByteArray degrees(const Writer &writer, double value)
{
    const double all = std::fabs(value) * 3600.0;
    const auto seconds100 = static_cast<quint32>(std::lround(all * 100.0));
    return writer.rational(seconds100 / 360000U, 1) + writer.rational(seconds100 / 6000U % 60U, 1)
        + writer.rational(seconds100 % 6000U, 100);
}

List mainList(const Writer &writer, const ExifFacts &facts, quint32 exifAt, quint32 gpsAt)
{
    List list(writer);
    list.text(0x010F, facts.make);
    list.text(0x0110, facts.model);
    list.small(0x0112, 1);
    list.rationals(0x011A, writer.rational(72, 1));
    list.rationals(0x011B, writer.rational(72, 1));
    list.small(0x0128, 2);
    list.text(0x0131, "Firmware 1.02");
    list.text(0x0132, facts.dateTaken);
    list.small(0x0213, 2);
    list.large(0x8769, exifAt);
    if (facts.gps) {
        list.large(0x8825, gpsAt);
    }
    return list;
}

List exifList(const Writer &writer, const ExifFacts &facts)
{
    const double shutter = std::log2(static_cast<double>(facts.exposureDenominator));
    const double aperture = 2.0 * std::log2(facts.apertureTenths / 10.0);
    List list(writer);
    list.rationals(0x829A, writer.rational(1, facts.exposureDenominator));
    list.rationals(0x829D, writer.rational(facts.apertureTenths, 10));
    list.small(0x8822, 2);
    list.small(0x8827, facts.iso);
    list.bytes(0x9000, Undefined, "0220");
    list.text(0x9003, facts.dateTaken);
    list.text(0x9004, facts.dateTaken);
    list.bytes(0x9101, Undefined, QByteArray("\1\2\3\0", 4));
    list.rationals(0x9102, writer.rational(3, 1));
    list.rationals(0x9201, writer.rational(static_cast<quint32>(std::lround(shutter * 100.0)), 100),
                   SignedRational);
    list.rationals(0x9202,
                   writer.rational(static_cast<quint32>(std::lround(aperture * 100.0)), 100));
    list.rationals(0x9204, writer.rational(0, 10), SignedRational);
    list.rationals(0x9205, writer.rational(30, 10));
    list.small(0x9207, 5);
    list.small(0x9208, 0);
    list.small(0x9209, facts.flash ? 1 : 0);
    list.rationals(0x920A, writer.rational(facts.focalTenths, 10));
    if (!facts.comment.isEmpty()) {
        list.bytes(0x9286, Undefined, QByteArray("ASCII\0\0\0", 8) + facts.comment);
    }
    list.bytes(0xA000, Undefined, "0100");
    list.small(0xA001, 1);
    list.large(0xA002, static_cast<quint32>(facts.size.width()));
    list.large(0xA003, static_cast<quint32>(facts.size.height()));
    list.small(0xA402, 0);
    list.small(0xA403, 0);
    list.small(0xA406, 0);
    return list;
}

List gpsList(const Writer &writer, const ExifFacts &facts)
{
    List list(writer);
    list.bytes(0x0000, Byte, QByteArray("\2\2\0\0", 4));
    list.text(0x0001, facts.latitude < 0.0 ? "S" : "N");
    list.rationals(0x0002, degrees(writer, facts.latitude));
    list.text(0x0003, facts.longitude < 0.0 ? "W" : "E");
    list.rationals(0x0004, degrees(writer, facts.longitude));
    list.bytes(0x0005, Byte, QByteArray(1, facts.altitude < 0.0 ? '\1' : '\0'));
    list.rationals(
        0x0006,
        writer.rational(static_cast<quint32>(std::lround(std::fabs(facts.altitude) * 10.0)), 10));
    return list;
}

List thumbnailList(const Writer &writer, quint32 thumbnailAt, quint32 thumbnailSize)
{
    List list(writer);
    list.small(0x0103, 6);
    list.rationals(0x011A, writer.rational(72, 1));
    list.rationals(0x011B, writer.rational(72, 1));
    list.small(0x0128, 2);
    list.large(0x0201, thumbnailAt);
    list.large(0x0202, thumbnailSize);
    return list;
}

} // namespace

QByteArray exifBlock(const ExifFacts &facts, const QByteArray &thumbnail)
{
    constexpr quint32 kHeader = 8;
    constexpr qsizetype kMostPayload = 65533;
    const Writer writer(facts.bigEndian);
    const List exif = exifList(writer, facts);
    const List gps = gpsList(writer, facts);
    const quint32 mainAt = kHeader;
    const quint32 exifAt = mainAt + mainList(writer, facts, 0, 0).size();
    const quint32 gpsAt = exifAt + exif.size();
    const quint32 secondAt = facts.gps ? gpsAt + gps.size() : gpsAt;
    const auto thumbnailSize = static_cast<quint32>(thumbnail.size());
    const quint32 thumbnailAt = secondAt + thumbnailList(writer, 0, 0).size();

    QByteArray block("Exif\0\0", 6);
    block += facts.bigEndian ? "MM" : "II";
    block += writer.number(42, 2) + writer.number(mainAt, 4);
    block
        += mainList(writer, facts, exifAt, gpsAt).write(mainAt, thumbnail.isEmpty() ? 0 : secondAt);
    block += exif.write(exifAt, 0);
    if (facts.gps) {
        block += gps.write(gpsAt, 0);
    }
    if (!thumbnail.isEmpty()) {
        block += thumbnailList(writer, thumbnailAt, thumbnailSize).write(secondAt, 0) + thumbnail;
    }
    return block.size() <= kMostPayload ? block : QByteArray();
}

} // namespace lumi::photos
