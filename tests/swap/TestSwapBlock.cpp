// SPDX-License-Identifier: MIT
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"
#include "swap/SwapBlock.h"
#include "swap/SwapPlace.h"
#include "tests/support/FullDisk.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QFileInfo>
#include <QImageReader>
#include <QTest>
#include <QtEndian>

#include <array>

#include <sys/stat.h>

using namespace lumi::test;

class TestSwapBlock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aNewBlockIsEmptyAndInvalid();
    void anImageIsStoredAsTheJpegThatQImageSaves_data();
    void anImageIsStoredAsTheJpegThatQImageSaves();
    void aPictureComesBackAsTheStoredJpeg();
    void tenMegabytesAreLeftFree_data();
    void tenMegabytesAreLeftFree();
    void theRoomIsThatOfTheDocuments();
    void anEmptySwapPathIsReported();
    void aChangedSourceIsAMissAndTheFileStays();
    void onlyWholeSecondsCount();
    void aTouchedSwapFileIsAMiss();
    void aVanishedSwapFileIsAMiss();
    void aDamagedSwapFileIsAMiss();
    void onlyWhatMayBeAThumbnailIsRead_data();
    void onlyWhatMayBeAThumbnailIsRead();
    void aGiantThatWasPlantedIsNotDecoded();
    void aNameThatPromisesDensePixelsChangesNothing();
    void aPipeIsNotWrittenTo();
    void aNullImageIsNotStored();
    void aNameThatIsTooLongIsNotStored();
    void aFullDiskLeavesNothingBehind_data();
    void aFullDiskLeavesNothingBehind();
    void destructionLeavesTheSwapFile();
    void aRecordFromTheIndexIsValidWhileBothFilesExist_data();
    void aRecordFromTheIndexIsValidWhileBothFilesExist();
    void aPipeIsNoSwapFile();
    void aCutRecordIsInvalidAndRemovesNothing();
    void traceOfAWriteAndARead();
    void traceOfABuffer();

private:
    [[nodiscard]] SwapBlock made() const;

    [[nodiscard]] QDateTime sourceTime() const { return QFileInfo(m_source).lastModified(); }

    std::unique_ptr<SwapFixture> m_fixture;
    QString m_source;
    QString m_swapPath;
};

namespace {

stSwap imageSwap(QImage *image)
{
    return {image, nullptr, 0, 100, 's'};
}

stSwap bufferSwap(unsigned char *buf, int size)
{
    return {nullptr, buf, size, 100, 0};
}

} // namespace

void TestSwapBlock::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    m_source = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    m_swapPath = m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp"));
}

void TestSwapBlock::cleanup()
{
    m_fixture.reset();
}

SwapBlock TestSwapBlock::made() const
{
    return {QStringLiteral("a.jpg"), m_swapPath, 100, 's'};
}

void TestSwapBlock::aNewBlockIsEmptyAndInvalid()
{
    const SwapBlock block = made();
    QVERIFY(!block.isValid());
    QCOMPARE(block.width(), -1);
    QCOMPARE(block.height(), -1);
    const lumi::BlockRecord record = block.record();
    QCOMPARE(record.sourceTime, 0);
    QCOMPARE(record.swapTime, 0);
    QCOMPARE(record.param, 100);
    QCOMPARE(record.kind, static_cast<signed char>('s'));
    QVERIFY(block.hasKey(QStringLiteral("a.jpg"), 100, 's'));
    QVERIFY(!block.hasKey(QStringLiteral("A.jpg"), 100, 's'));
    QVERIFY(!block.hasKey(QStringLiteral("a.jpg"), 101, 's'));
    QVERIFY(!block.hasKey(QStringLiteral("a.jpg"), 100, 'l'));
}

void TestSwapBlock::anImageIsStoredAsTheJpegThatQImageSaves_data()
{
    QTest::addColumn<QImage>("image");
    QTest::newRow("colours") << picture(171, 119);
    QTest::newRow("shades of gray") << picture(171, 119).convertToFormat(QImage::Format_Grayscale8);
    QTest::newRow("with transparency") << picture(64, 1).convertToFormat(QImage::Format_ARGB32);
    QTest::newRow("a palette") << picture(33, 21).convertToFormat(QImage::Format_Indexed8);
}

