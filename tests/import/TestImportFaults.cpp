// SPDX-License-Identifier: MIT
// Every call with which an import reads a card and writes the store fails, one after the other,
// in every way.
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/ImportRun.h"
#include "tests/import/cardTree.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/views/BrowserWorld.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <cerrno>
#include <memory>
#include <set>

using lumi::ImportKind;
using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::stateOf;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

enum class Span { Once, FromThenOn };

using Kinds = std::set<ImportKind>;

/// With no error the call does less than it should.
void disturb(FileFaults *faults, unsigned calls, int nth, int error, Span span)
{
    if (error == 0) {
        faults->shorten(calls, nth, 1);
    } else if (span == Span::Once) {
        faults->fail(calls, nth, error);
    } else {
        faults->failFrom(calls, nth, error);
    }
}

struct Outcome
{
    ImportKind kind = ImportKind::Done;
    int copied = 0;
    int files = 0;
    QStringList failed;
    QList<ImportKind> kinds;
    QString folder;
};

Outcome importCard(const QString &card)
{
    Outcome outcome;
    FPVFileTree tree;
    tree.walk(card, false, nullptr);
    outcome.files = FPVFileTree::fileCount();
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int) {};
    callbacks.isCardPresent = [] {
        return true;
    };
    callbacks.fileFailed = [&outcome](const QString &path, ImportKind kind) {
        outcome.failed.append(path);
        outcome.kinds.append(kind);
    };
    lumi::ImportRun run({FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()}, callbacks);
    outcome.kind = run.run(QStringLiteral("new"));
    outcome.copied = run.copiedCount();
    outcome.folder = run.folderName();
    return outcome;
}

} // namespace

class TestImportFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyCallFails_data();
    void everyCallFails();
    void aFolderThatCantBeListedComesEmpty();
    void aDiskThatFillsUpTakesAPartFirst_data();
    void aDiskThatFillsUpTakesAPartFirst();

private:
    void compare(const Outcome &outcome) const;

    std::unique_ptr<lumi::test::BrowserWorld> m_world;
    QString m_card;
};

void TestImportFaults::init()
{
    m_world = std::make_unique<lumi::test::BrowserWorld>();
    m_card = m_world->machine->sd;
    m_world->machine->insertCard(Slot::SD);
    FPVFileTree::resetState();
    FPVFileTree::setDirFilter(0x313);
    setCopyCancelled(false);
    for (const char *name : {"/dcim/a.jpg", "/dcim/b.jpg", "/dcim/sub/c.mov"}) {
        lumi::test::writeBytes(m_card + QLatin1String(name), 40000);
    }
    lumi::test::writeBytes(m_card + QStringLiteral("/empty.jpg"), 0);
    m_world->makeFolder(m_card + QStringLiteral("/folder"));
}

void TestImportFaults::cleanup()
{
    m_world.reset();
}

void TestImportFaults::everyCallFails_data()
{
    QTest::addColumn<unsigned>("calls");
    QTest::addColumn<int>("error");
    QTest::addColumn<Span>("span");
    QTest::addColumn<int>("atLeast");              // calls there are
    QTest::addColumn<Kinds>("kinds");              // of all runs in which one failed
    constexpr ImportKind kDone = ImportKind::Done; // where the end of a file can't be read
    constexpr ImportKind kFull = ImportKind::MemoryFull;
    constexpr ImportKind kAccess = ImportKind::AccessFailure;
    constexpr ImportKind kMismatch = ImportKind::Mismatch;
    QTest::newRow("a file can't be opened")
        << unsigned(FileFaults::OpenToRead) << EACCES << Span::Once << 4 << Kinds{kAccess};
    QTest::newRow("too many files are open")
        << unsigned(FileFaults::OpenToRead) << EMFILE << Span::Once << 4 << Kinds{kFull};
    // A hidden name in the same folder serves instead.
    QTest::newRow("a file without a name can't be made")
        << unsigned(FileFaults::OpenToWrite) << EOPNOTSUPP << Span::Once << 4 << Kinds{kDone};
    QTest::newRow("no file can be made")
        << unsigned(FileFaults::OpenToWrite) << EACCES << Span::FromThenOn << 0 << Kinds{kAccess};
    QTest::newRow("a file can't be named")
        << unsigned(FileFaults::Link) << EIO << Span::Once << 4 << Kinds{kAccess};
    QTest::newRow("a block can't be read")
        << unsigned(FileFaults::Read) << EIO << Span::Once << 13 << Kinds{kDone, kMismatch};
    QTest::newRow("the card dies") << unsigned(FileFaults::Read | FileFaults::Open) << EIO
                                   << Span::FromThenOn << 0 << Kinds{kDone, kAccess, kMismatch};
    QTest::newRow("a read gives less")
        << unsigned(FileFaults::Read) << 0 << Span::Once << 13 << Kinds{kDone};
    QTest::newRow("a block can't be written")
        << unsigned(FileFaults::Write) << EIO << Span::Once << 9 << Kinds{kAccess};
    QTest::newRow("the disk is full") << unsigned(FileFaults::Write | FileFaults::MakeFolder)
                                      << ENOSPC << Span::FromThenOn << 0 << Kinds{kFull, kAccess};
    QTest::newRow("the disk is full for a moment")
        << unsigned(FileFaults::Write) << ENOSPC << Span::Once << 9 << Kinds{kFull};
    QTest::newRow("a write takes a part and then the rest")
        << unsigned(FileFaults::Write) << 0 << Span::Once << 9 << Kinds{kDone};
    QTest::newRow("a folder can't be made")
        << unsigned(FileFaults::MakeFolder) << EACCES << Span::Once << 4 << Kinds{kAccess};
    QTest::newRow("the store turns read-only")
        << unsigned(FileFaults::Open | FileFaults::MakeFolder) << EROFS << Span::FromThenOn << 0
        << Kinds{kAccess};
    // Closing a source reports nothing about its copy.
    QTest::newRow("a file can't be closed")
        << unsigned(FileFaults::Close) << EIO << Span::Once << 12 << Kinds{kDone, kAccess};
    QTest::newRow("anything") << unsigned(FileFaults::OpenToRead | FileFaults::Read
                                          | FileFaults::Write | FileFaults::MakeFolder)
                              << EIO << Span::Once << 30 << Kinds{kDone, kAccess, kMismatch};
}

