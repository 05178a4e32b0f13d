// SPDX-License-Identifier: MIT
// Copies of a card's tree that fail or are stopped, without a window.
#include "files/engine/copyFile.h"
#include "tests/import/RunTest.h"
#include "tests/import/cardTree.h"
#include "tests/support/FileFaults.h"
#include "tests/support/FullDisk.h"
#include "tests/support/StandInSync.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>
#include <QTimer>

#include <cerrno>
#include <climits>
#include <memory>

#include <sys/wait.h>

using lumi::ImportKind;
using lumi::test::FileFaults;
using lumi::test::treeOf;
using lumi::test::writeBytes;

class TestImportFailures : public RunTest
{
    Q_OBJECT

private Q_SLOTS:
    void resultsOfACopyAreJudged_data();
    void resultsOfACopyAreJudged();
    void theFirstFailureEndsTheRun();
    void aCancelStopsTheFileInWork();
    void aCancelOfEmptyFilesWaits();
    void aCancelAfterTheCardIsGoneIsAnAccessFailure();
    void aWrongSizeDoesNotEndTheRun();
    void aVanishedSourceIsAMismatch();
    void aLimitInTheMiddleOfAFile_data();
    void aLimitInTheMiddleOfAFile();
    void whatWasLeftOutMakesAMismatch_data();
    void whatWasLeftOutMakesAMismatch();
    void theWaitForTheDiskDecides_data();
    void theWaitForTheDiskDecides();
};

void TestImportFailures::resultsOfACopyAreJudged_data()
{
    lumi::test::columns<int, int, qint64, bool, ImportKind>();
    const qint64 tenKB = 10 * 1024;
    QTest::newRow("stopped") << 6 << 0 << tenKB << true << ImportKind::Cancelled;
    QTest::newRow("no free space left") << 4 << 99999 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed write without space")
        << 2 << 9 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed write with enough space")
        << 2 << 10 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("a part of a KB does not count")
        << 2 << 10 << tenKB + 1023 << true << ImportKind::AccessFailure;
    QTest::newRow("failed open without space") << 5 << 9 << tenKB << true << ImportKind::MemoryFull;
    QTest::newRow("failed open with enough space")
        << 5 << 10 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("more than 32 bits")
        << 2 << INT_MAX << (qint64(INT_MAX) + 1) * 1024 << true << ImportKind::MemoryFull;
    QTest::newRow("the target can't be removed")
        << 3 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("a read error") << 1 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("an unknown result") << 14 << 0 << tenKB << true << ImportKind::AccessFailure;
    QTest::newRow("stopped, but the card is gone")
        << 6 << 0 << tenKB << false << ImportKind::AccessFailure;
    QTest::newRow("no free space left, but the card is gone")
        << 4 << 0 << tenKB << false << ImportKind::AccessFailure;
}

void TestImportFailures::resultsOfACopyAreJudged()
{
    const auto [result, roomKB, size, present, kind]
        = lumi::test::row<int, int, qint64, bool, ImportKind>();
    QCOMPARE(lumi::kindOfFailure(result, roomKB, size, present), kind);
}

void TestImportFailures::theFirstFailureEndsTheRun()
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

void TestImportFailures::aCancelStopsTheFileInWork()
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

void TestImportFailures::aCancelOfEmptyFilesWaits()
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

void TestImportFailures::aCancelAfterTheCardIsGoneIsAnAccessFailure()
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

void TestImportFailures::aWrongSizeDoesNotEndTheRun()
{
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        writeBytes(m_card + QLatin1String(name), 40000);
    }
    // The second block of the second file is unreadable, which is treated as the end of the file.
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

void TestImportFailures::aVanishedSourceIsAMismatch()
{
    const QString photo = m_card + QStringLiteral("/a.jpg");
    writeBytes(photo, 10);
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&photo, &timer] {
        if (lumi::test::openFile(QStringLiteral("/a.jpg")) >= 0 && QFile::remove(photo)) {
            timer.stop();
        }
    });
    timer.start(0);
    const ImportKind kind = importCard();
    QVERIFY(!timer.isActive());
    QCOMPARE(kind, ImportKind::Mismatch);
    QVERIFY(treeOf(target()).isEmpty());
}

