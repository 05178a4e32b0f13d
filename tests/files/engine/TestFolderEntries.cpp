// SPDX-License-Identifier: MIT
#include "files/engine/folderEntries.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/support/FileFaults.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <cerrno>
#include <memory>

using lumi::test::FileFaults;
using lumi::test::FileFixture;

class TestFolderEntries : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_files = std::make_unique<FileFixture>(); }

    void cleanup() { m_files.reset(); }

    void namesThatAreTaken_data();
    void namesThatAreTaken();
    void foldersAreMade_data();
    void foldersAreMade();
    void aFolderIsNotMadeWhereNobodyMay();
    void entriesAreRenamed();
    void nothingIsOverwrittenByARename_data();
    void nothingIsOverwrittenByARename();
    void aRefusedRenameLeavesBoth_data();
    void aRefusedRenameLeavesBoth();
    void whatTakesTheNewNameMeanwhileIsKept_data();
    void whatTakesTheNewNameMeanwhileIsKept();
    void renamingWithoutConditionalRename_data();
    void renamingWithoutConditionalRename();
    void oneFileUnderTwoPaths();
    void photosAreRemoved();
    void protectedPhotosStay();
    void emptyFoldersGo();

private:
    std::unique_ptr<FileFixture> m_files;
};

void TestFolderEntries::namesThatAreTaken_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("a file") << "a.jpg" << true;
    QTest::newRow("a folder") << "dir" << true;
    QTest::newRow("a hidden file") << ".h" << true;
    QTest::newRow("a broken link") << "link" << true;
    QTest::newRow("the folder itself") << "." << true;
    QTest::newRow("its parent") << ".." << true;
    QTest::newRow("nothing") << "b.jpg" << false;
    QTest::newRow("different case") << "A.JPG" << false;
    QTest::newRow("inside a folder") << "dir/x" << false;
    QTest::newRow("a slash") << "/" << false;
    QTest::newRow("an absolute path") << "/tmp" << false;
}

void TestFolderEntries::namesThatAreTaken()
{
    const auto [name, taken] = lumi::test::row<QString, bool>();
    m_files->make(QStringLiteral("a.jpg"));
    m_files->make(QStringLiteral("dir/x"));
    m_files->make(QStringLiteral(".h"));
    m_files->makeLink(QStringLiteral("link"), QStringLiteral("gone"));
    QCOMPARE(lumi::hasEntry(m_files->path(), name), taken);
}

void TestFolderEntries::foldersAreMade_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("a name") << "trip" << true;
    QTest::newRow("with blanks") << " day  one " << true;
    QTest::newRow("in another script") << "夏の写真" << true;
    QTest::newRow("with a percent sign") << "%1" << true;
    QTest::newRow("with a dot inside") << "trip.1" << true;
    QTest::newRow("with a leading dot") << ".trip" << false;
    QTest::newRow("dots only") << "..." << false;
    QTest::newRow("taken by a file") << "a.jpg" << false;
    QTest::newRow("with a slash") << "trip/day" << false;
    QTest::newRow("with a slash at the end") << "trip/" << false;
    QTest::newRow("out of the folder") << "../trip" << false;
    QTest::newRow("too long") << QString(QStringLiteral("x")).repeated(256) << false;
    QTest::newRow("just short enough") << QString(QStringLiteral("x")).repeated(255) << true;
}

void TestFolderEntries::foldersAreMade()
{
    const auto [name, made] = lumi::test::row<QString, bool>();
    m_files->make(QStringLiteral("here/a.jpg"));
    QStringList expected = m_files->entries();
    QCOMPARE(lumi::makeFolder(m_files->path(QStringLiteral("here")), name), made);
    if (made) {
        expected.append(QStringLiteral("here/") + name + QLatin1Char('/'));
        expected.sort();
    }
    QCOMPARE(m_files->entries(), expected);
}

void TestFolderEntries::aFolderIsNotMadeWhereNobodyMay()
{
    QVERIFY(QFile::setPermissions(m_files->makeFolder(QStringLiteral("here")),
                                  QFile::ReadOther | QFile::ExeOther | QFile::ReadOwner));
    const lumi::test::OrdinaryUser user;
    QVERIFY(!lumi::makeFolder(m_files->path(QStringLiteral("here")), QStringLiteral("trip")));
    QVERIFY(!lumi::makeFolder(m_files->path(QStringLiteral("none")), QStringLiteral("trip")));
}

