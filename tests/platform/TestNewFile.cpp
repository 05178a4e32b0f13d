// SPDX-License-Identifier: MIT
#include "platform/files/NewFile.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

#include <sys/stat.h>

using lumi::NewFile;
using lumi::test::FileFaults;
using lumi::test::readFile;
using lumi::test::writeFile;

namespace {

const QByteArray kBytes(100000, 'x');
const QString kHidden = QString::fromLatin1(NewFile::kHiddenName);

/// A file system without unnamed files.
void refuseUnnamedFiles(FileFaults *faults)
{
    faults->fail(FileFaults::OpenToWrite, 1, EOPNOTSUPP);
}

} // namespace

class TestNewFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nameAppearsWithTheCommit_data();
    void nameAppearsWithTheCommit();
    void fileWithoutACommitLeavesNothing_data();
    void fileWithoutACommitLeavesNothing();
    void failedCallGivesNoName_data();
    void failedCallGivesNoName();
    void interruptedAndShortWritesGoOn();
    void takenNameIsKept_data();
    void takenNameIsKept();
    void danglingLinkTakesTheName();
    void missingFolderIsAnError();
    void permissionsFollowTheUsersMask();
    void plainRenameWhereNoConditionIsKnown();
    void plainRenameKeepsAFileThatTookTheName();
    void hiddenFileOfAnotherProgramIsNotTaken();
    void bytesAreWrittenAtOnce();

private:
    [[nodiscard]] QStringList entries() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void TestNewFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(QStringLiteral("photo.jpg"));
}

void TestNewFile::cleanup()
{
    m_folder.reset();
}

QStringList TestNewFile::entries() const
{
    return QDir(m_folder->path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void TestNewFile::nameAppearsWithTheCommit_data()
{
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("unnamed file") << false;
    QTest::newRow("hidden file") << true;
}

void TestNewFile::nameAppearsWithTheCommit()
{
    QFETCH(bool, isHidden);
    FileFaults faults(m_folder->path());
    if (isHidden) {
        refuseUnnamedFiles(&faults);
    }
    NewFile file(m_path);
    QVERIFY(file.open());
    QCOMPARE(file.write(kBytes.constData(), kBytes.size()), qint64(kBytes.size()));
    QCOMPARE(file.size(), qint64(kBytes.size()));
    QVERIFY(file.sync());
    QCOMPARE(entries(), isHidden ? QStringList{kHidden} : QStringList());
    QVERIFY(file.commit());
    QCOMPARE(file.error(), 0);
    QCOMPARE(entries(), QStringList{QStringLiteral("photo.jpg")});
    QCOMPARE(readFile(m_path), kBytes);
}

void TestNewFile::fileWithoutACommitLeavesNothing_data()
{
    nameAppearsWithTheCommit_data();
}

void TestNewFile::fileWithoutACommitLeavesNothing()
{
    QFETCH(bool, isHidden);
    FileFaults faults(m_folder->path());
    if (isHidden) {
        refuseUnnamedFiles(&faults);
    }
    {
        NewFile file(m_path);
        QVERIFY(file.open());
        QCOMPARE(file.write("abc", 3), 3);
    }
    QCOMPARE(faults.hits(), isHidden ? 1 : 0);
    QCOMPARE(entries(), QStringList());
}

void TestNewFile::failedCallGivesNoName_data()
{
    lumi::test::columns<unsigned, int>();
    QTest::newRow("the disk is full") << unsigned(FileFaults::Write) << ENOSPC;
    QTest::newRow("the disk is broken") << unsigned(FileFaults::Write) << EIO;
    QTest::newRow("the sync fails") << unsigned(FileFaults::Sync) << EIO;
    QTest::newRow("the close reports a failed write") << unsigned(FileFaults::Close) << EDQUOT;
    QTest::newRow("the folder is full") << unsigned(FileFaults::Link) << ENOSPC;
}

void TestNewFile::failedCallGivesNoName()
{
    const auto [call, error] = lumi::test::row<unsigned, int>();
    {
        NewFile file(m_path);
        QVERIFY(file.open());
        QCOMPARE(file.write("abc", 3), 3);
        FileFaults faults(m_folder->path());
        faults.fail(call, 1, error);
        const bool isWritten = file.write("def", 3) == 3;
        const bool isSynced = file.sync();
        QVERIFY(!file.commit());
        QCOMPARE(faults.hits(), 1);
        QCOMPARE(isWritten, call != FileFaults::Write);
        QCOMPARE(isSynced, call != FileFaults::Sync);
        QCOMPARE(file.error(), error);
    }
    QCOMPARE(entries(), QStringList());
}

void TestNewFile::interruptedAndShortWritesGoOn()
{
    FileFaults faults(m_folder->path());
    faults.shorten(FileFaults::Write, 1, 7);
    faults.fail(FileFaults::Write, 2, EINTR);
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), 0);
    QCOMPARE(faults.hits(), 2);
    QCOMPARE(readFile(m_path), kBytes);
}

