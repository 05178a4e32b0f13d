// SPDX-License-Identifier: MIT
#include "exif/read/FPVExifDocument.h"
#include "items/FPVItemJpeg.h"
#include "tests/items/BareDecoder.h"
#include "tests/items/LibraryFaults.h"
#include "tests/items/ThumbnailTest.h"
#include "tests/items/WorstHeaders.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QImage>
#include <QPixmap>
#include <QTest>

#include <memory>

using lumi::DecodeError;
using lumi::test::JpegKind;
using lumi::test::MessageLog;

/// The cost of thumbnails: memory and time for photos of several scans and for headers with extreme
/// values.
class TestWorstHeaders : public lumi::test::ThumbnailTest
{
    Q_OBJECT

private Q_SLOTS:
    void thereAreMany();
    void thumbnails_data();
    void thumbnails();
    void embeddedPictures_data();
    void embeddedPictures();
    void ordinaryPreviewsAreDecoded_data();
    void ordinaryPreviewsAreDecoded();
    void aPreviewOfSeveralScansNeedsMemory();
    void photosOfTwelveMegapixelsAreDecoded_data();
    void photosOfTwelveMegapixelsAreDecoded();
    void theLimitOfHeldMemory_data();
    void theLimitOfHeldMemory();
    void heldMemoryIsCheckedBeforeTheDecode_data();
    void heldMemoryIsCheckedBeforeTheDecode();
    void theLimitOfBlocksRead_data();
    void theLimitOfBlocksRead();
    void theScreenMayReadMore();

private:
    QString put(const QByteArray &bytes) const;
};

Q_DECLARE_METATYPE(lumi::test::JpegKind)

namespace {

constexpr int kPlentyKB = 1024 * 1024 * 1024;
constexpr int kKeptBackKB = 2048; // never counted as free
constexpr QSize kCell(171, 119);

std::unique_ptr<QPixmap> thumbnailOf(const QString &path)
{
    FPVItemJpeg item(path, QString(), false);
    return std::unique_ptr<QPixmap>(item.thumbnail(kCell.width(), kCell.height()));
}

void addHeaders()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const lumi::test::HostileFile &file : lumi::test::worstHeaders()) {
        QTest::newRow(file.name.constData()) << file.bytes;
    }
    QTest::newRow("2048 x 1024, 100 slow arithmetic scans")
        << lumi::test::makeArithmeticBomb(QSize(2048, 1024), 100);
    QTest::newRow("640 x 480, 500 slow arithmetic scans")
        << lumi::test::makeArithmeticBomb(QSize(640, 480), 500);
}

/// A photo with this embedded thumbnail after its end.
QByteArray photoWithPreview(const QByteArray &preview)
{
    const auto photo = [&preview](qsizetype place) {
        lumi::test::ExifBuilder builder;
        builder.shorts(ExifListKind::Ifd0, 0x0112, {1})
            .longs(ExifListKind::Ifd1, 0x0201, {quint32(place)})
            .longs(ExifListKind::Ifd1, 0x0202, {quint32(preview.size())});
        return builder.file();
    };
    constexpr int kBeforeBlock = 12; // the places count from there
    return photo(photo(0).size() - kBeforeBlock) + preview;
}

} // namespace

QString TestWorstHeaders::put(const QByteArray &bytes) const
{
    m_fixture->machine->setMemoryKB(kPlentyKB);
    QString path = m_fixture->addPhoto(QStringLiteral("p/a.jpg"));
    lumi::test::writeFile(path, bytes);
    return path;
}

void TestWorstHeaders::thereAreMany()
{
    const auto files = lumi::test::worstHeaders();
    QVERIFY(files.size() >= 40);
    for (const lumi::test::HostileFile &file : files) {
        QVERIFY2(file.bytes.size() < 50000, file.name.constData());
    }
}

void TestWorstHeaders::thumbnails_data()
{
    addHeaders();
}

