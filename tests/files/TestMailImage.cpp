// SPDX-License-Identifier: MIT
// The picture of a mail copy: what it keeps of the photo, and its time and memory.
#include "files/mailCopy.h"
#include "items/FPVItemJpeg.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/items/BareDecoder.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/WorstHeaders.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/BrowserWorld.h"

#include <QBuffer>
#include <QColorSpace>
#include <QDate>
#include <QFile>
#include <QImageReader>
#include <QPixmap>
#include <QTest>
#include <QtEndian>

#include <memory>

class TestMailImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<lumi::test::BrowserWorld>(); }

    void cleanup() { m_world.reset(); }

    void nothingButThePixelsIsKept_data();
    void nothingButThePixelsIsKept();
    void grayStaysGray();
    void photosAreUpright_data();
    void photosAreUpright();
    void aPhotoThatWasReplacedMeanwhile_data();
    void aPhotoThatWasReplacedMeanwhile();
    void worstHeaders_data();
    void worstHeaders();
    void aPictureOfAnotherFormatMayBeTooLarge_data();
    void aPictureOfAnotherFormatMayBeTooLarge();

private:
    std::unique_ptr<lumi::test::BrowserWorld> m_world;
};

namespace {

constexpr int kPlentyKB = 1024 * 1024 * 1024;

/// A picture with all metadata that the image library can write.
QImage dressed(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(40, 120, 200));
    image.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
    image.setText(QStringLiteral("Author"), QStringLiteral("somebody"));
    image.setText(QStringLiteral("Description"), QStringLiteral("a secret place"));
    image.setDotsPerMeterX(11811);
    image.setDotsPerMeterY(11811);
    return image;
}

/// The distinct kinds of segments up to the scan.
QByteArray segmentsOf(const QByteArray &jpeg)
{
    constexpr int kMarkerBytes = 2;
    QByteArray found;
    for (qsizetype at = kMarkerBytes; at + 2 * kMarkerBytes <= jpeg.size();) {
        const char kind = jpeg.at(at + 1);
        if (!found.contains(kind)) {
            found.append(kind);
        }
        if (kind == '\xDA') {
            break;
        }
        at += kMarkerBytes + qFromBigEndian<quint16>(jpeg.constData() + at + kMarkerBytes);
    }
    return found;
}

/// The colours at the centres of the picture's quarters, row by row: "r" for red, "b" for blue, "-"
/// for any other.
QByteArray quartersOf(const QImage &image)
{
    QByteArray colours;
    for (const int y : {1, 3}) {
        for (const int x : {1, 3}) {
            const QColor colour = image.pixelColor(x * image.width() / 4, y * image.height() / 4);
            colours.append(colour.red() > 200 ? 'r' : colour.blue() > 200 ? 'b' : '-');
        }
    }
    return colours;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void TestMailImage::nothingButThePixelsIsKept_data()
{
    lumi::test::columns<QSize, QByteArray>();
    QTest::newRow("a small photo") << QSize(200, 100) << QByteArray("JPEG");
    QTest::newRow("a large photo") << QSize(1280, 640) << QByteArray("JPEG");
    QTest::newRow("a small picture of another format") << QSize(200, 100) << QByteArray("PNG");
    QTest::newRow("a large picture of another format") << QSize(1280, 640) << QByteArray("PNG");
}

void TestMailImage::nothingButThePixelsIsKept()
{
    const auto [size, format] = lumi::test::row<QSize, QByteArray>();
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(dressed(size).save(path, format.constData()));
    const QImage loaded(path);
    QVERIFY(loaded.colorSpace().isValid());
    QVERIFY(!loaded.textKeys().isEmpty());

    FPVItemJpeg item(path, QString(), false);
    const QImage image = lumi::mailImage(&item);
    QVERIFY(!image.isNull());
    QVERIFY(!image.colorSpace().isValid());
    QCOMPARE(image.textKeys(), QStringList());
    QCOMPARE(image.dotsPerMeterX(), QImage(1, 1, image.format()).dotsPerMeterX());
    const QColor colour = image.pixelColor(50, 50);
    QVERIFY(qAbs(colour.red() - 40) < 4 && qAbs(colour.blue() - 200) < 4);

    const QString copy = lumi::freeMailPath(QDate(2026, 1, 11));
    QVERIFY(lumi::saveMailImage(image, copy));
    // JFIF, quantisation, frame, Huffman tables, scan: the segments that every JPEG file has.
    const QByteArray segments = segmentsOf(contentOf(copy));
    QVERIFY(segments.contains('\xDA'));
    for (const char kind : segments) {
        QVERIFY2(QByteArray("\xE0\xDB\xC0\xC4\xDA").contains(kind), segments.toHex().constData());
    }
}

void TestMailImage::grayStaysGray()
{
    QImage gray(64, 48, QImage::Format_Grayscale8);
    gray.fill(90);
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(gray.save(path, "JPEG"));
    QImage indexed(64, 48, QImage::Format_Indexed8);
    indexed.setColorTable({qRgb(10, 200, 10), qRgb(200, 10, 10)});
    indexed.fill(1);
    const QString other = m_world->path(QStringLiteral("b.jpg"));
    QVERIFY(indexed.save(other, "PNG"));
    for (const QString &each : {path, other}) {
        FPVItemJpeg item(each, QString(), false);
        QCOMPARE(lumi::mailImage(&item), QImage(each));
    }
}

void TestMailImage::photosAreUpright_data()
{
    lumi::test::columns<int, QSize, QSize>();
    for (int value = 1; value <= 8; ++value) {
        const bool isOnItsSide = value > 4;
        const auto addRow
            = [value, isOnItsSide](const char *name, QSize stored, QSize usual, QSize onItsSide) {
                  QTest::addRow("%d, %s", value, name)
                      << value << stored << (isOnItsSide ? onItsSide : usual);
              };
        addRow("small", {200, 100}, {200, 100}, {100, 200});
        addRow("as large as a copy", {640, 480}, {640, 480}, {360, 480});
        addRow("as large as a copy on its side", {480, 640}, {360, 480}, {640, 480});
        addRow("large", {1280, 640}, {640, 320}, {240, 480});
    }
}

/// The copy has no tag that would turn it once more. With the machine's other setting it is as
/// stored.
void TestMailImage::photosAreUpright()
{
    const auto [value, size, copied] = lumi::test::row<int, QSize, QSize>();
    QImage photo(size, QImage::Format_RGB32);
    photo.fill(Qt::black);
    for (int y = 0; y < size.height() / 2; ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const bool isLeft = x < size.width() / 2;
            photo.setPixelColor(x, y, isLeft ? Qt::red : Qt::blue);
        }
    }
    QBuffer jpeg;
    QVERIFY(photo.save(&jpeg, "JPEG", 95));
    const QString path
        = m_world->makeFile(QStringLiteral("a.jpg"),
                            lumi::test::ExifBuilder()
                                .shorts(ExifListKind::Ifd0, 0x0112, {static_cast<quint16>(value)})
                                .photo(jpeg.data())
                                .file());
    QImageReader reader(path);
    reader.setAutoTransform(true);
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(quartersOf(lumi::mailImage(&item)), quartersOf(reader.read()));
    QCOMPARE(lumi::mailImage(&item).size(), copied);
    const QString copy = lumi::freeMailPath(QDate(2026, 1, 11));
    QVERIFY(lumi::saveMailImage(lumi::mailImage(&item), copy));
    QCOMPARE(QImageReader(copy).transformation(), QImageIOHandler::TransformationNone);

    m_world->machine->upright = false;
    FPVItemJpeg other(path, QString(), false);
    QCOMPARE(quartersOf(lumi::mailImage(&other)), quartersOf(photo));
}

