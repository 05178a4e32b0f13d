// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <sys/stat.h>

using lumi::test::bytesOf;
using lumi::test::ExifBuilder;
using lumi::test::hostBytes;
using lumi::test::numbersOf;
using enum ExifListKind;

namespace {

QByteArray replaced(QByteArray bytes, int place, const QByteArray &with)
{
    return bytes.replace(place, with.size(), with);
}

} // namespace

class TestFPVExifDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEveryListInBothOrders_data();
    void readsEveryListInBothOrders();
    void numbersAreInHostOrder_data();
    void numbersAreInHostOrder();
    void readsAPhotoWithNothingInIt();
    void hasNoExif_data();
    void hasNoExif();
    void refusesWhatIsNoFile();
    void refusesAPipe();
    void staysOpenWhileValid();
    void entryWithoutValuesIsAnEmptyArray();
    void directoryWithoutEntries();
    void laterDuplicateTakesTheEarlierPlace();
    void unknownTypesArePassedOver_data();
    void unknownTypesArePassedOver();
    void interoperabilityOnlyThroughExif();
    void gpsOnlyThroughTheFirstDirectory();
    void pointerMayBeShort();
    void linkBehindTheSecondDirectoryIsKept();
    void findChoosesTheList();

private:
    lumi::test::PhotoFolder m_folder;
};

void TestFPVExifDocument::readsEveryListInBothOrders_data()
{
    lumi::test::addOrders();
}

void TestFPVExifDocument::readsEveryListInBothOrders()
{
    QFETCH(ExifBuilder::Order, order);
    const ExifBuilder photo = lumi::test::fullPhoto(order);
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QCOMPARE(document.littleEndian(), order == ExifBuilder::Order::Little);
    QCOMPARE(document.tiffBase(), 12);
    QCOMPARE(document.app1Length(), int(photo.block().size()) + 8);
    QCOMPARE(document.ifd0Offset(), 8U);
    QCOMPARE(document.ifd1Offset(), photo.offsetOf(Ifd1));
    QCOMPARE(document.ifd0Span(), photo.offsetOf(Ifd1) - 8);
    QCOMPARE(document.nextIfdOffset(), 0U);
    QCOMPARE(document.thumbnailOffset(), photo.thumbnailOffset());
    QCOMPARE(document.thumbnailLength(), quint32(ExifBuilder::jpeg(40, 30, 0xC08040).size()));
    QVERIFY(document.hasThumbnail());
    QVERIFY(document.hasExifIfd());
    QVERIFY(document.hasGpsIfd());
    QCOMPARE(numbersOf(document.ifd0List()),
             (QList<int>{0x010F, 0x0110, 0x0112, 0x011A, 0x0132, 0x0102, 0x8769, 0x8825}));
    QCOMPARE(numbersOf(document.exifList()),
             (QList<int>{0x829A, 0x829D, 0x8827, 0x9000, 0x9101, 0x9204, 0xA002, 0x927C, 0xA005}));
    QCOMPARE(numbersOf(document.gpsList()), (QList<int>{0x0000, 0x0001, 0x0002}));
    QCOMPARE(numbersOf(document.list(Interoperability)), (QList<int>{0x0001, 0x0002}));
    QCOMPARE(numbersOf(document.list(Ifd1)), (QList<int>{0x0103, 0xC001, 0x0201, 0x0202}));
    const FPVExifTag *maker = document.find(0x010F, Ifd0);
    QCOMPARE(maker->type(), quint16(2));
    QCOMPARE(maker->count(), 12U);
}

void TestFPVExifDocument::numbersAreInHostOrder_data()
{
    readsEveryListInBothOrders_data();
}

void TestFPVExifDocument::numbersAreInHostOrder()
{
    QFETCH(ExifBuilder::Order, order);
    const FPVExifDocument document(m_folder.put(lumi::test::fullPhoto(order)));
    QCOMPARE(bytesOf(document.find(0x010F, Ifd0)), QByteArray("Anvil Works\0", 12));
    QCOMPARE(bytesOf(document.find(0x0110, Ifd0)), QByteArray("A1\0", 3));
    QCOMPARE(bytesOf(document.find(0x0112, Ifd0)), hostBytes<quint16>({6}));
    QCOMPARE(bytesOf(document.find(0x0102, Ifd0)), hostBytes<quint16>({8, 9, 10}));
    QCOMPARE(bytesOf(document.find(0x011A, Ifd0)), hostBytes<quint32>({72, 1}));
    QCOMPARE(bytesOf(document.find(0x8827, Exif)), hostBytes<quint16>({100, 200}));
    QCOMPARE(bytesOf(document.find(0xA002, Exif)), hostBytes<quint32>({70000}));
    QCOMPARE(bytesOf(document.find(0x9204, Exif)), hostBytes<qint32>({-1, 3}));
    QCOMPARE(bytesOf(document.find(0x9101, Exif)), QByteArray("\1\2\3\0", 4));
    QCOMPARE(bytesOf(document.find(0x927C, Exif)), QByteArray::fromHex("00ff10204a00b3c5d7"));
    QCOMPARE(bytesOf(document.find(0x0000, Gps)), QByteArray("\2\2\0\0", 4));
    QCOMPARE(bytesOf(document.find(0x0002, Gps)), hostBytes<quint32>({35, 1, 40, 1, 3012, 100}));
    QCOMPARE(bytesOf(document.find(0xC001, Ifd1)), hostBytes<qint32>({-5, 7}));
    QCOMPARE(document.find(0xA002, Exif)->intValue(), 70000);
}

