// SPDX-License-Identifier: MIT
// The results of copies that fail or are stopped.
#include "files/engine/copyFile.h"
#include "tests/files/engine/CopyTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>
#include <QTimer>

#include <cerrno>

using lumi::test::FileFaults;

class TestCopyFileFaults : public CopyTest
{
    Q_OBJECT

private Q_SLOTS:
    void aTargetThatCantGo();
    void anUnreadableSourceSparesTheOldTarget();
    void noFolderForTheTarget();
    void failedOpensHaveTheFilesStatus();
    void aFailingWriteLeavesNoTarget_data();
    void aFailingWriteLeavesNoTarget();
    void aShortWriteGoesUnnoticed();
    void aReadErrorLooksLikeTheEnd();
    void theCallbackStopsTheCopy_data();
    void theCallbackStopsTheCopy();
    void theFlagOfTheUsualCallback();
    void aCancelTakesEffectBetweenBlocks();
    void aMovedSourceIsGoneEvenAfterAFailure();
    void aMovedSourceThatStays();
    void aRefusedMoveKeepsTheSource();
};

void TestCopyFileFaults::aTargetThatCantGo()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->makeFolder(QStringLiteral("b"));
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b"), false), 3);
    m_files->make(QStringLiteral("c"), "old");
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Remove, 1, EACCES);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("c"), false), 3);
    QCOMPARE(faults.count(FileFaults::OpenToWrite), 0);
    QCOMPARE(m_files->content(QStringLiteral("c")), QByteArray("old"));
}

void TestCopyFileFaults::anUnreadableSourceSparesTheOldTarget()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->make(QStringLiteral("b"), "old");
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::OpenToRead, 1, EIO);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b"), false), 5);
    QCOMPARE(faults.hits(), 1);
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray("old"));
}

void TestCopyFileFaults::noFolderForTheTarget()
{
    m_files->make(QStringLiteral("a"), m_photo);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("none/b")), 5);
    QCOMPARE(copy(QStringLiteral("a"), QString(QStringLiteral("b")).repeated(300)), 5);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

void TestCopyFileFaults::failedOpensHaveTheFilesStatus()
{
    m_files->make(QStringLiteral("a"), m_photo);
    {
        FileFaults faults(m_files->path());
        faults.fail(FileFaults::OpenToRead, 1, EMFILE);
        QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), int(QFile::ResourceError));
        QCOMPARE(faults.count(FileFaults::OpenToWrite), 0);
    }
    FileFaults faults(m_files->path());
    faults.failFrom(FileFaults::OpenToWrite, 1, ENOSPC);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 5);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

void TestCopyFileFaults::aFailingWriteLeavesNoTarget_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("no space left") << ENOSPC << 4;
    QTest::newRow("over the quota") << EDQUOT << 2;
    QTest::newRow("the disk fails") << EIO << 2;
}

void TestCopyFileFaults::aFailingWriteLeavesNoTarget()
{
    const auto [error, code] = lumi::test::row<int, int>();
    m_files->make(QStringLiteral("a"), m_photo);
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Write, 2, error);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), code);
    QCOMPARE(faults.count(FileFaults::Write), 2);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

/// Callers compare the sizes.
void TestCopyFileFaults::aShortWriteGoesUnnoticed()
{
    m_files->make(QStringLiteral("a"), m_photo);
    FileFaults faults(m_files->path());
    faults.shorten(FileFaults::Write, kBlocks, 100);
    faults.fail(FileFaults::Write, kBlocks + 1, ENOSPC);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 0);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

void TestCopyFileFaults::aReadErrorLooksLikeTheEnd()
{
    m_files->make(QStringLiteral("a"), m_photo);
    for (int nth = 1; nth <= kBlocks; ++nth) {
        FileFaults faults(m_files->path());
        faults.failFrom(FileFaults::Read, nth, EIO);
        QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b"), false), 0);
        QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
    }
}

void TestCopyFileFaults::theCallbackStopsTheCopy_data()
{
    QTest::addColumn<int>("after");
    for (int block = 1; block <= kBlocks; ++block) {
        QTest::newRow(qPrintable(QStringLiteral("after block %1").arg(block))) << block;
    }
}

void TestCopyFileFaults::theCallbackStopsTheCopy()
{
    QFETCH(int, after);
    s_stopAfter = after;
    m_files->make(QStringLiteral("a"), m_photo);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), false,
                      true, &stopLater, kBlock),
             6);
    QCOMPARE(s_askedTimes, after);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

void TestCopyFileFaults::theFlagOfTheUsualCallback()
{
    QVERIFY(copyKeepGoing());
    setCopyCancelled(true);
    QVERIFY(!copyKeepGoing());
    m_files->make(QStringLiteral("a"), m_photo);
    // The flag applies until it is reset.
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")),
                          false, true, &copyKeepGoing, kBlock),
                 6);
    }
    setCopyCancelled(false);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), false,
                      true, &copyKeepGoing, kBlock),
             0);
}

void TestCopyFileFaults::aCancelTakesEffectBetweenBlocks()
{
    m_files->make(QStringLiteral("a"), m_photo);
    FileFaults faults(m_files->path());
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&faults] {
        setCopyCancelled(faults.count(FileFaults::Write) == 2);
    });
    timer.start(0);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), false,
                      true, &copyKeepGoing, kBlock),
             6);
    // Events run between read and write; the callback is called after the write.
    QCOMPARE(faults.count(FileFaults::Write), 3);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a")});
}

void TestCopyFileFaults::aMovedSourceIsGoneEvenAfterAFailure()
{
    m_files->make(QStringLiteral("a"), m_photo);
    s_stopAfter = 2;
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), true,
                      true, &stopLater, kBlock),
             6);
    QVERIFY(m_files->entries().isEmpty());
}

void TestCopyFileFaults::aMovedSourceThatStays()
{
    m_files->make(QStringLiteral("a"), m_photo);
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Remove, 1, EACCES);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), true,
                      true, nullptr, kBlock),
             3);
    QCOMPARE(m_files->content(QStringLiteral("a")), m_photo);
    QCOMPARE(m_files->content(QStringLiteral("b")), m_photo);
}

void TestCopyFileFaults::aRefusedMoveKeepsTheSource()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->make(QStringLiteral("b"), "old");
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), true,
                      true, nullptr, kBlock),
             5);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("none/b")),
                      true, true, nullptr, kBlock),
             5);
    QCOMPARE(m_files->content(QStringLiteral("a")), m_photo);
}

LUMI_TEST(TestCopyFileFaults)
#include "TestCopyFileFaults.moc"