void TestMailImage::aPhotoThatWasReplacedMeanwhile_data()
{
    lumi::test::columns<QSize, QSize, QSize>();
    QTest::newRow("by a portrait") << QSize(1600, 1200) << QSize(900, 1200) << QSize(360, 480);
    QTest::newRow("by a panorama") << QSize(1600, 1200) << QSize(1600, 400) << QSize(640, 160);
    QTest::newRow("by a small photo") << QSize(1600, 1200) << QSize(60, 80) << QSize(60, 80);
    QTest::newRow("a small photo by a large one")
        << QSize(80, 60) << QSize(900, 1200) << QSize(360, 480);
}

/// Neither the size known to the item nor that in the swap store is used.
void TestMailImage::aPhotoThatWasReplacedMeanwhile()
{
    const auto [before, after, copy] = lumi::test::row<QSize, QSize, QSize>();
    const QString folder = m_world->makeFolder(QStringLiteral(".photo_swp"));
    SwapSystem store(QFile::encodeName(folder), QStringLiteral(".swp"));
    swapSystem(&store);
    FPVItemJpeg item(m_world->makePhoto(QStringLiteral("a.jpg"), before), QString(), false);
    QCOMPARE(item.imageSize(), before);
    QVERIFY(std::unique_ptr<QPixmap>(item.thumbnail(171, 119)));
    m_world->makePhoto(QStringLiteral("a.jpg"), after);
    QCOMPARE(lumi::mailImage(&item).size(), copy);
}

void TestMailImage::worstHeaders_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const lumi::test::HostileFile &file : lumi::test::worstHeaders()) {
        QTest::newRow(file.name.constData()) << file.bytes;
    }
    QTest::newRow("640 x 480, 500 slow arithmetic scans")
        << lumi::test::makeArithmeticBomb(QSize(640, 480), 500);
}

void TestMailImage::worstHeaders()
{
    QFETCH(QByteArray, bytes);
    m_world->machine->setMemoryKB(kPlentyKB);
    const QString path = m_world->makeFile(QStringLiteral("a.jpg"), bytes);
    const QString fault = lumi::test::faultOfCost([&path] {
        FPVItemJpeg item(path, QString(), false);
        (void)lumi::mailImage(&item);
    });
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void TestMailImage::aPictureOfAnotherFormatMayBeTooLarge_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<bool>("isTaken");
    QTest::newRow("11 megapixels") << QSize(4000, 2900) << QImage::Format_RGB32 << true;
    QTest::newRow("16 megapixels") << QSize(4000, 4000) << QImage::Format_RGB32 << false;
    QTest::newRow("11 megapixels of 64 bits")
        << QSize(4000, 2900) << QImage::Format_RGBX64 << false;
}

/// Enough memory is free, but a mail copy may use only a part of it.
void TestMailImage::aPictureOfAnotherFormatMayBeTooLarge()
{
    QFETCH(QSize, size);
    QFETCH(QImage::Format, format);
    QFETCH(bool, isTaken);
    m_world->machine->setMemoryKB(kPlentyKB);
    QImage picture(size, format);
    picture.fill(Qt::green);
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(picture.save(path, "PNG", 100));
    picture = QImage();
    QImage mailed;
    const QString fault = lumi::test::faultOfCost([&path, &mailed] {
        FPVItemJpeg item(path, QString(), false);
        mailed = lumi::mailImage(&item);
    });
    QCOMPARE(!mailed.isNull(), isTaken);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

LUMI_TEST(TestMailImage)
#include "TestMailImage.moc"
