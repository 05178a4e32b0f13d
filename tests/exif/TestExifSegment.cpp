// SPDX-License-Identifier: MIT
#include "exif/read/ExifSegment.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QBuffer>
#include <QTest>

#include <optional>

using lumi::test::ExifBuilder;
using enum ExifListKind;

namespace {

/// Counts its reads. One of them can fail or return only half of the bytes.
class WatchedDevice : public QBuffer
{
public:
    explicit WatchedDevice(const QByteArray &bytes)
    {
        setData(bytes);
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    int reads = 0;
    int failingRead = -1;
    int halfRead = -1;

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const int number = reads++;
        if (number == failingRead) {
            return -1;
        }
        return QBuffer::readData(data, number == halfRead ? size / 2 : size);
    }
};

/// A photo with a value behind the image data, outside the segment.
QByteArray photoWithFarValue(int *place)
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil Works").word(Ifd0, 0x927C, 7, 8, 0);
    *place = int(photo.file().size());
    ExifBuilder far;
    far.ascii(Ifd0, 0x010F, "Anvil Works").word(Ifd0, 0x927C, 7, 8, quint32(*place - 12));
    return far.file() + "far away";
}

/// Reads the first directory of the photo into list, which stays empty on failure.
void readFirst(const ExifBuilder &photo, lumi::ExifTagList &list)
{
    WatchedDevice device(photo.file());
    lumi::ExifSegment segment(device);
    quint32 link = 0;
    if (!segment.load() || !segment.readIfd(segment.ifd0Offset(), list, link)) {
        list.clear();
    }
}

} // namespace

class TestExifSegment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAPhotoInTwoReads_data();
    void readsAPhotoInTwoReads();
    void readsNothingMoreOfAFileWithoutExif();
    void readsAFarValueOnDemand();
    void readErrorsAreNoEnd_data();
    void readErrorsAreNoEnd();
    void farReadErrorFailsTheDirectory_data();
    void farReadErrorFailsTheDirectory();
    void holdsDirectoriesWhoseEntriesLieInIt_data();
    void holdsDirectoriesWhoseEntriesLieInIt();
    void largeValuesArePassedOver_data();
    void largeValuesArePassedOver();
    void valuesEndAtAMegabyteInAll();
    void gpsDirectoryBeginsWithAGpsTag_data();
    void gpsDirectoryBeginsWithAGpsTag();
    void directoryIsReadAsOneKind();
    void headerFields();
};

void TestExifSegment::readsAPhotoInTwoReads_data()
{
    lumi::test::addOrders();
}

void TestExifSegment::readsAPhotoInTwoReads()
{
    QFETCH(ExifBuilder::Order, order);
    WatchedDevice device(lumi::test::fullPhoto(order).file());
    lumi::ExifSegment segment(device);
    QVERIFY(segment.load());
    QCOMPARE(segment.isLittleEndian(), order == ExifBuilder::Order::Little);
    lumi::ExifTagList list;
    quint32 link = 0;
    QVERIFY(segment.readIfd(segment.ifd0Offset(), list, link));
    QCOMPARE(list.count(), 8);
    QVERIFY(link > 0);
    QCOMPARE(device.reads, 2);
}

void TestExifSegment::readsNothingMoreOfAFileWithoutExif()
{
    WatchedDevice device(ExifBuilder::jpeg(64, 64, 0x336699));
    lumi::ExifSegment segment(device);
    QVERIFY(!segment.load());
    QCOMPARE(device.reads, 1);
}

void TestExifSegment::readsAFarValueOnDemand()
{
    int place = 0;
    WatchedDevice device(photoWithFarValue(&place));
    lumi::ExifSegment segment(device);
    QVERIFY(segment.load());
    lumi::ExifTagList list;
    quint32 link = 0;
    QVERIFY(segment.readIfd(segment.ifd0Offset(), list, link));
    QCOMPARE(list.findNumber(0x927C)->text(), QStringLiteral("far away"));
    QCOMPARE(device.reads, 3);
}

