// SPDX-License-Identifier: MIT
// The copy of a card's tree, without a window.
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/ImportRun.h"
#include "tests/import/cardTree.h"
#include "tests/support/FileFaults.h"
#include "tests/support/FullDisk.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/views/BrowserWorld.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <climits>
#include <functional>
#include <memory>

#include <sys/stat.h>
#include <unistd.h>

using lumi::ImportKind;
using lumi::test::FileFaults;
using lumi::test::fillCard;
using lumi::test::importableTree;
using lumi::test::stateOf;
using lumi::test::Tree;
using lumi::test::treeOf;
using lumi::test::writeBytes;

Q_DECLARE_METATYPE(lumi::ImportKind)

namespace {

constexpr qsizetype kLongFilm = 24'000'001;

} // namespace

class TestImportRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aWholeCardArrives();
    void twoThousandFilesArrive();
    void anotherProgramFindsNoDifference();
    void theStepsAreCounted();
    void theFolderIsNew_data();
    void theFolderIsNew();
    void takenNamesAreNumbered();
    void theCardsPathIsNoPartOfTheNewOne();
    void emptyFilesAreWhole();
    void filesAreNeverOverwritten();
    void aNumberGoesBeforeTheExtension();
    void namesWithASlashAreRefused_data();
    void namesWithASlashAreRefused();
    void theStoreMustBeWritable_data();
    void theStoreMustBeWritable();
    void foldersThatCantBeMade_data();
    void foldersThatCantBeMade();
    void aFolderThatIsThereMustBeWritable_data();
    void aFolderThatIsThereMustBeWritable();
    void resultsOfACopyAreJudged_data();
    void resultsOfACopyAreJudged();
    void theFirstFailureEndsTheRun();
    void aCancelStopsTheFileInWork();
    void aCancelOfEmptyFilesWaits();
    void aCancelWithoutACardIsNone();
    void aWrongSizeDoesNotEndTheRun();
    void aVanishedSourceIsNoMatch();
    void aFullDisk();
    void aLimitInTheMiddleOfAFile_data();
    void aLimitInTheMiddleOfAFile();
    void unreadableFilesAreNotOffered();

private:
    struct Failure
    {
        QString path;
        ImportKind kind;
    };

    ImportKind importCard(const QString &name = QStringLiteral("new"));

    QString target(const QString &name = QStringLiteral("new")) const
    {
        return m_world->store + QLatin1Char('/') + name;
    }

    std::unique_ptr<lumi::test::BrowserWorld> m_world;
    QString m_card;
    QString m_folderName;
    int m_copied = 0;
    bool m_isCardPresent = true;
    QList<int> m_steps;
    QList<Failure> m_failures;
    std::function<void(int)> m_atStep;
};

void TestImportRun::initTestCase()
{
    FPVFileTree::setDirFilter(0x313);
}

void TestImportRun::init()
{
    m_world = std::make_unique<lumi::test::BrowserWorld>();
    m_card = m_world->machine->sd;
    m_world->machine->insertCard(Slot::SD);
    m_isCardPresent = true;
    m_atStep = [](int) {};
    setCopyCancelled(false);
}

void TestImportRun::cleanup()
{
    m_world.reset();
}

ImportKind TestImportRun::importCard(const QString &name)
{
    m_steps.clear();
    m_failures.clear();
    FPVFileTree tree;
    tree.walk(m_card, false, nullptr);
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [this](int step) {
        m_steps.append(step);
        m_atStep(step);
    };
    callbacks.isCardPresent = [this] {
        return m_isCardPresent;
    };
    callbacks.fileFailed = [this](const QString &path, ImportKind kind) {
        m_failures.append({path, kind});
    };
    lumi::ImportRun run({FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()}, callbacks);
    const ImportKind kind = run.run(name);
    m_folderName = run.folderName();
    m_copied = run.copiedCount();
    return kind;
}