void TestImportFaults::everyCallFails()
{
    QFETCH(unsigned, calls);
    QFETCH(int, error);
    QFETCH(Span, span);
    QFETCH(int, atLeast);
    QFETCH(Kinds, kinds);
    const Tree before = stateOf(m_card);
    Kinds met;
    int number = 0;
    for (bool isOver = false; !isOver;) {
        Outcome outcome;
        {
            // Below the store and the card: both lie in the temporary folder.
            FileFaults faults(QDir::tempPath());
            disturb(&faults, calls, number + 1, error, span);
            outcome = importCard(m_card);
            isOver = faults.hits() == 0;
        }
        QCOMPARE(stateOf(m_card), before);
        compare(outcome);
        if (QTest::currentTestFailed()) {
            qWarning("call %d", number);
            return;
        }
        if (!isOver) {
            ++number;
            met.insert(outcome.kind);
        }
        QVERIFY(QDir(m_world->store).removeRecursively());
        m_world->makeFolder(m_world->store);
    }
    QVERIFY2(number >= atLeast, qPrintable(QString::number(number)));
    QVERIFY(met == kinds);
    QCOMPARE(importCard(m_card).kind, ImportKind::Done);
}

void TestImportFaults::aFolderThatCantBeListedComesEmpty()
{
    const Tree before = stateOf(m_card);
    const QString sub = m_card + QStringLiteral("/dcim/sub");
    const QRegularExpression warning(
        QStringLiteral("^%1 can't be read to its end").arg(QRegularExpression::escape(sub)));
    QTest::ignoreMessage(QtWarningMsg, warning);
    Outcome outcome;
    {
        FileFaults faults(sub);
        faults.failFrom(FileFaults::ListFolder, 1, EIO);
        outcome = importCard(m_card);
        QVERIFY(faults.hits() > 0);
    }
    QCOMPARE(outcome.kind, ImportKind::Done);
    QCOMPARE(outcome.files, 3);
    Tree expected = importableTree(m_card);
    QCOMPARE(expected.remove(QStringLiteral("dcim/sub/c.mov")), qsizetype(1));
    QCOMPARE(treeOf(m_world->path(outcome.folder)), expected);
    QCOMPARE(stateOf(m_card), before);
}

void TestImportFaults::aDiskThatFillsUpTakesAPartFirst_data()
{
    QTest::addColumn<int>("lastWrite");
    QTest::addColumn<QList<ImportKind>>("kinds");
    QTest::newRow("in the middle of a file") << 2 << QList{ImportKind::MemoryFull};
    // Nothing is left to be refused of this file, but its size is wrong.
    QTest::newRow("in its last block") << 3 << QList{ImportKind::Mismatch, ImportKind::MemoryFull};
}

void TestImportFaults::aDiskThatFillsUpTakesAPartFirst()
{
    QFETCH(int, lastWrite);
    QFETCH(QList<ImportKind>, kinds);
    const Tree before = stateOf(m_card);
    Outcome outcome;
    {
        // As a file system does it: what there is room for, and then nothing more.
        FileFaults faults(m_world->store);
        faults.shorten(FileFaults::Write, lastWrite, 5000);
        faults.failFrom(FileFaults::Write, lastWrite + 1, ENOSPC);
        outcome = importCard(m_card);
        QVERIFY(faults.hits() >= 2);
    }
    compare(outcome);
    QCOMPARE(outcome.kind, ImportKind::MemoryFull);
    QCOMPARE(outcome.kinds, kinds);
    QCOMPARE(stateOf(m_card), before);
}

/// What must hold however a run has ended.
void TestImportFaults::compare(const Outcome &outcome) const
{
    const Tree source = importableTree(m_card);
    const Tree made = treeOf(m_world->path(outcome.folder));
    int whole = 0;
    for (auto it = made.begin(); it != made.end(); ++it) {
        // No part of a file stands under its name.
        QCOMPARE(it.value(), source.value(it.key()));
        whole += it.value() == "folder" ? 0 : 1;
    }
    const auto mismatches = static_cast<int>(outcome.kinds.count(ImportKind::Mismatch));
    QCOMPARE(whole, outcome.copied - mismatches);
    for (const QString &path : outcome.failed) {
        QVERIFY(path.startsWith(m_card + QLatin1Char('/')));
        QVERIFY(!made.contains(path.mid(m_card.size() + 1)));
    }
    if (outcome.kind == ImportKind::Done) {
        QCOMPARE(made, source);
        QVERIFY(outcome.failed.isEmpty());
    } else if (outcome.kind == ImportKind::Mismatch) {
        QCOMPARE(outcome.copied, outcome.files);
        QCOMPARE(outcome.failed.size(), qsizetype(mismatches));
    } else {
        // Either the folders could not be made, or one file ended the run.
        QVERIFY(outcome.failed.size() - mismatches <= 1);
        QVERIFY(outcome.copied == 0 || outcome.failed.size() - mismatches == 1);
    }
}

LUMI_TEST(TestImportFaults)
#include "TestImportFaults.moc"
