// SPDX-License-Identifier: MIT
// Pointers and thumbnail tags with too many values.
#include "tests/exif/BlockCopy.h"
#include "tests/exif/RewriteTest.h"
#include "tests/exif/tagLists.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace lumi::test;
using enum ExifListKind;

namespace {

constexpr quint16 kMakerNote = 0x927C;
/// The offset of the value in the first entry.
constexpr quint32 kFirstValue = 18;
constexpr qsizetype kLongSize = 4;

} // namespace

class TestLyingPointers : public RewriteTest
{
    Q_OBJECT

private Q_SLOTS:
    void overlongPointerIsWrittenAsOneLong_data();
    void overlongPointerIsWrittenAsOneLong();
    void thumbnailWithOverlongNumbersIsKept_data();
    void thumbnailWithOverlongNumbersIsKept();

private:
    /// Whether two rewrites keep all values, and the second one every byte.
    [[nodiscard]] static bool isSteady(const QString &path);
};

bool TestLyingPointers::isSteady(const QString &path)
{
    const auto values = valuesOf(FPVExifDocument(path));
    const QByteArray rest = restOf(contentOf(path));
    const bool isSaved = rewritten(path) == kDone;
    const QByteArray saved = contentOf(path);
    return isSaved && valuesOf(FPVExifDocument(path)) == values && restOf(saved) == rest
        && rewritten(path) == kDone && contentOf(path) == saved
        && !QImage::fromData(saved).isNull();
}

void TestLyingPointers::overlongPointerIsWrittenAsOneLong_data()
{
    QTest::addColumn<quint16>("pointer");
    QTest::addColumn<ExifListKind>("kind");
    QTest::newRow("to Exif") << quint16(0x8769) << Exif;
    QTest::newRow("to GPS") << quint16(0x8825) << Gps;
}

void TestLyingPointers::overlongPointerIsWrittenAsOneLong()
{
    QFETCH(quint16, pointer);
    QFETCH(ExifListKind, kind);
    const auto photoWith = [&](quint32 place, quint32 other) {
        ExifBuilder photo;
        photo.longs(Ifd0, 0x0100, {place}).word(Ifd0, pointer, 7, 20000, kFirstValue);
        photo.longs(Ifd0, pointer == 0x8769 ? 0x8825 : 0x8769, {other});
        photo.rationals(Gps, 0x0002, {{35, 1}, {40, 1}, {3012, 100}});
        return photo.makerNote(QByteArray(50000, 'm')).withoutPointers();
    };
    const ExifBuilder sketch = photoWith(0, 0);
    const QString path
        = put(photoWith(sketch.offsetOf(kind), sketch.offsetOf(kind == Exif ? Gps : Exif)));
    const FPVExifDocument document(path);
    QCOMPARE(bytesOf(document.find(pointer, Ifd0)).size(), 20000);
    QCOMPARE(bytesOf(document.find(kMakerNote, Exif)).size(), 50000);
    QVERIFY(document.find(0x0002, Gps));
    QVERIFY(FPVExifWriter(path).segmentLength() <= 65535);
    QCOMPARE(rewritten(path), kDone);
    QCOMPARE(bytesOf(FPVExifDocument(path).find(pointer, Ifd0)).size(), kLongSize);
    QVERIFY(isSteady(path));
}

void TestLyingPointers::thumbnailWithOverlongNumbersIsKept_data()
{
    QTest::addColumn<quint16>("number");
    QTest::newRow("two places") << quint16(0x0201);
    QTest::newRow("two lengths") << quint16(0x0202);
}

void TestLyingPointers::thumbnailWithOverlongNumbersIsKept()
{
    QFETCH(quint16, number);
    const QByteArray picture = ExifBuilder::jpeg(40, 30, 0xC08040);
    const QString path = put(ExifBuilder().ascii(Ifd0, 0x010F, "Anvil Works").thumbnail(picture));
    {
        FPVExifWriter writer(path);
        const quint32 numbers[]
            = {number == 0x0201 ? writer.thumbnailOffset() : writer.thumbnailLength(), 0};
        writer.setTag(number, 4, 2, numbers, Ifd1);
        QCOMPARE(writer.rewrite(), kDone);
    }
    QVERIFY(isSteady(path));
    FPVExifDocument document(path);
    QCOMPARE(thumbnailBytes(document), picture);
    QCOMPARE(bytesOf(document.find(number, Ifd1)).size(), 2 * kLongSize);
}

LUMI_TEST(TestLyingPointers)
#include "TestLyingPointers.moc"
