// SPDX-License-Identifier: MIT
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QKeyEvent>
#include <QTest>

Q_DECLARE_METATYPE(DeviceKey)

class TestDeviceKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knows_data();
    void knows();
};

void TestDeviceKey::knows_data()
{
    lumi::test::columns<int, DeviceKey>();
    QTest::newRow("zoom in, device") << 0x2010 << DeviceKey::ZoomIn;
    QTest::newRow("zoom in, today") << 0x010000F6 << DeviceKey::ZoomIn;
    QTest::newRow("zoom out, device") << 0x200F << DeviceKey::ZoomOut;
    QTest::newRow("zoom out, today") << 0x010000F7 << DeviceKey::ZoomOut;
    QTest::newRow("fit, device") << 0x1046 << DeviceKey::Fit;
    QTest::newRow("fit, today") << 0x01000046 << DeviceKey::Fit;
    QTest::newRow("menu, device") << 0x103A << DeviceKey::Menu;
    QTest::newRow("menu, F11") << 0x0100003A << DeviceKey::Menu;
    QTest::newRow("menu, today") << 0x01000055 << DeviceKey::Menu;
    QTest::newRow("mail, device") << 0x201A << DeviceKey::Mail;
    QTest::newRow("mail, today") << 0x010000A0 << DeviceKey::Mail;
    QTest::newRow("stop, device") << -1 << DeviceKey::Stop;
    QTest::newRow("stop, today's cancel") << 0x01020001 << DeviceKey::Stop;
    QTest::newRow("stop, today's back") << 0x01000061 << DeviceKey::Stop;
    QTest::newRow("old Delete is a letter now") << 0x1007 << DeviceKey::None;
    QTest::newRow("Escape") << 0x01000000 << DeviceKey::None;
    QTest::newRow("plus") << 0x2B << DeviceKey::None;
    QTest::newRow("nothing") << 0 << DeviceKey::None;
}

void TestDeviceKey::knows()
{
    const auto [code, key] = lumi::test::row<int, DeviceKey>();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        const QKeyEvent event(type, code, Qt::NoModifier);
        QCOMPARE(deviceKey(&event), key);
    }
}

LUMI_TEST(TestDeviceKey)
#include "TestDeviceKey.moc"