void TestFPVExifDocument::readsAPhotoWithNothingInIt()
{
    const FPVExifDocument document(m_folder.put(ExifBuilder()));
    QVERIFY(document.isValid());
    QVERIFY(document.ifd0List().isEmpty());
    QVERIFY(!document.hasExifIfd());
    QVERIFY(!document.hasGpsIfd());
    QVERIFY(!document.hasThumbnail());
}

void TestFPVExifDocument::hasNoExif_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = lumi::test::fullPhoto(ExifBuilder::Order::Little).file();
    ExifBuilder behind = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    behind.segmentsBefore(QByteArray::fromHex("ffe000104a46494600010101004800480000"));
    QTest::newRow("an APP0 segment stands before it") << behind.file();
    QTest::newRow("a comment stands before it")
        << lumi::test::fullPhoto(ExifBuilder::Order::Little)
               .segmentsBefore(QByteArray::fromHex("fffe000441ff"))
               .file();
    QTest::newRow("a photo without the segment") << ExifBuilder::jpeg(16, 16, 0);
    QTest::newRow("no start of image") << replaced(good, 1, "\xD9");
    QTest::newRow("a first byte that is wrong") << replaced(good, 0, "\xFE");
    QTest::newRow("a marker that is not APP1") << replaced(good, 3, "\xE2");
    QTest::newRow("no marker at all") << replaced(good, 2, "\xFE");
    QTest::newRow("another header") << replaced(good, 6, "http:/");
    QTest::newRow("a header in small letters") << replaced(good, 6, "exif");
    QTest::newRow("a header without its second NUL") << replaced(good, 11, " ");
    QTest::newRow("a mixed byte order mark") << replaced(good, 12, "IM");
    QTest::newRow("an unknown byte order mark") << replaced(good, 12, "XX");
    QTest::newRow("the check number in the wrong order") << replaced(good, 12, "MM");
    QTest::newRow("another check number") << replaced(good, 14, "+");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a text") << QByteArray("This is a text of more than twenty letters.");
}

void TestFPVExifDocument::hasNoExif()
{
    QFETCH(QByteArray, bytes);
    FPVExifDocument document(m_folder.put(bytes));
    QVERIFY(!document.isValid());
    QVERIFY(!document.isOpen());
    QVERIFY(!document.hasThumbnail());
    QVERIFY(!document.thumbnail());
    QVERIFY(document.ifd0List().isEmpty());
}

void TestFPVExifDocument::refusesWhatIsNoFile()
{
    QVERIFY(!FPVExifDocument(QString()).isValid());
    QVERIFY(!FPVExifDocument(m_folder.path(QStringLiteral("missing.jpg"))).isValid());
    QVERIFY(!FPVExifDocument(m_folder.path(QStringLiteral("."))).isValid());
}

void TestFPVExifDocument::refusesAPipe()
{
    const QString path = m_folder.path(QStringLiteral("pipe.jpg"));
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QVERIFY(!FPVExifDocument(path).isValid()); // would block until something writes to it
}

