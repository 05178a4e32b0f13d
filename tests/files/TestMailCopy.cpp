// SPDX-License-Identifier: MIT
// Mail-sized copies: their names and sizes, and failures to write them.
#include "files/mailCopy.h"
#include "items/FPVItemJpeg.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/BrowserWorld.h"

#include <QBuffer>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageWriter>
#include <QTest>
#include <QtEndian>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QDate kDay(2026, 1, 11);
constexpr qint64 kPlentyKB = qint64(1024) * 1024;

/// Fine stripes, which show whether the picture was scaled.
QImage stripes(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixel(x, y, qRgb((x * 37) & 255, (y * 91) & 255, (x + y) & 255));
        }
    }
    return image;
}

/// Red on the left, blue on the right.
QImage halves(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = size.width() / 2; x < size.width(); ++x) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    return image;
}

/// Whether the corners of the picture have the colours of halves().
bool areHalves(const QImage &image)
{
    const int right = image.width() * 3 / 4;
    const int bottom = image.height() - 1;
    const auto isRed = [](QColor colour) {
        return colour.red() > 200 && colour.blue() < 50;
    };
    const auto isBlue = [](QColor colour) {
        return colour.blue() > 200 && colour.red() < 50;
    };
    const int left = image.width() / 4;
    return isRed(image.pixelColor(left, 0)) && isRed(image.pixelColor(left, bottom))
        && isBlue(image.pixelColor(right, 0)) && isBlue(image.pixelColor(right, bottom));
}

/// Reads the segments before the scan.
bool hasExifSegment(const QByteArray &jpeg)
{
    constexpr int kMarkerBytes = 2;
    qsizetype at = kMarkerBytes;
    while (at + 2 * kMarkerBytes <= jpeg.size() && jpeg.at(at) == '\xFF'
           && jpeg.at(at + 1) != '\xDA') {
        if (jpeg.at(at + 1) == '\xE1') {
            return true;
        }
        at += kMarkerBytes + qFromBigEndian<quint16>(jpeg.constData() + at + kMarkerBytes);
    }
    return false;
}

QByteArray asJpeg(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG");
    return bytes;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestMailCopy : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<lumi::test::BrowserWorld>(); }

    void cleanup() { m_world.reset(); }

    void theFolderIsInThePhotoStore();
    void namesAreMadeOfDayAndNumber_data();
    void namesAreMadeOfDayAndNumber();
    void theFirstFreeNumberIsTaken();
    void aDayHas999Copies();
    void imagesFitTheScreen_data();
    void imagesFitTheScreen();
    void smallPhotosAreLoadedWhole();
    void anotherFormatUnderThePhotosNameIsLoaded();
    void aLargePictureOfAnotherFormatIsMadeSmall_data();
    void aLargePictureOfAnotherFormatIsMadeSmall();
    void aPhotoThatWasRefusedForMemoryGivesNone();
    void aLargePictureOfAnotherFormatAsksForMemoryToo();
    void theKeptProportionsAreThePhotos_data();
    void theKeptProportionsAreThePhotos();
    void exifDataIsNoPartOfTheCopy_data();
    void exifDataIsNoPartOfTheCopy();
    void whatIsNoPictureGivesNone_data();
    void whatIsNoPictureGivesNone();
    void theCopyIsAPlainJpeg();
    void theFolderIsMadeOnFirstUse();
    void aFailedSaveLeavesNothing_data();
    void aFailedSaveLeavesNothing();
    void anExistingFileIsNeverTouched();

private:
    std::unique_ptr<lumi::test::BrowserWorld> m_world;
};

void TestMailCopy::theFolderIsInThePhotoStore()
{
    QCOMPARE(lumi::mailFolderPath(), QString(m_world->store + QStringLiteral("/mail")));
}

void TestMailCopy::namesAreMadeOfDayAndNumber_data()
{
    lumi::test::columns<QDate, int, QString>();
    QTest::newRow("only the number is padded")
        << QDate(2026, 3, 4) << 1 << QStringLiteral("!202634_001.jpg");
    QTest::newRow("the eleventh of January")
        << QDate(2026, 1, 11) << 42 << QStringLiteral("!2026111_042.jpg");
    QTest::newRow("the first of November has the same prefix")
        << QDate(2026, 11, 1) << 42 << QStringLiteral("!2026111_042.jpg");
    QTest::newRow("the last number and the longest date")
        << QDate(2026, 12, 31) << 999 << QStringLiteral("!20261231_999.jpg");
}

