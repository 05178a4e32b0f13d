// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/jpegSource.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTest>
#include <QTimer>

#include <memory>

using lumi::DecodeError;
using lumi::test::Decoded;
using lumi::test::JpegKind;
using lumi::test::rasterFault;
using lumi::test::start;
using lumi::test::waitForSlices;
using lumi::test::Watched;

/// The pixels of a photo in the turned raster, decoded in slices or in one piece.
class TestScreenDecode : public lumi::test::DecodeTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void pixels_data();
    void pixels();
    void scaledPixels_data();
    void scaledPixels();
    void sizes_data();
    void sizes();
    void largePhotosAreHalved_data();
    void largePhotosAreHalved();
    void updates_data();
    void updates();
    void linesAppearSliceBySlice();
    void theEventLoopRunsBetweenSlices();
    void inOnePiece();
    void theDecoderIsNotFinished();
    void aFailedThumbnailLeavesTheRaster();
    void extremeShapes_data();
    void extremeShapes();
};

namespace {

static_assert(sizeof(my_jpeg_source_mgr::buffer) == 8132, "as small as the device needs it");

constexpr int kSpareBytes = 1048576;

} // namespace

void TestScreenDecode::initTestCase()
{
    QCOMPARE(int(DecodeError::WrongDepth), 0);
    QCOMPARE(int(DecodeError::OutOfMemory), 2);
    QCOMPARE(int(DecodeError::Undecodable), 3);
    QCOMPARE(int(DecodeError::None), 4);
}

namespace {

struct NamedKind
{
    const char *name;
    JpegKind kind;
};

const std::vector<NamedKind> &kinds()
{
    static const std::vector<NamedKind> kAll = {
        {"colour", {.components = 3}},
        {"gray", {.components = 1}},
        {"CMYK", {.components = 4}},
        {"YCCK", {.components = 4, .ycck = true}},
        {"progressive", {.progressive = true}},
        {"progressive gray", {.components = 1, .progressive = true}},
        {"arithmetic-coded", {.arithmetic = true}},
        {"arithmetic-coded progressive", {.progressive = true, .arithmetic = true}},
        {"a scan for each component", {.separateScans = true}},
        {"with restart markers", {.restartInterval = 1}},
        {"coarse", {.quality = 5}},
    };
    return kAll;
}

} // namespace

void TestScreenDecode::pixels_data()
{
    lumi::test::columns<int, int>();
    for (std::size_t i = 0; i < kinds().size(); ++i) {
        for (const int depth : {16, 32}) {
            QTest::addRow("%s at %d bits", kinds()[i].name, depth) << int(i) << depth;
        }
    }
}

void TestScreenDecode::pixels()
{
    const auto [index, depth] = lumi::test::row<int, int>();
    JpegKind kind = kinds()[static_cast<std::size_t>(index)].kind;
    for (const QSize size : {QSize(83, 61), QSize(61, 131), QSize(16, 64), QSize(1, 1)}) {
        kind.size = size;
        Watched watched(photo(kind));
        watched.item->setIncremental(false);
        QSize decodedSize;
        QVERIFY(watched.item->startDecode(depth, &decodedSize, nullptr));
        QCOMPARE(decodedSize, size);
        const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
        QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, depth, size.height()), QString());
    }
}

void TestScreenDecode::scaledPixels_data()
{
    lumi::test::columns<int, int, QSize, int>();
    for (const int depth : {16, 32}) {
        for (const int components : {1, 3, 4}) {
            QTest::addRow("half, %d bits from %d samples", depth, components)
                << depth << components << QSize(150, 100) << 2;
            QTest::addRow("quarter, %d bits from %d samples", depth, components)
                << depth << components << QSize(75, 50) << 4;
            QTest::addRow("eighth, %d bits from %d samples", depth, components)
                << depth << components << QSize(1, 1) << 8;
        }
    }
}

void TestScreenDecode::scaledPixels()
{
    auto [depth, components, request, denominator] = lumi::test::row<int, int, QSize, int>();
    const JpegKind kind{.size = QSize(303, 201), .components = components};
    FPVItemJpeg item(photo(kind), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(depth, &size, &request));
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), denominator);
    QCOMPARE(size, decoded.size);
    QCOMPARE(rasterFault(item.rasterBits(), decoded, depth, size.height()), QString());
}

void TestScreenDecode::sizes_data()
{
    lumi::test::columns<QSize, QSize, QSize>();
    QTest::newRow("covered by a quarter")
        << QSize(1600, 1200) << QSize(320, 240) << QSize(400, 300);
    QTest::newRow("the smaller denominator of both axes")
        << QSize(1600, 1200) << QSize(800, 10) << QSize(800, 600);
    QTest::newRow("a request larger than the photo")
        << QSize(100, 80) << QSize(640, 480) << QSize(100, 80);
    QTest::newRow("sides that divide with a remainder")
        << QSize(1003, 1001) << QSize(250, 250) << QSize(251, 251);
}

void TestScreenDecode::sizes()
{
    auto [photoSize, request, decoded] = lumi::test::row<QSize, QSize, QSize>();
    FPVItemJpeg item(photo({.size = photoSize, .components = 1, .plain = true}), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(16, &size, &request));
    QCOMPARE(size, decoded);
    QCOMPARE(item.imageSize(), photoSize);
}

void TestScreenDecode::largePhotosAreHalved_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("12 megapixels") << QSize(4000, 3000) << QSize(2000, 1500);
    QTest::newRow("8388608 pixels") << QSize(4096, 2048) << QSize(2048, 1024);
    QTest::newRow("just below") << QSize(4095, 2048) << QSize(4095, 2048);
    QTest::newRow("a half that rounds up") << QSize(8003, 6000) << QSize(2001, 1500);
}