void TestFolderEntries::entriesAreRenamed()
{
    m_files->make(QStringLiteral("a.jpg"), "1");
    m_files->make(QStringLiteral("dir/x"), "2");
    const QString folder = m_files->path();
    QVERIFY(lumi::renameEntry(folder, QStringLiteral("a.jpg"), QStringLiteral("写 真.jpg")));
    QVERIFY(lumi::renameEntry(folder, QStringLiteral("dir"), QStringLiteral("Dir")));
    QCOMPARE(m_files->content(QStringLiteral("写 真.jpg")), QByteArray("1"));
    QCOMPARE(m_files->content(QStringLiteral("Dir/x")), QByteArray("2"));
    QCOMPARE(m_files->entries().size(), 3);
    QVERIFY(!lumi::renameEntry(folder, QStringLiteral("gone"), QStringLiteral("b")));
}

void TestFolderEntries::nothingIsOverwrittenByARename_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a file") << "b.jpg";
    QTest::newRow("a folder") << "dir";
    QTest::newRow("a broken link") << "link";
    QTest::newRow("a path out of the folder") << "dir/c.jpg";
    QTest::newRow("the folder itself") << ".";
    QTest::newRow("a name with a leading dot") << ".c.jpg";
    QTest::newRow("too long") << QString(QStringLiteral("x")).repeated(256);
}

void TestFolderEntries::nothingIsOverwrittenByARename()
{
    QFETCH(QString, name);
    m_files->make(QStringLiteral("a.jpg"), "1");
    m_files->make(QStringLiteral("b.jpg"), "2");
    m_files->makeFolder(QStringLiteral("dir"));
    m_files->makeLink(QStringLiteral("link"), QStringLiteral("gone"));
    const QStringList before = m_files->entries();
    QVERIFY(!lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), name));
    QCOMPARE(m_files->entries(), before);
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), QByteArray("1"));
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), QByteArray("2"));
}

void TestFolderEntries::aRefusedRenameLeavesBoth_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("the disk is broken") << EIO;
    QTest::newRow("no permission") << EACCES;
    QTest::newRow("the card is read-only") << EROFS;
    QTest::newRow("the new name is on another disk") << EXDEV;
    QTest::newRow("the folder is full") << ENOSPC;
}

/// Renaming never falls back to copying.
void TestFolderEntries::aRefusedRenameLeavesBoth()
{
    QFETCH(int, error);
    m_files->make(QStringLiteral("a.jpg"), "1");
    {
        FileFaults faults(m_files->path());
        faults.failFrom(FileFaults::Rename | FileFaults::RenamePlainly, 1, error);
        QVERIFY(
            !lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), QStringLiteral("b.jpg")));
        QCOMPARE(faults.count(FileFaults::OpenToWrite), 0);
    }
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a.jpg")});
    QVERIFY(lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), QStringLiteral("b.jpg")));
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), QByteArray("1"));
}

void TestFolderEntries::whatTakesTheNewNameMeanwhileIsKept_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("isLink");
    QTest::newRow("a photo, conditional rename") << 0 << false;
    QTest::newRow("a broken link, conditional rename") << 0 << true;
    QTest::newRow("a photo, conditional rename not supported") << EINVAL << false;
    QTest::newRow("a broken link, conditional rename not supported") << EINVAL << true;
}

void TestFolderEntries::whatTakesTheNewNameMeanwhileIsKept()
{
    QFETCH(int, error);
    QFETCH(bool, isLink);
    m_files->make(QStringLiteral("a.jpg"), "1");
    const auto takeName = [this, isLink] {
        if (isLink) {
            m_files->makeLink(QStringLiteral("b.jpg"), QStringLiteral("gone"));
        } else {
            m_files->make(QStringLiteral("b.jpg"), "2");
        }
    };
    {
        FileFaults faults(m_files->path());
        faults.doBefore(FileFaults::Rename, 1, takeName, error);
        QVERIFY(
            !lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), QStringLiteral("b.jpg")));
    }
    QCOMPARE(m_files->entries(), (QStringList{QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}));
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), QByteArray("1"));
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), isLink ? QByteArray() : QByteArray("2"));
}

