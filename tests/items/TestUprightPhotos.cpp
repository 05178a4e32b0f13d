// SPDX-License-Identifier: MIT
// Photos of all orientations, compared with the image library, which reads the tag and turns the
// picture by itself.
#include "items/FPVItemJpeg.h"
#include "swap/swapStore.h"
#include "tests/items/DecodeTest.h"
#include "tests/items/ThumbnailTest.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPixmap>
#include <QTest>

#include <algorithm>
#include <memory>

using lumi::test::ExifBuilder;

class TestUprightPhotos : public lumi::test::ThumbnailTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyPixel_data();
    void everyPixel();
    void fittedScreen_data();
    void fittedScreen();
    void thumbnails_data();
    void thumbnails();
    void embeddedThumbnails_data();
    void embeddedThumbnails();
    void linesAppearSliceBySlice_data();
    void linesAppearSliceBySlice();
    void extremeShapes_data();
    void extremeShapes();
    void scaledImages();
    void sizesAreUpright();
    void pixelsAsStored();

private:
    /// An item of a file with these bytes.
    [[nodiscard]] std::unique_ptr<FPVItemJpeg> itemOf(const QByteArray &bytes) const;
};

namespace {

constexpr quint16 kOrientation = 0x0112;
constexpr QSize kPhoto(400, 104);
/// Grades of a colour. The library's filters differ from ours.
constexpr int kTolerance = 12;
constexpr int kExact = 0;
/// Below 50 the library uses the fast transform, as the decode for the screen does.
constexpr int kFastQuality = 1;

struct Kind
{
    const char *name;
    QImage::Format format;
    bool isProgressive;
};

constexpr Kind kKinds[] = {
    {"colour", QImage::Format_RGB32, false},
    {"gray", QImage::Format_Grayscale8, false},
    {"progressive", QImage::Format_RGB32, true},
    {"progressive gray", QImage::Format_Grayscale8, true},
};

/// Redder to the right, greener to the bottom; so no turned copy looks the same.
QByteArray smoothJpeg(QSize size, const Kind &kind)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y,
                           qRgb(40 + 200 * x / size.width(), 40 + 200 * y / size.height(), 100));
        }
    }
    QBuffer buffer;
    QImageWriter writer(&buffer, "JPEG");
    writer.setQuality(100);
    writer.setProgressiveScanWrite(kind.isProgressive);
    if (!writer.write(image.convertToFormat(kind.format))) {
        qFatal("a test photo cannot be made");
    }
    return buffer.data();
}

QByteArray turned(int value, const QByteArray &jpeg)
{
    return ExifBuilder()
        .shorts(ExifListKind::Ifd0, kOrientation, {static_cast<quint16>(value)})
        .photo(jpeg)
        .file();
}

QImage asLibrary(QByteArray bytes, bool isUpright = true)
{
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "JPEG");
    reader.setAutoTransform(isUpright);
    reader.setQuality(kFastQuality);
    return reader.read().convertToFormat(QImage::Format_RGB32);
}

QImage smooth(const QImage &image, QSize size)
{
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// The picture in a turned raster.
QImage pictureIn(const uchar *raster, QSize size, int depth = 32)
{
    QImage image(size, depth == 16 ? QImage::Format_RGB16 : QImage::Format_RGB32);
    const int bytes = depth / 8;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const qsizetype place = qsizetype(x) * size.height() + size.height() - 1 - y;
            std::copy_n(raster + place * bytes, bytes, image.scanLine(y) + x * bytes);
        }
    }
    return image;
}

int distance(QRgb one, QRgb other)
{
    return std::max({qAbs(qRed(one) - qRed(other)), qAbs(qGreen(one) - qGreen(other)),
                     qAbs(qBlue(one) - qBlue(other))});
}

