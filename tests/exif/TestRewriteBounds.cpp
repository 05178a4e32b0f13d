// SPDX-License-Identifier: MIT
// Stale pointers and links from an older block, and blocks that are too long for a segment.
#include "exif/write/exifBlockBytes.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>
#include <QtEndian>

#include <algorithm>

using namespace lumi::test;
using enum ExifListKind;

namespace {

/// A big-endian directory that claims this many entries. Its tags, at most 16, have 65520 bytes
/// each.
QByteArray directoryOfLargeValues(quint16 count)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(count, bytes.data());
    for (int i = 0; i < std::min<int>(count, 16); ++i) {
        bytes += QByteArray::fromHex("70000007 0000fff0 00000008");
        bytes[2 + 12 * i + 1] = char(i);
    }
    return bytes;
}

} // namespace

class TestRewriteBounds : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void photoWithoutSecondDirectorySavedTwice_data();
    void photoWithoutSecondDirectorySavedTwice();
    void emptiedGpsSavedTwice_data();
    void emptiedGpsSavedTwice();
    void emptiedGpsWhileExifGrows_data();
    void emptiedGpsWhileExifGrows();
    void emptiedExifKeepsItsStalePointer();
    void emptiedExifDoesNotTakeThePosition_data();
    void emptiedExifDoesNotTakeThePosition();
    void pointerWithoutADirectoryStaysEmpty_data();
    void pointerWithoutADirectoryStaysEmpty();
    void emptiedExifDoesNotTakeTheThumbnail_data();
    void emptiedExifDoesNotTakeTheThumbnail();
    void stalePointerIntoAValue_data();
    void stalePointerIntoAValue();
    void tooLongBlockWraps();
    void tooLongThumbnailIsCounted();
};

void TestRewriteBounds::photoWithoutSecondDirectorySavedTwice_data()
{
    addOrders();
}

void TestRewriteBounds::photoWithoutSecondDirectorySavedTwice()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(plainPhoto(order).photo(ExifBuilder::jpeg(64, 48, 0x345678)));
    const QByteArray before = contentOf(path);
    const auto tags = valuesOf(FPVExifDocument(path));
    QCOMPARE(FPVExifDocument(path).ifd1Offset(), 0U);
    const QImage decoded = QImage::fromData(before);
    QVERIFY(!decoded.isNull());
    for (int save = 0; save < 2; ++save) {
        QCOMPARE(rewritten(path), kDone);
        const FPVExifDocument document(path);
        QVERIFY(document.isValid());
        // There is a link, and it points behind the segment.
        QCOMPARE(int(document.ifd1Offset()), document.app1Length() + 4 - document.tiffBase());
        QVERIFY(document.list(Ifd1).isEmpty());
        QVERIFY(valuesOf(document) == tags);
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(contentOf(path).size(), before.size());
        QCOMPARE(QImage::fromData(contentOf(path)), decoded);
    }
}

void TestRewriteBounds::emptiedGpsSavedTwice_data()
{
    addOrders();
}

void TestRewriteBounds::emptiedGpsSavedTwice()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(fullPhoto(order).photo(ExifBuilder::jpeg(64, 48, 0x345678)));
    const QByteArray before = contentOf(path);
    const QImage decoded = QImage::fromData(before);
    const int stale = FPVExifDocument(path).find(0x8825, Ifd0)->intValue();
    {
        FPVExifWriter writer(path);
        for (const int tag : numbersOf(writer.gpsList())) {
            writer.removeTag(quint16(tag), Gps);
        }
        QVERIFY(!writer.hasGpsIfd());
        QCOMPARE(writer.rewrite(), kDone);
    }
    const FPVExifDocument emptied(path);
    QCOMPARE(emptied.find(0x8825, Ifd0)->intValue(), stale);
    // The second directory is at the old offset now.
    QCOMPARE(int(emptied.ifd1Offset()), stale);
    for (int save = 0; save < 2; ++save) {
        const FPVExifDocument document(path);
        QVERIFY(document.isValid());
        QVERIFY(!document.hasGpsIfd());
        QVERIFY(valuesOf(document) == valuesOf(emptied));
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(QImage::fromData(contentOf(path)), decoded);
        QCOMPARE(rewritten(path), kDone);
    }
    QVERIFY(valuesOf(FPVExifDocument(path)) == valuesOf(emptied));
}

