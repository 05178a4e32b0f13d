// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QFile>
#include <QImage>
#include <QPointer>
#include <QTest>

#include <memory>

using lumi::DecodeError;
using lumi::test::Decoded;
using lumi::test::JpegKind;
using lumi::test::MessageLog;
using lumi::test::rasterFault;
using lumi::test::start;
using lumi::test::waitForSlices;
using lumi::test::Watched;

/// Calls that end a screen decode, take its raster or begin another one.
class TestDecodeControl : public lumi::test::DecodeTest
{
    Q_OBJECT

private Q_SLOTS:
    void inDecodeCompleteIsTrueOnlyThen();
    void aReceiverMayClearTheFlag();
    void abortIsSilent();
    void abortBeforeTheFirstSlice();
    void releaseInsideAnUpdate_data();
    void releaseInsideAnUpdate();
    void releaseInsideDecodeComplete();
    void restartInsideAnUpdate();
    void restartInsideDecodeComplete();
    void restartWhileDecoding();
    void theItemMayBeDeletedInsideASignal_data();
    void theItemMayBeDeletedInsideASignal();
    void theItemMayBeDeletedWhileDecoding();
    void anExistingRasterIsReturned();
    void aRasterIsMadeOnDemand();
    void aTakenRasterOutlivesTheItem();
    void takingTheRasterEndsTheDecode();
    void thumbnailsWhileDecoding();
    void errorsOfThumbnailsWhileDecoding();
};

namespace {

const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

} // namespace

void TestDecodeControl::inDecodeCompleteIsTrueOnlyThen()
{
    Watched watched(photo({.size = QSize(20, 100)}));
    QVERIFY(!watched.item->inDecodeComplete());
    std::vector<bool> seen;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        seen.push_back(watched.item->inDecodeComplete());
    });
    connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
        seen.push_back(watched.item->inDecodeComplete());
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(seen, std::vector<bool>({false, false, true}));
    QVERIFY(!watched.item->inDecodeComplete());
}

void TestDecodeControl::aReceiverMayClearTheFlag()
{
    FPVItemJpeg item(photo({}), QString(), false);
    item.setIncremental(false);
    bool after = true;
    connect(&item, &FPVItemImage::decodeComplete, this, [&] {
        item.setInDecodeComplete(false);
        after = item.inDecodeComplete();
    });
    QVERIFY(start(&item));
    QVERIFY(!after);
}

void TestDecodeControl::abortIsSilent()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == 2;
    }));
    watched.item->abortDecode();
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    waitForSlices();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(watched.updates.count(), 2);
    QCOMPARE(watched.completes.count(), 0);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QVERIFY(watched.item->rasterBits() != nullptr);
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 64), QString());

    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
}

void TestDecodeControl::abortBeforeTheFirstSlice()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, watched.item.get(),
            &FPVItemImage::abortDecode);
    QVERIFY(start(watched.item.get()));
    waitForSlices();
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
    watched.item->releaseDecode();
    QVERIFY(watched.item->rasterBits() == nullptr);
}

void TestDecodeControl::releaseInsideAnUpdate_data()
{
    QTest::addColumn<int>("update");
    QTest::newRow("inside the start") << 1;
    QTest::newRow("after the first slice") << 2;
    QTest::newRow("after the last whole slice") << 4;
}

void TestDecodeControl::releaseInsideAnUpdate()
{
    QFETCH(int, update);
    Watched watched(photo({.size = QSize(50, 192)}));
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        if (watched.updates.count() == update) {
            watched.item->releaseDecode();
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == update;
    }));
    QVERIFY(watched.item->rasterBits() == nullptr);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.updates.count(), update);
    QCOMPARE(watched.completes.count(), 0);
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

void TestDecodeControl::releaseInsideDecodeComplete()
{
    for (const bool incremental : {true, false}) {
        Watched watched(photo({.size = QSize(50, 100)}));
        watched.item->setIncremental(incremental);
        connect(watched.item.get(), &FPVItemImage::decodeComplete, watched.item.get(),
                &FPVItemImage::releaseDecode);
        QVERIFY(start(watched.item.get()));
        QVERIFY(watched.waitForTheEnd());
        QVERIFY(watched.item->rasterBits() == nullptr);
        QVERIFY(!watched.item->inDecodeComplete());
    }
}

void TestDecodeControl::restartInsideAnUpdate()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    bool restarted = false;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        if (watched.updates.count() == 2 && !restarted) {
            restarted = true;
            QVERIFY(start(watched.item.get(), nullptr, 16));
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QVERIFY(restarted);
    QCOMPARE(watched.updates.count(), 2 + 4);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 200), QString());
    waitForSlices();
    QCOMPARE(watched.completes.count(), 1);
}

void TestDecodeControl::restartInsideDecodeComplete()
{
    const JpegKind kind{.size = QSize(50, 100)};
    Watched watched(photo(kind));
    connect(watched.item.get(), &FPVItemImage::decodeComplete, this, [&] {
        if (watched.completes.count() == 1) {
            QVERIFY(start(watched.item.get(), nullptr, 16));
        }
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.completes.count() == 2;
    }));
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 100), QString());
}

