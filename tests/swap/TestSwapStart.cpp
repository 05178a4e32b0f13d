// SPDX-License-Identifier: MIT
// Start and end of the store: folder, run marker, damage.
#include "app/common/messages.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/TestMain.h"
#include "tests/swap/SwapFixture.h"

#include <QFileInfo>
#include <QMessageBox>
#include <QTest>

#include <sys/stat.h>

using namespace lumi::test;

class TestSwapStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_fixture = std::make_unique<SwapFixture>(); }

    void cleanup() { m_fixture.reset(); }

    void theFirstStartMakesFolderAndMarker();
    void aFolderOutsideLatin1IsEntered();
    void aFolderThatCannotBeMadeIsReported();
    void aCleanEndLeavesTheIndexAndNoMarker();
    void aMarkerMeansDamage();
    void damageLeavesOtherFilesAlone();
    void afterDamageTheRunGoesOnAndEndsCleanly();
    void theMarkerGoesBeforeTheIndexIsWritten();
    void aStoreOfTheOtherSettingIsEmptiedOnce();
    void aDamagedStoreOfTheOtherSetting();
    void aPipeInPlaceOfTheIndexIsReplaced();
    void linksInTheFolderAreNotFollowed();
    void linkInPlaceOfTheFolderIsReplaced();
    void theWorkAreaIsPartOfTheObject();
    void theHandleIsTakenOutAtTheEnd();

private:
    std::unique_ptr<SwapFixture> m_fixture;
};

void TestSwapStart::theFirstStartMakesFolderAndMarker()
{
    const MessageLog log;
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(log.warnings, QStringList(QStringLiteral("SwapSystem::InitRead Not Initialze File")));
    QCOMPARE(log.trace,
             QStringList(QStringLiteral("Create SwapSystem Directory(") + m_fixture->swapFolder()
                         + QStringLiteral(")")));
    QVERIFY(QFile::exists(m_fixture->markerPath()));
    QCOMPARE(QFileInfo(m_fixture->markerPath()).size(), 0);
    QVERIFY(!QFile::exists(m_fixture->indexPath()));
    QCOMPARE(store.controls().count(), 0);
    QVERIFY(store.current() == nullptr);
    QCOMPARE(QDir::currentPath(), m_fixture->swapFolder());
}

