// SPDX-License-Identifier: MIT
// A process that is killed in the middle of an import: in the search, between two folders, in
// the middle of a file.
#include "tests/import/cardTree.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using lumi::test::Tree;

namespace {

constexpr int kPatienceMs = 20000;
constexpr int kFiles = 40;
/// Rounds of events from one death to the next one: no multiple of a file's.
constexpr int kStride = 5;

} // namespace

class TestImportKilled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyFileUnderItsNameIsWhole();
    void foldersAreMadeOneByOne();

private:
    struct Death
    {
        bool killed = false;
        bool inTheSearch = false;
        QString made; ///< name of the new folder
        Tree tree;    ///< what is in it
    };

    Death importAndDie(const char *what, int after);
    void nextOneArrives();

    std::unique_ptr<QTemporaryDir> m_home;
    QString m_card;
    QString m_store;
    Tree m_before;
    Tree m_whole;
    int m_runs = 0;
};

void TestImportKilled::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_card = m_home->filePath(QStringLiteral("card"));
    m_store = m_home->filePath(QStringLiteral("Documents/Photo_Files"));
    QVERIFY(QDir().mkpath(m_store));
    for (int i = 0; i < kFiles; ++i) {
        lumi::test::writeBytes(m_card + QString::asprintf("/dcim/%d/IMG_%03d.jpg", i % 3, i),
                               1000 + i * 2000);
    }
    m_before = lumi::test::stateOf(m_card);
    m_whole = lumi::test::importableTree(m_card);
    m_runs = 0;
}

void TestImportKilled::cleanup()
{
    m_home.reset();
}

TestImportKilled::Death TestImportKilled::importAndDie(const char *what, int after)
{
    Death death;
    death.made = QString::asprintf("trip %d", m_runs++);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_home->path());
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(LUMI_VICTIM),
                  {m_card, death.made, QLatin1String(what), QString::number(after)});
    if (!process.waitForFinished(kPatienceMs)) {
        qFatal("the import doesn't end");
    }
    death.killed = process.exitStatus() == QProcess::CrashExit;
    if (!death.killed && process.exitCode() != 0) {
        qFatal("the import ended with %d", process.exitCode());
    }
    death.inTheSearch = !process.readAllStandardOutput().contains("found");
    death.tree = lumi::test::treeOf(m_store + QLatin1Char('/') + death.made);
    return death;
}

/// The next import doesn't mind what lies there.
void TestImportKilled::nextOneArrives()
{
    const Death last = importAndDie("events", -1);
    QVERIFY(!last.killed);
    QCOMPARE(last.tree, m_whole);
}

void TestImportKilled::everyFileUnderItsNameIsWhole()
{
    int inTheSearch = 0;
    int inTheMiddle = 0;
    Death death;
    for (int after = 0; after == 0 || death.killed; after += kStride) {
        death = importAndDie("events", after);
        QCOMPARE(lumi::test::stateOf(m_card), m_before);
        QCOMPARE(QDir(m_store).exists(death.made), !death.inTheSearch);
        inTheSearch += death.inTheSearch ? 1 : 0;
        for (auto it = death.tree.cbegin(); it != death.tree.cend(); ++it) {
            QCOMPARE(it.value(), m_whole.value(it.key()));
        }
        inTheMiddle += !death.tree.isEmpty() && death.tree.size() < m_whole.size() ? 1 : 0;
    }
    QCOMPARE(death.tree, m_whole);
    QVERIFY(inTheSearch >= 5);
    QVERIFY(inTheMiddle >= 5);
    nextOneArrives();
}

void TestImportKilled::foldersAreMadeOneByOne()
{
    const QStringList order{QString(), QStringLiteral("dcim"), QStringLiteral("dcim/0"),
                            QStringLiteral("dcim/1"), QStringLiteral("dcim/2")};
    for (int after = 0; after < order.size(); ++after) {
        const Death death = importAndDie("folders", after);
        QVERIFY(death.killed);
        QVERIFY(!death.inTheSearch);
        QCOMPARE(QDir(m_store).exists(death.made), after > 0);
        QCOMPARE(death.tree.keys(), order.mid(0, after).mid(1));
        QCOMPARE(lumi::test::stateOf(m_card), m_before);
    }
    // All of them stand before the first file comes.
    const Death death = importAndDie("folders", static_cast<int>(order.size()));
    QVERIFY(!death.killed);
    QCOMPARE(death.tree, m_whole);
    nextOneArrives();
}

LUMI_TEST(TestImportKilled)
#include "TestImportKilled.moc"