void TestNewFile::takenNameIsKept_data()
{
    nameAppearsWithTheCommit_data();
}

void TestNewFile::takenNameIsKept()
{
    QFETCH(bool, isHidden);
    FileFaults faults(m_folder->path());
    if (isHidden) {
        refuseUnnamedFiles(&faults);
    }
    {
        NewFile file(m_path);
        QVERIFY(file.open());
        writeFile(m_path, "another photo");
        QVERIFY(!file.commit());
        QCOMPARE(file.error(), EEXIST);
    }
    QCOMPARE(readFile(m_path), QByteArray("another photo"));
    QCOMPARE(entries(), QStringList{QStringLiteral("photo.jpg")});
}

void TestNewFile::danglingLinkTakesTheName()
{
    QVERIFY(QFile::link(m_folder->filePath(QStringLiteral("nowhere")), m_path));
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), EEXIST);
    QVERIFY(!QFile::exists(m_folder->filePath(QStringLiteral("nowhere"))));
}

void TestNewFile::missingFolderIsAnError()
{
    NewFile file(m_folder->filePath(QStringLiteral("missing/photo.jpg")));
    QVERIFY(!file.open());
    QCOMPARE(file.error(), ENOENT);
}

void TestNewFile::permissionsFollowTheUsersMask()
{
    const mode_t before = ::umask(027);
    const int error = lumi::writeNewFile(m_path, kBytes);
    ::umask(before);
    QCOMPARE(error, 0);
    struct stat figures = {};
    QCOMPARE(::stat(QFile::encodeName(m_path).constData(), &figures), 0);
    QCOMPARE(figures.st_mode & 07777U, 0640U);
    QCOMPARE(int(figures.st_nlink), 1);
}

void TestNewFile::plainRenameWhereNoConditionIsKnown()
{
    FileFaults faults(m_folder->path());
    refuseUnnamedFiles(&faults);
    faults.fail(FileFaults::Rename, 1, EINVAL);
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), 0);
    QCOMPARE(faults.hits(), 2);
    QCOMPARE(entries(), QStringList{QStringLiteral("photo.jpg")});
    QCOMPARE(readFile(m_path), kBytes);
}

void TestNewFile::plainRenameKeepsAFileThatTookTheName()
{
    FileFaults faults(m_folder->path());
    refuseUnnamedFiles(&faults);
    const auto takeName = [this] {
        writeFile(m_path, "another photo");
    };
    faults.doBefore(FileFaults::Rename, 1, takeName, EINVAL);
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), EEXIST);
    QCOMPARE(readFile(m_path), QByteArray("another photo"));
    QCOMPARE(entries(), QStringList{QStringLiteral("photo.jpg")});
}

/// Two programs may write to one card. The second one removes the file of the first one.
void TestNewFile::hiddenFileOfAnotherProgramIsNotTaken()
{
    FileFaults faults(m_folder->path());
    refuseUnnamedFiles(&faults);
    {
        NewFile file(m_path);
        QVERIFY(file.open());
        QVERIFY(QFile::remove(m_folder->filePath(kHidden)));
        writeFile(m_folder->filePath(kHidden), "half a photo of another program");
        QVERIFY(!file.commit());
        QCOMPARE(file.error(), EBUSY);
    }
    QCOMPARE(entries(), QStringList{kHidden});
}

void TestNewFile::bytesAreWrittenAtOnce()
{
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), 0);
    QCOMPARE(readFile(m_path), kBytes);
    QCOMPARE(lumi::writeNewFile(m_path, kBytes), EEXIST);
    QCOMPARE(lumi::writeNewFile(m_folder->filePath(QStringLiteral("empty")), {}), 0);
    QCOMPARE(readFile(m_folder->filePath(QStringLiteral("empty"))), QByteArray());
}

LUMI_TEST(TestNewFile)
#include "TestNewFile.moc"