void TestImportRun::aWholeCardArrives()
{
    const int count = fillCard(m_card, 200);
    const Tree before = stateOf(m_card);
    QCOMPARE(importCard(), ImportKind::Done);
    QCOMPARE(m_copied, count);
    const Tree expected = importableTree(m_card);
    QCOMPARE(expected.values().count(QByteArray("folder")), qsizetype(14));
    QCOMPARE(treeOf(target()), expected);
    QCOMPARE(stateOf(m_card), before);
    QVERIFY(m_failures.isEmpty());
}

void TestImportRun::twoThousandFilesArrive()
{
    const int count = fillCard(m_card, 2000);
    writeBytes(m_card + QStringLiteral("/PRIVATE/M4ROOT/CLIP/long film.MP4"), kLongFilm);
    const Tree before = stateOf(m_card);
    QCOMPARE(importCard(), ImportKind::Done);
    QCOMPARE(m_copied, count + 1);
    QVERIFY(treeOf(target()) == importableTree(m_card));
    QVERIFY(stateOf(m_card) == before);
}

void TestImportRun::anotherProgramFindsNoDifference()
{
    fillCard(m_card, 60);
    QCOMPARE(importCard(), ImportKind::Done);
    // What is no file or folder of the card's own is not imported.
    for (const char *name : {"/pipe.jpg", "/DCIM/dangling.jpg", "/DCIM/linked folder"}) {
        QVERIFY(::unlink(QFile::encodeName(m_card + QLatin1String(name)).constData()) == 0);
    }
    QProcess diff;
    diff.start(QStringLiteral("diff"), {QStringLiteral("-r"), m_card, target()});
    QVERIFY(diff.waitForFinished());
    QCOMPARE(diff.readAllStandardOutput(), QByteArray());
    QCOMPARE(diff.exitCode(), 0);
}

void TestImportRun::theStepsAreCounted()
{
    for (int i = 0; i < 3; ++i) {
        writeBytes(m_card + QString::asprintf("/%d.jpg", i), 10);
    }
    m_atStep = [this](int step) {
        if (step == 1) {
            QVERIFY(QFileInfo(target()).isDir());
        }
    };
    QCOMPARE(importCard(), ImportKind::Done);
    // One for the folders, one for each file: of 3 + 2 the last is never reached.
    QCOMPARE(m_steps, (QList<int>{1, 2, 3, 4}));
}

void TestImportRun::theFolderIsNew_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("made");
    QTest::newRow("a free name stands")
        << QStringLiteral("20260304_") << QStringLiteral("20260304_");
    QTest::newRow("an empty name becomes a number") << QStringLiteral("") << QStringLiteral("001");
    QTest::newRow("a dot becomes hidden") << QStringLiteral(".") << QStringLiteral(".001");
    QTest::newRow("two dots lead nowhere") << QStringLiteral("..") << QStringLiteral("..001");
    QTest::newRow("blanks and other letters")
        << QString::fromUtf8(" mit Öl ") << QString::fromUtf8(" mit Öl ");
    QTest::newRow("signs of formats and tags")
        << QStringLiteral("<b>%1 %d<i>") << QStringLiteral("<b>%1 %d<i>");
}

void TestImportRun::theFolderIsNew()
{
    QFETCH(QString, name);
    QFETCH(QString, made);
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    QCOMPARE(importCard(name), ImportKind::Done);
    QCOMPARE(m_folderName, made);
    QCOMPARE(treeOf(target(made)), importableTree(m_card));
    QCOMPARE(QDir(m_world->store).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{made});
}

void TestImportRun::takenNamesAreNumbered()
{
    writeBytes(m_card + QStringLiteral("/dcim/a.jpg"), 10);
    m_world->makeFile(QStringLiteral("trip002"), "a file holds a name too");
    for (const char *made : {"trip", "trip001", "trip003"}) {
        QCOMPARE(importCard(QStringLiteral("trip")), ImportKind::Done);
        QCOMPARE(m_folderName, QLatin1String(made));
        // Two cards with the same names stay apart.
        QCOMPARE(treeOf(target(QLatin1String(made))), importableTree(m_card));
        writeBytes(m_card + QStringLiteral("/dcim/a.jpg"), 10 + m_folderName.size());
    }
}

