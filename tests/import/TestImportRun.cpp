// SPDX-License-Identifier: MIT
// The copy of a card's tree, without a window.
#include "tests/import/RunTest.h"
#include "tests/import/cardTree.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QTest>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

using lumi::ImportKind;
using lumi::test::fillCard;
using lumi::test::importableTree;
using lumi::test::stateOf;
using lumi::test::Tree;
using lumi::test::treeOf;
using lumi::test::writeBytes;

namespace {

/// Files whose write-back was started, and up to which byte.
QMap<QString, qint64> writtenBack;

} // namespace

// Interposes the function of the C library.
extern "C" int sync_file_range(int handle, off64_t from, off64_t length, unsigned int flags)
{
    using Range = int(int, off64_t, off64_t, unsigned int);
    static auto *kReal = reinterpret_cast<Range *>(::dlsym(RTLD_NEXT, "sync_file_range"));
    const QString path = QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(handle));
    writtenBack[path] = qMax<qint64>(writtenBack.value(path), from + length);
    return kReal(handle, from, length, flags);
}

class TestImportRun : public RunTest
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeCardArrives();
    void anotherProgramFindsNoDifference();
    void theStepsAreCounted();
    void everyCopyIsOnItsWayToTheDiskAtOnce();
    void theFolderIsNew_data();
    void theFolderIsNew();
    void takenNamesAreNumbered();
    void filesAreNeverOverwritten();
    void namesWithASlashAreRefused_data();
    void namesWithASlashAreRefused();
    void theStoreMustBeWritable_data();
    void theStoreMustBeWritable();
    void foldersThatCantBeMade_data();
    void foldersThatCantBeMade();
    void aFolderThatIsThereMustBeWritable_data();
    void aFolderThatIsThereMustBeWritable();
};

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

void TestImportRun::anotherProgramFindsNoDifference()
{
    fillCard(m_card, 60);
    QCOMPARE(importCard(), ImportKind::Done);
    // Entries that are not imported.
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
    // One step for the folders, one for each file. The bar has one more.
    QCOMPARE(m_steps, (QList<int>{1, 2, 3, 4}));
}

void TestImportRun::everyCopyIsOnItsWayToTheDiskAtOnce()
{
    constexpr qsizetype kSize = 300'000;
    for (int i = 0; i < 3; ++i) {
        writeBytes(m_card + QString::asprintf("/dcim/%d.jpg", i), kSize);
    }
    writtenBack.clear();
    m_atStep = [](int step) {
        QCOMPARE(writtenBack.size(), qsizetype(step - 1));
    };
    QCOMPARE(importCard(), ImportKind::Done);
    for (int i = 0; i < 3; ++i) {
        QVERIFY(writtenBack.value(target() + QString::asprintf("/dcim/%d.jpg", i)) >= kSize);
    }
}

void TestImportRun::theFolderIsNew_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("a free name stands")
        << QStringLiteral("20260304_") << QStringLiteral("20260304_");
    QTest::newRow("an empty name becomes a number") << QStringLiteral("") << QStringLiteral("001");
    QTest::newRow("a dot becomes hidden") << QStringLiteral(".") << QStringLiteral(".001");
    QTest::newRow("two dots do not lead out") << QStringLiteral("..") << QStringLiteral("..001");
    QTest::newRow("blanks and other letters")
        << QString::fromUtf8(" mit Öl ") << QString::fromUtf8(" mit Öl ");
    QTest::newRow("format characters and tags")
        << QStringLiteral("<b>%1 %d<i>") << QStringLiteral("<b>%1 %d<i>");
}

void TestImportRun::theFolderIsNew()
{
    const auto [name, made] = lumi::test::row<QString, QString>();
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
        // Cards with the same file names get separate folders.
        QCOMPARE(treeOf(target(QLatin1String(made))), importableTree(m_card));
        writeBytes(m_card + QStringLiteral("/dcim/a.jpg"), 10 + m_folderName.size());
    }
}

void TestImportRun::filesAreNeverOverwritten()
{
    writeBytes(m_card + QStringLiteral("/a.jpg"), 10);
    writeBytes(m_card + QStringLiteral("/b.c.jpg"), 20);
    // Another program writes into the new folder while the copy runs.
    m_atStep = [this](int step) {
        if (step == 2) {
            m_world->makeFile(target() + QStringLiteral("/b.c.jpg"), "another's");
            m_world->makeFile(target() + QStringLiteral("/b.c-1.jpg"), "another's");
        }
    };
    QCOMPARE(importCard(), ImportKind::Done);
    Tree expected = importableTree(m_card);
    expected.insert(QStringLiteral("b.c-2.jpg"), expected.take(QStringLiteral("b.c.jpg")));
    expected.insert(QStringLiteral("b.c.jpg"), "fileanother's");
    expected.insert(QStringLiteral("b.c-1.jpg"), "fileanother's");
    QCOMPARE(treeOf(target()), expected);
}

void TestImportRun::namesWithASlashAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a path into a new folder") << QStringLiteral("a/b");
    QTest::newRow("a path into an existing folder") << QStringLiteral("there/b");
    QTest::newRow("a path out of the store") << QStringLiteral("../b");
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
    QTest::newRow("it is read-only") << QStringLiteral("mode");
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
    QTest::newRow("no free space") << 0 << ImportKind::MemoryFull;
    QTest::newRow("the free space is unknown") << -1 << ImportKind::MemoryFull;
    QTest::newRow("enough free space") << 1 << ImportKind::AccessFailure;
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
    // A name that is too long for every file system.
    QCOMPARE(importCard(QString(300, QLatin1Char('x'))), kind);
    QVERIFY(m_steps.isEmpty());
    QVERIFY(m_failures.isEmpty());
    // The path of a card's folder is too long below the new folder.
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
    QTest::newRow("it is read-only") << 0555 << ImportKind::AccessFailure;
}

void TestImportRun::aFolderThatIsThereMustBeWritable()
{
    QFETCH(int, mode);
    QFETCH(ImportKind, kind);
    // Beside the new folder, as if another program had made it.
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

LUMI_TEST(TestImportRun)
#include "TestImportRun.moc"