void TestExifSegment::readErrorsAreNoEnd_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the header cannot be read") << 0 << -1;
    QTest::newRow("half the header is given") << -1 << 0;
    QTest::newRow("the segment cannot be read") << 1 << -1;
    QTest::newRow("half the segment is given") << -1 << 1;
}

void TestExifSegment::readErrorsAreNoEnd()
{
    const auto [failing, half] = lumi::test::row<int, int>();
    WatchedDevice device(lumi::test::fullPhoto(ExifBuilder::Order::Little).file());
    device.failingRead = failing;
    device.halfRead = half;
    lumi::ExifSegment segment(device);
    QVERIFY(!segment.load());
}

void TestExifSegment::farReadErrorFailsTheDirectory_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the value cannot be read") << 2 << -1;
    QTest::newRow("half the value is given") << -1 << 2;
}

void TestExifSegment::farReadErrorFailsTheDirectory()
{
    const auto [failing, half] = lumi::test::row<int, int>();
    int place = 0;
    WatchedDevice device(photoWithFarValue(&place));
    device.failingRead = failing;
    device.halfRead = half;
    lumi::ExifSegment segment(device);
    QVERIFY(segment.load());
    lumi::ExifTagList list;
    quint32 link = 0;
    QVERIFY(!segment.readIfd(segment.ifd0Offset(), list, link));
}

void TestExifSegment::holdsDirectoriesWhoseEntriesLieInIt_data()
{
    readsAPhotoInTwoReads_data();
}

