// SPDX-License-Identifier: MIT
#include "platform/windows/PointerHider.h"
#include "tests/support/TestMain.h"

#include <QMouseEvent>
#include <QTest>
#include <QWidget>

#include <memory>

using lumi::PointerHider;

namespace {

class Picture : public QWidget
{
public:
    int moves = 0;

protected:
    void mouseMoveEvent(QMouseEvent * /*event*/) override { ++moves; }
};

} // namespace

class TestPointerHider : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void itHidesAfterASecond();
    void aMoveShowsItForAnotherSecond();
    void onlyDragsReachTheWidget();

private:
    [[nodiscard]] bool isHidden() const { return m_picture->cursor().shape() == Qt::BlankCursor; }

    void move(Qt::MouseButtons buttons);

    std::unique_ptr<Picture> m_picture;
};

void TestPointerHider::init()
{
    m_picture = std::make_unique<Picture>();
    m_picture->resize(100, 100);
    new PointerHider(m_picture.get());
}

void TestPointerHider::move(Qt::MouseButtons buttons)
{
    QMouseEvent event(QEvent::MouseMove, QPointF(5, 5), m_picture->mapToGlobal(QPointF(5, 5)),
                      Qt::NoButton, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(m_picture.get(), &event);
}

void TestPointerHider::itHidesAfterASecond()
{
    QTest::qWait(PointerHider::kDelayMs / 2);
    QVERIFY(!isHidden());
    QTRY_VERIFY(isHidden());
}

void TestPointerHider::aMoveShowsItForAnotherSecond()
{
    QTRY_VERIFY(isHidden());
    move(Qt::NoButton);
    QVERIFY(!isHidden());
    QTest::qWait(PointerHider::kDelayMs / 2);
    move(Qt::LeftButton);
    QTest::qWait(PointerHider::kDelayMs * 3 / 4);
    QVERIFY(!isHidden());
    QTRY_VERIFY(isHidden());
}

void TestPointerHider::onlyDragsReachTheWidget()
{
    move(Qt::NoButton);
    QCOMPARE(m_picture->moves, 0);
    move(Qt::LeftButton);
    QCOMPARE(m_picture->moves, 1);
}

LUMI_TEST(TestPointerHider)
#include "TestPointerHider.moc"