void TestScreenDecode::largePhotosAreHalved()
{
    const auto [photoSize, decoded] = lumi::test::row<QSize, QSize>();
    FPVItemJpeg item(photo({.size = photoSize, .components = 1, .plain = true}), QString(), false);
    item.setIncremental(false);
    QSize size;
    QVERIFY(item.startDecode(16, &size, nullptr));
    QCOMPARE(size, decoded);
}

void TestScreenDecode::updates_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("count");
    QTest::newRow("less than a slice") << 63 << 1;
    QTest::newRow("one slice, whose end is an update too") << 64 << 2;
    QTest::newRow("a slice and a line") << 65 << 2;
    QTest::newRow("the last partial slice has none") << 200 << 4;
    QTest::newRow("three whole slices") << 192 << 4;
}

void TestScreenDecode::updates()
{
    QFETCH(int, height);
    Watched watched(photo({.size = QSize(20, height)}));
    QVERIFY(start(watched.item.get()));
    QCOMPARE(watched.updates.count(), 1);
    QVERIFY(watched.waitForTheEnd());
    QTEST(int(watched.updates.count()), "count");
    waitForSlices();
    QTEST(int(watched.updates.count()), "count");
    QCOMPARE(watched.completes.count(), 1);
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

void TestScreenDecode::linesAppearSliceBySlice()
{
    const JpegKind kind{.size = QSize(50, 200)};
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    for (const int depth : {16, 32}) {
        Watched watched(photo(kind));
        QStringList faults;
        int lines = 0;
        connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
            faults.append(rasterFault(watched.item->rasterBits(), decoded, depth, lines));
            lines += 64;
        });
        connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
            faults.append(rasterFault(watched.item->rasterBits(), decoded, depth, 200));
        });
        QVERIFY(start(watched.item.get(), nullptr, depth));
        QVERIFY(watched.waitForTheEnd());
        QCOMPARE(faults.size(), 5);
        QCOMPARE(faults.join(QLatin1Char(';')), QStringLiteral(";;;;"));
    }
}

void TestScreenDecode::theEventLoopRunsBetweenSlices()
{
    Watched watched(photo({.size = QSize(400, 640)}));
    std::vector<qint64> times;
    QElapsedTimer clock;
    int events = 0;
    int unanswered = 0;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        times.push_back(clock.elapsed());
        unanswered = std::max(unanswered, int(times.size()) - 1 - events);
        QTimer::singleShot(0, this, [&] {
            ++events;
        });
    });
    clock.start();
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(times.size(), std::size_t(11));
    QCOMPARE(events, 11);
    QCOMPARE(unanswered, 0); // each event was handled before the next slice
    for (std::size_t i = 1; i < times.size(); ++i) {
        QVERIFY2(times[i] - times[i - 1] >= 19, qPrintable(QString::number(times[i])));
    }
}

void TestScreenDecode::inOnePiece()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    watched.item->setIncremental(false);
    QVERIFY(start(watched.item.get()));
    QCOMPARE(watched.completes.count(), 1);
    QCOMPARE(watched.updates.count(), 0);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
    waitForSlices();
    QCOMPARE(watched.completes.count(), 1);
}

/// After its last line a decoder is destroyed without reading on.
void TestScreenDecode::theDecoderIsNotFinished()
{
    const QString path = photo({.size = QSize(50, 200)});
    FPVItemJpeg item(path, QString(), false);
    const int before = lumi::test::finishedDecodes();
    item.setIncremental(false);
    QVERIFY(start(&item));
    QCOMPARE(lumi::test::finishedDecodes(), before);
    const std::unique_ptr<QImage> image(item.scaledImage(20, 80));
    QVERIFY(image);
    QCOMPARE(lumi::test::finishedDecodes(), before + 1);
}

/// The file may have been deleted by then.
void TestScreenDecode::aFailedThumbnailLeavesTheRaster()
{
    FPVItemJpeg item(photo({.size = QSize(50, 200)}), QString(), false);
    item.setIncremental(false);
    QStringList warnings;
    connect(&item, &FPVItemImage::decodeComplete, this, [&] {
        const lumi::test::MessageLog log;
        item.setPath(QStringLiteral("/nowhere/a.jpg"));
        QVERIFY(item.scaledImage(20, 80) == nullptr);
        warnings = log.warnings;
    });
    QVERIFY(start(&item));
    QVERIFY(!warnings.isEmpty());
    QVERIFY(item.rasterBits() != nullptr);
}

void TestScreenDecode::extremeShapes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("a line") << QSize(20000, 1);
    QTest::newRow("a column") << QSize(1, 20000);
    QTest::newRow("the widest") << QSize(65500, 2);
    QTest::newRow("the highest") << QSize(2, 65500);
    QTest::newRow("the widest, in several blocks") << QSize(65500, 70);
}

void TestScreenDecode::extremeShapes()
{
    QFETCH(QSize, size);
    const JpegKind kind{.size = size};
    FPVItemJpeg item(photo(kind), QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    QVERIFY(lumi::test::lineReach() < kSpareBytes);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(item.rasterBits(), decoded, 32, size.height()), QString());
    const std::unique_ptr<QImage> image(item.scaledImage(174, 123));
    QVERIFY(image);
    QCOMPARE(image->size(), QSize(174, 123));
}

LUMI_TEST(TestScreenDecode)
#include "TestScreenDecode.moc"
