// SPDX-License-Identifier: MIT
#include "platform/power/powerSupply.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QTemporaryDir>
#include <QTest>

class TestPowerSupply : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
};

void TestPowerSupply::reads_data()
{
    QTest::addColumn<QStringList>("files"); // "<supply>/<property>=<value>"
    QTest::addColumn<bool>("external");
    QTest::addColumn<int>("percent");
    const auto row = [](const char *name, const char *files, bool external, int percent) {
        QTest::newRow(name) << QString::fromLatin1(files).split(QLatin1Char(' '),
                                                                Qt::SkipEmptyParts)
                            << external << percent;
    };
    row("no folder at all", "", true, 100);
    row("on battery", "AC/type=Mains AC/online=0 B/type=Battery B/capacity=41 B/status=Discharging",
        false, 41);
    row("on mains", "AC/type=Mains AC/online=1 B/type=Battery B/capacity=41 B/status=Charging",
        true, 41);
    row("on a USB charger", "U/type=USB_C U/online=1 B/type=Battery B/capacity=5", true, 5);
    row("a USB port without power beside mains",
        "U/type=USB U/online=0 AC/type=Mains AC/online=1 B/type=Battery B/capacity=5", true, 5);
    row("no plug known, the battery gives", "B/type=Battery B/capacity=30 B/status=Discharging",
        false, 30);
    row("no plug known, the battery is full", "B/type=Battery B/capacity=100 B/status=Full", true,
        100);
    row("two batteries are weighed by what they hold",
        "A/type=Battery A/energy_now=10 A/energy_full=100 A/capacity=10 A/status=Discharging "
        "B/type=Battery B/energy_now=300 B/energy_full=300 B/capacity=100",
        false, 78);
    row("two batteries that tell no contents count alike",
        "A/type=Battery A/capacity=20 A/status=Discharging B/type=Battery B/capacity=60", false,
        40);
    row("charge in place of energy",
        "B/type=Battery B/charge_now=250 B/charge_full=1000 B/status=Discharging", false, 25);
    row("a unit without its present content gives way to the capacity",
        "B/type=Battery B/energy_full=100 B/capacity=64 B/status=Discharging", false, 64);
    row("a unit whose present content is rubbish gives way to the capacity",
        "B/type=Battery B/energy_now=? B/energy_full=100 B/capacity=64 B/status=Discharging", false,
        64);
    row("a unit whose present content is negative gives way to the capacity",
        "B/type=Battery B/energy_now=-1 B/energy_full=100 B/capacity=64 B/status=Discharging",
        false, 64);
    row("a unit without its full content gives way to the capacity",
        "B/type=Battery B/energy_now=10 B/capacity=64 B/status=Discharging", false, 64);
    row("an incomplete unit gives way to the next one",
        "B/type=Battery B/energy_full=100 B/charge_now=250 B/charge_full=1000 B/capacity=64 "
        "B/status=Discharging",
        false, 25);
    row("an empty battery is empty",
        "B/type=Battery B/energy_now=0 B/energy_full=100 B/capacity=64 B/status=Discharging", false,
        0);
    row("one of two batteries tells its content only in part",
        "A/type=Battery A/energy_full=100 A/capacity=20 A/status=Discharging "
        "B/type=Battery B/energy_now=600 B/energy_full=1000",
        false, 40);
    row("more than full is full",
        "B/type=Battery B/energy_now=110 B/energy_full=100 B/status=Discharging", false, 100);
    row("only the battery of a mouse", "M/type=Battery M/scope=Device M/capacity=3", true, 100);
    row("the battery of a mouse beside our own",
        "M/type=Battery M/scope=Device M/capacity=3 B/type=Battery B/capacity=50 "
        "B/status=Discharging",
        false, 50);
    row("an empty battery bay", "B/type=Battery B/present=0 B/capacity=0 AC/type=Mains AC/online=0",
        true, 100);
    row("capacity out of range", "B/type=Battery B/capacity=900 B/status=Discharging", false, 100);
    row("a battery that says nothing is not empty", "B/type=Battery B/status=Discharging", false,
        100);
    row("rubbish for a capacity", "B/type=Battery B/capacity=?? B/status=Discharging", false, 100);
    row("nothing for a capacity", "B/type=Battery B/capacity= B/status=Discharging", false, 100);
    row("a negative capacity", "B/type=Battery B/capacity=-1 B/status=Discharging", false, 100);
    row("a capacity of 0 is empty", "B/type=Battery B/capacity=0 B/status=Discharging", false, 0);
    row("a battery that says nothing beside one with a capacity",
        "A/type=Battery A/status=Discharging B/type=Battery B/capacity=60", false, 60);
    row("a battery that says nothing beside one with a content",
        "A/type=Battery A/status=Discharging B/type=Battery B/energy_now=300 B/energy_full=1000",
        false, 30);
    row("a battery that says nothing on mains", "AC/type=Mains AC/online=1 B/type=Battery", true,
        100);
    row("a content beyond all numbers",
        "B/type=Battery B/energy_now=9223372036854775807 B/energy_full=1 B/status=Discharging",
        false, 100);
    row("a supply without a type", "X/capacity=3 B/type=Battery B/capacity=50 B/status=Discharging",
        false, 50);
}

void TestPowerSupply::reads()
{
    QFETCH(QStringList, files);
    QFETCH(bool, external);
    QFETCH(int, percent);
    const QTemporaryDir folder;
    const QString root = folder.filePath(QStringLiteral("power"));
    for (const QString &file : std::as_const(files)) {
        const QString path = root + QLatin1Char('/') + file.section(QLatin1Char('='), 0, 0);
        const QByteArray value = file.section(QLatin1Char('='), 1).toLatin1() + '\n';
        QVERIFY(lumi::test::writeFile(path, value));
    }
    const PowerStatus status = lumi::readPowerSupply(root);
    QCOMPARE(status.acStatus(), external ? PowerStatus::Online : PowerStatus::Offline);
    QCOMPARE(status.batteryPercentRemaining(), percent);
}

LUMI_TEST(TestPowerSupply)
#include "TestPowerSupply.moc"