/// The first wrong pixel as text, empty if there is none.
QString fault(const QImage &found, const QImage &wanted, int tolerance = kTolerance)
{
    if (found.size() != wanted.size() || wanted.isNull()) {
        return QString::asprintf("%d x %d instead of %d x %d", found.width(), found.height(),
                                 wanted.width(), wanted.height());
    }
    for (int y = 0; y < wanted.height(); ++y) {
        for (int x = 0; x < wanted.width(); ++x) {
            if (distance(found.pixel(x, y), wanted.pixel(x, y)) > tolerance) {
                return QString::asprintf("column %d line %d: %08x instead of %08x", x, y,
                                         found.pixel(x, y), wanted.pixel(x, y));
            }
        }
    }
    return {};
}

void eachValueAndKind()
{
    lumi::test::columns<int, int>();
    for (int value = 1; value <= 8; ++value) {
        for (int i = 0; i < int(std::size(kKinds)); ++i) {
            QTest::addRow("%d, %s", value, kKinds[i].name) << value << i;
        }
    }
}

} // namespace

std::unique_ptr<FPVItemJpeg> TestUprightPhotos::itemOf(const QByteArray &bytes) const
{
    const QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    auto item = std::make_unique<FPVItemJpeg>(path, QString(), false);
    item->setIncremental(false);
    return item;
}

void TestUprightPhotos::everyPixel_data()
{
    lumi::test::columns<int, int, int>();
    for (int value = 1; value <= 8; ++value) {
        for (const int components : {1, 3}) {
            for (const int depth : {16, 32}) {
                QTest::addRow("%d, %d samples, %d bits", value, components, depth)
                    << value << components << depth;
            }
        }
    }
}

/// Sizes with one pixel more or less than whole blocks, too.
void TestUprightPhotos::everyPixel()
{
    const auto [value, components, depth] = lumi::test::row<int, int, int>();
    for (const QSize size :
         {QSize(83, 61), QSize(16, 32), QSize(17, 15), QSize(1, 40), QSize(40, 1), QSize(1, 1)}) {
        const QByteArray bytes = turned(
            value,
            lumi::test::makeJpeg(
                {.size = size, .components = components, .sampling = QSize(1, 1), .quality = 95}));
        const auto item = itemOf(bytes);
        QSize found;
        QVERIFY(item->startDecode(depth, &found, nullptr));
        const QImage wanted = asLibrary(bytes);
        QCOMPARE(found, wanted.size());
        QCOMPARE(item->imageSize(), wanted.size());
        const QImage picture = pictureIn(item->rasterBits(), found, depth);
        QCOMPARE(fault(picture, wanted.convertToFormat(picture.format()), kExact), QString());
    }
}

void TestUprightPhotos::fittedScreen_data()
{
    eachValueAndKind();
}

void TestUprightPhotos::fittedScreen()
{
    const auto [value, kind] = lumi::test::row<int, int>();
    const QByteArray bytes = turned(value, smoothJpeg(kPhoto, kKinds[kind]));
    const QImage whole = asLibrary(bytes);
    const auto item = itemOf(bytes);
    QSize found;
    QVERIFY(item->startDecode(32, &found, nullptr));
    QCOMPARE(fault(pictureIn(item->rasterBits(), found), whole), QString());
    QCOMPARE(item->decodedLines(found), kPhoto.height());

    // Exchanged sides would be covered by another scale.
    QSize request(whole.width() / 2 - 1, whole.height() / 2);
    item->releaseDecode();
    QVERIFY(item->startDecode(32, &found, &request));
    QCOMPARE(found, whole.size() / 2);
    QCOMPARE(fault(pictureIn(item->rasterBits(), found), smooth(whole, found)), QString());
    QCOMPARE(item->decodedLines(found), kPhoto.height() / 2);
}

void TestUprightPhotos::thumbnails_data()
{
    eachValueAndKind();
}