void TestFPVExifDocument::staysOpenWhileValid()
{
    const FPVExifDocument document(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    QVERIFY(document.isValid());
    QVERIFY(document.isOpen());
    QVERIFY(!document.isWritable());
}

void TestFPVExifDocument::entryWithoutValuesIsAnEmptyArray()
{
    const FPVExifDocument document(m_folder.put(ExifBuilder()
                                                    .word(Ifd0, 0x010F, 2, 0, 0x41414141)
                                                    .word(Ifd0, 0x0110, 5, 0, 0x41414141)
                                                    .shorts(Ifd0, 0x0112, {6})));
    QVERIFY(document.isValid());
    QCOMPARE(document.ifd0List().count(), 3);
    QCOMPARE(bytesOf(document.find(0x010F, Ifd0)), QByteArray());
    QVERIFY(document.find(0x010F, Ifd0)->data());
    QCOMPARE(document.find(0x010F, Ifd0)->intValue(), 0);
    QCOMPARE(document.find(0x0110, Ifd0)->text(), QString());
}

void TestFPVExifDocument::directoryWithoutEntries()
{
    // The link then follows the count, where the first entry would be.
    ExifBuilder photo;
    photo.word(Ifd0, 0x0112, 3, 1, 6).entryCount(Ifd0, 0).withoutPointers();
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QVERIFY(document.ifd0List().isEmpty());
    QCOMPARE(document.ifd1Offset(), 0x00030112U);
    QVERIFY(document.list(Ifd1).isEmpty());
}

void TestFPVExifDocument::laterDuplicateTakesTheEarlierPlace()
{
    const FPVExifDocument document(m_folder.put(ExifBuilder()
                                                    .shorts(Ifd0, 0x0112, {1})
                                                    .ascii(Ifd0, 0x010F, "Anvil")
                                                    .longs(Ifd0, 0x0112, {8})));
    QVERIFY(document.isValid());
    QCOMPARE(numbersOf(document.ifd0List()), (QList<int>{0x0112, 0x010F}));
    QCOMPARE(document.find(0x0112, Ifd0)->type(), quint16(4));
    QCOMPARE(document.find(0x0112, Ifd0)->intValue(), 8);
}

void TestFPVExifDocument::unknownTypesArePassedOver_data()
{
    lumi::test::columns<int, bool>();
    const QList<int> known = {1, 2, 3, 4, 5, 7, 9, 10};
    for (int type = 0; type <= 14; ++type) {
        QTest::addRow("type %d", type) << type << known.contains(type);
    }
    QTest::newRow("type 255") << 255 << false;
    QTest::newRow("type 256") << 256 << false;
    QTest::newRow("type 65535") << 65535 << false;
}

void TestFPVExifDocument::unknownTypesArePassedOver()
{
    const auto [type, known] = lumi::test::row<int, bool>();
    for (const quint32 count : {0U, 1U, 3U, 100U}) {
        const FPVExifDocument document(m_folder.put(ExifBuilder()
                                                        .shorts(Ifd0, 0x0100, {1})
                                                        .word(Ifd0, 0x0101, quint16(type), count, 8)
                                                        .shorts(Ifd0, 0x0102, {2})));
        QVERIFY(document.isValid());
        QCOMPARE(document.ifd0List().count(), known ? 3 : 2);
        QCOMPARE(document.find(0x0101, Ifd0) != nullptr, known);
        QCOMPARE(document.find(0x0102, Ifd0)->intValue(), 2);
    }
}

void TestFPVExifDocument::interoperabilityOnlyThroughExif()
{
    ExifBuilder sketch;
    sketch.longs(Ifd0, 0xA005, {0}).ascii(Interoperability, 0x0001, "R98").withoutPointers();
    ExifBuilder photo;
    photo.longs(Ifd0, 0xA005, {sketch.offsetOf(Interoperability)})
        .ascii(Interoperability, 0x0001, "R98")
        .withoutPointers();
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QCOMPARE(document.ifd0List().count(), 1);
    QVERIFY(document.list(Interoperability).isEmpty());
}

void TestFPVExifDocument::gpsOnlyThroughTheFirstDirectory()
{
    ExifBuilder sketch;
    sketch.longs(Ifd0, 0x8769, {0})
        .longs(Exif, 0x8825, {0})
        .ascii(Gps, 0x0001, "N")
        .withoutPointers();
    ExifBuilder photo;
    photo.longs(Ifd0, 0x8769, {sketch.offsetOf(Exif)})
        .longs(Exif, 0x8825, {sketch.offsetOf(Gps)})
        .ascii(Gps, 0x0001, "N")
        .withoutPointers();
    const FPVExifDocument document(m_folder.put(photo));
    QVERIFY(document.isValid());
    QVERIFY(document.hasExifIfd());
    QVERIFY(!document.hasGpsIfd());
}

void TestFPVExifDocument::pointerMayBeShort()
{
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        ExifBuilder photo(order);
        photo.shorts(Ifd0, 0x8769, {26}).shorts(Exif, 0x8827, {400}).withoutPointers();
        QCOMPARE(photo.offsetOf(Exif), 26U);
        const FPVExifDocument document(m_folder.put(photo));
        QVERIFY(document.isValid());
        QCOMPARE(document.find(0x8827, Exif)->intValue(), 400);
    }
}

void TestFPVExifDocument::linkBehindTheSecondDirectoryIsKept()
{
    ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Big);
    const FPVExifDocument document(m_folder.put(photo.link(Ifd1, 0x12345678)));
    QCOMPARE(document.nextIfdOffset(), 0x12345678U);
}

void TestFPVExifDocument::findChoosesTheList()
{
    const FPVExifDocument document(m_folder.put(lumi::test::fullPhoto(ExifBuilder::Order::Little)));
    QVERIFY(document.find(0x829A, Exif));
    QVERIFY(!document.find(0x829A, Ifd0));
    QCOMPARE(document.find(0x0001, Interoperability)->text(), QStringLiteral("R98"));
    QCOMPARE(document.find(0x0001, Gps)->text(), QStringLiteral("N"));
    QVERIFY(document.find(0x0201, Ifd1));
    QVERIFY(!document.find(0xEEEE, Ifd0));
    QCOMPARE(document.find(0x0001, document.gpsList())->text(), QStringLiteral("N"));
    for (const int kind : {-1, 5, 99}) {
        QCOMPARE(&document.list(ExifListKind(kind)), &document.ifd0List());
        QVERIFY(document.find(0x010F, ExifListKind(kind)));
    }
}

LUMI_TEST(TestFPVExifDocument)
#include "TestFPVExifDocument.moc"
