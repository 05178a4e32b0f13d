// SPDX-License-Identifier: MIT
// What is passed over of a block that would not fit a segment as it would be written, and that
// nothing else is: photos whose values lie elsewhere, share bytes or fill the segment.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/ForeignReaders.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>
#include <QtEndian>

using namespace lumi::test;
using enum ExifListKind;

namespace {

constexpr quint16 kMakerNote = 0x927C;
constexpr int kFullLength = 65535;

/// Bytes of which no two kilobytes are the same.
QByteArray noteOf(int size)
{
    QByteArray note(size, '\0');
    for (int i = 0; i < size; ++i) {
        note[i] = char(i * 7 + i / 256);
    }
    return note;
}

/// What every photo of these has beside the value in question.
ExifBuilder smallThings(ExifBuilder::Order order = ExifBuilder::Order::Little)
{
    ExifBuilder photo(order);
    photo.ascii(Ifd0, 0x010F, "Anvil Works")
        .rationals(Exif, 0x829A, {{1, 60}})
        .ascii(Exif, 0x9003, "2004:05:06 07:08:09")
        .ascii(Interoperability, 0x0001, "R98")
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}})
        .shorts(Ifd1, 0x0103, {6})
        .rationals(Ifd1, 0x011A, {{72, 1}});
    return photo;
}

QList<int> numbersWithoutNote(const FPVExifDocument &document)
{
    QList<int> numbers = numbersOf(document.exifList());
    numbers.removeAll(kMakerNote);
    return numbers;
}

bool hasSmallThings(const FPVExifDocument &document)
{
    return numbersWithoutNote(document) == QList<int>{0x829A, 0x9003, 0xA005}
    && numbersOf(document.list(Interoperability)) == QList<int>{0x0001}
    && numbersOf(document.gpsList()) == QList<int>{0x0002}
    && numbersOf(document.list(Ifd1)).mid(0, 2) == QList<int>{0x0103, 0x011A};
}

/// A directory of so many tags of 60000 bytes, and as many that fit their entries.
QByteArray garbageDirectory(int count)
{
    QByteArray bytes(2, char(0));
    bytes[0] = char(2 * count);
    for (int i = 0; i < count; ++i) {
        bytes += QByteArray::fromHex("00700700 60ea0000 08000000");
        bytes[bytes.size() - 12] = char(i);
        bytes += QByteArray::fromHex("00710300 01000000 01000000");
        bytes[bytes.size() - 12] = char(i);
    }
    return bytes;
}

} // namespace

class TestFPVExifDocumentRoom : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void overlongValueCostsNothingElse_data();
    void overlongValueCostsNothingElse();
    void overlongPlaceOfAThumbnailCostsNothingElse_data();
    void overlongPlaceOfAThumbnailCostsNothingElse();
    void noteBehindTheImageMovesIn();
    void largeNoteBesideAThumbnail_data();
    void largeNoteBesideAThumbnail();
    void segmentsFullToTheLastBytes_data();
    void segmentsFullToTheLastBytes();
    void tightLayoutIsReadLikeAnyOther_data();
    void tightLayoutIsReadLikeAnyOther();
    void garbageBehindTheLinkHarmsNothing_data();
    void garbageBehindTheLinkHarmsNothing();
    void garbageDirectoriesLeaveTheRestItsValues();
    void secondDirectoryGetsWhatIsLeft();
    void largestGoesWhereverItIs_data();
    void largestGoesWhereverItIs();
    void thumbnailOutlivesItsDirectory_data();
    void thumbnailOutlivesItsDirectory();
    void thumbnailPartlyOutsideDoesNotWrap_data();
    void thumbnailPartlyOutsideDoesNotWrap();
    void exifDirectoryThatIsLinkedAsWell_data();
    void exifDirectoryThatIsLinkedAsWell();

private:
    /// Whether the photo is written anew with the same values and image data and a segment that
    /// ends where the image data begin.
    [[nodiscard]] static bool survivesASave(const QString &path);
};

