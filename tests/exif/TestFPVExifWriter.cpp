// SPDX-License-Identifier: MIT
#include "exif/FPVExifWriter.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/tagLists.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QtEndian>

#include <sys/stat.h>

using lumi::test::bytesOf;
using lumi::test::contentOf;
using lumi::test::ExifBuilder;
using lumi::test::FakeMachine;
using lumi::test::fullPhoto;
using lumi::test::numbersOf;
using lumi::test::restOf;
using lumi::test::thumbnailBytes;
using lumi::test::valuesOf;
using enum ExifListKind;

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 2;

int rewritten(const QString &path)
{
    return FPVExifWriter(path).rewrite();
}

/// A photo whose second directory is missing.
ExifBuilder plainPhoto(ExifBuilder::Order order)
{
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .shorts(Ifd0, 0x0112, {6})
        .rationals(Exif, 0x829A, {{1, 60}})
        .value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}});
    return photo;
}

void addOrders()
{
    QTest::addColumn<ExifBuilder::Order>("order");
    QTest::newRow("a little-endian photo") << ExifBuilder::Order::Little;
    QTest::newRow("a big-endian photo") << ExifBuilder::Order::Big;
}

} // namespace

class TestFPVExifWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void setTagTakesThePlaceOfTheOldOne();
    void newTagBecomesTheLast();
    void setTagCopiesAsManyBytesAsTypeAndCountSay_data();
    void setTagCopiesAsManyBytesAsTypeAndCountSay();
    void setTagWithoutDataRemoves();
    void removeTagRemovesOnlyThere();
    void listsAreChosenByKind_data();
    void listsAreChosenByKind();
    void unreadablePhotoTakesNoTags();
    void rewriteKeepsEveryTag_data();
    void rewriteKeepsEveryTag();
    void rewriteOfTheRewrittenChangesNoByte_data();
    void rewriteOfTheRewrittenChangesNoByte();
    void changedTagsAreRead();
    void tagAddedStandsAtTheEnd();
    void imageDataStayByteForByte_data();
    void imageDataStayByteForByte();
    void oddThumbnailIsFollowedByAZeroByte();
    void thumbnailOutsideTheFileIsNotCopied_data();
    void thumbnailOutsideTheFileIsNotCopied();
    void thumbnailWithoutItsTagIsDropped();
    void thumbnailOutsideTheSegmentMovesIn();
    void whatTheListsDoNotHoldIsDropped();
    void makerNoteKeepsItsBytes();
    void photoWithoutSecondDirectorySavedTwice_data();
    void photoWithoutSecondDirectorySavedTwice();
    void emptiedGpsSavedTwice_data();
    void emptiedGpsSavedTwice();
    void emptiedExifKeepsItsStalePointer();
    void tooLongBlockWraps();
    void temporaryNames_data();
    void temporaryNames();
    void temporaryNameIsTheFirstFree();
    void takenNamesAreNotTouched();
    void noFreeNameIsAFailure();
    void nothingElseIsLeftInTheFolder();
    void permissionsAreKept_data();
    void permissionsAreKept();
    void linkIsReplacedByThePhoto();
    void unreadablePhotoIsNotTouched_data();
    void unreadablePhotoIsNotTouched();
    void photoWithoutImageDataIsNotTouched_data();
    void photoWithoutImageDataIsNotTouched();
    void missingPhotoIsAFailure();
    void anotherFileUnderTheNameIsNotTouched_data();
    void anotherFileUnderTheNameIsNotTouched();
    void rewriteWorksOnce();
    void relativePathIsFound();

private:
    QString put(const ExifBuilder &photo) { return m_folder->put(photo); }

    std::unique_ptr<lumi::test::PhotoFolder> m_folder;
};

void TestFPVExifWriter::init()
{
    FakeMachine::install()->setFreeDiskKB(1000000);
    m_folder = std::make_unique<lumi::test::PhotoFolder>();
}

