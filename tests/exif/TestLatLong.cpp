// SPDX-License-Identifier: MIT
#include "exif/gps/LatLong.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

namespace {

/// Refuses every text.
class Refusing : public LatLong
{
public:
    bool isFormat() override { return false; }
};

} // namespace

class TestLatLong : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hemispheresHaveTheirNumbers();
    void startsEmpty();
    void takesAnyTextAndLogsIt();
    void refusedTextIsCleared();
    void takesAnyValues();
    void formatsNothing();
    void fractionIsScaledByItsSize_data();
    void fractionIsScaledByItsSize();
};

void TestLatLong::hemispheresHaveTheirNumbers()
{
    QCOMPARE(int(Hemisphere::North), 0);
    QCOMPARE(int(Hemisphere::East), 1);
    QCOMPARE(int(Hemisphere::West), 2);
    QCOMPARE(int(Hemisphere::South), 3);
}

void TestLatLong::startsEmpty()
{
    const LatLong value;
    QVERIFY(value.text().isEmpty());
    QVERIFY(!value.rationals());
}

void TestLatLong::takesAnyTextAndLogsIt()
{
    LatLong value;
    QTest::ignoreMessage(QtDebugMsg, "LatLong::isFormat\r");
    QVERIFY(value.setText(QStringLiteral("anything")));
    QCOMPARE(value.text(), QStringLiteral("anything"));
}

void TestLatLong::refusedTextIsCleared()
{
    Refusing value;
    QVERIFY(!value.setText(QStringLiteral("anything")));
    QVERIFY(value.text().isEmpty());
    QVERIFY(!value.rationals());
}

void TestLatLong::takesAnyValues()
{
    LatLong value;
    QVERIFY(value.setValues(Hemisphere::West, 1000, 61, 62, 4000));
    QCOMPARE(value.hemisphere(), Hemisphere::West);
    QCOMPARE(value.degrees(), 1000U);
    QCOMPARE(value.minutes(), 61U);
    QCOMPARE(value.seconds(), 62U);
    QCOMPARE(value.fraction(), 4000U);
    QVERIFY(value.text().isEmpty());
}

void TestLatLong::formatsNothing()
{
    QVERIFY(LatLong().format(QStringLiteral("N"), 1, 2, 3, 4).isNull());
}

void TestLatLong::fractionIsScaledByItsSize_data()
{
    lumi::test::columns<quint32, quint32, quint32>();
    QTest::newRow("000 adds nothing") << 0U << 20U << 1U;
    QTest::newRow("001 adds a tenth") << 1U << 201U << 10U;
    QTest::newRow("005 adds five tenths") << 5U << 205U << 10U;
    QTest::newRow("009 is the last of the tenths") << 9U << 209U << 10U;
    QTest::newRow("010 is the first of the hundredths") << 10U << 2010U << 100U;
    QTest::newRow("050 adds fifty hundredths") << 50U << 2050U << 100U;
    QTest::newRow("099 is the last of the hundredths") << 99U << 2099U << 100U;
    QTest::newRow("100 is the first of the thousandths") << 100U << 20100U << 1000U;
    QTest::newRow("999 is the last of the thousandths") << 999U << 20999U << 1000U;
}

void TestLatLong::fractionIsScaledByItsSize()
{
    const auto [fraction, numerator, denominator] = lumi::test::row<quint32, quint32, quint32>();
    LatLong value;
    QTest::ignoreMessage(QtDebugMsg, "LatLong::isFormat\r");
    QVERIFY(value.setText(QStringLiteral("x")));
    QVERIFY(value.setValues(Hemisphere::North, 35, 40, 20, fraction));
    const lumi::Rational *rationals = value.rationals();
    QVERIFY(rationals);
    QCOMPARE(rationals[0], (lumi::Rational{35, 1}));
    QCOMPARE(rationals[1], (lumi::Rational{40, 1}));
    QCOMPARE(rationals[2], (lumi::Rational{numerator, denominator}));
}

LUMI_TEST(TestLatLong)
#include "TestLatLong.moc"
