// SPDX-License-Identifier: MIT
// Each way a paste may fail and the words for it, those too that no user can bring about.
#include "app/common/messages.h"
#include "files/pasteMessage.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestPasteMessage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void failuresHaveTheirWords_data();
    void failuresHaveTheirWords();
};

void TestPasteMessage::failuresHaveTheirWords_data()
{
    lumi::test::columns<int, QString>();
    const QString failed = QStringLiteral("It failed in sticking.");
    const QString full = QStringLiteral("Free some memory and try again");
    QTest::newRow("a source is missing") << -1 << failed;
    QTest::newRow("a source can't be opened") << 1 << failed;
    QTest::newRow("a target can't be made") << 2 << failed;
    QTest::newRow("too little room") << 3 << full;
    QTest::newRow("no buffer") << 4 << failed;
    QTest::newRow("a cut source can't be removed") << 5 << failed;
    QTest::newRow("a copy isn't whole") << 6 << failed;
}

void TestPasteMessage::failuresHaveTheirWords()
{
    const auto [result, text] = lumi::test::row<int, QString>();
    QCOMPARE(msg(lumi::pasteMessage(lumi::PasteResult(result))), text);
}

LUMI_TEST(TestPasteMessage)
#include "TestPasteMessage.moc"
