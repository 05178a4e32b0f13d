// SPDX-License-Identifier: MIT
// Pointers that lead to a directory of another: one that outlived its own leads to what moved
// there. A copy taken of it would keep what is cleared later and grow the block.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QtEndian>

#include <set>

using namespace lumi::test;
using enum ExifListKind;

namespace {

constexpr quint16 kMakerNote = 0x927C;
constexpr quint16 kComment = 0x9286;

/// A photo that has all directories, the position being no more than a version.
ExifBuilder photoOf(ExifBuilder::Order order)
{
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .rationals(Exif, 0x829A, {{1, 60}})
        .makerNote(QByteArray(301, 'm'))
        .undefined(Exif, kComment, QByteArrayLiteral("ASCII\0\0\0where we hid it"))
        .ascii(Interoperability, 0x0001, "R03")
        .undefined(Interoperability, 0x0002, "0100")
        .value(Gps, 0x0000, 1, 4, QByteArray("\2\2\0\0", 4))
        .shorts(Ifd1, 0x0103, {6})
        .thumbnail(ExifBuilder::jpeg(40, 30, 0xC08040));
    return photo;
}

/// Saves the photo without what a position is made of.
int savedWithoutPosition(const QString &path)
{
    FPVExifWriter writer(path);
    for (const int tag : {0x0000, 0x0001, 0x0002, 0x0003, 0x0004}) {
        writer.removeTag(quint16(tag), Gps);
    }
    return writer.rewrite();
}

int pointerOf(const FPVExifDocument &document, int number, ExifListKind list)
{
    const FPVExifTag *tag = document.find(number, list);
    return tag ? tag->intValue() : -1;
}

std::set<ExifListKind> filledLists(const FPVExifDocument &document)
{
    std::set<ExifListKind> filled;
    for (const ExifListKind list : kAllLists) {
        if (!document.list(list).isEmpty()) {
            filled.insert(list);
        }
    }
    return filled;
}

/// The beginning of a directory of each kind.
void addDirectory(ExifBuilder &photo, ExifListKind kind)
{
    switch (kind) {
    case Exif:
        photo.rationals(Exif, 0x829A, {{1, 60}}).undefined(Exif, kComment, "ASCII\0\0\0hid it");
        break;
    case Interoperability:
        photo.ascii(kind, 0x0001, "R98").shorts(kind, 0x1001, {640});
        break;
    case Gps:
        photo.rationals(kind, 0x001D, {{1, 2}}).rationals(kind, 0x001F, {{9, 2}});
        break;
    case Ifd0:
    case Ifd1:
        photo.shorts(kind, 0x0103, {6}).rationals(kind, 0x011A, {{72, 1}});
        break;
    }
}

} // namespace

class TestSharedDirectories : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void emptiedGpsTakesNoCopyOfExif_data();
    void emptiedGpsTakesNoCopyOfExif();
    void emptiedGpsDoesNotTakeTheInteroperability_data();
    void emptiedGpsDoesNotTakeTheInteroperability();
    void placeBelongsToWhatStandsThere_data();
    void placeBelongsToWhatStandsThere();
    void whatShowsNoneOfItsNamesIsTheFirst_data();
    void whatShowsNoneOfItsNamesIsTheFirst();
    void firstDirectoryIsNoOther_data();
    void firstDirectoryIsNoOther();
    void whatDoesNotShowItsKindGetsWhatIsLeft_data();
    void whatDoesNotShowItsKindGetsWhatIsLeft();
};

void TestSharedDirectories::emptiedGpsTakesNoCopyOfExif_data()
{
    addOrders();
}

