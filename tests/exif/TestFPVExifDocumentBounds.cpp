// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::test::bytesOf;
using lumi::test::ExifBuilder;
using lumi::test::numbersOf;
using enum ExifListKind;

class TestFPVExifDocumentBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headerMustBeWhole();
    void cutFileReadsZero();
    void directoriesEndWithTheSegment();
    void directoryCutByTheSegment();
    void segmentShorterThanItsHeader_data();
    void segmentShorterThanItsHeader();
    void firstDirectoryInsideTheHeader();
    void valueBehindTheSegment();
    void valueBehindTheFileIsZero_data();
    void valueBehindTheFileIsZero();
    void hugeCountsArePassedOver_data();
    void hugeCountsArePassedOver();
    void loopsOfDirectoriesEnd();
    void directoryBeyondTheSegment_data();
    void directoryBeyondTheSegment();
    void pointedDirectoryOfACutFileKeepsWhatIsThere();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifDocumentBounds::headerMustBeWhole()
{
    const QByteArray good = lumi::test::fullPhoto(ExifBuilder::Order::Little).file();
    for (int length = 0; length < 20; ++length) {
        const FPVExifDocument document(m_folder.put(good.left(length)));
        QVERIFY(!document.isValid());
        QVERIFY(!document.isOpen());
    }
    const FPVExifDocument document(m_folder.put(good.left(20)));
    QVERIFY(document.isValid());
    QVERIFY(document.ifd0List().isEmpty());
}

void TestFPVExifDocumentBounds::cutFileReadsZero()
{
    // Bytes behind the cut read as 0.
    const QByteArray good
        = ExifBuilder().shorts(Ifd0, 0x0112, {6}).ascii(Ifd0, 0x010F, "Anvil Works").file();
    const FPVExifDocument document(m_folder.put(good.left(12 + 8 + 2 + 24 + 4 + 5)));
    QVERIFY(document.isValid());
    QCOMPARE(document.find(0x0112, Ifd0)->intValue(), 6);
    QCOMPARE(bytesOf(document.find(0x010F, Ifd0)), QByteArray("Anvil\0\0\0\0\0\0\0", 12));
}

void TestFPVExifDocumentBounds::directoriesEndWithTheSegment()
{
    // The link points behind the segment, to bytes that look like a directory.
    ExifBuilder sketch;
    sketch.shorts(Ifd0, 0x0112, {6}).link(Ifd0, 1);
    const auto end = quint32(sketch.block().size());
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0112, {6}).link(Ifd0, end);
    const QByteArray directory = QByteArray::fromHex("0100 1201 0300 01000000 07000000 00000000");
    QByteArray bytes = photo.file();
    bytes.insert(12 + int(end), directory);
    const FPVExifDocument document(m_folder.put(bytes));
    QVERIFY(document.isValid());
    QCOMPARE(document.ifd1Offset(), end);
    QVERIFY(document.list(Ifd1).isEmpty());
    QCOMPARE(document.nextIfdOffset(), 0U);
    QCOMPARE(document.ifd0List().count(), 1);
}

void TestFPVExifDocumentBounds::directoryCutByTheSegment()
{
    ExifBuilder photo;
    photo.shorts(Ifd0, 0x0100, {1}).shorts(Ifd0, 0x0101, {2}).shorts(Ifd0, 0x0102, {3});
    // The segment ends after the first byte of the second value.
    photo.app1Length(quint16(8 + 8 + 2 + 12 + 8 + 1)).link(Ifd0, 0x01010101);
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QCOMPARE(numbersOf(document.ifd0List()), (QList<int>{0x0100, 0x0101}));
    QCOMPARE(document.find(0x0101, Ifd0)->intValue(), 2);
    QCOMPARE(document.ifd1Offset(), 0U);
}

void TestFPVExifDocumentBounds::segmentShorterThanItsHeader_data()
{
    QTest::addColumn<int>("length");
    for (const int length : {0, 1, 2, 8, 15, 16, 17}) {
        QTest::addRow("a length of %d", length) << length;
    }
}

void TestFPVExifDocumentBounds::segmentShorterThanItsHeader()
{
    QFETCH(int, length);
    ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    const FPVExifDocument document(m_folder.put(photo.app1Length(quint16(length))));
    QVERIFY(document.isValid());
    QCOMPARE(document.app1Length(), length);
    QVERIFY(document.ifd0List().isEmpty());
    QCOMPARE(document.ifd1Offset(), 0U);
}

void TestFPVExifDocumentBounds::firstDirectoryInsideTheHeader()
{
    // "II" is read as 18761 entries. The segment ends long before.
    ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    const FPVExifDocument document(m_folder.put(photo.ifd0Offset(0)));
    QVERIFY(document.isValid());
    QCOMPARE(document.ifd0Offset(), 0U);
    QVERIFY(document.ifd0List().count() < photo.block().size() / 12);
}

