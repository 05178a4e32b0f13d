// SPDX-License-Identifier: MIT
// Entries that a walk must leave out, and how it reports them.
#include "files/engine/FPVFileTree.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/support/FileFaults.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::FileFixture;
using lumi::test::list;

namespace {

/// The filter of an import.
constexpr int kCardFilter = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

int warnings = 0;

void countWarning(QtMsgType /*type*/, const QMessageLogContext & /*context*/,
                  const QString & /*text*/)
{
    ++warnings;
}

} // namespace

class TestLeftOut : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nothingIsLeftOutOfAReadableFolder();
    void namesThatAreNotText();
    void unreadableFilesAndFolders();
    void aFolderThatMayOnlyBeListed();
    void whatNobodyAskedForIsNotLeftOut();
    void aFolderWhoseListingFails_data();
    void aFolderWhoseListingFails();
    void aRootThatIsNotThere();
    void linksThatLeadOutside();
    void linksThatStayInside();
    void aRootBehindALink();
    void aFlatWalkFollowsLinksAndWarns();
    void theNextWalkStartsAnew();

private:
    /// Makes a file with a name of these bytes.
    void makeFile(const char *name) const;
    void makeFolder(const char *name) const;
    [[nodiscard]] QByteArray bytesOf(const char *name) const;
    /// What the last walk left out, relative to the folder.
    [[nodiscard]] QStringList leftOut() const;

    std::unique_ptr<FileFixture> m_files;
};

void TestLeftOut::init()
{
    m_files = std::make_unique<FileFixture>();
    FPVFileTree::resetState();
    FPVFileTree::setDirFilter(kCardFilter);
}

void TestLeftOut::cleanup()
{
    m_files.reset();
    FPVFileTree::resetState();
}

QByteArray TestLeftOut::bytesOf(const char *name) const
{
    return QFile::encodeName(m_files->path()) + '/' + name;
}

void TestLeftOut::makeFile(const char *name) const
{
    const int file = ::open(bytesOf(name).constData(), O_CREAT | O_WRONLY, 0644);
    if (file < 0) {
        qFatal("cannot make a file");
    }
    ::close(file);
}

void TestLeftOut::makeFolder(const char *name) const
{
    if (::mkdir(bytesOf(name).constData(), 0755) != 0) {
        qFatal("cannot make a folder");
    }
}

QStringList TestLeftOut::leftOut() const
{
    QStringList paths = FPVFileTree::leftOut();
    for (QString &path : paths) {
        if (!path.startsWith(m_files->path())) {
            qFatal("%s", qPrintable(path));
        }
        path.remove(0, m_files->path().size());
    }
    return paths;
}

void TestLeftOut::nothingIsLeftOutOfAReadableFolder()
{
    m_files->make(QStringLiteral("äöü/写真.jpg"));
    m_files->make(QStringLiteral("a b/\uFFFD.jpg")); // the replacement character is valid text
    m_files->make(QStringLiteral("%E4.jpg"));
    const QtMessageHandler before = qInstallMessageHandler(countWarning);
    warnings = 0;
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    tree.walk(m_files->path(), true, nullptr);
    qInstallMessageHandler(before);
    QCOMPARE(warnings, 0);
    QCOMPARE(leftOut(), QStringList());
}

void TestLeftOut::namesThatAreNotText()
{
    makeFolder("dcim");
    makeFile("dcim/a.jpg");
    // Latin-1 names; one also contains a UTF-8 letter.
    makeFile("dcim/K\xE4se.jpg");
    makeFile("dcim/\xC3\xA4\xFF%.jpg");
    makeFolder("M\xFCll");
    makeFile("M\xFCll/b.jpg");
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    QCOMPARE(tree.allFiles(), list("/dcim/a.jpg"));
    QCOMPARE(tree.folders(), list("/dcim"));
    QStringList found = leftOut();
    found.sort();
    QCOMPARE(found, list("/M%FCll /dcim/%C3%A4%FF%.jpg /dcim/K%E4se.jpg"));
}