void TestFPVExifWriter::cleanup()
{
    m_folder.reset();
    Machine::install(nullptr);
}

void TestFPVExifWriter::setTagTakesThePlaceOfTheOldOne()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Big)));
    const QList<int> before = numbersOf(writer.ifd0List());
    writer.setTag(0x0112, 4, 1, lumi::test::hostBytes<quint32>({8}).constData(), Ifd0);
    QCOMPARE(numbersOf(writer.ifd0List()), before);
    const FPVExifTag *tag = writer.find(0x0112, Ifd0);
    QCOMPARE(int(tag->type()), 4);
    QCOMPARE(tag->count(), 1U);
    QCOMPARE(tag->intValue(), 8);
}

void TestFPVExifWriter::newTagBecomesTheLast()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    const QList<int> before = numbersOf(writer.exifList());
    writer.setTag(0x0001, 2, 3, "ab", Exif);
    QCOMPARE(numbersOf(writer.exifList()), before + QList<int>{0x0001});
}

void TestFPVExifWriter::setTagCopiesAsManyBytesAsTypeAndCountSay_data()
{
    QTest::addColumn<quint16>("type");
    QTest::addColumn<quint32>("count");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("one byte") << quint16(1) << 1U << QByteArray("0");
    QTest::newRow("a text of five") << quint16(2) << 5U << QByteArray("01234");
    QTest::newRow("three shorts") << quint16(3) << 3U << QByteArray("012345");
    QTest::newRow("two longs") << quint16(4) << 2U << QByteArray("01234567");
    QTest::newRow("two fractions") << quint16(5) << 2U << QByteArray("0123456789abcdef");
    QTest::newRow("seven untyped bytes") << quint16(7) << 7U << QByteArray("0123456");
    QTest::newRow("no value") << quint16(2) << 0U << QByteArray();
    QTest::newRow("a type without a size") << quint16(6) << 3U << QByteArray();
}

void TestFPVExifWriter::setTagCopiesAsManyBytesAsTypeAndCountSay()
{
    QFETCH(quint16, type);
    QFETCH(quint32, count);
    QFETCH(QByteArray, expected);
    QByteArray data = "0123456789abcdefghij";
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    writer.setTag(0x9286, type, count, data.constData(), Exif);
    data.fill('x');
    const FPVExifTag *tag = writer.find(0x9286, Exif);
    QCOMPARE(tag->type(), type);
    QCOMPARE(tag->count(), count);
    QCOMPARE(bytesOf(tag), expected);
}

void TestFPVExifWriter::setTagWithoutDataRemoves()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    QList<int> expected = numbersOf(writer.ifd0List());
    expected.removeOne(0x0110);
    writer.setTag(0x0110, 2, 1000, nullptr, Ifd0);
    writer.setTag(0x013B, 2, 1000, nullptr, Ifd0);
    QCOMPARE(numbersOf(writer.ifd0List()), expected);
}

void TestFPVExifWriter::removeTagRemovesOnlyThere()
{
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    // The same number stands in two lists.
    writer.removeTag(0x0001, Interoperability);
    QVERIFY(!writer.find(0x0001, Interoperability));
    QCOMPARE(bytesOf(writer.find(0x0001, Gps)), QByteArray("N\0", 2));
    const QList<int> before = numbersOf(writer.gpsList());
    writer.removeTag(0x7777, Gps);
    QCOMPARE(numbersOf(writer.gpsList()), before);
}

void TestFPVExifWriter::listsAreChosenByKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("list");
    for (int kind = 0; kind < 5; ++kind) {
        QTest::addRow("list %d", kind) << kind << kind;
    }
    QTest::newRow("a number behind the last") << 5 << 0;
    QTest::newRow("a negative number") << -1 << 0;
}

