// SPDX-License-Identifier: MIT
#include "items/FPVItemJpeg.h"
#include "items/photoScale.h"
#include "swap/swapStore.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPixmap>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using lumi::DecodeError;
using lumi::test::JpegKind;
using lumi::test::MessageLog;

/// A photo's sizes, thumbnails and information records.
class TestThumbnails : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aStoredThumbnailIsTakenUnopened();
    void anEmbeddedThumbnailIsNotStored();
    void aSecondVisitDecodesNothing_data();
    void aSecondVisitDecodesNothing();
    void aChangeOfViewDecodesOnceMoreAtMost();
    void aFullDecodeIsStoredUnderItsOwnWidth();
    void aFailedDecodeRecordsItsSizeToo();
    void theFittedSizeIsRecorded();
    void eachKindIsStoredForItself();
    void damagedPhotosHaveNoThumbnail_data();
    void damagedPhotosHaveNoThumbnail();
    void imageSize_data();
    void imageSize();
    void aBadFileIsTriedAgain();
    void theSizeIsReadOnce();
    void scaledImagesAreExact_data();
    void scaledImagesAreExact();
    void grayPhotosGiveGrayImages();
    void fourSamplesStayAsTheyAre();
    void noImageWithoutASide();
    void aThumbnailNeedsMemory();
    void aProgressivePhotoNeedsMemory();
    void aSequentialPhotoSkipsThatTest();
    void aPhotoOfSeveralScansMayNotTakeMoreThanThereIs();
    void errorsOfLinesAreClean();
    void infoOfAPhoto();
    void pipesAreNotWaitedFor();
    void noDecompressorIsLeft();
    void aScreenDecodeEndsWhenTheDecompressorIsMadeAnew();

private:
    QString photo(const JpegKind &kind, const QString &name = QStringLiteral("p/a.jpg")) const;

    std::unique_ptr<lumi::test::SwapFixture> m_fixture;
};

namespace {

constexpr int kKeptBackKB = 2048; // never counted as free

std::unique_ptr<QPixmap> thumbnailOf(const QString &path, int w = 174, int h = 123)
{
    FPVItemJpeg item(path, QString(), false);
    return std::unique_ptr<QPixmap>(item.thumbnail(w, h));
}

bool isStored(const QString &path, int width, char kind)
{
    QImage image;
    return SwapLoad(path, &image, width, kind);
}

/// From now on the photo can't be decoded, and nothing else of it has changed.
void spoil(const QString &path)
{
    const qint64 time = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    lumi::test::writeFile(path, QByteArray("damaged"));
    lumi::test::setFileTime(path, time);
}

const QString kError2 = QStringLiteral("FPVItemJpeg Error (2)");
const QString kError3 = QStringLiteral("FPVItemJpeg Error (3)");

} // namespace

void TestThumbnails::init()
{
    m_fixture = std::make_unique<lumi::test::SwapFixture>();
    m_fixture->start();
}

void TestThumbnails::cleanup()
{
    QCOMPARE(lumi::test::liveDecompressors(), 0);
    m_fixture.reset();
}

QString TestThumbnails::photo(const JpegKind &kind, const QString &name) const
{
    return lumi::test::writeJpeg(m_fixture->addPhoto(name), kind);
}

void TestThumbnails::aStoredThumbnailIsTakenUnopened()
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    QImage picture = lumi::test::picture(174, 100);
    QVERIFY(SwapAppend(path, &picture, 174, 's'));
    FPVItemJpeg item(path, QString(), false);
    const MessageLog log;
    QVERIFY(item.thumbnail(174, 123) == nullptr); // stored for another layout
    item.setThumbnailKind('s');
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(174, 123));
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(174, 100));
}

void TestThumbnails::anEmbeddedThumbnailIsNotStored()
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker");
    builder.thumbnail(lumi::test::ExifBuilder::jpeg(120, 160, 0x0000FF));
    QVERIFY(builder.write(path));
    const std::unique_ptr<QPixmap> pixmap = thumbnailOf(path);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(92, 123));
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 0);
}

void TestThumbnails::aSecondVisitDecodesNothing_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("landscape") << QSize(640, 480);
    QTest::newRow("portrait") << QSize(480, 640);
    QTest::newRow("panorama") << QSize(900, 200);
}

