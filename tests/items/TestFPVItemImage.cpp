// SPDX-License-Identifier: MIT
#include "items/FPVItemImage.h"
#include "swap/swapStore.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QImage>
#include <QPixmap>
#include <QTest>

#include <memory>

using lumi::test::ExifBuilder;
using lumi::test::SwapFixture;

class TestFPVItemImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPictureOfUnknownFormatIsBlue();
    void theThumbnailOfAnUnknownFormatIsBlue();
    void withoutASizeThereIsNoThumbnail();
    void anEmbeddedThumbnailIsFittedByItself();
    void noPixmapWithoutASide();
    void nothingIsDecoded();
    void anUnknownSizeFitsNothing();
    void aRecordedSizeIsEnough();
};

namespace {

bool isAllBlue(const QPixmap &pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(0, 0, 255)) {
                return false;
            }
        }
    }
    return true;
}

/// A photo whose proportions alone are known.
class SizedImage : public FPVItemImage
{
public:
    using FPVItemImage::FPVItemImage;

    QSize imageSize() override
    {
        ++asked;
        return size;
    }

    QSize size{640, 480};
    int asked = 0;
};

} // namespace

void TestFPVItemImage::aPictureOfUnknownFormatIsBlue()
{
    const SwapFixture fixture;
    FPVItemImage item(fixture.addPhoto(QStringLiteral("a.bmp")), QString(), false);
    const std::unique_ptr<QPixmap> scaled(item.scaledPixmap(80, 60));
    QVERIFY(scaled);
    QCOMPARE(scaled->size(), QSize(80, 60));
    QVERIFY(isAllBlue(*scaled));
    const std::unique_ptr<QPixmap> decoded(item.decodedPixmap(8, 6));
    QCOMPARE(decoded->size(), QSize(8, 6));
    QVERIFY(isAllBlue(*decoded));
}

/// The proportions must be known. They were recorded while the file was a photo.
void TestFPVItemImage::theThumbnailOfAnUnknownFormatIsBlue()
{
    SwapFixture fixture;
    fixture.start();
    const QString path = fixture.addPhoto(QStringLiteral("p/a.bmp"));
    QImage picture = lumi::test::picture();
    QVERIFY(SwapAppend(path, &picture, 1, 's'));
    const QSize recorded(480, 640);
    QVERIFY(SwapSetSize(path, &recorded));
    FPVItemImage item(path, QString(), false);
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(92, 123));
    QVERIFY(isAllBlue(*pixmap));
    QSize fitted;
    QVERIFY(SwapGetSize(path, &fitted));
    QCOMPARE(fitted, QSize(92, 123));
}

void TestFPVItemImage::withoutASizeThereIsNoThumbnail()
{
    const SwapFixture fixture;
    const QString path = fixture.addPhoto(QStringLiteral("a.bmp"));
    FPVItemImage item(path, QString(), false);
    const lumi::test::MessageLog log;
    QVERIFY(item.thumbnail(174, 123) == nullptr);
    QCOMPARE(log.warnings, QStringList());
}

void TestFPVItemImage::anEmbeddedThumbnailIsFittedByItself()
{
    const SwapFixture fixture;
    const QString path = fixture.path(QStringLiteral("a.jpg"));
    ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker");
    builder.thumbnail(ExifBuilder::jpeg(160, 120, 0x00FF00));
    builder.photo(ExifBuilder::jpeg(100, 400, 0xFF0000));
    QVERIFY(builder.write(path));
    FPVItemImage item(path, QString(), false);
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(164, 123));
    const QColor colour = pixmap->toImage().pixelColor(80, 60);
    QVERIFY(colour.green() > 240 && colour.red() < 16);
}

void TestFPVItemImage::noPixmapWithoutASide()
{
    FPVItemImage item;
    QVERIFY(item.scaledPixmap(0, 60) == nullptr);
    QVERIFY(item.scaledPixmap(80, -1) == nullptr);
}

void TestFPVItemImage::nothingIsDecoded()
{
    FPVItemImage item(QStringLiteral("/a.jpg"), QString(), false);
    QSize size(7, 7);
    QCOMPARE(item.imageSize(), QSize(-1, -1));
    QVERIFY(item.scaledImage(10, 10) == nullptr);
    QVERIFY(!item.startDecode(16, &size, nullptr));
    QVERIFY(item.decodedRaster(16, &size, nullptr) == nullptr);
    QVERIFY(item.rasterBits() == nullptr);
    QVERIFY(item.takeRaster() == nullptr);
    QVERIFY(!item.inDecodeComplete());
    QVERIFY(item.errorCode() != lumi::DecodeError::None);
    item.releaseDecode();
    item.abortDecode();
    item.setIncremental(false);
    item.setInDecodeComplete(true);
    QVERIFY(!item.inDecodeComplete());
    QCOMPARE(size, QSize(7, 7));
}

void TestFPVItemImage::anUnknownSizeFitsNothing()
{
    SizedImage item;
    item.size = QSize(-1, -1);
    QCOMPARE(item.fitSize(QSize(174, 123)), QSize(0, 0));
    item.size = QSize(480, 640);
    QCOMPARE(item.fitSize(QSize(174, 123)), QSize(92, 123));
    QCOMPARE(item.asked, 2);
    item.size = QSize(1, 1);
    QCOMPARE(item.fitSize(QSize(174, 123)), QSize(92, 123));
    QCOMPARE(item.asked, 2);
}

void TestFPVItemImage::aRecordedSizeIsEnough()
{
    SwapFixture fixture;
    fixture.start();
    const QString path = fixture.addPhoto(QStringLiteral("p/a.jpg"));
    QImage picture = lumi::test::picture();
    QVERIFY(SwapAppend(path, &picture, 1, 's'));
    const QSize recorded(92, 123);
    QVERIFY(SwapSetSize(path, &recorded));
    SizedImage item(path, QString(), false);
    QCOMPARE(item.fitSize(QSize(80, 60)), QSize(45, 60));
    QCOMPARE(item.asked, 0);

    const QSize none(0, 123);
    QVERIFY(SwapSetSize(path, &none));
    SizedImage other(path, QString(), false);
    QCOMPARE(other.fitSize(QSize(80, 60)), QSize(80, 60));
    QCOMPARE(other.asked, 1);
}

LUMI_TEST(TestFPVItemImage)
#include "TestFPVItemImage.moc"
