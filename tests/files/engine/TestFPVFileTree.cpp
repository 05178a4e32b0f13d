// SPDX-License-Identifier: MIT
// The results of walks.
#include "files/engine/FPVFileTree.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <climits>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFixture;
using lumi::test::list;

namespace {

/// The filter of an import.
constexpr int kCardFilter = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

} // namespace

class TestFPVFileTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void patternsChooseFiles_data();
    void patternsChooseFiles();
    void twoPatternsCountAFileOnce();
    void aTreeIsWalkedInCaseBlindOrder();
    void everyFolderComesBeforeWhatItHolds();
    void flatStaysInTheFolder();
    void anEmptyFolderIsListed();
    void aPrefixMakesPathsAbsolute();
    void aMissingRootIsAnEmptyTree();
    void aSlashAtTheEndOfTheRoot();
    void linksToFoldersAreNeverFollowed_data();
    void linksToFoldersAreNeverFollowed();
    void aLinkToAFileCountsWithItsTargetsSize();
    void pipesAndDanglingLinksArePassedOver();
    void theFilterChoosesEntries_data();
    void theFilterChoosesEntries();
    void theOrderIsThatOfTheToolkit();
    void namesOfAllScripts();
    void aDeepTreeEndsWithThePath();

private:
    std::unique_ptr<FileFixture> m_files;
};

void TestFPVFileTree::init()
{
    m_files = std::make_unique<FileFixture>();
    FPVFileTree::resetState();
}

void TestFPVFileTree::cleanup()
{
    m_files.reset();
    FPVFileTree::resetState();
}

void TestFPVFileTree::patternsChooseFiles_data()
{
    lumi::test::columns<QString, QString, bool>();
    QTest::newRow("the star matches everything") << "*"
                                                 << "notes" << true;
    QTest::newRow("the extension") << "*.jpg"
                                   << "a.jpg" << true;
    QTest::newRow("in capitals") << "*.jpg"
                                 << "A.JPG" << true;
    QTest::newRow("a pattern in capitals") << "*.JPG"
                                           << "a.jpg" << true;
    QTest::newRow("the whole name") << "*.jpg"
                                    << "a.jpg.txt" << false;
    QTest::newRow("from its beginning") << "b*"
                                        << "ab" << false;
    QTest::newRow("one character") << "?.jpg"
                                   << "a.jpg" << true;
    QTest::newRow("only one") << "?.jpg"
                              << "ab.jpg" << false;
    QTest::newRow("a set") << "img[0-9].jpg"
                           << "IMG7.JPG" << true;
    QTest::newRow("not in the set") << "img[0-9].jpg"
                                    << "imgx.jpg" << false;
    QTest::newRow("a dot is a dot") << "a.jpg"
                                    << "axjpg" << false;
    QTest::newRow("characters of regular expressions") << "a+(1).jpg"
                                                       << "a+(1).jpg" << true;
    QTest::newRow("a line feed at the end") << "*.jpg"
                                            << "a.jpg\n"
                                            << false;
    QTest::newRow("the second pattern") << "*.png *.jpg"
                                        << "a.jpg" << true;
    QTest::newRow("no pattern at all") << ""
                                       << "a.jpg" << false;
}

void TestFPVFileTree::patternsChooseFiles()
{
    const auto [wildcards, name, taken] = lumi::test::row<QString, QString, bool>();
    m_files->make(name, "1234");
    FPVFileTree::setPatterns(wildcards);
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    QCOMPARE(tree.files(), taken ? QStringList{name} : QStringList());
    QCOMPARE(FPVFileTree::fileCount(), taken ? 1 : 0);
    QCOMPARE(FPVFileTree::byteCount(), taken ? 4 : 0);
}

void TestFPVFileTree::twoPatternsCountAFileOnce()
{
    m_files->make(QStringLiteral("a.jpg"), "12345");
    FPVFileTree::setPatterns(QStringLiteral("*.jpg; a*"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.files(), list("a.jpg"));
    QCOMPARE(FPVFileTree::fileCount(), 1);
    QCOMPARE(FPVFileTree::byteCount(), 5);
}

void TestFPVFileTree::aTreeIsWalkedInCaseBlindOrder()
{
    for (const char *name : {"b.jpg", "A.jpg", "a.txt", "C.jpg", "Beta/x", "alpha/y", "gamma/z"}) {
        m_files->make(QLatin1String(name), "12");
    }
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.files(), list("A.jpg a.txt b.jpg C.jpg"));
    QCOMPARE(tree.folders(), list("/alpha /Beta /gamma"));
    QCOMPARE(tree.relPath(), QString());
    QCOMPARE(tree.children().size(), std::size_t(3));
    QCOMPARE(tree.children().front().relPath(), QStringLiteral("/alpha"));
    QCOMPARE(tree.children().front().files(), list("y"));
    QCOMPARE(FPVFileTree::fileCount(), 7);
    QCOMPARE(FPVFileTree::byteCount(), 14);
}