void TestWorstHeaders::thumbnails()
{
    QFETCH(QByteArray, bytes);
    const QString path = put(bytes);
    const MessageLog log;
    const QString fault = lumi::test::faultOfCost([&path] {
        (void)thumbnailOf(path);
    });
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void TestWorstHeaders::embeddedPictures_data()
{
    addHeaders();
}

void TestWorstHeaders::embeddedPictures()
{
    QFETCH(QByteArray, bytes);
    const QString path = put(photoWithPreview(bytes));
    const MessageLog log;
    const QString fault = lumi::test::faultOfCost([&path] {
        const std::unique_ptr<QImage> image(FPVExifDocument::thumbnail(path));
    });
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

void TestWorstHeaders::ordinaryPreviewsAreDecoded_data()
{
    lumi::test::columns<QByteArray, bool>();
    const QSize size(160, 120);
    const QByteArray baseline = lumi::test::makeJpeg({.size = size});
    QTest::newRow("baseline") << baseline << true;
    QTest::newRow("gray") << lumi::test::makeJpeg({.size = size, .components = 1}) << true;
    QTest::newRow("progressive") << lumi::test::makeJpeg({.size = size, .progressive = true})
                                 << true;
    QTest::newRow("of two megapixels")
        << lumi::test::makeJpeg({.size = QSize(1600, 1200), .progressive = true, .plain = true})
        << true;
    QTest::newRow("with a comment of marks")
        << QByteArray(baseline).insert(2, QByteArray("\xff\xfe\0\x06\xff\xc9\xff\xca", 8)) << true;
    QTest::newRow("arithmetic-coded")
        << lumi::test::makeJpeg({.size = size, .arithmetic = true}) << false;
    QTest::newRow("arithmetic-coded progressive")
        << lumi::test::makeJpeg({.size = size, .progressive = true, .arithmetic = true}) << false;
    const QByteArray arithmetic = lumi::test::makeJpeg({.size = size, .arithmetic = true});
    QTest::newRow("arithmetic-coded behind a gap")
        << QByteArray(arithmetic).insert(2, '\0') << false;
}

void TestWorstHeaders::ordinaryPreviewsAreDecoded()
{
    const auto [preview, passes] = lumi::test::row<QByteArray, bool>();
    const std::unique_ptr<QImage> image(FPVExifDocument::thumbnail(put(photoWithPreview(preview))));
    QCOMPARE(image != nullptr, passes);
}

/// The decoder holds the whole picture.
void TestWorstHeaders::aPreviewOfSeveralScansNeedsMemory()
{
    for (const bool isProgressive : {false, true}) {
        const int needKB = 1024 * 512 * (isProgressive ? 12 : 4) / 1024 + 1024;
        const QString path = put(photoWithPreview(lumi::test::makeJpeg(
            {.size = QSize(1024, 512), .progressive = isProgressive, .plain = true})));
        m_fixture->machine->setMemoryKB(needKB + kKeptBackKB - 1);
        QVERIFY(!std::unique_ptr<QImage>(FPVExifDocument::thumbnail(path)));
        m_fixture->machine->setMemoryKB(needKB + kKeptBackKB);
        QVERIFY(std::unique_ptr<QImage>(FPVExifDocument::thumbnail(path)));
    }
}

void TestWorstHeaders::photosOfTwelveMegapixelsAreDecoded_data()
{
    QTest::addColumn<JpegKind>("kind");
    const JpegKind photo{.size = QSize(4000, 3000), .progressive = true, .plain = true};
    for (const QSize sampling : {QSize(1, 1), QSize(2, 2), QSize(1, 4)}) {
        JpegKind kind = photo;
        kind.sampling = sampling;
        QTest::addRow("sampled %d x %d", sampling.width(), sampling.height()) << kind;
    }
    JpegKind four = photo;
    four.components = 4;
    QTest::newRow("four components") << four;
    JpegKind sequential = photo;
    sequential.progressive = false;
    sequential.separateScans = true;
    sequential.sampling = QSize(1, 1);
    QTest::newRow("a scan for each component") << sequential;
}

void TestWorstHeaders::photosOfTwelveMegapixelsAreDecoded()
{
    QFETCH(JpegKind, kind);
    const std::unique_ptr<QPixmap> pixmap = thumbnailOf(put(lumi::test::makeJpeg(kind)));
    QVERIFY(pixmap);
}

void TestWorstHeaders::theLimitOfHeldMemory_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("96 MB") << 4096 << true;
    QTest::newRow("a row of blocks more") << 4097 << false;
}

/// 3 x 2 bytes a pixel. The header can be read in both cases.
void TestWorstHeaders::theLimitOfHeldMemory()
{
    const auto [height, passes] = lumi::test::row<int, bool>();
    const QByteArray bytes = lumi::test::makeJpeg(
        {.size = QSize(64, 64), .sampling = QSize(1, 1), .progressive = true, .plain = true});
    FPVItemJpeg item(put(lumi::test::withSize(bytes, 4096, height)), QString(), false);
    const MessageLog log;
    const lumi::test::PeakMemory memory;
    const std::unique_ptr<QImage> image(item.scaledImage(100, 100));
    QCOMPARE(image != nullptr, passes);
    QCOMPARE(item.errorCode(), passes ? DecodeError::None : DecodeError::OutOfMemory);
    QVERIFY(passes || memory.growthKB() < 8192);
    QCOMPARE(item.imageSize(), QSize(4096, height));
    // The screen decode is limited by the free memory only.
    item.setIncremental(false);
    QVERIFY(item.startDecode(16, nullptr, nullptr));
}

void TestWorstHeaders::heldMemoryIsCheckedBeforeTheDecode_data()
{
    QTest::addColumn<bool>("isThumbnail");
    QTest::newRow("a thumbnail") << true;
    QTest::newRow("the screen") << false;
}

/// The estimate by pixels applies to progressive photos only.
void TestWorstHeaders::heldMemoryIsCheckedBeforeTheDecode()
{
    QFETCH(bool, isThumbnail);
    constexpr int kNeedKB = 4096 * 2048 * 3 * 2 / 1024;
    const QByteArray bytes = lumi::test::makeJpeg(
        {.size = QSize(64, 64), .sampling = QSize(1, 1), .separateScans = true, .plain = true});
    FPVItemJpeg item(put(lumi::test::withSize(bytes, 4096, 2048)), QString(), false);
    item.setIncremental(false);
    const auto decode = [&item, isThumbnail] {
        if (!isThumbnail) {
            QSize request(100, 50);
            return item.startDecode(32, nullptr, &request);
        }
        return std::unique_ptr<QImage>(item.scaledImage(100, 50)) != nullptr;
    };
    const MessageLog log;
    m_fixture->machine->setMemoryKB(kNeedKB + kKeptBackKB - 1);
    const lumi::test::PeakMemory memory;
    QVERIFY(!decode());
    QCOMPARE(item.errorCode(), DecodeError::OutOfMemory);
    QVERIFY(memory.growthKB() < 8192);
    m_fixture->machine->setMemoryKB(kNeedKB + kKeptBackKB);
    QVERIFY(decode());
}

void TestWorstHeaders::theLimitOfBlocksRead_data()
{
    lumi::test::columns<QByteArray, bool>();
    const QByteArray gray = lumi::test::makeJpeg({.size = QSize(64, 64), .components = 1});
    // 2172 blocks each way
    QTest::newRow("the largest photo of one scan")
        << lumi::test::withSize(gray, 17376, 17376) << true;
    QTest::newRow("a column of blocks more") << lumi::test::withSize(gray, 17392, 17376) << false;
    // 32768 blocks a scan
    QTest::newRow("144 scans") << lumi::test::emptyScans(2048, 1024, 144) << true;
    QTest::newRow("145 scans") << lumi::test::emptyScans(2048, 1024, 145) << false;
    const QByteArray arithmetic
        = lumi::test::makeJpeg({.size = QSize(64, 64), .components = 1, .arithmetic = true});
    QTest::newRow("the largest arithmetic-coded photo")
        << lumi::test::withSize(arithmetic, 6144, 6144) << true;
    QTest::newRow("an arithmetic-coded one of a column more")
        << lumi::test::withSize(arithmetic, 6145, 6144) << false;
}

void TestWorstHeaders::theLimitOfBlocksRead()
{
    const auto [bytes, passes] = lumi::test::row<QByteArray, bool>();
    FPVItemJpeg item(put(bytes), QString(), false);
    const MessageLog log;
    const std::unique_ptr<QImage> image(item.scaledImage(100, 100));
    QCOMPARE(image != nullptr, passes);
    QCOMPARE(item.errorCode(), passes ? DecodeError::None : DecodeError::Undecodable);
    QCOMPARE(log.warnings.contains(QStringLiteral("JPEG file with too many scans")), !passes);
}

/// A photo that is too expensive for a thumbnail can still be viewed.
void TestWorstHeaders::theScreenMayReadMore()
{
    const MessageLog log;
    // 262144 blocks a scan
    for (const int scans : {256, 257}) {
        FPVItemJpeg item(put(lumi::test::emptyScans(4096, 4096, scans)), QString(), false);
        item.setIncremental(false);
        QCOMPARE(item.startDecode(16, nullptr, nullptr), scans == 256);
    }
}

LUMI_TEST(TestWorstHeaders)
#include "TestWorstHeaders.moc"