void TestFPVExifWriter::listsAreChosenByKind()
{
    QFETCH(int, kind);
    QFETCH(int, list);
    FPVExifWriter writer(put(fullPhoto(ExifBuilder::Order::Little)));
    writer.setTag(0x7777, 2, 2, "x", ExifListKind(kind));
    for (const ExifListKind each : lumi::test::kAllLists) {
        QCOMPARE(writer.find(0x7777, each) != nullptr, each == ExifListKind(list));
    }
    writer.removeTag(0x7777, ExifListKind(kind));
    QVERIFY(!writer.find(0x7777, ExifListKind(list)));
}

void TestFPVExifWriter::unreadablePhotoTakesNoTags()
{
    FPVExifWriter writer(m_folder->put(ExifBuilder::jpeg(16, 16, 0)));
    QVERIFY(!writer.isValid());
    writer.setTag(0x010F, 2, 2, "x", Ifd0);
    writer.removeTag(0x010F, Ifd0);
    QVERIFY(writer.ifd0List().isEmpty());
}

void TestFPVExifWriter::rewriteKeepsEveryTag_data()
{
    addOrders();
}

void TestFPVExifWriter::rewriteKeepsEveryTag()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(fullPhoto(order));
    FPVExifDocument old(path);
    const auto before = valuesOf(old);
    const QByteArray thumbnail = thumbnailBytes(old);
    QVERIFY(!thumbnail.isEmpty());
    QCOMPARE(rewritten(path), kDone);
    FPVExifDocument document(path);
    QVERIFY(document.isValid());
    QVERIFY(document.littleEndian());
    QCOMPARE(contentOf(path).mid(12, 8), QByteArray("II\x2A\0\x08\0\0\0", 8));
    QVERIFY(valuesOf(document) == before);
    QCOMPARE(thumbnailBytes(document), thumbnail);
}

void TestFPVExifWriter::rewriteOfTheRewrittenChangesNoByte_data()
{
    addOrders();
}

void TestFPVExifWriter::rewriteOfTheRewrittenChangesNoByte()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(fullPhoto(order));
    QCOMPARE(rewritten(path), kDone);
    const QByteArray once = contentOf(path);
    QCOMPARE(rewritten(path), kDone);
    QVERIFY(contentOf(path) == once);
}

void TestFPVExifWriter::changedTagsAreRead()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    {
        FPVExifWriter writer(path);
        writer.setTag(0x013B, 2, 6, "Smith", Ifd0);
        writer.setTag(0x8827, 3, 1, lumi::test::hostBytes<quint16>({0x1234}).constData(), Exif);
        const QByteArray place = lumi::test::hostBytes<quint32>({139, 1, 45, 1, 3000, 100});
        writer.setTag(0x0004, 5, 3, place.constData(), Gps);
        writer.removeTag(0x0112, Ifd0);
        QCOMPARE(writer.rewrite(), kDone);
    }
    const FPVExifDocument document(path);
    QCOMPARE(document.find(0x013B, Ifd0)->text(), QStringLiteral("Smith"));
    QCOMPARE(document.find(0x8827, Exif)->count(), 1U);
    QCOMPARE(document.find(0x8827, Exif)->intValue(), 0x1234);
    QCOMPARE(bytesOf(document.find(0x0004, Gps)),
             lumi::test::hostBytes<quint32>({139, 1, 45, 1, 3000, 100}));
    QVERIFY(!document.find(0x0112, Ifd0));
}

void TestFPVExifWriter::tagAddedStandsAtTheEnd()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Little));
    FPVExifWriter writer(path);
    const QList<int> before = numbersOf(writer.ifd0List());
    writer.setTag(0x010E, 2, 6, "Title", Ifd0); // the smallest number but one
    QCOMPARE(writer.rewrite(), kDone);
    QCOMPARE(numbersOf(FPVExifDocument(path).ifd0List()), before + QList<int>{0x010E});
}

void TestFPVExifWriter::imageDataStayByteForByte_data()
{
    QTest::addColumn<int>("behind"); // bytes behind the end of the image
    for (const int behind : {0, 1, 10239, 10240, 10241, 100000}) {
        QTest::addRow("%d bytes behind the image", behind) << behind;
    }
}

