// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <memory>

#include <sys/stat.h>

using lumi::DecodeError;
using lumi::test::decodeOn;
using lumi::test::JpegKind;
using lumi::test::kKeptBackKB;
using lumi::test::MessageLog;
using lumi::test::start;
using lumi::test::waitForSlices;
using lumi::test::Watched;

/// Screen decodes that fail, and damaged photos whose decode must not fail.
class TestDecodeFailures : public lumi::test::DecodeTest
{
    Q_OBJECT

private Q_SLOTS:
    void wrongRequests_data();
    void wrongRequests();
    void theFirstErrorStays();
    void aDecoderThatCannotBeMade();
    void filesThatCannotBeDecoded_data();
    void filesThatCannotBeDecoded();
    void aFailedStartLeavesNothing();
    void memoryForTheRaster_data();
    void memoryForTheRaster();
    void errorsInAnyLine_data();
    void errorsInAnyLine();
    void errorsInOnePiece();
    void cutAtEveryLength_data();
    void cutAtEveryLength();
    void damageAtAnyByte();
    void headersWithImpossibleSizes();
    void scanLimit_data();
    void scanLimit();
};

namespace {

const QString kError2 = QStringLiteral("FPVItemJpeg Error (2)");
const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

bool haveTheSameRaster(FPVItemJpeg &one, FPVItemJpeg &other)
{
    QSize size;
    QSize otherSize;
    const uchar *raster = one.decodedRaster(32, &size);
    const uchar *otherRaster = other.decodedRaster(32, &otherSize);
    return raster != nullptr && otherRaster != nullptr && size == otherSize
        && std::equal(raster, raster + qsizetype{4} * size.width() * size.height(), otherRaster);
}

} // namespace

void TestDecodeFailures::wrongRequests_data()
{
    lumi::test::columns<int, QSize, int>();
    QTest::newRow("24 bits") << 24 << QSize(10, 10) << 0;
    QTest::newRow("no bits") << 0 << QSize(10, 10) << 0;
    QTest::newRow("no width") << 16 << QSize(0, 10) << 2;
    QTest::newRow("no height") << 32 << QSize(10, 0) << 2;
    QTest::newRow("a negative side") << 32 << QSize(-1, 10) << 2;
}

void TestDecodeFailures::wrongRequests()
{
    auto [depth, request, code] = lumi::test::row<int, QSize, int>();
    Watched watched(photo({}));
    const MessageLog log;
    QSize size(7, 7);
    QVERIFY(!watched.item->startDecode(depth, &size, &request));
    QCOMPARE(int(watched.item->errorCode()), code);
    QCOMPARE(log.warnings, QStringList{QString::asprintf("FPVItemJpeg Error (%d)", code)});
    QCOMPARE(watched.updates.count(), 0);
    QCOMPARE(size, QSize(7, 7));
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestDecodeFailures::theFirstErrorStays()
{
    FPVItemJpeg item(file("no photo"), QString(), false);
    const MessageLog log;
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QVERIFY(!start(&item, nullptr, 24));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), kError3);
    photo({});
    QVERIFY(start(&item));
    QCOMPARE(item.errorCode(), DecodeError::None);
    QVERIFY(!start(&item, nullptr, 24));
    QCOMPARE(item.errorCode(), DecodeError::WrongDepth);
    QVERIFY(item.rasterBits() == nullptr);
}

/// libjpeg reports an error while it makes the decompressor.
void TestDecodeFailures::aDecoderThatCannotBeMade()
{
    FPVItemJpeg item(photo({}), QString(), false);
    const MessageLog log;
    {
        lumi::test::LibraryFaults faults;
        faults.failJpegCreate();
        QVERIFY(!start(&item));
        QCOMPARE(item.errorCode(), DecodeError::Undecodable);
        QVERIFY(log.warnings.contains(
            QStringLiteral("Memory Allocation Error(FPVItemJpeg::InitJpegLib)")));
        QCOMPARE(log.warnings.last(), kError3);
        QVERIFY(item.scaledImage(20, 15) == nullptr);
        QCOMPARE(item.imageSize(), QSize(-1, -1));
        QCOMPARE(lumi::test::liveDecompressors(), 0);
    }
    QVERIFY(start(&item));
}

