// SPDX-License-Identifier: MIT
#include "tests/items/HostileFiles.h"

#include "tests/items/JpegMaker.h"
#include "tests/support/ExifBuilder.h"

#include <random>

namespace lumi::test {

namespace {

constexpr quint32 kEndlessCount = 0xFFFFFFFF;
constexpr quint16 kTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 65535};

class Collection
{
public:
    void add(const QByteArray &name, const QByteArray &bytes) { files.push_back({name, bytes}); }

    /// The whole file, and the file cut before, at and after each boundary of a segment.
    void addWithCuts(const QByteArray &name, const QByteArray &bytes);

    std::vector<HostileFile> files;
};

int wordAt(const QByteArray &bytes, qsizetype at)
{
    return static_cast<uchar>(bytes[at]) << 8 | static_cast<uchar>(bytes[at + 1]);
}

void setWord(QByteArray *bytes, qsizetype at, int value)
{
    (*bytes)[at] = static_cast<char>(value >> 8);
    (*bytes)[at + 1] = static_cast<char>(value);
}

/// The positions of all markers up to the first scan, including its own.
std::vector<qsizetype> markers(const QByteArray &jpeg)
{
    std::vector<qsizetype> found;
    for (qsizetype at = 2; at + 4 <= jpeg.size();) {
        found.push_back(at);
        if (jpeg[at + 1] == '\xda') {
            break;
        }
        at += 2 + wordAt(jpeg, at + 2);
    }
    return found;
}

void Collection::addWithCuts(const QByteArray &name, const QByteArray &bytes)
{
    add(name, bytes);
    std::vector<qsizetype> places = markers(bytes);
    places.push_back(bytes.size() - 2);
    for (const qsizetype place : places) {
        for (const qsizetype cut : {place - 1, place, place + 1, place + 3, place + 5}) {
            if (cut < bytes.size()) {
                add(name + " cut at " + QByteArray::number(cut), bytes.first(cut));
            }
        }
    }
}

void addKinds(Collection *all)
{
    const QSize size(70, 50);
    all->addWithCuts("colour", makeJpeg({.size = size}));
    all->addWithCuts("gray", makeJpeg({.size = size, .components = 1}));
    all->addWithCuts("CMYK", makeJpeg({.size = size, .components = 4}));
    all->addWithCuts("progressive", makeJpeg({.size = size, .progressive = true}));
    all->add("YCCK", makeJpeg({.size = size, .components = 4, .ycck = true}));
    all->add("arithmetic-coded", makeJpeg({.size = size, .arithmetic = true}));
    all->add("arithmetic-coded progressive",
             makeJpeg({.size = size, .progressive = true, .arithmetic = true}));
    all->add("two samples", makeJpeg({.size = size, .components = 2}));
    all->add("a scan each", makeJpeg({.size = size, .separateScans = true}));
    all->add("600 scans", makeJpeg({.size = size, .progressiveScans = 600}));
}

void addLyingSizes(Collection *all)
{
    const QSize size(70, 50);
    const std::pair<const char *, QByteArray> kinds[] = {
        {"colour", makeJpeg({.size = size})},
        {"gray", makeJpeg({.size = size, .components = 1})},
        {"four samples", makeJpeg({.size = size, .components = 4})},
        {"progressive", makeJpeg({.size = size, .progressive = true})},
        {"arithmetic-coded", makeJpeg({.size = size, .arithmetic = true})},
        {"a scan each", makeJpeg({.size = size, .separateScans = true})},
        {"600 scans", makeJpeg({.size = size, .progressiveScans = 600})},
    };
    const QSize lies[] = {{65500, 65500}, {65535, 65535}, {65501, 1}, {0, 0},       {70, 0},
                          {0, 50},        {1, 65500},     {65500, 1}, {4096, 2048}, {69, 49}};
    for (const auto &[name, bytes] : kinds) {
        for (const QSize lie : lies) {
            all->add(QByteArray(name) + " says " + QByteArray::number(lie.width()) + " x "
                         + QByteArray::number(lie.height()),
                     withSize(bytes, lie.width(), lie.height()));
        }
    }
}

void addLyingSegments(Collection *all)
{
    const QByteArray bytes = makeJpeg({.size = QSize(70, 50)});
    for (const qsizetype at : markers(bytes)) {
        const QByteArray where = QByteArray::number(at);
        for (const int length : {0, 1, 2, 3, 0x7FFF, 0xFFFF}) {
            QByteArray lying = bytes;
            setWord(&lying, at + 2, length);
            all->add("segment at " + where + " of length " + QByteArray::number(length), lying);
        }
        const qsizetype length = 2 + wordAt(bytes, at + 2);
        all->add("no segment at " + where, QByteArray(bytes).remove(at, length));
        all->add("twice the segment at " + where,
                 QByteArray(bytes).insert(at, bytes.mid(at, length)));
    }
    all->add("empty", {});
    all->add("one byte", "\xff");
    all->add("the start alone", "\xff\xd8");
    all->add("start and end", "\xff\xd8\xff\xd9");
    all->add("two starts", "\xff\xd8" + bytes);
    all->add("fill bytes", "\xff\xd8" + QByteArray(100000, '\xff'));
    all->add("noise behind the end", bytes + QByteArray(100000, '\x55'));
    all->add("a photo behind the photo", bytes + bytes);
    all->add("zeroes", QByteArray(4096, '\0'));
}

void addDamage(Collection *all)
{
    std::mt19937 random(7); // NOLINT(bugprone-random-generator-seed): the same in every run
    for (const bool progressive : {false, true}) {
        const QByteArray bytes
            = makeJpeg({.size = QSize(70, 50), .progressive = progressive, .restartInterval = 1});
        for (int copy = 0; copy < 30; ++copy) {
            QByteArray damaged = bytes;
            for (int i = 0; i < 10; ++i) {
                damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))]
                    = static_cast<char>(random());
            }
            all->add((progressive ? "progressive damage " : "damage ") + QByteArray::number(copy),
                     damaged);
        }
    }
}

