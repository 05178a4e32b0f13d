// SPDX-License-Identifier: MIT
#include "platform/toolkit/PagingScrollBar.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QSignalSpy>
#include <QStringList>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <memory>

namespace {

constexpr int kStep = 3;
constexpr int kPage = 10;
constexpr int kStart = 50;

/// Records every signal with the value at that time.
class Watched : public PagingScrollBar
{
public:
    explicit Watched(Qt::Orientation orientation)
        : PagingScrollBar(orientation)
    {
        setRange(0, 100);
        setSingleStep(kStep);
        setPageStep(kPage);
        setValue(kStart);
        resize(orientation == Qt::Vertical ? QSize(20, 300) : QSize(300, 20));
        note(&PagingScrollBar::nextLine, "nextLine");
        note(&PagingScrollBar::prevLine, "prevLine");
        note(&PagingScrollBar::nextPage, "nextPage");
        note(&PagingScrollBar::prevPage, "prevPage");
        note(&PagingScrollBar::sliderReleased, "sliderReleased");
    }

    [[nodiscard]] QRect part(QStyle::SubControl control) const
    {
        QStyleOptionSlider option;
        initStyleOption(&option);
        return style()->subControlRect(QStyle::CC_ScrollBar, &option, control, this);
    }

    QStringList notes;

private:
    template <typename Signal> void note(Signal signal, const char *name)
    {
        connect(this, signal, this, [this, name] {
            notes.append(QStringLiteral("%1 at %2").arg(QLatin1String(name)).arg(value()));
        });
    }
};

void turnWheel(QWidget *widget, int eighths)
{
    const QPointF middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), QPoint(), QPoint(0, eighths),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

void rowPerOrientation()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::newRow("vertical") << Qt::Vertical;
    QTest::newRow("horizontal") << Qt::Horizontal;
}

} // namespace

class TestPagingScrollBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void arrows_data() { rowPerOrientation(); }

    void arrows();

    void groove_data() { rowPerOrientation(); }

    void groove();
    void keys_data();
    void keys();

    void dragIsReportedAtTheEnd_data() { rowPerOrientation(); }

    void dragIsReportedAtTheEnd();
    void middleClickJumpsOnce();
    void heldArrowRepeats();
    void wheelUpdatesOnce_data();
    void wheelUpdatesOnce();
    void wheelBeyondTheEndReportsNothing();
    void stepsAtTheEndsAreReported();
    void programSetsTheValueSilently();
    void listenerMayChangeTheBar();
    void noContextMenu();

private:
    std::unique_ptr<Watched> show(Qt::Orientation orientation);
};

std::unique_ptr<Watched> TestPagingScrollBar::show(Qt::Orientation orientation)
{
    auto bar = std::make_unique<Watched>(orientation);
    bar->show();
    const bool exposed = QTest::qWaitForWindowExposed(bar.get());
    return exposed ? std::move(bar) : nullptr;
}

void TestPagingScrollBar::arrows()
{
    QFETCH(Qt::Orientation, orientation);
    const auto bar = show(orientation);
    QTest::mouseClick(bar.get(), Qt::LeftButton, {},
                      bar->part(QStyle::SC_ScrollBarAddLine).center());
    QCOMPARE(bar->notes, QStringList{QStringLiteral("nextLine at 53")});
    bar->notes.clear();
    QTest::mouseClick(bar.get(), Qt::LeftButton, {},
                      bar->part(QStyle::SC_ScrollBarSubLine).center());
    QCOMPARE(bar->notes, QStringList{QStringLiteral("prevLine at 50")});
}

void TestPagingScrollBar::groove()
{
    QFETCH(Qt::Orientation, orientation);
    const auto bar = show(orientation);
    QTest::mouseClick(bar.get(), Qt::LeftButton, {},
                      bar->part(QStyle::SC_ScrollBarAddPage).center());
    QCOMPARE(bar->notes, QStringList{QStringLiteral("nextPage at 60")});
    bar->notes.clear();
    QTest::mouseClick(bar.get(), Qt::LeftButton, {},
                      bar->part(QStyle::SC_ScrollBarSubPage).center());
    QCOMPARE(bar->notes, QStringList{QStringLiteral("prevPage at 50")});
}

void TestPagingScrollBar::keys_data()
{
    lumi::test::columns<Qt::Key, QString>();
    QTest::newRow("Down") << Qt::Key_Down << QStringLiteral("nextLine at 53");
    QTest::newRow("Up") << Qt::Key_Up << QStringLiteral("prevLine at 47");
    QTest::newRow("Page Down") << Qt::Key_PageDown << QStringLiteral("nextPage at 60");
    QTest::newRow("Page Up") << Qt::Key_PageUp << QStringLiteral("prevPage at 40");
    QTest::newRow("End updates once") << Qt::Key_End << QStringLiteral("sliderReleased at 100");
    QTest::newRow("Home updates once") << Qt::Key_Home << QStringLiteral("sliderReleased at 0");
}

void TestPagingScrollBar::keys()
{
    const auto [key, expected] = lumi::test::row<Qt::Key, QString>();
    const auto bar = show(Qt::Vertical);
    QTest::keyClick(bar.get(), key);
    QCOMPARE(bar->notes, QStringList{expected});
}

