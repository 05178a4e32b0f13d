// SPDX-License-Identifier: MIT
// What the store keeps from run to run, and the limits of a damaged index.
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/FullDisk.h"
#include "tests/support/PeakMemory.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/SwapFixture.h"

#include <QFileInfo>
#include <QSize>
#include <QTest>
#include <QtEndian>

#include <ctime>

using namespace lumi::test;

class TestSwapIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theIndexByteByByte();
    void blocksSurviveARestart();
    void subSecondTimesSurviveARestart();
    void yearsPast2038SurviveARestart();
    void sizesAndIdsSurviveARestart();
    void theLastControlReadStaysCurrent();
    void aVanishedSourceTakesItsSwapFileAlong();
    void aVanishedSwapFileTakesNothingElse();
    void aControlWhoseBlocksHaveAllGoneIsNotMade();
    void namesOutsideLatin1DoNotSurvive();
    void invalidBlocksAreWrittenAndReadIfTheirFileExists();
    void aSharedSwapFileIsAMissByItsTime();
    void wholeRecordsBeforeACutAreKept();
    void wrongFieldsNeverAffectFilesOutside();
    void filesNamedByADamagedIndexStay();
    void trimmingSparesAPhotoThatAnIndexNames();
    void anIndexOfManyRecordsIsReadInPart_data();
    void anIndexOfManyRecordsIsReadInPart();
    void aGiantIndexIsReadInPart();
    void aFullDiskKeepsTheOldIndex();

private:
    /// Three blocks in two folders, stored and closed.
    void makeSample();
    [[nodiscard]] QString photo(const char *relative) const;

    std::unique_ptr<SwapFixture> m_fixture;
};

void TestSwapIndex::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    const MessageLog log;
    m_fixture->start();
}

void TestSwapIndex::cleanup()
{
    m_fixture.reset();
}

QString TestSwapIndex::photo(const char *relative) const
{
    return m_fixture->path(QString::fromUtf8(relative));
}

void TestSwapIndex::makeSample()
{
    QImage image = picture();
    for (const char *relative : {"one/a.jpg", "one/b.jpg", "two/c.jpg"}) {
        QVERIFY(SwapAppend(m_fixture->addPhoto(QString::fromLatin1(relative)), &image, 100, 's'));
    }
    m_fixture->stop();
}

void TestSwapIndex::theIndexByteByByte()
{
    QImage image = picture();
    const QSize size(171, 119);
    const QString first = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    const QString second = m_fixture->addPhoto(QStringLiteral("two/abcd"));
    unsigned char byte = 7;
    QVERIFY(SwapAppend(first, &image, 100, 's'));
    QVERIFY(SwapSetSize(first, &size));
    QVERIFY(SwapAppend(second, &image, -1, 'l'));
    QVERIFY(SwapAppend(second, &byte, 1, 5));
    QImage null;
    QVERIFY(!SwapAppend(photo("one/gone.jpg"), &null, 100, 's'));
    m_fixture->stop();

    const QByteArray folder = m_fixture->swapFolder().toLatin1();
    const auto timeOf = [&folder](const char *name) {
        const QFileInfo info(QString::fromLatin1(folder + '/' + name));
        return static_cast<std::int32_t>(info.lastModified().toSecsSinceEpoch());
    };
    const auto time = static_cast<std::int32_t>(SwapFixture::kTime);
    IndexBytes expected;
    const QByteArray index = readFile(m_fixture->indexPath());
    expected.number(qFromLittleEndian<std::int32_t>(index.constData())).number(2);
    expected.number(0).number(2).text(photo("one").toLatin1());
    expected.text("a.jpg").number(time).number(171).number(119).number(100).number('s');
    expected.text(folder + "/0000s_100_a.jpg.swp").number(timeOf("0000s_100_a.jpg.swp"));
    expected.text("gone.jpg").number(0).number(-1).number(-1).number(100).number('s');
    expected.text(folder + "/0000s_100_gone.jpg.swp").number(0);
    expected.number(1).number(2).text(photo("two").toLatin1());
    expected.text("abcd").number(time).number(-1).number(-1).number(-1).number('l');
    expected.text(folder + "/0001l_-1_abcd.swp").number(timeOf("0001l_-1_abcd.swp"));
    expected.text("abcd").number(time).number(-1).number(-1).number(5).number(0);
    expected.text(folder + "/0001_5_abcd.swp").number(0);
    QCOMPARE(index.toHex(), expected.bytes.toHex());
    QVERIFY(qAbs(QDateTime::currentSecsSinceEpoch()
                 - qFromLittleEndian<std::int32_t>(index.constData()))
            < 60);
}

