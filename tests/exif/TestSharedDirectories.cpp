// SPDX-License-Identifier: MIT
// Stale pointers that point to a directory of another kind. If that directory were read twice, the
// copy would keep tags that the user clears, and the block would grow.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <set>

using namespace lumi::test;
using enum ExifListKind;

namespace {

constexpr quint16 kMakerNote = 0x927C;
constexpr quint16 kComment = 0x9286;

/// A photo with all directories. The GPS directory has only a version.
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

/// Removes all GPS tags and rewrites the photo.
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

/// Adds two typical tags to the directory.
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
    void emptiedGpsDoesNotCopyExif_data();
    void emptiedGpsDoesNotCopyExif();
    void emptiedGpsDoesNotTakeTheInteroperability_data();
    void emptiedGpsDoesNotTakeTheInteroperability();
    void sharedDirectoryGoesToTheSafestKind_data();
    void sharedDirectoryGoesToTheSafestKind();
    void firstDirectoryIsNotReadAgain_data();
    void firstDirectoryIsNotReadAgain();
};

void TestSharedDirectories::emptiedGpsDoesNotCopyExif_data()
{
    addOrders();
}

void TestSharedDirectories::emptiedGpsDoesNotCopyExif()
{
    // The Exif directory moves to the old offset of the GPS directory.
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

void TestSharedDirectories::sharedDirectoryGoesToTheSafestKind_data()
{
    QTest::addColumn<ExifListKind>("kind");  // whose tags the directory has
    QTest::addColumn<bool>("isLinked");      // from the first directory
    QTest::addColumn<ExifListKind>("owner"); // the list that gets its tags
    QTest::newRow("a position") << Gps << false << Gps;
    QTest::newRow("a position, linked") << Gps << true << Gps;
    QTest::newRow("a second directory, linked") << Ifd1 << true << Ifd1;
    QTest::newRow("an Exif directory") << Exif << false << Exif;
    QTest::newRow("an Exif directory, linked") << Exif << true << Ifd1;
    QTest::newRow("an interoperability directory, linked") << Interoperability << true << Ifd1;
}

void TestSharedDirectories::sharedDirectoryGoesToTheSafestKind()
{
    // Both pointers of the first directory point to it. An Exif directory also points to itself.
    QFETCH(ExifListKind, kind);
    QFETCH(bool, isLinked);
    QFETCH(ExifListKind, owner);
    const auto photoWith = [&](quint32 place) {
        ExifBuilder photo;
        photo.longs(Ifd0, 0x8769, {place}).longs(Ifd0, 0x8825, {place});
        addDirectory(photo, kind);
        if (kind == Exif) {
            photo.longs(Exif, 0xA005, {place});
        }
        return photo.link(Ifd0, isLinked ? place : 0).withoutPointers();
    };
    const QString path = put(photoWith(photoWith(1).offsetOf(kind)));
    const auto before = valuesOf(FPVExifDocument(path));
    const QByteArray rest = restOf(contentOf(path));
    const std::set<ExifListKind> expected = {Ifd0, owner};
    for (int save = 0; save < 3; ++save) {
        const FPVExifDocument document(path);
        QVERIFY(filledLists(document) == expected);
        QCOMPARE(document.list(owner).count(), kind == Exif ? 3 : 2);
        QVERIFY(valuesOf(document) == before);
        QCOMPARE(rewritten(path), kDone);
        QVERIFY(restOf(contentOf(path)) == rest);
    }
}

void TestSharedDirectories::firstDirectoryIsNotReadAgain_data()
{
    QTest::addColumn<int>("tag"); // its first tag
    QTest::newRow("it looks like itself") << 0x0100;
    QTest::newRow("it looks like Exif") << 0x829A;
    QTest::newRow("it looks like GPS") << 0x0000;
}

void TestSharedDirectories::firstDirectoryIsNotReadAgain()
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

LUMI_TEST(TestSharedDirectories)
#include "TestSharedDirectories.moc"
