// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyDialogWait.h"

#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

constexpr int kLongerThanAnyTimer = 150;

bool isAccepted(QWidget *target, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, modifiers);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted();
}

/// Counts the paint events of a window's content.
class PaintCounter : public QObject
{
public:
    int count = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class TestMyDialogWait : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looks();
    void buttonOnlyWithAText_data();
    void buttonOnlyWithAText();
    void buttonIsReported();
    void isPaintedWhenStartReturns();
    void otherEventsRunDuringStart();
    void noLimitStaysUp_data();
    void noLimitStaysUp();
    void limitAccepts();
    void escapeIsIgnored();
    void escapeWithAModifierGoesOn();
    void windowManagerCannotCloseIt();
    void timeoutSlotHides();
    void markupIsShownAsItIs();
};

void TestMyDialogWait::looks()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    QVERIFY(dialog.isModal());
    QCOMPARE(dialog.layout()->contentsMargins(), QMargins(4, 4, 4, 4));
    QCOMPARE(dialog.layout()->spacing(), 4);
    auto *label = dialog.findChild<QLabel *>();
    QVERIFY(label != nullptr);
    QCOMPARE(label->text(), QStringLiteral("Working..."));
    QVERIFY(label->alignment().testFlag(Qt::AlignHCenter));
    auto *frame = qobject_cast<QFrame *>(label->parentWidget());
    QVERIFY(frame != nullptr);
    QCOMPARE(frame->frameStyle(), int(QFrame::Box) | int(QFrame::Raised));
    QCOMPARE(frame->lineWidth(), 2);
    QCOMPARE(frame->midLineWidth(), 2);
    QCOMPARE(frame->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
    QCOMPARE(frame->layout()->spacing(), 4);
}

void TestMyDialogWait::buttonOnlyWithAText_data()
{
    lumi::test::columns<QString, int>();
    QTest::newRow("a null text means no button") << QString() << 0;
    QTest::newRow("an empty text is a text") << QStringLiteral("") << 1;
    QTest::newRow("a text means a button") << QStringLiteral("Stop") << 1;
}

void TestMyDialogWait::buttonOnlyWithAText()
{
    const auto [text, buttons] = lumi::test::row<QString, int>();
    const MyDialogWait dialog(nullptr, QStringLiteral("Working..."), text);
    const auto found = dialog.findChildren<QPushButton *>();
    QCOMPARE(found.size(), qsizetype(buttons));
    if (buttons > 0) {
        QCOMPARE(found.first()->text(), text);
        const int width = found.first()->fontMetrics().horizontalAdvance(text);
        QCOMPARE(found.first()->maximumWidth(), width + 16);
    }
}

void TestMyDialogWait::buttonIsReported()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Searching"), QStringLiteral("Stop"));
    const QSignalSpy spy(&dialog, &MyDialogWait::btn_clicked);
    dialog.start(0);
    auto *button = dialog.findChild<QPushButton *>();
    auto *label = dialog.findChild<QLabel *>();
    QVERIFY(button->y() > label->y());
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
    QVERIFY(dialog.isVisible());
}

void TestMyDialogWait::isPaintedWhenStartReturns()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    PaintCounter counter;
    dialog.findChild<QLabel *>()->installEventFilter(&counter);
    dialog.start(0);
    QVERIFY(counter.count > 0);
}

void TestMyDialogWait::otherEventsRunDuringStart()
{
    bool ran = false;
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    QMetaObject::invokeMethod(
        &dialog,
        [&ran] {
            ran = true;
        },
        Qt::QueuedConnection);
    dialog.start(0);
    QVERIFY(ran);
}

void TestMyDialogWait::noLimitStaysUp_data()
{
    QTest::addColumn<int>("ms");
    QTest::newRow("0") << 0;
    QTest::newRow("a negative time") << -1;
}

void TestMyDialogWait::noLimitStaysUp()
{
    QFETCH(int, ms);
    auto dialog = std::make_unique<MyDialogWait>(nullptr, QStringLiteral("Working..."));
    dialog->start(ms);
    QTest::qWait(kLongerThanAnyTimer);
    QVERIFY(dialog->isVisible());
    dialog.reset();
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestMyDialogWait::limitAccepts()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    const QSignalSpy accepted(&dialog, &QDialog::accepted);
    dialog.start(50);
    QVERIFY(dialog.isVisible());
    QTRY_VERIFY(!dialog.isVisible());
    QCOMPARE(accepted.size(), 1);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
}

void TestMyDialogWait::escapeIsIgnored()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    const QSignalSpy rejected(&dialog, &QDialog::rejected);
    dialog.start(0);
    QVERIFY(isAccepted(&dialog, Qt::NoModifier));
    QVERIFY(dialog.isVisible());
    QCOMPARE(rejected.size(), 0);
}

void TestMyDialogWait::escapeWithAModifierGoesOn()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    dialog.start(0);
    QVERIFY(!isAccepted(&dialog, Qt::ShiftModifier)); // the base class does not use it
    QVERIFY(dialog.isVisible());
}

void TestMyDialogWait::windowManagerCannotCloseIt()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."), QStringLiteral("Stop"));
    dialog.start(0);
    QVERIFY(!dialog.close());
    QVERIFY(dialog.isVisible());
}

void TestMyDialogWait::timeoutSlotHides()
{
    MyDialogWait dialog(nullptr, QStringLiteral("Working..."));
    dialog.start(0);
    dialog.slot_timeout();
    QVERIFY(!dialog.isVisible());
}

void TestMyDialogWait::markupIsShownAsItIs()
{
    const MyDialogWait dialog(nullptr, QStringLiteral("<b>x</b>"));
    QCOMPARE(dialog.findChild<QLabel *>()->textFormat(), Qt::PlainText);
}

LUMI_TEST(TestMyDialogWait)
#include "TestMyDialogWait.moc"
