// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "tests/items/LibraryFaults.h"
#include "tests/items/ThumbnailTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QImage>
#include <QTest>

#include <memory>

using lumi::DecodeError;
using lumi::test::JpegKind;
using lumi::test::MessageLog;

/// A photo's size and the smaller picture that is decoded from it.
class TestThumbnailDecode : public lumi::test::ThumbnailTest
{
    Q_OBJECT

private Q_SLOTS:
    void imageSize_data();
    void imageSize();
    void aBadFileIsTriedAgain();
    void theSizeIsReadOnce();
    void scaledImagesAreExact_data();
    void scaledImagesAreExact();
    void grayPhotosGiveGrayImages();
    void fourSamplesAreUsedUnchanged();
    void noImageWithoutASide();
    void aThumbnailNeedsMemory();
    void aProgressivePhotoNeedsMemory();
    void aSequentialPhotoSkipsThatTest();
    void anErrorInALineLeavesNothing();
    void noDecompressorIsLeft();
    void aScreenDecodeEndsWhenTheDecompressorIsMadeAnew();
};

namespace {

constexpr int kKeptBackKB = 2048; // never counted as free
const QString kError2 = QStringLiteral("FPVItemJpeg Error (2)");
const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

} // namespace

void TestThumbnailDecode::imageSize_data()
{
    lumi::test::columns<QByteArray, QSize>();
    const QByteArray sample = lumi::test::makeJpeg({.size = QSize(83, 61)});
    QTest::newRow("a photo") << sample << QSize(83, 61);
    QTest::newRow("a gray one") << lumi::test::makeJpeg({.size = QSize(1, 9), .components = 1})
                                << QSize(1, 9);
    QTest::newRow("a progressive one")
        << lumi::test::makeJpeg({.size = QSize(83, 61), .progressive = true}) << QSize(83, 61);
    QTest::newRow("cut in the picture") << sample.chopped(200) << QSize(83, 61);
    QTest::newRow("a line") << lumi::test::makeJpeg({.size = QSize(20000, 1)}) << QSize(20000, 1);
    QTest::newRow("a column") << lumi::test::makeJpeg({.size = QSize(1, 20000)}) << QSize(1, 20000);
    QTest::newRow("a lying header")
        << lumi::test::withSize(sample, 65500, 65500) << QSize(65500, 65500);
    QTest::newRow("no width") << lumi::test::withSize(sample, 0, 61) << QSize(-1, -1);
    QTest::newRow("more than the decoder takes")
        << lumi::test::withSize(sample, 65535, 61) << QSize(-1, -1);
    QTest::newRow("nothing") << QByteArray() << QSize(-1, -1);
}

void TestThumbnailDecode::imageSize()
{
    const auto [bytes, size] = lumi::test::row<QByteArray, QSize>();
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), size);
    QCOMPARE(item.errorCode(), DecodeError::None);
}

void TestThumbnailDecode::aBadFileIsTriedAgain()
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(-1, -1));
    QVERIFY(QFile::remove(path));
    QCOMPARE(item.imageSize(), QSize(-1, -1));
    photo({.size = QSize(83, 61)});
    QCOMPARE(item.imageSize(), QSize(83, 61));
}

void TestThumbnailDecode::theSizeIsReadOnce()
{
    const QString path = photo({.size = QSize(83, 61)});
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(83, 61));
    QVERIFY(QFile::remove(path));
    QCOMPARE(item.imageSize(), QSize(83, 61));
}

void TestThumbnailDecode::scaledImagesAreExact_data()
{
    lumi::test::columns<QSize, QSize, int, bool>();
    QTest::newRow("an eighth") << QSize(800, 600) << QSize(100, 75) << 8 << false;
    QTest::newRow("a quarter, made smaller") << QSize(800, 600) << QSize(164, 123) << 4 << false;
    QTest::newRow("not scaled by the decoder") << QSize(100, 80) << QSize(90, 70) << 1 << false;
    QTest::newRow("enlarged") << QSize(20, 10) << QSize(100, 50) << 1 << false;
    QTest::newRow("distorted as asked") << QSize(160, 120) << QSize(33, 44) << 2 << false;
    QTest::newRow("progressive") << QSize(800, 600) << QSize(164, 123) << 4 << true;
}

void TestThumbnailDecode::scaledImagesAreExact()
{
    const auto [photo, wanted, denominator, progressive]
        = lumi::test::row<QSize, QSize, int, bool>();
    const JpegKind kind{.size = photo, .progressive = progressive};
    FPVItemJpeg item(this->photo(kind), QString(), false);
    const std::unique_ptr<QImage> image(item.scaledImage(wanted.width(), wanted.height()));
    QVERIFY(image);
    QCOMPARE(image->depth(), 32);

    const lumi::test::Decoded decoded
        = lumi::test::referenceDecode(lumi::test::makeJpeg(kind), denominator);
    QImage reference(decoded.size, QImage::Format_RGB32);
    for (int y = 0; y < decoded.size.height(); ++y) {
        for (int x = 0; x < decoded.size.width(); ++x) {
            reference.setPixel(x, y, lumi::test::expectedPixel(decoded, x, y, 32));
        }
    }
    QCOMPARE(*image, reference.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

void TestThumbnailDecode::grayPhotosGiveGrayImages()
{
    const JpegKind kind{.size = QSize(80, 60), .components = 1};
    FPVItemJpeg item(photo(kind), QString(), false);
    const lumi::test::Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
    const std::unique_ptr<QImage> same(item.scaledImage(80, 60));
    QVERIFY(same);
    QCOMPARE(same->depth(), 8);
    QCOMPARE(same->colorCount(), 256);
    for (int i = 0; i < 256; ++i) {
        QCOMPARE(same->color(i), qRgb(i, i, i));
    }
    for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 80; ++x) {
            QCOMPARE(same->pixelIndex(x, y), int(*decoded.at(x, y)));
        }
    }
    const std::unique_ptr<QImage> smaller(item.scaledImage(40, 30));
    QVERIFY(smaller);
    QCOMPARE(smaller->size(), QSize(40, 30));
    QCOMPARE(smaller->depth(), 8);
    QVERIFY(smaller->allGray());
}

