// SPDX-License-Identifier: MIT
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/swap/MemoryFaults.h"
#include "tests/swap/SwapFixture.h"

#include <QFileInfo>
#include <QSize>
#include <QTest>

using namespace lumi::test;

class TestSwapSystem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aNewFolderGetsTheLowestFreeId_data();
    void aNewFolderGetsTheLowestFreeId();
    void withoutMemoryAFolderGetsTheIdOfLastResort();
    void aKnownFolderIsFoundByItsExactPath();
    void anEmptyFolderMakesNoneCurrent();
    void swapFilesAreNamedByThePlaceOfTheControl();
    void aBlockIsFoundByNameParamAndKind();
    void aStaleBlockHidesItsReplacements();
    void aFailedWriteStaysInTheList();
    void sizesBelongToTheFirstBlockOfAName();
    void withoutACurrentControlTheWorkingDirectoryServes();
    void withoutAWorkingDirectoryNothingServes();
    void clearKeepsTheCurrentFolder();
    void clearWithoutACurrentFolder();
    void clearLeavesIndexMarkerAndOtherFiles();
    void clearRemovesNothingIfTheFolderCannotBeEntered();
    void clearTracesWhatItDoes();
    void aBufferIsStoredAndMissed();
    void removingAControlRemovesAFileOfItsName();
    void removingTheControlOfAnEmptyNameDoesNothing();

private:
    std::unique_ptr<SwapFixture> m_fixture;
    SwapSystem *m_store = nullptr;
    QString m_photos;
};

void TestSwapSystem::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    const MessageLog log;
    m_store = &m_fixture->start();
    m_photos = m_fixture->path(QStringLiteral("photos"));
    m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
}

void TestSwapSystem::cleanup()
{
    m_fixture.reset();
}

void TestSwapSystem::aNewFolderGetsTheLowestFreeId_data()
{
    lumi::test::columns<QList<int>, int>();
    QTest::newRow("the first is 0") << QList<int>{} << 0;
    QTest::newRow("behind 0 and 1") << QList<int>{0, 1} << 2;
    QTest::newRow("a gap is filled") << QList<int>{0, 2, 3} << 1;
    QTest::newRow("numbers beyond the count don't matter") << QList<int>{7, 2147483647} << 0;
    QTest::newRow("nor do negative ones") << QList<int>{-5, 0} << 1;
    QTest::newRow("nor do doubles") << QList<int>{0, 0, 0} << 1;
    QTest::newRow("the number of the count itself is looked at") << QList<int>{0, 1, 3} << 2;
}

void TestSwapSystem::aNewFolderGetsTheLowestFreeId()
{
    const auto [given, next] = lumi::test::row<QList<int>, int>();
    for (qsizetype i = 0; i < given.size(); ++i) {
        m_store->SetCurrent(QStringLiteral("/folder%1").arg(i), given[i]);
        QCOMPARE(m_store->current()->id(), given[i]);
    }
    m_store->SetCurrent(QStringLiteral("/new"), -1);
    QCOMPARE(m_store->current()->id(), next);
    QCOMPARE(m_store->current()->folder(), QStringLiteral("/new"));
    QCOMPARE(m_store->controls().count(), static_cast<int>(given.size()) + 1);
    QVERIFY(m_store->current()->isEmpty());
}

void TestSwapSystem::withoutMemoryAFolderGetsTheIdOfLastResort()
{
    {
        const NoArrays shortage;
        m_store->SetCurrent(QStringLiteral("/new"), -1);
    }
    QCOMPARE(m_store->current()->id(), 9999);
    QCOMPARE(m_store->current()->folder(), QStringLiteral("/new"));
}

void TestSwapSystem::aKnownFolderIsFoundByItsExactPath()
{
    m_store->SetCurrent(QStringLiteral("/a"), -1);
    const SwapControl *first = m_store->current();
    m_store->SetCurrent(QStringLiteral("/A"), -1);
    m_store->SetCurrent(QStringLiteral("/a/"), -1);
    m_store->SetCurrent(QStringLiteral("/a/b"), -1);
    QCOMPARE(m_store->controls().count(), 4);
    const MessageLog log;
    m_store->SetCurrent(QStringLiteral("/a"), 77);
    QCOMPARE(m_store->current(), first);
    QCOMPARE(m_store->current()->id(), 0);
    m_store->SetCurrent(QStringLiteral("/c"), -1);
    QCOMPARE(log.trace,
             QStringList({QStringLiteral("SwapSystem::SetCurrent / Match"),
                          QStringLiteral("SwapSystem::SetCurrent / Append(/c)")}));
}

