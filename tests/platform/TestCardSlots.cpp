// SPDX-License-Identifier: MIT
#include "platform/cards/CardSlots.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

using lumi::CardSlots;

class TestCardSlots : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_machine = lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void slotOfAPath();
    void markerMeansAnEmptySlot();
    void missingMountPointIsAnEmptySlot();
    void generationChangesWithTheCard();
    void generationStaysWithTheCard();
    void replacedFolderIsAnotherCard();

private:
    lumi::test::FakeMachine *m_machine = nullptr;
};

void TestCardSlots::slotOfAPath()
{
    QCOMPARE(CardSlots::mountPoint(Slot::CF), m_machine->cf);
    QCOMPARE(CardSlots::slotOf(m_machine->cf), std::optional(Slot::CF));
    QCOMPARE(CardSlots::slotOf(m_machine->sd + QStringLiteral("/dcim/a.jpg")),
             std::optional(Slot::SD));
    QVERIFY(!CardSlots::slotOf(m_machine->sd + QStringLiteral("2")).has_value());
    QVERIFY(!CardSlots::slotOf(QStringLiteral("/anywhere")).has_value());
    QVERIFY(!CardSlots::slotOf(QString()).has_value());
}

void TestCardSlots::markerMeansAnEmptySlot()
{
    for (const Slot slot : CardSlots::kAll) {
        QVERIFY(!CardSlots::isPresent(slot));
        m_machine->insertCard(slot);
        QVERIFY(CardSlots::isPresent(slot));
        m_machine->removeCard(slot);
        QVERIFY(!CardSlots::isPresent(slot));
    }
}

void TestCardSlots::missingMountPointIsAnEmptySlot()
{
    m_machine->insertCard(Slot::CF);
    QVERIFY(QDir().rmdir(m_machine->cf));
    QCOMPARE(CardSlots::slotOf(m_machine->cf), std::optional(Slot::CF));
    QVERIFY(!CardSlots::isPresent(Slot::CF));
    m_machine->cf.clear();
    QVERIFY(!CardSlots::isPresent(Slot::CF));
}

void TestCardSlots::generationChangesWithTheCard()
{
    const unsigned empty = CardSlots::generation(Slot::SD);
    m_machine->insertCard(Slot::SD);
    const unsigned first = CardSlots::generation(Slot::SD);
    QVERIFY(first != empty);
    // Only look() notices the removal.
    m_machine->removeCard(Slot::SD);
    CardSlots::look();
    m_machine->insertCard(Slot::SD);
    const unsigned second = CardSlots::generation(Slot::SD);
    QVERIFY(second != first && second != empty);
}

void TestCardSlots::generationStaysWithTheCard()
{
    m_machine->insertCard(Slot::SD);
    const unsigned sd = CardSlots::generation(Slot::SD);
    QVERIFY(QDir(m_machine->sd).mkdir(QStringLiteral("dcim")));
    m_machine->insertCard(Slot::CF);
    CardSlots::look();
    CardSlots::look();
    QCOMPARE(CardSlots::generation(Slot::SD), sd);
}

/// A folder in place of a mount, as the demo has it.
void TestCardSlots::replacedFolderIsAnotherCard()
{
    m_machine->insertCard(Slot::SD);
    const unsigned before = CardSlots::generation(Slot::SD);
    QVERIFY(QFile::rename(m_machine->sd, m_machine->folder.filePath(QStringLiteral("old"))));
    QVERIFY(QDir().mkpath(m_machine->sd));
    QVERIFY(CardSlots::generation(Slot::SD) != before);
}

LUMI_TEST(TestCardSlots)
#include "TestCardSlots.moc"