void TestFPVExifWriter::imageDataStayByteForByte()
{
    QFETCH(int, behind);
    QByteArray more(behind, '\0');
    for (qsizetype i = 0; i < more.size(); ++i) {
        more[i] = char(i * 7 + i / 251);
    }
    const QByteArray image = ExifBuilder::jpeg(200, 150, 0x123456) + more;
    const QString path
        = put(fullPhoto(ExifBuilder::Order::Big).photo(image).makerNote(QByteArray(501, 'm')));
    FPVExifWriter writer(path);
    writer.setTag(0x010E, 2, 6, "Title", Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    QVERIFY(restOf(contentOf(path)) == image.mid(2));
}

void TestFPVExifWriter::oddThumbnailIsFollowedByAZeroByte()
{
    for (const int size : {100, 101}) {
        ExifBuilder photo = plainPhoto(ExifBuilder::Order::Little);
        const QByteArray thumbnail(size, 't');
        const QString path = put(photo.thumbnail(thumbnail));
        QCOMPARE(rewritten(path), kDone);
        const QByteArray file = contentOf(path);
        const qsizetype end = file.size() - restOf(file).size();
        QCOMPARE(end % 2, 0);
        QCOMPARE(file.mid(end - 2, 2), size % 2 == 0 ? QByteArray("tt") : QByteArray("t\0", 2));
        FPVExifDocument document(path);
        QCOMPARE(thumbnailBytes(document), thumbnail);
        QVERIFY(restOf(file) == restOf(photo.file()));
    }
}

void TestFPVExifWriter::thumbnailOutsideTheFileIsNotCopied_data()
{
    QTest::addColumn<quint32>("offset");
    QTest::addColumn<quint32>("length");
    QTest::newRow("begins behind the file") << 0x7FFFFFFFU << 10U;
    QTest::newRow("ends behind the file") << 8U << 0x7FFFFFFFU;
    QTest::newRow("is as long as can be said") << 8U << 0xFFFFFFFFU;
    QTest::newRow("is as far as can be said") << 0xFFFFFFFFU << 0xFFFFFFFFU;
    QTest::newRow("has no length") << 8U << 0U;
    QTest::newRow("has no place") << 0U << 10U;
}

void TestFPVExifWriter::thumbnailOutsideTheFileIsNotCopied()
{
    QFETCH(quint32, offset);
    QFETCH(quint32, length);
    ExifBuilder photo = plainPhoto(ExifBuilder::Order::Little);
    const QString path = put(photo.longs(Ifd1, 0x0201, {offset}).longs(Ifd1, 0x0202, {length}));
    const QByteArray before = contentOf(path);
    QCOMPARE(rewritten(path), kDone);
    const FPVExifDocument document(path);
    QCOMPARE(document.thumbnailOffset(), offset);
    QCOMPARE(document.thumbnailLength(), length);
    QCOMPARE(contentOf(path).size(), before.size());
    QVERIFY(restOf(contentOf(path)) == restOf(before));
}

void TestFPVExifWriter::thumbnailWithoutItsTagIsDropped()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Little));
    FPVExifWriter writer(path);
    writer.removeTag(0x0201, Ifd1);
    QCOMPARE(writer.rewrite(), kDone);
    const FPVExifDocument document(path);
    QVERIFY(!document.hasThumbnail());
    QVERIFY(document.thumbnailLength() > 0);
    // The block ends with the last value of the second directory.
    const QByteArray file = contentOf(path);
    QCOMPARE(file.mid(file.size() - restOf(file).size() - 8, 8),
             QByteArray::fromHex("fbffffff07000000"));
}