void TestDecodeFailures::filesThatCannotBeDecoded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a photo");
    QTest::newRow("a header that never ends") << lumi::test::makeJpeg({}).first(200);
    QTest::newRow("two samples a pixel") << lumi::test::makeJpeg({.components = 2});
    QTest::newRow("no height") << lumi::test::withSize(lumi::test::makeJpeg({}), 83, 0);
    QTest::newRow("twelve bits a sample") << [] {
        QByteArray bytes = lumi::test::makeJpeg({});
        bytes[bytes.indexOf("\xff\xc0") + 4] = 12;
        return bytes;
    }();
    QTest::newRow("lossless") << [] {
        QByteArray bytes = lumi::test::makeJpeg({});
        bytes[bytes.indexOf("\xff\xc0") + 1] = '\xc3';
        return bytes;
    }();
}

void TestDecodeFailures::filesThatCannotBeDecoded()
{
    QFETCH(QByteArray, bytes);
    Watched watched(file(bytes));
    const MessageLog log;
    QVERIFY(!start(watched.item.get()));
    QCOMPARE(watched.item->errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), kError3);
    QCOMPARE(watched.updates.count(), 0);
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestDecodeFailures::aFailedStartLeavesNothing()
{
    const QString path = photo({});
    FPVItemJpeg item(path, QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    QVERIFY(item.rasterBits() != nullptr);
    QVERIFY(QFile::remove(path));
    const MessageLog log;
    QVERIFY(!start(&item));
    QVERIFY(item.rasterBits() == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings, QStringList{kError3});

    // A folder or a pipe exists but cannot be decoded.
    QVERIFY(QDir().mkdir(path));
    QVERIFY(!start(&item));
    QCOMPARE(log.warnings[1],
             QString(QStringLiteral("my_jpeg_source_mgr cannot read file ") + path));
    QVERIFY(QDir().rmdir(path));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
}

void TestDecodeFailures::memoryForTheRaster_data()
{
    lumi::test::columns<int, QSize, int>();
    QTest::newRow("16 bits") << 16 << QSize(1600, 1200)
                             << ((1600 * 1200 * 2 + 1600 * 4 + 1048576) >> 10);
    QTest::newRow("32 bits") << 32 << QSize(1600, 1200)
                             << ((1600 * 1200 * 4 + 1600 * 4 + 1048576) >> 10);
    QTest::newRow("a quarter, but a line of the whole photo")
        << 32 << QSize(400, 300) << ((400 * 300 * 4 + 1600 * 4 + 1048576) >> 10);
}

void TestDecodeFailures::memoryForTheRaster()
{
    auto [depth, request, needKB] = lumi::test::row<int, QSize, int>();
    FPVItemJpeg item(photo({.size = QSize(1600, 1200), .components = 1, .plain = true}), QString(),
                     false);
    item.setIncremental(false);
    machine()->setMemoryKB(needKB + kKeptBackKB - 1);
    QSize size;
    {
        const MessageLog log;
        QVERIFY(!item.startDecode(depth, &size, &request));
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QCOMPARE(log.warnings, QStringList{kError2});
        QCOMPARE(size, request);
        QVERIFY(item.rasterBits() == nullptr);
        QCOMPARE(lumi::test::liveDecompressors(), 0);
    }
    machine()->setMemoryKB(needKB + kKeptBackKB);
    QVERIFY(item.startDecode(depth, &size, &request));
    QCOMPARE(item.errorCode(), DecodeError::None);
}

void TestDecodeFailures::errorsInAnyLine_data()
{
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("updates");
    QTest::newRow("the first line") << 0 << 2;
    QTest::newRow("within the first slice") << 33 << 2;
    QTest::newRow("the first line of the second slice") << 64 << 3;
    QTest::newRow("the last line") << 199 << 5;
}

/// One more update tells the receiver, which then reads the error code.
void TestDecodeFailures::errorsInAnyLine()
{
    QFETCH(int, line);
    Watched watched(photo({.size = QSize(50, 200)}));
    DecodeError last = DecodeError::None;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        last = watched.item->errorCode();
    });
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(line);
    const MessageLog log;
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return last != DecodeError::None;
    }));
    QCOMPARE(last, DecodeError::Undecodable);
    QVERIFY(watched.item->rasterBits() == nullptr);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(log.warnings.last(), kError3);
    waitForSlices();
    QTEST(int(watched.updates.count()), "updates");
    QCOMPARE(watched.completes.count(), 0);
}