void TestSwapBlock::anImageIsStoredAsTheJpegThatQImageSaves()
{
    QFETCH(QImage, image);
    const QString reference = m_fixture->path(QStringLiteral("reference"));
    QVERIFY(image.save(reference, "JPEG"));
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    QVERIFY(block.isValid());
    QCOMPARE(readFile(m_swapPath), readFile(reference));
    QCOMPARE(block.record().sourceTime, static_cast<std::int32_t>(SwapFixture::kTime));
    QCOMPARE(static_cast<qint64>(block.record().swapTime),
             QFileInfo(m_swapPath).lastModified().toSecsSinceEpoch());
}

void TestSwapBlock::aPictureComesBackAsTheStoredJpeg()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    QImage loaded;
    swap = imageSwap(&loaded);
    QVERIFY(block.bRead(swap, sourceTime()));
    QCOMPARE(loaded, QImage(m_swapPath, "JPEG"));
    QCOMPARE(loaded.size(), image.size());
    QVERIFY(loaded != image);
}

void TestSwapBlock::tenMegabytesAreLeftFree_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<bool>("written");
    QTest::newRow("exactly 10240 KB: refused") << 10240 << false;
    QTest::newRow("10241 KB: written") << 10241 << true;
    QTest::newRow("nothing left: refused") << 0 << false;
}

void TestSwapBlock::tenMegabytesAreLeftFree()
{
    QFETCH(int, freeKB);
    QFETCH(bool, written);
    m_fixture->setFreeKB(freeKB);
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    const MessageLog log;
    QCOMPARE(block.bWrite(swap, sourceTime()), written);
    QCOMPARE(block.isValid(), written);
    QCOMPARE(QFile::exists(m_swapPath), written);
    const QString text = QStringLiteral("SwapBlock::bWrite() No Disc Space (%1 KB)").arg(freeKB);
    QCOMPARE(log.warnings, written ? QStringList() : QStringList(text));
    QCOMPARE(block.record().sourceTime, static_cast<std::int32_t>(SwapFixture::kTime));
}

void TestSwapBlock::theRoomIsThatOfTheDocuments()
{
    QByteArray asked;
    m_fixture->machine->diskAt = [&asked](const QByteArray &path) {
        asked = path;
        return DiskFigures();
    };
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    const MessageLog log;
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QCOMPARE(asked, QFile::encodeName(QDir::homePath()) + QByteArray("/Documents"));
    QCOMPARE(log.warnings,
             QStringList(QStringLiteral("SwapBlock::bWrite() No Disc Space (-1 KB)")));
}

void TestSwapBlock::anEmptySwapPathIsReported()
{
    QImage image = picture();
    SwapBlock block(QStringLiteral("a.jpg"), QString(), 100, 's');
    stSwap swap = imageSwap(&image);
    const MessageLog log;
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QVERIFY(!block.bRead(swap, sourceTime().addSecs(1)));
    QVERIFY(!block.bRead(swap, sourceTime()));
    QCOMPARE(log.warnings,
             QStringList({QStringLiteral("SwapBlock::bWrite() / Non String"),
                          QStringLiteral("SwapBlock::bRead() / Non String")}));
}

void TestSwapBlock::aChangedSourceIsAMissAndTheFileStays()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    const MessageLog log;
    QImage loaded;
    swap = imageSwap(&loaded);
    QVERIFY(!block.bRead(swap, sourceTime().addSecs(1)));
    QVERIFY(!block.bRead(swap, sourceTime().addSecs(-1)));
    QVERIFY(!block.bRead(swap, QDateTime()));
    QVERIFY(loaded.isNull());
    QVERIFY(QFile::exists(m_swapPath));
    QVERIFY(block.isValid());
    QVERIFY(log.warnings.isEmpty());
    QVERIFY(block.bRead(swap, sourceTime()));
}