void TestSwapSystem::anEmptyFolderMakesNoneCurrent()
{
    m_store->SetCurrent(m_photos, -1);
    const MessageLog log;
    m_store->SetCurrent(QString(), -1);
    QVERIFY(m_store->current() == nullptr);
    QCOMPARE(m_store->controls().count(), 1);
    QCOMPARE(log.warnings, QStringList(QStringLiteral("SwapSystem::SetCurrent / String Empty")));
}

void TestSwapSystem::swapFilesAreNamedByThePlaceOfTheControl()
{
    m_store->SetCurrent(QStringLiteral("/first"), 5);
    m_store->SetCurrent(QStringLiteral("/second"), 9);
    m_store->SetCurrent(m_photos, 3);
    QImage image = picture();
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    QCOMPARE(m_fixture->swapFiles(), QStringList(QStringLiteral("0002s_100_a.jpg.swp")));
}

void TestSwapSystem::aBlockIsFoundByNameParamAndKind()
{
    m_fixture->addPhoto(QStringLiteral("photos/b.jpg"));
    m_store->SetCurrent(m_photos, -1);
    QImage small = picture(10, 10);
    QImage large = picture(20, 20);
    QImage other = picture(30, 30);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &small, 100, 's'));
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &large, 200, 's'));
    QVERIFY(m_store->bAppend(QStringLiteral("b.jpg"), &other, 100, 's'));
    QImage loaded;
    QVERIFY(m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 200, 's'));
    QCOMPARE(loaded.width(), 20);
    QVERIFY(m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 's'));
    QCOMPARE(loaded.width(), 10);
    QVERIFY(m_store->bLoad(QStringLiteral("b.jpg"), &loaded, 100, 's'));
    QCOMPARE(loaded.width(), 30);
    QVERIFY(!m_store->bLoad(QStringLiteral("b.jpg"), &loaded, 200, 's'));
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 'd'));
    QVERIFY(!m_store->bLoad(QStringLiteral("c.jpg"), &loaded, 100, 's'));
}

void TestSwapSystem::aStaleBlockHidesItsReplacements()
{
    const QString file = m_photos + QStringLiteral("/a.jpg");
    m_store->SetCurrent(m_photos, -1);
    QImage before = picture(10, 10);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &before, 100, 's'));
    setFileTime(file, (SwapFixture::kTime + 60) * 1000);
    QImage after = picture(20, 20);
    QImage loaded;
    for (int view = 0; view < 3; ++view) {
        QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 's'));
        QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &after, 100, 's'));
        QCOMPARE(blockCount(*m_store), 2 + view);
        QCOMPARE(m_fixture->swapFiles(), QStringList(QStringLiteral("0000s_100_a.jpg.swp")));
    }
    // All blocks still have their files, so they survive a restart. Clear() removes them.
    m_store = &m_fixture->restart();
    QCOMPARE(blockCount(*m_store), 4);
    m_store->SetCurrent(m_photos, -1);
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 's'));
    m_store->Clear();
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 's'));
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &after, 100, 's'));
    QVERIFY(m_store->bLoad(QStringLiteral("a.jpg"), &loaded, 100, 's'));
    QCOMPARE(loaded.width(), 20);
}

void TestSwapSystem::aFailedWriteStaysInTheList()
{
    m_store->SetCurrent(m_photos, -1);
    QImage image = picture();
    {
        const MessageLog log;
        m_fixture->setFreeKB(10240);
        QVERIFY(!m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
        QCOMPARE(log.warnings.size(), 1);
    }
    QCOMPARE(blockCount(*m_store), 1);
    m_fixture->setFreeKB(10241);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    QCOMPARE(blockCount(*m_store), 2);
    // The failed block comes before the good one of the same key.
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &image, 100, 's'));
    m_store = &m_fixture->restart();
    QCOMPARE(blockCount(*m_store), 2);
}

