// SPDX-License-Identifier: MIT
#include "platform/cards/slotHolders.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::CardSource;
using lumi::SlotHolders;

namespace {

const QList<Slot> kBoth{Slot::CF, Slot::SD};

CardSource source(const char *name, std::optional<Slot> kind = std::nullopt)
{
    return {QLatin1String(name), kind, {QLatin1String("/") + QLatin1String(name)}};
}

/// The sources in the CF and the SD slot, "-" for none.
QString shown(const SlotHolders &holders)
{
    const auto name = [&holders](Slot slot) {
        return holders.contains(slot) ? holders.value(slot).source : QStringLiteral("-");
    };
    return name(Slot::CF) + QLatin1Char(' ') + name(Slot::SD);
}

} // namespace

class TestSlotHolders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newSources_data();
    void newSources();
    void aHolderKeepsItsSlot();
    void aFolderIsKeptWhileItIsMounted();
    void onlyGivenSlotsAreFilled();
};

void TestSlotHolders::newSources_data()
{
    QTest::addColumn<QList<CardSource>>("sources");
    QTest::addColumn<QString>("result");
    const CardSource cf = source("cf", Slot::CF);
    const CardSource sd = source("sd", Slot::SD);
    const CardSource sd2 = source("sd2", Slot::SD);
    const CardSource usb = source("usb");
    QTest::newRow("nothing") << QList<CardSource>() << "- -";
    QTest::newRow("an SD card") << QList{sd} << "- sd";
    QTest::newRow("a CF card") << QList{cf} << "cf -";
    QTest::newRow("a drive of no kind") << QList{usb} << "usb -";
    QTest::newRow("a CF card goes first") << QList{usb, cf} << "cf usb";
    QTest::newRow("two SD cards") << QList{sd, sd2} << "sd2 sd";
    QTest::newRow("two SD cards and a CF card") << QList{sd, sd2, cf} << "cf sd";
    QTest::newRow("too many") << QList{usb, source("usb2"), source("usb3")} << "usb usb2";
}

void TestSlotHolders::newSources()
{
    QFETCH(QList<CardSource>, sources);
    QTEST(shown(lumi::fillSlots(kBoth, {}, sources)), "result");
}

void TestSlotHolders::aHolderKeepsItsSlot()
{
    const CardSource sd = source("sd", Slot::SD);
    const CardSource usb = source("usb");
    SlotHolders holders = lumi::fillSlots(kBoth, {}, {usb});
    holders = lumi::fillSlots(kBoth, holders, {source("cf", Slot::CF), sd, usb});
    QCOMPARE(shown(holders), QStringLiteral("usb sd"));
    holders = lumi::fillSlots(kBoth, holders, {source("cf", Slot::CF), sd});
    QCOMPARE(shown(holders), QStringLiteral("cf sd"));
    holders = lumi::fillSlots(kBoth, holders, {});
    QCOMPARE(shown(holders), QStringLiteral("- -"));
}

void TestSlotHolders::aFolderIsKeptWhileItIsMounted()
{
    CardSource sd = source("sd", Slot::SD);
    SlotHolders holders = lumi::fillSlots(kBoth, {}, {sd});
    QCOMPARE(holders.value(Slot::SD).folder, QStringLiteral("/sd"));
    sd.folders.prepend(QStringLiteral("/another partition"));
    holders = lumi::fillSlots(kBoth, holders, {sd});
    QCOMPARE(holders.value(Slot::SD).folder, QStringLiteral("/sd"));
    sd.folders.removeLast();
    holders = lumi::fillSlots(kBoth, holders, {sd});
    QCOMPARE(holders.value(Slot::SD).folder, QStringLiteral("/another partition"));
}

void TestSlotHolders::onlyGivenSlotsAreFilled()
{
    const CardSource sd = source("sd", Slot::SD);
    QCOMPARE(shown(lumi::fillSlots({Slot::CF}, {}, {sd})), QStringLiteral("sd -"));
    QCOMPARE(shown(lumi::fillSlots({}, {}, {sd})), QStringLiteral("- -"));
}

LUMI_TEST(TestSlotHolders)
#include "TestSlotHolders.moc"
