// SPDX-License-Identifier: MIT
// The buffer form of a block. It has no swap time, so it is written but not read back.
#include "swap/SwapBlock.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QFileInfo>
#include <QTest>

#include <array>

#include <utime.h>

using namespace lumi::test;

class TestSwapBuffer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aBufferWithAnEpochSwapFileIsReadBack();
    void aMissingBufferIsReported();
    void aBufferFileThatCannotBeOpenedIsReported();

private:
    [[nodiscard]] QDateTime sourceTime() const { return QFileInfo(m_source).lastModified(); }

    std::unique_ptr<SwapFixture> m_fixture;
    QString m_source;
    QString m_swapPath;
};

namespace {

stSwap bufferSwap(unsigned char *buf, int size)
{
    return {nullptr, buf, size, 100, 0};
}

} // namespace

void TestSwapBuffer::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    m_source = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    m_swapPath = m_fixture->swapFile(QStringLiteral("0000_100_a.jpg.swp"));
}

void TestSwapBuffer::cleanup()
{
    m_fixture.reset();
}

void TestSwapBuffer::aBufferWithAnEpochSwapFileIsReadBack()
{
    std::array<unsigned char, 4> bytes{1, 2, 3, 4};
    SwapBlock block(QStringLiteral("a.jpg"), m_swapPath, 100, 0);
    stSwap swap = bufferSwap(bytes.data(), 4);
    QVERIFY(block.bWrite(swap, sourceTime()));
    setFileTime(m_swapPath, 0);
    std::array<unsigned char, 8> read{9, 9, 9, 9, 9, 9, 9, 9};
    swap = bufferSwap(read.data(), 6);
    QVERIFY(block.bRead(swap, sourceTime()));
    QCOMPARE(swap.size, 4);
    const std::array<unsigned char, 8> expected{1, 2, 3, 4, 0, 0, 9, 9};
    QVERIFY(read == expected);
    swap = bufferSwap(read.data(), 2);
    QVERIFY(block.bRead(swap, sourceTime()));
    QCOMPARE(swap.size, 2);
    const MessageLog log;
    swap = bufferSwap(nullptr, 2);
    QVERIFY(!block.bRead(swap, sourceTime()));
    QCOMPARE(log.warnings,
             QStringList(QStringLiteral("ASSERT: \"stSwap.buf != NULL\" in SwapSystem (267)")));
}

void TestSwapBuffer::aMissingBufferIsReported()
{
    SwapBlock block(QStringLiteral("a.jpg"), m_swapPath, 100, 0);
    const MessageLog log;
    for (const int size : {5, 0}) {
        stSwap swap = bufferSwap(nullptr, size);
        QVERIFY(!block.bWrite(swap, sourceTime()));
    }
    QVERIFY(!block.isValid());
    const QString text = QStringLiteral("ASSERT: \"stSwap.buf != NULL\" in SwapSystem (221)");
    QCOMPARE(log.warnings, QStringList({text, text}));
}

void TestSwapBuffer::aBufferFileThatCannotBeOpenedIsReported()
{
    std::array<unsigned char, 4> bytes{1, 2, 3, 4};
    QVERIFY(QDir().mkpath(m_swapPath));
    SwapBlock block(QStringLiteral("a.jpg"), m_swapPath, 100, 0);
    stSwap swap = bufferSwap(bytes.data(), 4);
    const MessageLog log;
    QVERIFY(!block.bWrite(swap, sourceTime()));
    QVERIFY(QDir().rmdir(m_swapPath));
    QVERIFY(block.bWrite(swap, sourceTime()));
    QVERIFY(QFile::remove(m_swapPath) && QDir().mkpath(m_swapPath));
    utimbuf epoch{0, 0};
    QCOMPARE(utime(QFile::encodeName(m_swapPath).constData(), &epoch), 0);
    QVERIFY(!block.bRead(swap, sourceTime()));
    QCOMPARE(log.warnings,
             QStringList({QStringLiteral("SwapBlock::bWrite() / File Open Error"),
                          QStringLiteral("SwapBlock::bRead() / File Open Error")}));
}

LUMI_TEST(TestSwapBuffer)
#include "TestSwapBuffer.moc"