bool TestFPVExifDocumentRoom::survivesASave(const QString &path)
{
    const QByteArray before = contentOf(path);
    FPVExifDocument old(path);
    const auto values = valuesOf(old);
    const QByteArray thumbnail = thumbnailBytes(old);
    const bool isSaved = rewritten(path) == kDone;
    FPVExifDocument document(path);
    return isSaved && document.isValid() && valuesOf(document) == values
        && thumbnailBytes(document) == thumbnail && restOf(contentOf(path)) == restOf(before)
        && QImage::fromData(contentOf(path)) == QImage::fromData(before);
}

void TestFPVExifDocumentRoom::overlongValueCostsNothingElse_data()
{
    QTest::addColumn<ExifListKind>("list");
    QTest::addColumn<quint16>("tag");
    QTest::addColumn<quint32>("size");
    QTest::addColumn<quint32>("offset");
    for (const ExifListKind list : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        const auto row = [list](const char *what, quint32 size, quint32 offset) {
            QTest::addRow("list %d, %s", int(list), what) << list << kMakerNote << size << offset;
        };
        row("behind the file", 65500, 0x100000);
        row("in the header", 65535, 0);
        row("from the middle of the segment", 65400, 100);
    }
    // Numbers of pointers, in directories where they are none.
    QTest::newRow("the thumbnail's place in the first") << Ifd0 << quint16(0x0201) << 65480U << 0U;
    QTest::newRow("Interoperability in the first") << Ifd0 << quint16(0xA005) << 65480U << 0U;
    QTest::newRow("the thumbnail's length in Exif") << Exif << quint16(0x0202) << 65480U << 0U;
    QTest::newRow("Exif in GPS") << Gps << quint16(0x8769) << 65480U << 0U;
}

void TestFPVExifDocumentRoom::overlongValueCostsNothingElse()
{
    QFETCH(ExifListKind, list);
    QFETCH(quint16, tag);
    QFETCH(quint32, size);
    QFETCH(quint32, offset);
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        const QString path
            = put(smallThings(order).word(list, tag, 7, size, offset).thumbnail("a picture"));
        FPVExifDocument document(path);
        QVERIFY(hasSmallThings(document));
        QVERIFY(!document.find(tag, list));
        QCOMPARE(thumbnailBytes(document), QByteArray("a picture"));
        QVERIFY(survivesASave(path));
    }
}

void TestFPVExifDocumentRoom::overlongPlaceOfAThumbnailCostsNothingElse_data()
{
    QTest::addColumn<quint16>("pointer");
    QTest::newRow("the place") << quint16(0x0201);
    QTest::newRow("the length") << quint16(0x0202);
}

void TestFPVExifDocumentRoom::overlongPlaceOfAThumbnailCostsNothingElse()
{
    QFETCH(quint16, pointer);
    for (const quint32 size : {30000U, 60000U}) {
        ExifBuilder photo;
        // The four bytes before the first directory read as 8.
        photo.makerNote(noteOf(40001)).word(Ifd1, pointer, 7, size, 4);
        photo.longs(Ifd1, pointer == 0x0201 ? 0x0202 : 0x0201, {20});
        const FPVExifDocument document(put(photo));
        QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), noteOf(40001));
        QVERIFY(document.list(Ifd1).isEmpty());
    }
}

void TestFPVExifDocumentRoom::noteBehindTheImageMovesIn()
{
    const QByteArray note = noteOf(40001);
    const QByteArray image = ExifBuilder::jpeg(64, 48, 0x345678);
    const auto photoWith = [&](quint32 offset) {
        ExifBuilder photo = smallThings().word(Exif, kMakerNote, 7, quint32(note.size()), offset);
        return photo.photo(image + note);
    };
    const auto end = quint32(photoWith(0).block().size() + image.size() - 2);
    const QString path = put(photoWith(end));
    QCOMPARE(bytesOf(FPVExifDocument(path).find(kMakerNote, Exif)), note);
    QVERIFY(hasSmallThings(FPVExifDocument(path)));
    QVERIFY(survivesASave(path));
    QVERIFY(contentOf(path).indexOf(note) < FPVExifDocument(path).app1Length());
}