void TestThumbnailDecode::fourSamplesAreUsedUnchanged()
{
    for (const bool ycck : {false, true}) {
        const JpegKind kind{.size = QSize(80, 60), .components = 4, .ycck = ycck};
        FPVItemJpeg item(photo(kind), QString(), false);
        const lumi::test::Decoded decoded = lumi::test::referenceDecode(lumi::test::makeJpeg(kind));
        QCOMPARE(decoded.components, 4);
        const std::unique_ptr<QImage> image(item.scaledImage(80, 60));
        QVERIFY(image);
        QCOMPARE(image->depth(), 32);
        for (int y = 0; y < 60; ++y) {
            QVERIFY(std::equal(image->constScanLine(y), image->constScanLine(y) + 4 * 80,
                               decoded.at(0, y)));
        }
    }
}

void TestThumbnailDecode::noImageWithoutASide()
{
    FPVItemJpeg item(photo({}), QString(), false);
    const MessageLog log;
    QVERIFY(item.scaledImage(0, 60) == nullptr);
    QVERIFY(item.scaledImage(80, 0) == nullptr);
    QVERIFY(item.scaledImage(-80, -60) == nullptr);
    QVERIFY(item.scaledPixmap(0, 0) == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::None);
    QCOMPARE(log.warnings, QStringList());
}

/// The need depends on the width of the whole photo, though only an eighth of it is decoded.
void TestThumbnailDecode::aThumbnailNeedsMemory()
{
    FPVItemJpeg item(photo({.size = QSize(1600, 1200)}), QString(), false);
    const int need = (1600 * 150 + 262144) >> 8;
    m_fixture->machine->setMemoryKB(need + kKeptBackKB - 1);
    {
        const MessageLog log;
        QVERIFY(item.scaledImage(200, 150) == nullptr);
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QCOMPARE(log.warnings, QStringList{kError2});
    }
    m_fixture->machine->setMemoryKB(need + kKeptBackKB);
    const std::unique_ptr<QImage> image(item.scaledImage(200, 150));
    QVERIFY(image);
    QCOMPARE(item.errorCode(), DecodeError::None);
}

void TestThumbnailDecode::aProgressivePhotoNeedsMemory()
{
    const QString path
        = photo({.size = QSize(2048, 1536), .components = 1, .progressive = true, .plain = true});
    m_fixture->machine->setMemoryKB(30720 + kKeptBackKB - 1);
    {
        const MessageLog log;
        FPVItemJpeg item(path, QString(), false);
        QCOMPARE(item.imageSize(), QSize(-1, -1));
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QVERIFY(item.scaledImage(100, 75) == nullptr);
        QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
        QCOMPARE(log.warnings, QStringList({kError2, kError2, kError2}));
    }
    m_fixture->machine->setMemoryKB(30720 + kKeptBackKB);
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(2048, 1536));
    const std::unique_ptr<QImage> image(item.scaledImage(100, 75));
    QVERIFY(image);
}

void TestThumbnailDecode::aSequentialPhotoSkipsThatTest()
{
    FPVItemJpeg item(photo({.size = QSize(2048, 1536), .plain = true}), QString(), false);
    m_fixture->machine->setMemoryKB(6000);
    QCOMPARE(item.imageSize(), QSize(2048, 1536));
    const std::unique_ptr<QImage> image(item.scaledImage(100, 75));
    QVERIFY(image);
}

void TestThumbnailDecode::anErrorInALineLeavesNothing()
{
    FPVItemJpeg item(photo({}), QString(), false);
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(20);
    const MessageLog log;
    QVERIFY(item.scaledImage(83, 61) == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::Undecodable);
    QCOMPARE(log.warnings.last(), kError3);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

void TestThumbnailDecode::noDecompressorIsLeft()
{
    FPVItemJpeg item(photo({}), QString(), false);
    QVERIFY(item.InitJpegLib(0, 0));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    QCOMPARE(item.imageSize(), QSize(83, 61));
    QCOMPARE(lumi::test::liveDecompressors(), 1);
    item.releaseDecode();
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QVERIFY(item.InitJpegLib(20, 15));
    item.setPath(QStringLiteral("/nowhere/a.jpg"));
    QVERIFY(!item.InitJpegLib(20, 15));
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    QCOMPARE(item.errorCode(), DecodeError::None);
}

/// Its lines would not fit into the buffer of the screen decode.
void TestThumbnailDecode::aScreenDecodeEndsWhenTheDecompressorIsMadeAnew()
{
    FPVItemJpeg item(photo({.size = QSize(1600, 1200)}), QString(), false);
    QSize size;
    QSize request(100, 75);
    QVERIFY(item.startDecode(32, &size, &request));
    QVERIFY(item.InitJpegLib(0, 0));
    const uchar *raster = item.rasterBits();
    const QByteArray before(reinterpret_cast<const char *>(raster),
                            4 * size.width() * size.height());
    QTest::qWait(100);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(raster), before.size()), before);
    item.releaseDecode();
}

LUMI_TEST(TestThumbnailDecode)
#include "TestThumbnailDecode.moc"
