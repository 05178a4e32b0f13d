// SPDX-License-Identifier: MIT
#include "app/common/labels.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFontMetrics>
#include <QLabel>
#include <QTest>

namespace {

int widthOf(const QLabel &label, const QString &text)
{
    return QFontMetrics(label.font()).horizontalAdvance(text);
}

} // namespace

class TestLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textThatFitsIsNotCut();
    void textIsCutToTheLabel_data();
    void textIsCutToTheLabel();
    void emptyTextStaysEmpty();
    void nothingFits();
    void pairsOfACharacterStayTogether();
    void markupIsShownAsItIs();
    void countOfCharacters_data();
    void countOfCharacters();
    void fontSize_data();
    void fontSize();
    void fontSizeKeepsTheRest();
};

void TestLabels::textThatFitsIsNotCut()
{
    QLabel label;
    const QString text = QStringLiteral("A photo of the sea");
    label.resize(widthOf(label, text), 20);
    elideToLabel(&label, text);
    QCOMPARE(label.text(), text);
}

void TestLabels::textIsCutToTheLabel_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one pixel too wide") << QStringLiteral("A photo of the sea");
    QTest::newRow("narrow letters at the end") << QStringLiteral("WWWWWWiiiiiiiiii");
    QTest::newRow("wide letters at the end") << QStringLiteral("iiiiiiiiiiWWWWWW");
    QTest::newRow("dots at the end") << QStringLiteral("Holiday......");
}

void TestLabels::textIsCutToTheLabel()
{
    QFETCH(QString, text);
    QLabel label;
    const QString dots = QStringLiteral("...");
    for (int width = widthOf(label, text) - 1; width > 0; width -= 7) {
        label.resize(width, 20);
        elideToLabel(&label, text);
        const QString shown = label.text();
        QVERIFY(shown.endsWith(dots));
        const qsizetype taken = shown.size() - dots.size();
        QCOMPARE(shown, QString(text.left(taken) + dots));
        // The taken characters fit together with the dots, and one more would not.
        QVERIFY(taken == 0 || widthOf(label, shown) <= width);
        QVERIFY(widthOf(label, QString(text.left(taken + 1) + dots)) > width);
    }
}

void TestLabels::emptyTextStaysEmpty()
{
    QLabel label(QStringLiteral("before"));
    label.resize(0, 0);
    elideToLabel(&label, QString());
    QCOMPARE(label.text(), QString());
    QCOMPARE(elideToChars(&label, QString(), 0), QString());
}

void TestLabels::nothingFits()
{
    QLabel label;
    label.resize(3, 20);
    elideToLabel(&label, QStringLiteral("Sea"));
    QCOMPARE(label.text(), QStringLiteral("..."));
}

void TestLabels::pairsOfACharacterStayTogether()
{
    QLabel label;
    const QString camera = QString::fromUtf8("\xF0\x9F\x93\xB7"); // two units of UTF-16
    const QString text = camera.repeated(20);
    for (int width = widthOf(label, text) - 1; width > 0; width -= 3) {
        label.resize(width, 20);
        elideToLabel(&label, text);
        QCOMPARE((label.text().size() - 3) % 2, qsizetype(0));
    }
}

void TestLabels::markupIsShownAsItIs()
{
    QLabel label;
    label.resize(1000, 20);
    elideToLabel(&label, QStringLiteral("<b>x</b>.jpg"));
    QCOMPARE(label.text(), QStringLiteral("<b>x</b>.jpg"));
    QCOMPARE(label.textFormat(), Qt::PlainText);
}

void TestLabels::countOfCharacters_data()
{
    lumi::test::columns<QString, int, bool>();
    QTest::newRow("a letter less than allowed") << QStringLiteral("XXXX") << 5 << true;
    QTest::newRow("one letter more") << QStringLiteral("XXXXXX") << 5 << false;
    QTest::newRow("narrow letters need less room") << QStringLiteral("iiiiiii") << 5 << true;
    QTest::newRow("no room at all") << QStringLiteral("X") << 0 << false;
}

void TestLabels::countOfCharacters()
{
    const auto [text, count, whole] = lumi::test::row<QString, int, bool>();
    QLabel label(QStringLiteral("untouched"));
    label.resize(1, 1); // the label's own width doesn't count
    const QString result = elideToChars(&label, text, count);
    QCOMPARE(result == text, whole);
    QCOMPARE(result.endsWith(QStringLiteral("...")), !whole);
    QCOMPARE(label.text(), QStringLiteral("untouched"));
    if (!whole && result.size() > 3) {
        QVERIFY(widthOf(label, result) <= count * widthOf(label, QStringLiteral("X")));
    }
}

void TestLabels::fontSize_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("a size is set") << 20 << 20;
    QTest::newRow("nothing is no size") << 0 << 13;
    QTest::newRow("less than nothing is no size") << -1 << 13;
}

void TestLabels::fontSize()
{
    const auto [points, expected] = lumi::test::row<int, int>();
    QLabel label;
    setFontSize(&label, 13);
    QCOMPARE(label.font().pointSize(), 13);
    setFontSize(&label, points);
    QCOMPARE(label.font().pointSize(), expected);
}

void TestLabels::fontSizeKeepsTheRest()
{
    QLabel label;
    QFont font = label.font();
    font.setBold(true);
    font.setItalic(true);
    label.setFont(font);
    setFontSize(&label, 24);
    QVERIFY(label.font().bold());
    QVERIFY(label.font().italic());
    QCOMPARE(label.font().family(), font.family());
}

LUMI_TEST(TestLabels)
#include "TestLabels.moc"