void TestLeftOut::unreadableFilesAndFolders()
{
    m_files->make(QStringLiteral("a.jpg"));
    m_files->make(QStringLiteral("closed/b.jpg"));
    m_files->make(QStringLiteral("secret.jpg"));
    QFile::setPermissions(m_files->path(QStringLiteral("closed")), {});
    QFile::setPermissions(m_files->path(QStringLiteral("secret.jpg")), {});
    {
        const lumi::test::OrdinaryUser user;
        FPVFileTree tree;
        QVERIFY(tree.walk(m_files->path(), false, nullptr));
        QCOMPARE(tree.allFiles(), list("/a.jpg"));
        QVERIFY(tree.folders().isEmpty());
    }
    QCOMPARE(leftOut(), list("/closed /secret.jpg"));
    QFile::setPermissions(m_files->path(QStringLiteral("closed")), QFile::Permissions(0x7000));
}

/// Its names can be read, but its entries can't be opened.
void TestLeftOut::aFolderThatMayOnlyBeListed()
{
    m_files->make(QStringLiteral("dcim/a.jpg"));
    m_files->makeFolder(QStringLiteral("dcim/b"));
    QFile::setPermissions(m_files->path(QStringLiteral("dcim")), QFile::Permissions(0x4444));
    {
        const lumi::test::OrdinaryUser user;
        FPVFileTree tree;
        tree.walk(m_files->path(), false, nullptr);
        QVERIFY(tree.allFiles().isEmpty());
    }
    QCOMPARE(leftOut(), list("/dcim/a.jpg /dcim/b"));
    QFile::setPermissions(m_files->path(QStringLiteral("dcim")), QFile::Permissions(0x7000));
}

void TestLeftOut::whatNobodyAskedForIsNotLeftOut()
{
    makeFile("K\xE4se.mov"); // matches no pattern
    makeFile("secret.txt");
    QVERIFY(::chmod(bytesOf("secret.txt").constData(), 0) == 0);
    QVERIFY(::mkfifo(bytesOf("p\xEFpe.jpg").constData(), 0600) == 0);
    QVERIFY(::symlink("nowhere", bytesOf("l\xEFnk.jpg").constData()) == 0);
    QVERIFY(::symlink("nowhere", bytesOf("dangling.jpg").constData()) == 0);
    QVERIFY(::symlink("round.jpg", bytesOf("round.jpg").constData()) == 0);
    QVERIFY(::symlink("/", bytesOf("folder.jpg").constData()) == 0);
    QVERIFY(::symlink("/", bytesOf("f\xF6lder.jpg").constData()) == 0);
    FPVFileTree::setPatterns(QStringLiteral("*.jpg"));
    {
        const lumi::test::OrdinaryUser user;
        FPVFileTree tree;
        tree.walk(m_files->path(), false, nullptr);
        QVERIFY(tree.allFiles().isEmpty());
    }
    QCOMPARE(leftOut(), QStringList());
    FPVFileTree::setPatterns(QStringLiteral("*"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QVERIFY(leftOut().contains(QStringLiteral("/K%E4se.mov")));
}

void TestLeftOut::aFolderWhoseListingFails_data()
{
    lumi::test::columns<unsigned, int>();
    QTest::newRow("it can't be opened") << unsigned(FileFaults::ListFolder) << 1;
    QTest::newRow("at its beginning") << unsigned(FileFaults::ReadFolder) << 1;
    QTest::newRow("in the middle") << unsigned(FileFaults::ReadFolder) << 4;
    QTest::newRow("at its end") << unsigned(FileFaults::ReadFolder) << 6;
}

void TestLeftOut::aFolderWhoseListingFails()
{
    const auto [call, nth] = lumi::test::row<unsigned, int>();
    m_files->make(QStringLiteral("a.jpg"));
    const QStringList photos = list("/dcim/b.jpg /dcim/c.jpg /dcim/d.jpg");
    for (const QString &photo : photos) {
        m_files->make(photo.mid(1));
    }
    FileFaults faults(m_files->path(QStringLiteral("dcim")));
    faults.fail(call, nth, EIO); // only once: a retry would find everything
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    QCOMPARE(faults.hits(), 1);
    QCOMPARE(leftOut(), list("/dcim"));
    QCOMPARE(tree.folders(), list("/dcim"));
    // Entries read before the failure are kept. Two entries are "." and "..".
    QStringList found = tree.allFiles();
    QCOMPARE(found.takeFirst(), QStringLiteral("/a.jpg"));
    QVERIFY(found.size() <= nth - 1);
    QVERIFY(found.size() >= nth - 3);
}

void TestLeftOut::aRootThatIsNotThere()
{
    const QString root = m_files->path(QStringLiteral("none"));
    FPVFileTree tree;
    tree.walk(root, false, nullptr);
    QCOMPARE(FPVFileTree::leftOut(), QStringList{root});
}

void TestLeftOut::linksThatLeadOutside()
{
    m_files->make(QStringLiteral("card/a.jpg"));
    m_files->make(QStringLiteral("card outside.jpg"), "12345");
    m_files->makeLink(QStringLiteral("card/absolute.jpg"),
                      m_files->path(QStringLiteral("card outside.jpg")));
    m_files->makeLink(QStringLiteral("card/relative.jpg"), QStringLiteral("../card outside.jpg"));
    m_files->makeLink(QStringLiteral("card/chain.jpg"), QStringLiteral("relative.jpg"));
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("card")), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    QCOMPARE(leftOut(), list("/card/absolute.jpg /card/chain.jpg /card/relative.jpg"));
    QCOMPARE(FPVFileTree::byteCount(), 0);
}

void TestLeftOut::linksThatStayInside()
{
    m_files->make(QStringLiteral("card/dcim/a.jpg"), "12345");
    m_files->makeLink(QStringLiteral("card/up.jpg"), QStringLiteral("dcim/a.jpg"));
    m_files->makeLink(QStringLiteral("card/dcim/round.jpg"),
                      m_files->path(QStringLiteral("card/dcim/../../card/up.jpg")));
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("card")), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/up.jpg /dcim/a.jpg /dcim/round.jpg"));
    QCOMPARE(leftOut(), QStringList());
    QCOMPARE(FPVFileTree::byteCount(), 15);
}

