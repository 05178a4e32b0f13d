// SPDX-License-Identifier: MIT
// Photos whose values fill a segment, exceed it, stand behind it or overlap. All of them are read,
// and the length of the new segment is known before the photo is saved.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/ForeignReaders.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>
#include <QtEndian>

#include <algorithm>
#include <utility>

using namespace lumi::test;
using enum ExifListKind;

namespace {

constexpr quint16 kMakerNote = 0x927C;
constexpr int kFullLength = 65535;

/// Bytes without repetition.
QByteArray noteOf(int size)
{
    QByteArray note(size, '\0');
    for (int i = 0; i < size; ++i) {
        note[i] = char(i * 7 + i / 256);
    }
    return note;
}

/// Small tags in every directory.
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

bool hasSmallThings(const FPVExifDocument &document)
{
    constexpr std::pair<ExifListKind, int> kThings[] = {
        {Ifd0, 0x010F}, {Exif, 0x829A}, {Exif, 0x9003}, {Exif, 0xA005}, {Interoperability, 0x0001},
        {Gps, 0x0002},  {Ifd1, 0x0103}, {Ifd1, 0x011A}};
    return std::all_of(std::begin(kThings), std::end(kThings), [&document](const auto &thing) {
        return document.find(thing.second, thing.first) != nullptr;
    });
}

} // namespace

class TestLargeBlocks : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void largeValueIsReadWithTheRest_data();
    void largeValueIsReadWithTheRest();
    void noteBehindTheImageMovesIntoTheSegment();
    void segmentsFullToTheLastBytes_data();
    void segmentsFullToTheLastBytes();
    void tightLayoutIsReadLikeAnyOther_data();
    void tightLayoutIsReadLikeAnyOther();
    void thumbnailPartlyOutsideIsCounted_data();
    void thumbnailPartlyOutsideIsCounted();

private:
    /// Whether a rewrite keeps values, thumbnail and image data.
    [[nodiscard]] static bool survivesASave(const QString &path);
};

bool TestLargeBlocks::survivesASave(const QString &path)
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

void TestLargeBlocks::largeValueIsReadWithTheRest_data()
{
    lumi::test::columns<ExifListKind, quint16, quint32, quint32>();
    for (const ExifListKind list : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        const auto row = [list](const char *what, quint32 size, quint32 offset) {
            QTest::addRow("list %d, %s", int(list), what) << list << kMakerNote << size << offset;
        };
        row("behind the file", 65500, 0x100000);
        row("in the header", 65535, 0);
        row("from the middle of the segment", 65400, 100);
    }
    // Numbers of pointer tags in directories where they are no pointers.
    QTest::newRow("the thumbnail's place in the first") << Ifd0 << quint16(0x0201) << 65480U << 0U;
    QTest::newRow("Interoperability in the first") << Ifd0 << quint16(0xA005) << 65480U << 0U;
    QTest::newRow("the thumbnail's length in Exif") << Exif << quint16(0x0202) << 65480U << 0U;
    QTest::newRow("Exif in GPS") << Gps << quint16(0x8769) << 65480U << 0U;
}

void TestLargeBlocks::largeValueIsReadWithTheRest()
{
    const auto [list, tag, size, offset]
        = lumi::test::row<ExifListKind, quint16, quint32, quint32>();
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        const QString path
            = put(smallThings(order).word(list, tag, 7, size, offset).thumbnail("a picture"));
        FPVExifDocument document(path);
        QCOMPARE(bytesOf(document.find(tag, list)).size(), qsizetype(size));
        QVERIFY(hasSmallThings(document));
        QCOMPARE(thumbnailBytes(document), QByteArray("a picture"));
        QVERIFY(FPVExifWriter(path).segmentLength() > kFullLength);
    }
}

void TestLargeBlocks::noteBehindTheImageMovesIntoTheSegment()
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

void TestLargeBlocks::segmentsFullToTheLastBytes_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("comment");
    QTest::addColumn<int>("newLength");
    QTest::newRow("65533, even values") << 65533 << 10 << 65534;
    QTest::newRow("65534, even values") << 65534 << 10 << 65534;
    QTest::newRow("65535, even values") << 65535 << 10 << 65536;
    QTest::newRow("65533, an odd value") << 65533 << 9 << 65534;
    QTest::newRow("65534, an odd value") << 65534 << 9 << 65536;
    QTest::newRow("65535, an odd value") << 65535 << 9 << 65536;
}

void TestLargeBlocks::segmentsFullToTheLastBytes()
{
    // The writer pads odd values and an odd segment with a byte each.
    QFETCH(int, length);
    QFETCH(int, comment);
    QFETCH(int, newLength);
    const auto photoWith = [comment](int note, int thumbnail) {
        ExifBuilder photo = smallThings().undefined(Exif, 0x9286, QByteArray(comment, 'c'));
        return photo.makerNote(noteOf(note)).thumbnail(noteOf(thumbnail)).packed();
    };
    const int missing = length - 8 - int(photoWith(30000, 2000).block().size());
    const int note = 30000 + missing / 2 * 2; // even, because an odd note would be padded
    const int thumbnail = 2000 + missing % 2;
    const QString path = put(photoWith(note, thumbnail));
    FPVExifDocument document(path);
    QCOMPARE(document.app1Length(), length);
    QCOMPARE(numbersOf(document.exifList()),
             (QList<int>{0x829A, 0x9003, 0x9286, kMakerNote, 0xA005}));
    QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), noteOf(note));
    QCOMPARE(numbersOf(document.gpsList()), QList<int>{0x0002});
    QCOMPARE(numbersOf(document.list(Ifd1)), (QList<int>{0x0103, 0x011A, 0x0201, 0x0202}));
    QCOMPARE(thumbnailBytes(document), noteOf(thumbnail));
    QCOMPARE(FPVExifWriter(path).segmentLength(), newLength);
    QVERIFY(newLength > kFullLength || survivesASave(path));
}

void TestLargeBlocks::tightLayoutIsReadLikeAnyOther_data()
{
    addOrders();
}

void TestLargeBlocks::tightLayoutIsReadLikeAnyOther()
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

void TestLargeBlocks::thumbnailPartlyOutsideIsCounted_data()
{
    lumi::test::columns<int, int, bool>();
    QTest::newRow("there is room for both") << 20000 << 30000 << true;
    QTest::newRow("there is room for one") << 50000 << 30000 << false;
    QTest::newRow("the thumbnail alone is too large") << 30000 << 65519 << false;
}

void TestLargeBlocks::thumbnailPartlyOutsideIsCounted()
{
    const auto [note, thumbnail, fits] = lumi::test::row<int, int, bool>();
    // The bytes outside are a comment segment of the image.
    QByteArray picture = noteOf(thumbnail);
    const int outside = thumbnail - 100;
    picture.replace(100, 2, "\xFF\xFE");
    qToBigEndian(quint16(outside - 2), picture.data() + 102);
    ExifBuilder photo = smallThings().makerNote(noteOf(note)).thumbnail(picture);
    const quint32 end = photo.thumbnailOffset() + 100;
    const QString path = put(photo.app1Length(quint16(8 + end)));
    FPVExifDocument document(path);
    QVERIFY(hasSmallThings(document));
    QCOMPARE(bytesOf(document.find(kMakerNote, Exif)), noteOf(note));
    QCOMPARE(thumbnailBytes(document), picture);
    QCOMPARE(FPVExifWriter(path).segmentLength() <= kFullLength, fits);
    QVERIFY(!fits || survivesASave(path));
}

LUMI_TEST(TestLargeBlocks)
#include "TestLargeBlocks.moc"
