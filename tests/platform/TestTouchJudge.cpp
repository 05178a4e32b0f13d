// SPDX-License-Identifier: MIT
#include "platform/touch/TouchJudge.h"
#include "platform/touch/gestures.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <memory>

using lumi::PinchEvent;
using lumi::SwipeEvent;
using lumi::TouchJudge;

namespace {

/// Notes what reaches it.
class Surface : public QWidget
{
public:
    using QWidget::QWidget;

    QStringList log;
    bool takesGestures = false;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() == SwipeEvent::kType) {
            static const char *const kNames[] = {"left", "right", "up", "down"};
            const auto direction = static_cast<SwipeEvent *>(event)->direction();
            log << QStringLiteral("swipe ") + QLatin1String(kNames[direction]);
            event->setAccepted(takesGestures);
            return true;
        }
        if (event->type() == PinchEvent::kType) {
            const auto *pinch = static_cast<PinchEvent *>(event);
            const QPoint at = mapFromGlobal(pinch->globalCentre());
            log << QString::asprintf("%s %d,%d", pinch->isApart() ? "apart" : "together", at.x(),
                                     at.y());
            event->setAccepted(takesGestures);
            return true;
        }
        return QWidget::event(event);
    }

    void mousePressEvent(QMouseEvent *event) override { note("press", event); }

    void mouseMoveEvent(QMouseEvent *event) override { note("move", event); }

    void mouseReleaseEvent(QMouseEvent *event) override { note("release", event); }

    void mouseDoubleClickEvent(QMouseEvent *event) override { note("double", event); }

private:
    void note(const char *what, QMouseEvent *event)
    {
        log << QString::asprintf("%s %d,%d", what, event->pos().x(), event->pos().y());
    }
};

QPointingDevice *finger()
{
    static QPointingDevice *const device = QTest::createTouchDevice();
    return device;
}

} // namespace

class TestTouchJudge : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void aTapIsAClick();
    void aRestingFingerPresses();
    void aFingerThatRestedDrags();
    void aQuickMoveIsASwipe_data();
    void aQuickMoveIsASwipe();
    void aSwipeThatNobodyTakesIsADrag();
    void aFingerOnItsWayHasHalfASecond();
    void aSlowMoveIsADrag();
    void twoTapsAreADoubleClick();
    void aParentMayTakeTheGesture();
    void twoFingersPinch();
    void twoFingersNeverPress();
    void aSecondFingerDoesNotMoveThePress();
    void aCancelledTouchClicksNothing();
    void theMouseIsNotJudged();

private:
    void down(QPoint at) { QTest::touchEvent(m_surface.get(), finger()).press(0, at); }

    void to(QPoint at) { QTest::touchEvent(m_surface.get(), finger()).move(0, at); }

    void up(QPoint at) { QTest::touchEvent(m_surface.get(), finger()).release(0, at); }

    std::unique_ptr<Surface> m_surface;
};

void TestTouchJudge::init()
{
    m_surface = std::make_unique<Surface>();
    m_surface->resize(400, 300);
    m_surface->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_surface.get()));
    // The taps of two tests are no double click.
    QTest::qWait(QApplication::doubleClickInterval());
}

void TestTouchJudge::aTapIsAClick()
{
    down({50, 60});
    QCOMPARE(m_surface->log, QStringList());
    up({50, 60});
    QCOMPARE(m_surface->log,
             QStringList({QStringLiteral("press 50,60"), QStringLiteral("release 50,60")}));
}

void TestTouchJudge::aRestingFingerPresses()
{
    down({50, 60});
    QTest::qWait(TouchJudge::kRestMs / 2);
    QCOMPARE(m_surface->log, QStringList());
    QTRY_COMPARE(m_surface->log, QStringList({QStringLiteral("press 50,60")}));
    up({50, 60});
}

void TestTouchJudge::aFingerThatRestedDrags()
{
    m_surface->takesGestures = true;
    down({50, 60});
    QTRY_COMPARE(m_surface->log.size(), 1);
    to({150, 60});
    up({150, 60});
    QCOMPARE(m_surface->log,
             QStringList({QStringLiteral("press 50,60"), QStringLiteral("move 150,60"),
                          QStringLiteral("release 150,60")}));
}

void TestTouchJudge::aQuickMoveIsASwipe_data()
{
    lumi::test::columns<QPoint, QString>();
    QTest::newRow("left") << QPoint(159, 150) << QStringLiteral("swipe left");
    QTest::newRow("right") << QPoint(241, 150) << QStringLiteral("swipe right");
    QTest::newRow("up") << QPoint(200, 109) << QStringLiteral("swipe up");
    QTest::newRow("down") << QPoint(200, 191) << QStringLiteral("swipe down");
    QTest::newRow("mostly left") << QPoint(140, 110) << QStringLiteral("swipe left");
}

void TestTouchJudge::aQuickMoveIsASwipe()
{
    const auto [end, swipe] = lumi::test::row<QPoint, QString>();
    m_surface->takesGestures = true;
    down({200, 150});
    to(end);
    up(end);
    QTest::qWait(TouchJudge::kRestMs * 2);
    QCOMPARE(m_surface->log, QStringList({swipe}));
}

void TestTouchJudge::aSwipeThatNobodyTakesIsADrag()
{
    down({200, 150});
    to({150, 150});
    up({140, 150});
    QCOMPARE(m_surface->log,
             QStringList({QStringLiteral("swipe left"), QStringLiteral("press 200,150"),
                          QStringLiteral("move 150,150"), QStringLiteral("release 150,150")}));
}

