// SPDX-License-Identifier: MIT
#include "import/cardSlots.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

class TestCardSlots : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_machine = lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void pathsAndNames();
    void theMarkerDecides();
    void otherPlacesAreAlwaysThere();
    void aVanishedMountPointIsAnEmptySlot();

private:
    lumi::test::FakeMachine *m_machine = nullptr;
};

void TestCardSlots::pathsAndNames()
{
    QCOMPARE(lumi::cardSlotOf(m_machine->cf), std::optional(Slot::CF));
    QCOMPARE(lumi::cardSlotOf(m_machine->sd), std::optional(Slot::SD));
    QVERIFY(!lumi::cardSlotOf(m_machine->sd + QStringLiteral("/")).has_value());
    QCOMPARE(lumi::sourceName(m_machine->cf), QStringLiteral("CF Card"));
    QCOMPARE(lumi::sourceName(m_machine->sd), QStringLiteral("SD Card"));
    QCOMPARE(lumi::sourceName(QStringLiteral("/anywhere")), QStringLiteral("Photo_Files"));
}

void TestCardSlots::theMarkerDecides()
{
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        const QString path = m_machine->mountPoint(slot);
        QVERIFY(!lumi::isSourcePresent(path));
        m_machine->insertCard(slot);
        QVERIFY(lumi::isSourcePresent(path));
        m_machine->removeCard(slot);
        QVERIFY(!lumi::isSourcePresent(path));
    }
}

void TestCardSlots::otherPlacesAreAlwaysThere()
{
    QVERIFY(lumi::isSourcePresent(QStringLiteral("/no/such/folder")));
}

void TestCardSlots::aVanishedMountPointIsAnEmptySlot()
{
    Machine::install(new lumi::test::VanishedSlot);
    const QString path = QStringLiteral("/no/such/cf");
    QCOMPARE(lumi::cardSlotOf(path), std::optional(Slot::CF));
    QVERIFY(!lumi::isSourcePresent(path));
    QCOMPARE(lumi::sourceName(path), QStringLiteral("CF Card"));
}

LUMI_TEST(TestCardSlots)
#include "TestCardSlots.moc"