void TestSwapIndex::blocksSurviveARestart()
{
    makeSample();
    for (int run = 0; run < 3; ++run) {
        const SwapSystem &store = m_fixture->restart();
        QCOMPARE(store.controls().count(), 2);
        QCOMPARE(blockCount(store), 3);
        QImage image;
        QVERIFY(SwapLoad(photo("two/c.jpg"), &image, 100, 's'));
        QCOMPARE(image.size(), picture().size());
        QVERIFY(!SwapLoad(photo("two/c.jpg"), &image, 101, 's'));
        QVERIFY(!SwapLoad(photo("two/c.jpg"), &image, 100, 'l'));
        QVERIFY(!SwapLoad(photo("two/a.jpg"), &image, 100, 's'));
    }
}

void TestSwapIndex::subSecondTimesSurviveARestart()
{
    const QString file = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    setFileTime(file, SwapFixture::kTime * 1000 + 789);
    QCOMPARE(QFileInfo(file).lastModified().toMSecsSinceEpoch() % 1000, 789);
    QImage image = picture();
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    const QString swapFile = m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp"));
    setFileTime(swapFile, QFileInfo(swapFile).lastModified().toSecsSinceEpoch() * 1000 + 456);
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    m_fixture->restart();
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    setFileTime(file, SwapFixture::kTime * 1000 + 1789);
    QVERIFY(!SwapLoad(file, &image, 100, 's'));
}

void TestSwapIndex::yearsPast2038SurviveARestart()
{
    const QString file = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    // On 32-bit systems no file can be as young as that: there it is 2033.
    const qint64 late = sizeof(std::time_t) < sizeof(qint64) ? 2000000000 : 4102444800;
    setFileTime(file, late * 1000);
    QCOMPARE(QFileInfo(file).lastModified().toSecsSinceEpoch(), late);
    QImage image = picture();
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    m_fixture->restart();
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    setFileTime(file, (late + 1) * 1000);
    QVERIFY(!SwapLoad(file, &image, 100, 's'));
}

void TestSwapIndex::sizesAndIdsSurviveARestart()
{
    const QString file = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    m_fixture->store->SetCurrent(photo("one"), 41);
    QImage image = picture();
    QSize size(640, 480);
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QVERIFY(SwapSetSize(file, &size));
    const SwapSystem &store = m_fixture->restart();
    QVERIFY(SwapGetSize(file, &size));
    QCOMPARE(size, QSize(640, 480));
    QCOMPARE(controlOf(store, photo("one"))->id(), 41);
}

void TestSwapIndex::theLastControlReadStaysCurrent()
{
    makeSample();
    QCOMPARE(m_fixture->start().current()->folder(), photo("two"));
    m_fixture->stop();
    QVERIFY(QFile::remove(photo("two/c.jpg")));
    // The last control has gone, and with it the current one.
    QVERIFY(m_fixture->start().current() == nullptr);
    QCOMPARE(m_fixture->store->controls().count(), 1);
}

void TestSwapIndex::aVanishedSourceTakesItsSwapFileAlong()
{
    makeSample();
    QVERIFY(QFile::remove(photo("one/a.jpg")));
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(blockCount(store), 2);
    QCOMPARE(m_fixture->swapFiles(),
             QStringList(
                 {QStringLiteral("0000s_100_b.jpg.swp"), QStringLiteral("0001s_100_c.jpg.swp")}));
}

