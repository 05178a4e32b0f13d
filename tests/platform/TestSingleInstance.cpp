// SPDX-License-Identifier: MIT
// Several starts in one process: a lock belongs to the object that has taken it.
#include "platform/session/SingleInstance.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

using lumi::SingleInstance;

class TestSingleInstance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theSecondStartCallsTheFirst();
    void aLinkLeadsToTheSameHome();
    void anotherHomeHasItsOwnFirstStart();
    void theLockEndsWithItsHolder();
    void aStartWaitsForOneThatIsEnding();
    void theSocketOfAKilledProgramIsReplaced();
    void withoutALockTheProgramStarts();
    void withoutARuntimeDirectoryTheProgramStarts();

private:
    using Start = std::unique_ptr<QThread>;

    [[nodiscard]] QString home(const char *name) const
    {
        return m_folder->filePath(QLatin1String(name));
    }

    /// Path of the one file with this ending in the runtime directory.
    [[nodiscard]] QString fileOf(const QString &ending) const;
    /// A start in a thread of its own, since it waits for the answer of the first.
    [[nodiscard]] static Start start(const QString &home, bool *isFirst);
    /// The same, waiting for its result.
    [[nodiscard]] static bool isFirst(const QString &home);

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_oldRuntime;
};

void TestSingleInstance::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(home("mine")) && QDir().mkpath(home("yours")));
    QVERIFY(QDir().mkpath(home("run")));
    QVERIFY(
        QFile::setPermissions(home("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    m_oldRuntime = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home("run")));
}

void TestSingleInstance::cleanup()
{
    qputenv("XDG_RUNTIME_DIR", m_oldRuntime);
    qunsetenv("XDG_ACTIVATION_TOKEN");
    m_folder.reset();
}

QString TestSingleInstance::fileOf(const QString &ending) const
{
    const QStringList names
        = QDir(home("run")).entryList({QLatin1Char('*') + ending}, QDir::Files | QDir::System);
    return names.size() == 1 ? home("run") + QLatin1Char('/') + names.constFirst() : QString();
}

TestSingleInstance::Start TestSingleInstance::start(const QString &home, bool *isFirst)
{
    Start thread(QThread::create([home, isFirst] {
        const SingleInstance instance(home);
        *isFirst = instance.isFirst();
    }));
    thread->start();
    return thread;
}

bool TestSingleInstance::isFirst(const QString &home)
{
    bool result = false;
    const Start thread = start(home, &result);
    while (!thread->isFinished()) {
        QTest::qWait(1);
    }
    return result;
}

void TestSingleInstance::theSecondStartCallsTheFirst()
{
    const SingleInstance first(home("mine"));
    QVERIFY(first.isFirst());
    const QSignalSpy calls(&first, &SingleInstance::startedAgain);
    QVERIFY(!isFirst(home("mine")));
    QCOMPARE(calls.size(), 1);
    QCOMPARE(calls[0][0].toByteArray(), QByteArray());
    qputenv("XDG_ACTIVATION_TOKEN", "a token");
    QVERIFY(!isFirst(home("mine")));
    QCOMPARE(calls.size(), 2);
    QCOMPARE(calls[1][0].toByteArray(), QByteArray("a token"));
}

void TestSingleInstance::aLinkLeadsToTheSameHome()
{
    QVERIFY(QFile::link(home("mine"), home("link")));
    const SingleInstance first(home("mine"));
    QVERIFY(!isFirst(home("link")));
}

void TestSingleInstance::anotherHomeHasItsOwnFirstStart()
{
    const SingleInstance first(home("mine"));
    const QSignalSpy calls(&first, &SingleInstance::startedAgain);
    QVERIFY(isFirst(home("yours")));
    QVERIFY(isFirst(home("missing")));
    QVERIFY(calls.isEmpty());
}

void TestSingleInstance::theLockEndsWithItsHolder()
{
    {
        const SingleInstance first(home("mine"));
        QVERIFY(QFile::exists(fileOf(QStringLiteral(".socket"))));
    }
    QVERIFY(!QFile::exists(fileOf(QStringLiteral(".socket"))));
    QVERIFY(isFirst(home("mine")));
}

/// The first program no longer answers, but still writes its index.
void TestSingleInstance::aStartWaitsForOneThatIsEnding()
{
    auto first = std::make_unique<SingleInstance>(home("mine"));
    bool isFirst = false;
    const Start thread = start(home("mine"), &isFirst);
    QVERIFY(!thread->wait(300));
    first.reset();
    QVERIFY(thread->wait(4000));
    QVERIFY(isFirst);
}

/// A killed program does not remove its socket.
void TestSingleInstance::theSocketOfAKilledProgramIsReplaced()
{
    QString path;
    {
        const SingleInstance killed(home("mine"));
        path = fileOf(QStringLiteral(".socket"));
        QVERIFY(QFile::rename(path, home("socket")));
    }
    QVERIFY(QFile::rename(home("socket"), path));
    const SingleInstance next(home("mine"));
    const QSignalSpy calls(&next, &SingleInstance::startedAgain);
    QVERIFY(!isFirst(home("mine")));
    QCOMPARE(calls.size(), 1);
}

void TestSingleInstance::withoutALockTheProgramStarts()
{
    QVERIFY(isFirst(home("mine")));
    const QString lock = fileOf(QStringLiteral(".lock"));
    QVERIFY(QFile::remove(lock));
    QVERIFY(QDir().mkdir(lock));
    const SingleInstance first(home("mine"));
    QVERIFY(first.isFirst());
}

void TestSingleInstance::withoutARuntimeDirectoryTheProgramStarts()
{
    const QByteArray oldTemp = qgetenv("TMPDIR");
    qputenv("XDG_RUNTIME_DIR", "/dev/null/run");
    qputenv("TMPDIR", "/dev/null"); // where Qt would make one
    const SingleInstance first(home("mine"));
    const SingleInstance second(home("mine"));
    qputenv("TMPDIR", oldTemp);
    QVERIFY(first.isFirst());
    QVERIFY(second.isFirst());
}

LUMI_TEST(TestSingleInstance)
#include "TestSingleInstance.moc"
