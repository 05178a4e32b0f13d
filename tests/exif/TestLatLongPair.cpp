// SPDX-License-Identifier: MIT
#include "exif/gps/LatLongPair.h"
#include "tests/support/TestMain.h"

#include <QTest>

class TestLatLongPair : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty();
    void positions_data();
    void positions();
    void noPositions_data();
    void noPositions();
};

void TestLatLongPair::startsEmpty()
{
    const LatLongPair pair;
    QVERIFY(pair.latitude().text().isEmpty());
    QVERIFY(pair.longitude().text().isEmpty());
}

void TestLatLongPair::positions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("latitude");
    QTest::addColumn<QString>("longitude");
    const auto row
        = [](const char *name, const char *text, const char *latitude, const char *longitude) {
              QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(latitude)
                                  << QString::fromLatin1(longitude);
          };
    row("the whole form", "N35.40.20.000E139.45.30.000", "N35.40.20.000", "E139.45.30.000");
    row("south and west", "S35.40.20.001W139.45.30.002", "S35.40.20.001", "W139.45.30.002");
    row("missing groups count 0", "N35.40E139", "N35.40.00.000", "E139.00.00.000");
    row("no groups at all", "NE", "N00.00.00.000", "E000.00.00.000");
    row("short groups", "S1.2.3.4W5.6.7.8", "S01.02.03.004", "W005.06.07.008");
    row("long groups", "N0035.0040.0.0E00139.1.1.1", "N35.40.00.000", "E139.01.01.001");
    row("empty groups are passed over", "N35..40E139...45", "N35.40.00.000", "E139.45.00.000");
    row("blanks around the numbers", "N35.40.20.000 E 139", "N35.40.20.000", "E139.00.00.000");
    row("the poles", "S90W180", "S90.00.00.000", "W180.00.00.000");
    row("letters separate as well", "N35S40E139W45", "N35.40.00.000", "E139.45.00.000");
}

void TestLatLongPair::positions()
{
    QFETCH(QString, text);
    LatLongPair pair;
    QVERIFY(pair.fromText(text));
    QTEST(pair.latitude().text(), "latitude");
    QTEST(pair.longitude().text(), "longitude");
    QCOMPARE(pair.latitude().hemisphere(),
             text.startsWith(QLatin1Char('N')) ? Hemisphere::North : Hemisphere::South);
    QCOMPARE(pair.longitude().hemisphere(),
             pair.longitude().text().startsWith(QLatin1Char('E')) ? Hemisphere::East
                                                                  : Hemisphere::West);
}

void TestLatLongPair::noPositions_data()
{
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromLatin1(text);
    };
    row("nothing", "");
    row("a latitude alone", "N35.40");
    row("a longitude alone", "E139.45.30.000");
    row("the longitude first", "E139.45.30.000N35.40.20.000");
    row("no letter in front", "35.40.20.000E139.45.30.000");
    row("lower-case letters", "n35.40.20.000e139.45.30.000");
    row("a blank in front", " N35.40E139");
    row("five groups of latitude", "N35.40.20.000.1E139.45.30.000");
    row("five groups of longitude", "N35.40.20.000E139.45.30.000.1");
    row("a word in the latitude", "N35.x.20E139");
    row("a word in the longitude", "N35E139.x");
    row("a group too large for a number", "N35.99999999999E139");
    row("a negative latitude", "N-35E139");
    row("a negative minute", "N35.-1E139");
    row("a negative longitude", "N35E-139");
    row("a latitude out of range", "N91E139");
    row("a longitude out of range", "N35E181");
    row("60 minutes", "N35.60E139");
    row("1000 thousandths", "N35.0.0.1000E139");
    row("a tilde", "N35~40E139");
}

void TestLatLongPair::noPositions()
{
    QFETCH(QString, text);
    LatLongPair pair;
    QVERIFY(!pair.fromText(text));
}

LUMI_TEST(TestLatLongPair)
#include "TestLatLongPair.moc"