void TestMailCopy::namesAreMadeOfDayAndNumber()
{
    const auto [date, number, name] = lumi::test::row<QDate, int, QString>();
    QCOMPARE(lumi::mailFileName(date, number), name);
}

void TestMailCopy::theFirstFreeNumberIsTaken()
{
    const QString folder = lumi::mailFolderPath() + QLatin1Char('/');
    QCOMPARE(lumi::freeMailPath(kDay), QString(folder + QStringLiteral("!2026111_001.jpg")));
    m_world->makeFile(QStringLiteral("mail/!2026111_001.jpg"), "x");
    m_world->makeFile(QStringLiteral("mail/!2026111_003.jpg"), "x");
    // A copy of another day with the same prefix takes its number.
    QCOMPARE(lumi::freeMailPath(QDate(2026, 11, 1)),
             QString(folder + QStringLiteral("!2026111_002.jpg")));
    m_world->makeFolder(QStringLiteral("mail/!2026111_002.jpg"));
    QCOMPARE(lumi::freeMailPath(kDay), QString(folder + QStringLiteral("!2026111_004.jpg")));
    // So does a broken link.
    QVERIFY(QFile::link(QStringLiteral("gone"),
                        m_world->path(QStringLiteral("mail/!2026111_004.jpg"))));
    QCOMPARE(lumi::freeMailPath(kDay), QString(folder + QStringLiteral("!2026111_005.jpg")));
}

void TestMailCopy::aDayHas999Copies()
{
    for (int i = 1; i <= 999; ++i) {
        m_world->makeFile(QStringLiteral("mail/") + lumi::mailFileName(kDay, i), QByteArray());
    }
    QVERIFY(lumi::freeMailPath(kDay).isNull());
    QVERIFY(QFile::remove(m_world->path(QStringLiteral("mail/") + lumi::mailFileName(kDay, 999))));
    QVERIFY(lumi::freeMailPath(kDay).endsWith(QStringLiteral("_999.jpg")));
}

void TestMailCopy::imagesFitTheScreen_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("exactly the limit") << QSize(640, 480) << QSize(640, 480);
    QTest::newRow("small") << QSize(80, 60) << QSize(80, 60);
    QTest::newRow("one column too wide") << QSize(641, 480) << QSize(640, 479);
    QTest::newRow("one row too high") << QSize(640, 481) << QSize(639, 480);
    QTest::newRow("portrait of the same pixels") << QSize(480, 640) << QSize(360, 480);
    QTest::newRow("landscape") << QSize(1600, 1200) << QSize(640, 480);
    QTest::newRow("panorama") << QSize(2000, 100) << QSize(640, 32);
}

void TestMailCopy::imagesFitTheScreen()
{
    const auto [photo, copy] = lumi::test::row<QSize, QSize>();
    FPVItemJpeg item(m_world->makePhoto(QStringLiteral("a.jpg"), photo), QString(), false);
    QCOMPARE(lumi::mailImage(&item).size(), copy);
}

void TestMailCopy::smallPhotosAreLoadedWhole()
{
    const QString path
        = m_world->makeFile(QStringLiteral("a.jpg"), asJpeg(stripes(QSize(640, 480))));
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(lumi::mailImage(&item), QImage(path));
    const QString wide
        = m_world->makeFile(QStringLiteral("b.jpg"), asJpeg(stripes(QSize(641, 480))));
    FPVItemJpeg wideItem(wide, QString(), false);
    const std::unique_ptr<QImage> scaled(wideItem.scaledImage(640, 479));
    QVERIFY(scaled != nullptr);
    QCOMPARE(lumi::mailImage(&wideItem), *scaled);
}

void TestMailCopy::anotherFormatUnderThePhotosNameIsLoaded()
{
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(stripes(QSize(90, 50)).save(path, "PNG"));
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(lumi::mailImage(&item).size(), QSize(90, 50));
}

void TestMailCopy::aLargePictureOfAnotherFormatIsMadeSmall_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("exactly the limit") << QSize(640, 480) << QSize(640, 480);
    QTest::newRow("one column too wide") << QSize(641, 480) << QSize(640, 479);
    QTest::newRow("landscape") << QSize(2000, 1500) << QSize(640, 480);
    QTest::newRow("portrait") << QSize(600, 1200) << QSize(240, 480);
}

