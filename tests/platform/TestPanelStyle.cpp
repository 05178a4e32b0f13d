// SPDX-License-Identifier: MIT
#include "platform/screen/PanelStyle.h"
#include "platform/screen/panel.h"
#include "tests/support/TestMain.h"
#include "tests/support/contrast.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include <functional>

using lumi::PanelStyle;

Q_DECLARE_METATYPE(std::function<QWidget *()>)

class TestPanelStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheApplicationsStyle();
    void whatIsChosenIsOrange();
    void aDarkDesktopChangesNoColour();
    void textsCanBeRead();
    void theFocusCanBeSeen_data();
    void theFocusCanBeSeen();
    void aToolBarLooksLikeItsMenuBar();
    void entriesOfMenusAreHighEnough();
    void separatorsTakeNoMoreRoomThanUsual();
    void tabsAreHighEnough();
    void buttonsOfBoxesAreHighEnough();
    void otherButtonsKeepTheirHeight();
};

void TestPanelStyle::isTheApplicationsStyle()
{
    QVERIFY(qobject_cast<PanelStyle *>(QApplication::style()) != nullptr);
}

void TestPanelStyle::whatIsChosenIsOrange()
{
    const QPalette palette = QApplication::palette();
    QCOMPARE(palette.color(QPalette::Highlight), QColor(0xE8, 0x94, 0x5A));
    QCOMPARE(palette.color(QPalette::HighlightedText), QColor(Qt::black));
}

void TestPanelStyle::aDarkDesktopChangesNoColour()
{
    const QPalette before = QApplication::palette();
    QPalette dark(Qt::black);
    QApplication::style()->polish(dark);
    QCOMPARE(dark, before);
    QVERIFY(before.color(QPalette::Window).lightness() > 200);
    QVERIFY(before.color(QPalette::Base).lightness() > 200);
}

void TestPanelStyle::textsCanBeRead()
{
    const QPalette palette = QApplication::palette();
    const auto contrast = [&palette](QPalette::ColorRole text, QPalette::ColorRole ground) {
        return lumi::test::contrast(palette.color(text), palette.color(ground));
    };
    QVERIFY(contrast(QPalette::WindowText, QPalette::Window) >= 4.5);
    QVERIFY(contrast(QPalette::Text, QPalette::Base) >= 4.5);
    QVERIFY(contrast(QPalette::ButtonText, QPalette::Button) >= 4.5);
    QVERIFY(contrast(QPalette::HighlightedText, QPalette::Highlight) >= 4.5);
}

void TestPanelStyle::theFocusCanBeSeen_data()
{
    QTest::addColumn<std::function<QWidget *()>>("make");
    QTest::newRow("push button") << std::function<QWidget *()>([] {
        return new QPushButton;
    });
    QTest::newRow("list of choices") << std::function<QWidget *()>([] {
        return new QComboBox;
    });
    QTest::newRow("tool button") << std::function<QWidget *()>([] {
        auto *button = new QToolButton;
        button->setFocusPolicy(Qt::TabFocus);
        return button;
    });
    QTest::newRow("tab") << std::function<QWidget *()>([] {
        auto *bar = new QTabBar;
        bar->addTab(QStringLiteral("A wide tab"));
        return bar;
    });
}

/// Most pixels of the frame that the Tab key brings differ from those below it by the contrast that
/// marks of the focus need.
void TestPanelStyle::theFocusCanBeSeen()
{
    QFETCH(std::function<QWidget *()>, make);
    QWidget window;
    auto *layout = new QHBoxLayout(&window);
    auto *other = new QPushButton(&window);
    auto *widget = make();
    widget->setMinimumSize(100, lumi::kFingerSize);
    layout->addWidget(other);
    layout->addWidget(widget);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    const QImage before = widget->grab().toImage();
    QTest::keyClick(other, Qt::Key_Tab);
    QVERIFY(widget->hasFocus());
    const QImage after = widget->grab().toImage();
    int marked = 0;
    for (int x = 0; x < after.width(); ++x) {
        for (int y = 0; y < after.height(); ++y) {
            marked += lumi::test::contrast(before.pixelColor(x, y), after.pixelColor(x, y)) >= 3;
        }
    }
    QVERIFY(marked >= after.width());
}

void TestPanelStyle::aToolBarLooksLikeItsMenuBar()
{
    QMainWindow window;
    QToolBar bar(&window);
    bar.setMovable(false);
    bar.resize(100, lumi::kFingerSize);
    QMenuBar menuBar;
    menuBar.setNativeMenuBar(false);
    menuBar.resize(bar.size());
    const QImage image = bar.grab().toImage();
    const QImage model = menuBar.grab().toImage();
    QCOMPARE(image.size(), model.size());
    for (int y = 0; y < model.height(); ++y) {
        QCOMPARE(image.pixelColor(0, y), model.pixelColor(0, y));
        QCOMPARE(image.pixelColor(50, y), model.pixelColor(50, y));
    }
}

void TestPanelStyle::entriesOfMenusAreHighEnough()
{
    QMenu menu;
    QAction *entry = menu.addAction(QStringLiteral("Entry"));
    QAction *submenu = menu.addMenu(QStringLiteral("More"))->menuAction();
    menu.ensurePolished();
    QVERIFY(menu.actionGeometry(entry).height() >= lumi::kFingerSize);
    QVERIFY(menu.actionGeometry(submenu).height() >= lumi::kFingerSize);
    QMenuBar bar;
    bar.addMenu(&menu);
    QVERIFY(bar.sizeHint().height() >= lumi::kFingerSize);
}

void TestPanelStyle::separatorsTakeNoMoreRoomThanUsual()
{
    QMenu menu;
    menu.addAction(QStringLiteral("Entry"));
    QAction *separator = menu.addSeparator();
    menu.addAction(QStringLiteral("Other"));
    menu.ensurePolished();
    QVERIFY(menu.actionGeometry(separator).height() < lumi::kFingerSize / 2);
}

void TestPanelStyle::tabsAreHighEnough()
{
    QTabBar bar;
    bar.addTab(QStringLiteral("One"));
    bar.addTab(QStringLiteral("Other"));
    QVERIFY(bar.tabRect(0).height() >= lumi::kFingerSize);
    QVERIFY(bar.tabRect(1).height() >= lumi::kFingerSize);
}

void TestPanelStyle::buttonsOfBoxesAreHighEnough()
{
    QMessageBox box(QMessageBox::NoIcon, QString(), QStringLiteral("Text"),
                    QMessageBox::Yes | QMessageBox::No);
    box.show();
    for (const QAbstractButton *button : box.buttons()) {
        QVERIFY(button->height() >= lumi::kFingerSize);
    }
    QCOMPARE(box.buttons().size(), 2);
}

void TestPanelStyle::otherButtonsKeepTheirHeight()
{
    const QPushButton button(QStringLiteral("Cancel"));
    QVERIFY(button.sizeHint().height() < lumi::kFingerSize);
}

LUMI_TEST(TestPanelStyle)
#include "TestPanelStyle.moc"
