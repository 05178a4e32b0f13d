// SPDX-License-Identifier: MIT
// Every call of an import to the file system fails, one after the other, in every way.
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/ImportRun.h"
#include "tests/import/cardTree.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/views/BrowserWorld.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <cerrno>
#include <memory>

using lumi::ImportKind;
using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::stateOf;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

enum class Span { Once, FromThenOn };

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
    QTest::addColumn<int>("atLeast"); // calls there are
    QTest::newRow("a file can't be opened")
        << unsigned(FileFaults::Open) << EACCES << Span::Once << 8;
    QTest::newRow("too many files are open")
        << unsigned(FileFaults::Open) << EMFILE << Span::Once << 8;
    QTest::newRow("a block can't be read") << unsigned(FileFaults::Read) << EIO << Span::Once << 13;
    QTest::newRow("the card dies")
        << unsigned(FileFaults::Read | FileFaults::Open) << EIO << Span::FromThenOn << 0;
    QTest::newRow("a read gives less") << unsigned(FileFaults::Read) << 0 << Span::Once << 13;
    QTest::newRow("a block can't be written")
        << unsigned(FileFaults::Write) << EIO << Span::Once << 9;
    QTest::newRow("the disk is full")
        << unsigned(FileFaults::Write | FileFaults::MakeFolder) << ENOSPC << Span::FromThenOn << 0;
    QTest::newRow("the disk is full for a moment")
        << unsigned(FileFaults::Write) << ENOSPC << Span::Once << 9;
    QTest::newRow("a write takes a part only")
        << unsigned(FileFaults::Write) << 0 << Span::Once << 9;
    QTest::newRow("a folder can't be made")
        << unsigned(FileFaults::MakeFolder) << EACCES << Span::Once << 4;
    QTest::newRow("the store turns read-only")
        << unsigned(FileFaults::Open | FileFaults::MakeFolder) << EROFS << Span::FromThenOn << 0;
    QTest::newRow("anything") << unsigned(FileFaults::Open | FileFaults::Read | FileFaults::Write
                                          | FileFaults::MakeFolder)
                              << EIO << Span::Once << 34;
}

void TestImportFaults::everyCallFails()
{
    QFETCH(unsigned, calls);
    QFETCH(int, error);
    QFETCH(Span, span);
    QFETCH(int, atLeast);
    const Tree before = stateOf(m_card);
    int number = 0;
    for (;; ++number) {
        Outcome outcome;
        int hits = 0;
        {
            // Below the store and the card: both lie in the temporary folder.
            FileFaults faults(QDir::tempPath());
            disturb(&faults, calls, number + 1, error, span);
            outcome = importCard(m_card);
            hits = faults.hits();
        }
        QCOMPARE(stateOf(m_card), before);
        compare(outcome);
        if (QTest::currentTestFailed()) {
            qWarning("call %d", number);
            return;
        }
        QVERIFY(QDir(m_world->store).removeRecursively());
        m_world->makeFolder(m_world->store);
        if (hits == 0) {
            break;
        }
    }
    QVERIFY2(number >= atLeast, qPrintable(QString::number(number)));
    QCOMPARE(importCard(m_card).kind, ImportKind::Done);
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