void TestFolderEntries::renamingWithoutConditionalRename_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EINVAL for a conditional rename") << EINVAL;
    QTest::newRow("ENOSYS for a conditional rename") << ENOSYS;
    QTest::newRow("EOPNOTSUPP for a conditional rename") << EOPNOTSUPP;
}

void TestFolderEntries::renamingWithoutConditionalRename()
{
    QFETCH(int, error);
    m_files->make(QStringLiteral("a.jpg"), "1");
    FileFaults faults(m_files->path());
    faults.failFrom(FileFaults::Rename, 1, error);
    faults.fail(FileFaults::RenamePlainly, 1, EIO);
    QVERIFY(!lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), QStringLiteral("b.jpg")));
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("a.jpg")});
    QVERIFY(lumi::renameEntry(m_files->path(), QStringLiteral("a.jpg"), QStringLiteral("b.jpg")));
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("b.jpg")});
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), QByteArray("1"));
}

void TestFolderEntries::oneFileUnderTwoPaths()
{
    const QString photo = m_files->make(QStringLiteral("dir/a.jpg"), "1");
    const QString same = m_files->make(QStringLiteral("dir/b.jpg"), "1");
    const QString folder = m_files->path(QStringLiteral("dir"));
    const QString link = m_files->makeLink(QStringLiteral("link"), QStringLiteral("dir"));
    QVERIFY(lumi::areOneFile(photo, photo));
    QVERIFY(lumi::areOneFile(folder, link));
    QVERIFY(lumi::areOneFile(photo, link + QStringLiteral("/a.jpg")));
    QVERIFY(!lumi::areOneFile(photo, same));
    QVERIFY(!lumi::areOneFile(photo, folder));
    const QString gone = m_files->path(QStringLiteral("gone"));
    QVERIFY(!lumi::areOneFile(gone, gone));
}

void TestFolderEntries::photosAreRemoved()
{
    const QString photo = m_files->make(QStringLiteral("a b.jpg"));
    m_files->makeFolder(QStringLiteral("dir"));
    QVERIFY(lumi::removePhoto(photo));
    QVERIFY(!lumi::removePhoto(photo));
    QVERIFY(!lumi::removePhoto(m_files->path(QStringLiteral("dir"))));
    QCOMPARE(m_files->entries(), QStringList{QStringLiteral("dir/")});
}

void TestFolderEntries::protectedPhotosStay()
{
    const QString photo = m_files->make(QStringLiteral("a.jpg"));
    QVERIFY(QFile::setPermissions(photo, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    QVERIFY(!lumi::removePhoto(photo));
    QVERIFY(QFile::exists(photo));
    // Nothing is removed from a read-only folder either.
    const QString kept = m_files->make(QStringLiteral("closed/b.jpg"));
    QVERIFY(QFile::setPermissions(m_files->path(QStringLiteral("closed")),
                                  QFile::ReadOther | QFile::ExeOther | QFile::ReadOwner
                                      | QFile::ExeOwner));
    {
        const lumi::test::OrdinaryUser user;
        QVERIFY(!lumi::removePhoto(kept));
    }
    QVERIFY(QFile::exists(kept));
}

void TestFolderEntries::emptyFoldersGo()
{
    for (const char *name : {"empty", "two words", "nested/empty", ".hidden", "out/deep"}) {
        m_files->makeFolder(QLatin1String(name));
    }
    m_files->make(QStringLiteral("full/a.jpg"));
    m_files->make(QStringLiteral("secret/.h"));
    m_files->make(QStringLiteral("file"));
    m_files->makeLink(QStringLiteral("link"), QStringLiteral("out/deep"));
    lumi::removeEmptyFolders(m_files->path());
    const QStringList left{
        QStringLiteral(".hidden/"),      QStringLiteral("file"),     QStringLiteral("full/"),
        QStringLiteral("full/a.jpg"),    QStringLiteral("link"),     QStringLiteral("nested/"),
        QStringLiteral("nested/empty/"), QStringLiteral("out/"),     QStringLiteral("out/deep/"),
        QStringLiteral("secret/"),       QStringLiteral("secret/.h")};
    QCOMPARE(m_files->entries(), left);
    lumi::removeEmptyFolders(m_files->path(QStringLiteral("none")));
}

LUMI_TEST(TestFolderEntries)
#include "TestFolderEntries.moc"