ExifBuilder ordinaryExif()
{
    ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .shorts(ExifListKind::Exif, 0x8827, {100, 200, 400})
        .makerNote(QByteArray(40, '\x33'))
        .ascii(ExifListKind::Interoperability, 0x0001, "R98")
        .rationals(ExifListKind::Gps, 0x0002, {{35, 1}, {40, 1}, {0, 1}})
        .thumbnail(ExifBuilder::jpeg(40, 30, 0x336699));
    return builder;
}

void addLyingValues(Collection *all)
{
    for (const quint16 type : kTypes) {
        const QByteArray named = "type " + QByteArray::number(type);
        for (const quint32 count :
             {0U, 1U, 5U, 0x10000U, 0x20000001U, 0x7FFFFFFFU, kEndlessCount}) {
            const QByteArray name = named + " with " + QByteArray::number(count) + " values at ";
            all->add(name + "an offset",
                     ordinaryExif().word(ExifListKind::Exif, 0x9286, type, count, 8).file());
            all->add(
                name + "nowhere",
                ordinaryExif().word(ExifListKind::Ifd0, 0x8298, type, count, 0xFFFFFFF0).file());
        }
    }
}

void addLyingDirectories(Collection *all)
{
    constexpr quint16 kPointers[] = {0x8769, 0x8825, 0xA005, 0x0201, 0x0202};
    constexpr quint32 kPlaces[] = {0, 1, 8, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFF};
    for (const quint16 pointer : kPointers) {
        for (const quint32 place : kPlaces) {
            const QByteArray name
                = "pointer " + QByteArray::number(pointer, 16) + " to " + QByteArray::number(place);
            const ExifListKind list = pointer < 0x8000 ? ExifListKind::Ifd1
                : pointer == 0xA005                    ? ExifListKind::Exif
                                                       : ExifListKind::Ifd0;
            all->add(name,
                     ordinaryExif().withoutPointers().word(list, pointer, 4, 1, place).file());
        }
    }
    for (const quint32 place : kPlaces) {
        const QByteArray to = QByteArray::number(place);
        all->add("first directory at " + to, ordinaryExif().ifd0Offset(place).file());
        all->add("linked to " + to, ordinaryExif().link(ExifListKind::Ifd0, place).file());
        all->add("thumbnail linked to " + to,
                 ordinaryExif().link(ExifListKind::Ifd1, place).file());
    }
    for (const quint16 count : {quint16(0), quint16(1), quint16(0x7FFF), quint16(0xFFFF)}) {
        const QByteArray entries = QByteArray::number(count) + " entries in ";
        for (const ExifListKind list :
             {ExifListKind::Ifd0, ExifListKind::Exif, ExifListKind::Gps, ExifListKind::Ifd1}) {
            all->add(entries + QByteArray::number(int(list)),
                     ordinaryExif().entryCount(list, count).file());
        }
        all->add("Exif segment of length " + QByteArray::number(count),
                 ordinaryExif().app1Length(count).file());
    }
}

void addExifThumbnails(Collection *all)
{
    const QByteArray whole = makeJpeg({.size = QSize(70, 50)});
    const std::pair<const char *, QByteArray> thumbnails[] = {
        {"empty", {}},
        {"noise", QByteArray(500, '\x5a')},
        {"cut", whole.first(whole.size() / 2)},
        {"lying about its size", withSize(whole, 65500, 65500)},
        {"of four samples", makeJpeg({.size = QSize(70, 50), .components = 4})},
        {"a text", "a text and no picture"},
        {"a scan bomb", makeJpeg({.size = QSize(70, 50), .progressiveScans = 600})},
        {"a large scan bomb",
         withSize(makeJpeg({.size = QSize(70, 50), .progressiveScans = 600}), 5000, 5000)},
        {"far too large", makeJpeg({.size = QSize(3000, 2000), .plain = true})},
    };
    for (const auto &[name, bytes] : thumbnails) {
        all->add(QByteArray("thumbnail ") + name, ordinaryExif().thumbnail(bytes).file());
    }
}

} // namespace

std::vector<HostileFile> hostileFiles()
{
    Collection all;
    addKinds(&all);
    addLyingSizes(&all);
    addLyingSegments(&all);
    addDamage(&all);
    addLyingValues(&all);
    addLyingDirectories(&all);
    addExifThumbnails(&all);
    const QByteArray exif = ordinaryExif().file();
    for (qsizetype cut = 0; cut < exif.size(); cut += 7) {
        all.add("Exif cut at " + QByteArray::number(cut), exif.first(cut));
    }
    return all.files;
}

} // namespace lumi::test