void TestFPVExifWriter::thumbnailOutsideTheSegmentMovesIn()
{
    ExifBuilder photo = plainPhoto(ExifBuilder::Order::Big);
    const QByteArray thumbnail = ExifBuilder::jpeg(40, 30, 0x224466);
    const QByteArray image = ExifBuilder::jpeg(16, 12, 0);
    photo.photo(image + thumbnail);
    photo.longs(Ifd1, 0x0201, {0}).longs(Ifd1, 0x0202, {quint32(thumbnail.size())});
    const auto offset = quint32(photo.block().size() + image.size() - 2);
    photo = plainPhoto(ExifBuilder::Order::Big);
    photo.photo(image + thumbnail)
        .longs(Ifd1, 0x0201, {offset})
        .longs(Ifd1, 0x0202, {quint32(thumbnail.size())});
    const QString path = put(photo);
    QCOMPARE(rewritten(path), kDone);
    FPVExifDocument document(path);
    QVERIFY(12 + document.thumbnailOffset() < quint32(document.app1Length()));
    QCOMPARE(thumbnailBytes(document), thumbnail);
    QVERIFY(restOf(contentOf(path)) == image.mid(2) + thumbnail);
}

void TestFPVExifWriter::whatTheListsDoNotHoldIsDropped()
{
    ExifBuilder photo = fullPhoto(ExifBuilder::Order::Little);
    photo
        .word(Exif, 0x9999, 12, 1, 0x41414141) // a type nobody knows
        .link(Ifd1, 8)
        .link(Interoperability, 8)
        .link(Exif, 8)
        .link(Gps, 8);
    const QString path = put(photo);
    QCOMPARE(FPVExifDocument(path).nextIfdOffset(), 8U);
    QCOMPARE(rewritten(path), kDone);
    const FPVExifDocument document(path);
    QCOMPARE(document.nextIfdOffset(), 0U);
    QVERIFY(!document.find(0x9999, Exif));
    const QByteArray block = contentOf(path).mid(12);
    for (const int pointer : {0x8769, 0x8825}) {
        const int place = document.find(pointer, Ifd0)->intValue();
        const int entries = qFromLittleEndian<quint16>(block.constData() + place);
        QCOMPARE(qFromLittleEndian<quint32>(block.constData() + place + 2 + 12 * entries), 0U);
    }
    const int place = document.find(0xA005, Exif)->intValue();
    QCOMPARE(qFromLittleEndian<quint32>(block.constData() + place + 2 + 24), 0U);
}

void TestFPVExifWriter::makerNoteKeepsItsBytes()
{
    // It says where in the block something stands, in its own order, and is not understood.
    const QByteArray note
        = QByteArray::fromHex("4d4d002a0000000800010001000400000001000001f4") + "x";
    ExifBuilder photo(ExifBuilder::Order::Big);
    const QString path = put(photo.ascii(Ifd0, 0x010F, "Anvil").makerNote(note));
    FPVExifWriter writer(path);
    writer.setTag(0x010E, 2, 20, "A title of some size", Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    QCOMPARE(bytesOf(FPVExifDocument(path).find(0x927C, Exif)), note);
}

void TestFPVExifWriter::photoWithoutSecondDirectorySavedTwice_data()
{
    addOrders();
}

void TestFPVExifWriter::photoWithoutSecondDirectorySavedTwice()
{
    QFETCH(ExifBuilder::Order, order);
    // What stands behind the segment would make a directory with a large value.
    const QByteArray image = ExifBuilder::jpeg(64, 48, 0x345678);
    const QByteArray comment = QByteArray::fromHex("fffe0100 0100 0000 0700 00400000 08000000")
        + QByteArray(0xFE - 16 + 2, 'c');
    const QString path = put(plainPhoto(order).photo(image.left(2) + comment + image.mid(2)));
    const QByteArray before = contentOf(path);
    const auto tags = valuesOf(FPVExifDocument(path));
    QCOMPARE(FPVExifDocument(path).ifd1Offset(), 0U);
    const QImage decoded = QImage::fromData(before);
    QVERIFY(!decoded.isNull());
    for (int save = 0; save < 2; ++save) {
        QCOMPARE(rewritten(path), kDone);
        const FPVExifDocument document(path);
        QVERIFY(document.isValid());
        // The link is there and leads behind the segment.
        QCOMPARE(int(document.ifd1Offset()), document.app1Length() + 4 - document.tiffBase());
        QVERIFY(document.list(Ifd1).isEmpty());
        QVERIFY(valuesOf(document) == tags);
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(contentOf(path).size(), before.size());
        QCOMPARE(QImage::fromData(contentOf(path)), decoded);
    }
}

void TestFPVExifWriter::emptiedGpsSavedTwice_data()
{
    addOrders();
}

void TestFPVExifWriter::emptiedGpsSavedTwice()
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
    for (int save = 0; save < 2; ++save) {
        QVERIFY(FPVExifDocument(path).isValid());
        QVERIFY(restOf(contentOf(path)) == restOf(before));
        QCOMPARE(QImage::fromData(contentOf(path)), decoded);
        QCOMPARE(rewritten(path), kDone);
    }
    const auto now = valuesOf(FPVExifDocument(path));
    const auto then = valuesOf(emptied);
    for (const ExifListKind kind : {Ifd0, Exif, Interoperability, Ifd1}) {
        QVERIFY(now.at(int(kind)) == then.at(int(kind)));
    }
}