void TestFPVFileTree::everyFolderComesBeforeWhatItHolds()
{
    for (const char *name : {"top", "a/one", "a/b/two", "a/b/c/three", "a/z/four", "d/five"}) {
        m_files->make(QLatin1String(name));
    }
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.folders(), list("/a /a/b /a/b/c /a/z /d"));
    QCOMPARE(tree.allFiles(), list("/top /a/one /a/b/two /a/b/c/three /a/z/four /d/five"));
}

void TestFPVFileTree::flatStaysInTheFolder()
{
    m_files->make(QStringLiteral("a.jpg"));
    m_files->make(QStringLiteral("sub/b.jpg"));
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), true, nullptr));
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    QVERIFY(tree.folders().isEmpty());
    QCOMPARE(FPVFileTree::fileCount(), 1);
}

void TestFPVFileTree::anEmptyFolderIsListed()
{
    m_files->makeFolder(QStringLiteral("empty/deeper"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.folders(), list("/empty /empty/deeper"));
    QVERIFY(tree.allFiles().isEmpty());
    QVERIFY(tree.children().front().files().isEmpty());
}

void TestFPVFileTree::aPrefixMakesPathsAbsolute()
{
    m_files->make(QStringLiteral("d/a.jpg"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::rootPrefix(), m_files->path());
    QCOMPARE(QString(FPVFileTree::rootPrefix() + tree.allFiles().constFirst()),
             m_files->path(QStringLiteral("d/a.jpg")));
}

void TestFPVFileTree::aMissingRootIsAnEmptyTree()
{
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(QStringLiteral("none")), false, nullptr));
    QVERIFY(tree.children().empty() && tree.files().isEmpty());
    QCOMPARE(FPVFileTree::rootPrefix(), m_files->path(QStringLiteral("none")));
    // A file is not a folder.
    QVERIFY(tree.walk(m_files->make(QStringLiteral("file")), false, nullptr));
    QVERIFY(tree.allFiles().isEmpty());
}

void TestFPVFileTree::aSlashAtTheEndOfTheRoot()
{
    m_files->make(QStringLiteral("d/a.jpg"));
    FPVFileTree tree;
    const QString root = m_files->path() + QLatin1Char('/');
    tree.walk(root, false, nullptr);
    QCOMPARE(tree.allFiles(), list("/d/a.jpg"));
}

void TestFPVFileTree::linksToFoldersAreNeverFollowed_data()
{
    QTest::addColumn<int>("filter");
    QTest::newRow("the state at the start of the process") << 0x1B;
    QTest::newRow("as an import leaves it") << 0x313;
}

void TestFPVFileTree::linksToFoldersAreNeverFollowed()
{
    QFETCH(int, filter);
    m_files->make(QStringLiteral("real/a.jpg"));
    m_files->makeLink(QStringLiteral("real/loop"), QStringLiteral(".."));
    m_files->makeLink(QStringLiteral("other"), m_files->path(QStringLiteral("real")));
    FPVFileTree::setDirFilter(filter);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.folders(), list("/real"));
    QCOMPARE(tree.allFiles(), list("/real/a.jpg"));
}

void TestFPVFileTree::aLinkToAFileCountsWithItsTargetsSize()
{
    m_files->make(QStringLiteral("a.jpg"), QByteArray(1000, 'x'));
    m_files->makeFolder(QStringLiteral("in"));
    m_files->makeLink(QStringLiteral("in/l.jpg"), m_files->path(QStringLiteral("a.jpg")));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    FPVFileTree::setDirFilter(kCardFilter);
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg /in/l.jpg"));
    QCOMPARE(FPVFileTree::byteCount(), 2000);
}

