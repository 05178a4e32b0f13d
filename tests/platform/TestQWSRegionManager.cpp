// SPDX-License-Identifier: MIT
#include "platform/screen/QWSRegionManager.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QTest>

using lumi::test::BareWindow;
using lumi::test::FakeMachine;

namespace {

QRegion regionOf(const QWidget &widget)
{
    return qt_fbdpy->regionManager()->region(&widget);
}

} // namespace

class TestQWSRegionManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void childInTheMiddle();
    void agreesWithThePainter();
    void emptyUntilShown();
    void emptyWhenMinimised();
    void emptyInAHiddenParent();
    void otherWindowsAreNotTakenOff();
    void cutByItsParent();
    void siblingsOverItAreTakenOff();
    void insideTheDesktop();
};

void TestQWSRegionManager::childInTheMiddle()
{
    BareWindow top(QRect(37, 21, 200, 150));
    QWidget child(&top);
    child.setGeometry(11, 7, 101, 83);
    QVERIFY(top.showNow());
    QCOMPARE(regionOf(child), QRegion(369, 48, 83, 101));
}

void TestQWSRegionManager::agreesWithThePainter()
{
    BareWindow top(QRect(-60, -40, 300, 200));
    QVERIFY(top.showNow());
    const QDirectPainter painter(&top);
    QCOMPARE(regionOf(top),
             QRegion(painter.xOffset(), painter.yOffset(), painter.width(), painter.height()));
}

void TestQWSRegionManager::emptyUntilShown()
{
    BareWindow top(QRect(37, 21, 200, 150));
    QVERIFY(regionOf(top).isEmpty());
    QVERIFY(top.showNow());
    QVERIFY(!regionOf(top).isEmpty());
    top.hide();
    QVERIFY(regionOf(top).isEmpty());
}

void TestQWSRegionManager::emptyWhenMinimised()
{
    BareWindow top(QRect(37, 21, 200, 150));
    QVERIFY(top.showNow());
    top.showMinimized();
    QTRY_VERIFY(regionOf(top).isEmpty());
    top.showNormal();
    QTRY_COMPARE(regionOf(top), QRegion(309, 37, 150, 200));
}

void TestQWSRegionManager::emptyInAHiddenParent()
{
    BareWindow top(QRect(37, 21, 200, 150));
    QWidget parent(&top);
    QWidget child(&parent);
    parent.setGeometry(0, 0, 100, 100);
    QVERIFY(top.showNow());
    QVERIFY(!regionOf(child).isEmpty());
    parent.hide();
    QVERIFY(regionOf(child).isEmpty());
}

void TestQWSRegionManager::otherWindowsAreNotTakenOff()
{
    BareWindow top(QRect(0, 0, 640, 480));
    QVERIFY(top.showNow());
    BareWindow box(QRect(100, 100, 200, 100));
    QVERIFY(box.showNow());
    QCOMPARE(regionOf(top), QRegion(0, 0, 480, 640));
}

void TestQWSRegionManager::cutByItsParent()
{
    BareWindow top(QRect(100, 100, 200, 150));
    QWidget child(&top);
    child.setGeometry(150, -20, 300, 100);
    QVERIFY(top.showNow());
    // On the desktop: columns 250 to 299, rows 100 to 179.
    QCOMPARE(regionOf(child), QRegion(300, 250, 80, 50));
}

void TestQWSRegionManager::siblingsOverItAreTakenOff()
{
    BareWindow top(QRect(100, 100, 200, 150));
    QWidget below(&top);
    below.setGeometry(0, 0, 200, 150);
    QWidget above(&top);
    above.setGeometry(0, 0, 200, 50);
    above.setAutoFillBackground(true);
    QVERIFY(top.showNow());
    QCOMPARE(regionOf(below), QRegion(230, 100, 100, 200));
}

void TestQWSRegionManager::insideTheDesktop()
{
    BareWindow top(QRect(0, 0, 900, 700));
    QVERIFY(top.showNow());
    QCOMPARE(regionOf(top), QRegion(0, 0, 480, 640));
}

LUMI_TEST(TestQWSRegionManager)
#include "TestQWSRegionManager.moc"
