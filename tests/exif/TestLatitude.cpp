// SPDX-License-Identifier: MIT
#include "exif/Latitude.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::Rational;

class TestLatitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void textGivesItsNumbers();
    void refusedTextLeavesNothing();
    void values_data();
    void values();
    void refusedValuesChangeNothing();
    void formats();
    void stored_data();
    void stored();
    void storedReadsBackAsTheSameText_data();
    void storedReadsBackAsTheSameText();
};

void TestLatitude::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isValid");
    const auto row = [](const char *name, const char *text, bool isValid) {
        QTest::newRow(name) << QString::fromUtf8(text) << isValid;
    };
    row("an ordinary place", "N35.40.20.123", true);
    row("the equator", "N00.00.00.000", true);
    row("the south", "S35.40.20.123", true);
    row("the largest value", "N90.00.00.000", true);
    row("the south pole", "S90.00.00.000", true);
    row("a thousandth beyond the pole", "N90.00.00.001", false);
    row("a second beyond the pole", "N90.00.01.000", false);
    row("a minute beyond the pole", "N90.01.00.000", false);
    row("a degree beyond the pole", "N91.00.00.000", false);
    row("just below the pole", "N89.59.59.999", true);
    row("60 minutes", "N35.60.00.000", false);
    row("60 seconds", "N35.00.60.000", false);
    row("a lower-case letter", "n35.00.00.000", false);
    row("the letter of a longitude", "E35.00.00.000", false);
    row("no letter", "035.00.00.000", false);
    row("a negative number", "N-5.00.00.000", false);
    row("a signed number", "N+5.00.00.000", false);
    row("a blank for a digit", "N 5.00.00.000", false);
    row("too short a fraction", "N35.00.00.00", false);
    row("too long a fraction", "N35.00.00.0000", false);
    row("three digits of degrees", "N035.00.00.000", false);
    row("three digits of degrees in the right length", "N035.00.00.00", false);
    row("five groups", "N35.0.0.0.000", false);
    row("three groups", "N35.00.000000", false);
    row("commas", "N35,00,00,000", false);
    row("letters among the digits", "N35.00.0x.000", false);
    row("digits of another script", "N35.00.00.00\xD9\xA3", false);
    row("a line feed behind", "N35.00.00.000\n", false);
    row("a line feed for the last digit", "N35.00.00.00\n", false);
    row("nothing", "", false);
    row("a letter alone", "N", false);
}

void TestLatitude::texts()
{
    QFETCH(QString, text);
    QFETCH(bool, isValid);
    QCOMPARE(latitudeValid(text), isValid);
    Latitude value;
    QCOMPARE(value.setText(text), isValid);
    QCOMPARE(value.text(), isValid ? text : QString());
    QCOMPARE(value.rationals() != nullptr, isValid);
}

void TestLatitude::textGivesItsNumbers()
{
    Latitude value;
    QVERIFY(value.setText(QStringLiteral("S07.08.09.010")));
    QCOMPARE(value.hemisphere(), Hemisphere::South);
    QCOMPARE(value.degrees(), 7U);
    QCOMPARE(value.minutes(), 8U);
    QCOMPARE(value.seconds(), 9U);
    QCOMPARE(value.fraction(), 10U);
    QVERIFY(value.setText(QStringLiteral("N90.00.00.000")));
    QCOMPARE(value.hemisphere(), Hemisphere::North);
    QCOMPARE(value.degrees(), 90U);
    QCOMPARE(value.minutes(), 0U);
    QCOMPARE(value.seconds(), 0U);
    QCOMPARE(value.fraction(), 0U);
}

void TestLatitude::refusedTextLeavesNothing()
{
    Latitude value;
    QVERIFY(value.setText(QStringLiteral("N35.40.20.123")));
    QVERIFY(!value.setText(QStringLiteral("N35.40")));
    QVERIFY(value.text().isEmpty());
    QVERIFY(!value.rationals());
}

void TestLatitude::values_data()
{
    QTest::addColumn<quint32>("hemisphere");
    QTest::addColumn<QList<quint32>>("numbers");
    QTest::addColumn<QString>("text");
    using Numbers = QList<quint32>;
    QTest::newRow("north") << 0U << Numbers{1, 2, 3, 4} << QStringLiteral("N01.02.03.004");
    QTest::newRow("south") << 3U << Numbers{35, 40, 20, 0} << QStringLiteral("S35.40.20.000");
    QTest::newRow("the pole") << 0U << Numbers{90, 0, 0, 0} << QStringLiteral("N90.00.00.000");
    QTest::newRow("just below the pole")
        << 0U << Numbers{89, 59, 59, 999} << QStringLiteral("N89.59.59.999");
    QTest::newRow("east") << 1U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("west") << 2U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("no hemisphere") << 4U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("beyond the pole by a degree") << 0U << Numbers{91, 0, 0, 0} << QString();
    QTest::newRow("beyond the pole by a minute") << 0U << Numbers{90, 1, 0, 0} << QString();
    QTest::newRow("beyond the pole by a second") << 0U << Numbers{90, 0, 1, 0} << QString();
    QTest::newRow("beyond the pole by a fraction") << 0U << Numbers{90, 0, 0, 1} << QString();
    QTest::newRow("60 minutes") << 0U << Numbers{1, 60, 0, 0} << QString();
    QTest::newRow("60 seconds") << 0U << Numbers{1, 0, 60, 0} << QString();
    QTest::newRow("1000 thousandths") << 0U << Numbers{1, 0, 0, 1000} << QString();
    QTest::newRow("a negative number of degrees")
        << 0U << Numbers{quint32(-1), 0, 0, 0} << QString();
}

