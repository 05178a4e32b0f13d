// SPDX-License-Identifier: MIT
// Stored pictures that are not loaded: the photo or the swap file has changed, or a block would not
// write such a swap file.
#include "swap/SwapBlock.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapBlockTest.h"

#include <QFileInfo>
#include <QImageReader>
#include <QTest>
#include <QtEndian>

using namespace lumi::test;

class TestSwapBlockMisses : public SwapBlockTest
{
    Q_OBJECT

private Q_SLOTS:
    void aChangedSourceIsAMissAndTheFileStays();
    void onlyWholeSecondsCount();
    void aTouchedSwapFileIsAMiss();
    void aVanishedSwapFileIsAMiss();
    void aDamagedSwapFileIsAMiss();
    void onlyWhatMayBeAThumbnailIsRead_data();
    void onlyWhatMayBeAThumbnailIsRead();
    void aHugePictureInASwapFileIsNotDecoded();
};

void TestSwapBlockMisses::aChangedSourceIsAMissAndTheFileStays()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    const MessageLog log;
    QImage loaded;
    stSwap swap = imageSwap(&loaded);
    QVERIFY(!block.bRead(swap, sourceTime().addSecs(1)));
    QVERIFY(!block.bRead(swap, sourceTime().addSecs(-1)));
    QVERIFY(!block.bRead(swap, QDateTime()));
    QVERIFY(loaded.isNull());
    QVERIFY(QFile::exists(m_swapPath));
    QVERIFY(block.isValid());
    QVERIFY(log.warnings.isEmpty());
    QVERIFY(block.bRead(swap, sourceTime()));
}

void TestSwapBlockMisses::onlyWholeSecondsCount()
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

void TestSwapBlockMisses::aTouchedSwapFileIsAMiss()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    setFileTime(m_swapPath, written + 1000);
    QVERIFY(!read(block));
    QVERIFY(QFile::exists(m_swapPath));
    setFileTime(m_swapPath, written);
    QVERIFY(read(block));
}

void TestSwapBlockMisses::aVanishedSwapFileIsAMiss()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    QVERIFY(QFile::remove(m_swapPath));
    QVERIFY(!read(block));
}

void TestSwapBlockMisses::aDamagedSwapFileIsAMiss()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    for (const char *bytes : {"", "no picture", "\xff\xd8\xff"}) {
        QVERIFY(QFile::remove(m_swapPath));
        writeFile(m_swapPath, bytes);
        setFileTime(m_swapPath, written);
        const MessageLog log;
        QVERIFY(!read(block));
    }
    QVERIFY(picture().save(m_swapPath, "PNG"));
    setFileTime(m_swapPath, written);
    QVERIFY(!read(block));
}

void TestSwapBlockMisses::onlyWhatMayBeAThumbnailIsRead_data()
{
    lumi::test::columns<QSize, bool>();
    QTest::newRow("a thumbnail") << QSize(171, 119) << true;
    QTest::newRow("a million pixels") << QSize(1024, 1024) << true;
    QTest::newRow("a column more") << QSize(1025, 1024) << false;
    QTest::newRow("a panorama") << QSize(20000, 52) << true;
    QTest::newRow("a larger panorama") << QSize(20000, 53) << false;
}

void TestSwapBlockMisses::onlyWhatMayBeAThumbnailIsRead()
{
    const auto [size, isRead] = lumi::test::row<QSize, bool>();
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::gray);
    SwapBlock block = made();
    QVERIFY(write(block, image));
    QImage loaded;
    QCOMPARE(read(block, &loaded), isRead);
    QCOMPARE(!loaded.isNull(), isRead);
}

void TestSwapBlockMisses::aHugePictureInASwapFileIsNotDecoded()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    const qint64 written = QFileInfo(m_swapPath).lastModified().toMSecsSinceEpoch();
    QByteArray bytes = readFile(m_swapPath);
    const qsizetype frame = bytes.indexOf("\xff\xc0");
    QVERIFY(frame > 0);
    // Below the limit of QImageReader.
    constexpr quint16 kSide = 7000;
    qToBigEndian(kSide, bytes.data() + frame + 5);
    qToBigEndian(kSide, bytes.data() + frame + 7);
    writeFile(m_swapPath, bytes);
    setFileTime(m_swapPath, written);
    QCOMPARE(QImageReader(m_swapPath, "JPEG").size(), QSize(kSide, kSide));
    const PeakMemory memory;
    QVERIFY(!read(block));
    QVERIFY(memory.growthKB() < 8192);
}

LUMI_TEST(TestSwapBlockMisses)
#include "TestSwapBlockMisses.moc"