void TestSwapSystem::sizesBelongToTheFirstBlockOfAName()
{
    m_store->SetCurrent(m_photos, -1);
    QSize size(3, 4);
    QVERIFY(!m_store->bSetSize(QStringLiteral("a.jpg"), &size));
    QVERIFY(!m_store->bGetSize(QStringLiteral("a.jpg"), &size));
    QCOMPARE(size, QSize(3, 4));
    QImage image = picture();
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 200, 'l'));
    QVERIFY(m_store->bGetSize(QStringLiteral("a.jpg"), &size));
    QCOMPARE(size, QSize(-1, -1));
    size = QSize(640, 480);
    QVERIFY(m_store->bSetSize(QStringLiteral("a.jpg"), &size));
    const SwapControl *control = m_store->current();
    QCOMPARE((*control->begin())->width(), 640);
    QCOMPARE((*control->begin())->height(), 480);
    QCOMPARE((*(control->begin() + 1))->width(), -1);
    size = QSize();
    QVERIFY(m_store->bGetSize(QStringLiteral("a.jpg"), &size));
    QCOMPARE(size, QSize(640, 480));
    QVERIFY(!m_store->bGetSize(QStringLiteral("b.jpg"), &size));
}

void TestSwapSystem::withoutACurrentControlTheWorkingDirectoryServes()
{
    QImage image = picture();
    QVERIFY(m_store->current() == nullptr);
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &image, 100, 's'));
    QCOMPARE(m_store->current()->folder(), m_fixture->swapFolder());
    {
        const MessageLog log;
        m_store->SetCurrent(QString(), -1);
    }
    QVERIFY(QDir::setCurrent(m_photos));
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    QCOMPARE(m_store->current()->folder(), m_photos);
    QVERIFY(m_store->bLoad(QStringLiteral("a.jpg"), &image, 100, 's'));
}

void TestSwapSystem::withoutAWorkingDirectoryNothingServes()
{
    const QString gone = m_fixture->path(QStringLiteral("gone"));
    QVERIFY(QDir().mkpath(gone) && QDir::setCurrent(gone) && QDir().rmdir(gone));
    QCOMPARE(QDir::currentPath(), QString());
    QImage image = picture();
    QSize size;
    unsigned char byte = 0;
    int bytes = 1;
    const MessageLog log;
    QVERIFY(!m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    QVERIFY(!m_store->bAppend(QStringLiteral("a.jpg"), &byte, 1, 100));
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &image, 100, 's'));
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &byte, &bytes, 100));
    QVERIFY(!m_store->bGetSize(QStringLiteral("a.jpg"), &size));
    QVERIFY(!m_store->bSetSize(QStringLiteral("a.jpg"), &size));
    QStringList expected;
    for (const char *caller : {"bAppend", "bAppend", "bLoad", "bLoad", "bGetSize", "bSetSize"}) {
        expected.append(QStringLiteral("SwapSystem::SetCurrent / String Empty"));
        expected.append(
            QStringLiteral("SwapSystem::%1 / SwapControl Empty").arg(QString::fromLatin1(caller)));
    }
    QCOMPARE(log.warnings, expected);
    QCOMPARE(m_store->controls().count(), 0);
}

void TestSwapSystem::clearKeepsTheCurrentFolder()
{
    QImage image = picture();
    m_store->SetCurrent(QStringLiteral("/other"), -1);
    m_store->SetCurrent(m_photos, -1);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    m_store->Clear();
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QCOMPARE(m_store->controls().count(), 1);
    QCOMPARE(m_store->current()->folder(), m_photos);
    QCOMPARE(m_store->current()->id(), 0);
    QVERIFY(m_store->current()->isEmpty());
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), &image, 100, 's'));
}

void TestSwapSystem::clearWithoutACurrentFolder()
{
    QImage image = picture();
    m_store->SetCurrent(m_photos, -1);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    const MessageLog log;
    m_store->SetCurrent(QString(), -1);
    m_store->Clear();
    QCOMPARE(m_store->controls().count(), 0);
    QVERIFY(m_store->current() == nullptr);
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QCOMPARE(log.warnings.size(), 1);
}

void TestSwapSystem::clearLeavesIndexMarkerAndOtherFiles()
{
    QImage image = picture();
    m_store->SetCurrent(m_photos, -1);
    QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), &image, 100, 's'));
    m_store = &m_fixture->restart();
    const QByteArray index = readFile(m_fixture->indexPath());
    QVERIFY(index.size() > 8);
    const QString elsewhere = m_fixture->path(QStringLiteral("mine.swp"));
    writeFile(elsewhere, "mine");
    writeFile(m_fixture->swapFile(QStringLiteral("stray.swp")), "stray");
    QVERIFY(QDir::setCurrent(m_fixture->root.path()));
    m_store->Clear();
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QCOMPARE(readFile(m_fixture->indexPath()), index);
    QVERIFY(QFile::exists(m_fixture->markerPath()));
    QVERIFY(QFile::exists(elsewhere));
    QCOMPARE(QDir::currentPath(), m_fixture->swapFolder());
}