/// The path of a slot is such a link where the desktop mounts cards elsewhere.
void TestLeftOut::aRootBehindALink()
{
    m_files->make(QStringLiteral("media/a.jpg"));
    m_files->make(QStringLiteral("b.jpg"));
    m_files->makeLink(QStringLiteral("media/in.jpg"), QStringLiteral("a.jpg"));
    m_files->makeLink(QStringLiteral("media/out.jpg"), m_files->path(QStringLiteral("b.jpg")));
    m_files->makeLink(QStringLiteral("slot"), QStringLiteral("media"));
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("slot")), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg /in.jpg"));
    QCOMPARE(leftOut(), list("/slot/out.jpg"));
}

void TestLeftOut::aFlatWalkFollowsLinksAndWarns()
{
    m_files->make(QStringLiteral("b.jpg"));
    m_files->makeFolder(QStringLiteral("trip"));
    m_files->makeLink(QStringLiteral("trip/out.jpg"), m_files->path(QStringLiteral("b.jpg")));
    makeFile("trip/caf\xE9.jpg");
    const QByteArray warning = bytesOf("trip/caf%E9.jpg") + " can't be read and is left out";
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("trip")), true, nullptr);
    QCOMPARE(tree.allFiles(), list("/out.jpg"));
}

void TestLeftOut::theNextWalkStartsAnew()
{
    makeFile("caf\xE9.jpg");
    m_files->make(QStringLiteral("sub/a.jpg"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(leftOut(), list("/caf%E9.jpg"));
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(leftOut(), list("/caf%E9.jpg"));
    tree.clear();
    QCOMPARE(leftOut(), QStringList());
    tree.walk(m_files->path(), false, nullptr);
    tree.walk(m_files->path(QStringLiteral("sub")), false, nullptr);
    QCOMPARE(leftOut(), QStringList());
}

LUMI_TEST(TestLeftOut)
#include "TestLeftOut.moc"