void TestMailCopy::aLargePictureOfAnotherFormatIsMadeSmall()
{
    const auto [picture, copy] = lumi::test::row<QSize, QSize>();
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(halves(picture).save(path, "PNG"));
    FPVItemJpeg item(path, QString(), false);
    const QImage image = lumi::mailImage(&item);
    QCOMPARE(image.size(), copy);
    QVERIFY(areHalves(image));
}

void TestMailCopy::aPhotoThatWasRefusedForMemoryGivesNone()
{
    const QString path = m_world->path(QStringLiteral("a.jpg"));
    QImageWriter writer(path, "jpeg");
    writer.setProgressiveScanWrite(true);
    QVERIFY(writer.write(halves(QSize(1600, 1200))));
    FPVItemJpeg item(path, QString(), false);
    m_world->machine->setMemoryKB(0);
    QVERIFY(lumi::mailImage(&item).isNull());
    // The image library alone would load it.
    QCOMPARE(QImage(path).size(), QSize(1600, 1200));
    m_world->machine->setMemoryKB(kPlentyKB);
    QCOMPARE(lumi::mailImage(&item).size(), QSize(640, 480));
}

void TestMailCopy::aLargePictureOfAnotherFormatAsksForMemoryToo()
{
    const QString large = m_world->path(QStringLiteral("a.jpg"));
    QVERIFY(halves(QSize(2000, 1500)).save(large, "PNG"));
    const QString small = m_world->path(QStringLiteral("b.jpg"));
    QVERIFY(halves(QSize(640, 480)).save(small, "PNG"));
    FPVItemJpeg largeItem(large, QString(), false);
    FPVItemJpeg smallItem(small, QString(), false);
    // 2000 x 1500 pixels of 4 bytes, and a megabyte.
    m_world->machine->setMemoryKB(11000);
    QVERIFY(lumi::mailImage(&largeItem).isNull());
    m_world->machine->setMemoryKB(0);
    QCOMPARE(lumi::mailImage(&smallItem).size(), QSize(640, 480));
    m_world->machine->setMemoryKB(20000);
    QCOMPARE(lumi::mailImage(&largeItem).size(), QSize(640, 480));
}

void TestMailCopy::theKeptProportionsAreThePhotos_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("those of a thumbnail of it") << QSize(80, 53) << QSize(640, 424);
    QTest::newRow("those of a smaller thumbnail") << QSize(40, 26) << QSize(640, 416);
    QTest::newRow("those of a portrait with the same name") << QSize(40, 60) << QSize(640, 427);
    QTest::newRow("those of a broader photo with the same name")
        << QSize(80, 45) << QSize(640, 427);
    QTest::newRow("those of a squarer photo with the same name")
        << QSize(80, 60) << QSize(640, 427);
}

void TestMailCopy::theKeptProportionsAreThePhotos()
{
    const auto [kept, copy] = lumi::test::row<QSize, QSize>();
    const QString folder = m_world->makeFolder(QStringLiteral(".photo_swp"));
    SwapSystem store(QFile::encodeName(folder), QStringLiteral(".swp"));
    swapSystem(&store);
    const QString path = m_world->makePhoto(QStringLiteral("a.jpg"), QSize(1500, 1000));
    QImage thumbnail(kept, QImage::Format_RGB32);
    thumbnail.fill(Qt::green);
    QVERIFY(SwapAppend(path, &thumbnail, kept.width(), 's'));
    QVERIFY(SwapSetSize(path, &kept));
    FPVItemJpeg item(path, QString(), false);
    QCOMPARE(lumi::mailImage(&item).size(), copy);
}

void TestMailCopy::exifDataIsNoPartOfTheCopy_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("a small photo, loaded whole") << QSize(200, 100) << QSize(100, 200);
    QTest::newRow("a large photo, made small") << QSize(1280, 640) << QSize(240, 480);
}

/// So the copy is upright by itself: it was turned to the right.
void TestMailCopy::exifDataIsNoPartOfTheCopy()
{
    const auto [photo, copy] = lumi::test::row<QSize, QSize>();
    const QByteArray file = lumi::test::ExifBuilder()
                                .ascii(ExifListKind::Ifd0, 0x010F, "A camera")
                                .shorts(ExifListKind::Ifd0, 0x0112, {6})
                                .photo(asJpeg(halves(photo)))
                                .file();
    QVERIFY(hasExifSegment(file));
    FPVItemJpeg item(m_world->makeFile(QStringLiteral("a.jpg"), file), QString(), false);
    const QString path = lumi::freeMailPath(kDay);
    QVERIFY(lumi::saveMailImage(lumi::mailImage(&item), path));
    QVERIFY(!hasExifSegment(contentOf(path)));
    const QImage mailed(path);
    QCOMPARE(mailed.size(), copy);
    QVERIFY(areHalves(mailed.transformed(QTransform().rotate(-90))));
}

