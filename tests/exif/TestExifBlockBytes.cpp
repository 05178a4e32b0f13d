// SPDX-License-Identifier: MIT
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/write/exifBlockBytes.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>
#include <QtEndian>

using lumi::test::bytesOf;
using lumi::test::hostBytes;
using lumi::test::numbersOf;

namespace {

constexpr quint16 kByte = 1;
constexpr quint16 kAscii = 2;
constexpr quint16 kShort = 3;
constexpr quint16 kLong = 4;
constexpr quint16 kUndefined = 7;

/// The lists of a block, initially empty.
struct Block
{
    lumi::ExifTagList ifd0;
    lumi::ExifTagList exif;
    lumi::ExifTagList interoperability;
    lumi::ExifTagList gps;
    lumi::ExifTagList ifd1;

    lumi::ExifLists lists() { return {ifd0, exif, interoperability, gps, ifd1}; }
};

void put(lumi::ExifTagList &list, quint16 tag, quint16 type, quint32 count, const QByteArray &bytes)
{
    list.put(std::make_unique<FPVExifTagBytes>(
        tag, type, count, std::span(bytes.constData(), std::size_t(bytes.size()))));
}

void putShort(lumi::ExifTagList &list, quint16 tag, quint16 value)
{
    put(list, tag, kShort, 1, hostBytes<quint16>({value}));
}

void putLong(lumi::ExifTagList &list, quint16 tag, quint32 value)
{
    put(list, tag, kLong, 1, hostBytes<quint32>({value}));
}

quint32 u32(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint32>(bytes.constData() + place);
}

quint16 u16(const QByteArray &bytes, qsizetype place)
{
    return qFromLittleEndian<quint16>(bytes.constData() + place);
}

int lengthField(const QByteArray &photo)
{
    return qFromBigEndian<quint16>(photo.constData() + 4);
}

/// The link behind the entries of the directory at place.
quint32 linkAt(const QByteArray &bytes, qsizetype place)
{
    return u32(bytes, place + 2 + 12L * u16(bytes, place));
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class TestExifBlockBytes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void directoryWithoutTagsHasNoBytes();
    void valueGoesWhereItFits_data();
    void valueGoesWhereItFits();
    void wholeStartByteForByte();
    void startOfAnEmptyBlock();
    void pointersStandAtTheEnd();
    void pointersKeepTheirPlace();
    void pointerOfAnotherShapeIsMadeANumber();
    void pointersOfEmptyListsStay();
    void pointersComeFromTagsAlone();
    void linkOfTheFirstDirectory_data();
    void linkOfTheFirstDirectory();
    void otherLinksAreZero();
    void interoperabilityPointerKeepsItsShape_data();
    void interoperabilityPointerKeepsItsShape();
    void interoperabilityPointerWithoutADirectory();
    void interoperabilityWithoutAPointerIsWritten();
    void thumbnailPointerKeepsItsShape_data();
    void thumbnailPointerKeepsItsShape();
    void thumbnailPointerStaysWithoutAThumbnail();
    void lengthCountsThumbnailAndPad_data();
    void lengthCountsThumbnailAndPad();
    void lengthWrapsBehind16Bits_data();
    void lengthWrapsBehind16Bits();
};

void TestExifBlockBytes::directoryWithoutTagsHasNoBytes()
{
    const lumi::ExifTagList list;
    QCOMPARE(lumi::ifdSize(list), 0U);
    QCOMPARE(lumi::ifdBytes(list, 8), QByteArray());
}

void TestExifBlockBytes::valueGoesWhereItFits_data()
{
    lumi::test::columns<QByteArray, QByteArray>();
    QTest::newRow("no byte") << QByteArray() << hex("0100 34127000 00000000 00000000 00000000");
    QTest::newRow("one byte") << hex("a1") << hex("0100 34120700 01000000 a1000000 00000000");
    QTest::newRow("four bytes stay in the entry")
        << hex("a1a2a3a4") << hex("0100 34120700 04000000 a1a2a3a4 00000000");
    QTest::newRow("five bytes move behind the directory, with a zero byte")
        << hex("a1a2a3a4a5") << hex("0100 34120700 05000000 76010000 00000000 a1a2a3a4a500");
    QTest::newRow("six bytes move without one")
        << hex("a1a2a3a4a5a6") << hex("0100 34120700 06000000 76010000 00000000 a1a2a3a4a5a6");
}

void TestExifBlockBytes::valueGoesWhereItFits()
{
    const auto [value, expected] = lumi::test::row<QByteArray, QByteArray>();
    lumi::ExifTagList list;
    // The type of the first row has no size. It is kept like any other.
    const quint16 type = value.isEmpty() ? 0x70 : kUndefined;
    put(list, 0x1234, type, quint32(value.size()), value);
    QCOMPARE(lumi::ifdBytes(list, 0x164).toHex(), expected.toHex());
    QCOMPARE(lumi::ifdSize(list), quint32(expected.size()));
}

void TestExifBlockBytes::wholeStartByteForByte()
{
    Block block;
    put(block.ifd0, 0x010F, kAscii, 6, QByteArray("Anvil\0", 6));
    put(block.exif, 0x829A, 5, 1, hostBytes<quint32>({1, 60}));
    putLong(block.exif, 0xA005, 0x7777);
    put(block.interoperability, 0x0001, kAscii, 4, QByteArray("R98\0", 4));
    put(block.gps, 0x0000, kByte, 4, hex("02020000"));
    putShort(block.ifd1, 0x0103, 6);
    putLong(block.ifd1, 0x0201, 0x8888);
    putLong(block.ifd1, 0x0202, 3);
    const QByteArray expected = hex("ffd8 ffe1 00b8 457869660000" // segment
                                    "4949 2a00 08000000"          // header
                                    "0300"                        // IFD0 at 8
                                    "0f01 0200 06000000 32000000"
                                    "6987 0400 01000000 38000000"
                                    "2588 0400 01000000 70000000"
                                    "82000000"
                                    "416e76696c00"
                                    "0200" // Exif at 56
                                    "9a82 0500 01000000 56000000"
                                    "05a0 0400 01000000 5e000000"
                                    "00000000"
                                    "01000000 3c000000"
                                    "0100" // interoperability at 94
                                    "0100 0200 04000000 52393800"
                                    "00000000"
                                    "0100" // GPS at 112
                                    "0000 0100 04000000 02020000"
                                    "00000000"
                                    "0300" // IFD1 at 130
                                    "0301 0300 01000000 06000000"
                                    "0102 0400 01000000 ac000000"
                                    "0202 0400 01000000 03000000"
                                    "00000000");
    const QByteArray bytes = lumi::photoStart(block.lists(), 3);
    QCOMPARE(bytes.toHex(), expected.toHex());
    QCOMPARE(lengthField(bytes), int(bytes.size()) - 4 + 3 + 1); // thumbnail, zero byte
}

void TestExifBlockBytes::startOfAnEmptyBlock()
{
    Block block;
    QCOMPARE(lumi::photoStart(block.lists(), 0).toHex(),
             hex("ffd8 ffe1 0010 457869660000 4949 2a00 08000000").toHex());
}

void TestExifBlockBytes::pointersStandAtTheEnd()
{
    Block block;
    putShort(block.ifd0, 0xC000, 1);
    putShort(block.exif, 0x8822, 2);
    putShort(block.gps, 0x001E, 0);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    QCOMPARE(numbersOf(block.ifd0), QList<int>({0xC000, 0x8769, 0x8825}));
    QCOMPARE(u32(bytes, 2 + 12 + 8), 8U + 42);
    QCOMPARE(u32(bytes, 2 + 24 + 8), 8U + 42 + 18);
    QCOMPARE(bytes.size(), 42 + 18 + 18);
}

void TestExifBlockBytes::pointersKeepTheirPlace()
{
    Block block;
    putLong(block.ifd0, 0x8825, 0x1111);
    putLong(block.ifd0, 0x8769, 0x2222);
    putShort(block.ifd0, 0x0112, 1);
    putShort(block.exif, 0x8822, 2);
    putShort(block.gps, 0x001E, 0);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    QCOMPARE(numbersOf(block.ifd0), QList<int>({0x8825, 0x8769, 0x0112}));
    QCOMPARE(u32(bytes, 2 + 8), 8U + 42 + 18);
    QCOMPARE(u32(bytes, 2 + 12 + 8), 8U + 42);
}

void TestExifBlockBytes::pointerOfAnotherShapeIsMadeANumber()
{
    Block block;
    put(block.ifd0, 0x8769, kUndefined, 10, QByteArray(10, 'x'));
    putShort(block.exif, 0x8822, 2);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    QCOMPARE(bytes.toHex(),
             hex("0100 69870400 01000000 1a000000 2c000000"
                 "0100 22880300 01000000 02000000 00000000")
                 .toHex());
}

void TestExifBlockBytes::pointersOfEmptyListsStay()
{
    Block block;
    putLong(block.ifd0, 0x8769, 0x2222);
    putLong(block.ifd0, 0x8825, 0x1111);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    QCOMPARE(u32(bytes, 2 + 8), 0x2222U);
    QCOMPARE(u32(bytes, 2 + 12 + 8), 0x1111U);
    QCOMPARE(bytes.size(), 30);
}

void TestExifBlockBytes::pointersComeFromTagsAlone()
{
    Block block;
    putShort(block.ifd0, 0x0112, 1);
    static_cast<void>(lumi::mainBlock(block.lists()));
    QCOMPARE(numbersOf(block.ifd0), QList<int>({0x0112}));
    // An empty first directory gets a pointer too.
    Block bare;
    putShort(bare.exif, 0x8822, 2);
    const QByteArray bytes = lumi::mainBlock(bare.lists());
    QCOMPARE(numbersOf(bare.ifd0), QList<int>({0x8769}));
    QCOMPARE(u32(bytes, 2 + 8), 8U + 18);
    QCOMPARE(u16(bytes, 18 + 2), quint16(0x8822));
}

void TestExifBlockBytes::linkOfTheFirstDirectory_data()
{
    QTest::addColumn<bool>("withSecond");
    QTest::newRow("points at the second directory") << true;
    QTest::newRow("points behind the block without one") << false;
}

void TestExifBlockBytes::linkOfTheFirstDirectory()
{
    QFETCH(bool, withSecond);
    Block block;
    put(block.ifd0, 0x010F, kAscii, 6, QByteArray("Anvil\0", 6));
    put(block.exif, 0x9286, kUndefined, 9, "untyped!!");
    put(block.gps, 0x001B, kUndefined, 5, "bytes");
    if (withSecond) {
        putShort(block.ifd1, 0x0103, 6);
    }
    const QByteArray bytes = lumi::photoStart(block.lists(), 0).mid(12);
    const auto main = quint32(lumi::mainBlock(block.lists()).size());
    QCOMPARE(linkAt(bytes, 8), 8 + main);
    QCOMPARE(quint32(bytes.size()), 8 + main + (withSecond ? 18 : 0));
}

void TestExifBlockBytes::otherLinksAreZero()
{
    Block block;
    putShort(block.exif, 0x8822, 2);
    putLong(block.exif, 0xA005, 0);
    putShort(block.interoperability, 0x1000, 1);
    putShort(block.gps, 0x001E, 0);
    putShort(block.ifd1, 0x0103, 6);
    const QByteArray bytes = lumi::photoStart(block.lists(), 0).mid(12);
    const QList<int> places = {8 + 30, 8 + 30 + 30, 8 + 30 + 30 + 18, 8 + 30 + 30 + 18 + 18};
    const QList<int> counts = {2, 1, 1, 1};
    for (int i = 0; i < places.size(); ++i) {
        QCOMPARE(int(u16(bytes, places[i])), counts[i]);
        QCOMPARE(linkAt(bytes, places[i]), 0U);
    }
}

void TestExifBlockBytes::interoperabilityPointerKeepsItsShape_data()
{
    QTest::addColumn<quint16>("type");
    QTest::addColumn<quint32>("count");
    QTest::addColumn<int>("size");
    QTest::addColumn<QByteArray>("expected"); // the Exif directory is at offset 26
    QTest::newRow("a long") << kLong << 1U << 4 << hex("2c000000");
    QTest::newRow("a short") << kShort << 1U << 2 << hex("2c00");
    QTest::newRow("nothing") << kLong << 0U << 0 << QByteArray();
    QTest::newRow("three bytes") << kByte << 3U << 3 << hex("2c0000");
    QTest::newRow("two longs") << kLong << 2U << 8 << hex("3400000000000000");
    QTest::newRow("seven untyped bytes") << kUndefined << 7U << 7 << hex("34000000000000");
}

void TestExifBlockBytes::interoperabilityPointerKeepsItsShape()
{
    QFETCH(quint16, type);
    QFETCH(quint32, count);
    QFETCH(int, size);
    QFETCH(QByteArray, expected);
    Block block;
    put(block.exif, 0xA005, type, count, QByteArray(size, 'x'));
    putShort(block.interoperability, 0x1000, 1);
    const QByteArray bytes = QByteArray(8, '\0') + lumi::mainBlock(block.lists());
    const FPVExifTag *tag = block.exif.findNumber(0xA005);
    QCOMPARE(tag->type(), type);
    QCOMPARE(tag->count(), count);
    QCOMPARE(bytesOf(tag).toHex(), expected.toHex());
    QCOMPARE(u16(bytes, 26 + 18 + (size > 4 ? 8 : 0) + 2), quint16(0x1000));
}

void TestExifBlockBytes::interoperabilityPointerWithoutADirectory()
{
    Block block;
    putLong(block.exif, 0xA005, 0x3333);
    putShort(block.gps, 0x001E, 0);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    // The pointer is the offset of the next directory, here GPS.
    QCOMPARE(u32(bytes, 30 + 2 + 8), u32(bytes, 2 + 12 + 8));
    QCOMPARE(u32(bytes, 30 + 2 + 8), 8U + 30 + 18);
}

void TestExifBlockBytes::interoperabilityWithoutAPointerIsWritten()
{
    Block block;
    putShort(block.exif, 0x8822, 2);
    putShort(block.interoperability, 0x1000, 1);
    putShort(block.gps, 0x001E, 0);
    const QByteArray bytes = lumi::mainBlock(block.lists());
    QCOMPARE(numbersOf(block.exif), QList<int>({0x8822}));
    QCOMPARE(u16(bytes, 30 + 18 + 2), quint16(0x1000));
    QCOMPARE(u32(bytes, 2 + 12 + 8), 8U + 30 + 18 + 18);
}

void TestExifBlockBytes::thumbnailPointerKeepsItsShape_data()
{
    lumi::test::columns<quint16, quint32, int, QByteArray>();
    QTest::newRow("a long") << kLong << 1U << 4 << hex("1a000000");
    QTest::newRow("a short") << kShort << 1U << 2 << hex("1a00");
    QTest::newRow("two longs") << kLong << 2U << 8 << hex("2200000000000000");
}

void TestExifBlockBytes::thumbnailPointerKeepsItsShape()
{
    const auto [type, count, size, expected] = lumi::test::row<quint16, quint32, int, QByteArray>();
    Block block;
    put(block.ifd1, 0x0201, type, count, QByteArray(size, 'x'));
    const QByteArray bytes = lumi::photoStart(block.lists(), 100);
    const FPVExifTag *tag = block.ifd1.findNumber(0x0201);
    QCOMPARE(tag->type(), type);
    QCOMPARE(tag->count(), count);
    QCOMPARE(bytesOf(tag).toHex(), expected.toHex());
    QCOMPARE(quint32(bytes.size()) - 12,
             qFromLittleEndian<quint32>(bytesOf(tag).leftJustified(4, '\0').constData()));
}

void TestExifBlockBytes::thumbnailPointerStaysWithoutAThumbnail()
{
    Block block;
    putLong(block.ifd1, 0x0201, 0x12345);
    const QByteArray bytes = lumi::photoStart(block.lists(), 0).mid(12);
    QCOMPARE(u32(bytes, 8 + 2 + 8), 0x12345U);
}

void TestExifBlockBytes::lengthCountsThumbnailAndPad_data()
{
    lumi::test::columns<quint32, int>();
    QTest::newRow("no thumbnail") << 0U << 34;
    QTest::newRow("an even thumbnail") << 2U << 36;
    QTest::newRow("an odd thumbnail and a zero byte") << 3U << 38;
}

void TestExifBlockBytes::lengthCountsThumbnailAndPad()
{
    const auto [thumbnail, length] = lumi::test::row<quint32, int>();
    Block block;
    putLong(block.ifd1, 0x0201, 0);
    const QByteArray bytes = lumi::photoStart(block.lists(), thumbnail);
    QCOMPARE(lengthField(bytes), length);
    QCOMPARE(bytes.size(), 12 + 8 + 18);
}

void TestExifBlockBytes::lengthWrapsBehind16Bits_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the longest that fits") << 65500 << 65534;
    QTest::newRow("one too long") << 65501 << 0;
    QTest::newRow("far too long") << 165501 << (165502 + 34) % 65536;
}

void TestExifBlockBytes::lengthWrapsBehind16Bits()
{
    const auto [size, length] = lumi::test::row<int, int>();
    Block block;
    put(block.ifd0, 0x927C, kUndefined, quint32(size), QByteArray(size, 'm'));
    const QByteArray bytes = lumi::photoStart(block.lists(), 0);
    QCOMPARE(lengthField(bytes), length);
    QCOMPARE(bytes.size(), 38 + size + size % 2);
}

LUMI_TEST(TestExifBlockBytes)
#include "TestExifBlockBytes.moc"
