// SPDX-License-Identifier: MIT
// Starts the program again while it runs.
#include "tests/app/ProgramTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTest>

#include <utility>

class TestStartTwice : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void theRunningWindowComesToTheFront();
    void aKilledProgramDoesNotBlockTheNext();
    void theProgramRunsOnceForEachHome();
    void twoStartsAtOnce();

private:
    using Process = std::unique_ptr<QProcess>;

    /// Checks that this start opened no window and ended with 0.
    static void isSecond(const Outcome &outcome);
    static void end(const Process &process);
    /// Puts photos into the store and has their thumbnails made.
    void makeThumbnails() const;

    /// Names and dates of the thumbnails.
    [[nodiscard]] QStringList thumbnails() const;
};

void TestStartTwice::isSecond(const Outcome &outcome)
{
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.windows, QStringList());
    QCOMPARE(ownWarnings(outcome), QByteArrayList());
}

void TestStartTwice::end(const Process &process)
{
    process->terminate();
    QCOMPARE(outcomeOf(process.get()).status, 0);
}

QStringList TestStartTwice::thumbnails() const
{
    QStringList lines;
    const auto files = QDir(inSwapFolder(QString())).entryInfoList({QStringLiteral("*.swp")});
    for (const QFileInfo &file : files) {
        lines.append(file.fileName() + file.lastModified().toString(Qt::ISODateWithMs));
    }
    return lines;
}

void TestStartTwice::makeThumbnails() const
{
    QImage photo(320, 240, QImage::Format_RGB32);
    photo.fill(Qt::cyan);
    QVERIFY(QDir().mkpath(at(QStringLiteral("Documents/Photo_Files"))));
    for (const char *name : {"a.jpg", "b.jpg", "c.jpg"}) {
        QVERIFY(photo.save(at(QStringLiteral("Documents/Photo_Files/") + QLatin1String(name))));
    }
    const Process process = start(QStringLiteral("browse"));
    QTRY_COMPARE_WITH_TIMEOUT(thumbnails().size(), qsizetype(3), kTimeLimitMs);
    end(process);
}

void TestStartTwice::theRunningWindowComesToTheFront()
{
    const Process first = start(QStringLiteral("behind"));
    QVERIFY(waitFor(first.get(), "running"));
    QVERIFY(!first->peek(1000).contains("front:"));
    isSecond(run(QStringLiteral("close")));
    QVERIFY(waitFor(first.get(), "front: Lumi Vault"));
    QCOMPARE(first->state(), QProcess::Running);
    end(first);
}

void TestStartTwice::aKilledProgramDoesNotBlockTheNext()
{
    const Process killed = start(QStringLiteral("run"));
    QVERIFY(waitFor(killed.get(), "running"));
    killed->kill();
    QVERIFY(killed->waitForFinished(kTimeLimitMs));
    const Process next = start(QStringLiteral("behind"));
    QVERIFY(waitFor(next.get(), "running"));
    isSecond(run(QStringLiteral("close")));
    QVERIFY(waitFor(next.get(), "front: Lumi Vault"));
    end(next);
}

void TestStartTwice::theProgramRunsOnceForEachHome()
{
    const Process first = start(QStringLiteral("run"));
    QVERIFY(waitFor(first.get(), "running"));
    QVERIFY(QDir().mkpath(at(QStringLiteral("other"))));
    m_environment.insert(QStringLiteral("HOME"), at(QStringLiteral("other")));
    QCOMPARE(run(QStringLiteral("close")).windows,
             QStringList{QStringLiteral("window: Lumi Vault")});
    end(first);
}

void TestStartTwice::twoStartsAtOnce()
{
    makeThumbnails();
    const QStringList before = thumbnails();
    const QByteArray index = lumi::test::readFile(inSwapFolder(QStringLiteral(".SwapMng.bin")));
    QVERIFY(!index.isEmpty());
    constexpr int kRounds = 5;
    for (int round = 0; round < kRounds; ++round) {
        Process first = start(QStringLiteral("run"));
        Process second = start(QStringLiteral("run"));
        QTRY_VERIFY_WITH_TIMEOUT(first->state() == QProcess::NotRunning
                                     || second->state() == QProcess::NotRunning,
                                 kTimeLimitMs);
        if (first->state() == QProcess::NotRunning) {
            std::swap(first, second);
        }
        isSecond(outcomeOf(second.get()));
        QVERIFY(waitFor(first.get(), "running"));
        first->terminate();
        const Outcome outcome = outcomeOf(first.get());
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.windows,
                 (QStringList{QStringLiteral("window: Lumi Vault"), QStringLiteral("running")}));
        QCOMPARE(thumbnails(), before);
        // It has the times of the last uses, but the same entries.
        QCOMPARE(lumi::test::readFile(inSwapFolder(QStringLiteral(".SwapMng.bin"))).size(),
                 index.size());
    }
}

LUMI_TEST(TestStartTwice)
#include "TestStartTwice.moc"