void TestExifSegment::holdsDirectoriesWhoseEntriesLieInIt()
{
    QFETCH(ExifBuilder::Order, order);
    const ExifBuilder photo = lumi::test::fullPhoto(order);
    const quint32 place = photo.offsetOf(Ifd1);
    const int entriesEnd = int(place) + 2 + 4 * 12;
    const auto segmentOf = [](WatchedDevice &device) {
        lumi::ExifSegment segment(device);
        return segment.load() ? std::optional(segment) : std::nullopt;
    };
    WatchedDevice whole(photo.file());
    const auto segment = segmentOf(whole);
    QVERIFY(segment);
    for (const ExifListKind kind : {Exif, Interoperability, Gps, Ifd1}) {
        QVERIFY(segment->holdsIfd(photo.offsetOf(kind), kind));
    }
    // There is no directory in the header and none behind the segment.
    const auto end = quint32(photo.block().size());
    for (const quint32 offset : {0U, end - 1, end, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        QVERIFY(!segment->holdsIfd(offset, Ifd1));
    }
    for (const int missing : {0, 1, 12, 48, 49}) {
        ExifBuilder shorter = photo;
        WatchedDevice device(shorter.app1Length(quint16(8 + entriesEnd - missing)).file());
        const auto cut = segmentOf(device);
        QVERIFY(cut);
        QCOMPARE(cut->holdsIfd(place, Ifd1), missing == 0);
    }
}

void TestExifSegment::largeValuesArePassedOver_data()
{
    lumi::test::columns<int, quint32, bool>();
    QTest::newRow("65535 bytes") << 7 << 65535U << true;
    QTest::newRow("65536 bytes") << 7 << 65536U << false;
    QTest::newRow("65534 bytes of numbers") << 3 << 32767U << true;
    QTest::newRow("65536 bytes of numbers") << 3 << 32768U << false;
    QTest::newRow("65528 bytes of fractions") << 5 << 8191U << true;
    QTest::newRow("65536 bytes of fractions") << 5 << 8192U << false;
}

void TestExifSegment::largeValuesArePassedOver()
{
    const auto [type, count, kept] = lumi::test::row<int, quint32, bool>();
    lumi::ExifTagList list;
    readFirst(ExifBuilder()
                  .shorts(Ifd0, 0x0100, {1})
                  .word(Ifd0, 0x0101, quint16(type), count, 8)
                  .shorts(Ifd0, 0x0102, {2}),
              list);
    QCOMPARE(list.findNumber(0x0101) != nullptr, kept);
    QCOMPARE(list.findNumber(0x0102)->intValue(), 2);
}

void TestExifSegment::valuesEndAtAMegabyteInAll()
{
    ExifBuilder photo;
    for (quint16 number = 1; number <= 20; ++number) {
        photo.word(Ifd0, number, 7, 65535, 8);
    }
    photo.shorts(Ifd0, 0x0112, {6}).word(Ifd0, 0x0113, 7, 100, 8);
    lumi::ExifTagList list;
    readFirst(photo, list);
    // The limit is 16 large values and 16 bytes. Only the small value still fits.
    QVERIFY(list.findNumber(16));
    QVERIFY(!list.findNumber(17));
    QCOMPARE(list.findNumber(0x0112)->intValue(), 6);
    QVERIFY(!list.findNumber(0x0113));
    QCOMPARE(list.count(), 17);
}

void TestExifSegment::gpsDirectoryBeginsWithAGpsTag_data()
{
    lumi::test::columns<int, int, QByteArray, bool>();
    QTest::newRow("a version") << 0x0000 << 1 << QByteArray("\2\2\0\0", 4) << true;
    QTest::newRow("a reference") << 0x0001 << 2 << QByteArray("N\0", 2) << true;
    QTest::newRow("a reference of four bytes") << 0x0001 << 2 << QByteArray("N\0\0\0", 4) << true;
    QTest::newRow("a reference without a NUL") << 0x0001 << 2 << QByteArray("N") << true;
    QTest::newRow("a latitude") << 0x0002 << 5 << QByteArray(24, '\1') << true;
    QTest::newRow("the last number") << 0x0029 << 5 << QByteArray(8, '\1') << true;
    QTest::newRow("the next number") << 0x002A << 5 << QByteArray(8, '\1') << false;
    QTest::newRow("a name of interoperability") << 0x0001 << 2 << QByteArray("R98\0", 4) << false;
    QTest::newRow("a compression") << 0x0103 << 3 << QByteArray("\6\0", 2) << false;
    QTest::newRow("an exposure time") << 0x829A << 5 << QByteArray(8, '\1') << false;
}

void TestExifSegment::gpsDirectoryBeginsWithAGpsTag()
{
    const auto [tag, type, value, isGps] = lumi::test::row<int, int, QByteArray, bool>();
    const auto count = quint32(type == 5 ? value.size() / 8 : type == 3 ? 1 : value.size());
    for (const auto order : {ExifBuilder::Order::Little, ExifBuilder::Order::Big}) {
        ExifBuilder photo(order);
        photo.value(Exif, quint16(tag), quint16(type), count, value);
        WatchedDevice device(photo.file());
        lumi::ExifSegment segment(device);
        QVERIFY(segment.load());
        QCOMPARE(segment.holdsIfd(photo.offsetOf(Exif), Gps), isGps);
        for (const ExifListKind kind : {Exif, Interoperability, Ifd1}) {
            QVERIFY(segment.holdsIfd(photo.offsetOf(Exif), kind));
        }
    }
}

void TestExifSegment::directoryIsReadAsOneKind()
{
    const ExifBuilder photo = lumi::test::fullPhoto(ExifBuilder::Order::Little);
    WatchedDevice device(photo.file());
    lumi::ExifSegment segment(device);
    QVERIFY(segment.load());
    lumi::ExifTagList list;
    quint32 link = 0;
    QVERIFY(segment.readIfd(photo.offsetOf(Gps), list, link));
    for (const ExifListKind kind : {Exif, Interoperability, Gps, Ifd1}) {
        QVERIFY(!segment.holdsIfd(photo.offsetOf(Gps), kind));
        QVERIFY(segment.holdsIfd(photo.offsetOf(Exif), kind) == (kind != Gps));
    }
}

void TestExifSegment::headerFields()
{
    WatchedDevice device(ExifBuilder().shorts(Ifd0, 0x0112, {1}).app1Length(0x1234).file());
    lumi::ExifSegment segment(device);
    QCOMPARE(segment.tiffBase(), 0);
    QVERIFY(segment.load());
    QCOMPARE(segment.tiffBase(), 12);
    QCOMPARE(segment.app1Length(), 0x1234);
    QCOMPARE(segment.ifd0Offset(), 8U);
}

LUMI_TEST(TestExifSegment)
#include "TestExifSegment.moc"
