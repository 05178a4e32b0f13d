// SPDX-License-Identifier: MIT
// Real photos in the viewer: the place of each corner, and files that are huge, tiny, truncated or
// broken.
#include "items/FPVItemJpeg.h"
#include "platform/screen/FrameBuffer.h"
#include "tests/items/HostileFiles.h"
#include "tests/items/JpegMaker.h"
#include "tests/items/LibraryFaults.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/viewer/ViewerFixture.h"
#include "viewer/zoomPlacement.h"
#include "viewer/zoomSteps.h"

#include <QBuffer>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>

using lumi::test::Decoded;
using lumi::test::isNear;
using lumi::test::Silence;
using lumi::test::ViewerFixture;

namespace {

const QString kMemoryBox = QStringLiteral("Error: Memory full.\nProcessing cancelled (OK)");
const QString kOpenBox = QStringLiteral("Error: You did not open this file (OK)");

constexpr QSize kPhoto(1600, 1200);
constexpr int kMark = 48; // whole blocks, also of a decode at half size
constexpr QRgb kGround = 0xFF3C3C3CU;
constexpr QRgb kTopLeft = 0xFFE01010U;
constexpr QRgb kTopRight = 0xFF10C010U;
constexpr QRgb kBottomLeft = 0xFF1010E0U;
constexpr QRgb kBottomRight = 0xFFE0E010U;

/// Each corner has a mark of its own colour.
QImage markedPhoto()
{
    QImage image(kPhoto, QImage::Format_RGB32);
    image.fill(QColor::fromRgb(kGround));
    QPainter painter(&image);
    const int right = kPhoto.width() - kMark;
    const int bottom = kPhoto.height() - kMark;
    painter.fillRect(0, 0, kMark, kMark, QColor::fromRgb(kTopLeft));
    painter.fillRect(right, 0, kMark, kMark, QColor::fromRgb(kTopRight));
    painter.fillRect(0, bottom, kMark, kMark, QColor::fromRgb(kBottomLeft));
    painter.fillRect(right, bottom, kMark, kMark, QColor::fromRgb(kBottomRight));
    return image;
}

/// The pixel of a photo of one colour, as makeJpeg() makes it.
constexpr QRgb kPlainColour = 0xFF5D5D5DU;
constexpr QRgb kMarginColour = 0xFF808080U;
/// A photo with more lines is decoded without pauses, which would take half a minute.
constexpr int kPatientLines = 2000;

} // namespace

class TestViewedPhotos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void cornersAtFit_data();
    void cornersAtFit();
    void aPhotoOnItsSide_data();
    void aPhotoOnItsSide();
    void cornersWhenLarger_data();
    void cornersWhenLarger();
    void marginsAreGray_data();
    void marginsAreGray();
    void extremeSizes_data();
    void extremeSizes();
    void brokenFiles_data();
    void brokenFiles();
    void aFileDeletedWhileShown();
    void anErrorInAnyLine_data();
    void anErrorInAnyLine();
    void leavingDuringADecode();

private:
    FPVItemJpeg *addFile(const QByteArray &bytes);
    /// Opens the photo, waits for its picture and for the one at full size, and closes the viewer.
    /// The texts of boxes are in m_it->boxes, the sizes of the rasters in m_sizes.
    [[nodiscard]] bool seeIt(FPVItemImage *item, bool alsoFull);
    /// The first pixel on the screen that isn't the photo's as text, with the photo decoded at
    /// full size and shown from its top left; empty if all are right.
    [[nodiscard]] QString screenFault(const Decoded &decoded) const;
    void zoomTo(int percent);
    /// The pixels in the corners of the picture's area, from left to right, top first.
    [[nodiscard]] QList<QRgb> corners() const;
    void press(int key, int times);

    std::unique_ptr<ViewerFixture> m_it;
    QList<QSize> m_sizes;
    std::function<void()> m_whileSeen = [] {}; ///< called before the viewer closes
    int m_count = 0;
};