void TestSwapBlock::onlyWholeSecondsCount()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, QDateTime::fromMSecsSinceEpoch(SwapFixture::kTime * 1000 + 700)));
    const qint64 swapSeconds = QFileInfo(m_swapPath).lastModified().toSecsSinceEpoch();
    setFileTime(m_swapPath, swapSeconds * 1000 + 5);
    QVERIFY(block.bRead(swap, QDateTime::fromMSecsSinceEpoch(SwapFixture::kTime * 1000)));
    QVERIFY(block.bRead(swap, QDateTime::fromMSecsSinceEpoch(SwapFixture::kTime * 1000 + 999)));
    QVERIFY(!block.bRead(swap, QDateTime::fromMSecsSinceEpoch(SwapFixture::kTime * 1000 + 1000)));
    QVERIFY(!block.bRead(swap, QDateTime::fromMSecsSinceEpoch(SwapFixture::kTime * 1000 - 1)));
}

void TestSwapBlock::aTouchedSwapFileIsAMiss()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    setFileTime(m_swapPath, written + 1000);
    QVERIFY(!block.bRead(swap, sourceTime()));
    QVERIFY(QFile::exists(m_swapPath));
    setFileTime(m_swapPath, written);
    QVERIFY(block.bRead(swap, sourceTime()));
}

void TestSwapBlock::aVanishedSwapFileIsAMiss()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    QVERIFY(QFile::remove(m_swapPath));
    QVERIFY(!block.bRead(swap, sourceTime()));
}

void TestSwapBlock::aDamagedSwapFileIsAMiss()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    for (const char *bytes : {"", "no picture", "\xff\xd8\xff"}) {
        QVERIFY(QFile::remove(m_swapPath));
        writeFile(m_swapPath, bytes);
        setFileTime(m_swapPath, written);
        const MessageLog log;
        QVERIFY(!block.bRead(swap, sourceTime()));
    }
    QVERIFY(picture().save(m_swapPath, "PNG"));
    setFileTime(m_swapPath, written);
    QVERIFY(!block.bRead(swap, sourceTime()));
}

void TestSwapBlock::onlyWhatMayBeAThumbnailIsRead_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("read");
    QTest::newRow("a thumbnail") << QSize(171, 119) << true;
    QTest::newRow("a million pixels") << QSize(1024, 1024) << true;
    QTest::newRow("a column more") << QSize(1025, 1024) << false;
    QTest::newRow("a panorama") << QSize(20000, 52) << true;
    QTest::newRow("a larger panorama") << QSize(20000, 53) << false;
}

void TestSwapBlock::onlyWhatMayBeAThumbnailIsRead()
{
    QFETCH(QSize, size);
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::gray);
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    QImage loaded;
    swap = imageSwap(&loaded);
    QTEST(block.bRead(swap, sourceTime()), "read");
    QTEST(!loaded.isNull(), "read");
}

void TestSwapBlock::aGiantThatWasPlantedIsNotDecoded()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    QByteArray bytes = readFile(m_swapPath);
    const qsizetype frame = bytes.indexOf("\xff\xc0");
    QVERIFY(frame > 0);
    // Less than the image reader's own limit.
    constexpr quint16 kSide = 7000;
    qToBigEndian(kSide, bytes.data() + frame + 5);
    qToBigEndian(kSide, bytes.data() + frame + 7);
    writeFile(m_swapPath, bytes);
    setFileTime(m_swapPath, written);
    QCOMPARE(QImageReader(m_swapPath, "JPEG").size(), QSize(kSide, kSide));
    const PeakMemory memory;
    QVERIFY(!block.bRead(swap, sourceTime()));
    QVERIFY(memory.growthKB() < 8192);
}

/// A file name's end such as "@2x" has a meaning to the toolkit's image reader.
void TestSwapBlock::aNameThatPromisesDensePixelsChangesNothing()
{
    QImage image = picture();
    const QString name = QStringLiteral("a@2x.jpg");
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    SwapBlock block(name, place.imagePath(0, 's', 100, name), 100, 's');
    stSwap swap = imageSwap(&image);
    QVERIFY(block.bWrite(swap, sourceTime()));
    QImage loaded;
    swap = imageSwap(&loaded);
    QVERIFY(block.bRead(swap, sourceTime()));
    QCOMPARE(loaded.devicePixelRatio(), 1.0);
}

