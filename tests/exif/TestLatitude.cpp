// SPDX-License-Identifier: MIT
#include "exif/gps/Latitude.h"
#include "tests/exif/coordinateChecks.h"
#include "tests/support/TestMain.h"

namespace {

const lumi::test::CoordinateKind &kind()
{
    static const lumi::test::CoordinateKind kKind = {QStringLiteral("N"),
                                                     QStringLiteral("S"),
                                                     QStringLiteral("E"),
                                                     Hemisphere::North,
                                                     Hemisphere::South,
                                                     Hemisphere::East,
                                                     35U,
                                                     90U};
    return kKind;
}

} // namespace

class TestLatitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void texts_data() { lumi::test::addCoordinateTexts(kind()); }

    void texts() { lumi::test::checkCoordinateText<Latitude>(latitudeValid); }

    void textGivesItsNumbers();
    void refusedTextLeavesNothing();

    void values_data() { lumi::test::addCoordinateValues(kind()); }

    void values() { lumi::test::checkCoordinateValues<Latitude>(latitudeValid); }

    void refusedValuesChangeNothing() { lumi::test::checkRefusedValues<Latitude>(kind()); }

    void formats();

    void stored_data() { lumi::test::addStoredCoordinates(kind()); }

    void stored() { lumi::test::checkStoredCoordinate<Latitude>(kind()); }

    void storedReadsBackAsTheSameText_data() { lumi::test::addLastingCoordinates(kind()); }

    void storedReadsBackAsTheSameText() { lumi::test::checkLastingCoordinate<Latitude>(); }
};

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

void TestLatitude::formats()
{
    const Latitude value;
    QCOMPARE(value.format(QStringLiteral("N"), 5, 6, 7, 8), QStringLiteral("N05.06.07.008"));
    QCOMPARE(value.format(QStringLiteral("North"), 123, 456, 789, 4321),
             QStringLiteral("North123.456.789.4321"));
    QCOMPARE(value.format(QString(), 0, 0, 0, 0), QStringLiteral("00.00.00.000"));
}

LUMI_TEST(TestLatitude)
#include "TestLatitude.moc"