void TestFPVExifDocumentRoom::largeNoteBesideAThumbnail_data()
{
    QTest::addColumn<int>("note");
    QTest::addColumn<int>("thumbnail");
    for (const int note : {20000, 40001, 60000}) {
        for (const int thumbnail : {4000, 5001}) {
            QTest::addRow("%d and %d", note, thumbnail) << note << thumbnail;
        }
    }
}

void TestFPVExifDocumentRoom::largeNoteBesideAThumbnail()
{
    QFETCH(int, note);
    QFETCH(int, thumbnail);
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        ExifBuilder photo = smallThings(order);
        const QString path = put(photo.makerNote(noteOf(note)).thumbnail(noteOf(thumbnail)));
        FPVExifDocument document(path);
        QVERIFY(hasSmallThings(document));
        QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), noteOf(note));
        QCOMPARE(thumbnailBytes(document), noteOf(thumbnail));
        QVERIFY(survivesASave(path));
    }
}

void TestFPVExifDocumentRoom::segmentsFullToTheLastBytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("comment");
    QTest::addColumn<QList<int>>("second");
    const QList<int> all = {0x0103, 0x011A, 0x0201, 0x0202};
    const QList<int> fitting = {0x0103, 0x0201, 0x0202};
    QTest::newRow("65533, even values") << 65533 << 10 << all;
    QTest::newRow("65534, even values") << 65534 << 10 << all;
    QTest::newRow("65535, even values") << 65535 << 10 << fitting;
    QTest::newRow("65533, an odd value") << 65533 << 9 << all;
    QTest::newRow("65534, an odd value") << 65534 << 9 << fitting;
    QTest::newRow("65535, an odd value") << 65535 << 9 << fitting;
}

void TestFPVExifDocumentRoom::segmentsFullToTheLastBytes()
{
    // Odd values get a byte each when they are written anew, and an odd segment one more.
    QFETCH(int, length);
    QFETCH(int, comment);
    QFETCH(QList<int>, second);
    const auto photoWith = [comment](int note, int thumbnail) {
        ExifBuilder photo = smallThings().undefined(Exif, 0x9286, QByteArray(comment, 'c'));
        return photo.makerNote(noteOf(note)).thumbnail(noteOf(thumbnail)).packed();
    };
    const int missing = length - 8 - int(photoWith(30000, 2000).block().size());
    const int note = 30000 + missing / 2 * 2; // an odd one would need a byte as well
    const int thumbnail = 2000 + missing % 2;
    const QString path = put(photoWith(note, thumbnail));
    FPVExifDocument document(path);
    QCOMPARE(document.app1Length(), length);
    QCOMPARE(numbersOf(document.exifList()),
             (QList<int>{0x829A, 0x9003, 0x9286, kMakerNote, 0xA005}));
    QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), noteOf(note));
    QCOMPARE(numbersOf(document.gpsList()), QList<int>{0x0002});
    // What the second directory says beside its thumbnail is the least loss.
    QCOMPARE(numbersOf(document.list(Ifd1)), second);
    QCOMPARE(thumbnailBytes(document), noteOf(thumbnail));
    QVERIFY(survivesASave(path));
    QVERIFY(restOf(contentOf(path)) == ExifBuilder::jpeg(16, 12, 0x808080).mid(2));
}

void TestFPVExifDocumentRoom::tightLayoutIsReadLikeAnyOther_data()
{
    addOrders();
}

