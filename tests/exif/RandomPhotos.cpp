// SPDX-License-Identifier: MIT
#include "tests/exif/RandomPhotos.h"

#include <random>
#include <vector>

using enum ExifListKind;

namespace lumi::test {

namespace {

constexpr quint16 kTypes[] = {1, 2, 3, 4, 5, 7, 9, 10};
constexpr int kUnits[] = {0, 1, 1, 2, 4, 4, 0, 1, 0, 4, 4}; // of the numbers of a type
constexpr quint16 kUnknownTag = 0xE000;
constexpr unsigned kMostTags = 12;
constexpr unsigned kMostValues = 9;
constexpr unsigned kMostBytes = 300;

class Maker
{
public:
    explicit Maker(unsigned number)
        : m_number(number)
        , m_random(number)
    { }

    RandomPhoto make();

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(m_random()) % limit; }

    /// Whether the photo has this property.
    bool has(unsigned kind) const { return (m_number >> kind & 1U) != 0; }

    void note(const char *what) { m_photo.name += QByteArray(", ") + what; }

    QByteArray bytes(unsigned size);
    QByteArray text(unsigned size);
    void addUnknownTags(ExifListKind list);
    void addFirst();
    void addExif();
    void addGps();
    void addThumbnail();

    unsigned m_number;
    std::mt19937 m_random;
    RandomPhoto m_photo;
};

QByteArray Maker::bytes(unsigned size)
{
    QByteArray bytes(static_cast<qsizetype>(size), '\0');
    for (char &byte : bytes) {
        byte = static_cast<char>(m_random());
    }
    return bytes;
}

QByteArray Maker::text(unsigned size)
{
    QByteArray text(static_cast<qsizetype>(size), '\0');
    for (char &letter : text) {
        letter = static_cast<char>('a' + below(26));
    }
    return text;
}

/// Unknown tags, not sorted by number, with values of every type.
void Maker::addUnknownTags(ExifListKind list)
{
    const unsigned tags = below(kMostTags);
    for (unsigned i = 0; i < tags; ++i) {
        const auto tag = static_cast<quint16>(kUnknownTag + (i * 37 + m_number) % 256);
        const quint16 type = kTypes[below(std::size(kTypes))];
        const bool isFraction = type == 5 || type == 10;
        const auto unit = static_cast<unsigned>(kUnits[type]) * (isFraction ? 2 : 1);
        const unsigned count = 1 + below(unit == 1 ? kMostBytes : kMostValues);
        const QByteArray value = type == 2 ? text(count - 1) + '\0' : bytes(count * unit);
        m_photo.builder.value(list, tag, type, count, value);
    }
}

void Maker::addFirst()
{
    m_photo.builder.ascii(Ifd0, 0x0110, text(1 + below(40)))
        .shorts(Ifd0, 0x0112, {static_cast<quint16>(1 + below(8))})
        .ascii(Ifd0, 0x010F, text(1 + below(9)))
        .rationals(Ifd0, 0x011A, {{72 + below(500), 1}});
    if (has(1)) {
        m_photo.builder.ascii(Ifd0, 0x013B, text(below(60)));
    }
    addUnknownTags(Ifd0);
}

void Maker::addExif()
{
    note("Exif");
    m_photo.builder.rationals(Exif, 0x829A, {{1, 1 + below(1000)}})
        .shorts(Exif, 0x8827, {100, 200})
        .srationals(Exif, 0x9204, {{static_cast<quint32>(-1), 3}})
        .undefined(Exif, 0x9000, "0220")
        .longs(Exif, 0xA002, {below(100000)});
    if (has(3)) {
        note("maker note");
        m_photo.builder.makerNote(bytes(1 + below(2000)));
    }
    addUnknownTags(Exif);
    if (has(4)) {
        note("interoperability");
        m_photo.builder.ascii(Interoperability, 0x0001, "R98")
            .undefined(Interoperability, 0x0002, "0100");
        addUnknownTags(Interoperability);
    }
}

void Maker::addGps()
{
    note("GPS");
    m_photo.builder.value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .ascii(Gps, 0x0001, "S")
        .rationals(Gps, 0x0002, {{below(90), 1}, {below(60), 1}, {below(6000), 100}})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{below(5000), 1}});
}

void Maker::addThumbnail()
{
    QByteArray thumbnail
        = ExifBuilder::jpeg(20 + static_cast<int>(below(100)), 30, below(1U << 24));
    if (has(7) == (thumbnail.size() % 2 == 0)) {
        thumbnail += '\0'; // ignored behind the end of the image
    }
    note(thumbnail.size() % 2 == 0 ? "even thumbnail" : "odd thumbnail");
    m_photo.builder.shorts(Ifd1, 0x0103, {6}).thumbnail(thumbnail);
    addUnknownTags(Ifd1);
}

RandomPhoto Maker::make()
{
    m_photo.builder = ExifBuilder(has(0) ? ExifBuilder::Order::Big : ExifBuilder::Order::Little);
    m_photo.name = QByteArray::number(m_number) + (has(0) ? ": big-endian" : ": little-endian");
    addFirst();
    if (has(2)) {
        addExif();
    }
    if (has(5)) {
        addGps();
    }
    if (has(6)) {
        addThumbnail();
    }
    const QByteArray image = ExifBuilder::jpeg(16 + static_cast<int>(below(400)),
                                               16 + static_cast<int>(below(300)), below(1U << 24));
    m_photo.builder.photo(image + bytes(below(3) * below(12000)));
    return m_photo;
}

} // namespace

const RandomPhoto &randomPhoto(unsigned number)
{
    static const std::vector<RandomPhoto> photos = [] {
        std::vector<RandomPhoto> all;
        for (unsigned i = 0; i < kRandomPhotos; ++i) {
            all.push_back(Maker(i).make());
        }
        return all;
    }();
    return photos.at(number);
}

} // namespace lumi::test
