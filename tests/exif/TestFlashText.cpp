// SPDX-License-Identifier: MIT
#include "exif/flashText.h"
#include "tests/support/TestMain.h"

#include <QTest>

class TestFlashText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bits_data();
    void bits();
    void linesDoNotDependOnEachOther();
    void higherBitsSayNothing();
};

void TestFlashText::bits_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("text");
    const auto row = [](int bits, const char *text) {
        QTest::addRow("0x%02X", static_cast<unsigned>(bits)) << bits << QString::fromLatin1(text);
    };
    row(0x00, "No flash");
    row(0x01, "Flash");
    row(0x02, "No flash");
    row(0x03, "Flash");
    row(0x04, "No flash\nReturn not detected");
    row(0x05, "Flash\nReturn not detected");
    row(0x07, "Flash\nReturn detected");
    row(0x08, "No flash\nManual flash");
    row(0x09, "Flash\nManual flash");
    row(0x0D, "Flash\nReturn not detected\nManual flash");
    row(0x0F, "Flash\nReturn detected\nManual flash");
    row(0x10, "No flash\nManual non-flash");
    row(0x18, "No flash\nAuto flash");
    row(0x19, "Flash\nAuto flash");
    row(0x1D, "Flash\nReturn not detected\nAuto flash");
    row(0x1F, "Flash\nReturn detected\nAuto flash");
    row(0x20, "No flash");
    row(0x21, "No flash");
    row(0x27, "No flash\nReturn detected");
    row(0x41, "Flash\nRed eye reduction");
    row(0x45, "Flash\nReturn not detected\nRed eye reduction");
    row(0x59, "Flash\nAuto flash\nRed eye reduction");
    row(0x5F, "Flash\nReturn detected\nAuto flash\nRed eye reduction");
    row(0x60, "No flash\nRed eye reduction");
    row(0x7F, "No flash\nReturn detected\nAuto flash\nRed eye reduction");
}

void TestFlashText::bits()
{
    QFETCH(int, bits);
    QTEST(lumi::flashText(bits), "text");
}

void TestFlashText::linesDoNotDependOnEachOther()
{
    for (int bits = 0; bits < 0x80; ++bits) {
        const QStringList lines = lumi::flashText(bits).split(QLatin1Char('\n'));
        const auto has = [&lines](const char *line) {
            return lines.contains(QLatin1String(line));
        };
        QCOMPARE(has("Flash"), (bits & 0x21) == 0x01);
        QCOMPARE(has("No flash"), (bits & 0x21) != 0x01);
        QCOMPARE(has("Return not detected"), (bits & 0x06) == 0x04);
        QCOMPARE(has("Return detected"), (bits & 0x06) == 0x06);
        QCOMPARE(has("Manual flash"), (bits & 0x18) == 0x08);
        QCOMPARE(has("Manual non-flash"), (bits & 0x18) == 0x10);
        QCOMPARE(has("Auto flash"), (bits & 0x18) == 0x18);
        QCOMPARE(has("Red eye reduction"), (bits & 0x40) != 0);
        QCOMPARE(lines.size(),
                 1 + ((bits & 0x04) != 0 ? 1 : 0) + ((bits & 0x18) != 0 ? 1 : 0)
                     + ((bits & 0x40) != 0 ? 1 : 0));
    }
}

void TestFlashText::higherBitsSayNothing()
{
    QCOMPARE(lumi::flashText(0x80), QStringLiteral("No flash"));
    QCOMPARE(lumi::flashText(0xFF99), QStringLiteral("Flash\nAuto flash"));
    QCOMPARE(lumi::flashText(0x0F00), QStringLiteral("No flash"));
    QCOMPARE(lumi::flashText(-1), lumi::flashText(0x7F));
}

LUMI_TEST(TestFlashText)
#include "TestFlashText.moc"
