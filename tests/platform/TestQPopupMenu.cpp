// SPDX-License-Identifier: MIT
#include "platform/toolkit/QPopupMenu.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QImage>
#include <QSet>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace {

class Receiver : public QObject
{
    Q_OBJECT

public:
    int calls = 0;

public Q_SLOTS:

    void act() { ++calls; }
};

/// Runs the steps in order while a menu is open, then closes all that is still open.
class WhileOpen
{
public:
    explicit WhileOpen(std::vector<std::function<void()>> steps)
        : m_steps(std::move(steps))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            next();
        });
        m_timer.start(30);
    }

private:
    void next()
    {
        QWidget *popup = QApplication::activePopupWidget();
        if (popup == nullptr) {
            return;
        }
        if (m_done == m_steps.size()) {
            popup->close();
        } else {
            m_steps[m_done++]();
        }
    }

    std::vector<std::function<void()>> m_steps;
    std::size_t m_done = 0;
    QTimer m_timer;
};

void press(Qt::Key key)
{
    if (QWidget *popup = QApplication::activePopupWidget()) {
        QTest::keyClick(popup, key);
    }
}

/// Without the border of the menu.
bool isBlank(const QImage &image)
{
    const QImage inner = image.copy(image.rect().adjusted(2, 2, -4, -2));
    QImage blank(inner.size(), inner.format());
    blank.fill(inner.pixelColor(0, 0));
    return inner == blank;
}

void click(QPopupMenu &menu, int id)
{
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(menu.findItem(id)).center());
}

} // namespace

class TestQPopupMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void freshIdsAreNegativeAndDiffer();
    void findsInSubmenus();
    void separatorsHaveNoId();
    void separatorsStayInSight();
    void acceleratorGoesToTheAction();
    void aShownKeyIsNoShortcut();
    void aShownKeyHasAColumnOfItsOwn();
    void textStaysRaw();
    void setters();
    void settersPassOverUnknownIds();
    void execGivesTheChosenId();
    void execGivesTheIdOfASubmenusEntry();
    void execGivesMinusOneWithoutAChoice();
    void disabledEntryCannotBeChosen();
    void aboutToShowComesBeforeTheMenu();
};

void TestQPopupMenu::freshIdsAreNegativeAndDiffer()
{
    QPopupMenu menu;
    QPopupMenu other;
    Receiver receiver;
    QPopupMenu sub;
    const QList<int> ids
        = {menu.insertItem(QStringLiteral("a")), menu.insertItem(QStringLiteral("b"), -1),
           other.insertItem(QStringLiteral("c")),
           menu.insertItem(QStringLiteral("d"), &receiver, &Receiver::act),
           menu.insertItem(QStringLiteral("e"), &sub)};
    QCOMPARE(QSet<int>(ids.begin(), ids.end()).size(), ids.size());
    for (const int id : ids) {
        QVERIFY(id < -1);
    }
    QCOMPARE(menu.findItem(ids[3])->text(), QStringLiteral("d"));
    QCOMPARE(menu.findItem(ids[2]), nullptr);
    QCOMPARE(menu.findItem(-1), nullptr);
}

void TestQPopupMenu::findsInSubmenus()
{
    QPopupMenu menu;
    QPopupMenu sub(&menu);
    QPopupMenu subSub(&sub);
    menu.insertItem(QStringLiteral("Slideshow"), &sub, 16);
    sub.insertItem(QStringLiteral("Run"), 17);
    sub.insertItem(QStringLiteral("More"), &subSub, 20);
    subSub.insertItem(QStringLiteral("Deep"), 21);
    menu.insertItem(QStringLiteral("Full View"), 19);
    QCOMPARE(menu.findItem(16)->text(), QStringLiteral("Slideshow"));
    QCOMPARE(menu.findItem(16)->menu(), &sub);
    QCOMPARE(menu.findItem(17)->text(), QStringLiteral("Run"));
    QCOMPARE(menu.findItem(21)->text(), QStringLiteral("Deep"));
    QCOMPARE(menu.findItem(19)->text(), QStringLiteral("Full View"));
    QCOMPARE(sub.findItem(19), nullptr);
    menu.setItemEnabled(21, false);
    QVERIFY(!subSub.actions().constFirst()->isEnabled());
}