void TestViewedPhotos::init()
{
    m_it = std::make_unique<ViewerFixture>();
    m_whileSeen = [] {};
}

void TestViewedPhotos::cleanup()
{
    m_it.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

FPVItemJpeg *TestViewedPhotos::addFile(const QByteArray &bytes)
{
    const QString path = m_it->world.makeFile(QString::asprintf("%04d.jpg", ++m_count), bytes);
    auto *item = new FPVItemJpeg(path, QString(), false);
    m_it->items.append(item);
    return item;
}

void TestViewedPhotos::zoomTo(int percent)
{
    QVERIFY(m_it->waitForLook());
    const QString wanted = QString::asprintf("%d%%", percent);
    for (int i = 0; i < 12 && m_it->percent()->text() != wanted; ++i) {
        m_it->viewer->zoomIn();
        QVERIFY(m_it->waitForLook());
    }
    QCOMPARE(m_it->percent()->text(), wanted);
}

QList<QRgb> TestViewedPhotos::corners() const
{
    const QImage shot = m_it->shot();
    const int right = shot.width() - 1;
    const int bottom = shot.height() - 1;
    return {shot.pixel(0, 0), shot.pixel(right, 0), shot.pixel(0, bottom),
            shot.pixel(right, bottom)};
}

void TestViewedPhotos::press(int key, int times)
{
    for (int i = 0; i < times; ++i) {
        m_it->key(key);
    }
}

void TestViewedPhotos::cornersAtFit_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("16 bits") << 16;
    QTest::newRow("32 bits") << 32;
}

void TestViewedPhotos::cornersAtFit()
{
    QFETCH(int, depth);
    m_it->world.machine->depth = depth;
    const QString path = m_it->world.path(QStringLiteral("marked.jpg"));
    QVERIFY(markedPhoto().save(path, "JPEG", 100));
    FPVItemJpeg item(path, QString(), false);
    m_it->open(&item);
    QVERIFY(m_it->waitForLook());
    const int fit = *lumi::fitPercent(m_it->room(), kPhoto);
    const QImage shot = m_it->shot();
    // A percent of the photo is two of the raster, which has half its size.
    const int width = kPhoto.width() / 2 * (fit * 2) / 100;
    const int height = kPhoto.height() / 2 * (fit * 2) / 100;
    const QRect place((shot.width() - width) / 2, (shot.height() - height) / 2, width, height);
    const int inside = kMark * fit / 100 - 4;
    for (const int step : {1, inside}) {
        const QRect near = place.adjusted(step, step, -step, -step);
        QVERIFY(isNear(shot.pixel(near.topLeft()), kTopLeft));
        QVERIFY(isNear(shot.pixel(near.topRight()), kTopRight));
        QVERIFY(isNear(shot.pixel(near.bottomLeft()), kBottomLeft));
        QVERIFY(isNear(shot.pixel(near.bottomRight()), kBottomRight));
    }
    QVERIFY(isNear(shot.pixel(place.center()), kGround));
    m_it->close();
}

void TestViewedPhotos::aPhotoOnItsSide_data()
{
    lumi::test::columns<bool>();
    QTest::newRow("upright") << true;
    QTest::newRow("as stored") << false;
}