void TestPagingScrollBar::dragIsReportedAtTheEnd()
{
    QFETCH(Qt::Orientation, orientation);
    const auto bar = show(orientation);
    const QPoint start = bar->part(QStyle::SC_ScrollBarSlider).center();
    const QPoint step = orientation == Qt::Vertical ? QPoint(0, 10) : QPoint(10, 0);
    QTest::mousePress(bar.get(), Qt::LeftButton, {}, start);
    for (int i = 1; i <= 4; ++i) {
        QTest::mouseMove(bar.get(), start + i * step);
    }
    QTRY_VERIFY(bar->value() > kStart);
    QCOMPARE(bar->notes, QStringList());
    QTest::mouseRelease(bar.get(), Qt::LeftButton, {}, start + 4 * step);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("sliderReleased at %1").arg(bar->value())});
    QVERIFY(bar->value() > kStart + 5);
}

void TestPagingScrollBar::middleClickJumpsOnce()
{
    const auto bar = show(Qt::Vertical);
    QTest::mouseClick(bar.get(), Qt::MiddleButton, {},
                      bar->part(QStyle::SC_ScrollBarAddPage).center());
    QVERIFY(bar->value() > kStart + kPage);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("sliderReleased at %1").arg(bar->value())});
    bar->notes.clear();
    turnWheel(bar.get(), 120);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("sliderReleased at %1").arg(bar->value())});
}

void TestPagingScrollBar::heldArrowRepeats()
{
    const auto bar = show(Qt::Vertical);
    const QPoint arrow = bar->part(QStyle::SC_ScrollBarAddLine).center();
    QTest::mousePress(bar.get(), Qt::LeftButton, {}, arrow);
    QTRY_VERIFY(bar->notes.size() >= 3);
    QTest::mouseRelease(bar.get(), Qt::LeftButton, {}, arrow);
    for (int i = 0; i < bar->notes.size(); ++i) {
        QCOMPARE(bar->notes[i], QStringLiteral("nextLine at %1").arg(kStart + (i + 1) * kStep));
    }
}

void TestPagingScrollBar::wheelUpdatesOnce_data()
{
    lumi::test::columns<Qt::Orientation, int, bool>();
    QTest::newRow("one notch towards the user") << Qt::Vertical << -120 << true;
    QTest::newRow("one notch away") << Qt::Vertical << 120 << false;
    QTest::newRow("three notches at once") << Qt::Vertical << -360 << true;
    QTest::newRow("over a horizontal bar") << Qt::Horizontal << -120 << true;
}

void TestPagingScrollBar::wheelUpdatesOnce()
{
    const auto [orientation, eighths, forward] = lumi::test::row<Qt::Orientation, int, bool>();
    const auto bar = show(orientation);
    turnWheel(bar.get(), eighths);
    QCOMPARE(bar->value() > kStart, forward);
    QVERIFY(bar->value() != kStart);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("sliderReleased at %1").arg(bar->value())});
}

void TestPagingScrollBar::wheelBeyondTheEndReportsNothing()
{
    const auto bar = show(Qt::Vertical);
    bar->setValue(bar->maximum());
    turnWheel(bar.get(), -120);
    QTest::keyClick(bar.get(), Qt::Key_End);
    QCOMPARE(bar->notes, QStringList());
}

void TestPagingScrollBar::stepsAtTheEndsAreReported()
{
    const auto bar = show(Qt::Vertical);
    bar->setValue(bar->maximum());
    QTest::keyClick(bar.get(), Qt::Key_Down);
    QTest::keyClick(bar.get(), Qt::Key_PageDown);
    bar->setValue(bar->minimum());
    QTest::keyClick(bar.get(), Qt::Key_Up);
    QTest::keyClick(bar.get(), Qt::Key_PageUp);
    const QStringList expected
        = {QStringLiteral("nextLine at 100"), QStringLiteral("nextPage at 100"),
           QStringLiteral("prevLine at 0"), QStringLiteral("prevPage at 0")};
    QCOMPARE(bar->notes, expected);
}

void TestPagingScrollBar::programSetsTheValueSilently()
{
    const auto bar = show(Qt::Vertical);
    bar->setValue(70);
    bar->setRange(1, 6);
    bar->setSliderPosition(3);
    bar->setValue(0);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("sliderReleased at 3")});
}

// A view resets the bar while it handles a step, for instance when the folder has become empty.
void TestPagingScrollBar::listenerMayChangeTheBar()
{
    const auto bar = show(Qt::Vertical);
    connect(bar.get(), &PagingScrollBar::nextLine, bar.get(), [&bar] {
        bar->setRange(0, 0);
    });
    QTest::keyClick(bar.get(), Qt::Key_Down);
    QCOMPARE(bar->value(), 0);
    QCOMPARE(bar->maximum(), 0);
    QCOMPARE(bar->notes, QStringList{QStringLiteral("nextLine at 53")});
}

void TestPagingScrollBar::noContextMenu()
{
    const auto bar = show(Qt::Vertical);
    bool popupSeen = false;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&popupSeen] {
        if (QWidget *popup = QApplication::activePopupWidget()) {
            popupSeen = true;
            popup->close();
        }
    });
    closer.start(5);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 100),
                            bar->mapToGlobal(QPoint(5, 100)));
    QApplication::sendEvent(bar.get(), &event);
    QTest::mouseClick(bar.get(), Qt::RightButton, {}, QPoint(5, 100));
    QTest::qWait(30);
    QVERIFY(!popupSeen);
    QCOMPARE(bar->notes, QStringList());
}

LUMI_TEST(TestPagingScrollBar)
#include "TestPagingScrollBar.moc"