void TestImportFailures::aLimitInTheMiddleOfAFile_data()
{
    QTest::addColumn<int>("withPart");
    QTest::addColumn<int>("afterwards");
    QTest::addColumn<ImportKind>("kind");
    QTest::newRow("too little space for the file") << 18 << 38 << ImportKind::MemoryFull;
    QTest::newRow("enough space once the partial copy is removed")
        << 20 << 40 << ImportKind::AccessFailure;
    QTest::newRow("only the space afterwards counts") << 99 << 38 << ImportKind::MemoryFull;
}

void TestImportFailures::aLimitInTheMiddleOfAFile()
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

void TestImportFailures::whatWasLeftOutMakesAMismatch_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<ImportKind>("kind");
    QTest::newRow("otherwise a complete run") << QString() << ImportKind::Mismatch;
    QTest::newRow("a Cancel stays a Cancel") << QStringLiteral("cancel") << ImportKind::Cancelled;
    QTest::newRow("a failure stays a failure")
        << QStringLiteral("gone") << ImportKind::AccessFailure;
}

void TestImportFailures::whatWasLeftOutMakesAMismatch()
{
    QFETCH(QString, event);
    QFETCH(ImportKind, kind);
    writeBytes(m_card + QStringLiteral("/a.jpg"), 20000);
    writeBytes(m_card + QStringLiteral("/b.jpg"), 20000);
    const QString outside = m_world->makeFile(QStringLiteral("outside.jpg"), "x");
    QVERIFY(QFile::link(outside, m_card + QStringLiteral("/link.jpg")));
    m_atStep = [this, event](int step) {
        setCopyCancelled(step == 2 && event == QLatin1String("cancel"));
        if (step == 2 && event == QLatin1String("gone")) {
            QVERIFY(QFile::remove(m_card + QStringLiteral("/b.jpg")));
        }
    };
    QCOMPARE(importCard(), kind);
    // It is reported first.
    QCOMPARE(m_failures.constFirst().path, QString(m_card + QStringLiteral("/link.jpg")));
    QCOMPARE(m_failures.constFirst().kind, ImportKind::AccessFailure);
    QCOMPARE(m_failures.size(), qsizetype(event.isEmpty() ? 1 : 2));
    QCOMPARE(m_copied, event.isEmpty() ? 2 : 1);
    QVERIFY(!treeOf(target()).contains(QStringLiteral("link.jpg")));
}

void TestImportFailures::theWaitForTheDiskDecides_data()
{
    QTest::addColumn<ImportKind>("before");
    QTest::addColumn<ImportKind>("ifStopped");
    QTest::addColumn<ImportKind>("ifFailed");
    QTest::newRow("done") << ImportKind::Done << ImportKind::Cancelled << ImportKind::AccessFailure;
    QTest::newRow("mismatch") << ImportKind::Mismatch << ImportKind::Cancelled
                              << ImportKind::AccessFailure;
    for (const ImportKind kind :
         {ImportKind::Cancelled, ImportKind::MemoryFull, ImportKind::AccessFailure}) {
        QTest::addRow("kind %d stays", static_cast<int>(kind)) << kind << kind << kind;
    }
}

void TestImportFailures::theWaitForTheDiskDecides()
{
    QFETCH(ImportKind, before);
    QFETCH(ImportKind, ifStopped);
    QFETCH(ImportKind, ifFailed);
    QList<ImportKind> told;
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int) {};
    callbacks.fileFailed = [this, &told](const QString &path, ImportKind kind) {
        QCOMPARE(path, target());
        told.append(kind);
    };
    lumi::ImportRun run({m_card, {}, {}}, callbacks);
    QCOMPARE(run.run(QStringLiteral("new")), ImportKind::Done);
    {
        const lumi::test::StandInSync sync("exit 0");
        QCOMPARE(run.waitForDisk(before), before);
        QVERIFY(told.isEmpty());
    }
    {
        const lumi::test::StandInSync sync("exit 1");
        QCOMPARE(run.waitForDisk(before), ifFailed);
        QCOMPARE(told, QList<ImportKind>{ImportKind::AccessFailure});
        told.clear();
    }
    const lumi::test::StandInSync sync("exec sleep 60");
    QTimer::singleShot(100, this, [] {
        setCopyCancelled(true);
    });
    QCOMPARE(run.waitForDisk(before), ifStopped);
    QCOMPARE(told, QList<ImportKind>{ImportKind::Cancelled});
    // waitid() fails when no child is left.
    siginfo_t child{};
    QTRY_COMPARE(::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT), -1);
}

LUMI_TEST(TestImportFailures)
#include "TestImportFailures.moc"
