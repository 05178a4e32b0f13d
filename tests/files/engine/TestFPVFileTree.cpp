// SPDX-License-Identifier: MIT
#include "files/engine/FPVFileTree.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/files/engine/IoFaults.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <climits>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFixture;

namespace {

/// What a form that imports cards looks at.
constexpr int kCardFilter = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

QStringList list(const char *names)
{
    return QString::fromUtf8(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class TestFPVFileTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stateStartsAsGiven();
    void patternsAreSplit_data();
    void patternsAreSplit();
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
    void unreadableFoldersAreSkipped();
    void namesOfAllScripts();
    void aDeepTreeEndsWithThePath();
    void aCancelBeforeTheFirstEntryLeavesAnEmptyTree();
    void aCancelInTheMiddleKeepsWhatIsThere();
    void anEarlierCancelIsLost();
    void clearTakesBackTheSumsOnly();
    void aSecondWalkStartsAnew();
    void patternsAndFilterStayForLaterWalks();
    void aTreeThatGoesTouchesNoState();
    void theSumWrapsInThirtyTwoBits();
    void aCopyOfATreeIsATree();

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

void TestFPVFileTree::stateStartsAsGiven()
{
    QVERIFY(FPVFileTree::rootPrefix().isNull());
    QCOMPARE(FPVFileTree::patterns(), list("*"));
    QVERIFY(!FPVFileTree::walkCancelled());
    QCOMPARE(FPVFileTree::fileCount(), 0);
    QCOMPARE(FPVFileTree::byteCount(), 0);
    QCOMPARE(FPVFileTree::dirFilter(), 0x1B);
    QCOMPARE(kCardFilter, 0x313);
    const FPVFileTree tree;
    QVERIFY(tree.relPath().isNull());
    QVERIFY(tree.children().empty() && tree.files().isEmpty());
}

void TestFPVFileTree::patternsAreSplit_data()
{
    QTest::addColumn<QString>("spec");
    QTest::addColumn<QStringList>("patterns");
    QTest::newRow("semicolon and blank") << "*.jpg; *.jpeg" << list("*.jpg *.jpeg");
    QTest::newRow("only a blank") << "a b" << list("a b");
    QTest::newRow("many of both, and at the ends") << " ;;a ;; b; " << list("a b");
    QTest::newRow("one") << "*.jpg" << list("*.jpg");
    QTest::newRow("a tab is no blank") << "a\tb" << QStringList{QStringLiteral("a\tb")};
    QTest::newRow("a comma is part of a name") << "a,b" << list("a,b");
    QTest::newRow("nothing") << "" << QStringList();
}

void TestFPVFileTree::patternsAreSplit()
{
    QFETCH(QString, spec);
    FPVFileTree::setPatterns(spec);
    QTEST(FPVFileTree::patterns(), "patterns");
}

void TestFPVFileTree::patternsChooseFiles_data()
{
    QTest::addColumn<QString>("spec");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("taken");
    QTest::newRow("the star takes all") << "*"
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
    QTest::newRow("not two") << "?.jpg"
                             << "ab.jpg" << false;
    QTest::newRow("a set") << "img[0-9].jpg"
                           << "IMG7.JPG" << true;
    QTest::newRow("not in the set") << "img[0-9].jpg"
                                    << "imgx.jpg" << false;
    QTest::newRow("a dot is a dot") << "a.jpg"
                                    << "axjpg" << false;
    QTest::newRow("signs of regular expressions") << "a+(1).jpg"
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
    QFETCH(QString, spec);
    QFETCH(QString, name);
    QFETCH(bool, taken);
    m_files->make(name, "1234");
    FPVFileTree::setPatterns(spec);
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
    // A file is no folder either.
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
    QTest::newRow("as the process starts") << 0x1B;
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
    m_files->make(QStringLiteral("out/a.jpg"), QByteArray(1000, 'x'));
    m_files->makeFolder(QStringLiteral("in"));
    m_files->makeLink(QStringLiteral("in/l.jpg"), m_files->path(QStringLiteral("out/a.jpg")));
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("in")), false, nullptr);
    QVERIFY(tree.allFiles().isEmpty());
    FPVFileTree::setDirFilter(kCardFilter);
    tree.walk(m_files->path(QStringLiteral("in")), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/l.jpg"));
    QCOMPARE(FPVFileTree::byteCount(), 1000);
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
    QTest::addColumn<int>("filter");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("as the process starts") << 0x1B << list("/a /d/b");
    QTest::newRow("as an import leaves it") << 0x313 << list("/.h /a /d/.h /d/b");
    QTest::newRow("no folders") << int(QDir::Files) << list("/a");
    QTest::newRow("no files") << int(QDir::Dirs) << QStringList();
}

void TestFPVFileTree::theFilterChoosesEntries()
{
    QFETCH(int, filter);
    for (const char *name : {"a", ".h", "d/b", "d/.h"}) {
        m_files->make(QLatin1String(name));
    }
    FPVFileTree::setDirFilter(filter);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QTEST(tree.allFiles(), "found");
}

void TestFPVFileTree::unreadableFoldersAreSkipped()
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
    QFile::setPermissions(m_files->path(QStringLiteral("closed")), QFile::Permissions(0x7000));
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

/// Folders can lie deeper than a path can say; what can't be named is not found.
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
    // Nor can a temporary folder be removed that way.
    QCOMPARE(::system(qPrintable(QStringLiteral("rm -rf '%1/d'").arg(m_files->path()))), 0);
}

void TestFPVFileTree::aCancelBeforeTheFirstEntryLeavesAnEmptyTree()
{
    m_files->make(QStringLiteral("a.jpg"));
    m_files->make(QStringLiteral("d/b.jpg"));
    QTimer::singleShot(0, this, [] {
        FPVFileTree::setWalkCancelled(true);
    });
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    QVERIFY(tree.children().empty() && tree.files().isEmpty());
    QVERIFY(FPVFileTree::walkCancelled());
    QCOMPARE(FPVFileTree::fileCount(), 0);
}

void TestFPVFileTree::aCancelInTheMiddleKeepsWhatIsThere()
{
    for (const char *name : {"a/1", "a/2", "b/3", "b/4", "c/5", "d"}) {
        m_files->make(QLatin1String(name));
    }
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [] {
        FPVFileTree::setWalkCancelled(FPVFileTree::fileCount() >= 3);
    });
    timer.start(0);
    FPVFileTree tree;
    QVERIFY(tree.walk(m_files->path(), false, nullptr));
    // Stopped inside b, and then nowhere goes on.
    QCOMPARE(tree.allFiles(), list("/a/1 /a/2 /b/3"));
    QCOMPARE(tree.folders(), list("/a /b"));
    QCOMPARE(FPVFileTree::fileCount(), 3);
}