/// The camera was held with its right side down.
void TestViewedPhotos::aPhotoOnItsSide()
{
    const bool isUpright = std::get<0>(lumi::test::row<bool>());
    m_it->world.machine->upright = isUpright;
    QBuffer jpeg;
    QVERIFY(markedPhoto().save(&jpeg, "JPEG", 100));
    FPVItemJpeg *item = addFile(lumi::test::ExifBuilder()
                                    .shorts(ExifListKind::Ifd0, 0x0112, {6})
                                    .photo(jpeg.data())
                                    .file());
    m_it->open(item);
    const QSize shown = isUpright ? kPhoto.transposed() : kPhoto;
    QCOMPARE(m_it->sizeLabel()->text(), QString::asprintf("%d*%d ", shown.width(), shown.height()));
    QSize decoded;
    QVERIFY(item->decodedRaster(32, &decoded) != nullptr);
    // The bar counts the lines that are read.
    QCOMPARE(m_it->bar()->maximum(), isUpright ? decoded.width() : decoded.height());
    QVERIFY(m_it->waitForLook());
    const int fit = *lumi::fitPercent(m_it->room(), shown);
    QRect place(QPoint(), shown * fit / 100);
    place.moveCenter(m_it->shot().rect().center());
    place.adjust(4, 4, -4, -4);
    const QImage shot = m_it->shot();
    QVERIFY(isNear(shot.pixel(place.topLeft()), isUpright ? kBottomLeft : kTopLeft));
    QVERIFY(isNear(shot.pixel(place.topRight()), isUpright ? kTopLeft : kTopRight));
    QVERIFY(isNear(shot.pixel(place.bottomRight()), isUpright ? kTopRight : kBottomRight));
    QVERIFY(isNear(shot.pixel(place.bottomLeft()), isUpright ? kBottomRight : kBottomLeft));
    m_it->close();
}

void TestViewedPhotos::cornersWhenLarger_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("100 percent, 16 bits") << 16 << 100;
    QTest::newRow("400 percent, 32 bits") << 32 << 400;
}

void TestViewedPhotos::cornersWhenLarger()
{
    const auto [depth, percent] = lumi::test::row<int, int>();
    m_it->world.machine->depth = depth;
    const QString path = m_it->world.path(QStringLiteral("marked.jpg"));
    QVERIFY(markedPhoto().save(path, "JPEG", 100));
    FPVItemJpeg item(path, QString(), false);
    m_it->open(&item);
    zoomTo(percent);
    constexpr int kEnough = 14;
    QVERIFY(isNear(corners().at(0), kTopLeft));
    press(Qt::Key_Right, kEnough);
    QVERIFY(isNear(corners().at(1), kTopRight));
    press(Qt::Key_Down, kEnough);
    QVERIFY(isNear(corners().at(3), kBottomRight));
    press(Qt::Key_Left, kEnough);
    QVERIFY(isNear(corners().at(2), kBottomLeft));
    // The mark must end here.
    const QImage shot = m_it->shot();
    const int end = kMark * percent / 100;
    QVERIFY(end + 16 < shot.height());
    QVERIFY(isNear(shot.pixel(end - 8, shot.height() - end + 8), kBottomLeft));
    QVERIFY(isNear(shot.pixel(end + 8, shot.height() - end + 8), kGround));
    QVERIFY(isNear(shot.pixel(end - 8, shot.height() - end - 8), kGround));
    press(Qt::Key_Up, kEnough);
    QVERIFY(isNear(corners().at(0), kTopLeft));
    m_it->close();
}

void TestViewedPhotos::marginsAreGray_data()
{
    lumi::test::columns<int, QRgb>();
    // The five and six bits of 0x8410, widened to eight.
    QTest::newRow("16 bits") << 16 << QRgb(0xFF848284U);
    QTest::newRow("32 bits") << 32 << QRgb(0xFF808080U);
}

void TestViewedPhotos::marginsAreGray()
{
    const auto [depth, gray] = lumi::test::row<int, QRgb>();
    m_it->world.machine->depth = depth;
    FPVItemJpeg *item = addFile(lumi::test::makeJpeg({.size = QSize(100, 300), .plain = true}));
    m_it->open(item);
    QVERIFY(m_it->waitForLook());
    QCOMPARE(corners(), QList<QRgb>({gray, gray, gray, gray}));
}