void TestSwapBlock::aPipeIsNotWrittenTo()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_swapPath).constData(), 0600), 0);
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QVERIFY(!block.isValid());
}

void TestSwapBlock::aNullImageIsNotStored()
{
    QImage image;
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QVERIFY(!block.isValid());
    QVERIFY(!QFile::exists(m_swapPath));
}

void TestSwapBlock::aNameThatIsTooLongIsNotStored()
{
    QImage image = picture();
    const QString name = QString(246, QLatin1Char('n')) + QStringLiteral(".jpg");
    m_fixture->addPhoto(QStringLiteral("photos/") + name);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    SwapBlock block(name, place.imagePath(0, 's', 100, name), 100, 's');
    stSwap swap = imageSwap(&image);
    const MessageLog log;
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QVERIFY(!block.isValid());
    QVERIFY(!block.bRead(swap, sourceTime()));
    QCOMPARE(log.warnings, QStringList());
}

void TestSwapBlock::aFullDiskLeavesNothingBehind_data()
{
    QTest::addColumn<bool>("image");
    QTest::addColumn<int>("room");
    QTest::newRow("an image, no room at all") << true << 0;
    QTest::newRow("an image, room for a part") << true << 700;
    QTest::newRow("a buffer, no room at all") << false << 0;
    QTest::newRow("a buffer, room for a part") << false << 700;
}

void TestSwapBlock::aFullDiskLeavesNothingBehind()
{
    QFETCH(bool, image);
    QFETCH(int, room);
    QImage pixels = picture(171, 119);
    std::array<unsigned char, 2000> bytes{};
    SwapBlock block = made();
    stSwap swap = image ? imageSwap(&pixels) : bufferSwap(bytes.data(), 2000);
    const MessageLog log;
    {
        const FileSizeLimit limit(static_cast<rlim_t>(room));
        QVERIFY(!block.bWrite(swap, sourceTime()));
    }
    QVERIFY(!block.isValid());
    QVERIFY(!QFile::exists(m_swapPath));
    QCOMPARE(block.record().swapTime, 0);
    QVERIFY(!block.bRead(swap, sourceTime()));
    const QStringList expected(QStringLiteral("SwapBlock::bWrite() / Write Error"));
    QCOMPARE(log.warnings, image ? QStringList() : expected);
}

void TestSwapBlock::destructionLeavesTheSwapFile()
{
    QImage image = picture();
    {
        SwapBlock block = made();
        stSwap swap = imageSwap(&image);
        QVERIFY(block.bWrite(swap, sourceTime()));
    }
    QVERIFY(QFile::exists(m_swapPath));
}

void TestSwapBlock::aRecordFromTheIndexIsValidWhileBothFilesExist_data()
{
    QTest::addColumn<bool>("source");
    QTest::addColumn<QString>("swapName");
    QTest::addColumn<bool>("swapFile");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("kept");
    QTest::newRow("both there: valid") << true << "a.swp" << true << true << true;
    QTest::newRow("swap file gone: invalid") << true << "a.swp" << false << false << false;
    QTest::newRow("source gone: its swap file goes") << false << "a.swp" << true << false << false;
    QTest::newRow("both gone") << false << "a.swp" << false << false << false;
    QTest::newRow("no swap file of ours: neither believed nor removed")
        << true << "../photos/b.jpg" << true << false << true;
    QTest::newRow("ours by its end only: neither believed nor removed")
        << true << "../b.swp" << true << false << true;
    QTest::newRow("ours by its folder only: neither believed nor removed")
        << true << "b.jpg" << true << false << true;
    QTest::newRow("source gone, no swap file of ours: stays")
        << false << "../photos/b.jpg" << true << false << true;
    QTest::newRow("source gone, ours by its end only: stays")
        << false << "../b.swp" << true << false << true;
    QTest::newRow("source gone, ours by its folder only: stays")
        << false << "b.jpg" << true << false << true;
}

