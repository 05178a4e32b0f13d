// SPDX-License-Identifier: MIT
#include "tests/platform/testFiles.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::test::FakeMachine;

class TestFakeMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { Machine::install(nullptr); }

    void startsWithEmptySlots();
    void cardsComeAndGo();
    void figuresAreWhatTheTestSays();
};

void TestFakeMachine::startsWithEmptySlots()
{
    FakeMachine::install();
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        const QString folder = Machine::instance().mountPoint(slot);
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(QFile::exists(folder + QStringLiteral("/NotAvailable")));
    }
    QVERIFY(Machine::instance().mountPoint(Slot::CF) != Machine::instance().mountPoint(Slot::SD));
}

void TestFakeMachine::cardsComeAndGo()
{
    FakeMachine *machine = FakeMachine::install();
    const QString marker = machine->cf + QStringLiteral("/NotAvailable");
    machine->insertCard(Slot::CF);
    QVERIFY(!QFile::exists(marker));
    QVERIFY(QFile::exists(machine->sd + QStringLiteral("/NotAvailable")));
    machine->removeCard(Slot::CF);
    QVERIFY(QFile::exists(marker));
}

void TestFakeMachine::figuresAreWhatTheTestSays()
{
    FakeMachine *machine = FakeMachine::install();
    machine->setMemoryKB(3);
    QVERIFY(Machine::instance().memInfo().endsWith("\nMem:  3072 0 3072 0 0 0\n"));
    machine->setFreeDiskKB(5);
    QCOMPARE(Machine::instance().disk("/x").available * Machine::instance().disk("/x").blockSize,
             5 * 1024);
    machine->diskAt = [](const QByteArray &) {
        return DiskFigures();
    };
    QVERIFY(!Machine::instance().disk("/x").ok);
    machine->hingeResult = 256;
    QCOMPARE(Machine::instance().hinge(), 256);
    QCOMPARE(machine->hingeCalls, 1);
}

LUMI_TEST(TestFakeMachine)
#include "TestFakeMachine.moc"
