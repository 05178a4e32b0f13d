// SPDX-License-Identifier: MIT
#include "platform/files/diskSync.h"
#include "tests/support/StandInSync.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <optional>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/types.h>

using lumi::SyncResult;
using lumi::test::StandInSync;

namespace {

constexpr int kLongestGapMs = 300;
constexpr int kPatienceMs = 10000;

/// While this is set, children can't be killed, like a child that hangs in the system.
bool isKillRefused = false;
/// Ranges whose writing to the disk was started.
QList<QPair<qint64, qint64>> ranges;

bool always()
{
    return true;
}

/// The process id of the child, which its script writes to a file; 0 without one.
pid_t childOf(const StandInSync &sync)
{
    QFile file(sync.path(QStringLiteral("pid")));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
}

bool isAlive(const StandInSync &sync)
{
    const pid_t pid = childOf(sync);
    return pid > 0 && ::kill(pid, 0) == 0;
}

const QByteArray kHang = "echo $$ > pid.new; mv pid.new pid; exec sleep 60";

} // namespace

// These replace the functions of the C library.
extern "C" int kill(pid_t pid, int signal) noexcept
{
    using Kill = int(pid_t, int);
    static auto *kReal = reinterpret_cast<Kill *>(::dlsym(RTLD_NEXT, "kill"));
    return isKillRefused ? 0 : kReal(pid, signal);
}

extern "C" int sync_file_range(int handle, off64_t from, off64_t length, unsigned int flags)
{
    using Range = int(int, off64_t, off64_t, unsigned int);
    static auto *kReal = reinterpret_cast<Range *>(::dlsym(RTLD_NEXT, "sync_file_range"));
    if (flags == SYNC_FILE_RANGE_WRITE) {
        ranges.append({from, length});
    }
    return kReal(handle, from, length, flags);
}

class TestDiskSync : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theRealOneWaits();
    void theChildIsToldTheFolder();
    void aFailingChild_data();
    void aFailingChild();
    void eventsRunMeanwhile();
    void aHangingChildIsStopped_data();
    void aHangingChildIsStopped();
    void theEndOfTheProgramStopsIt();
    void aFileIsWrittenBackInPieces();
    void aStopEndsTheWritingBack();
    void whatIsNotThereIsNotWrittenBack();

private:
    QTemporaryDir m_folder;
};

void TestDiskSync::init()
{
    isKillRefused = false;
    ranges.clear();
}

void TestDiskSync::theRealOneWaits()
{
    QCOMPARE(lumi::waitForDisk(m_folder.path(), always), SyncResult::OnDisk);
    QCOMPARE(lumi::waitForDisk(m_folder.filePath(QStringLiteral("none")), always),
             SyncResult::Failed);
}

void TestDiskSync::theChildIsToldTheFolder()
{
    const StandInSync sync("for word; do echo \"$word\"; done > words");
    QCOMPARE(lumi::waitForDisk(QStringLiteral("/a  b/*"), always), SyncResult::OnDisk);
    QFile words(sync.path(QStringLiteral("words")));
    QVERIFY(words.open(QIODevice::ReadOnly));
    QCOMPARE(words.readAll(), QByteArray("-f\n/a  b/*\n"));
}

void TestDiskSync::aFailingChild_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::newRow("it says so") << QByteArray("exit 1");
    QTest::newRow("it crashes") << QByteArray("kill -SEGV $$");
    QTest::newRow("there is none") << QByteArray();
}

void TestDiskSync::aFailingChild()
{
    QFETCH(QByteArray, script);
    const StandInSync sync(script, StandInSync::HideOthers);
    QCOMPARE(lumi::waitForDisk(m_folder.path(), always), SyncResult::Failed);
}

void TestDiskSync::eventsRunMeanwhile()
{
    const StandInSync sync("sleep 0.5");
    QElapsedTimer sinceLast;
    qint64 longest = 0;
    int rounds = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        longest = qMax(longest, sinceLast.restart());
        ++rounds;
    });
    sinceLast.start();
    timer.start(10);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(lumi::waitForDisk(m_folder.path(), always), SyncResult::OnDisk);
    QVERIFY(clock.elapsed() >= 500);
    longest = qMax(longest, sinceLast.elapsed());
    QVERIFY2(longest < kLongestGapMs, qPrintable(QString::number(longest)));
    QVERIFY(rounds > 10);
}

void TestDiskSync::aHangingChildIsStopped_data()
{
    QTest::addColumn<bool>("inTheSystem");
    QTest::newRow("it can be killed") << false;
    QTest::newRow("it can't be killed") << true;
}

void TestDiskSync::aHangingChildIsStopped()
{
    QFETCH(bool, inTheSystem);
    const StandInSync sync(kHang);
    const QString pid = sync.path(QStringLiteral("pid"));
    QElapsedTimer sinceStop;
    const auto untilItHangs = [&] {
        if (!QFile::exists(pid)) {
            return true;
        }
        isKillRefused = inTheSystem;
        sinceStop.start();
        return false;
    };
    QCOMPARE(lumi::waitForDisk(m_folder.path(), untilItHangs), SyncResult::Stopped);
    QVERIFY(sinceStop.isValid());
    QVERIFY2(sinceStop.elapsed() < kLongestGapMs, qPrintable(QString::number(sinceStop.elapsed())));
    isKillRefused = false;
    QVERIFY(childOf(sync) > 0);
    if (inTheSystem) {
        QVERIFY(isAlive(sync));
        QCOMPARE(::kill(childOf(sync), SIGKILL), 0);
    }
    // The end of the child is noticed, and no zombie is left.
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(sync), kPatienceMs);
}

void TestDiskSync::theEndOfTheProgramStopsIt()
{
    const StandInSync sync(kHang);
    const QString pid = sync.path(QStringLiteral("pid"));
    const auto untilItHangs = [&] {
        if (QFile::exists(pid)) {
            QCoreApplication::exit(0);
        }
        return true;
    };
    QCOMPARE(lumi::waitForDisk(m_folder.path(), untilItHangs), SyncResult::Stopped);
    QVERIFY(childOf(sync) > 0);
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(sync), kPatienceMs);
}

void TestDiskSync::aFileIsWrittenBackInPieces()
{
    constexpr qint64 kSize = 1'000'001;
    QFile file(m_folder.filePath(QStringLiteral("photo")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(kSize, 'x')) == kSize);
    file.close();
    int rounds = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&rounds] {
        ++rounds;
    });
    timer.start(0);
    lumi::startWriteBack(file.fileName(), always);
    QVERIFY(ranges.size() > 1);
    QVERIFY(rounds >= ranges.size() - 1);
    qint64 end = 0;
    for (const QPair<qint64, qint64> &range : std::as_const(ranges)) {
        QCOMPARE(range.first, end);
        QVERIFY(range.second <= 256 * 1024);
        end += range.second;
    }
    QVERIFY(end >= kSize);
}

void TestDiskSync::aStopEndsTheWritingBack()
{
    QFile file(m_folder.filePath(QStringLiteral("photo")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(2'000'000, 'x')) > 0);
    file.close();
    lumi::startWriteBack(file.fileName(), [] {
        return ranges.size() < 2;
    });
    QCOMPARE(ranges.size(), qsizetype(2));
}

void TestDiskSync::whatIsNotThereIsNotWrittenBack()
{
    lumi::startWriteBack(m_folder.filePath(QStringLiteral("none")), always);
    lumi::startWriteBack(m_folder.path(), always);
    QVERIFY(ranges.isEmpty());
}

LUMI_TEST(TestDiskSync)
#include "TestDiskSync.moc"