void TestSwapBlock::aRecordFromTheIndexIsValidWhileBothFilesExist()
{
    QFETCH(bool, source);
    QFETCH(QString, swapName);
    QFETCH(bool, swapFile);
    const QString file = m_fixture->swapFile(swapName);
    if (swapFile) {
        writeFile(file, "x");
    }
    const QByteArray bytes = IndexBytes()
                                 .text(source ? "a.jpg" : "gone.jpg")
                                 .number(1)
                                 .number(-5)
                                 .number(6)
                                 .number(7)
                                 .number(-128 + 's')
                                 .text(file.toLatin1())
                                 .number(8)
                                 .bytes;
    lumi::IndexReader index(bytes);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    const SwapBlock block(index, m_fixture->path(QStringLiteral("photos")), place);
    QVERIFY(!index.failed());
    QTEST(block.isValid(), "valid");
    QTEST(QFile::exists(file), "kept");
    QCOMPARE(block.width(), -5);
    QCOMPARE(block.height(), 6);
    QCOMPARE(block.swapPath(), file);
    QCOMPARE(block.kind(), static_cast<signed char>('s'));
    QCOMPARE(block.record().sourceTime, 1);
    QCOMPARE(block.record().param, 7);
    QCOMPARE(block.record().swapTime, 8);
}

/// An index may name anything; a pipe would be waited for.
void TestSwapBlock::aPipeIsNoSwapFile()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_swapPath).constData(), 0600), 0);
    const QByteArray bytes = IndexBytes()
                                 .text("a.jpg")
                                 .number(1)
                                 .number(100)
                                 .number(75)
                                 .number(100)
                                 .number('s')
                                 .text(m_swapPath.toLatin1())
                                 .number(8)
                                 .bytes;
    lumi::IndexReader index(bytes);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    const SwapBlock block(index, m_fixture->path(QStringLiteral("photos")), place);
    QVERIFY(!index.failed());
    QVERIFY(!block.isValid());
}

void TestSwapBlock::aCutRecordIsInvalidAndRemovesNothing()
{
    writeFile(m_swapPath, "x");
    IndexBytes whole;
    whole.text("gone.jpg").number(1).number(2).number(3).number(4).number('s');
    whole.text(m_swapPath.toLatin1()).number(5);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    for (qsizetype length = 0; length < whole.bytes.size(); ++length) {
        lumi::IndexReader index(whole.bytes.left(length));
        const SwapBlock block(index, m_fixture->path(QStringLiteral("photos")), place);
        QVERIFY(index.failed());
        QVERIFY(!block.isValid());
        QVERIFY(QFile::exists(m_swapPath));
    }
}

void TestSwapBlock::traceOfAWriteAndARead()
{
    QImage image = picture();
    SwapBlock block = made();
    stSwap swap = imageSwap(&image);
    const MessageLog log;
    QVERIFY(block.bWrite(swap, sourceTime()));
    QVERIFY(block.bRead(swap, sourceTime()));
    const QString files = QStringLiteral("a.jpg -> ") + m_swapPath;
    const QString end = QStringLiteral("[") + m_swapPath + QStringLiteral("]");
    QCOMPARE(log.trace,
             QStringList({QStringLiteral("[Write]") + files,
                          QStringLiteral("SwapBlock::bWrite() / Image(true) ") + end,
                          QStringLiteral("[Read]") + files,
                          QStringLiteral("SwapBlock::bRead() / Image(true) ") + end}));
}

void TestSwapBlock::traceOfABuffer()
{
    unsigned char bytes[] = {1, 2, 3, 4, 5};
    SwapBlock block = made();
    stSwap swap = bufferSwap(bytes, sizeof(bytes));
    const MessageLog log;
    QVERIFY(block.bWrite(swap, sourceTime()));
    QCOMPARE(log.trace.last(), QStringLiteral("SwapBlock::bWrite() / BufSize(5) - WriteSize(5)"));
    {
        const lumi::test::FileSizeLimit limit(2);
        QVERIFY(!block.bWrite(swap, sourceTime()));
    }
    QCOMPARE(log.trace.last(), QStringLiteral("SwapBlock::bWrite() / BufSize(5) - WriteSize(2)"));
}

LUMI_TEST(TestSwapBlock)
#include "TestSwapBlock.moc"