void TestRewriteBounds::emptiedGpsWhileExifGrows_data()
{
    lumi::test::columns<QByteArray, int>();
    // The bytes of the new comment that the stale pointer points to.
    QTest::newRow("letters") << QByteArray("word", 4) << 0;
    QTest::newRow("zeros") << QByteArray(4, '\0') << 0;
    QTest::newRow("a directory of a large value")
        << QByteArray::fromHex("0100 0170 0700 f0ff0000 08000000 0000") << 0;
    QTest::newRow("a directory of a small value")
        << QByteArray::fromHex("0100 0170 0300 01000000 05000000 0000") << 0;
    QTest::newRow("a directory of a GPS tag")
        << QByteArray::fromHex("0100 1e00 0300 01000000 05000000 0000") << 1;
}

void TestRewriteBounds::emptiedGpsWhileExifGrows()
{
    const auto [filling, found] = lumi::test::row<QByteArray, int>();
    const QString path = put(fullPhoto(ExifBuilder::Order::Little));
    const QByteArray before = contentOf(path);
    const int stale = FPVExifDocument(path).find(0x8825, Ifd0)->intValue();
    {
        FPVExifWriter writer(path);
        for (const int tag : numbersOf(writer.gpsList())) {
            writer.removeTag(quint16(tag), Gps);
        }
        // The comment is the last value. The filling is at the offset in the stale pointer.
        const auto place
            = int(8 + lumi::ifdSize(writer.ifd0List()) + lumi::ifdSize(writer.exifList())) + 12;
        QVERIFY(place <= stale);
        const QByteArray comment = QByteArray(stale - place, 'x') + filling + QByteArray(3000, 'x');
        writer.setTag(0x9286, 7, quint32(comment.size()), comment.constData(), Exif);
        QCOMPARE(writer.rewrite(), kDone);
        QCOMPARE(contentOf(path).mid(12 + stale, filling.size()), filling);
    }
    const auto grown = valuesOf(FPVExifDocument(path));
    for (int save = 0; save < 2; ++save) {
        const FPVExifDocument document(path);
        QVERIFY(bytesOf(document.find(0x9286, Exif)).contains(filling));
        QCOMPARE(document.gpsList().count(), found);
        QVERIFY(valuesOf(document) == grown);
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(rewritten(path), kDone);
    }
}

void TestRewriteBounds::emptiedExifKeepsItsStalePointer()
{
    const QString path = put(plainPhoto(ExifBuilder::Order::Little));
    const QByteArray before = contentOf(path);
    const QImage decoded = QImage::fromData(before);
    const int stale = FPVExifDocument(path).find(0x8769, Ifd0)->intValue();
    {
        FPVExifWriter writer(path);
        writer.removeTag(0x829A, Exif);
        // The writer does not change the pointer to an empty list.
        writer.setTag(0x0131, 2, 40, QByteArray(39, 's').constData(), Ifd0);
        QCOMPARE(writer.rewrite(), kDone);
    }
    const auto emptied = valuesOf(FPVExifDocument(path));
    for (int save = 0; save < 2; ++save) {
        const FPVExifDocument document(path);
        QCOMPARE(document.find(0x8769, Ifd0)->intValue(), stale);
        QVERIFY(!document.hasExifIfd());
        QVERIFY(document.hasGpsIfd());
        QVERIFY(valuesOf(document) == emptied);
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(QImage::fromData(contentOf(path)), decoded);
        QCOMPARE(rewritten(path), kDone);
    }
    FPVExifWriter bare(m_folder->put(ExifBuilder().shorts(Ifd0, 0x0112, {1})));
    QCOMPARE(bare.rewrite(), kDone);
    QCOMPARE(numbersOf(FPVExifDocument(bare.fileName()).ifd0List()), QList<int>({0x0112}));
}