void TestFPVExifDocumentBounds::valueBehindTheSegment()
{
    ExifBuilder sketch;
    sketch.word(Ifd0, 0x010F, 2, 8, 0).word(Ifd0, 0x0110, 3, 4, 0);
    const auto place = quint32(sketch.file().size() - 12);
    ExifBuilder photo;
    photo.word(Ifd0, 0x010F, 2, 8, place).word(Ifd0, 0x0110, 3, 4, place);
    const FPVExifDocument document(m_folder.put(photo.file() + "Anvil!!"));
    QVERIFY(document.isValid());
    QCOMPARE(bytesOf(document.find(0x010F, Ifd0)), QByteArray("Anvil!!\0", 8));
    QCOMPARE(bytesOf(document.find(0x0110, Ifd0)), QByteArray("Anvil!!\0", 8));
}

void TestFPVExifDocumentBounds::valueBehindTheFileIsZero_data()
{
    QTest::addColumn<quint32>("offset");
    QTest::newRow("far behind the file") << 0x00100000U;
    QTest::newRow("behind the largest int") << 0x80000000U;
    QTest::newRow("the largest offset") << 0xFFFFFFFFU;
}

void TestFPVExifDocumentBounds::valueBehindTheFileIsZero()
{
    QFETCH(quint32, offset);
    const FPVExifDocument document(
        m_folder.put(ExifBuilder().word(Ifd0, 0x010F, 2, 9, offset).shorts(Ifd0, 0x0112, {6})));
    QVERIFY(document.isValid());
    QCOMPARE(bytesOf(document.find(0x010F, Ifd0)), QByteArray(9, '\0'));
    QCOMPARE(document.find(0x0112, Ifd0)->intValue(), 6);
}

void TestFPVExifDocumentBounds::hugeCountsArePassedOver_data()
{
    QTest::addColumn<int>("type");
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 65535}) {
        QTest::addRow("type %d", type) << type;
    }
}

void TestFPVExifDocumentBounds::hugeCountsArePassedOver()
{
    QFETCH(int, type);
    // 0x20000000 times 8 is 0 in 32 bits.
    for (const quint32 count : {0xFFFFFFFFU, 0x80000000U, 0x20000000U, 0x40000000U}) {
        const FPVExifDocument document(m_folder.put(
            ExifBuilder().word(Ifd0, 0x0101, quint16(type), count, 8).shorts(Ifd0, 0x0112, {6})));
        QVERIFY(document.isValid());
        QVERIFY(!document.find(0x0101, Ifd0));
        QCOMPARE(document.find(0x0112, Ifd0)->intValue(), 6);
    }
}

void TestFPVExifDocumentBounds::loopsOfDirectoriesEnd()
{
    ExifBuilder photo;
    const quint32 exif = 8 + 2 + 12 + 4;
    photo.longs(Ifd0, 0x8769, {exif}).longs(Exif, 0xA005, {exif});
    photo.link(Ifd0, 8).withoutPointers();
    QCOMPARE(photo.offsetOf(Exif), exif);
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QCOMPARE(numbersOf(document.ifd0List()), QList<int>{0x8769});
    QCOMPARE(numbersOf(document.exifList()), QList<int>{0xA005});
    QVERIFY(document.list(Ifd1).isEmpty());
    QVERIFY(document.list(Interoperability).isEmpty());
}

void TestFPVExifDocumentBounds::directoryBeyondTheSegment_data()
{
    lumi::test::columns<ExifListKind, int>();
    QTest::newRow("Exif") << Exif << 0x9003;
    QTest::newRow("interoperability") << Interoperability << 0x0001;
    QTest::newRow("GPS") << Gps << 0x0005;
    QTest::newRow("the second one") << Ifd1 << 0x0103;
}

void TestFPVExifDocumentBounds::directoryBeyondTheSegment()
{
    const auto [list, tag] = lumi::test::row<ExifListKind, int>();
    // Bytes of the segment behind the last entry. Negative: the segment ends inside the directory.
    for (const int spare : {5, 0, -1, -12, -24, -25, -26}) {
        for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
            ExifBuilder photo(order);
            photo.shorts(Ifd0, 0x0112, {6})
                .shorts(list, quint16(tag), {1})
                .shorts(list, 0xB000, {1});
            const int entriesEnd = int(photo.offsetOf(list)) + 2 + 24;
            photo.app1Length(quint16(8 + entriesEnd + spare));
            const FPVExifDocument document(m_folder.put(photo));
            QCOMPARE(document.list(list).count(), spare >= 0 ? 2 : 0);
            QVERIFY(document.find(0x0112, Ifd0));
        }
    }
}

void TestFPVExifDocumentBounds::pointedDirectoryOfACutFileKeepsWhatIsThere()
{
    for (const ExifListKind list : {Exif, Gps, Ifd1}) {
        ExifBuilder photo;
        photo.shorts(Ifd0, 0x0112, {6}).shorts(list, 0x0005, {1}).shorts(list, 0x0007, {1});
        const qsizetype firstEnd = 12 + qsizetype(photo.offsetOf(list)) + 2 + 12;
        const FPVExifDocument document(m_folder.put(photo.file().left(firstEnd)));
        QVERIFY(document.isValid());
        QCOMPARE(numbersOf(document.list(list)), QList<int>{0x0005});
    }
}

LUMI_TEST(TestFPVExifDocumentBounds)
#include "TestFPVExifDocumentBounds.moc"