void TestLatitude::values()
{
    QFETCH(quint32, hemisphere);
    QFETCH(QList<quint32>, numbers);
    QFETCH(QString, text);
    Latitude value;
    QCOMPARE(
        value.setValues(Hemisphere(hemisphere), numbers[0], numbers[1], numbers[2], numbers[3]),
        !text.isEmpty());
    QCOMPARE(value.text(), text);
    if (!text.isEmpty()) {
        QCOMPARE(quint32(value.hemisphere()), hemisphere);
        QCOMPARE(
            (QList<quint32>{value.degrees(), value.minutes(), value.seconds(), value.fraction()}),
            numbers);
        QVERIFY(latitudeValid(text));
    }
}

void TestLatitude::refusedValuesChangeNothing()
{
    Latitude value;
    QVERIFY(value.setValues(Hemisphere::South, 1, 2, 3, 4));
    QVERIFY(!value.setValues(Hemisphere::North, 91, 0, 0, 0));
    QCOMPARE(value.text(), QStringLiteral("S01.02.03.004"));
    QCOMPARE(value.hemisphere(), Hemisphere::South);
    QCOMPARE(value.degrees(), 1U);
}

void TestLatitude::formats()
{
    const Latitude value;
    QCOMPARE(value.format(QStringLiteral("N"), 5, 6, 7, 8), QStringLiteral("N05.06.07.008"));
    QCOMPARE(value.format(QStringLiteral("North"), 123, 456, 789, 4321),
             QStringLiteral("North123.456.789.4321"));
    QCOMPARE(value.format(QString(), 0, 0, 0, 0), QStringLiteral("00.00.00.000"));
}

void TestLatitude::stored_data()
{
    QTest::addColumn<QString>("reference");
    QTest::addColumn<QList<quint32>>("words");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *reference, QList<quint32> words,
                        const char *text) {
        QTest::newRow(name) << QString::fromLatin1(reference) << words << QString::fromLatin1(text);
    };
    row("whole seconds", "N", {35, 1, 40, 1, 20, 1}, "N35.40.20.000");
    row("tenths", "S", {35, 1, 40, 1, 205, 10}, "S35.40.20.005");
    row("hundredths", "N", {35, 1, 40, 1, 3012, 100}, "N35.40.30.012");
    row("thousandths", "N", {35, 1, 40, 1, 30123, 1000}, "N35.40.30.123");
    row("the denominators of degrees and minutes are not read", "N", {35, 0, 40, 0, 20, 1},
        "N35.40.20.000");
    row("degrees in hundredths", "N", {3567, 100, 0, 1, 0, 1}, "");
    row("minutes in hundredths", "N", {35, 1, 4033, 100, 0, 1}, "");
    row("seconds in ten-thousandths", "N", {35, 1, 40, 1, 201234, 10000}, "");
    row("a small remainder of a large denominator", "N", {35, 1, 40, 1, 200123, 10000},
        "N35.40.20.123");
    row("seconds over zero", "N", {35, 1, 40, 1, 20, 0}, "");
    row("60 seconds", "N", {35, 1, 40, 1, 60, 1}, "");
    row("the pole", "N", {90, 1, 0, 1, 0, 1}, "N90.00.00.000");
    row("beyond the pole", "N", {90, 1, 0, 1, 1, 1}, "");
    row("the reference of a longitude", "E", {35, 1, 40, 1, 20, 1}, "");
    row("a lower-case reference", "n", {35, 1, 40, 1, 20, 1}, "");
    row("no reference", "", {35, 1, 40, 1, 20, 1}, "");
    row("a word for a reference", "North", {35, 1, 40, 1, 20, 1}, "");
    row("the largest words", "N", {0xFFFFFFFF, 1, 0xFFFFFFFF, 1, 0xFFFFFFFF, 1}, "");
}

void TestLatitude::stored()
{
    QFETCH(QString, reference);
    QFETCH(QList<quint32>, words);
    const Rational data[] = {{words[0], words[1]}, {words[2], words[3]}, {words[4], words[5]}};
    Latitude value;
    QVERIFY(value.setText(QStringLiteral("N01.02.03.004")));
    value.fromRationals(reference, data);
    QTEST(value.text(), "text");
}

void TestLatitude::storedReadsBackAsTheSameText_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"N35.40.20.000", "S35.40.20.005", "N35.40.20.050", "S89.59.59.999",
                             "N00.00.00.100", "S90.00.00.000"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void TestLatitude::storedReadsBackAsTheSameText()
{
    QFETCH(QString, text);
    Latitude value;
    QVERIFY(value.setText(text));
    const std::span<const Rational, 3> data(value.rationals(), 3);
    Latitude other;
    other.fromRationals(text.left(1), data);
    QCOMPARE(other.text(), text);
    QCOMPARE(other.hemisphere(), value.hemisphere());
}

LUMI_TEST(TestLatitude)
#include "TestLatitude.moc"
