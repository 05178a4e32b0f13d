// SPDX-License-Identifier: MIT
// The bars of the thumbnail view, which count rows and change the page once per step.
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/ViewFixture.h"

#include <QSignalSpy>
#include <QTest>

using lumi::test::ViewFixture;

class TestThumbnailBars : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_view.reset(); }

    void stepsMoveTheBarAndThePage_data();
    void stepsMoveTheBarAndThePage();
    void dragsActWhenTheSliderIsLetGo();
    void aPlaceOnTheBarIsAPage_data();
    void aPlaceOnTheBarIsAPage();
    void stepsLeaveTheValueToTheBar();
    void sidewaysEveryStepIsALine_data();
    void sidewaysEveryStepIsALine();

private:
    std::unique_ptr<ViewFixture> m_view;
};

void TestThumbnailBars::init()
{
    m_view = std::make_unique<ViewFixture>();
    m_view->fill(40);
}

void TestThumbnailBars::stepsMoveTheBarAndThePage_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("one line on") << int(QAbstractSlider::SliderSingleStepAdd) << 15;
    QTest::newRow("one line back") << int(QAbstractSlider::SliderSingleStepSub) << 9;
    QTest::newRow("one page on") << int(QAbstractSlider::SliderPageStepAdd) << 18;
    QTest::newRow("one page back") << int(QAbstractSlider::SliderPageStepSub) << 6;
    QTest::newRow("to the end") << int(QAbstractSlider::SliderToMaximum) << 36;
    QTest::newRow("to the start") << int(QAbstractSlider::SliderToMinimum) << 0;
}

void TestThumbnailBars::stepsMoveTheBarAndThePage()
{
    const auto [action, top] = lumi::test::row<int, int>();
    m_view->view.showPage(12, -1, true);
    m_view->vBar->triggerAction(static_cast<QAbstractSlider::SliderAction>(action));
    QCOMPARE(m_view->view.topIndex(), top);
    QCOMPARE(m_view->vBar->value(), top / 3 + 1);
    QVERIFY(m_view->waitForPage());
    QCOMPARE(m_view->indexes().first(), top);
}

void TestThumbnailBars::dragsActWhenTheSliderIsLetGo()
{
    QVERIFY(m_view->waitForPage());
    const QWidget *page = m_view->container();
    m_view->vBar->setSliderDown(true);
    m_view->vBar->setSliderPosition(5);
    m_view->vBar->setSliderPosition(9);
    QCOMPARE(m_view->view.topIndex(), 0);
    QCOMPARE(m_view->container(), page);
    m_view->vBar->setSliderDown(false);
    QCOMPARE(m_view->view.topIndex(), 24);
    QCOMPARE(m_view->vBar->value(), 9);
}

void TestThumbnailBars::aPlaceOnTheBarIsAPage_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("middle") << 4 << 9;
}

void TestThumbnailBars::aPlaceOnTheBarIsAPage()
{
    const auto [value, top] = lumi::test::row<int, int>();
    m_view->vBar->setValue(value);
    QCOMPARE(m_view->view.topIndex(), 0);
    m_view->view.vScroll_update();
    QCOMPARE(m_view->view.topIndex(), top);
    QCOMPARE(m_view->vBar->value(), value);
    m_view->fill(0);
    m_view->showInfo();
    m_view->hBar->setValue(3);
    m_view->view.hScroll_update();
    QCOMPARE(m_view->view.topIndex(), 14);
}

void TestThumbnailBars::stepsLeaveTheValueToTheBar()
{
    m_view->view.vScroll_update_nextLine();
    QCOMPARE(m_view->view.topIndex(), 3);
    QCOMPARE(m_view->vBar->value(), 1);
    m_view->view.vScroll_update_nextPage();
    QCOMPARE(m_view->view.topIndex(), 9);
    m_view->view.vScroll_update_prevLine();
    QCOMPARE(m_view->view.topIndex(), 6);
    m_view->view.vScroll_update_prevPage();
    QCOMPARE(m_view->view.topIndex(), 0);
    QCOMPARE(m_view->vBar->value(), 1);
}

void TestThumbnailBars::sidewaysEveryStepIsALine_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("one line on") << int(QAbstractSlider::SliderSingleStepAdd) << 21;
    QTest::newRow("one line back") << int(QAbstractSlider::SliderSingleStepSub) << 7;
    QTest::newRow("one page on") << int(QAbstractSlider::SliderPageStepAdd) << 21;
    QTest::newRow("one page back") << int(QAbstractSlider::SliderPageStepSub) << 7;
    QTest::newRow("to the end") << int(QAbstractSlider::SliderToMaximum) << 35;
}

void TestThumbnailBars::sidewaysEveryStepIsALine()
{
    const auto [action, top] = lumi::test::row<int, int>();
    m_view->showInfo();
    m_view->view.showPage(14, -1, true);
    m_view->hBar->triggerAction(static_cast<QAbstractSlider::SliderAction>(action));
    QCOMPARE(m_view->view.topIndex(), top);
    QCOMPARE(m_view->hBar->value(), top / 7 + 1);
}

LUMI_TEST(TestThumbnailBars)
#include "TestThumbnailBars.moc"