void TestQPopupMenu::separatorsHaveNoId()
{
    QPopupMenu menu;
    menu.insertSeparator();
    QCOMPARE(menu.findItem(0), nullptr);
    menu.insertItem(QStringLiteral("a"), 0);
    QCOMPARE(menu.findItem(0)->text(), QStringLiteral("a"));
    menu.setItemVisible(0, false);
    QVERIFY(menu.actions().constFirst()->isVisible());
}

void TestQPopupMenu::separatorsStayInSight()
{
    QPopupMenu menu;
    menu.insertSeparator();
    menu.insertItem(QStringLiteral("Large"), 13);
    menu.insertSeparator();
    menu.insertSeparator();
    menu.insertItem(QStringLiteral("Small"), 14);
    QVERIFY(!menu.separatorsCollapsible());
    menu.popup(QPoint(0, 0));
    const QList<QAction *> actions = menu.actions();
    QCOMPARE(actions.size(), 5);
    for (const QAction *action : actions) {
        QVERIFY(menu.actionGeometry(const_cast<QAction *>(action)).height() > 0);
    }
    menu.close();
}

void TestQPopupMenu::acceleratorGoesToTheAction()
{
    QPopupMenu menu;
    Receiver receiver;
    menu.insertItem(QStringLiteral("a"), &receiver, &Receiver::act, int(Qt::CTRL) | Qt::Key_C, 5);
    menu.insertItem(QStringLiteral("b"), &receiver, &Receiver::act, 0, 6);
    QCOMPARE(menu.findItem(5)->shortcut(), QKeySequence(QKeyCombination(Qt::CTRL, Qt::Key_C)));
    QVERIFY(menu.findItem(6)->shortcut().isEmpty());
}

void TestQPopupMenu::aShownKeyIsNoShortcut()
{
    QPopupMenu menu;
    menu.insertItem(QStringLiteral("Cut"), 1);
    QPopupMenu::showKey(menu.findItem(1), "Ctrl+X");
    QCOMPARE(menu.findItem(1)->text(), QStringLiteral("Cut"));
    QVERIFY(menu.findItem(1)->shortcut().isEmpty());
}

void TestQPopupMenu::aShownKeyHasAColumnOfItsOwn()
{
    const auto shot = [](const char *key, QSize *entry) {
        QPopupMenu menu;
        menu.insertItem(QStringLiteral("Cut"), 1);
        menu.insertItem(QStringLiteral("Deselect All"), 2);
        QPopupMenu::showKey(menu.findItem(1), key);
        menu.popup(QPoint(0, 0));
        const QRect place = menu.actionGeometry(menu.findItem(1));
        *entry = place.size();
        return menu.grab(place).toImage();
    };
    QSize plain;
    QSize wide;
    const QImage without = shot(nullptr, &plain);
    const QImage with = shot("Ctrl+X", &wide);
    const int keyWidth
        = QFontMetrics(QPopupMenu().font()).horizontalAdvance(QStringLiteral("Ctrl+X"));
    QVERIFY(wide.width() >= plain.width() + keyWidth);
    QCOMPARE(wide.height(), plain.height());
    // The text stays in its place, and only the key is to the right of it.
    const int half = plain.width() / 2;
    QCOMPARE(with.copy(0, 0, half, plain.height()), without.copy(0, 0, half, plain.height()));
    QVERIFY(isBlank(without.copy(half, 0, plain.width() - half, plain.height())));
    QVERIFY(!isBlank(with.copy(half, 0, wide.width() - half, wide.height())));
}

void TestQPopupMenu::textStaysRaw()
{
    QPopupMenu menu;
    QPopupMenu sub;
    menu.insertItem(QStringLiteral("Save & Exit"), 1);
    menu.insertItem(QStringLiteral("More & more"), &sub, 2);
    QCOMPARE(menu.findItem(1)->text(), QStringLiteral("Save & Exit"));
    QCOMPARE(menu.findItem(2)->text(), QStringLiteral("More & more"));
}