void TestImportRun::theCardsPathIsNoPartOfTheNewOne()
{
    writeBytes(m_card + QStringLiteral("/dcim/a.jpg"), 10);
    QCOMPARE(importCard(), ImportKind::Done);
    QCOMPARE(treeOf(target()).keys(),
             (QStringList{QStringLiteral("dcim"), QStringLiteral("dcim/a.jpg")}));
}

void TestImportRun::emptyFilesAreWhole()
{
    writeBytes(m_card + QStringLiteral("/a.jpg"), 0);
    QCOMPARE(importCard(), ImportKind::Done);
    QCOMPARE(m_copied, 1);
    QCOMPARE(treeOf(target()), (Tree{{QStringLiteral("a.jpg"), "file"}}));
}

void TestImportRun::filesAreNeverOverwritten()
{
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    writeBytes(m_card + QStringLiteral("/b.jpg"), 20);
    // Somebody else writes into the new folder while the copy runs.
    m_atStep = [this](int step) {
        if (step == 2) {
            m_world->makeFile(target() + QStringLiteral("/b.jpg"), "somebody's");
            m_world->makeFile(target() + QStringLiteral("/b-1.jpg"), "somebody's");
        }
    };
    QCOMPARE(importCard(), ImportKind::Done);
    Tree expected = importableTree(m_card);
    expected.insert(QStringLiteral("b-2.jpg"), expected.take(QStringLiteral("b.jpg")));
    expected.insert(QStringLiteral("b.jpg"), "filesomebody's");
    expected.insert(QStringLiteral("b-1.jpg"), "filesomebody's");
    QCOMPARE(treeOf(target()), expected);
}

void TestImportRun::aNumberGoesBeforeTheExtension()
{
    writeBytes(m_card + QStringLiteral("/a.b.jpg"), 10);
    m_atStep = [this](int step) {
        if (step == 1) {
            m_world->makeFile(target() + QStringLiteral("/a.b.jpg"), "x");
        }
    };
    QCOMPARE(importCard(), ImportKind::Done);
    QVERIFY(QFile::exists(target() + QStringLiteral("/a.b-1.jpg")));
}

void TestImportRun::namesWithASlashAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("below a new folder") << QStringLiteral("a/b");
    QTest::newRow("below an existing one") << QStringLiteral("there/b");
    QTest::newRow("beside the store") << QStringLiteral("../b");
    QTest::newRow("at the end") << QStringLiteral("b/");
    QTest::newRow("alone") << QStringLiteral("/");
}

void TestImportRun::namesWithASlashAreRefused()
{
    QFETCH(QString, name);
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    m_world->makeFolder(QStringLiteral("there"));
    const Tree before = stateOf(QFileInfo(m_world->store).path());
    QCOMPARE(importCard(name), ImportKind::AccessFailure);
    QCOMPARE(stateOf(QFileInfo(m_world->store).path()), before);
    QCOMPARE(m_copied, 0);
    QVERIFY(m_steps.isEmpty());
}

void TestImportRun::theStoreMustBeWritable_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("it is gone") << QStringLiteral("gone");
    QTest::newRow("it is a file") << QStringLiteral("file");
    QTest::newRow("its owner locked it") << QStringLiteral("mode");
}