void TestSharedDirectories::emptiedGpsTakesNoCopyOfExif()
{
    // The Exif directory moves to where the GPS directory was.
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(photoOf(order).laidOut({Ifd0, Gps, Exif, Interoperability, Ifd1}));
    QVERIFY(FPVExifDocument(path).hasGpsIfd());
    const auto exif = copyOf(FPVExifDocument(path).exifList());
    QCOMPARE(savedWithoutPosition(path), kDone);
    const QByteArray emptied = contentOf(path);
    for (int save = 0; save < 2; ++save) {
        const FPVExifDocument document(path);
        QCOMPARE(pointerOf(document, 0x8825, Ifd0), pointerOf(document, 0x8769, Ifd0));
        QCOMPARE(numbersOf(document.exifList()),
                 (QList<int>{0x829A, kMakerNote, kComment, 0xA005}));
        QCOMPARE(bytesOf(document.find(kComment, Exif)), exif.at(2).bytes);
        QVERIFY(!document.hasGpsIfd());
        QCOMPARE(rewritten(path), kDone);
        QVERIFY(contentOf(path) == emptied);
    }
    FPVExifWriter writer(path);
    writer.removeTag(kComment, Exif);
    QCOMPARE(writer.rewrite(), kDone);
    QVERIFY(!contentOf(path).contains("where we hid it"));
}

void TestSharedDirectories::emptiedGpsDoesNotTakeTheInteroperability_data()
{
    addOrders();
}

void TestSharedDirectories::emptiedGpsDoesNotTakeTheInteroperability()
{
    QFETCH(ExifBuilder::Order, order);
    const QString path = put(photoOf(order).laidOut({Ifd0, Exif, Gps, Interoperability, Ifd1}));
    for (int save = 0; save < 3; ++save) {
        QCOMPARE(savedWithoutPosition(path), kDone);
        const FPVExifDocument document(path);
        QCOMPARE(pointerOf(document, 0x8825, Ifd0), pointerOf(document, 0xA005, Exif));
        QCOMPARE(numbersOf(document.list(Interoperability)), (QList<int>{0x0001, 0x0002}));
        QCOMPARE(document.find(0x0001, Interoperability)->text(), QStringLiteral("R03"));
        QVERIFY(!document.hasGpsIfd());
    }
}

void TestSharedDirectories::placeBelongsToWhatStandsThere_data()
{
    QTest::addColumn<ExifListKind>("kind");
    QTest::addColumn<bool>("hasExif"); // a directory of its own, which names the place as well
    QTest::newRow("an Exif directory") << Exif << false;
    QTest::newRow("a GPS directory") << Gps << false;
    QTest::newRow("a second directory") << Ifd1 << false;
    QTest::newRow("an interoperability directory, named by Exif") << Interoperability << true;
    QTest::newRow("a GPS directory, named by Exif") << Gps << true;
    QTest::newRow("a second directory, named by Exif") << Ifd1 << true;
}

void TestSharedDirectories::placeBelongsToWhatStandsThere()
{
    // Every pointer and the link lead there.
    QFETCH(ExifListKind, kind);
    QFETCH(bool, hasExif);
    const auto photoWith = [&](quint32 exif, quint32 place) {
        ExifBuilder photo;
        photo.longs(Ifd0, 0x8769, {hasExif ? exif : place}).longs(Ifd0, 0x8825, {place});
        addDirectory(photo, kind);
        if (hasExif || kind == Exif) {
            photo.longs(Exif, 0xA005, {place});
        }
        return photo.link(Ifd0, place).withoutPointers();
    };
    const ExifBuilder sketch = photoWith(1, 1);
    const QString path = put(photoWith(sketch.offsetOf(Exif), sketch.offsetOf(kind)));
    const auto before = valuesOf(FPVExifDocument(path));
    const QByteArray rest = restOf(contentOf(path));
    const std::set<ExifListKind> expected = {Ifd0, kind, hasExif ? Exif : kind};
    for (int save = 0; save < 3; ++save) {
        const FPVExifDocument document(path);
        QVERIFY(filledLists(document) == expected);
        QCOMPARE(document.list(kind).count(), kind == Exif ? 3 : 2);
        QVERIFY(valuesOf(document) == before);
        QCOMPARE(rewritten(path), kDone);
        QVERIFY(restOf(contentOf(path)) == rest);
    }
}

void TestSharedDirectories::whatShowsNoneOfItsNamesIsTheFirst_data()
{
    QTest::addColumn<ExifListKind>("kind");
    QTest::addColumn<int>("tag"); // what it begins with
    QTest::newRow("an Exif directory, named by GPS too") << Exif << 0x8298;
    QTest::newRow("an interoperability directory, named by GPS too") << Interoperability << 0x1000;
}

