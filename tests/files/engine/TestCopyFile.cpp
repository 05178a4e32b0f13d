// SPDX-License-Identifier: MIT
// Copies without failures.
#include "files/engine/copyFile.h"
#include "tests/files/engine/CopyTest.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::FileFixture;

class TestCopyFile : public CopyTest
{
    Q_OBJECT

private Q_SLOTS:
    void contentsArrive_data();
    void contentsArrive();
    void anEmptyFileMakesAnEmptyFile();
    void onlyContentsAreCopied();
    void theSamePathIsLeftAlone();
    void eventsRunBeforeTheFirstStep();
    void noSourceIsRefused();
    void onlyRegularFilesAreRead_data();
    void onlyRegularFilesAreRead();
    void aLinkIsReadThrough();
    void anExistingTargetIsRefused();
    void anExistingTargetGoesIfItMay();
    void theSourceUnderAnotherNameIsKept_data();
    void theSourceUnderAnotherNameIsKept();
    void aDanglingLinkIsNotWrittenThrough();
    void blocksAreOfTheGivenSize_data();
    void blocksAreOfTheGivenSize();
    void aMovedSourceIsGone();
    void shortSpace_data();
    void shortSpace();
    void shortSpaceIsAskedAtTheDocuments();
};

void TestCopyFile::contentsArrive_data()
{
    lumi::test::columns<int, QString, QString>();
    QTest::newRow("one byte") << 1 << "a"
                              << "b";
    QTest::newRow("one byte less than a block") << kBlock - 1 << "a"
                                                << "b";
    QTest::newRow("a block") << kBlock << "a"
                             << "b";
    QTest::newRow("a block and a byte") << kBlock + 1 << "a"
                                        << "b";
    QTest::newRow("many blocks") << 1000003 << "a"
                                 << "b";
    QTest::newRow("blanks in the names") << 5 << " a b.jpg"
                                         << "c  d .jpg";
    QTest::newRow("other scripts") << 5 << "été/写真.jpg"
                                   << "été/Фото.jpg";
}

void TestCopyFile::contentsArrive()
{
    const auto [size, from, to] = lumi::test::row<int, QString, QString>();
    const QByteArray content = FileFixture::noise(size);
    m_files->make(from, content);
    QCOMPARE(copy(from, to), 0);
    QCOMPARE(m_files->content(to), content);
    QCOMPARE(m_files->content(from), content);
}

void TestCopyFile::anEmptyFileMakesAnEmptyFile()
{
    m_files->make(QStringLiteral("a"));
    s_stopAfter = 1;
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), false,
                      true, &stopLater, kBlock),
             0);
    QVERIFY(QFile::exists(m_files->path(QStringLiteral("b"))));
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray(""));
    // Nothing was written, so the callback was not called.
    QCOMPARE(s_askedTimes, 0);
}

void TestCopyFile::onlyContentsAreCopied()
{
    const QString path = m_files->make(QStringLiteral("a"), "1");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addYears(-3),
                             QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 0);
    const QFileInfo copied(m_files->path(QStringLiteral("b")));
    QVERIFY(copied.lastModified() > QDateTime::currentDateTime().addDays(-1));
    QVERIFY(copied.permission(QFile::WriteOwner) && !copied.permission(QFile::ExeOwner));
}

void TestCopyFile::theSamePathIsLeftAlone()
{
    m_files->make(QStringLiteral("a"), m_photo);
    for (const bool move : {false, true}) {
        for (const bool failIfExists : {false, true}) {
            const QString path = m_files->path(QStringLiteral("a"));
            QCOMPARE(copyFile(path, path, move, failIfExists, nullptr, kBlock), 0);
            QCOMPARE(m_files->content(QStringLiteral("a")), m_photo);
        }
    }
}

/// A source that such an event creates is copied.
void TestCopyFile::eventsRunBeforeTheFirstStep()
{
    QTimer::singleShot(0, this, [this] {
        m_files->make(QStringLiteral("late"), "1");
    });
    QCOMPARE(copy(QStringLiteral("late"), QStringLiteral("b")), 0);
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray("1"));
}

void TestCopyFile::noSourceIsRefused()
{
    m_files->make(QStringLiteral("b"), "old");
    for (const bool failIfExists : {false, true}) {
        QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b"), failIfExists), 5);
    }
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray("old"));
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("a")), 5);
}

void TestCopyFile::onlyRegularFilesAreRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a pipe") << "pipe";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("a broken link") << "dangling";
    QTest::newRow("a link to a pipe") << "toPipe";
    QTest::newRow("a link to a device") << "toDevice";
}

void TestCopyFile::onlyRegularFilesAreRead()
{
    QFETCH(QString, name);
    m_files->makePipe(QStringLiteral("pipe"));
    m_files->makeFolder(QStringLiteral("folder"));
    m_files->makeLink(QStringLiteral("dangling"), QStringLiteral("gone"));
    m_files->makeLink(QStringLiteral("toPipe"), QStringLiteral("pipe"));
    m_files->makeLink(QStringLiteral("toDevice"), QStringLiteral("/dev/zero"));
    m_files->make(QStringLiteral("old"), "old");
    QCOMPARE(copy(name, QStringLiteral("new")), 5);
    QVERIFY(!QFile::exists(m_files->path(QStringLiteral("new"))));
    // An existing target is not removed for a source that can't be copied.
    QCOMPARE(copy(name, QStringLiteral("old"), false), 5);
    QCOMPARE(m_files->content(QStringLiteral("old")), QByteArray("old"));
}

