// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "viewer/zoomSteps.h"

#include <QTest>

namespace {

constexpr QSize kScreen(640, 480);

} // namespace

class TestZoomSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsUp();
    void stepsDown();
    void fromBetweenTheSteps_data();
    void fromBetweenTheSteps();
    void fit_data();
    void fit();
    void nothingToFit_data();
    void nothingToFit();
    void base_data();
    void base();
    void effective_data();
    void effective();
};

void TestZoomSteps::stepsUp()
{
    QList<int> steps{lumi::kLeastZoom};
    while (steps.last() < lumi::kGreatestZoom) {
        steps.append(lumi::zoomStepAbove(steps.last()));
    }
    QCOMPARE(steps, QList<int>({10, 30, 50, 100, 150, 200, 300, 400, 600, 800, 1000}));
    QCOMPARE(lumi::zoomStepAbove(1000), 1000);
}

void TestZoomSteps::stepsDown()
{
    QList<int> steps{lumi::kGreatestZoom};
    while (steps.last() > lumi::kLeastZoom) {
        steps.append(lumi::zoomStepBelow(steps.last()));
    }
    QCOMPARE(steps, QList<int>({1000, 800, 600, 400, 300, 200, 150, 100, 50, 30, 10}));
    QCOMPARE(lumi::zoomStepBelow(10), 10);
}

void TestZoomSteps::fromBetweenTheSteps_data()
{
    lumi::test::columns<int, int, int>();
    QTest::newRow("a fit of 40") << 40 << 50 << 30;
    QTest::newRow("a fit of 480") << 480 << 600 << 400;
    QTest::newRow("just above the least") << 11 << 30 << 10;
    QTest::newRow("just below the greatest") << 999 << 1000 << 800;
}

void TestZoomSteps::fromBetweenTheSteps()
{
    const auto [percent, above, below] = lumi::test::row<int, int, int>();
    QCOMPARE(lumi::zoomStepAbove(percent), above);
    QCOMPARE(lumi::zoomStepBelow(percent), below);
}

void TestZoomSteps::fit_data()
{
    QTest::addColumn<QSize>("viewport");
    QTest::addColumn<QSize>("photo");
    QTest::addColumn<int>("percent");
    QTest::newRow("both sides alike") << kScreen << QSize(1600, 1200) << 40;
    QTest::newRow("smaller than the screen: the smaller side") << kScreen << QSize(100, 100) << 480;
    QTest::newRow("a panorama at the lower limit") << kScreen << QSize(20000, 100) << 10;
    QTest::newRow("a tower at the lower limit") << kScreen << QSize(100, 20000) << 10;
    QTest::newRow("one pixel at the upper limit") << kScreen << QSize(1, 1) << 1000;
    QTest::newRow("wide") << kScreen << QSize(1600, 100) << 40;
    QTest::newRow("high") << kScreen << QSize(100, 1200) << 40;
    QTest::newRow("exactly the screen") << kScreen << kScreen << 100;
    QTest::newRow("one pixel more than the screen") << kScreen << QSize(641, 480) << 99;
    QTest::newRow("a point of a viewport") << QSize(1, 1) << QSize(65500, 65500) << 10;
}

void TestZoomSteps::fit()
{
    QFETCH(QSize, viewport);
    QFETCH(QSize, photo);
    const auto percent = lumi::fitPercent(viewport, photo);
    QVERIFY(percent);
    QTEST(*percent, "percent");
}

void TestZoomSteps::nothingToFit_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("unknown photo") << kScreen << QSize(-1, -1);
    QTest::newRow("no width") << kScreen << QSize(0, 10);
    QTest::newRow("no height") << kScreen << QSize(10, 0);
    QTest::newRow("no viewport") << QSize(0, 480) << QSize(10, 10);
    QTest::newRow("viewport below nothing") << QSize(640, -1) << QSize(10, 10);
}

void TestZoomSteps::nothingToFit()
{
    const auto [viewport, photo] = lumi::test::row<QSize, QSize>();
    QVERIFY(!lumi::fitPercent(viewport, photo));
}

void TestZoomSteps::base_data()
{
    lumi::test::columns<QSize, QSize>();
    QTest::newRow("one pixel below the limit") << QSize(8388607, 1) << QSize(8388607, 1);
    QTest::newRow("at the limit") << QSize(4096, 2048) << QSize(2048, 1024);
    QTest::newRow("halved only once, however large") << QSize(12000, 9000) << QSize(6000, 4500);
    QTest::newRow("more pixels than an int holds") << QSize(65500, 65500) << QSize(32750, 32750);
    QTest::newRow("odd sides") << QSize(4001, 3001) << QSize(2000, 1500);
    QTest::newRow("unknown") << QSize(-1, -1) << QSize(-1, -1);
}

void TestZoomSteps::base()
{
    const auto [photo, expected] = lumi::test::row<QSize, QSize>();
    QCOMPARE(lumi::zoomBase(photo), expected);
}

void TestZoomSteps::effective_data()
{
    lumi::test::columns<int, QSize, QSize, int>();
    QTest::newRow("decoded whole") << 150 << QSize(1600, 1200) << QSize(1600, 1200) << 150;
    QTest::newRow("decoded at half") << 40 << QSize(1600, 1200) << QSize(800, 600) << 80;
    QTest::newRow("decoded at an eighth") << 10 << QSize(6400, 100) << QSize(800, 13) << 80;
    QTest::newRow("halved twice by the decoder")
        << 100 << QSize(6000, 4500) << QSize(3000, 2250) << 200;
    QTest::newRow("only the height differs") << 40 << QSize(1600, 1200) << QSize(1600, 600) << 40;
    QTest::newRow("never below 1") << 10 << QSize(1, 1) << QSize(100, 100) << 1;
    QTest::newRow("no percent at all") << 0 << QSize(10, 10) << QSize(10, 10) << 1;
    QTest::newRow("no raster") << 30 << QSize(10, 10) << QSize(-1, -1) << 30;
    QTest::newRow("no photo") << 30 << QSize(-1, -1) << QSize(10, 10) << 30;
}

void TestZoomSteps::effective()
{
    const auto [percent, photo, raster, expected] = lumi::test::row<int, QSize, QSize, int>();
    QCOMPARE(lumi::effectivePercent(percent, photo, raster), expected);
}

LUMI_TEST(TestZoomSteps)
#include "TestZoomSteps.moc"
