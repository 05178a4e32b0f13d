// SPDX-License-Identifier: MIT
#include "platform/cards/SlotLinks.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <memory>

using lumi::SlotLinks;

namespace {

QString target(Slot slot)
{
    return QFile::symLinkTarget(SlotLinks::path(slot));
}

} // namespace

class TestSlotLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void allSlotsAreEmptyAtFirst();
    void aLinkLeadsToACardAndBack();
    void linksOfAnEarlierStartAreReplaced();
    void eachHomeHasItsOwn();
    void aFolderThatWasDeletedIsMadeAgain();

private:
    QTemporaryDir m_folder;
};

void TestSlotLinks::initTestCase()
{
    // The application's own agents start now and see slots that don't follow the desktop.
    lumi::test::FakeMachine::install();
    QCoreApplication::processEvents();
    Machine::install(nullptr);
}

void TestSlotLinks::allSlotsAreEmptyAtFirst()
{
    const SlotLinks links;
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        QVERIFY(QFileInfo(SlotLinks::path(slot)).isSymLink());
        QVERIFY(QFileInfo::exists(SlotLinks::path(slot) + QStringLiteral("/NotAvailable")));
    }
    QVERIFY(SlotLinks::path(Slot::CF) != SlotLinks::path(Slot::SD));
}

void TestSlotLinks::aLinkLeadsToACardAndBack()
{
    SlotLinks links;
    const QString empty = target(Slot::CF);
    links.lead(Slot::CF, m_folder.path());
    QCOMPARE(target(Slot::CF), m_folder.path());
    QCOMPARE(target(Slot::SD), empty);
    links.lead(Slot::CF, QStringLiteral("/no/such/folder"));
    QVERIFY(!QFileInfo::exists(SlotLinks::path(Slot::CF)));
    links.lead(Slot::CF, QString());
    QCOMPARE(target(Slot::CF), empty);
}

void TestSlotLinks::linksOfAnEarlierStartAreReplaced()
{
    const QString cf = SlotLinks::path(Slot::CF);
    SlotLinks().lead(Slot::CF, m_folder.path());
    QCOMPARE(target(Slot::CF), m_folder.path());
    const SlotLinks links;
    QVERIFY(QFileInfo::exists(cf + QStringLiteral("/NotAvailable")));
    QVERIFY2(QDir(m_folder.path()).isEmpty(), "no marker is written onto a card");
}

void TestSlotLinks::eachHomeHasItsOwn()
{
    const QByteArray home = qgetenv("HOME");
    const QString one = SlotLinks::path(Slot::CF);
    QCOMPARE(SlotLinks::path(Slot::CF), one);
    qputenv("HOME", "/tmp");
    QVERIFY(SlotLinks::path(Slot::CF) != one);
    qputenv("HOME", home);
}

void TestSlotLinks::aFolderThatWasDeletedIsMadeAgain()
{
    SlotLinks links;
    QVERIFY(QDir(QFileInfo(SlotLinks::path(Slot::CF)).path()).removeRecursively());
    links.lead(Slot::CF, QString());
    QVERIFY(QFileInfo::exists(SlotLinks::path(Slot::CF) + QStringLiteral("/NotAvailable")));
}

LUMI_TEST(TestSlotLinks)
#include "TestSlotLinks.moc"