void TestThumbnails::aSecondVisitDecodesNothing()
{
    QFETCH(QSize, size);
    const QString path = photo({.size = size});
    const std::unique_ptr<QPixmap> first = thumbnailOf(path);
    QVERIFY(first);
    spoil(path);
    const int opened = lumi::test::photosOpened();
    QVERIFY(opened > 0);
    for (int visit = 0; visit < 3; ++visit) {
        const std::unique_ptr<QPixmap> again = thumbnailOf(path);
        QVERIFY(again);
        QCOMPARE(again->size(), first->size());
    }
    QCOMPARE(lumi::test::photosOpened(), opened);
}

/// The size recorded for one view is rounded, so that another may ask for a width that is one
/// off what it stored: once, and never again.
void TestThumbnails::aChangeOfViewDecodesOnceMoreAtMost()
{
    const QString path = photo({.size = QSize(640, 480)});
    const auto visit = [&path](char kind, int w, int h) {
        FPVItemJpeg item(path, QString(), false);
        item.setThumbnailKind(kind);
        return std::unique_ptr<QPixmap>(item.thumbnail(w, h)) != nullptr;
    };
    for (int i = 0; i < 2; ++i) {
        QVERIFY(visit('l', 160, 119));
        QVERIFY(visit('s', 69, 53));
    }
    spoil(path);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(visit('l', 160, 119));
        QVERIFY(visit('s', 69, 53));
    }
}

void TestThumbnails::aFullDecodeIsStoredUnderItsOwnWidth()
{
    const QString path = photo({.size = QSize(640, 480)});
    const std::unique_ptr<QPixmap> pixmap = thumbnailOf(path);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->size(), QSize(164, 123));
    QVERIFY(isStored(path, 164, 'l'));
    QVERIFY(!isStored(path, 174, 'l'));
    QVERIFY(!isStored(path, 164, 's'));

    spoil(path);
    const std::unique_ptr<QPixmap> again = thumbnailOf(path);
    QVERIFY(again);
    QCOMPARE(again->size(), QSize(164, 123));
}

/// Also where no thumbnail came of it.
void TestThumbnails::aFailedDecodeRecordsItsSizeToo()
{
    const QString path = photo({.size = QSize(640, 480)});
    QImage other = lumi::test::picture(80, 60);
    QVERIFY(SwapAppend(path, &other, 80, 's'));
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.fitSize(QSize(80, 60)), QSize(80, 60));
    spoil(path);
    const MessageLog log;
    QVERIFY(item.thumbnail(174, 123) == nullptr);
    QVERIFY(log.warnings.contains(kError3));
    QSize recorded;
    QVERIFY(SwapGetSize(path, &recorded));
    QCOMPARE(recorded, QSize(164, 123));
}

void TestThumbnails::theFittedSizeIsRecorded()
{
    const QString path = photo({.size = QSize(480, 640)});
    QVERIFY(thumbnailOf(path));
    QSize recorded;
    QVERIFY(SwapGetSize(path, &recorded));
    QCOMPARE(recorded, QSize(92, 123));
    FPVItemJpeg item(path, QString(), false);
    QVERIFY(QFile::remove(path));
    QCOMPARE(item.fitSize(QSize(80, 60)), QSize(45, 60));
    QCOMPARE(item.imageSize(), QSize(-1, -1));
}

void TestThumbnails::eachKindIsStoredForItself()
{
    const QString path = photo({.size = QSize(400, 300)});
    for (const char kind : {'l', 's', 'd'}) {
        FPVItemJpeg item(path, QString(), false);
        item.setThumbnailKind(kind);
        const std::unique_ptr<QPixmap> pixmap(item.thumbnail(80, 60));
        QVERIFY(pixmap);
        QVERIFY(isStored(path, 80, kind));
    }
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 3);
}

void TestThumbnails::damagedPhotosHaveNoThumbnail_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("not a photo");
    QTest::newRow("the start alone") << QByteArray("\xff\xd8");
    QTest::newRow("a header cut short") << lumi::test::makeJpeg({}).first(100);
    QTest::newRow("two samples a pixel") << lumi::test::makeJpeg({.components = 2});
}

void TestThumbnails::damagedPhotosHaveNoThumbnail()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    const MessageLog log;
    QVERIFY(!thumbnailOf(path));
    QCOMPARE(log.warnings.count(kError3), 1);
    QCOMPARE(log.warnings.last(), kError3);
    QCOMPARE(lumi::test::blockCount(*m_fixture->store), 0);
}

void TestThumbnails::imageSize_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QSize>("size");
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

void TestThumbnails::imageSize()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QTEST(item.imageSize(), "size");
    QCOMPARE(item.errorCode(), DecodeError::None);
}

void TestThumbnails::aBadFileIsTriedAgain()
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

