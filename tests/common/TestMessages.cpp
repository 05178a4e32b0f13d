// SPDX-License-Identifier: MIT
#include "app/common/messages.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <limits>

#include <sys/wait.h>
#include <unistd.h>

namespace {

// Read before main(): the table must not depend on the order of initialisation.
const QString kAskedBeforeMain = msg(lumi::MsgLumiVault);

struct ListedRow
{
    int id;
    QString text;
};

/// The list of all texts: a number, a colon, and the text in quotation marks with "\n" escaped.
QList<ListedRow> listedRows()
{
    QFile file(QStringLiteral(LUMI_CATALOGUE));
    QList<ListedRow> rows;
    if (!file.open(QIODevice::ReadOnly)) {
        return rows;
    }
    while (!file.atEnd()) {
        QByteArray line = file.readLine();
        line.chop(1);
        const qsizetype first = line.indexOf('"');
        const qsizetype last = line.lastIndexOf('"');
        QByteArray text = line.mid(first + 1, last - first - 1);
        text.replace("\\n", "\n");
        rows.append({line.left(line.indexOf(':')).toInt(), QString::fromUtf8(text)});
    }
    return rows;
}

} // namespace

class TestMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowIsInTheList();
    void textIsTheListedOne_data();
    void textIsTheListedOne();
    void textsAreThereBeforeMain();
    void copiesAreTheCallersOwn();
    void numberOutsideTheTable_data();
    void numberOutsideTheTable();
};

void TestMessages::everyRowIsInTheList()
{
    const QList<ListedRow> rows = listedRows();
    QCOMPARE(rows.size(), qsizetype(lumi::kMessageCount));
    QCOMPARE(lumi::kMessageCount, 281);
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows.at(i).id, i);
    }
}

void TestMessages::textIsTheListedOne_data()
{
    lumi::test::columns<int, QString>();
    const QList<ListedRow> rows = listedRows();
    for (const ListedRow &row : rows) {
        QTest::addRow("row %d reads as listed", row.id) << row.id << row.text;
    }
}

void TestMessages::textIsTheListedOne()
{
    const auto [id, text] = lumi::test::row<int, QString>();
    QCOMPARE(msg(id), text);
    QVERIFY(!msg(id).isNull());
}

void TestMessages::textsAreThereBeforeMain()
{
    QCOMPARE(kAskedBeforeMain, QStringLiteral("Lumi Vault"));
}

void TestMessages::copiesAreTheCallersOwn()
{
    QString text = msg(lumi::MsgWorking);
    text[0] = QLatin1Char('X');
    text += QLatin1Char('!');
    QCOMPARE(msg(lumi::MsgWorking), QStringLiteral("Working..."));
    // A caller may change the temporary, too.
    msg(lumi::MsgWorking) += QLatin1Char('!');
    QCOMPARE(msg(lumi::MsgWorking), QStringLiteral("Working..."));
}

void TestMessages::numberOutsideTheTable_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("one below the first") << -1;
    QTest::newRow("one above the last") << 281;
    QTest::newRow("the lowest number") << std::numeric_limits<int>::min();
    QTest::newRow("the highest number") << std::numeric_limits<int>::max();
}

void TestMessages::numberOutsideTheTable()
{
    QFETCH(int, id);
    QCOMPARE(lumi::messageBytes(id), nullptr);
    // A process of its own, because a debug build stops there.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        close(STDERR_FILENO);
        std::signal(SIGABRT, SIG_DFL);
        _exit(msg(id).isNull() ? 0 : 1);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
#ifdef QT_NO_DEBUG
    QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 0);
#else
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
#endif
}

LUMI_TEST(TestMessages)
#include "TestMessages.moc"