void TestImportRun::theStoreMustBeWritable()
{
    QFETCH(QString, obstacle);
    const QString store = m_world->store;
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    if (obstacle == QLatin1String("mode")) {
        chmod(QFile::encodeName(store).constData(), S_IRUSR | S_IXUSR);
    } else {
        QVERIFY(QDir(store).removeRecursively());
    }
    if (obstacle == QLatin1String("file")) {
        m_world->makeFile(store, "x");
    }
    {
        const lumi::test::OrdinaryUser user;
        QCOMPARE(importCard(), ImportKind::AccessFailure);
    }
    QCOMPARE(m_copied, 0);
    QVERIFY(m_failures.isEmpty());
    chmod(QFile::encodeName(store).constData(), S_IRWXU);
    QFile::remove(store);
}

void TestImportRun::foldersThatCantBeMade_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<ImportKind>("kind");
    QTest::newRow("no room at all") << 0 << ImportKind::MemoryFull;
    QTest::newRow("nobody knows the room") << -1 << ImportKind::MemoryFull;
    QTest::newRow("there is room") << 1 << ImportKind::AccessFailure;
}

void TestImportRun::foldersThatCantBeMade()
{
    QFETCH(int, freeKB);
    QFETCH(ImportKind, kind);
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    m_world->machine->diskAt = [freeKB](const QByteArray &path) {
        return path.endsWith("/Documents") ? DiskFigures{1024, freeKB, freeKB, freeKB >= 0}
                                           : DiskFigures();
    };
    // A name that no file system takes.
    QCOMPARE(importCard(QString(300, QLatin1Char('x'))), kind);
    QVERIFY(m_steps.isEmpty());
    QVERIFY(m_failures.isEmpty());
    // One of the card's folders: this path has become too long.
    QString deep;
    for (int i = 0; i < 3; ++i) {
        deep += QLatin1Char('/') + QString(250, QLatin1Char('d'));
    }
    lumi::ImportRun run({m_card, {QStringLiteral("/d"), deep + QString(300, QLatin1Char('e'))}, {}},
                        {});
    QCOMPARE(run.run(QStringLiteral("deep")), kind);
    QVERIFY(QFileInfo(target(QStringLiteral("deep/d"))).isDir());
}

void TestImportRun::aFolderThatIsThereMustBeWritable_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<ImportKind>("kind");
    QTest::newRow("it can be written") << 0777 << ImportKind::Done;
    QTest::newRow("its owner locked it") << 0555 << ImportKind::AccessFailure;
}

void TestImportRun::aFolderThatIsThereMustBeWritable()
{
    QFETCH(int, mode);
    QFETCH(ImportKind, kind);
    // Beside the new one, as if somebody else had made it.
    const QString there = m_world->makeFolder(QStringLiteral("there"));
    lumi::test::openToAll(m_world->store);
    QCOMPARE(chmod(QFile::encodeName(there).constData(), static_cast<mode_t>(mode)), 0);
    QList<int> steps;
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [&steps](int step) {
        steps.append(step);
    };
    lumi::ImportRun run({m_card, {QStringLiteral("/../there")}, {}}, callbacks);
    const lumi::test::OrdinaryUser user;
    QCOMPARE(run.run(QStringLiteral("new")), kind);
    QCOMPARE(steps, kind == ImportKind::Done ? QList<int>{1} : QList<int>());
    QVERIFY(QFileInfo(target()).isDir());
}

void TestImportRun::resultsOfACopyAreJudged_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("roomKB");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("present");
    QTest::addColumn<ImportKind>("kind");
    const qint64 tenKB = 10 * 1024;
    QTest::newRow("stopped") << 6 << 0 << tenKB << true << ImportKind::Cancelled;
    QTest::newRow("no room left") << 4 << 99999 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed write without room") << 2 << 9 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed write with room")
        << 2 << 10 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("a part of a KB counts for nothing")
        << 2 << 10 << tenKB + 1023 << true << ImportKind::AccessFailure;
    QTest::newRow("failed open without room") << 5 << 9 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed open with room") << 5 << 10 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("more than 32 bits")
        << 2 << INT_MAX << (qint64(INT_MAX) + 1) * 1024 << true << ImportKind::MemoryFull;
    QTest::newRow("nothing to remove") << 3 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("a read error") << 1 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("an unknown result") << 14 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("stopped, but the card has gone")
        << 6 << 0 << tenKB << false << ImportKind::AccessFailure;
    QTest::newRow("no room left, but the card has gone")
        << 4 << 0 << tenKB << false << ImportKind::AccessFailure;
}

