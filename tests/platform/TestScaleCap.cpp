// SPDX-License-Identifier: MIT
#include "platform/screen/scaleCap.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestScaleCap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePanelFitsTheScreen_data();
    void thePanelFitsTheScreen();
};

void TestScaleCap::thePanelFitsTheScreen_data()
{
    lumi::test::columns<QSize, double, double>();
    // 0: the factor stays.
    QTest::newRow("a small screen without a factor") << QSize(640, 480) << 1.0 << 0.0;
    QTest::newRow("a small screen, text of 144 DPI") << QSize(427, 320) << 1.5 << 1.0;
    QTest::newRow("a dense screen with room") << QSize(640, 480) << 2.0 << 0.0;
    QTest::newRow("a dense screen without room") << QSize(400, 400) << 2.0 << 1.25;
    QTest::newRow("an upright screen, factor 2") << QSize(240, 320) << 2.0 << 1.0;
    QTest::newRow("an upright screen without a factor") << QSize(480, 640) << 1.0 << 0.0;
    QTest::newRow("full HD, factor 3") << QSize(640, 360) << 3.0 << 2.25;
}

void TestScaleCap::thePanelFitsTheScreen()
{
    const auto [logical, ratio, capped] = lumi::test::row<QSize, double, double>();
    QCOMPARE(lumi::cappedScale(logical, ratio).value_or(0), capped);
}

LUMI_TEST(TestScaleCap)
#include "TestScaleCap.moc"
