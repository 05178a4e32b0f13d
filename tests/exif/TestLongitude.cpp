// SPDX-License-Identifier: MIT
#include "exif/Longitude.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::Rational;

class TestLongitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void texts_data();
    void texts();
    void textGivesItsNumbers();
    void values_data();
    void values();
    void refusedValuesChangeNothing();
    void formats();
    void stored_data();
    void stored();
    void storedReadsBackAsTheSameText_data();
    void storedReadsBackAsTheSameText();
};

void TestLongitude::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isValid");
    const auto row = [](const char *name, const char *text, bool isValid) {
        QTest::newRow(name) << QString::fromUtf8(text) << isValid;
    };
    row("an ordinary place", "E139.45.30.123", true);
    row("the meridian", "W000.00.00.000", true);
    row("the west", "W139.45.30.123", true);
    row("the largest value", "E180.00.00.000", true);
    row("the largest value in the west", "W180.00.00.000", true);
    row("a thousandth beyond", "E180.00.00.001", false);
    row("a second beyond", "E180.00.01.000", false);
    row("a minute beyond", "E180.01.00.000", false);
    row("a degree beyond", "E181.00.00.000", false);
    row("just below the largest value", "E179.59.59.999", true);
    row("60 minutes", "E139.60.00.000", false);
    row("60 seconds", "E139.00.60.000", false);
    row("a lower-case letter", "e139.00.00.000", false);
    row("the letter of a latitude", "N139.00.00.000", false);
    row("no letter", "0139.00.00.000", false);
    row("a negative number", "E-39.00.00.000", false);
    row("a signed number", "E+39.00.00.000", false);
    row("a blank for a digit", "E 39.00.00.000", false);
    row("two digits of degrees", "E39.00.00.000", false);
    row("an empty group in the right length", "E39..00.00.000", false);
    row("too short a fraction", "E139.00.00.00", false);
    row("too long a fraction", "E139.00.00.0000", false);
    row("digits of another script", "E139.00.00.00\xD9\xA3", false);
    row("a line feed behind", "E139.00.00.000\n", false);
    row("a line feed for the last digit", "E139.00.00.00\n", false);
    row("nothing", "", false);
}

void TestLongitude::texts()
{
    QFETCH(QString, text);
    QFETCH(bool, isValid);
    QCOMPARE(longitudeValid(text), isValid);
    Longitude value;
    QCOMPARE(value.setText(text), isValid);
    QCOMPARE(value.text(), isValid ? text : QString());
    QCOMPARE(value.rationals() != nullptr, isValid);
}

void TestLongitude::textGivesItsNumbers()
{
    Longitude value;
    QVERIFY(value.setText(QStringLiteral("W107.08.09.010")));
    QCOMPARE(value.hemisphere(), Hemisphere::West);
    QCOMPARE(value.degrees(), 107U);
    QCOMPARE(value.minutes(), 8U);
    QCOMPARE(value.seconds(), 9U);
    QCOMPARE(value.fraction(), 10U);
    QVERIFY(value.setText(QStringLiteral("E180.00.00.000")));
    QCOMPARE(value.hemisphere(), Hemisphere::East);
    QCOMPARE(value.degrees(), 180U);
    QCOMPARE(value.minutes(), 0U);
    QCOMPARE(value.seconds(), 0U);
    QCOMPARE(value.fraction(), 0U);
}

void TestLongitude::values_data()
{
    QTest::addColumn<quint32>("hemisphere");
    QTest::addColumn<QList<quint32>>("numbers");
    QTest::addColumn<QString>("text");
    using Numbers = QList<quint32>;
    QTest::newRow("east") << 1U << Numbers{1, 2, 3, 4} << QStringLiteral("E001.02.03.004");
    QTest::newRow("west") << 2U << Numbers{139, 45, 30, 0} << QStringLiteral("W139.45.30.000");
    QTest::newRow("the largest") << 1U << Numbers{180, 0, 0, 0} << QStringLiteral("E180.00.00.000");
    QTest::newRow("just below the largest")
        << 1U << Numbers{179, 59, 59, 999} << QStringLiteral("E179.59.59.999");
    QTest::newRow("north") << 0U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("south") << 3U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("no hemisphere") << 4U << Numbers{1, 2, 3, 4} << QString();
    QTest::newRow("beyond by a degree") << 1U << Numbers{181, 0, 0, 0} << QString();
    QTest::newRow("beyond by a minute") << 1U << Numbers{180, 1, 0, 0} << QString();
    QTest::newRow("beyond by a second") << 1U << Numbers{180, 0, 1, 0} << QString();
    QTest::newRow("beyond by a fraction") << 1U << Numbers{180, 0, 0, 1} << QString();
    QTest::newRow("60 minutes") << 1U << Numbers{1, 60, 0, 0} << QString();
    QTest::newRow("60 seconds") << 1U << Numbers{1, 0, 60, 0} << QString();
    QTest::newRow("1000 thousandths") << 1U << Numbers{1, 0, 0, 1000} << QString();
}