bool TestViewedPhotos::seeIt(FPVItemImage *item, bool alsoFull)
{
    m_sizes.clear();
    m_it->open(item);
    bool isDone = false;
    int toSee = alsoFull ? 2 : 1;
    QTimer steps;
    connect(&steps, &QTimer::timeout, m_it->viewer.get(), [this, item, &isDone, &toSee] {
        if (m_it->isDecoding()) {
            return;
        }
        QSize size;
        m_sizes.append(item->decodedRaster(m_it->world.machine->depth, &size) ? size : QSize());
        if (--toSee > 0) {
            m_it->viewer->zoomIn();
            return;
        }
        isDone = true;
        m_whileSeen();
        m_it->viewer->hide();
    });
    steps.start(5);
    const bool closed = m_it->run(20000);
    m_it->close();
    return closed && (isDone || !m_it->boxes.texts.isEmpty());
}

QString TestViewedPhotos::screenFault(const Decoded &decoded) const
{
    const int percent = m_it->percent()->text().chopped(1).toInt();
    const QImage shot = m_it->shot();
    const auto across = lumi::zoomPlacement(decoded.size.width(), percent, 0, shot.width());
    const auto down = lumi::zoomPlacement(decoded.size.height(), percent, 0, shot.height());
    const QRect place(across.margin, down.margin, across.shown, down.shown);
    for (int y = 0; y < shot.height(); ++y) {
        for (int x = 0; x < shot.width(); ++x) {
            const int column = lumi::zoomedPixel(0, x - place.x(), percent);
            const int line = lumi::zoomedPixel(0, y - place.y(), percent);
            const QRgb wanted = place.contains(x, y)
                ? lumi::test::expectedPixel(decoded, column, line, 32)
                : kMarginColour;
            if (shot.pixel(x, y) != wanted) {
                return QString::asprintf("column %d line %d: %08x instead of %08x", x, y,
                                         shot.pixel(x, y), wanted);
            }
        }
    }
    return {};
}

void TestViewedPhotos::extremeSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("kilobytes");
    QTest::addColumn<QSize>("full"); // of the raster, empty where there is a box instead
    constexpr int kPlenty = 100000;
    QTest::newRow("a line") << QSize(20000, 1) << kPlenty << QSize(20000, 1);
    QTest::newRow("a column") << QSize(1, 20000) << kPlenty << QSize(1, 20000);
    QTest::newRow("one pixel") << QSize(1, 1) << kPlenty << QSize(1, 1);
    QTest::newRow("the most pixels that are decoded whole")
        << QSize(4095, 2048) << kPlenty << QSize(4095, 2048);
    QTest::newRow("no memory for the full size") << QSize(4095, 2048) << 16000 << QSize();
    QTest::newRow("no memory at all") << QSize(4095, 2048) << 2100 << QSize();
}

void TestViewedPhotos::extremeSizes()
{
    QFETCH(QSize, size);
    QFETCH(int, kilobytes);
    QFETCH(QSize, full);
    const Silence silence;
    FPVItemJpeg *item = addFile(lumi::test::makeJpeg({.size = size, .plain = true}));
    item->setIncremental(size.height() < kPatientLines || size.width() > kPatientLines);
    m_it->world.machine->setMemoryKB(kilobytes);
    const QSignalSpy completes(item, &FPVItemImage::decodeComplete);
    int onScreen = 0;
    int margin = 0;
    int pixels = 0;
    m_whileSeen = [this, &onScreen, &margin, &pixels] {
        pixels = m_it->room().width() * m_it->room().height();
        onScreen = m_it->count(kPlainColour);
        margin = m_it->count(kMarginColour);
    };
    QVERIFY(seeIt(item, true));
    if (full.isEmpty()) {
        QCOMPARE(m_it->boxes.texts, QStringList(kMemoryBox));
        return;
    }
    QCOMPARE(m_it->boxes.texts, QStringList());
    QCOMPARE(m_sizes.size(), 2);
    QCOMPARE(m_sizes.last(), full);
    // A photo at its greatest zoom is not decoded again.
    QCOMPARE(completes.count(), size == QSize(1, 1) ? 1 : 2);
    QVERIFY(onScreen > 0);
    QCOMPARE(onScreen + margin, pixels);
}

