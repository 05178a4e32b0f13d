// SPDX-License-Identifier: MIT
#include "exif/ExifSegment.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/TestMain.h"

#include <QBuffer>
#include <QTest>

#include <optional>

using lumi::test::ExifBuilder;
using enum ExifListKind;

namespace {

/// Counts its reads, and fails or gives half from a certain read on.
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

/// A photo whose last value lies in the picture data, outside the segment.
QByteArray photoWithFarValue(int *place)
{
    ExifBuilder photo;
    photo.ascii(Ifd0, 0x010F, "Anvil Works").word(Ifd0, 0x927C, 7, 8, 0);
    *place = int(photo.file().size());
    ExifBuilder far;
    far.ascii(Ifd0, 0x010F, "Anvil Works").word(Ifd0, 0x927C, 7, 8, quint32(*place - 12));
    return far.file() + "far away";
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
    void headerFields();
};

void TestExifSegment::readsAPhotoInTwoReads_data()
{
    QTest::addColumn<bool>("big");
    QTest::newRow("little-endian") << false;
    QTest::newRow("big-endian") << true;
}

void TestExifSegment::readsAPhotoInTwoReads()
{
    QFETCH(bool, big);
    const auto order = big ? ExifBuilder::Order::Big : ExifBuilder::Order::Little;
    WatchedDevice device(lumi::test::fullPhoto(order).file());
    lumi::ExifSegment segment(device);
    QVERIFY(segment.load());
    QCOMPARE(segment.isLittleEndian(), !big);
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
    QTest::addColumn<int>("failing");
    QTest::addColumn<int>("half");
    QTest::newRow("the header cannot be read") << 0 << -1;
    QTest::newRow("half the header is given") << -1 << 0;
    QTest::newRow("the segment cannot be read") << 1 << -1;
    QTest::newRow("half the segment is given") << -1 << 1;
}

void TestExifSegment::readErrorsAreNoEnd()
{
    QFETCH(int, failing);
    QFETCH(int, half);
    WatchedDevice device(lumi::test::fullPhoto(ExifBuilder::Order::Little).file());
    device.failingRead = failing;
    device.halfRead = half;
    lumi::ExifSegment segment(device);
    QVERIFY(!segment.load());
}

void TestExifSegment::farReadErrorFailsTheDirectory_data()
{
    QTest::addColumn<int>("failing");
    QTest::addColumn<int>("half");
    QTest::newRow("the value cannot be read") << 2 << -1;
    QTest::newRow("half the value is given") << -1 << 2;
}

void TestExifSegment::farReadErrorFailsTheDirectory()
{
    QFETCH(int, failing);
    QFETCH(int, half);
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
    QFETCH(bool, big);
    const auto order = big ? ExifBuilder::Order::Big : ExifBuilder::Order::Little;
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
    for (const ExifListKind kind : {Ifd0, Exif, Interoperability, Gps, Ifd1}) {
        QVERIFY(segment->holdsIfd(photo.offsetOf(kind)));
    }
    // Behind the segment there is nothing that could be a directory.
    for (const quint32 offset : {quint32(segment->size()) - 1, quint32(segment->size()),
                                 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
        QVERIFY(!segment->holdsIfd(offset));
    }
    for (const int missing : {0, 1, 12, 48, 49}) {
        ExifBuilder shorter = photo;
        WatchedDevice device(shorter.app1Length(quint16(8 + entriesEnd - missing)).file());
        const auto cut = segmentOf(device);
        QVERIFY(cut);
        QCOMPARE(cut->holdsIfd(place), missing == 0);
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