void TestSwapSystem::clearRemovesNothingIfTheFolderCannotBeEntered()
{
    m_store->SetCurrent(m_photos, -1);
    const QString mine = m_photos + QStringLiteral("/mine.swp");
    writeFile(mine, "mine");
    const QString away = m_fixture->path(QStringLiteral("away"));
    QVERIFY(QDir().rename(m_fixture->swapFolder(), away));
    writeFile(away + QStringLiteral("/0000s_1_a.jpg.swp"), "x");
    QVERIFY(QDir::setCurrent(m_photos));
    m_store->Clear();
    QVERIFY(QFile::exists(mine));
    QVERIFY(QFile::exists(away + QStringLiteral("/0000s_1_a.jpg.swp")));
    QCOMPARE(m_store->current()->folder(), m_photos);
    QVERIFY(QDir().rename(away, m_fixture->swapFolder()));
}

void TestSwapSystem::clearTracesWhatItDoes()
{
    writeFile(m_fixture->swapFile(QStringLiteral("a.swp")), "x");
    writeFile(m_fixture->swapFile(QStringLiteral("b.swp")), "x");
    const MessageLog log;
    m_store->Clear();
    QCOMPARE(log.trace,
             QStringList({QStringLiteral("SwapSystem::Clear / [") + m_fixture->swapFolder()
                              + QStringLiteral("]"),
                          QStringLiteral("SwapSystem::Clear / RemoveCount(2 files)"),
                          QStringLiteral("SwapSystem::Clear / remove [a.swp]"),
                          QStringLiteral("SwapSystem::Clear / remove [b.swp]")}));
}

void TestSwapSystem::aBufferIsStoredAndMissed()
{
    m_store->SetCurrent(m_photos, -1);
    unsigned char bytes[] = {1, 2, 3};
    for (int i = 0; i < 3; ++i) {
        // No limit holds for buffers, so nothing is ever trimmed.
        QVERIFY(m_store->bAppend(QStringLiteral("a.jpg"), bytes, 3, 100));
        QCOMPARE(m_store->current()->folder(), m_photos);
    }
    const QString name = QStringLiteral("0000_100_a.jpg.swp");
    QCOMPARE(m_fixture->swapFiles(), QStringList(name));
    QCOMPARE(readFile(m_fixture->swapFile(name)), QByteArray("\1\2\3"));
    int size = 3;
    QVERIFY(!m_store->bLoad(QStringLiteral("a.jpg"), bytes, &size, 100));
    QCOMPARE(size, 3);
    QCOMPARE(blockCount(m_fixture->restart()), 3);
}

void TestSwapSystem::removingAControlRemovesAFileOfItsName()
{
    const QString file = m_fixture->path(QStringLiteral("photos/a.jpg"));
    m_store->SetCurrent(QStringLiteral("/other"), -1);
    QVERIFY(m_store->bRemoveControl(file));
    QVERIFY(!QFile::exists(file));
    QVERIFY(m_store->current() == nullptr);
    m_store->SetCurrent(m_photos, -1);
    // The folder's own string, which is deleted with the control.
    QVERIFY(!m_store->bRemoveControl(m_store->current()->folder()));
    QVERIFY(QFileInfo(m_photos).isDir());
    QCOMPARE(m_store->controls().count(), 1);
    QVERIFY(controlOf(*m_store, QStringLiteral("/other")) != nullptr);
}

void TestSwapSystem::removingTheControlOfAnEmptyNameDoesNothing()
{
    m_store->SetCurrent(m_photos, -1);
    const MessageLog log;
    QVERIFY(!m_store->bRemoveControl(QString()));
    QCOMPARE(log.warnings, QStringList(QStringLiteral("SwapSystem::SetCurrent / String Empty")));
    QCOMPARE(m_store->controls().count(), 1);
}

LUMI_TEST(TestSwapSystem)
#include "TestSwapSystem.moc"