void TestFPVFileTree::pipesAndDanglingLinksArePassedOver()
{
    m_files->make(QStringLiteral("a.jpg"), "1");
    m_files->makePipe(QStringLiteral("b.jpg"));
    m_files->makeLink(QStringLiteral("c.jpg"), QStringLiteral("gone"));
    m_files->makeLink(QStringLiteral("d.jpg"), QStringLiteral("/dev/null"));
    m_files->makeLink(QStringLiteral("e.jpg"), QStringLiteral("e.jpg"));
    FPVFileTree::setDirFilter(kCardFilter);
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    QVERIFY(tree.folders().isEmpty());
    QCOMPARE(FPVFileTree::fileCount(), 1);
}

void TestFPVFileTree::theFilterChoosesEntries_data()
{
    lumi::test::columns<int, QStringList>();
    QTest::newRow("the state at the start of the process") << 0x1B << list("/a /d/b");
    QTest::newRow("as an import leaves it") << 0x313 << list("/.h /a /d/.h /d/b");
    QTest::newRow("no folders") << int(QDir::Files) << list("/a");
    QTest::newRow("no files") << int(QDir::Dirs) << QStringList();
}

void TestFPVFileTree::theFilterChoosesEntries()
{
    const auto [filter, found] = lumi::test::row<int, QStringList>();
    for (const char *name : {"a", ".h", "d/b", "d/.h"}) {
        m_files->make(QLatin1String(name));
    }
    FPVFileTree::setDirFilter(filter);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.allFiles(), found);
}

void TestFPVFileTree::theOrderIsThatOfTheToolkit()
{
    for (const char *name : {"a", "B", "_c", "-d", "Ärger", "ärmel", "zoo", "Z00", ".hidden", "a b",
                             "a.b", "10", "9", "写真", "ß", "SS", "%41"}) {
        m_files->make(QString::fromUtf8(name) + QStringLiteral(".jpg"));
        m_files->makeFolder(QString::fromUtf8(name) + QStringLiteral("/folder"));
    }
    FPVFileTree::setDirFilter(kCardFilter);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    const QDir folder(m_files->path());
    const auto hidden = QDir::Hidden | QDir::NoDotAndDotDot;
    const auto order = QDir::Name | QDir::IgnoreCase;
    QCOMPARE(tree.files(), folder.entryList(QDir::Files | hidden, order));
    QStringList folders;
    for (const FPVFileTree &child : tree.children()) {
        folders.append(child.relPath().mid(1));
    }
    QCOMPARE(folders, folder.entryList(QDir::Dirs | hidden, order));
}

void TestFPVFileTree::namesOfAllScripts()
{
    const QStringList names{QStringLiteral("two words.jpg"), QStringLiteral("äöü.jpg"),
                            QStringLiteral("写真.jpg"), QStringLiteral("%1 100%.jpg")};
    for (const QString &name : names) {
        m_files->make(QString(QStringLiteral("été 夏/") + name), "1");
    }
    FPVFileTree::setPatterns(QStringLiteral("*.JPG"));
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.folders(), QStringList{QStringLiteral("/été 夏")});
    QCOMPARE(FPVFileTree::fileCount(), 4);
    const QStringList found = tree.allFiles();
    for (const QString &name : names) {
        QVERIFY(found.contains(QString(QStringLiteral("/été 夏/") + name)));
    }
    for (const QString &file : found) {
        QVERIFY(QFile::exists(QString(m_files->path() + file)));
    }
}

/// Folders can be nested deeper than the longest path. Entries below that are not found.
void TestFPVFileTree::aDeepTreeEndsWithThePath()
{
    constexpr int kDepth = 2500;
    const int start = ::open(QFile::encodeName(m_files->path()).constData(), O_RDONLY);
    QVERIFY(start >= 0);
    int folder = start;
    for (int depth = 0; depth < kDepth; ++depth) {
        QCOMPARE(::mkdirat(folder, "d", 0777), 0);
        const int next = ::openat(folder, "d", O_RDONLY);
        QVERIFY(next >= 0);
        ::close(folder);
        folder = next;
    }
    ::close(folder);
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    const QStringList folders = tree.folders();
    const qsizetype room = PATH_MAX - m_files->path().size();
    QVERIFY(folders.size() > room / 2 - 4);
    QVERIFY(folders.size() <= room / 2 + 1);
    // QTemporaryDir can't remove such a folder either.
    QCOMPARE(::system(qPrintable(QStringLiteral("rm -rf '%1/d'").arg(m_files->path()))), 0);
}

LUMI_TEST(TestFPVFileTree)
#include "TestFPVFileTree.moc"