void TestThumbnails::theSizeIsReadOnce()
{
    const QString path = photo({.size = QSize(83, 61)});
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(83, 61));
    QVERIFY(QFile::remove(path));
    QCOMPARE(item.imageSize(), QSize(83, 61));
}

void TestThumbnails::scaledImagesAreExact_data()
{
    QTest::addColumn<QSize>("photo");
    QTest::addColumn<QSize>("wanted");
    QTest::addColumn<int>("denominator");
    QTest::addColumn<bool>("progressive");
    QTest::newRow("an eighth") << QSize(800, 600) << QSize(100, 75) << 8 << false;
    QTest::newRow("a quarter, made smaller") << QSize(800, 600) << QSize(164, 123) << 4 << false;
    QTest::newRow("not scaled by the decoder") << QSize(100, 80) << QSize(90, 70) << 1 << false;
    QTest::newRow("enlarged") << QSize(20, 10) << QSize(100, 50) << 1 << false;
    QTest::newRow("distorted as asked") << QSize(160, 120) << QSize(33, 44) << 2 << false;
    QTest::newRow("progressive") << QSize(800, 600) << QSize(164, 123) << 4 << true;
}

void TestThumbnails::scaledImagesAreExact()
{
    QFETCH(QSize, wanted);
    QFETCH(QSize, photo);
    QFETCH(bool, progressive);
    QFETCH(int, denominator);
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

void TestThumbnails::grayPhotosGiveGrayImages()
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

void TestThumbnails::fourSamplesStayAsTheyAre()
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

void TestThumbnails::noImageWithoutASide()
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

/// The need goes by the width of the whole photo, though only an eighth of it is decoded.
void TestThumbnails::aThumbnailNeedsMemory()
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

void TestThumbnails::aProgressivePhotoNeedsMemory()
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

void TestThumbnails::aSequentialPhotoSkipsThatTest()
{
    FPVItemJpeg item(photo({.size = QSize(2048, 1536), .plain = true}), QString(), false);
    m_fixture->machine->setMemoryKB(6000);
    QCOMPARE(item.imageSize(), QSize(2048, 1536));
    const std::unique_ptr<QImage> image(item.scaledImage(100, 75));
    QVERIFY(image);
}

/// It is held whole while it is decoded, 6 bytes a pixel here, and no test in advance covers it.
void TestThumbnails::aPhotoOfSeveralScansMayNotTakeMoreThanThereIs()
{
    const QByteArray bytes
        = lumi::test::makeJpeg({.size = QSize(512, 512), .separateScans = true, .plain = true});
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, lumi::test::withSize(bytes, 20000, 20000));
    m_fixture->machine->setMemoryKB(1024 * 1024);
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(20000, 20000));
    QVERIFY(item.scaledImage(100, 100) == nullptr);
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);

    lumi::test::writeFile(path, bytes);
    FPVItemJpeg whole(path, QString(), false);
    const std::unique_ptr<QImage> image(whole.scaledImage(100, 100));
    QVERIFY(image);
}

void TestThumbnails::errorsOfLinesAreClean()
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

/// The Exif reader of an item has read nothing, so its tags are not there to be told.
void TestThumbnails::infoOfAPhoto()
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Maker")
        .ascii(ExifListKind::Exif, 0x9003, "2026:01:02 03:04:05")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .photo(lumi::test::makeJpeg({.size = QSize(83, 61)}));
    QVERIFY(builder.write(path));
    FPVItemJpeg item(path, QString(), false);
    const std::unique_ptr<QList<lumi::InfoRecord>> records(item.infoList());
    QCOMPARE(records->size(), 1);
    QCOMPARE(records->at(0).title, QStringLiteral("Basic Information"));
    QCOMPARE(records->at(0).text,
             QStringLiteral("File Size : %1KB\nImage Size : 83x61\nDate Time : \n")
                 .arg(QFileInfo(path).size() / 1024));
}

void TestThumbnails::pipesAreNotWaitedFor()
{
    const QString path = m_fixture->path(QStringLiteral("pipe.jpg"));
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    const MessageLog log;
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(item.imageSize(), QSize(-1, -1));
    QCOMPARE(log.warnings.first(),
             QString(QStringLiteral("my_jpeg_source_mgr cannot read file ") + path));
}

void TestThumbnails::noDecompressorIsLeft()
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

/// Its lines would not fit what the screen decode reads into.
void TestThumbnails::aScreenDecodeEndsWhenTheDecompressorIsMadeAnew()
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

LUMI_TEST(TestThumbnails)
#include "TestThumbnails.moc"