void TestTouchJudge::aFingerOnItsWayHasHalfASecond()
{
    m_surface->takesGestures = true;
    down({200, 150});
    to({175, 150});
    QTest::qWait(TouchJudge::kRestMs * 3 / 2);
    QCOMPARE(m_surface->log, QStringList());
    to({155, 150});
    QCOMPARE(m_surface->log, QStringList({QStringLiteral("swipe left")}));
    up({155, 150});
}

void TestTouchJudge::aSlowMoveIsADrag()
{
    m_surface->takesGestures = true;
    down({200, 150});
    to({175, 150});
    QTRY_COMPARE(m_surface->log,
                 QStringList({QStringLiteral("press 200,150"), QStringLiteral("move 175,150")}));
    to({100, 150});
    QCOMPARE(m_surface->log.last(), QStringLiteral("move 100,150"));
    up({100, 150});
}

void TestTouchJudge::twoTapsAreADoubleClick()
{
    down({50, 60});
    up({50, 60});
    down({52, 61});
    up({52, 61});
    QCOMPARE(m_surface->log.filter(QStringLiteral("press")).size(), 2);
    QCOMPARE(m_surface->log.filter(QStringLiteral("double")),
             QStringList({QStringLiteral("double 52,61")}));
    m_surface->log.clear();
    down({52, 61});
    up({52, 61});
    QCOMPARE(m_surface->log.filter(QStringLiteral("double")), QStringList());
}

void TestTouchJudge::aParentMayTakeTheGesture()
{
    m_surface->takesGestures = true;
    QWidget child(m_surface.get());
    child.resize(m_surface->size());
    child.show();
    down({200, 150});
    to({100, 150});
    up({100, 150});
    QCOMPARE(m_surface->log, QStringList({QStringLiteral("swipe left")}));
}

void TestTouchJudge::twoFingersPinch()
{
    m_surface->takesGestures = true;
    QTest::touchEvent(m_surface.get(), finger()).press(0, {150, 100}).press(1, {250, 100});
    QTest::touchEvent(m_surface.get(), finger()).move(0, {140, 100}).move(1, {260, 100});
    QCOMPARE(m_surface->log, QStringList());
    QTest::touchEvent(m_surface.get(), finger()).move(0, {130, 100}).move(1, {260, 100});
    QCOMPARE(m_surface->log, QStringList({QStringLiteral("apart 195,100")}));
    QTest::touchEvent(m_surface.get(), finger()).move(0, {150, 100}).move(1, {250, 100});
    QCOMPARE(m_surface->log.last(), QStringLiteral("together 200,100"));
    QTest::touchEvent(m_surface.get(), finger()).release(0, {150, 100}).release(1, {250, 100});
    QCOMPARE(m_surface->log.size(), 2);
}

void TestTouchJudge::twoFingersNeverPress()
{
    QTest::touchEvent(m_surface.get(), finger()).press(0, {150, 100});
    QTest::touchEvent(m_surface.get(), finger()).move(0, {150, 100}).press(1, {250, 100});
    QTest::touchEvent(m_surface.get(), finger()).move(0, {100, 100}).move(1, {300, 100});
    QTest::touchEvent(m_surface.get(), finger()).move(0, {100, 100}).release(1, {300, 100});
    QTest::touchEvent(m_surface.get(), finger()).release(0, {100, 100});
    QTest::qWait(TouchJudge::kRestMs * 2);
    QCOMPARE(m_surface->log, QStringList({QStringLiteral("apart 200,100")}));
}

/// For instance a palm that touches the screen during a drag.
void TestTouchJudge::aSecondFingerDoesNotMoveThePress()
{
    down({50, 60});
    QTRY_COMPARE(m_surface->log, QStringList({QStringLiteral("press 50,60")}));
    QTest::touchEvent(m_surface.get(), finger()).move(0, {52, 60}).press(1, {250, 100});
    QTest::touchEvent(m_surface.get(), finger()).release(0, {52, 60}).stationary(1);
    QTest::touchEvent(m_surface.get(), finger()).move(1, {260, 100});
    QTest::touchEvent(m_surface.get(), finger()).release(1, {260, 100});
    QCOMPARE(m_surface->log.filter(QStringLiteral("2")),
             m_surface->log.filter(QStringLiteral(" 52,60")));
    QCOMPARE(m_surface->log.last(), QStringLiteral("release 52,60"));
}

void TestTouchJudge::aCancelledTouchClicksNothing()
{
    down({50, 60});
    QTRY_COMPARE(m_surface->log.size(), 1);
    QTouchEvent cancel(QEvent::TouchCancel, finger());
    QCoreApplication::sendEvent(m_surface->windowHandle(), &cancel);
    QCOMPARE(m_surface->log.filter(QStringLiteral("release")).size(), 1);
    QVERIFY(m_surface->log.last() != QStringLiteral("release 50,60"));
    up({50, 60});
    QCOMPARE(m_surface->log.filter(QStringLiteral("release")).size(), 1);
}

void TestTouchJudge::theMouseIsNotJudged()
{
    m_surface->takesGestures = true;
    QTest::mousePress(m_surface->windowHandle(), Qt::LeftButton, {}, {200, 150});
    QTest::mouseMove(m_surface->windowHandle(), {100, 150});
    QTest::mouseRelease(m_surface->windowHandle(), Qt::LeftButton, {}, {100, 150});
    QCOMPARE(m_surface->log.first(), QStringLiteral("press 200,150"));
    QCOMPARE(m_surface->log.filter(QStringLiteral("swipe")), QStringList());
}

LUMI_TEST(TestTouchJudge)
#include "TestTouchJudge.moc"