void TestSharedDirectories::whatShowsNoneOfItsNamesIsTheFirst()
{
    // Its beginning is unusual, and a position that was cleared has left its pointer.
    QFETCH(ExifListKind, kind);
    QFETCH(int, tag);
    const auto photoWith = [&](quint32 place) {
        ExifBuilder photo;
        photo.longs(Ifd0, 0x8825, {place}).shorts(kind, quint16(tag), {1});
        return photo.undefined(Exif, kComment, QByteArrayLiteral("ASCII\0\0\0where we hid it"));
    };
    const QString path = put(photoWith(photoWith(1).offsetOf(kind)));
    for (int save = 0; save < 3; ++save) {
        const FPVExifDocument document(path);
        QVERIFY(document.find(tag, kind));
        QVERIFY(document.find(kComment, Exif));
        QVERIFY(!document.hasGpsIfd());
        QCOMPARE(rewritten(path), kDone);
    }
}

void TestSharedDirectories::firstDirectoryIsNoOther_data()
{
    QTest::addColumn<int>("tag"); // what it begins with
    QTest::newRow("it looks like itself") << 0x0100;
    QTest::newRow("it looks like Exif") << 0x829A;
    QTest::newRow("it looks like GPS") << 0x0000;
}

void TestSharedDirectories::firstDirectoryIsNoOther()
{
    QFETCH(int, tag);
    ExifBuilder photo;
    photo.longs(Ifd0, quint16(tag), {1})
        .longs(Ifd0, 0x8769, {8})
        .longs(Ifd0, 0x8825, {8})
        .longs(Ifd0, 0xA005, {8});
    const FPVExifDocument document(put(photo.link(Ifd0, 8)));
    QVERIFY(document.isValid());
    QCOMPARE(document.ifd1Offset(), 8U);
    for (const ExifListKind list : kAllLists) {
        QCOMPARE(document.list(list).count(), list == Ifd0 ? 4 : 0);
    }
}

void TestSharedDirectories::whatDoesNotShowItsKindGetsWhatIsLeft_data()
{
    QTest::addColumn<QByteArray>("first"); // number and type of the first entry
    QTest::addColumn<quint32>("size");
    QTest::addColumn<bool>("hasNote");
    QTest::addColumn<int>("tags");
    const QByteArray other = QByteArray::fromHex("0170 0700");
    QTest::newRow("another one with room for it") << other << 20000U << true << 1;
    QTest::newRow("another one without room") << other << 30000U << true << 0;
    QTest::newRow("another one larger than the note") << other << 50000U << true << 0;
    QTest::newRow("a GPS directory") << QByteArray::fromHex("1b00 0700") << 30000U << false << 1;
}

void TestSharedDirectories::whatDoesNotShowItsKindGetsWhatIsLeft()
{
    // The GPS pointer leads into a comment, which has what reads as a directory of a value.
    QFETCH(QByteArray, first);
    QFETCH(quint32, size);
    QFETCH(bool, hasNote);
    QFETCH(int, tags);
    QByteArray word(4, '\0');
    qToLittleEndian(size, word.data());
    const QByteArray directory
        = QByteArray::fromHex("0100") + first + word + QByteArray::fromHex("08000000 00000000");
    const auto photoWith = [&](quint32 place) {
        ExifBuilder photo;
        photo.longs(Ifd0, 0x8825, {place}).undefined(Exif, kComment, directory);
        return photo.makerNote(QByteArray(40000, 'm'));
    };
    const auto place = quint32(photoWith(0).block().indexOf(directory));
    const FPVExifDocument document(put(photoWith(place)));
    QCOMPARE(numbersOf(document.exifList()),
             hasNote ? (QList<int>{kComment, kMakerNote}) : QList<int>{kComment});
    QCOMPARE(document.gpsList().count(), tags);
    QCOMPARE(rewritten(document.fileName()), kDone);
    QVERIFY(!QImage::fromData(contentOf(document.fileName())).isNull());
}

LUMI_TEST(TestSharedDirectories)
#include "TestSharedDirectories.moc"