void TestLongitude::values()
{
    QFETCH(quint32, hemisphere);
    QFETCH(QList<quint32>, numbers);
    QFETCH(QString, text);
    Longitude value;
    QCOMPARE(
        value.setValues(Hemisphere(hemisphere), numbers[0], numbers[1], numbers[2], numbers[3]),
        !text.isEmpty());
    QCOMPARE(value.text(), text);
    if (!text.isEmpty()) {
        QCOMPARE(quint32(value.hemisphere()), hemisphere);
        QCOMPARE(
            (QList<quint32>{value.degrees(), value.minutes(), value.seconds(), value.fraction()}),
            numbers);
        QVERIFY(longitudeValid(text));
    }
}

void TestLongitude::refusedValuesChangeNothing()
{
    Longitude value;
    QVERIFY(value.setValues(Hemisphere::West, 1, 2, 3, 4));
    QVERIFY(!value.setValues(Hemisphere::East, 181, 0, 0, 0));
    QCOMPARE(value.text(), QStringLiteral("W001.02.03.004"));
    QCOMPARE(value.hemisphere(), Hemisphere::West);
    QCOMPARE(value.degrees(), 1U);
}

void TestLongitude::formats()
{
    const Longitude value;
    QCOMPARE(value.format(QStringLiteral("E"), 5, 6, 7, 8), QStringLiteral("E005.06.07.008"));
    QCOMPARE(value.format(QStringLiteral("West"), 1234, 456, 789, 4321),
             QStringLiteral("West1234.456.789.4321"));
}

void TestLongitude::stored_data()
{
    QTest::addColumn<QString>("reference");
    QTest::addColumn<QList<quint32>>("words");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *reference, QList<quint32> words,
                        const char *text) {
        QTest::newRow(name) << QString::fromLatin1(reference) << words << QString::fromLatin1(text);
    };
    row("whole seconds", "E", {139, 1, 45, 1, 30, 1}, "E139.45.30.000");
    row("one digit of degrees", "W", {9, 1, 4, 1, 3, 1}, "W009.04.03.000");
    row("tenths", "W", {139, 1, 45, 1, 305, 10}, "W139.45.30.005");
    row("the denominators of degrees and minutes are not read", "E", {139, 7, 45, 0, 30, 1},
        "E139.45.30.000");
    row("minutes in hundredths", "E", {139, 1, 4550, 100, 0, 1}, "");
    row("seconds in ten-thousandths", "E", {139, 1, 45, 1, 301234, 10000}, "");
    row("seconds over zero", "E", {139, 1, 45, 1, 30, 0}, "");
    row("the largest value", "E", {180, 1, 0, 1, 0, 1}, "E180.00.00.000");
    row("beyond the largest value", "E", {180, 1, 0, 1, 1, 1}, "");
    row("the reference of a latitude", "N", {139, 1, 45, 1, 30, 1}, "");
    row("no reference", "", {139, 1, 45, 1, 30, 1}, "");
}

void TestLongitude::stored()
{
    QFETCH(QString, reference);
    QFETCH(QList<quint32>, words);
    const Rational data[] = {{words[0], words[1]}, {words[2], words[3]}, {words[4], words[5]}};
    Longitude value;
    QVERIFY(value.setText(QStringLiteral("E001.02.03.004")));
    value.fromRationals(reference, data);
    QTEST(value.text(), "text");
}

void TestLongitude::storedReadsBackAsTheSameText_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"E139.45.30.000", "W139.45.30.005", "E139.45.30.050", "W179.59.59.999",
                             "E000.00.00.100", "W180.00.00.000"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void TestLongitude::storedReadsBackAsTheSameText()
{
    QFETCH(QString, text);
    Longitude value;
    QVERIFY(value.setText(text));
    const std::span<const Rational, 3> data(value.rationals(), 3);
    Longitude other;
    other.fromRationals(text.left(1), data);
    QCOMPARE(other.text(), text);
    QCOMPARE(other.hemisphere(), value.hemisphere());
}

LUMI_TEST(TestLongitude)
#include "TestLongitude.moc"