void TestFPVExifWriter::emptiedExifKeepsItsStalePointer()
{
    const QString path = put(plainPhoto(ExifBuilder::Order::Little));
    const int stale = FPVExifDocument(path).find(0x8769, Ifd0)->intValue();
    FPVExifWriter writer(path);
    writer.removeTag(0x829A, Exif);
    // Without the list no pointer is made, and the one that is there is not looked at.
    writer.setTag(0x0131, 2, 40, QByteArray(39, 's').constData(), Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    QCOMPARE(FPVExifDocument(path).find(0x8769, Ifd0)->intValue(), stale);
    FPVExifWriter bare(m_folder->put(ExifBuilder().shorts(Ifd0, 0x0112, {1})));
    QCOMPARE(bare.rewrite(), kDone);
    QCOMPARE(numbersOf(FPVExifDocument(bare.fileName()).ifd0List()), QList<int>({0x0112}));
}

void TestFPVExifWriter::tooLongBlockWraps()
{
    const QString path = put(plainPhoto(ExifBuilder::Order::Little));
    const QByteArray before = contentOf(path);
    FPVExifWriter writer(path);
    const QByteArray value(65000, 'v');
    writer.setTag(0x7001, 7, quint32(value.size()), value.constData(), Ifd0);
    writer.setTag(0x7002, 7, quint32(value.size()), value.constData(), Ifd0);
    QCOMPARE(writer.rewrite(), kDone);
    const QByteArray after = contentOf(path);
    QCOMPARE(after.size(), before.size() + 2 * (12 + 65000));
    const auto length = qFromBigEndian<quint16>(after.constData() + 4);
    QCOMPARE(int(length),
             int((before.size() - restOf(before).size() - 4 + 2 * (12 + 65000)) % 65536));
    QVERIFY(after.endsWith(restOf(before)));
}

void TestFPVExifWriter::temporaryNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8(expected);
    };
    row("photo.jpg", "photo_tmp_0.jpg");
    row("PHOTO.JPG", "PHOTO_tmp_0.JPG");
    row("one.two.jpg", "one_tmp_0.jpg");
    row("photo", "photo_tmp_0.");
    row(".jpg", "_tmp_0.jpg");
    row("a photo_tmp_0.jpeg", "a photo_tmp_0_tmp_0.jpeg");
    row("\xE5\x86\x99\xE7\x9C\x9F.jpg", "\xE5\x86\x99\xE7\x9C\x9F_tmp_0.jpg");
}

void TestFPVExifWriter::temporaryNames()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(lumi::freeTemporaryPath(m_folder->path(name)), m_folder->path(expected));
    const QString path = m_folder->put(fullPhoto(ExifBuilder::Order::Big), name);
    QCOMPARE(rewritten(path), kDone);
    QVERIFY(FPVExifDocument(path).littleEndian());
    QVERIFY(!QFile::exists(m_folder->path(expected)));
}