void TestRewriteBounds::emptiedExifDoesNotTakeThePosition_data()
{
    addOrders();
}

/// The GPS directory moves to the offset of the Exif directory. If it were read as Exif too, the
/// position would still be in the photo after the user cleared it.
void TestRewriteBounds::emptiedExifDoesNotTakeThePosition()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(plainPhoto(order));
    {
        FPVExifWriter writer(path);
        writer.removeTag(0x829A, Exif);
        QCOMPARE(writer.rewrite(), kDone);
    }
    for (int save = 0; save < 2; ++save) {
        const FPVExifDocument document(path);
        QCOMPARE(document.find(0x8769, Ifd0)->intValue(), document.find(0x8825, Ifd0)->intValue());
        QVERIFY(!document.hasExifIfd());
        QVERIFY(document.hasGpsIfd());
        QCOMPARE(rewritten(path), kDone);
    }
    FPVExifWriter writer(path);
    for (const int number : numbersOf(writer.gpsList())) {
        writer.removeTag(quint16(number), Gps);
    }
    QCOMPARE(writer.rewrite(), kDone);
    const FPVExifDocument cleared(path);
    QVERIFY(!cleared.hasExifIfd());
    QVERIFY(!cleared.hasGpsIfd());
}

void TestRewriteBounds::emptiedExifDoesNotTakeTheThumbnail_data()
{
    addOrders();
}

/// A comment that was added and cleared again leaves a pointer to the second directory.
void TestRewriteBounds::emptiedExifDoesNotTakeTheThumbnail()
{
    QFETCH(ExifBuilder::Order, order);
    const QByteArray picture = ExifBuilder::jpeg(40, 30, 0xC08040);
    ExifBuilder photo(order);
    const QString path = put(photo.ascii(Ifd0, 0x010F, "Anvil Works").thumbnail(picture));
    const QByteArray comment("ASCII\0\0\0at noon", 15);
    for (const char *data : {comment.constData(), static_cast<const char *>(nullptr)}) {
        FPVExifWriter writer(path);
        writer.setTag(0x9286, 7, quint32(comment.size()), data, Exif);
        QCOMPARE(writer.rewrite(), kDone);
    }
    for (int save = 0; save < 3; ++save) {
        FPVExifDocument document(path);
        QCOMPARE(document.find(0x8769, Ifd0)->intValue(), int(document.ifd1Offset()));
        QVERIFY(!document.hasExifIfd());
        QCOMPARE(numbersOf(document.list(Ifd1)), (QList<int>{0x0201, 0x0202}));
        QCOMPARE(thumbnailBytes(document), picture);
        QCOMPARE(rewritten(path), kDone);
    }
}

void TestRewriteBounds::pointerWithoutADirectoryStaysEmpty_data()
{
    QTest::addColumn<ExifListKind>("next");
    QTest::newRow("the GPS directory is next") << Gps;
    QTest::newRow("the second directory is next") << Ifd1;
    QTest::newRow("nothing is next") << Ifd0;
}

void TestRewriteBounds::pointerWithoutADirectoryStaysEmpty()
{
    // The interoperability pointer is set even if there is no such directory.
    QFETCH(ExifListKind, next);
    ExifBuilder photo;
    photo.longs(Exif, 0xA005, {0x100000}).shorts(next, next == Gps ? 0x0005 : 0x0103, {6});
    const QString path = put(photo);
    const auto before = valuesOf(FPVExifDocument(path));
    for (int save = 0; save < 2; ++save) {
        QCOMPARE(rewritten(path), kDone);
        const FPVExifDocument document(path);
        QVERIFY(document.find(0xA005, Exif)->intValue() < document.app1Length());
        QVERIFY(document.list(Interoperability).isEmpty());
        QVERIFY(valuesOf(document) == before);
    }
}

