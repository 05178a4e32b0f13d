// SPDX-License-Identifier: MIT
// What a block stores and loads, and blocks without room on the disk.
#include "platform/files/fileCalls.h"
#include "swap/SwapBlock.h"
#include "swap/SwapPlace.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapBlockTest.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <array>

#include <sys/stat.h>

using namespace lumi::test;

namespace {

stSwap bufferSwap(unsigned char *buf, int size)
{
    return {nullptr, buf, size, 100, 0};
}

} // namespace

class TestSwapBlock : public SwapBlockTest
{
    Q_OBJECT

private Q_SLOTS:
    void aNewBlockIsEmptyAndInvalid();
    void anImageIsStoredAsTheJpegThatQImageSaves_data();
    void anImageIsStoredAsTheJpegThatQImageSaves();
    void aPictureComesBackAsTheStoredJpeg();
    void tenMegabytesAreLeftFree_data();
    void tenMegabytesAreLeftFree();
    void theFreeSpaceOfTheDocumentsCounts();
    void anEmptySwapPathIsReported();
    void aNameForDensePixelsChangesNothing();
    void whatTookTheNameOfASwapFileIsReplaced();
    void linkToASwapFileIsNotRead();
    void aNameThatIsTooLongIsNotStored();
    void aFullDiskLeavesNothingBehind_data();
    void aFullDiskLeavesNothingBehind();
    void traceOfAWriteAndARead();
    void traceOfABuffer();
};

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
    QVERIFY(write(block, image));
    QVERIFY(block.isValid());
    QCOMPARE(readFile(m_swapPath), readFile(reference));
    QCOMPARE(block.record().sourceTime, static_cast<std::int32_t>(SwapFixture::kTime));
    QCOMPARE(static_cast<qint64>(block.record().swapTime),
             QFileInfo(m_swapPath).lastModified().toSecsSinceEpoch());
}

void TestSwapBlock::aPictureComesBackAsTheStoredJpeg()
{
    const QImage image = picture();
    SwapBlock block = made();
    QVERIFY(write(block, image));
    QImage loaded;
    QVERIFY(read(block, &loaded));
    QCOMPARE(loaded, QImage(m_swapPath, "JPEG"));
    QCOMPARE(loaded.size(), image.size());
    QVERIFY(loaded != image);
}

void TestSwapBlock::tenMegabytesAreLeftFree_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("exactly 10240 KB: refused") << 10240 << false;
    QTest::newRow("10241 KB: written") << 10241 << true;
    QTest::newRow("nothing left: refused") << 0 << false;
}

void TestSwapBlock::tenMegabytesAreLeftFree()
{
    const auto [freeKB, written] = lumi::test::row<int, bool>();
    m_fixture->setFreeKB(freeKB);
    SwapBlock block = made();
    const MessageLog log;
    QCOMPARE(write(block), written);
    QCOMPARE(block.isValid(), written);
    QCOMPARE(QFile::exists(m_swapPath), written);
    const QString text = QStringLiteral("SwapBlock::bWrite() No Disc Space (%1 KB)").arg(freeKB);
    QCOMPARE(log.warnings, written ? QStringList() : QStringList(text));
    QCOMPARE(block.record().sourceTime, static_cast<std::int32_t>(SwapFixture::kTime));
}

void TestSwapBlock::theFreeSpaceOfTheDocumentsCounts()
{
    QByteArray asked;
    m_fixture->machine->diskAt = [&asked](const QByteArray &path) {
        asked = path;
        return DiskFigures();
    };
    SwapBlock block = made();
    const MessageLog log;
    QVERIFY(!write(block));
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

/// A file name's end such as "@2x" has a meaning to the toolkit's image reader.
void TestSwapBlock::aNameForDensePixelsChangesNothing()
{
    const QString name = QStringLiteral("a@2x.jpg");
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    SwapBlock block(name, place.imagePath(0, 's', 100, name), 100, 's');
    QVERIFY(write(block));
    QImage loaded;
    QVERIFY(read(block, &loaded));
    QCOMPARE(loaded.devicePixelRatio(), 1.0);
}

void TestSwapBlock::whatTookTheNameOfASwapFileIsReplaced()
{
    const QString other = m_fixture->path(QStringLiteral("other.jpg"));
    writeFile(other, "another file");
    QVERIFY(QFile::link(other, m_swapPath));
    SwapBlock block = made();
    QVERIFY(write(block));
    QVERIFY(lumi::isRegular(m_swapPath));
    QCOMPARE(readFile(other), QByteArray("another file"));
    QVERIFY(QFile::remove(m_swapPath));
    QCOMPARE(::mkfifo(QFile::encodeName(m_swapPath).constData(), 0600), 0);
    QVERIFY(write(block));
    QVERIFY(lumi::isRegular(m_swapPath));
}

void TestSwapBlock::linkToASwapFileIsNotRead()
{
    SwapBlock block = made();
    QVERIFY(write(block));
    QVERIFY(read(block));
    const QString moved = m_fixture->path(QStringLiteral("moved.swp"));
    QVERIFY(QFile::rename(m_swapPath, moved));
    QVERIFY(QFile::link(moved, m_swapPath));
    QVERIFY(!read(block));
}

void TestSwapBlock::aNameThatIsTooLongIsNotStored()
{
    const QString name = QString(246, QLatin1Char('n')) + QStringLiteral(".jpg");
    m_fixture->addPhoto(QStringLiteral("photos/") + name);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    SwapBlock block(name, place.imagePath(0, 's', 100, name), 100, 's');
    const MessageLog log;
    QVERIFY(!write(block));
    QVERIFY(!block.isValid());
    QVERIFY(!read(block));
    QCOMPARE(log.warnings, QStringList());
}

void TestSwapBlock::aFullDiskLeavesNothingBehind_data()
{
    lumi::test::columns<bool, int>();
    QTest::newRow("an image, no room at all") << true << 0;
    QTest::newRow("an image, room for a part") << true << 700;
    QTest::newRow("a buffer, no room at all") << false << 0;
    QTest::newRow("a buffer, room for a part") << false << 700;
}

void TestSwapBlock::aFullDiskLeavesNothingBehind()
{
    const auto [image, room] = lumi::test::row<bool, int>();
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

void TestSwapBlock::traceOfAWriteAndARead()
{
    SwapBlock block = made();
    const MessageLog log;
    QVERIFY(write(block));
    QVERIFY(read(block));
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