void TestImportRun::resultsOfACopyAreJudged()
{
    QFETCH(int, result);
    QFETCH(int, roomKB);
    QFETCH(qint64, size);
    QFETCH(bool, present);
    QFETCH(ImportKind, kind);
    QCOMPARE(lumi::kindOfFailure(result, roomKB, size, present), kind);
}

void TestImportRun::theFirstFailureEndsTheRun()
{
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 20000);
    }
    m_atStep = [this](int step) {
        if (step == 2) {
            QVERIFY(QFile::remove(m_card + QStringLiteral("/b.jpg")));
        }
    };
    QCOMPARE(importCard(), ImportKind::AccessFailure);
    QCOMPARE(m_copied, 1);
    QCOMPARE(m_failures.size(), qsizetype(1));
    QCOMPARE(m_failures.constFirst().path, QString(m_card + QStringLiteral("/b.jpg")));
    QCOMPARE(treeOf(target()).keys(), QStringList{QStringLiteral("a.jpg")});
}

void TestImportRun::aCancelStopsTheFileInWork()
{
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 20000);
    }
    m_world->makeFolder(m_card + QStringLiteral("/empty"));
    m_atStep = [](int step) {
        setCopyCancelled(step == 2);
    };
    QCOMPARE(importCard(), ImportKind::Cancelled);
    QCOMPARE(m_copied, 1);
    QCOMPARE(m_failures.constFirst().kind, ImportKind::Cancelled);
    QCOMPARE(treeOf(target()).keys(),
             (QStringList{QStringLiteral("a.jpg"), QStringLiteral("empty")}));
}

void TestImportRun::aCancelOfEmptyFilesWaits()
{
    for (const char *name : {"/a.jpg", "/b.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 0);
    }
    writeBytes(m_card + QStringLiteral("/c.jpg"), 1);
    setCopyCancelled(true);
    QCOMPARE(importCard(), ImportKind::Cancelled);
    QCOMPARE(m_copied, 2);
    QVERIFY(m_failures.constFirst().path.endsWith(QStringLiteral("/c.jpg")));
}

void TestImportRun::aCancelWithoutACardIsNone()
{
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 20000);
    }
    m_atStep = [this](int step) {
        m_isCardPresent = step != 2;
        setCopyCancelled(step == 2);
    };
    QCOMPARE(importCard(), ImportKind::AccessFailure);
    QCOMPARE(m_copied, 1);
    QCOMPARE(m_failures.size(), qsizetype(1));
    QCOMPARE(m_failures.constFirst().kind, ImportKind::AccessFailure);
    QCOMPARE(treeOf(target()).keys(), QStringList{QStringLiteral("a.jpg")});
}

void TestImportRun::aWrongSizeDoesNotEndTheRun()
{
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 40000);
    }
    // The second block of the second file can't be read, which looks like its end.
    std::unique_ptr<FileFaults> faults;
    m_atStep = [this, &faults](int step) {
        if (step == 2) {
            faults = std::make_unique<FileFaults>(m_card);
            faults->fail(FileFaults::Read, 2, EIO);
        }
    };
    QCOMPARE(importCard(), ImportKind::Mismatch);
    QCOMPARE(m_copied, 3);
    QCOMPARE(m_failures.size(), qsizetype(1));
    QCOMPARE(m_failures.constFirst().path, QString(m_card + QStringLiteral("/b.jpg")));
    QCOMPARE(m_failures.constFirst().kind, ImportKind::Mismatch);
    QCOMPARE(treeOf(target()).keys(),
             (QStringList{QStringLiteral("a.jpg"), QStringLiteral("c.jpg")}));
    QCOMPARE(m_steps, (QList<int>{1, 2, 3, 4}));
}