void TestDecodeControl::restartWhileDecoding()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    QSize request(12, 50);
    QVERIFY(start(watched.item.get()));
    QVERIFY(QTest::qWaitFor([&] {
        return watched.updates.count() == 2;
    }));
    QVERIFY(start(watched.item.get(), &request, 16));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    QVERIFY(watched.waitForTheEnd());
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), 4);
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 16, 50), QString());
}

void TestDecodeControl::theItemMayBeDeletedInsideASignal_data()
{
    QTest::addColumn<bool>("incremental");
    QTest::addColumn<int>("update"); // 0: inside decodeComplete()
    QTest::newRow("inside the start") << true << 1;
    QTest::newRow("after a slice") << true << 2;
    QTest::newRow("at the end") << true << 0;
    QTest::newRow("at the end, in one piece") << false << 0;
}

void TestDecodeControl::theItemMayBeDeletedInsideASignal()
{
    QFETCH(bool, incremental);
    QFETCH(int, update);
    auto *item = new FPVItemJpeg(photo({.size = QSize(50, 100)}), QString(), false);
    const QPointer<FPVItemJpeg> alive(item);
    item->setIncremental(incremental);
    int updates = 0;
    connect(item, &FPVItemImage::decodeUpdate, this, [&] {
        if (++updates == update) {
            delete item;
        }
    });
    connect(item, &FPVItemImage::decodeComplete, this, [&] {
        delete item;
    });
    QVERIFY(start(item));
    QVERIFY(QTest::qWaitFor([&] {
        return alive.isNull();
    }));
    waitForSlices();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestDecodeControl::theItemMayBeDeletedWhileDecoding()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    QVERIFY(start(watched.item.get()));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    watched.item.reset();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.completes.count(), 0);
}

void TestDecodeControl::anExistingRasterIsReturned()
{
    FPVItemJpeg item(photo({.size = QSize(50, 40)}), QString(), false);
    item.setIncremental(false);
    QVERIFY(start(&item));
    uchar *raster = item.rasterBits();
    QVERIFY(raster != nullptr);
    QVERIFY(QFile::remove(item.path()));
    QSize size;
    QSize request(10, 8);
    QCOMPARE(item.decodedRaster(16, &size, &request), raster);
    QCOMPARE(size, QSize(50, 40));
    QCOMPARE(item.decodedRaster(32, nullptr), raster);
}

void TestDecodeControl::aRasterIsMadeOnDemand()
{
    FPVItemJpeg item(photo({.size = QSize(50, 40)}), QString(), false);
    QSize size;
    QSize request(10, 8);
    uchar *raster = item.decodedRaster(16, &size, &request);
    QVERIFY(raster != nullptr);
    QCOMPARE(raster, item.rasterBits());
    QCOMPARE(size, QSize(13, 10));
    item.releaseDecode();
    const MessageLog log;
    QVERIFY(QFile::remove(item.path()));
    QVERIFY(item.decodedRaster(16, &size, &request) == nullptr);
}

void TestDecodeControl::aTakenRasterOutlivesTheItem()
{
    const JpegKind kind{.size = QSize(50, 40)};
    auto item = std::make_unique<FPVItemJpeg>(photo(kind), QString(), false);
    item->setIncremental(false);
    std::unique_ptr<uchar[]> raster;
    connect(item.get(), &FPVItemImage::decodeComplete, this, [&] {
        raster = item->takeRaster();
    });
    QVERIFY(start(item.get()));
    QVERIFY(raster);
    QVERIFY(item->rasterBits() == nullptr);
    QVERIFY(item->takeRaster() == nullptr);
    item->releaseDecode();
    item.reset();
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(raster.get(), decoded, 32, 40), QString());
}

void TestDecodeControl::takingTheRasterEndsTheDecode()
{
    Watched watched(photo({.size = QSize(50, 200)}));
    QVERIFY(start(watched.item.get()));
    const std::unique_ptr<uchar[]> raster = watched.item->takeRaster();
    QVERIFY(raster);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    waitForSlices();
    QCOMPARE(watched.updates.count(), 1);
    QCOMPARE(watched.completes.count(), 0);
}

void TestDecodeControl::thumbnailsWhileDecoding()
{
    const JpegKind kind{.size = QSize(50, 200)};
    Watched watched(photo(kind));
    int images = 0;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        QCOMPARE(watched.item->imageSize(), QSize(50, 200));
        const std::unique_ptr<QImage> image(watched.item->scaledImage(10, 40));
        images += image != nullptr ? 1 : 0;
    });
    QVERIFY(start(watched.item.get()));
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(images, 4);
    const Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    QCOMPARE(rasterFault(watched.item->rasterBits(), decoded, 32, 200), QString());
}

void TestDecodeControl::errorsOfThumbnailsWhileDecoding()
{
    const QString path = photo({.size = QSize(50, 200)});
    Watched watched(path);
    QVERIFY(start(watched.item.get()));
    QVERIFY(QFile::remove(path));
    const MessageLog log;
    QCOMPARE(watched.item->imageSize(), QSize(-1, -1));
    QVERIFY(watched.item->scaledImage(10, 40) == nullptr);
    QCOMPARE(log.warnings, QStringList{kError3});
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(watched.item->errorCode(), DecodeError::None);
}

LUMI_TEST(TestDecodeControl)
#include "TestDecodeControl.moc"