void TestFPVExifDocumentRoom::tightLayoutIsReadLikeAnyOther()
{
    QFETCH(ExifBuilder::Order, order);
    // Two directories share a value.
    ExifBuilder photo = fullPhoto(order).undefined(Exif, 0xE001, noteOf(20001));
    photo.undefined(Gps, 0xE001, noteOf(20001));
    const QString plain = m_folder->put(photo, QStringLiteral("plain.jpg"));
    const QString path = put(photo.packed());
    QVERIFY(contentOf(path).size() < contentOf(plain).size() - 20000);
    FPVExifDocument document(path);
    QVERIFY(document.ifd1Offset() < document.ifd0Offset());
    QVERIFY(valuesOf(document) == valuesOf(FPVExifDocument(plain)));
    FPVExifDocument other(plain);
    QCOMPARE(thumbnailBytes(document), thumbnailBytes(other));
    const auto before = exiv2Tags(path);
    int tags = 0;
    for (const auto kind : kAllLists) {
        tags += document.list(kind).count();
    }
    QCOMPARE(int(before.size()), tags);
    QVERIFY(survivesASave(path));
    QCOMPARE(rewritten(plain), kDone);
    QVERIFY(contentOf(path) == contentOf(plain));
    auto after = exiv2Tags(path);
    for (const auto &[place, tag] : before) {
        QVERIFY(after.contains(place));
        QCOMPARE(after[place].type, tag.type);
        QCOMPARE(after[place].count, tag.count);
    }
    QCOMPARE(after.size(), before.size());
}

void TestFPVExifDocumentRoom::garbageBehindTheLinkHarmsNothing_data()
{
    QTest::addColumn<int>("count");
    for (const int count : {1, 16, 50}) {
        QTest::addRow("%d large values", count) << count;
    }
}

void TestFPVExifDocumentRoom::garbageBehindTheLinkHarmsNothing()
{
    // The link leads into the note, which has what reads as a directory.
    QFETCH(int, count);
    QByteArray note = noteOf(62000);
    const QByteArray garbage = garbageDirectory(count);
    note.replace(1000, garbage.size(), garbage);
    ExifBuilder photo;
    photo.ascii(Exif, 0x9003, "2004:05:06 07:08:09")
        .makerNote(note)
        .rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}});
    const auto place = quint32(photo.block().indexOf(note) + 1000);
    const QString path = put(photo.link(Ifd0, place));
    const FPVExifDocument document(path);
    QCOMPARE(document.ifd1Offset(), place);
    QCOMPARE(numbersOf(document.exifList()), (QList<int>{0x9003, kMakerNote}));
    QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), note);
    QCOMPARE(numbersOf(document.gpsList()), QList<int>{0x0002});
    // Only what takes no room of its own comes in.
    QCOMPARE(document.list(Ifd1).count(), count);
    QVERIFY(document.find(0x7100, Ifd1));
    QVERIFY(survivesASave(path));
}

void TestFPVExifDocumentRoom::garbageDirectoriesLeaveTheRestItsValues()
{
    // Together they are what may be held at once but for a few bytes; none fits the block.
    for (const auto &[list, last] : {std::pair(Ifd0, Ifd0), std::pair(Exif, Interoperability)}) {
        ExifBuilder photo = smallThings();
        for (quint16 i = 0; i < 15; ++i) {
            photo.word(list, 0x7000 + i, 7, 65535, 8);
        }
        photo.word(last, 0x7100, 7, last == Ifd0 ? 65500 : 65480, 8);
        const FPVExifDocument document(put(photo));
        QVERIFY(hasSmallThings(document));
        QCOMPARE(numbersOf(document.ifd0List()), (QList<int>{0x010F, 0x8769, 0x8825}));
    }
}

