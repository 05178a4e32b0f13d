// SPDX-License-Identifier: MIT
#include "exif/gps/Longitude.h"
#include "tests/exif/coordinateChecks.h"
#include "tests/support/TestMain.h"

namespace {

const lumi::test::CoordinateKind &kind()
{
    static const lumi::test::CoordinateKind kKind = {QStringLiteral("E"),
                                                     QStringLiteral("W"),
                                                     QStringLiteral("N"),
                                                     Hemisphere::East,
                                                     Hemisphere::West,
                                                     Hemisphere::North,
                                                     139U,
                                                     180U};
    return kKind;
}

} // namespace

class TestLongitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void texts_data() { lumi::test::addCoordinateTexts(kind()); }

    void texts() { lumi::test::checkCoordinateText<Longitude>(longitudeValid); }

    void textGivesItsNumbers();

    void values_data() { lumi::test::addCoordinateValues(kind()); }

    void values() { lumi::test::checkCoordinateValues<Longitude>(longitudeValid); }

    void refusedValuesChangeNothing() { lumi::test::checkRefusedValues<Longitude>(kind()); }

    void formats();

    void stored_data() { lumi::test::addStoredCoordinates(kind()); }

    void stored() { lumi::test::checkStoredCoordinate<Longitude>(kind()); }

    void storedReadsBackAsTheSameText_data() { lumi::test::addLastingCoordinates(kind()); }

    void storedReadsBackAsTheSameText() { lumi::test::checkLastingCoordinate<Longitude>(); }
};

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

void TestLongitude::formats()
{
    const Longitude value;
    QCOMPARE(value.format(QStringLiteral("E"), 5, 6, 7, 8), QStringLiteral("E005.06.07.008"));
    QCOMPARE(value.format(QStringLiteral("West"), 1234, 456, 789, 4321),
             QStringLiteral("West1234.456.789.4321"));
}

LUMI_TEST(TestLongitude)
#include "TestLongitude.moc"
