// SPDX-License-Identifier: MIT
// The store as the rest of the program uses it, by full paths, and its cost.
#include "swap/swapStore.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QPixmap>
#include <QSize>
#include <QTest>

#include <algorithm>
#include <limits>

using namespace lumi::test;

class TestSwapStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void withoutAStoreNothingHappens();
    void pathsWithoutAFolderAreRefused_data();
    void pathsWithoutAFolderAreRefused();
    void eachCallMakesItsFolderCurrent();
    void evenALookUpMakesAControl();
    void photosOfTwoFoldersAreKeptApart();
    void bothFormsAndTheSizeGoThrough();
    void namesOfAllScriptsWorkWithinARun_data();
    void namesOfAllScriptsWorkWithinARun();
    void aSecondVisitHitsWithoutWrites();
    void aFullDiskIsNoFailureForTheCaller();
    void aLookUpAsksForTheFilesOfNoOtherBlock();

private:
    std::unique_ptr<SwapFixture> m_fixture;
};

namespace {

/// The shortest of many runs, in nanoseconds, so that other programs don't count.
template <class Work> qint64 shortest(int runs, Work work)
{
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, timer.nsecsElapsed());
    }
    return best;
}

} // namespace

void TestSwapStore::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    const MessageLog log;
    m_fixture->start();
}

void TestSwapStore::cleanup()
{
    m_fixture.reset();
}

void TestSwapStore::withoutAStoreNothingHappens()
{
    const QString file = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    m_fixture->stop();
    QVERIFY(swapSystem() == nullptr);
    QImage image = picture();
    QSize size(1, 2);
    unsigned char byte = 0;
    int bytes = 1;
    const auto before = snapshot(m_fixture->root.path());
    QVERIFY(!SwapAppend(file, &image, 100, 's'));
    QVERIFY(!SwapAppend(file, &byte, 1, 100));
    QVERIFY(!SwapLoad(file, &image, 100, 's'));
    QVERIFY(!SwapLoad(file, &byte, &bytes, 100));
    QVERIFY(!SwapGetSize(file, &size));
    QVERIFY(!SwapSetSize(file, &size));
    QCOMPARE(snapshot(m_fixture->root.path()), before);
}

void TestSwapStore::pathsWithoutAFolderAreRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("the only slash is the first character") << "/a.jpg";
    QTest::newRow("no slash") << "a.jpg";
    QTest::newRow("nothing but a slash") << "/";
    QTest::newRow("empty") << "";
}

void TestSwapStore::pathsWithoutAFolderAreRefused()
{
    QFETCH(QString, path);
    QImage image = picture();
    QSize size(1, 2);
    unsigned char byte = 0;
    int bytes = 1;
    const MessageLog log;
    QVERIFY(!SwapAppend(path, &image, 100, 's'));
    QVERIFY(!SwapAppend(path, &byte, 1, 100));
    QVERIFY(!SwapLoad(path, &image, 100, 's'));
    QVERIFY(!SwapLoad(path, &byte, &bytes, 100));
    QVERIFY(!SwapGetSize(path, &size));
    QVERIFY(!SwapSetSize(path, &size));
    QCOMPARE(m_fixture->store->controls().count(), 0);
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QVERIFY(log.warnings.isEmpty());
}

void TestSwapStore::eachCallMakesItsFolderCurrent()
{
    QSize size;
    QVERIFY(!SwapGetSize(QStringLiteral("/one/a.jpg"), &size));
    QCOMPARE(m_fixture->store->current()->folder(), QStringLiteral("/one"));
    QVERIFY(!SwapSetSize(QStringLiteral("/one/two/a.jpg"), &size));
    QCOMPARE(m_fixture->store->current()->folder(), QStringLiteral("/one/two"));
    QVERIFY(!SwapSetSize(QStringLiteral("/one/a.jpg"), &size));
    QCOMPARE(m_fixture->store->current()->folder(), QStringLiteral("/one"));
    QCOMPARE(m_fixture->store->controls().count(), 2);
}

void TestSwapStore::evenALookUpMakesAControl()
{
    QImage image;
    QVERIFY(!SwapLoad(QStringLiteral("/never/seen.jpg"), &image, 100, 's'));
    QCOMPARE(m_fixture->store->controls().count(), 1);
    QCOMPARE(m_fixture->store->current()->id(), 0);
    // Such a control does not survive a restart.
    QCOMPARE(m_fixture->restart().controls().count(), 0);
}

void TestSwapStore::photosOfTwoFoldersAreKeptApart()
{
    const QString one = m_fixture->addPhoto(QStringLiteral("one/a.jpg"));
    const QString two = m_fixture->addPhoto(QStringLiteral("two/a.jpg"));
    QImage small = picture(10, 10);
    QImage large = picture(20, 20);
    QVERIFY(SwapAppend(one, &small, 100, 's'));
    QVERIFY(SwapAppend(two, &large, 100, 's'));
    QImage loaded;
    QVERIFY(SwapLoad(one, &loaded, 100, 's'));
    QCOMPARE(loaded.width(), 10);
    QVERIFY(SwapLoad(two, &loaded, 100, 's'));
    QCOMPARE(loaded.width(), 20);
}

void TestSwapStore::bothFormsAndTheSizeGoThrough()
{
    const QString file = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    QImage image = picture();
    unsigned char bytes[] = {1, 2};
    QVERIFY(SwapAppend(file, bytes, 2, 100));
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QSize size(12, 34);
    QVERIFY(SwapSetSize(file, &size));
    size = QSize();
    QVERIFY(SwapGetSize(file, &size));
    QCOMPARE(size, QSize(12, 34));
    int room = 2;
    QVERIFY(!SwapLoad(file, bytes, &room, 100));
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    const MessageLog log;
    QVERIFY(!SwapAppend(file, static_cast<QImage *>(nullptr), 100, 's'));
    QCOMPARE(log.warnings.size(), 1);
}

