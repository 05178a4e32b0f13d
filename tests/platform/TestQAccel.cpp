// SPDX-License-Identifier: MIT
#include "platform/toolkit/QAccel.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int kDeviceKey = 0x201A;

/// A key of the device, as its window system delivers it. QTest::keyClick() supports only named
/// keys and letters.
void pressDeviceKey(QWidget *widget)
{
    QWindow *window = widget->window()->windowHandle();
    qt_handleKeyEvent(window, QEvent::KeyPress, kDeviceKey, Qt::NoModifier);
    qt_handleKeyEvent(window, QEvent::KeyRelease, kDeviceKey, Qt::NoModifier);
    QCoreApplication::processEvents();
}

} // namespace

class TestQAccel : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void hearsItsKeyWhereverTheFocusIs();
    void staysInItsWindow();
    void diesWithItsParent();
};

void TestQAccel::hearsItsKeyWhereverTheFocusIs()
{
    QWidget window;
    auto *form = new QWidget(&window);
    auto *beside = new QWidget(&window);
    beside->setFocusPolicy(Qt::StrongFocus);
    QAccel accel(kDeviceKey, form);
    const QSignalSpy heard(&accel, &QAccel::activated);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    beside->setFocus();
    pressDeviceKey(beside);
    QCOMPARE(heard.count(), 1);
    pressDeviceKey(form);
    QCOMPARE(heard.count(), 2);
    QTest::keyClick(beside, Qt::Key_M);
    QCOMPARE(heard.count(), 2);
}

void TestQAccel::staysInItsWindow()
{
    QWidget window;
    QAccel accel(kDeviceKey, &window);
    const QSignalSpy heard(&accel, &QAccel::activated);
    window.show();
    QWidget other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    pressDeviceKey(&other);
    QCOMPARE(heard.count(), 0);
}

void TestQAccel::diesWithItsParent()
{
    auto *form = new QWidget;
    const QPointer<QAccel> accel = new QAccel(kDeviceKey, form);
    delete form;
    QVERIFY(accel.isNull());
}

LUMI_TEST(TestQAccel)
#include "TestQAccel.moc"
