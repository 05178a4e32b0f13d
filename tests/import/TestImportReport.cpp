// SPDX-License-Identifier: MIT
#include "import/importReport.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>
#include <QTextDocument>

using lumi::ImportKind;

Q_DECLARE_METATYPE(lumi::ImportKind)

namespace {

QString oneBlock(const QString &path, ImportKind kind)
{
    QString report;
    lumi::appendErrorBlock(&report, path, kind);
    return report;
}

} // namespace

class TestImportReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindHasItsWord_data();
    void everyKindHasItsWord();
    void kindsHaveTheirNumbers();
    void blocksAreRuledOff();
    void namesAreShownAsTheyAre_data();
    void namesAreShownAsTheyAre();
    void theReportIsNeverCut();
};

void TestImportReport::everyKindHasItsWord_data()
{
    lumi::test::columns<ImportKind, QString>();
    QTest::newRow("done") << ImportKind::Done << QString();
    QTest::newRow("cancelled") << ImportKind::Cancelled << QStringLiteral("User cancellation");
    QTest::newRow("full") << ImportKind::MemoryFull << QStringLiteral("Memory Full");
    QTest::newRow("card") << ImportKind::CardAccess << QStringLiteral("Access Error");
    QTest::newRow("access") << ImportKind::AccessFailure << QStringLiteral("Access Error");
    QTest::newRow("mismatch") << ImportKind::Mismatch << QStringLiteral("File Mismatch");
}

void TestImportReport::everyKindHasItsWord()
{
    const auto [kind, word] = lumi::test::row<ImportKind, QString>();
    QCOMPARE(lumi::failureWord(kind), word);
    // "Copy" and "Error" stand together.
    QCOMPARE(oneBlock(QStringLiteral("/card/dcim/a.jpg"), kind),
             QString(QStringLiteral("a.jpg<br>&nbsp;&nbsp;CopyError&nbsp;:&nbsp;") + word
                     + QStringLiteral("<br>")));
}

void TestImportReport::kindsHaveTheirNumbers()
{
    QCOMPARE(static_cast<int>(ImportKind::Done), 0);
    QCOMPARE(static_cast<int>(ImportKind::Cancelled), 1);
    QCOMPARE(static_cast<int>(ImportKind::MemoryFull), 2);
    QCOMPARE(static_cast<int>(ImportKind::CardAccess), 3);
    QCOMPARE(static_cast<int>(ImportKind::AccessFailure), 4);
    QCOMPARE(static_cast<int>(ImportKind::Mismatch), 5);
}

void TestImportReport::blocksAreRuledOff()
{
    const QString one = oneBlock(QStringLiteral("/c/a.jpg"), ImportKind::Mismatch);
    QString report = one;
    lumi::appendErrorBlock(&report, QStringLiteral("/c/b.jpg"), ImportKind::AccessFailure);
    QCOMPARE(report,
             QString(one
                     + QStringLiteral("<hr>b.jpg<br>&nbsp;&nbsp;CopyError&nbsp;:&nbsp;"
                                      "Access Error<br>")));
}

void TestImportReport::namesAreShownAsTheyAre_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("tags") << QStringLiteral("<b>bold<br>.jpg");
    QTest::newRow("an image") << QStringLiteral("<img src=x>.jpg");
    QTest::newRow("entities") << QStringLiteral("a&amp;b & \"c\".jpg");
    QTest::newRow("blanks in a row") << QStringLiteral("a  b   c.jpg");
    QTest::newRow("a blank at the beginning") << QStringLiteral(" a.jpg");
    QTest::newRow("blanks at the beginning") << QStringLiteral("   a.jpg");
    QTest::newRow("other scripts") << QString::fromUtf8("写真 Ä.jpg");
}

void TestImportReport::namesAreShownAsTheyAre()
{
    QFETCH(QString, name);
    QTextDocument document;
    QString report = oneBlock(QStringLiteral("/card/before.jpg"), ImportKind::Mismatch);
    lumi::appendErrorBlock(&report, QStringLiteral("/card/") + name, ImportKind::Mismatch);
    document.setHtml(report);
    const QStringList lines
        = document.toPlainText().replace(QChar::Nbsp, QLatin1Char(' ')).split(QLatin1Char('\n'));
    QVERIFY2(lines.contains(name), qPrintable(document.toPlainText()));
}

void TestImportReport::theReportIsNeverCut()
{
    QString report;
    for (int i = 0; i < 3000; ++i) {
        lumi::appendErrorBlock(&report, QString::asprintf("/c/IMG_%04d.jpg", i),
                               ImportKind::Mismatch);
    }
    QCOMPARE(report.count(QStringLiteral("File Mismatch")), qsizetype(3000));
    QCOMPARE(report.count(QStringLiteral("<hr>")), qsizetype(2999));
}

LUMI_TEST(TestImportReport)
#include "TestImportReport.moc"