void TestFPVExifWriter::temporaryNameIsTheFirstFree()
{
    const QString path = m_folder->path(QStringLiteral("photo.jpg"));
    for (int number = 0; number < 3; ++number) {
        const QString expected = QStringLiteral("photo_tmp_%1.jpg").arg(number);
        QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(expected));
        m_folder->put("taken", expected);
    }
    QVERIFY(QFile::remove(m_folder->path(QStringLiteral("photo_tmp_1.jpg"))));
    QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(QStringLiteral("photo_tmp_1.jpg")));
    // A link into nowhere is taken as well, and so is a folder.
    QVERIFY(QFile::link(m_folder->path(QStringLiteral("nowhere")),
                        m_folder->path(QStringLiteral("photo_tmp_1.jpg"))));
    QVERIFY(QDir().mkdir(m_folder->path(QStringLiteral("photo_tmp_3.jpg"))));
    QCOMPARE(lumi::freeTemporaryPath(path), m_folder->path(QStringLiteral("photo_tmp_4.jpg")));
}

void TestFPVExifWriter::takenNamesAreNotTouched()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QString taken = m_folder->put("taken", QStringLiteral("photo_tmp_0.jpg"));
    QCOMPARE(rewritten(path), kDone);
    QCOMPARE(contentOf(taken), QByteArray("taken"));
    QVERIFY(FPVExifDocument(path).littleEndian());
}

void TestFPVExifWriter::noFreeNameIsAFailure()
{
    constexpr int kNames = 65535;
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QByteArray before = contentOf(path);
    const QByteArray prefix = QFile::encodeName(m_folder->path(QStringLiteral("photo_tmp_")));
    for (int number = 0; number < kNames; ++number) {
        const QByteArray name = prefix + QByteArray::number(number) + ".jpg";
        QCOMPARE(::mknod(name.constData(), S_IFREG | S_IRUSR, 0), 0);
    }
    QCOMPARE(rewritten(path), kFailed);
    QVERIFY(contentOf(path) == before);
    // The last one would still do.
    const QString last = m_folder->path(QStringLiteral("photo_tmp_65534.jpg"));
    QVERIFY(QFile::remove(last));
    QCOMPARE(lumi::freeTemporaryPath(path), last);
}

void TestFPVExifWriter::nothingElseIsLeftInTheFolder()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    QCOMPARE(rewritten(path), kDone);
    const QDir folder(QFileInfo(path).absolutePath());
    QCOMPARE(
        folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
        QStringList{QStringLiteral("photo.jpg")});
}

void TestFPVExifWriter::permissionsAreKept_data()
{
    QTest::addColumn<uint>("mode");
    QTest::newRow("private") << 0600U;
    QTest::newRow("for everybody") << 0666U;
    QTest::newRow("for reading alone") << 0444U;
    QTest::newRow("with an odd bit") << 0751U;
}

void TestFPVExifWriter::permissionsAreKept()
{
    QFETCH(uint, mode);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(::chmod(name.constData(), mode), 0);
    QCOMPARE(rewritten(path), kDone);
    struct stat now = {};
    QCOMPARE(::stat(name.constData(), &now), 0);
    QCOMPARE(now.st_mode & 07777U, mode);
}

void TestFPVExifWriter::linkIsReplacedByThePhoto()
{
    const QString target = m_folder->put(fullPhoto(ExifBuilder::Order::Big), QStringLiteral("a"));
    const QByteArray before = contentOf(target);
    const QString path = m_folder->path(QStringLiteral("photo.jpg"));
    QVERIFY(QFile::link(target, path));
    QCOMPARE(rewritten(path), kDone);
    QVERIFY(!QFileInfo(path).isSymLink());
    QVERIFY(FPVExifDocument(path).littleEndian());
    QVERIFY(contentOf(target) == before);
}