void TestSwapStore::namesOfAllScriptsWorkWithinARun_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Japanese") << QString::fromUtf8("\xe5\x86\x99\xe7\x9c\x9f.jpg");
    QTest::newRow("beyond 16 bits") << QString::fromUtf8("\xf0\x9f\x93\xb7.jpg");
    QTest::newRow("placeholders") << QStringLiteral("%s %1 %n 100%.jpg");
    QTest::newRow("blanks and quotes") << QStringLiteral(" a \"b\" <b>c.jpg ");
    QTest::newRow("a hidden file") << QStringLiteral(".jpg");
    QTest::newRow("a line feed") << QStringLiteral("a\nb.jpg");
}

void TestSwapStore::namesOfAllScriptsWorkWithinARun()
{
    QFETCH(QString, name);
    const QString file = m_fixture->addPhoto(QStringLiteral("photos/") + name);
    QImage image = picture();
    QVERIFY(SwapAppend(file, &image, 100, 's'));
    QVERIFY(SwapLoad(file, &image, 100, 's'));
    QCOMPARE(m_fixture->swapFiles(),
             QStringList(QStringLiteral("0000s_100_") + name + QStringLiteral(".swp")));
    m_fixture->restart();
    const bool latin1 = QString::fromLatin1(name.toLatin1()) == name;
    QCOMPARE(SwapLoad(file, &image, 100, 's'), latin1);
}

void TestSwapStore::aSecondVisitHitsWithoutWrites()
{
    QImage image = picture(171, 119);
    QStringList photos;
    for (int i = 0; i < 35; ++i) {
        photos.append(m_fixture->addPhoto(QStringLiteral("photos/%1.jpg").arg(i)));
        QVERIFY(SwapAppend(photos.last(), &image, 100, 's'));
    }
    m_fixture->restart();
    const auto before = snapshot(m_fixture->root.path());
    for (int visit = 0; visit < 2; ++visit) {
        for (const QString &file : photos) {
            QVERIFY(SwapLoad(file, &image, 100, 's'));
        }
    }
    QCOMPARE(snapshot(m_fixture->root.path()), before);
    QCOMPARE(blockCount(*m_fixture->store), 35);
}

void TestSwapStore::aFullDiskIsNoFailureForTheCaller()
{
    const MessageLog log;
    m_fixture->stop();
    QVERIFY(QFile::remove(m_fixture->indexPath()));
    QDir::setCurrent(QDir::rootPath());
    const SmallDisk disk(m_fixture->swapFolder(), 64);
    // Without the right to mount, the size of each file is limited instead.
    std::unique_ptr<FileSizeLimit> limit;
    m_fixture->start();
    QImage image = picture(171, 119);
    int stored = 0;
    QStringList photos;
    for (int i = 0; i < 40; ++i) {
        photos.append(m_fixture->addPhoto(QStringLiteral("photos/%1.jpg").arg(i)));
        if (i == 10 && !disk.isMounted()) {
            limit = std::make_unique<FileSizeLimit>(1000);
        }
        stored += SwapAppend(photos.last(), &image, 100, 's') ? 1 : 0;
    }
    QVERIFY(stored > 0);
    QVERIFY(stored < 40);
    QCOMPARE(m_fixture->swapFiles().size(), stored);
    QCOMPARE(blockCount(*m_fixture->store), 40);
    int hits = 0;
    for (const QString &file : photos) {
        QImage loaded;
        const bool hit = SwapLoad(file, &loaded, 100, 's');
        QCOMPARE(hit, !loaded.isNull());
        hits += hit ? 1 : 0;
    }
    QCOMPARE(hits, stored);
    m_fixture->stop();
    QDir::setCurrent(QDir::rootPath());
}

void TestSwapStore::aLookUpAsksForTheFilesOfNoOtherBlock()
{
    // As full as the store may get: 400 small, 400 detail, 200 large ones in 10 folders.
    QImage image = picture(8, 8);
    QStringList photos;
    for (int folder = 0; folder < 10; ++folder) {
        for (int i = 0; i < 100; ++i) {
            const char kind = i < 40 ? 's' : i < 80 ? 'd' : 'l';
            photos.append(m_fixture->addPhoto(QStringLiteral("f%1/%2.jpg").arg(folder).arg(i)));
            QVERIFY(SwapAppend(photos.last(), &image, 171, kind));
        }
    }
    QCOMPARE(m_fixture->swapFiles().size(), 1000);
    const QString missing = m_fixture->path(QStringLiteral("f9/none.jpg"));
    const qint64 lookUp = shortest(200, [&] {
        QVERIFY(!SwapLoad(missing, &image, 171, 's'));
    });
    const qint64 hundredStats = shortest(50, [&] {
        for (int i = 900; i < 1000; ++i) {
            QVERIFY(QFileInfo(photos[i]).lastModified().isValid());
        }
    });
    qInfo("look-up among 1000 blocks: %.1f us; asking for 100 files: %.1f us",
          static_cast<double>(lookUp) / 1e3, static_cast<double>(hundredStats) / 1e3);
    QVERIFY(lookUp < hundredStats / 5);
}

LUMI_TEST(TestSwapStore)
#include "TestSwapStore.moc"