/// In the cells of the three views: decoded, then from the store.
void TestUprightPhotos::thumbnails()
{
    const auto [value, kind] = lumi::test::row<int, int>();
    const QByteArray bytes = turned(value, smoothJpeg(kPhoto, kKinds[kind]));
    const QImage whole = asLibrary(bytes);
    const std::pair<char, QSize> cells[] = {{'l', {171, 119}}, {'s', {71, 58}}, {'d', {73, 71}}};
    for (const auto &[view, cell] : cells) {
        const auto item = itemOf(bytes);
        item->setThumbnailKind(view);
        const std::unique_ptr<QPixmap> pixmap(item->thumbnail(cell.width(), cell.height()));
        QVERIFY(pixmap);
        const QImage wanted = smooth(whole, item->fitSize(cell));
        QVERIFY(wanted.width() == cell.width() || wanted.height() == cell.height());
        QCOMPARE(whole.width() > whole.height(), wanted.width() > wanted.height());
        QCOMPARE(fault(pixmap->toImage(), wanted), QString());
        QImage stored;
        QVERIFY(SwapLoad(item->path(), &stored, wanted.width(), view));
        QCOMPARE(fault(stored, wanted), QString());
    }
    QSize recorded;
    QVERIFY(SwapGetSize(itemOf(bytes)->path(), &recorded));
    QCOMPARE(recorded.width() > recorded.height(), whole.width() > whole.height());
}

void TestUprightPhotos::embeddedThumbnails_data()
{
    eachValueAndKind();
}

/// They are stored like the photo and have no tag of their own.
void TestUprightPhotos::embeddedThumbnails()
{
    const auto [value, kind] = lumi::test::row<int, int>();
    const QByteArray embedded = smoothJpeg(QSize(160, 120), kKinds[kind]);
    const QByteArray bytes = ExifBuilder()
                                 .shorts(ExifListKind::Ifd0, kOrientation, {quint16(value)})
                                 .thumbnail(embedded)
                                 .photo(ExifBuilder::jpeg(64, 48, 0x0000FF))
                                 .file();
    const QImage whole = asLibrary(turned(value, embedded));
    for (const QSize cell : {QSize(171, 119), QSize(71, 58), QSize(73, 71)}) {
        const auto item = itemOf(bytes);
        const std::unique_ptr<QPixmap> pixmap(item->thumbnail(cell.width(), cell.height()));
        QVERIFY(pixmap);
        const QSize size = whole.size().scaled(cell, Qt::KeepAspectRatio);
        QVERIFY(qAbs(pixmap->width() - size.width()) < 2);
        QVERIFY(qAbs(pixmap->height() - size.height()) < 2);
        QCOMPARE(fault(pixmap->toImage(), smooth(whole, pixmap->size())), QString());
    }
}

void TestUprightPhotos::linesAppearSliceBySlice_data()
{
    lumi::test::columns<int>();
    for (int value = 1; value <= 8; ++value) {
        QTest::addRow("%d", value) << value;
    }
}

/// 64 stored lines from one update to the next, the rest is black.
void TestUprightPhotos::linesAppearSliceBySlice()
{
    const int value = std::get<0>(lumi::test::row<int>());
    const QSize stored(50, 200);
    const QByteArray bytes
        = turned(value, lumi::test::makeJpeg({.size = stored, .components = 1, .plain = true}));
    lumi::test::Watched watched(itemOf(bytes)->path());
    QList<int> filled;
    QSize size;
    connect(watched.item.get(), &FPVItemImage::decodeUpdate, this, [&] {
        const auto *pixels = reinterpret_cast<const QRgb *>(watched.item->rasterBits());
        const QRgb black = 0xFF000000U;
        filled.append(int(stored.width() * stored.height()
                          - std::count(pixels, pixels + stored.width() * stored.height(), black)));
    });
    QVERIFY(watched.item->startDecode(32, &size, nullptr));
    QCOMPARE(size, value > 4 ? stored.transposed() : stored);
    QVERIFY(watched.waitForTheEnd());
    QCOMPARE(filled, QList<int>({0, 64 * 50, 128 * 50, 192 * 50}));
}