void TestSwapIndex::aVanishedSwapFileTakesNothingElse()
{
    makeSample();
    QVERIFY(QFile::remove(m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp"))));
    const auto before = snapshot(m_fixture->path(QStringLiteral("one")));
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(blockCount(store), 2);
    QCOMPARE(controlOf(store, photo("one"))->count(), 1);
    QCOMPARE(m_fixture->swapFiles().size(), 2);
    QCOMPARE(snapshot(m_fixture->path(QStringLiteral("one"))), before);
}

void TestSwapIndex::aControlWhoseBlocksHaveAllGoneIsNotMade()
{
    makeSample();
    QVERIFY(QFile::remove(photo("one/a.jpg")) && QFile::remove(photo("one/b.jpg")));
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(store.controls().count(), 1);
    QVERIFY(controlOf(store, photo("one")) == nullptr);
    QCOMPARE(controlOf(store, photo("two"))->id(), 1);
    // The id of the removed control is free again, its place in the list is not.
    QImage image = picture();
    const QString file = m_fixture->addPhoto(QStringLiteral("three/d.jpg"));
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QCOMPARE(controlOf(store, photo("three"))->id(), 0);
    QVERIFY(QFile::exists(m_fixture->swapFile(QStringLiteral("0001s_100_d.jpg.swp"))));
}

void TestSwapIndex::namesOutsideLatin1DoNotSurvive()
{
    QImage image = picture();
    const QString file = m_fixture->addPhoto(QString::fromUtf8("one/\xe6\x97\xa5\xe6\x9c\xac.jpg"));
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    const QStringList swapFiles(QString::fromUtf8("0000s_100_\xe6\x97\xa5\xe6\x9c\xac.jpg.swp"));
    QCOMPARE(m_fixture->swapFiles(), swapFiles);
    m_fixture->stop();
    QVERIFY(readFile(m_fixture->indexPath()).contains(QByteArray("\6\0\0\0??.jpg\0\0", 12)));
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(store.controls().count(), 0);
    QVERIFY(!SwapLoad(file, &image, 100, 's'));
    QCOMPARE(m_fixture->swapFiles(), swapFiles);
}

void TestSwapIndex::invalidBlocksAreWrittenAndReadIfTheirFileExists()
{
    QImage image = picture();
    const QString file = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    {
        const MessageLog log;
        m_fixture->setFreeKB(0);
        QVERIFY(!SwapAppend(file, &image, 100, 's'));
    }
    QCOMPARE(blockCount(*m_fixture->store), 1);
    m_fixture->stop();
    QVERIFY(readFile(m_fixture->indexPath()).contains("a.jpg"));
    writeFile(m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp")), "x");
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(blockCount(store), 1);
    // Its null swap time means that nothing was ever written.
    QVERIFY(!SwapLoad(file, &image, 100, 's'));
    m_fixture->stop();
    QVERIFY(QFile::remove(m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp"))));
    QCOMPARE(blockCount(m_fixture->start()), 0);
}

void TestSwapIndex::aSharedSwapFileIsAMissByItsTime()
{
    QImage image = picture();
    const QString gone = m_fixture->addPhoto(QStringLiteral("first/x.jpg"));
    const QString kept = m_fixture->addPhoto(QStringLiteral("second/a.jpg"));
    QVERIFY(SwapAppend(gone, &image, 100, 's'));
    QVERIFY(SwapAppend(kept, &image, 100, 's'));
    const QString shared = m_fixture->swapFile(QStringLiteral("0001s_100_a.jpg.swp"));
    QVERIFY(QFile::exists(shared));
    m_fixture->stop();
    // Sets the time of the swap file to some seconds earlier.
    QByteArray index = readFile(m_fixture->indexPath());
    const qint64 earlier = QFileInfo(shared).lastModified().toSecsSinceEpoch() - 5;
    qToLittleEndian(static_cast<std::int32_t>(earlier), index.data() + index.size() - 4);
    writeFile(m_fixture->indexPath(), index);
    setFileTime(shared, earlier * 1000);
    QVERIFY(QFile::remove(gone));
    m_fixture->start();
    QVERIFY(SwapLoad(kept, &image, 100, 's'));
    // The control moved up to place 0, so that the next folder gets place 1.
    const QString next = m_fixture->addPhoto(QStringLiteral("third/a.jpg"));
    QVERIFY(SwapAppend(next, &image, 100, 's'));
    QVERIFY(SwapLoad(next, &image, 100, 's'));
    QVERIFY(!SwapLoad(kept, &image, 100, 's'));
}

void TestSwapIndex::wholeRecordsBeforeACutAreKept()
{
    makeSample();
    const QByteArray whole = readFile(m_fixture->indexPath());
    const auto tree = snapshot(m_fixture->path(QStringLiteral("one")));
    // Each block ends 4 bytes behind its swap path's padded field.
    QList<qsizetype> ends;
    for (const char *name : {"0000s_100_a.jpg.swp", "0000s_100_b.jpg.swp", "0001s_100_c.jpg.swp"}) {
        const qsizetype end = whole.indexOf(name) + static_cast<qsizetype>(qstrlen(name));
        ends.append((end + 4) / 4 * 4 + 4);
    }
    QCOMPARE(ends.last(), whole.size());
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        m_fixture->stop();
        writeFile(m_fixture->indexPath(), whole.left(length));
        const SwapSystem &store = m_fixture->start();
        const auto expected = std::count_if(ends.begin(), ends.end(), [length](qsizetype end) {
            return end <= length;
        });
        QCOMPARE(static_cast<qsizetype>(blockCount(store)), expected);
        QCOMPARE(store.controls().count(), (static_cast<int>(expected) + 1) / 2);
        QCOMPARE(m_fixture->swapFiles().size(), 3);
        // The next call must work, however much was read.
        QVERIFY(!m_fixture->store->bLoad(QStringLiteral("no.jpg"), nullptr, 1, 's'));
    }
    QCOMPARE(snapshot(m_fixture->path(QStringLiteral("one"))), tree);
}

void TestSwapIndex::wrongFieldsNeverAffectFilesOutside()
{
    writeFile(m_fixture->path(QStringLiteral("outside.swp")), "mine");
    makeSample();
    const QByteArray whole = readFile(m_fixture->indexPath());
    const QString one = m_fixture->path(QStringLiteral("one"));
    const QString two = m_fixture->path(QStringLiteral("two"));
    const auto before = std::make_pair(snapshot(one), snapshot(two));
    for (qsizetype at = 0; at < whole.size(); at += 4) {
        for (const quint32 value : {0xFFFFFFFFU, 0x7FFFFFFFU, 0x80000000U}) {
            m_fixture->stop();
            QByteArray bytes = whole;
            qToLittleEndian(value, bytes.data() + at);
            writeFile(m_fixture->indexPath(), bytes);
            const SwapSystem &store = m_fixture->start();
            QVERIFY(blockCount(store) <= 3);
            QImage image = picture();
            QVERIFY(SwapAppend(photo("one/a.jpg"), &image, 1, 'x'));
            QVERIFY(SwapAppend(photo("one/a.jpg"), &image, 1, 'x'));
        }
    }
    QVERIFY(std::make_pair(snapshot(one), snapshot(two)) == before);
    QCOMPARE(readFile(m_fixture->path(QStringLiteral("outside.swp"))), QByteArray("mine"));
}

void TestSwapIndex::filesNamedByADamagedIndexStay()
{
    m_fixture->stop();
    QVERIFY(QDir().mkpath(m_fixture->swapFile(QStringLiteral("sub"))));
    const QStringList spared{m_fixture->path(QStringLiteral("precious.jpg")),
                             m_fixture->path(QStringLiteral("outside.swp")),
                             m_fixture->swapFile(QStringLiteral("notes.txt")),
                             m_fixture->swapFile(QStringLiteral("sub/deep.swp")),
                             m_fixture->swapFile(QStringLiteral("../outside2.swp"))};
    IndexBytes index;
    index.number(0).number(1).number(0).number(static_cast<int>(spared.size()) + 2);
    index.text(photo("nowhere").toLatin1());
    QStringList named = spared;
    named << QStringLiteral("relative.swp") << m_fixture->swapFile(QStringLiteral("ours.swp"));
    for (const QString &name : named) {
        index.text("gone.jpg").number(0).number(0).number(0).number(0).number('s');
        index.text(name.toLatin1()).number(0);
        writeFile(QDir(m_fixture->swapFolder()).absoluteFilePath(name), "mine");
    }
    writeFile(m_fixture->indexPath(), index.bytes);
    m_fixture->start();
    for (const QString &name : spared) {
        QVERIFY2(QFile::exists(name), qPrintable(name));
    }
    QCOMPARE(m_fixture->swapFiles(), QStringList(QStringLiteral("relative.swp")));
}

void TestSwapIndex::trimmingSparesAPhotoThatAnIndexNames()
{
    m_fixture->stop();
    const QString file = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    const QString ours = m_fixture->swapFile(QStringLiteral("0000x_1_a.jpg.swp"));
    writeFile(ours, "x");
    IndexBytes index;
    index.number(0).number(1).number(0).number(2).text(photo("one").toLatin1());
    for (const QString &swapPath : {file, ours}) {
        index.text("a.jpg").number(0).number(0).number(0).number(1).number('x');
        index.text(swapPath.toLatin1()).number(0);
    }
    writeFile(m_fixture->indexPath(), index.bytes);
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(blockCount(store), 1);
    QImage image = picture();
    QVERIFY(SwapAppend(photo("two/b.jpg"), &image, 1, 'x'));
    QVERIFY(!QFile::exists(ours));
    QVERIFY(QFile::exists(file));
}

void TestSwapIndex::anIndexOfManyRecordsIsReadInPart_data()
{
    lumi::test::columns<bool, int>();
    QTest::newRow("a folder for each block") << true << 4096;
    QTest::newRow("all blocks in one folder") << false << 65536;
}

/// 64 MB of whole records of files that exist.
void TestSwapIndex::anIndexOfManyRecordsIsReadInPart()
{
    const auto [spread, most] = lumi::test::row<bool, int>();
    constexpr std::clock_t kMostSeconds = 5;
    makeSample();
    constexpr int kBits = 18;
    constexpr int kBlocks = 1 << kBits;
    const QByteArray swapFile
        = m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp")).toLatin1();
    {
        IndexBytes index;
        index.number(0).number(spread ? kBlocks : 1);
        for (int i = 0; i < kBlocks; ++i) {
            QByteArray folder = photo("one").toLatin1();
            for (int bit = 0; spread && bit < kBits; ++bit) {
                folder += (i >> bit & 1) != 0 ? "//." : "/.";
            }
            if (spread || i == 0) {
                index.number(i).number(spread ? 1 : kBlocks).text(folder);
            }
            index.text("a.jpg").number(0).number(0).number(0).number(0).number('s');
            index.text(swapFile).number(0);
        }
        writeFile(m_fixture->indexPath(), index.bytes);
    }
    const PeakMemory memory;
    const std::clock_t before = std::clock();
    const SwapSystem &store = m_fixture->start();
    // Processor time, so that other work of the machine doesn't count.
    QVERIFY(std::clock() - before < kMostSeconds * CLOCKS_PER_SEC);
    QVERIFY(memory.growthKB() < 32768);
    QVERIFY(blockCount(store) > 1000);
    QVERIFY(blockCount(store) <= most);
}

void TestSwapIndex::aGiantIndexIsReadInPart()
{
    makeSample();
    QFile file(m_fixture->indexPath());
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(qint64(6) * 1024 * 1024 * 1024));
    file.close();
    QCOMPARE(blockCount(m_fixture->start()), 3);
}

void TestSwapIndex::aFullDiskKeepsTheOldIndex()
{
    QImage image = picture();
    QVERIFY(SwapAppend(m_fixture->addPhoto(QStringLiteral("one/a.jpg")), &image, 100, 's'));
    m_fixture->restart();
    for (const char *relative : {"one/b.jpg", "two/c.jpg"}) {
        QVERIFY(SwapAppend(m_fixture->addPhoto(QString::fromLatin1(relative)), &image, 100, 's'));
    }
    const QByteArray old = readFile(m_fixture->indexPath());
    {
        const FileSizeLimit limit(300);
        m_fixture->stop();
    }
    QCOMPARE(readFile(m_fixture->indexPath()), old);
    QVERIFY(!QFile::exists(m_fixture->markerPath()));
    const BoxCloser closer;
    QCOMPARE(blockCount(m_fixture->start()), 1);
    QVERIFY(closer.boxes.isEmpty());
    QVERIFY(SwapLoad(photo("one/a.jpg"), &image, 100, 's'));
}

LUMI_TEST(TestSwapIndex)
#include "TestSwapIndex.moc"