void TestImportRun::aVanishedSourceIsNoMatch()
{
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [this] {
        // Gone with all its bytes, and the copy with it.
        if (QFileInfo::exists(target() + QStringLiteral("/a.jpg"))) {
            QFile::remove(m_card + QStringLiteral("/a.jpg"));
            QFile::resize(target() + QStringLiteral("/a.jpg"), 0);
        }
    });
    timer.start(0);
    const ImportKind kind = importCard();
    QCOMPARE(kind, ImportKind::Mismatch);
    QVERIFY(treeOf(target()).isEmpty());
}

void TestImportRun::aFullDisk()
{
    const lumi::test::SmallDisk disk(m_world->store, 64);
    std::unique_ptr<lumi::test::FileSizeLimit> limit;
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 30000);
    }
    m_world->machine->diskAt = [this](const QByteArray &) {
        return m_world->machine->Machine::disk(QFile::encodeName(m_world->store));
    };
    if (!disk.isMounted()) {
        limit = std::make_unique<lumi::test::FileSizeLimit>(20000);
        m_world->machine->setFreeDiskKB(2);
    }
    QCOMPARE(importCard(), ImportKind::MemoryFull);
    QCOMPARE(m_failures.size(), qsizetype(1));
    const Tree tree = treeOf(target());
    QCOMPARE(tree.size(), qsizetype(m_copied));
    for (auto it = tree.begin(); it != tree.end(); ++it) {
        QCOMPARE(it.value(), importableTree(m_card).value(it.key()));
    }
    QVERIFY(m_copied < 3);
}

void TestImportRun::aLimitInTheMiddleOfAFile_data()
{
    QTest::addColumn<int>("withPart");
    QTest::addColumn<int>("afterwards");
    QTest::addColumn<ImportKind>("kind");
    QTest::newRow("too little room for the file") << 18 << 38 << ImportKind::MemoryFull;
    QTest::newRow("room enough once the part has gone") << 20 << 40 << ImportKind::AccessFailure;
    QTest::newRow("only the room afterwards counts") << 99 << 38 << ImportKind::MemoryFull;
}

void TestImportRun::aLimitInTheMiddleOfAFile()
{
    QFETCH(int, withPart);
    QFETCH(int, afterwards);
    QFETCH(ImportKind, kind);
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10000);
    writeBytes(m_card + QStringLiteral("/b.jpg"), 40000); // 39 KB
    m_world->machine->diskAt = [this, withPart, afterwards](const QByteArray &) {
        const bool isPartThere = QFile::exists(target() + QStringLiteral("/b.jpg"));
        const int freeKB = isPartThere ? withPart : afterwards;
        return DiskFigures{2048, freeKB, freeKB / 2, true};
    };
    const lumi::test::FileSizeLimit limit(20000);
    QCOMPARE(importCard(), kind);
    QCOMPARE(m_copied, 1);
    QCOMPARE(treeOf(target()).keys(), QStringList{QStringLiteral("a.jpg")});
    QVERIFY(m_failures.constFirst().path.endsWith(QStringLiteral("/b.jpg")));
}

void TestImportRun::unreadableFilesAreNotOffered()
{
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    writeBytes(m_card + QStringLiteral("/locked.jpg"), 10);
    chmod(QFile::encodeName(m_card + QStringLiteral("/locked.jpg")).constData(), 0);
    chmod(QFile::encodeName(m_card).constData(), 0755);
    chmod(QFile::encodeName(QFileInfo(m_card).path()).constData(), 0755);
    FPVFileTree tree;
    {
        const lumi::test::OrdinaryUser user;
        tree.walk(m_card, false, nullptr);
    }
    QCOMPARE(tree.allFiles(), QStringList{QStringLiteral("/a.jpg")});
}

LUMI_TEST(TestImportRun)
#include "TestImportRun.moc"
