// SPDX-License-Identifier: MIT
#include "app/common/messages.h"
#include "exif/text/flashText.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestFlashText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messages_data();
    void messages();
    void linesDoNotDependOnEachOther();
    void higherBitsSayNothing();
};

void TestFlashText::messages_data()
{
    lumi::test::columns<int, QList<int>>();
    const auto row = [](int bits, const QList<int> &messages) {
        QTest::addRow("0x%02X", static_cast<unsigned>(bits)) << bits << messages;
    };
    row(0x00, {231});
    row(0x01, {232});
    row(0x04, {231, 233});
    row(0x05, {232, 233});
    row(0x07, {232, 234});
    row(0x08, {231, 235});
    row(0x10, {231, 236});
    row(0x19, {232, 237});
    row(0x20, {238}); // has the same text as 231
    row(0x21, {238});
    row(0x27, {238, 234});
    row(0x41, {232, 239});
    row(0x60, {238, 239});
    row(0x7F, {238, 234, 237, 239});
}

void TestFlashText::messages()
{
    const auto [bits, expected] = lumi::test::row<int, QList<int>>();
    QList<int> found;
    QStringList lines;
    for (const lumi::MessageId message : lumi::flashMessages(bits)) {
        found.append(message);
        lines.append(msg(message));
    }
    QCOMPARE(found, expected);
    QCOMPARE(lumi::flashText(bits), lines.join(QLatin1Char('\n')));
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
