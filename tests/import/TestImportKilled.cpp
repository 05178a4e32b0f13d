// SPDX-License-Identifier: MIT
// A process that is killed in the middle of an import, at any moment.
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
constexpr int kFiles = 60;

} // namespace

class TestImportKilled : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anythingButTheFileInWorkIsWhole();

private:
    static std::unique_ptr<QProcess> start(const QString &home, const QString &card);
};

std::unique_ptr<QProcess> TestImportKilled::start(const QString &home, const QString &card)
{
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    process->setProcessEnvironment(environment);
    process->start(QStringLiteral(LUMI_VICTIM), {card, QStringLiteral("trip")});
    return process;
}

void TestImportKilled::anythingButTheFileInWorkIsWhole()
{
    const QTemporaryDir folder;
    const QString card = folder.filePath(QStringLiteral("card"));
    const QString store = folder.filePath(QStringLiteral("Documents/Photo_Files"));
    QVERIFY(QDir().mkpath(store));
    for (int i = 0; i < kFiles; ++i) {
        lumi::test::writeBytes(card + QString::asprintf("/dcim/%d/IMG_%03d.jpg", i % 3, i),
                               1000 + i * 2000);
    }
    const Tree before = lumi::test::stateOf(card);
    const Tree whole = lumi::test::importableTree(card);
    int runs = 0;
    int unfinished = 0;
    for (int stopAt = 0; stopAt <= kFiles; stopAt += 3) {
        const std::unique_ptr<QProcess> victim = start(folder.path(), card);
        const QByteArray line = "step " + QByteArray::number(stopAt + 1) + '\n';
        QByteArray seen;
        while (!seen.contains(line) && victim->waitForReadyRead(kPatienceMs)) {
            seen += victim->readAllStandardOutput();
        }
        QVERIFY(seen.contains(line));
        QTest::qSleep(stopAt % 2);
        victim->kill();
        QVERIFY(victim->waitForFinished(kPatienceMs));
        QCOMPARE(lumi::test::stateOf(card), before);
        const QString made
            = runs == 0 ? QStringLiteral("trip") : QString::asprintf("trip%03d", runs);
        const Tree tree = lumi::test::treeOf(store + QLatin1Char('/') + made);
        int parts = 0;
        for (auto it = tree.begin(); it != tree.end(); ++it) {
            if (it.value() != whole.value(it.key())) {
                QVERIFY(whole.value(it.key()).startsWith(it.value()));
                ++parts;
            }
        }
        QVERIFY(parts <= 1);
        unfinished += tree == whole ? 0 : 1;
        ++runs;
    }
    QVERIFY(unfinished > runs / 2); // it was killed in time
    // The next one doesn't mind what lies there.
    const std::unique_ptr<QProcess> last = start(folder.path(), card);
    QVERIFY(last->waitForFinished(kPatienceMs));
    QCOMPARE(last->exitCode(), 0);
    QCOMPARE(lumi::test::treeOf(store + QString::asprintf("/trip%03d", runs)), whole);
}

LUMI_TEST(TestImportKilled)
#include "TestImportKilled.moc"