void TestFPVExifDocumentRoom::secondDirectoryGetsWhatIsLeft()
{
    // It has a value in common with the note and is cut to what fits beside it.
    constexpr int kExact = 65518 - (6 + 12) - (6 + 12) - (6 + 3 * 12 + 8);
    for (const int more : {-20, 0, 2}) {
        ExifBuilder photo;
        photo.shorts(Ifd1, 0x0103, {6})
            .rationals(Ifd1, 0x011A, {{72, 1}})
            .shorts(Ifd1, 0x0112, {1});
        const QByteArray note = QByteArray::fromHex("4800000001000000") + noteOf(kExact + more - 8);
        const QString path = put(photo.makerNote(note).packed());
        const FPVExifDocument document(path);
        QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), note);
        QCOMPARE(numbersOf(document.list(Ifd1)),
                 more > 0 ? (QList<int>{0x0103, 0x0112}) : (QList<int>{0x0103, 0x011A, 0x0112}));
        QVERIFY(survivesASave(path));
    }
}

void TestFPVExifDocumentRoom::largestGoesWhereverItIs_data()
{
    QTest::addColumn<quint32>("first");
    QTest::addColumn<quint32>("note");
    QTest::newRow("in the first directory") << 60000U << 20000U;
    QTest::newRow("in the Exif directory") << 20000U << 60000U;
}

void TestFPVExifDocumentRoom::largestGoesWhereverItIs()
{
    // Both values begin within the segment and reach into the image.
    QFETCH(quint32, first);
    QFETCH(quint32, note);
    ExifBuilder photo = smallThings();
    photo.word(Ifd0, 0xC000, 7, first, 8).word(Exif, kMakerNote, 7, note, 8).thumbnail("a picture");
    const QString path = put(photo);
    FPVExifDocument document(path);
    QVERIFY(hasSmallThings(document));
    QCOMPARE(document.find(0xC000, Ifd0) != nullptr, first < note);
    QCOMPARE(document.find(kMakerNote, Exif) != nullptr, note < first);
    QCOMPARE(thumbnailBytes(document), QByteArray("a picture"));
    QVERIFY(survivesASave(path));
}

void TestFPVExifDocumentRoom::thumbnailOutlivesItsDirectory_data()
{
    QTest::addColumn<int>("missing"); // bytes of room
    QTest::addColumn<int>("thumbnail");
    QTest::addColumn<bool>("hasNote");
    QTest::addColumn<QList<int>>("second");
    const auto row = [](int missing, int thumbnail, bool hasNote, const QList<int> &second) {
        QTest::addRow("%d too few, %d of the thumbnail", missing, thumbnail)
            << missing << thumbnail << hasNote << second;
    };
    const QList<int> all = {0x0103, 0x011A, 0x011B, 0x0128, 0x0201, 0x0202};
    row(0, 2000, true, all);
    row(2, 2000, true, {0x0103, 0x011A, 0x0128, 0x0201, 0x0202});
    row(40, 2000, true, {0x0103, 0x0128, 0x0201, 0x0202});
    row(42, 2000, true, {0x0103, 0x0201, 0x0202});
    row(64, 2000, true, {0x0201, 0x0202});
    row(66, 2000, false, all);
    row(66, 40000, true, all.mid(0, 4));
}

void TestFPVExifDocumentRoom::thumbnailOutlivesItsDirectory()
{
    QFETCH(int, missing);
    QFETCH(int, thumbnail);
    QFETCH(bool, hasNote);
    QFETCH(QList<int>, second);
    constexpr int kFullBlock = 8 + 65518;
    const auto photoWith = [&](int note) {
        ExifBuilder photo;
        photo.shorts(Ifd1, 0x0103, {6})
            .rationals(Ifd1, 0x011A, {{72, 1}})
            .rationals(Ifd1, 0x011B, {{72, 1}})
            .shorts(Ifd1, 0x0128, {2})
            .word(Exif, kMakerNote, 7, quint32(note), 0x100000); // behind the file
        return photo.thumbnail(noteOf(thumbnail));
    };
    const int note = kFullBlock - int(photoWith(5).block().size()) + missing;
    const QString path = put(photoWith(note));
    FPVExifDocument document(path);
    QCOMPARE(document.hasExifIfd(), hasNote);
    QCOMPARE(numbersOf(document.list(Ifd1)), second);
    QCOMPARE(thumbnailBytes(document), second.contains(0x0201) ? noteOf(thumbnail) : QByteArray());
    QVERIFY(survivesASave(path));
}

