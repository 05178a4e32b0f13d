// SPDX-License-Identifier: MIT
#include "exif/ui/infoRow.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestInfoRow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rows_data();
    void rows();
};

void TestInfoRow::rows_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("one line") << QStringLiteral("F2.8")
                              << QStringLiteral("<tr><td></td><td>F2.8</td></tr>");
    QTest::newRow("a line for every piece")
        << QStringLiteral("Flash\nAuto\n")
        << QStringLiteral("<tr><td></td><td>Flash</td></tr><tr><td></td><td>Auto</td></tr>");
    QTest::newRow("empty pieces are left out")
        << QStringLiteral("\n\na\n\nb")
        << QStringLiteral("<tr><td></td><td>a</td></tr><tr><td></td><td>b</td></tr>");
    QTest::newRow("no value") << QString() << QString();
    QTest::newRow("blanks don't break")
        << QStringLiteral("a b  c")
        << QStringLiteral("<tr><td></td><td>a&nbsp;b&nbsp;&nbsp;c</td></tr>");
    QTest::newRow("brackets are shown, blanks first")
        << QStringLiteral("< a>") << QStringLiteral("<tr><td></td><td>&lt;&nbsp;a&gt;</td></tr>");
    QTest::newRow("an entity goes through untouched")
        << QStringLiteral("8&nbsp;x&nbsp;6&")
        << QStringLiteral("<tr><td></td><td>8&nbsp;x&nbsp;6&</td></tr>");
}

void TestInfoRow::rows()
{
    const auto [value, cells] = lumi::test::row<QString, QString>();
    const QString html = lumi::infoRow(QStringLiteral("La bel"), value, QLatin1Char('\n'));
    QCOMPARE(html,
             QString(QStringLiteral("<b>La bel</b><br><table border=\"0\">") + cells
                     + QStringLiteral("</table>")));
}

LUMI_TEST(TestInfoRow)
#include "TestInfoRow.moc"
