// SPDX-License-Identifier: MIT
#include "platform/screen/PanelStyle.h"
#include "platform/screen/panel.h"
#include "platform/windows/QPEMenuBar.h"
#include "platform/windows/QPEToolBar.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace {

/// A window with a bar, as big as the panel.
struct Window
{
    Window()
        : bar(new QPEToolBar(&window))
    {
        bar->setHorizontalStretchable(true);
        window.setCentralWidget(new QWidget);
        window.resize(640, 480);
    }

    QPEMenuBar *addMenuBar(const char *menu)
    {
        auto *menuBar = new QPEMenuBar(bar);
        menuBar->addMenu(QString::fromLatin1(menu))->addAction(QStringLiteral("Entry"));
        return menuBar;
    }

    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    QMainWindow window;
    QPEToolBar *bar;
};

} // namespace

class TestQPEToolBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void joinsItsWindowAndStaysThere();
    void aStretchableBarFillsTheWindow();
    void menuBarsFillTheBar();
    void menuBarsTakeTurns();
    void aMenuBarMayGoWithoutTraces();
    void menuBarsDieWithTheBar();
    void f10OpensTheMenusOfTheVisibleBar();
};

void TestQPEToolBar::joinsItsWindowAndStaysThere()
{
    Window w;
    QCOMPARE(w.window.toolBarArea(w.bar), Qt::TopToolBarArea);
    QVERIFY(!w.bar->isMovable());
    QVERIFY(!w.bar->isFloatable());
    QCOMPARE(w.bar->contextMenuPolicy(), Qt::PreventContextMenu);
    QVERIFY(w.bar->objectName().isEmpty());
    const QPEMenuBar named(w.bar, "name");
    QCOMPARE(named.objectName(), QStringLiteral("name"));
    QVERIFY(!named.isNativeMenuBar());
}

void TestQPEToolBar::aStretchableBarFillsTheWindow()
{
    Window w;
    w.addMenuBar("File");
    w.show();
    QCOMPARE(w.bar->width(), 640);
    QVERIFY(w.bar->host()->width() > 600);
    w.bar->setHorizontalStretchable(false);
    QTRY_VERIFY(w.bar->host()->width() < 200);
}

void TestQPEToolBar::menuBarsFillTheBar()
{
    Window w;
    const QPEMenuBar *menuBar = w.addMenuBar("File");
    w.show();
    QCOMPARE(menuBar->parentWidget(), w.bar->host());
    QCOMPARE(menuBar->geometry(), w.bar->host()->rect());
    QCOMPARE(w.bar->height(), lumi::kFingerSize);
    QCOMPARE(menuBar->actionGeometry(menuBar->actions().first()).height(), lumi::kFingerSize);
    QVERIFY(w.bar->rect().contains(w.bar->host()->geometry()));
    for (const QToolButton *button : w.bar->findChildren<QToolButton *>()) {
        QVERIFY2(!button->isVisible(), "no button for entries that find no room");
    }
}

void TestQPEToolBar::menuBarsTakeTurns()
{
    Window w;
    QPEMenuBar *first = w.addMenuBar("First");
    w.show();
    QPEMenuBar *second = w.addMenuBar("Second");
    second->hide();
    QTest::qWait(1);
    QVERIFY(first->isVisible() && !second->isVisible());
    QCOMPARE(first->geometry(), w.bar->host()->rect());
    first->hide();
    second->show();
    QTRY_COMPARE(second->geometry(), w.bar->host()->rect());
    QVERIFY(!first->isVisible() && second->isVisible());
}

void TestQPEToolBar::aMenuBarMayGoWithoutTraces()
{
    Window w;
    const qsizetype actions = w.bar->actions().size();
    QPEMenuBar *first = w.addMenuBar("First");
    QPEMenuBar *second = w.addMenuBar("Second");
    w.show();
    for (QPEMenuBar *menuBar : {first, second}) {
        menuBar->hide();
        delete menuBar;
    }
    QTest::qWait(1);
    QCOMPARE(w.bar->actions().size(), actions);
    QVERIFY(w.bar->host()->findChildren<QWidget *>().isEmpty());
    const QPEMenuBar *third = w.addMenuBar("Third");
    QTRY_COMPARE(third->geometry(), w.bar->host()->rect());
}

void TestQPEToolBar::f10OpensTheMenusOfTheVisibleBar()
{
    Window w;
    w.addMenuBar("Hidden")->hide();
    QPEMenuBar *bar = w.addMenuBar("File");
    QMenu *edit = bar->addMenu(QStringLiteral("Edit"));
    edit->addAction(QStringLiteral("Cut"));
    QAction *copy = edit->addAction(QStringLiteral("Copy"));
    bool isChosen = false;
    connect(copy, &QAction::triggered, copy, [&isChosen] {
        isChosen = true;
    });
    w.show();
    w.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&w.window));
    QTest::keyClick(&w.window, Qt::Key_F10);
    const auto open = [] {
        const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        return menu != nullptr ? menu->title() : QString();
    };
    QCOMPARE(open(), QStringLiteral("File"));
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down}) { // from the first entry
        QTest::keyClick(QApplication::activePopupWidget(), key);
    }
    QCOMPARE(open(), QStringLiteral("Edit"));
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
    QVERIFY(isChosen);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestQPEToolBar::menuBarsDieWithTheBar()
{
    auto w = std::make_unique<Window>();
    const QPointer<QPEMenuBar> menuBar(w->addMenuBar("File"));
    w->show();
    delete w->bar;
    QVERIFY(menuBar.isNull());
    w.reset();
}

LUMI_TEST(TestQPEToolBar)
#include "TestQPEToolBar.moc"