void TestFPVExifWriter::unreadablePhotoIsNotTouched_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = fullPhoto(ExifBuilder::Order::Little).file();
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("a photo without a block") << ExifBuilder::jpeg(16, 16, 0);
    QTest::newRow("a photo cut in its header") << whole.left(19);
    QTest::newRow("a text") << QByteArray("This is no photo, but it is the only copy of a text.");
}

void TestFPVExifWriter::unreadablePhotoIsNotTouched()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_folder->put(bytes);
    QCOMPARE(rewritten(path), kFailed);
    QCOMPARE(contentOf(path), bytes);
    QVERIFY(!QFile::exists(m_folder->path(QStringLiteral("photo_tmp_0.jpg"))));
}

void TestFPVExifWriter::photoWithoutImageDataIsNotTouched_data()
{
    QTest::addColumn<int>("missing"); // bytes of the segment that the file does not have
    QTest::newRow("ends with the segment") << 0;
    QTest::newRow("ends a byte before the segment") << 1;
    QTest::newRow("ends in the first directory") << 400;
}

void TestFPVExifWriter::photoWithoutImageDataIsNotTouched()
{
    QFETCH(int, missing);
    const QByteArray whole = fullPhoto(ExifBuilder::Order::Little).file();
    const QByteArray bytes = whole.chopped(restOf(whole).size() + missing);
    const QString path = m_folder->put(bytes);
    FPVExifWriter writer(path);
    QVERIFY(writer.isValid());
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(contentOf(path) == bytes);
    // One byte behind the segment is enough.
    const QString enough = m_folder->put(whole.chopped(restOf(whole).size() - 1));
    QCOMPARE(rewritten(enough), kDone);
}

void TestFPVExifWriter::missingPhotoIsAFailure()
{
    QCOMPARE(rewritten(QString()), kFailed);
    QCOMPARE(rewritten(m_folder->path(QStringLiteral("missing.jpg"))), kFailed);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    FPVExifWriter writer(path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(!QFile::exists(path));
}

void TestFPVExifWriter::anotherFileUnderTheNameIsNotTouched_data()
{
    QTest::addColumn<bool>("inPlace");
    QTest::newRow("another photo took the name") << false;
    QTest::newRow("the photo was made longer") << true;
}

void TestFPVExifWriter::anotherFileUnderTheNameIsNotTouched()
{
    QFETCH(bool, inPlace);
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    QFile photo(path);
    QVERIFY(photo.open(QIODevice::ReadOnly));
    lumi::PhotoReplacement replacement(photo);
    if (!inPlace) {
        const QString other = m_folder->put("another photo", QStringLiteral("other.jpg"));
        QCOMPARE(
            ::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()), 0);
    } else {
        QFile longer(path);
        QVERIFY(longer.open(QIODevice::Append) && longer.write("more") == 4);
    }
    const QByteArray before = contentOf(path);
    QVERIFY(replacement.run("start", {}, 10) == ExifRewriteResult::Failed);
    QVERIFY(contentOf(path) == before);
    QVERIFY(!QFile::exists(m_folder->path(QStringLiteral("photo_tmp_0.jpg"))));
}

void TestFPVExifWriter::rewriteWorksOnce()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    FPVExifWriter writer(path);
    QCOMPARE(writer.rewrite(), kDone);
    const QByteArray once = contentOf(path);
    QCOMPARE(writer.rewrite(), kFailed);
    QVERIFY(contentOf(path) == once);
}

void TestFPVExifWriter::relativePathIsFound()
{
    const QString path = put(fullPhoto(ExifBuilder::Order::Big));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QFileInfo(path).absolutePath()));
    const int result = rewritten(QStringLiteral("photo.jpg"));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(result, kDone);
    QVERIFY(FPVExifDocument(path).littleEndian());
}

LUMI_TEST(TestFPVExifWriter)
#include "TestFPVExifWriter.moc"
