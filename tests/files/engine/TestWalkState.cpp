// SPDX-License-Identifier: MIT
// The static state of walks.
#include "files/engine/FPVFileTree.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

#include <memory>

using lumi::test::FileFixture;
using lumi::test::list;

namespace {

/// The filter of an import.
constexpr int kCardFilter = QDir::Dirs | QDir::Files | QDir::Readable | QDir::Hidden | QDir::System;

} // namespace

class TestWalkState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stateAtTheStartOfTheProcess();
    void patternsAreSplit_data();
    void patternsAreSplit();
    void aCancelBeforeTheFirstEntryLeavesAnEmptyTree();
    void aCancelInTheMiddleKeepsWhatIsThere();
    void anEarlierCancelHasNoEffect();
    void clearTakesBackTheSumsOnly();
    void aSecondWalkStartsAnew();
    void patternsAndFilterStayForLaterWalks();
    void deletingATreeKeepsTheState();
    void theSumWrapsInThirtyTwoBits();

private:
    std::unique_ptr<FileFixture> m_files;
};

void TestWalkState::init()
{
    m_files = std::make_unique<FileFixture>();
    FPVFileTree::resetState();
}

void TestWalkState::cleanup()
{
    m_files.reset();
    FPVFileTree::resetState();
}

void TestWalkState::stateAtTheStartOfTheProcess()
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

void TestWalkState::patternsAreSplit_data()
{
    lumi::test::columns<QString, QStringList>();
    QTest::newRow("semicolon and blank") << "*.jpg; *.jpeg" << list("*.jpg *.jpeg");
    QTest::newRow("only a blank") << "a b" << list("a b");
    QTest::newRow("many of both, and at the ends") << " ;;a ;; b; " << list("a b");
    QTest::newRow("one") << "*.jpg" << list("*.jpg");
    QTest::newRow("a tab does not count as a blank")
        << "a\tb" << QStringList{QStringLiteral("a\tb")};
    QTest::newRow("a comma is part of a name") << "a,b" << list("a,b");
    QTest::newRow("nothing") << "" << QStringList();
}

void TestWalkState::patternsAreSplit()
{
    const auto [wildcards, patterns] = lumi::test::row<QString, QStringList>();
    FPVFileTree::setPatterns(wildcards);
    QCOMPARE(FPVFileTree::patterns(), patterns);
}

void TestWalkState::aCancelBeforeTheFirstEntryLeavesAnEmptyTree()
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

void TestWalkState::aCancelInTheMiddleKeepsWhatIsThere()
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
    // The walk stops inside b and does not continue elsewhere.
    QCOMPARE(tree.allFiles(), list("/a/1 /a/2 /b/3"));
    QCOMPARE(tree.folders(), list("/a /b"));
    QCOMPARE(FPVFileTree::fileCount(), 3);
}

void TestWalkState::anEarlierCancelHasNoEffect()
{
    m_files->make(QStringLiteral("a.jpg"));
    FPVFileTree::setWalkCancelled(true);
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(tree.allFiles(), list("/a.jpg"));
    QVERIFY(!FPVFileTree::walkCancelled());
}

void TestWalkState::clearTakesBackTheSumsOnly()
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

void TestWalkState::aSecondWalkStartsAnew()
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

void TestWalkState::patternsAndFilterStayForLaterWalks()
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

void TestWalkState::deletingATreeKeepsTheState()
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

void TestWalkState::theSumWrapsInThirtyTwoBits()
{
    // Two sparse files of 1.5 GB.
    constexpr qint64 kSize = 1536LL * 1024 * 1024;
    for (const char *name : {"a", "b"}) {
        QFile file(m_files->path(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(kSize));
    }
    FPVFileTree tree;
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::byteCount(), int(2 * kSize - (1LL << 32)));
    QVERIFY(FPVFileTree::byteCount() < 0);
    // Only the lower 32 bits of a size above 4 GB count.
    QFile file(m_files->path(QStringLiteral("b")));
    QVERIFY(file.resize((1LL << 32) + 7));
    QVERIFY(QFile::remove(m_files->path(QStringLiteral("a"))));
    tree.walk(m_files->path(), false, nullptr);
    QCOMPARE(FPVFileTree::byteCount(), 7);
}

LUMI_TEST(TestWalkState)
#include "TestWalkState.moc"