void TestDecodeFailures::errorsInOnePiece()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    watched.item->setIncremental(false);
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(100);
    const MessageLog log;
    QVERIFY(!start(watched.item.get()));
    QCOMPARE(watched.item->errorCode(), DecodeError::Undecodable);
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestDecodeFailures::cutAtEveryLength_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QSize size(24, 20);
    QTest::newRow("baseline") << lumi::test::makeJpeg({.size = size});
    QTest::newRow("progressive") << lumi::test::makeJpeg({.size = size, .progressive = true});
    QTest::newRow("gray with restart markers")
        << lumi::test::makeJpeg({.size = size, .components = 1, .restartInterval = 1});
    QTest::newRow("four samples") << lumi::test::makeJpeg({.size = size, .components = 4});
    QTest::newRow("arithmetic-coded") << lumi::test::makeJpeg({.size = size, .arithmetic = true});
}

/// A photo cut after the first byte of its picture is a short picture, not an error.
void TestDecodeFailures::cutAtEveryLength()
{
    QFETCH(QByteArray, bytes);
    const qsizetype picture = bytes.indexOf("\xff\xda");
    const MessageLog log;
    int reached = 0;
    for (qsizetype length = 0; length <= bytes.size(); ++length) {
        Watched watched(file(bytes.first(length)));
        watched.item->setIncremental(false);
        const bool ok = start(watched.item.get());
        // In a segment, the added end marker is read as a part of it: both results are possible.
        const bool expected = lumi::test::cutsASegment(bytes, length) ? ok : length > picture;
        QVERIFY2(ok == expected, qPrintable(QString::number(length)));
        reached += ok ? 1 : 0;
        QCOMPARE(watched.item->errorCode(), ok ? DecodeError::None : DecodeError::Undecodable);
        QCOMPARE(watched.completes.count(), ok ? 1 : 0);
        QVERIFY(!ok || watched.item->imageSize() == QSize(24, 20));
        const std::unique_ptr<QImage> image(watched.item->scaledImage(12, 10));
        QCOMPARE(image != nullptr, ok);
    }
    QVERIFY(reached > 50);
}

/// Each decode ends with a picture or code 3, with the same result in slices and in one piece.
void TestDecodeFailures::damageAtAnyByte()
{
    const MessageLog log;
    for (const JpegKind &kind :
         {JpegKind{.size = QSize(40, 72)}, JpegKind{.size = QSize(40, 72), .progressive = true}}) {
        const QByteArray bytes = lumi::test::makeJpeg(kind);
        for (qsizetype at = 0; at < bytes.size(); at += 3) {
            QByteArray damaged = bytes;
            damaged[at] = static_cast<char>(~damaged[at]);
            Watched watched(file(damaged));
            watched.item->setIncremental(false);
            machine()->setMemoryKB(65536);
            const bool ok = start(watched.item.get());
            QCOMPARE(watched.completes.count(), ok ? 1 : 0);
            QCOMPARE(watched.item->errorCode() == DecodeError::None, ok);
            QCOMPARE(watched.item->rasterBits() != nullptr, ok);
            Watched slices(watched.item->path());
            const bool started = start(slices.item.get());
            decodeOn(slices.item.get());
            QVERIFY(started || slices.updates.isEmpty());
            QCOMPARE(slices.completes.count(), ok ? 1 : 0);
            QCOMPARE(slices.item->errorCode(), watched.item->errorCode());
            QVERIFY(!ok || haveTheSameRaster(*watched.item, *slices.item));
        }
    }
}

void TestDecodeFailures::headersWithImpossibleSizes()
{
    machine()->setMemoryKB(65536);
    const QString path = file(lumi::test::withSize(lumi::test::makeJpeg({}), 65500, 65500));
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!start(&item));
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QSize request(640, 480);
    QVERIFY(!start(&item, &request, 16));
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QVERIFY(item.scaledImage(174, 123) == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QVERIFY(clock.elapsed() < 2000);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestDecodeFailures::scanLimit_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("500 scans") << 500 << true;
    QTest::newRow("501 scans") << 501 << false;
    QTest::newRow("600 scans") << 600 << false;
}

void TestDecodeFailures::scanLimit()
{
    const auto [scans, decoded] = lumi::test::row<int, bool>();
    FPVItemJpeg item(photo({.size = QSize(32, 24), .progressiveScans = scans}), QString(), false);
    item.setIncremental(false);
    const MessageLog log;
    QCOMPARE(start(&item), decoded);
    QCOMPARE(item.errorCode(), decoded ? DecodeError::None : DecodeError::Undecodable);
    item.releaseDecode();
    const std::unique_ptr<QImage> image(item.scaledImage(16, 12));
    QCOMPARE(image != nullptr, decoded);
    QCOMPARE(item.errorCode(), decoded ? DecodeError::None : DecodeError::Undecodable);
}

LUMI_TEST(TestDecodeFailures)
#include "TestDecodeFailures.moc"
