// SPDX-License-Identifier: MIT
// Builds JPEG files with an Exif block for tests. They are well-formed by default. On demand any
// field can be wrong: type, count, value word, entry count, link, segment length.
// Format: header, then IFD0, Exif, interoperability, GPS and IFD1, each followed by its
// values, then the thumbnail; laidOut() and packed() have others. Directories keep the order in
// which entries were added; the pointers between them are added by the builder.
#pragma once

#include "exif/tag/ExifListKind.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

namespace lumi::test {

class ExifBuilder
{
public:
    enum class Order { Little, Big };
    using Fraction = std::pair<quint32, quint32>;

    explicit ExifBuilder(Order order = Order::Little);

    /// Lays the block out as tightly as a file may: values first, without bytes between them
    /// and equal ones once, then the thumbnail, then the directories from IFD1 to IFD0.
    ExifBuilder &packed();

    /// The directories, each with its values, in that order; IFD0 is the first.
    ExifBuilder &laidOut(const std::array<ExifListKind, 5> &order);

    /// A text (type 2) with its closing NUL.
    ExifBuilder &ascii(ExifListKind list, quint16 tag, const QByteArray &text);
    /// Numbers of type 3, 4 and 9, fractions of type 5 and 10, bytes of type 7.
    ExifBuilder &shorts(ExifListKind list, quint16 tag, std::initializer_list<quint16> values);
    ExifBuilder &longs(ExifListKind list, quint16 tag, std::initializer_list<quint32> values);
    ExifBuilder &slongs(ExifListKind list, quint16 tag, std::initializer_list<qint32> values);
    ExifBuilder &rationals(ExifListKind list, quint16 tag, std::initializer_list<Fraction> values);
    ExifBuilder &srationals(ExifListKind list, quint16 tag, std::initializer_list<Fraction> values);
    ExifBuilder &undefined(ExifListKind list, quint16 tag, const QByteArray &bytes);

    /// Any type and count with a value of any length, its bytes as they stand in the file.
    ExifBuilder &value(ExifListKind list, quint16 tag, quint16 type, quint32 count,
                       const QByteArray &bytes);
    /// Any type and count with the four value bytes as one number, an offset or not.
    ExifBuilder &word(ExifListKind list, quint16 tag, quint16 type, quint32 count, quint32 word);

    ExifBuilder &makerNote(const QByteArray &bytes)
    {
        return undefined(ExifListKind::Exif, 0x927C, bytes);
    }

    /// A thumbnail with its two tags in IFD1, each of type 4.
    ExifBuilder &thumbnail(const QByteArray &jpeg);

    /// Wrong values: the file contains these instead of the right ones.
    ExifBuilder &entryCount(ExifListKind list, quint16 count);
    ExifBuilder &link(ExifListKind list, quint32 offset);
    ExifBuilder &ifd0Offset(quint32 offset);
    ExifBuilder &app1Length(quint16 length);
    /// No pointers to Exif, GPS and interoperability directories and no link to IFD1.
    ExifBuilder &withoutPointers();

    /// Whole segments between the start of the image and the Exif segment.
    ExifBuilder &segmentsBefore(const QByteArray &segments);
    /// The photo behind the segment, a whole JPEG; at first a small gray one.
    ExifBuilder &photo(const QByteArray &jpeg);

    /// The block alone, from its byte order mark on.
    [[nodiscard]] QByteArray block() const;
    /// The whole file.
    [[nodiscard]] QByteArray file() const;
    /// False if the file could not be written completely.
    [[nodiscard]] bool write(const QString &path) const;

    /// The offset of a directory from the byte order mark; 0 without entries.
    [[nodiscard]] quint32 offsetOf(ExifListKind list) const;
    /// The offset of the thumbnail from the byte order mark.
    [[nodiscard]] quint32 thumbnailOffset() const;

    /// A JPEG of one colour.
    [[nodiscard]] static QByteArray jpeg(int width, int height, quint32 rgb);

private:
    struct Entry
    {
        quint16 tag = 0;
        quint16 type = 0;
        quint32 count = 0;
        QByteArray bytes;
        std::optional<quint32> word;       // in place of the bytes
        std::optional<std::size_t> target; // the directory whose offset is the word, 5: thumbnail
    };

    struct Directory
    {
        std::vector<Entry> entries;
        std::optional<quint16> entryCount;
        std::optional<quint32> link;
    };

    [[nodiscard]] std::array<Directory, 5> resolved() const;
    [[nodiscard]] quint32 offsetIn(const std::array<Directory, 5> &directories,
                                   std::size_t index) const;
    [[nodiscard]] QByteArray spaciousBlock() const;
    [[nodiscard]] QByteArray packedBlock() const;
    [[nodiscard]] QByteArray sharedValues() const;
    [[nodiscard]] QByteArray directoryBytes(const Directory &directory, quint32 offset) const;
    [[nodiscard]] QByteArray number(quint64 value, int size) const;
    [[nodiscard]] Directory &at(ExifListKind list);

    Order m_order;
    std::array<Directory, 5> m_directories;
    std::array<ExifListKind, 5> m_layout
        = {ExifListKind::Ifd0, ExifListKind::Exif, ExifListKind::Interoperability,
           ExifListKind::Gps, ExifListKind::Ifd1};
    QByteArray m_thumbnail;
    QByteArray m_before;
    QByteArray m_photo;
    std::optional<quint32> m_ifd0Offset;
    std::optional<quint16> m_app1Length;
    bool m_hasPointers = true;
    bool m_isPacked = false;
};

} // namespace lumi::test
