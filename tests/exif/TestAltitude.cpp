// SPDX-License-Identifier: MIT
#include "exif/gps/Altitude.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

using lumi::Rational;

class TestAltitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void textGivesItsNumbers_data();
    void textGivesItsNumbers();
    void startsEmpty();
    void stored_data();
    void stored();
};

void TestAltitude::texts_data()
{
    lumi::test::columns<QString, bool>();
    const auto row = [](const char *name, const char *text, bool isValid) {
        QTest::newRow(name) << QString::fromUtf8(text) << isValid;
    };
    row("a whole number", "38", true);
    row("one digit", "5", true);
    row("a number with zeros", "100", true);
    row("one place behind the dot", "38.5", true);
    row("two places behind the dot", "38.25", true);
    row("three places behind the dot", "38.255", false);
    row("a dot and nothing behind it", "38.", true);
    row("below the sea", "-38.25", true);
    row("half a metre", "0.5", true);
    row("half a metre without the zero", ".5", true);
    row("below the sea by half a metre", "-0.5", true);
    row("below the sea without the zero", "-.5", true);
    row("nothing, with its dot", "0.0", true);
    row("nothing", "0", false);
    row("nothing below the sea", "-0", false);
    row("a zero and a dot alone", "0.", false);
    row("two zeros in front", "00.5", false);
    row("a zero in front of a number", "038", false);
    row("nine characters", "123456789", true);
    row("ten characters", "1234567890", false);
    row("nine characters with dot and sign", "-12345.67", true);
    row("ten characters with dot and sign", "-123456.78", false);
    row("a plus sign", "+38", false);
    row("two signs", "--38", false);
    row("a sign alone", "-", false);
    row("a dot alone", ".", false);
    row("two dots", "3.8.5", false);
    row("a comma", "38,5", false);
    row("a unit", "38m", false);
    row("a blank behind", "38 ", false);
    row("a line feed behind", "38\n", false);
    row("digits of another script", "\xD9\xA3", false);
    row("no text", "", false);
}

void TestAltitude::texts()
{
    const auto [text, isValid] = lumi::test::row<QString, bool>();
    QCOMPARE(altitudeValid(text), isValid);
    Altitude value;
    QCOMPARE(value.setText(text), isValid);
    QCOMPARE(value.text(), isValid ? text : QString());
    QCOMPARE(value.rational() != nullptr, isValid);
}

void TestAltitude::textGivesItsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("aboveSeaLevel");
    QTest::addColumn<quint32>("whole");
    QTest::addColumn<quint32>("fraction");
    QTest::addColumn<quint32>("numerator");
    QTest::addColumn<quint32>("denominator");
    const auto row = [](const char *text, bool above, quint32 whole, quint32 fraction,
                        quint32 numerator, quint32 denominator) {
        QTest::newRow(text) << QString::fromLatin1(text) << above << whole << fraction << numerator
                            << denominator;
    };
    row("10", true, 10, 0, 10, 1);
    row("10.", true, 10, 0, 10, 1);
    row("10.0", true, 10, 0, 10, 1);
    row("1.5", true, 1, 5, 15, 10);
    row("1.05", true, 1, 5, 15, 10);
    row("1.09", true, 1, 9, 19, 10);
    row("1.10", true, 1, 10, 110, 100);
    row("1.50", true, 1, 50, 150, 100);
    row("38.25", true, 38, 25, 3825, 100);
    row("-38.25", false, 38, 25, 3825, 100);
    row("-10", false, 10, 0, 10, 1);
    row("0.5", true, 0, 5, 5, 10);
    row("-.5", false, 0, 5, 5, 10);
    row(".99", true, 0, 99, 99, 100);
    row("0.0", true, 0, 0, 0, 1);
    row("123456789", true, 123456789, 0, 123456789, 1);
    row("999999.99", true, 999999, 99, 99999999, 100);
}

void TestAltitude::textGivesItsNumbers()
{
    QFETCH(QString, text);
    QFETCH(quint32, numerator);
    QFETCH(quint32, denominator);
    Altitude value;
    QVERIFY(value.setText(text));
    QTEST(value.aboveSeaLevel(), "aboveSeaLevel");
    QTEST(value.whole(), "whole");
    QTEST(value.fraction(), "fraction");
    QVERIFY(value.rational());
    QCOMPARE(*value.rational(), (Rational{numerator, denominator}));
}

void TestAltitude::startsEmpty()
{
    const Altitude value;
    QVERIFY(value.text().isEmpty());
    QVERIFY(!value.rational());
}

void TestAltitude::stored_data()
{
    lumi::test::columns<bool, quint32, quint32, QString>();
    QTest::newRow("hundredths") << true << 1050U << 100U << QStringLiteral("10.50");
    QTest::newRow("whole metres get a zero") << true << 10U << 1U << QStringLiteral("10.0");
    QTest::newRow("below the sea") << false << 385U << 10U << QStringLiteral("-38.5");
    QTest::newRow("the remainder is not padded") << true << 1005U << 100U << QStringLiteral("10.5");
    QTest::newRow("the remainder is in units of the denominator")
        << true << 31U << 3U << QStringLiteral("10.1");
    QTest::newRow("sea level") << true << 0U << 1U << QStringLiteral("0.0");
    QTest::newRow("below the sea by zero metres") << false << 0U << 1U << QStringLiteral("-0.0");
    QTest::newRow("a remainder of three digits") << true << 10123U << 1000U << QString();
    QTest::newRow("a small remainder of a large denominator")
        << true << 10012U << 1000U << QStringLiteral("10.12");
    QTest::newRow("over zero") << true << 10U << 0U << QString();
    QTest::newRow("zero over zero") << false << 0U << 0U << QString();
    QTest::newRow("seven digits fit") << true << 1234567U << 1U << QStringLiteral("1234567.0");
    QTest::newRow("eight digits don't") << true << 12345678U << 1U << QString();
    QTest::newRow("the largest words")
        << true << 0xFFFFFFFFU << 0xFFFFFFFFU << QStringLiteral("1.0");
}

void TestAltitude::stored()
{
    const auto [aboveSeaLevel, numerator, denominator, text]
        = lumi::test::row<bool, quint32, quint32, QString>();
    Altitude value;
    QVERIFY(value.setText(QStringLiteral("38")));
    value.fromRational(aboveSeaLevel, {numerator, denominator});
    QCOMPARE(value.text(), text);
    if (!text.isEmpty()) {
        QCOMPARE(value.aboveSeaLevel(), aboveSeaLevel);
    }
}

LUMI_TEST(TestAltitude)
#include "TestAltitude.moc"