void TestCopyFile::aLinkIsReadThrough()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->makeLink(QStringLiteral("link"), QStringLiteral("a"));
    QCOMPARE(copy(QStringLiteral("link"), QStringLiteral("b")), 0);
    QCOMPARE(m_files->content(QStringLiteral("b")), m_photo);
    QVERIFY(!QFileInfo(m_files->path(QStringLiteral("b"))).isSymLink());
}

void TestCopyFile::anExistingTargetIsRefused()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->make(QStringLiteral("b"), "old");
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 5);
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray("old"));
}

void TestCopyFile::anExistingTargetGoesIfItMay()
{
    m_files->make(QStringLiteral("a"), "new");
    m_files->make(QStringLiteral("b"), m_photo);
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b"), false), 0);
    QCOMPARE(m_files->content(QStringLiteral("b")), QByteArray("new"));
}

void TestCopyFile::theSourceUnderAnotherNameIsKept_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("another path to the same file") << "a"
                                                   << "folder/../a";
    QTest::newRow("through a linked folder") << "a"
                                             << "linked/a";
    QTest::newRow("from a link to its target") << "link"
                                               << "a";
    QTest::newRow("onto a link to the source") << "a"
                                               << "link";
    QTest::newRow("a second name of the file") << "a"
                                               << "second";
}

void TestCopyFile::theSourceUnderAnotherNameIsKept()
{
    const auto [from, to] = lumi::test::row<QString, QString>();
    const QString path = m_files->make(QStringLiteral("a"), m_photo);
    m_files->makeFolder(QStringLiteral("folder"));
    m_files->makeLink(QStringLiteral("linked"), QStringLiteral("."));
    m_files->makeLink(QStringLiteral("link"), QStringLiteral("a"));
    QCOMPARE(::link(QFile::encodeName(path).constData(),
                    QFile::encodeName(m_files->path(QStringLiteral("second"))).constData()),
             0);
    const QStringList before = m_files->entries();
    for (const bool move : {false, true}) {
        QCOMPARE(copyFile(m_files->path(from), m_files->path(to), move, false, nullptr, kBlock), 5);
        QCOMPARE(m_files->entries(), before);
        QCOMPARE(m_files->content(QStringLiteral("a")), m_photo);
        QVERIFY(QFileInfo(m_files->path(QStringLiteral("link"))).isSymLink());
    }
}

void TestCopyFile::aDanglingLinkIsNotWrittenThrough()
{
    m_files->make(QStringLiteral("a"), m_photo);
    m_files->makeLink(QStringLiteral("b"), QStringLiteral("elsewhere"));
    QCOMPARE(copy(QStringLiteral("a"), QStringLiteral("b")), 5);
    QVERIFY(!QFile::exists(m_files->path(QStringLiteral("elsewhere"))));
    QVERIFY(QFileInfo(m_files->path(QStringLiteral("b"))).isSymLink());
}

void TestCopyFile::blocksAreOfTheGivenSize_data()
{
    lumi::test::columns<uint, int>();
    QTest::newRow("0 becomes 4") << 0U << 25;
    QTest::newRow("1 becomes 4") << 1U << 25;
    QTest::newRow("4") << 4U << 25;
    QTest::newRow("5 becomes 8") << 5U << 13;
    QTest::newRow("50 becomes 52") << 50U << 2;
    QTest::newRow("97 becomes 100") << 97U << 1;
    QTest::newRow("the largest number") << UINT_MAX << 1;
}

void TestCopyFile::blocksAreOfTheGivenSize()
{
    const auto [wanted, writes] = lumi::test::row<uint, int>();
    const QByteArray content = m_photo.left(100);
    m_files->make(QStringLiteral("a"), content);
    FileFaults faults(m_files->path());
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), false,
                      true, nullptr, wanted),
             0);
    QCOMPARE(faults.count(FileFaults::Write), writes);
    QCOMPARE(m_files->content(QStringLiteral("b")), content);
}

void TestCopyFile::aMovedSourceIsGone()
{
    m_files->make(QStringLiteral("a"), m_photo);
    QCOMPARE(copyFile(m_files->path(QStringLiteral("a")), m_files->path(QStringLiteral("b")), true,
                      true, nullptr, kBlock),
             0);
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("b")});
    QCOMPARE(m_files->content(QStringLiteral("b")), m_photo);
}

void TestCopyFile::shortSpace_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("less") << 99 << true;
    QTest::newRow("exactly that much") << 100 << false;
    QTest::newRow("more") << 101 << false;
    QTest::newRow("none") << 0 << true;
}

void TestCopyFile::shortSpace()
{
    const auto [free, isShort] = lumi::test::row<int, bool>();
    lumi::test::FakeMachine::install()->setFreeDiskKB(free);
    QCOMPARE(isSpaceShort(100), isShort);
    Machine::install(nullptr);
}

void TestCopyFile::shortSpaceIsAskedAtTheDocuments()
{
    QByteArrayList asked;
    lumi::test::FakeMachine::install()->diskAt = [&asked](const QByteArray &path) {
        asked.append(path);
        return DiskFigures{};
    };
    // An unknown free space counts as none.
    QVERIFY(isSpaceShort(0));
    QCOMPARE(asked,
             QByteArrayList{QFile::encodeName(QDir::homePath() + QStringLiteral("/Documents"))});
    Machine::install(nullptr);
}

LUMI_TEST(TestCopyFile)
#include "TestCopyFile.moc"