void TestMailCopy::whatIsNoPictureGivesNone_data()
{
    lumi::test::columns<QByteArray, bool>();
    QTest::newRow("an empty file") << QByteArray() << false;
    QTest::newRow("a text") << QByteArray("no photo at all") << false;
    QTest::newRow("a large photo without pixels")
        << asJpeg(stripes(QSize(800, 600))).left(150) << false;
    QTest::newRow("a pipe in the photo's place") << QByteArray() << true;
}

void TestMailCopy::whatIsNoPictureGivesNone()
{
    const auto [content, isPipe] = lumi::test::row<QByteArray, bool>();
    const QString path = m_world->makeFile(QStringLiteral("a.jpg"), content);
    if (isPipe) {
        QVERIFY(QFile::remove(path));
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
    }
    FPVItemJpeg item(path, QString(), false);
    QVERIFY(lumi::mailImage(&item).isNull());
    FPVItemJpeg gone(m_world->path(QStringLiteral("gone.jpg")), QString(), false);
    QVERIFY(lumi::mailImage(&gone).isNull());
}

void TestMailCopy::theCopyIsAPlainJpeg()
{
    const QString path = m_world->path(QStringLiteral("mail/!1.jpg"));
    const QImage image = stripes(QSize(200, 100));
    QVERIFY(lumi::saveMailImage(image, path));
    // The bytes are those of QImage::save() with default quality.
    QCOMPARE(contentOf(path), asJpeg(image));
    QVERIFY(!contentOf(path).contains("Exif"));
}

void TestMailCopy::theFolderIsMadeOnFirstUse()
{
    QVERIFY(QDir(m_world->store).removeRecursively());
    QVERIFY(lumi::saveMailImage(stripes(QSize(8, 8)),
                                lumi::mailFolderPath() + QStringLiteral("/!1.jpg")));
    QVERIFY(QFileInfo(lumi::mailFolderPath()).isDir());
}

void TestMailCopy::aFailedSaveLeavesNothing_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("a file stands in the folder's place") << QStringLiteral("folder");
    QTest::newRow("a folder has the copy's name") << QStringLiteral("name");
    QTest::newRow("a broken link has the copy's name") << QStringLiteral("link");
    QTest::newRow("there is no image") << QStringLiteral("image");
}

void TestMailCopy::aFailedSaveLeavesNothing()
{
    QFETCH(QString, obstacle);
    const QString path = m_world->path(QStringLiteral("mail/!1.jpg"));
    const QString elsewhere = m_world->path(QStringLiteral("elsewhere"));
    QImage image = stripes(QSize(8, 8));
    if (obstacle == QLatin1String("folder")) {
        m_world->makeFile(QStringLiteral("mail"), "mine");
    } else if (obstacle == QLatin1String("name")) {
        m_world->makeFolder(QStringLiteral("mail/!1.jpg"));
    } else if (obstacle == QLatin1String("link")) {
        m_world->makeFolder(QStringLiteral("mail"));
        QCOMPARE(symlink(QFile::encodeName(elsewhere), QFile::encodeName(path)), 0);
    } else {
        image = QImage();
    }
    QVERIFY(!lumi::saveMailImage(image, path));
    QVERIFY(!QFileInfo(path).isFile());
    QVERIFY(!QFile::exists(elsewhere));
    if (obstacle == QLatin1String("folder")) {
        QCOMPARE(contentOf(m_world->path(QStringLiteral("mail"))), QByteArray("mine"));
    }
}

void TestMailCopy::anExistingFileIsNeverTouched()
{
    const QString path = m_world->makeFile(QStringLiteral("mail/!1.jpg"), "a copy of before");
    QVERIFY(!lumi::saveMailImage(stripes(QSize(8, 8)), path));
    QCOMPARE(contentOf(path), QByteArray("a copy of before"));
}

LUMI_TEST(TestMailCopy)
#include "TestMailCopy.moc"
