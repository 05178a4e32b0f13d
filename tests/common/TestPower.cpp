// SPDX-License-Identifier: MIT
#include "app/common/power.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDataStream>
#include <QTest>

Q_DECLARE_METATYPE(PowerStatus)

class TestPower : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void screenSaver_data();
    void screenSaver();
    void battery_data();
    void battery();
};

void TestPower::screenSaver_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QList<int>>("values");
    QTest::newRow("mode 0 sends two messages") << 0 << QList<int>{0, 300};
    QTest::newRow("mode 1 sends one") << 1 << QList<int>{200};
    QTest::newRow("any other mode sends the same one") << -7 << QList<int>{200};
}

void TestPower::screenSaver()
{
    QFETCH(int, mode);
    QFETCH(QList<int>, values);
    QList<int> heard;
    const QCopChannel channel("QPE/System");
    connect(&channel, &QCopChannel::received, this,
            [&heard](const QCString &message, const QByteArray &data) {
                QCOMPARE(message, QCString("setScreenSaverMode(int)"));
                QCOMPARE(data.size(), qsizetype(4));
                int value = -1;
                QDataStream(data) >> value;
                heard.append(value);
            });
    setScreenSaver(mode);
    QTRY_COMPARE(heard, values);
    QTest::qWait(20);
    QCOMPARE(heard, values);
}

void TestPower::battery_data()
{
    lumi::test::columns<PowerStatus, int, bool>();
    const auto battery = [](int percent) {
        return PowerStatus(PowerStatus::Offline, percent);
    };
    QTest::newRow("exactly 10 percent are not more than 10") << battery(10) << 10 << false;
    QTest::newRow("11 percent are more than 10") << battery(11) << 10 << true;
    QTest::newRow("exactly 30 percent are not more than 30") << battery(30) << 30 << false;
    QTest::newRow("31 percent are more than 30") << battery(31) << 30 << true;
    QTest::newRow("a full battery") << battery(100) << 30 << true;
    QTest::newRow("an empty battery on the mains")
        << PowerStatus(PowerStatus::Online, 0) << 30 << true;
    QTest::newRow("a backup battery is not the mains")
        << PowerStatus(PowerStatus::Backup, 30) << 30 << false;
}

void TestPower::battery()
{
    const auto [status, percent, enough] = lumi::test::row<PowerStatus, int, bool>();
    lumi::test::FakeMachine::install()->powerStatus = status;
    QCOMPARE(batteryEnough(percent), enough);
    Machine::install(nullptr);
}

LUMI_TEST(TestPower)
#include "TestPower.moc"