void TestRewriteBounds::stalePointerIntoAValue_data()
{
    lumi::test::columns<int, int, int>();
    QTest::newRow("Exif, a directory") << 0x8769 << 16 << 16;
    QTest::newRow("Exif, one entry more than the segment has") << 0x8769 << 17 << 0;
    QTest::newRow("GPS, no entry is a GPS tag") << 0x8825 << 16 << 0;
}

/// The old place of the directory now holds a value that looks like a directory of large values.
/// Together they exceed a segment.
void TestRewriteBounds::stalePointerIntoAValue()
{
    const auto [pointer, count, found] = lumi::test::row<int, int, int>();
    // The value follows the first directory, before and after.
    constexpr quint32 kPlace = 8 + 2 + 2 * 12 + 4;
    constexpr quint16 kNumber = 0xC000;
    const QByteArray value = directoryOfLargeValues(quint16(count));
    ExifBuilder photo(ExifBuilder::Order::Big);
    photo.longs(Ifd0, quint16(pointer), {kPlace}).undefined(Ifd0, kNumber, value);
    const QString path = put(photo.withoutPointers());
    const QByteArray before = contentOf(path);
    for (int save = 0; save < 2; ++save) {
        FPVExifWriter writer(path);
        QCOMPARE(writer.find(pointer, Ifd0)->intValue(), int(kPlace));
        QCOMPARE(bytesOf(writer.find(kNumber, Ifd0)), value);
        QCOMPARE(writer.exifList().count(), found);
        QVERIFY(!writer.hasGpsIfd());
        QCOMPARE(writer.segmentLength() > 65535, found > 0);
        QVERIFY(found > 0 || writer.rewrite() == kDone);
        QVERIFY(restOf(contentOf(path)) == restOf(before));
    }
}

void TestRewriteBounds::tooLongBlockWraps()
{
    const QString path = put(plainPhoto(ExifBuilder::Order::Little));
    const QByteArray before = contentOf(path);
    FPVExifWriter writer(path);
    const QByteArray value(65000, 'v');
    writer.setTag(0x7001, 7, quint32(value.size()), value.constData(), Ifd0);
    writer.setTag(0x7002, 7, quint32(value.size()), value.constData(), Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    const QByteArray after = contentOf(path);
    QCOMPARE(after.size(), before.size() + 2L * (12 + 65000));
    const auto length = qFromBigEndian<quint16>(after.constData() + 4);
    QCOMPARE(int(length),
             int((before.size() - restOf(before).size() - 4 + 2L * (12 + 65000)) % 65536));
    QVERIFY(after.endsWith(restOf(before)));
}

void TestRewriteBounds::tooLongThumbnailIsCounted()
{
    // The thumbnail is behind the image and too large for a segment.
    const QByteArray image = ExifBuilder::jpeg(16, 12, 0);
    constexpr int kSize = 70000;
    const QByteArray thumbnail = ExifBuilder::jpeg(40, 30, 0xC08040).leftJustified(kSize, '\0');
    const auto photoWith = [&](quint32 offset) {
        ExifBuilder photo = plainPhoto(ExifBuilder::Order::Little);
        photo.longs(Ifd1, 0x0201, {offset}).longs(Ifd1, 0x0202, {quint32(kSize)});
        return photo.photo(image + thumbnail);
    };
    const auto blockSize = photoWith(0).block().size();
    const QString path = put(photoWith(quint32(blockSize + image.size()) - 2));
    const std::unique_ptr<QImage> shown(FPVExifDocument::thumbnail(path));
    QVERIFY(shown);
    QCOMPARE(shown->size(), QSize(40, 30));
    QCOMPARE(FPVExifWriter(path).segmentLength(), 8 + blockSize + kSize);
}

LUMI_TEST(TestRewriteBounds)
#include "TestRewriteBounds.moc"