void TestUprightPhotos::extremeShapes_data()
{
    lumi::test::columns<int, QSize>();
    for (const int value : {3, 5, 6, 7, 8}) {
        for (const QSize size : {QSize(65500, 2), QSize(2, 65500), QSize(20000, 1)}) {
            QTest::addRow("%d, %d x %d", value, size.width(), size.height()) << value << size;
        }
    }
}

void TestUprightPhotos::extremeShapes()
{
    const auto [value, size] = lumi::test::row<int, QSize>();
    const QByteArray jpeg
        = lumi::test::makeJpeg({.size = size, .sampling = QSize(1, 1), .quality = 95});
    const QByteArray bytes = turned(value, jpeg);
    const auto item = itemOf(bytes);
    QSize found;
    QVERIFY(item->startDecode(32, &found, nullptr));
    QCOMPARE(fault(pictureIn(item->rasterBits(), found), asLibrary(bytes), kExact), QString());
    const std::unique_ptr<QImage> image(item->scaledImage(174, 123));
    QVERIFY(image);
    QCOMPARE(image->size(), QSize(174, 123));
}

/// Exactly of the requested size, which is an upright one.
void TestUprightPhotos::scaledImages()
{
    for (const Kind &kind : kKinds) {
        const QByteArray bytes = turned(6, smoothJpeg(kPhoto, kind));
        const QImage whole = asLibrary(bytes);
        for (const QSize size : {QSize(26, 100), QSize(104, 400), QSize(50, 50)}) {
            const std::unique_ptr<QImage> image(
                itemOf(bytes)->scaledImage(size.width(), size.height()));
            QVERIFY(image);
            const bool isGray = kind.format == QImage::Format_Grayscale8;
            QCOMPARE(image->format(), isGray ? QImage::Format_Indexed8 : QImage::Format_RGB32);
            QCOMPARE(fault(*image, smooth(whole, size)), QString());
        }
    }
}

void TestUprightPhotos::sizesAreUpright()
{
    const auto item = itemOf(turned(8, smoothJpeg(kPhoto, kKinds[0])));
    QCOMPARE(item->imageSize(), kPhoto.transposed());
    QCOMPARE(item->fitSize(QSize(100, 200)), QSize(52, 200));
    QVERIFY(!item->refreshSize());
    const std::unique_ptr<QList<lumi::InfoRecord>> records(item->infoList());
    QVERIFY(records->at(0).text.contains(QStringLiteral("Image Size : 104x400\n")));
}

/// The machine's other setting.
void TestUprightPhotos::pixelsAsStored()
{
    m_fixture->machine->upright = false;
    const QByteArray embedded = smoothJpeg(QSize(160, 120), kKinds[0]);
    const QByteArray bytes = turned(6, smoothJpeg(kPhoto, kKinds[0]));
    const QImage whole = asLibrary(bytes, false);
    QCOMPARE(whole.size(), kPhoto);
    const auto item = itemOf(bytes);
    QSize found;
    QVERIFY(item->startDecode(32, &found, nullptr));
    QCOMPARE(fault(pictureIn(item->rasterBits(), found), whole), QString());
    QCOMPARE(item->imageSize(), kPhoto);
    const std::unique_ptr<QPixmap> pixmap(item->thumbnail(171, 119));
    QVERIFY(pixmap);
    QCOMPARE(fault(pixmap->toImage(), smooth(whole, QSize(171, 44))), QString());
    const QByteArray withEmbedded
        = ExifBuilder().shorts(ExifListKind::Ifd0, kOrientation, {6}).thumbnail(embedded).file();
    const auto other = itemOf(withEmbedded);
    m_fixture->store->Clear();
    const std::unique_ptr<QPixmap> small(other->thumbnail(171, 119));
    QVERIFY(small);
    QCOMPARE(fault(small->toImage(), smooth(asLibrary(embedded), QSize(159, 119))), QString());
}

LUMI_TEST(TestUprightPhotos)
#include "TestUprightPhotos.moc"