void TestQPopupMenu::setters()
{
    QPopupMenu menu;
    menu.insertItem(QStringLiteral("a"), 1);
    menu.insertItem(QStringLiteral("b"), 2);
    const QAction *first = menu.findItem(1);
    menu.setItemEnabled(1, false);
    QVERIFY(!first->isEnabled());
    menu.setItemEnabled(1, true);
    QVERIFY(first->isEnabled());
    QVERIFY(!first->isCheckable());
    menu.setItemChecked(1, true);
    QVERIFY(first->isChecked());
    menu.setItemChecked(1, false);
    QVERIFY(!first->isChecked());
    QVERIFY(first->isCheckable());
    menu.setItemVisible(1, false);
    QVERIFY(!first->isVisible());
    menu.setItemVisible(1, true);
    QVERIFY(first->isVisible());
    QVERIFY(menu.findItem(2)->isEnabled());
    QVERIFY(!menu.findItem(2)->isCheckable());
}

void TestQPopupMenu::settersPassOverUnknownIds()
{
    QPopupMenu menu;
    menu.insertItem(QStringLiteral("a"), 1);
    menu.setItemEnabled(7, false);
    menu.setItemChecked(7, true);
    menu.setItemVisible(7, false);
    const QAction *only = menu.findItem(1);
    QVERIFY(only->isEnabled() && only->isVisible() && !only->isCheckable());
}

void TestQPopupMenu::execGivesTheChosenId()
{
    QPopupMenu menu;
    Receiver receiver;
    menu.insertItem(QStringLiteral("Cont."), 0);
    menu.insertSeparator();
    menu.insertItem(QStringLiteral("Details"), &receiver, &Receiver::act, 0, 7);
    {
        const WhileOpen script({[] {
                                    press(Qt::Key_Down);
                                },
                                [] {
                                    press(Qt::Key_Down);
                                },
                                [] {
                                    press(Qt::Key_Return);
                                }});
        QCOMPARE(menu.exec(QPoint(10, 10)), 7);
        QCOMPARE(receiver.calls, 1);
    }
    const WhileOpen script({[&menu] {
        click(menu, 0);
    }});
    QCOMPARE(menu.exec(QPoint(10, 10)), 0);
    QCOMPARE(receiver.calls, 1);
}

void TestQPopupMenu::execGivesTheIdOfASubmenusEntry()
{
    QPopupMenu menu;
    QPopupMenu sub(&menu);
    menu.insertItem(QStringLiteral("Slideshow"), &sub, 16);
    sub.insertItem(QStringLiteral("Run"), 17);
    const WhileOpen script({[] {
                                press(Qt::Key_Down);
                            },
                            [] {
                                press(Qt::Key_Right);
                            },
                            [&sub] {
                                click(sub, 17);
                            }});
    QCOMPARE(menu.exec(QPoint(10, 10)), 17);
}

void TestQPopupMenu::execGivesMinusOneWithoutAChoice()
{
    QPopupMenu menu;
    menu.insertItem(QStringLiteral("a"), 0);
    const WhileOpen script({[] {
                                press(Qt::Key_Down);
                            },
                            [] {
                                press(Qt::Key_Escape);
                            }});
    QCOMPARE(menu.exec(QPoint(10, 10)), -1);
}

void TestQPopupMenu::disabledEntryCannotBeChosen()
{
    QPopupMenu menu;
    Receiver receiver;
    menu.insertItem(QStringLiteral("a"), &receiver, &Receiver::act, 0, 3);
    menu.setItemEnabled(3, false);
    const WhileOpen script({[&menu] {
        click(menu, 3);
    }});
    QCOMPARE(menu.exec(QPoint(10, 10)), -1);
    QCOMPARE(receiver.calls, 0);
}

void TestQPopupMenu::aboutToShowComesBeforeTheMenu()
{
    QPopupMenu menu;
    menu.insertItem(QStringLiteral("a"), 0);
    bool visibleThen = true;
    connect(&menu, &QMenu::aboutToShow, &menu, [&menu, &visibleThen] {
        visibleThen = menu.isVisible();
    });
    const QSignalSpy shown(&menu, &QMenu::aboutToShow);
    const WhileOpen script({});
    QCOMPARE(menu.exec(QPoint(10, 10)), -1);
    QCOMPARE(shown.count(), 1);
    QVERIFY(!visibleThen);
}

LUMI_TEST(TestQPopupMenu)
#include "TestQPopupMenu.moc"