void TestSwapStart::aFolderOutsideLatin1IsEntered()
{
    const QString folder
        = m_fixture->path(QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac/.photo_swp"));
    const MessageLog log;
    const SwapSystem store(QFile::encodeName(folder), QStringLiteral(".swp"));
    QVERIFY(QFile::exists(folder + QStringLiteral("/.SwapMng.chk")));
    QCOMPARE(log.warnings.size(), 1);
}

void TestSwapStart::aFolderThatCannotBeMadeIsReported()
{
    writeFile(m_fixture->path(QStringLiteral("file")), "in the way");
    const QString folder = m_fixture->path(QStringLiteral("file/.photo_swp"));
    const QString photo = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    QDir::setCurrent(m_fixture->root.path());
    const auto before = snapshot(m_fixture->root.path());
    const MessageLog log;
    {
        SwapSystem store(QFile::encodeName(folder), QStringLiteral(".swp"));
        swapSystem(&store);
        QCOMPARE(log.warnings,
                 QStringList({QStringLiteral("Error SwapSystem(") + folder + QStringLiteral(")"),
                              QStringLiteral("SwapSystem::InitRead Not Initialze File")}));
        QImage image = picture();
        QVERIFY(!SwapAppend(photo, &image, 100, 's'));
        QVERIFY(!SwapLoad(photo, &image, 100, 's'));
        store.Clear();
    }
    QCOMPARE(log.warnings.last(), QStringLiteral("SwapSystem::InitWrite Not Initialze File"));
    QCOMPARE(snapshot(m_fixture->root.path()), before);
}

void TestSwapStart::aCleanEndLeavesTheIndexAndNoMarker()
{
    const MessageLog log;
    m_fixture->start();
    m_fixture->stop();
    QVERIFY(!QFile::exists(m_fixture->markerPath()));
    QVERIFY(QFile::exists(m_fixture->indexPath()));
    const BoxCloser closer;
    m_fixture->start();
    QVERIFY(closer.boxes.isEmpty());
    QVERIFY(QFile::exists(m_fixture->markerPath()));
}

void TestSwapStart::aMarkerMeansDamage()
{
    const QString photo = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    {
        const MessageLog log;
        m_fixture->start();
    }
    QImage image = picture();
    QVERIFY(SwapAppend(photo, &image, 100, 's'));
    m_fixture->stop();
    writeFile(m_fixture->markerPath(), "");
    const MessageLog log;
    const BoxCloser closer;
    const SwapSystem &store = m_fixture->start();
    QCOMPARE(closer.boxes.size(), 1);
    const BoxCloser::Box &box = closer.boxes.first();
    QCOMPARE(box.title, QStringLiteral("Error"));
    QCOMPARE(box.text,
             QStringLiteral("Temporary files seem corrupted.\nThey will be deleted.\n\n"
                            "(the program may run temporarily slow)"));
    QCOMPARE(box.icon, static_cast<int>(QMessageBox::Critical));
    QCOMPARE(box.buttons, static_cast<int>(QMessageBox::Ok));
    QVERIFY(!box.hasParent);
    QVERIFY(!box.anyOtherWindow);
    QCOMPARE(m_fixture->swapFiles(), QStringList());
    QVERIFY(!QFile::exists(m_fixture->indexPath()));
    QVERIFY(QFile::exists(m_fixture->markerPath()));
    QCOMPARE(store.controls().count(), 0);
    QVERIFY(log.warnings.isEmpty());
}

void TestSwapStart::damageLeavesOtherFilesAlone()
{
    QVERIFY(QDir().mkpath(m_fixture->swapFile(QStringLiteral("folder.swp"))));
    writeFile(m_fixture->swapFile(QStringLiteral("notes.txt")), "mine");
    writeFile(m_fixture->swapFile(QStringLiteral("0000s_1_a.jpg.swp")), "old");
    writeFile(m_fixture->path(QStringLiteral("outside.swp")), "mine");
    QVERIFY(QFile::link(m_fixture->path(QStringLiteral("outside.swp")),
                        m_fixture->swapFile(QStringLiteral("link.swp"))));
    writeFile(m_fixture->markerPath(), "");
    const BoxCloser closer;
    m_fixture->start();
    QCOMPARE(m_fixture->swapFiles(),
             QStringList({QStringLiteral("folder.swp"), QStringLiteral("link.swp")}));
    QVERIFY(QFile::exists(m_fixture->swapFile(QStringLiteral("notes.txt"))));
    QCOMPARE(readFile(m_fixture->path(QStringLiteral("outside.swp"))), QByteArray("mine"));
}

void TestSwapStart::afterDamageTheRunGoesOnAndEndsCleanly()
{
    const QString photo = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    writeFile(m_fixture->markerPath(), "");
    {
        const BoxCloser closer;
        m_fixture->start();
    }
    QImage image = picture();
    QVERIFY(SwapAppend(photo, &image, 100, 's'));
    QVERIFY(QFile::exists(m_fixture->markerPath()));
    const BoxCloser closer;
    m_fixture->restart();
    QVERIFY(closer.boxes.isEmpty());
    QVERIFY(SwapLoad(photo, &image, 100, 's'));
}

void TestSwapStart::theMarkerGoesBeforeTheIndexIsWritten()
{
    const MessageLog log;
    m_fixture->start();
    // A folder with the name of the index makes the writing of the index fail.
    QVERIFY(QDir().mkpath(m_fixture->indexPath()));
    m_fixture->stop();
    QCOMPARE(log.warnings.last(), QStringLiteral("SwapSystem::InitWrite Not Initialze File"));
    QVERIFY(!QFile::exists(m_fixture->markerPath()));
}

/// The other setting of the machine for upright photos. A store of an earlier version is one of
/// photos as stored.
void TestSwapStart::aStoreOfTheOtherSettingIsEmptiedOnce()
{
    const QString photo = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    QImage image = picture();
    const BoxCloser closer;
    const MessageLog log;
    m_fixture->start();
    for (const bool isUpright : {true, false, true}) {
        QVERIFY(SwapAppend(photo, &image, 100, 's'));
        QCOMPARE(blockCount(m_fixture->restart()), 1);
        QVERIFY(SwapLoad(photo, &image, 100, 's'));

        m_fixture->machine->upright = isUpright;
        const SwapSystem &store = m_fixture->restart();
        QCOMPARE(store.controls().count(), 0);
        QVERIFY(!SwapLoad(photo, &image, 100, 's'));
        QCOMPARE(m_fixture->swapFiles(), QStringList());
        QVERIFY(!QFile::exists(m_fixture->indexPath()));
        QVERIFY(QFile::exists(m_fixture->markerPath()));
    }
    QVERIFY(closer.boxes.isEmpty());
}

void TestSwapStart::aDamagedStoreOfTheOtherSetting()
{
    const QString photo = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    writeFile(m_fixture->markerPath(), "");
    m_fixture->machine->upright = true;
    const BoxCloser closer;
    m_fixture->start();
    QCOMPARE(closer.boxes.size(), 1);
    QImage image = picture();
    QVERIFY(SwapAppend(photo, &image, 100, 's'));
    m_fixture->restart();
    QCOMPARE(closer.boxes.size(), 1);
    QVERIFY(SwapLoad(photo, &image, 100, 's'));
}

void TestSwapStart::aPipeInPlaceOfTheIndexIsReplaced()
{
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    QCOMPARE(::mkfifo(QFile::encodeName(m_fixture->indexPath()).constData(), 0600), 0);
    const MessageLog log;
    m_fixture->start();
    m_fixture->stop();
    QCOMPARE(log.warnings, QStringList(QStringLiteral("SwapSystem::InitRead Not Initialze File")));
    QVERIFY(QFileInfo(m_fixture->indexPath()).isFile());
    QVERIFY(!QFile::exists(m_fixture->markerPath()));
}

void TestSwapStart::linksInTheFolderAreNotFollowed()
{
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    const QString other = m_fixture->path(QStringLiteral("other"));
    const QString missing = m_fixture->path(QStringLiteral("missing"));
    writeFile(other, "another file");
    QVERIFY(QFile::link(other, m_fixture->indexPath()));
    QVERIFY(QFile::link(missing, m_fixture->markerPath()));
    m_fixture->start();
    m_fixture->stop();
    QCOMPARE(readFile(other), QByteArray("another file"));
    QVERIFY(!QFile::exists(missing));
    QVERIFY(!QFileInfo(m_fixture->indexPath()).isSymLink());
}

void TestSwapStart::linkInPlaceOfTheFolderIsReplaced()
{
    const QString other = m_fixture->path(QStringLiteral("other"));
    QVERIFY(QDir().mkpath(other));
    writeFile(other + QStringLiteral("/a.swp"), "another file");
    QVERIFY(QFile::link(other, m_fixture->swapFolder()));
    m_fixture->start().Clear();
    m_fixture->stop();
    QVERIFY(!QFileInfo(m_fixture->swapFolder()).isSymLink());
    QCOMPARE(QDir(other).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("a.swp")));
}

void TestSwapStart::theWorkAreaIsPartOfTheObject()
{
    static_assert(sizeof(SwapSystem) > 131072);
    static_assert(sizeof(SwapSystem) < 131072 + 512);
    static_assert(std::is_base_of_v<QDir, SwapSystem>);
    const MessageLog log;
    QCOMPARE(m_fixture->start().path(), QStringLiteral("."));
}

void TestSwapStart::theHandleIsTakenOutAtTheEnd()
{
    const MessageLog log;
    SwapSystem *first = &m_fixture->start();
    QCOMPARE(swapSystem(), first);
    QCOMPARE(swapSystem(nullptr), first);
    {
        SwapSystem other(QFile::encodeName(m_fixture->path(QStringLiteral("o"))),
                         QStringLiteral(".swp"));
        QCOMPARE(swapSystem(), first);
        QCOMPARE(swapSystem(&other), &other);
    }
    QVERIFY(swapSystem() == nullptr);
    QCOMPARE(swapSystem(first), first);
}

LUMI_TEST(TestSwapStart)
#include "TestSwapStart.moc"