void TestFPVFileTree::anEarlierCancelIsLost()
{
    m_files->make(QStringLiteral("a.jpg"));
    FPVFileTree::setWalkCancelled(true);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    QVERIFY(!FPVFileTree::walkCancelled());
}

void TestFPVFileTree::clearTakesBackTheSumsOnly()
{
    m_files->make(QStringLiteral("d/a.jpg"), "123");
    FPVFileTree::setPatterns(QStringLiteral("*.jpg"));
    FPVFileTree::setDirFilter(kCardFilter);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::byteCount(), 3);
    FPVFileTree::setWalkCancelled(true);
    tree.clear();
    QVERIFY(tree.children().empty() && tree.files().isEmpty());
    QVERIFY(!FPVFileTree::walkCancelled());
    QCOMPARE(FPVFileTree::fileCount(), 0);
    QCOMPARE(FPVFileTree::byteCount(), 0);
    QCOMPARE(FPVFileTree::patterns(), list("*.jpg"));
    QCOMPARE(FPVFileTree::rootPrefix(), m_files->path());
    QCOMPARE(FPVFileTree::dirFilter(), kCardFilter);
}

void TestFPVFileTree::aSecondWalkStartsAnew()
{
    m_files->make(QStringLiteral("one/d/a.jpg"), "123");
    m_files->make(QStringLiteral("two/b.jpg"), "12");
    FPVFileTree tree;
    tree.walk(m_files->path(QStringLiteral("one")), false, nullptr);
    tree.walk(m_files->path(QStringLiteral("two")), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/b.jpg"));
    QVERIFY(tree.folders().isEmpty());
    QCOMPARE(FPVFileTree::rootPrefix(), m_files->path(QStringLiteral("two")));
    QCOMPARE(FPVFileTree::fileCount(), 1);
    QCOMPARE(FPVFileTree::byteCount(), 2);
}

void TestFPVFileTree::patternsAndFilterStayForLaterWalks()
{
    m_files->make(QStringLiteral("a.jpg"));
    m_files->make(QStringLiteral(".b.jpg"));
    m_files->make(QStringLiteral("c.txt"));
    FPVFileTree::setPatterns(QStringLiteral("*.jpg"));
    FPVFileTree::setDirFilter(kCardFilter);
    for (int i = 0; i < 2; ++i) {
        FPVFileTree tree;
        tree.walk(m_files->path(), false, nullptr);
        QCOMPARE(tree.allFiles(), list("/.b.jpg /a.jpg"));
    }
}

void TestFPVFileTree::aTreeThatGoesTouchesNoState()
{
    m_files->make(QStringLiteral("d/a.jpg"), "123");
    {
        FPVFileTree tree;
        tree.walk(m_files->path(), false, nullptr);
        FPVFileTree::setWalkCancelled(true);
    }
    QVERIFY(FPVFileTree::walkCancelled());
    QCOMPARE(FPVFileTree::fileCount(), 1);
    QCOMPARE(FPVFileTree::byteCount(), 3);
}

void TestFPVFileTree::theSumWrapsInThirtyTwoBits()
{
    // Two files of 1.5 GB that take no room.
    constexpr qint64 kSize = 1536LL * 1024 * 1024;
    for (const char *name : {"a", "b"}) {
        QFile file(m_files->path(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(kSize));
    }
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::byteCount(), int(2 * kSize - (1LL << 32)));
    QVERIFY(FPVFileTree::byteCount() < 0);
    // A file beyond 4 GB counts with its lower bits.
    QFile file(m_files->path(QStringLiteral("b")));
    QVERIFY(file.resize((1LL << 32) + 7));
    QVERIFY(QFile::remove(m_files->path(QStringLiteral("a"))));
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::byteCount(), 7);
}

void TestFPVFileTree::aCopyOfATreeIsATree()
{
    m_files->make(QStringLiteral("d/a.jpg"));
    auto tree = std::make_unique<FPVFileTree>();
    tree->walk(m_files->path(), false, nullptr);
    const FPVFileTree copy = *tree;
    tree.reset();
    QCOMPARE(copy.allFiles(), list("/d/a.jpg"));
}

LUMI_TEST(TestFPVFileTree)
#include "TestFPVFileTree.moc"
