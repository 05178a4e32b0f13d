// SPDX-License-Identifier: MIT
// Blocks that are read from an index, which may be damaged.
#include "swap/IndexReader.h"
#include "swap/SwapBlock.h"
#include "swap/SwapPlace.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapBlockTest.h"

#include <QTest>

#include <sys/stat.h>

using namespace lumi::test;

namespace {

/// As it stands in the index; both times are fixed.
QByteArray recordOf(const char *source, QSize size, int param, int kind, const QString &swapPath)
{
    return IndexBytes()
        .text(source)
        .number(1)
        .number(size.width())
        .number(size.height())
        .number(param)
        .number(kind)
        .text(swapPath.toLatin1())
        .number(8)
        .bytes;
}

} // namespace

class TestSwapBlockRecord : public SwapBlockTest
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordFromTheIndexIsValidWhileBothFilesExist_data();
    void aRecordFromTheIndexIsValidWhileBothFilesExist();
    void aPipeOrALinkIsNoSwapFile_data();
    void aPipeOrALinkIsNoSwapFile();
    void aCutRecordIsInvalidAndRemovesNothing();
};

void TestSwapBlockRecord::aRecordFromTheIndexIsValidWhileBothFilesExist_data()
{
    lumi::test::columns<bool, QString, bool, bool, bool>();
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

void TestSwapBlockRecord::aRecordFromTheIndexIsValidWhileBothFilesExist()
{
    const auto [source, swapName, swapFile, valid, kept]
        = lumi::test::row<bool, QString, bool, bool, bool>();
    const QString file = m_fixture->swapFile(swapName);
    if (swapFile) {
        writeFile(file, "x");
    }
    const QByteArray bytes
        = recordOf(source ? "a.jpg" : "gone.jpg", QSize(-5, 6), 7, -128 + 's', file);
    lumi::IndexReader index(bytes);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    const SwapBlock block(index, m_fixture->path(QStringLiteral("photos")), place);
    QVERIFY(!index.failed());
    QCOMPARE(block.isValid(), valid);
    QCOMPARE(QFile::exists(file), kept);
    QCOMPARE(block.width(), -5);
    QCOMPARE(block.height(), 6);
    QCOMPARE(block.swapPath(), file);
    QCOMPARE(block.kind(), static_cast<signed char>('s'));
    QCOMPARE(block.record().sourceTime, 1);
    QCOMPARE(block.record().param, 7);
    QCOMPARE(block.record().swapTime, 8);
}

void TestSwapBlockRecord::aPipeOrALinkIsNoSwapFile_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("pipe") << false;
    QTest::newRow("link to a file") << true;
}

void TestSwapBlockRecord::aPipeOrALinkIsNoSwapFile()
{
    QFETCH(bool, isLink);
    if (isLink) {
        QVERIFY(QFile::link(m_fixture->addPhoto(QStringLiteral("photos/b.jpg")), m_swapPath));
    } else {
        QCOMPARE(::mkfifo(QFile::encodeName(m_swapPath).constData(), 0600), 0);
    }
    const QByteArray bytes = recordOf("a.jpg", QSize(100, 75), 100, 's', m_swapPath);
    lumi::IndexReader index(bytes);
    const lumi::SwapPlace place(m_fixture->swapFolder(), QStringLiteral(".swp"));
    const SwapBlock block(index, m_fixture->path(QStringLiteral("photos")), place);
    QVERIFY(!index.failed());
    QVERIFY(!block.isValid());
}

void TestSwapBlockRecord::aCutRecordIsInvalidAndRemovesNothing()
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

LUMI_TEST(TestSwapBlockRecord)
#include "TestSwapBlockRecord.moc"