void TestFPVExifDocumentRoom::thumbnailPartlyOutsideDoesNotWrap_data()
{
    QTest::addColumn<int>("note");
    QTest::addColumn<int>("thumbnail");
    QTest::addColumn<bool>("keepsNote");
    QTest::addColumn<bool>("keepsThumbnail");
    QTest::newRow("there is room for both") << 20000 << 30000 << true << true;
    QTest::newRow("the note is larger") << 50000 << 30000 << false << true;
    QTest::newRow("the thumbnail is larger") << 30000 << 50000 << true << false;
    QTest::newRow("the thumbnail alone is too large") << 30000 << 65518 << true << false;
}

void TestFPVExifDocumentRoom::thumbnailPartlyOutsideDoesNotWrap()
{
    QFETCH(int, note);
    QFETCH(int, thumbnail);
    QFETCH(bool, keepsNote);
    QFETCH(bool, keepsThumbnail);
    // What lies outside reads as a comment of the image.
    QByteArray picture = noteOf(thumbnail);
    const int outside = thumbnail - 100;
    picture.replace(100, 2, "\xFF\xFE");
    qToBigEndian(quint16(outside - 2), picture.data() + 102);
    ExifBuilder photo = smallThings().makerNote(noteOf(note)).thumbnail(picture);
    const quint32 end = photo.thumbnailOffset() + 100;
    const QString path = put(photo.app1Length(quint16(8 + end)));
    FPVExifDocument document(path);
    QVERIFY(hasSmallThings(document));
    QCOMPARE(document.find(kMakerNote, Exif) != nullptr, keepsNote);
    QCOMPARE(document.hasThumbnail(), keepsThumbnail);
    QCOMPARE(thumbnailBytes(document), keepsThumbnail ? picture : QByteArray());
    QCOMPARE(document.find(0x0201, Ifd1) != nullptr, keepsThumbnail);
    QCOMPARE(document.find(0x0202, Ifd1) != nullptr, keepsThumbnail);
    QVERIFY(survivesASave(path));
    const QByteArray after = contentOf(path);
    QVERIFY(after.size() - restOf(after).size() - 4 <= kFullLength);
}

void TestFPVExifDocumentRoom::exifDirectoryThatIsLinkedAsWell_data()
{
    QTest::addColumn<int>("tag");
    QTest::addColumn<bool>("isExif");
    QTest::newRow("the time") << 0x9003 << true;
    QTest::newRow("a compression") << 0x0103 << false;
    QTest::newRow("strips") << 0x0111 << false;
    QTest::newRow("a thumbnail") << 0x0201 << false;
}

void TestFPVExifDocumentRoom::exifDirectoryThatIsLinkedAsWell()
{
    QFETCH(int, tag);
    QFETCH(bool, isExif);
    ExifBuilder photo;
    photo.longs(Exif, quint16(tag), {1}).longs(Exif, 0x9208, {1}).makerNote(noteOf(40000));
    const QString path = put(photo.link(Ifd0, photo.offsetOf(Exif)));
    const FPVExifDocument document(path);
    const QList<int> numbers = {tag, 0x9208, kMakerNote};
    QCOMPARE(document.find(0x8769, Ifd0)->intValue(), int(document.ifd1Offset()));
    QCOMPARE(numbersOf(document.exifList()), isExif ? numbers : QList<int>());
    QCOMPARE(numbersOf(document.list(Ifd1)), isExif ? QList<int>() : numbers);
    QVERIFY(survivesASave(path));
}

LUMI_TEST(TestFPVExifDocumentRoom)
#include "TestFPVExifDocumentRoom.moc"
