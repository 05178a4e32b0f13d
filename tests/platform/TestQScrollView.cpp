// SPDX-License-Identifier: MIT
#include "platform/toolkit/QScrollView.h"
#include "tests/support/TestMain.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <vector>

namespace {

class Pressed : public QScrollView
{
public:
    using QScrollView::QScrollView;

    std::vector<QPoint> presses;
    std::vector<QPoint> moves;
    bool accepts = true;

protected:
    void contentsMousePressEvent(QMouseEvent *event) override
    {
        presses.push_back(event->position().toPoint());
        event->setAccepted(accepts);
    }

    void contentsMouseMoveEvent(QMouseEvent *event) override
    {
        moves.push_back(event->position().toPoint());
    }
};

class PressCounter : public QWidget
{
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

class TestQScrollView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namedAndFramed();
    void childrenGoToTheViewport();
    void barsOffMeansNoScrolling();
    void barsFollowTheContents();
    void mouseComesInContentsCoordinates();
    void secondPressOfADoubleClick();
    void unwantedPressGoesToTheParent();
};

void TestQScrollView::namedAndFramed()
{
    QScrollView view(nullptr, "ThumbnailView");
    QCOMPARE(view.objectName(), QStringLiteral("ThumbnailView"));
    QVERIFY(QScrollView().objectName().isEmpty());
    view.setHScrollBarMode(QScrollView::AlwaysOff);
    view.setVScrollBarMode(QScrollView::AlwaysOff);
    view.resize(200, 100);
    view.show();
    QCOMPARE(view.visibleWidth(), 200 - 2 * view.frameWidth());
    QCOMPARE(view.visibleHeight(), 100 - 2 * view.frameWidth());
}

void TestQScrollView::childrenGoToTheViewport()
{
    QScrollView view;
    auto *child = new QWidget;
    view.addChild(child, 30, 40);
    QCOMPARE(child->parentWidget(), view.viewport());
    QCOMPARE(child->pos(), QPoint(30, 40));
    auto *inPlace = new QWidget(view.viewport());
    view.show();
    inPlace->show();
    view.addChild(inPlace);
    QCOMPARE(inPlace->pos(), QPoint(0, 0));
    QVERIFY(inPlace->isVisible());
    auto *late = new QWidget;
    view.addChild(late, 1, 2);
    QVERIFY(!late->isVisible());
}

void TestQScrollView::barsOffMeansNoScrolling()
{
    QScrollView view;
    view.setHScrollBarMode(QScrollView::AlwaysOff);
    view.setVScrollBarMode(QScrollView::AlwaysOff);
    view.resize(200, 100);
    auto *child = new QWidget(view.viewport());
    view.addChild(child, 0, 0);
    view.resizeContents(1000, 1000);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(!view.verticalScrollBar()->isVisible());
    QVERIFY(!view.horizontalScrollBar()->isVisible());
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_PageDown);
    QTest::keyClick(&view, Qt::Key_Right);
    const QPointF middle(50, 50);
    QWheelEvent wheel(middle, view.mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &wheel);
    QCOMPARE(child->pos(), QPoint(0, 0));
    QCOMPARE(view.verticalScrollBar()->maximum(), 0);
    QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
}

void TestQScrollView::barsFollowTheContents()
{
    QScrollView view;
    view.resize(200, 100);
    auto *child = new QWidget(view.viewport());
    view.addChild(child, 0, 0);
    view.resizeContents(150, 1000);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.verticalScrollBar()->isVisible());
    QCOMPARE(view.verticalScrollBar()->maximum(), 1000 - view.visibleHeight());
    QCOMPARE(view.horizontalScrollBar()->maximum(), 0);
    view.verticalScrollBar()->setValue(70);
    QCOMPARE(child->pos(), QPoint(0, -70));
    auto *later = new QWidget;
    view.addChild(later, 10, 100);
    QCOMPARE(later->pos(), QPoint(10, 30));
    view.setVScrollBarMode(QScrollView::AlwaysOff);
    QCOMPARE(child->pos(), QPoint(0, 0));
    view.setHScrollBarMode(QScrollView::AlwaysOn);
    QVERIFY(view.horizontalScrollBar()->isVisible());
}

void TestQScrollView::mouseComesInContentsCoordinates()
{
    Pressed view;
    view.resize(200, 100);
    view.resizeContents(150, 1000);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_VERIFY(view.verticalScrollBar()->isVisible());
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(12, 34));
    view.verticalScrollBar()->setValue(70);
    QMouseEvent move(QEvent::MouseMove, QPointF(13, 36),
                     view.viewport()->mapToGlobal(QPointF(13, 36)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(13, 36));
    QCOMPARE(view.presses, std::vector<QPoint>{QPoint(12, 34)});
    QCOMPARE(view.moves, std::vector<QPoint>{QPoint(13, 106)});
}

void TestQScrollView::secondPressOfADoubleClick()
{
    Pressed view;
    view.resize(200, 100);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 6),
                       view.viewport()->mapToGlobal(QPointF(5, 6)), Qt::LeftButton, Qt::LeftButton,
                       Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &second);
    QCOMPARE(view.presses, std::vector<QPoint>{QPoint(5, 6)});
}

void TestQScrollView::unwantedPressGoesToTheParent()
{
    PressCounter parent;
    parent.resize(300, 300);
    Pressed view(&parent);
    view.resize(200, 100);
    QScrollView plain(&parent);
    plain.setGeometry(0, 150, 200, 100);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(5, 6));
    QCOMPARE(parent.presses, 0);
    view.accepts = false;
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(50, 60));
    QCOMPARE(parent.presses, 1);
    QTest::mouseClick(plain.viewport(), Qt::LeftButton, {}, QPoint(5, 6));
    QCOMPARE(parent.presses, 2);
}

LUMI_TEST(TestQScrollView)
#include "TestQScrollView.moc"