void TestViewedPhotos::brokenFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("opens");
    const QByteArray whole = lumi::test::makeJpeg({.size = QSize(800, 600)});
    const QByteArray scans = lumi::test::makeJpeg({.size = QSize(800, 600), .progressive = true});
    QTest::newRow("too many scans")
        << lumi::test::makeJpeg({.size = QSize(80, 60), .progressiveScans = 501}) << false;
    QByteArray damaged = whole;
    for (qsizetype i = whole.size() / 2; i < whole.size() / 2 + 400; ++i) {
        damaged[i] = static_cast<char>(i * 37);
    }
    QTest::newRow("whole") << whole << true;
    QTest::newRow("cut in the middle") << whole.first(whole.size() / 2) << true;
    QTest::newRow("progressive, cut in the middle") << scans.first(scans.size() / 2) << true;
    QTest::newRow("damaged in the middle") << damaged << true;
    QTest::newRow("cut in the header") << whole.first(100) << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("no photo") << QByteArray("this is no photo") << false;
}

void TestViewedPhotos::brokenFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, opens);
    const Silence silence;
    const Decoded decoded = opens ? lumi::test::referenceDecode(bytes) : Decoded();
    QString fault = QStringLiteral("nothing was seen");
    m_whileSeen = [this, &decoded, &fault] {
        fault = screenFault(decoded);
    };
    QVERIFY(seeIt(addFile(bytes), true));
    QCOMPARE(m_it->boxes.texts, opens ? QStringList() : QStringList(kOpenBox));
    if (opens) {
        QCOMPARE(fault, QString());
        QCOMPARE(m_sizes.last(), QSize(800, 600));
    }
}

void TestViewedPhotos::aFileDeletedWhileShown()
{
    const Silence silence;
    FPVItemJpeg *item = addFile(lumi::test::makeJpeg({.size = kPhoto, .plain = true}));
    m_it->open(item);
    QVERIFY(m_it->waitForLook());
    QVERIFY(QFile::remove(item->path()));
    // The picture stays on the screen. Only a decode needs the file.
    m_it->viewer->zoomOut();
    QVERIFY(m_it->viewer->isVisible());
    m_it->viewer->fix();
    m_it->viewer->zoomIn();
    QVERIFY(!m_it->viewer->isVisible());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
}

void TestViewedPhotos::anErrorInAnyLine_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("the first line") << 0 << true;
    // The decode fails before the event loop of the window runs.
    QTest::newRow("a line of a decode without pauses") << 100 << false;
}

void TestViewedPhotos::anErrorInAnyLine()
{
    const auto [line, pauses] = lumi::test::row<int, bool>();
    const Silence silence;
    FPVItemJpeg *item = addFile(lumi::test::makeJpeg({.size = QSize(800, 600)}));
    item->setIncremental(pauses);
    lumi::test::LibraryFaults faults;
    faults.failJpegFromLine(line);
    QVERIFY(seeIt(item, false));
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
    QVERIFY(item->rasterBits() == nullptr);
}

void TestViewedPhotos::leavingDuringADecode()
{
    FPVItemJpeg *item = addFile(lumi::test::makeJpeg({.size = QSize(4095, 2048), .plain = true}));
    m_it->open(item);
    QTimer::singleShot(30, m_it->viewer.get(), [this] {
        m_it->key(Qt::Key_Escape);
    });
    QVERIFY(m_it->run());
    QVERIFY(m_it->isDecoding());
    m_it->close();
    QVERIFY(item->rasterBits() == nullptr);
    QCOMPARE(lumi::test::liveDecompressors(), 0);
}

LUMI_TEST(TestViewedPhotos)
#include "TestViewedPhotos.moc"
