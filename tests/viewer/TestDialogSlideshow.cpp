// SPDX-License-Identifier: MIT
#include "app/common/Settings.h"
#include "platform/Config.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/viewer/Leftovers.h"
#include "viewer/DialogSlideshow.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <memory>

using lumi::Settings;

namespace {

constexpr const char *kNames[] = {"comboOperation", "comboOrder", "comboDelay", "comboLoop"};

QComboBox *combo(const DialogSlideshow &dialog, int number)
{
    return dialog.findChild<QComboBox *>(QLatin1String(kNames[number]));
}

QStringList rows(const QComboBox *combo)
{
    QStringList result;
    for (int i = 0; i < combo->count(); ++i) {
        result.append(combo->itemText(i));
    }
    return result;
}

/// As a user does.
void choose(QComboBox *combo, int row)
{
    combo->setCurrentIndex(row);
    Q_EMIT combo->activated(row);
}

QList<int> stored()
{
    return {Settings::operation(), Settings::dispOrder(), Settings::dispTime(),
            Settings::dispCount()};
}

void store(const QList<int> &rows)
{
    Settings::setOperation(rows.at(0));
    Settings::setDispOrder(rows.at(1));
    Settings::setDispTime(rows.at(2));
    Settings::setDispCount(rows.at(3));
}

QMessageBox *openBox()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

/// Answers the next box with a button, or with Escape if there is none, and records its text.
struct Answer
{
    explicit Answer(QMessageBox::StandardButton button)
    {
        QTimer::singleShot(0, [this, button] {
            QMessageBox *box = openBox();
            if (box != nullptr) {
                title = box->windowTitle();
                text = box->text();
                buttons = box->standardButtons();
                if (button == QMessageBox::NoButton) {
                    QTest::keyClick(box, Qt::Key_Escape);
                } else {
                    box->button(button)->click();
                }
            }
        });
    }

    QString title;
    QString text;
    QMessageBox::StandardButtons buttons;
};

} // namespace

class TestDialogSlideshow : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { store({0, 0, 1, 1}); }

    void cleanup() { Machine::install(nullptr); }

    void listsHaveTheirRows_data();
    void listsHaveTheirRows();
    void labelsAreAtTheLeft();
    void unsetSettingsAreTheDefaults();
    void showsWhatIsStored();
    void storedRowsOutOfRangeAreClamped_data();
    void storedRowsOutOfRangeAreClamped();
    void theOtherListsAreDisabledForManual_data();
    void theOtherListsAreDisabledForManual();
    void okStoresAllFour();
    void okStoresDisabledListsToo();
    void cancelStoresNothing();
    void leavingWithoutAChangeAsksNothing_data();
    void leavingWithoutAChangeAsksNothing();
    void leavingAChangeAsks_data();
    void leavingAChangeAsks();
    void anyListCountsAsAChange_data();
    void anyListCountsAsAChange();
    void closingTheWindowAsksToo();
    void returnKeyAccepts();
    void isModalAndFillsTheScreen();
    void targetsAreLargeEnoughForAFinger();
    void leavesNothingBehind();
    void slotsHaveTheirNames();
};

void TestDialogSlideshow::listsHaveTheirRows_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("transition") << 0 << "Auto,Manual";
    QTest::newRow("order") << 1 << "Default,Random";
    QTest::newRow("delay") << 2
                           << "2 secs,3 secs,4 secs,5 secs,6 secs,7 secs,8 secs,9 secs,10 secs";
    QTest::newRow("loops") << 3 << "1x,2x,3x,4x,5x,6x,7x,8x,9x,10x,Forever";
}

void TestDialogSlideshow::listsHaveTheirRows()
{
    const auto [number, expected] = lumi::test::row<int, QString>();
    const DialogSlideshow dialog;
    QCOMPARE(rows(combo(dialog, number)).join(QLatin1Char(',')), expected);
}

void TestDialogSlideshow::labelsAreAtTheLeft()
{
    const DialogSlideshow dialog;
    const QStringList texts{QStringLiteral("Transition"), QStringLiteral("Order"),
                            QStringLiteral("Delay"), QStringLiteral("Loop Count")};
    const auto *grid = qobject_cast<QGridLayout *>(dialog.layout());
    QVERIFY(grid != nullptr);
    for (int i = 0; i < 4; ++i) {
        const auto *label = qobject_cast<QLabel *>(grid->itemAtPosition(i, 0)->widget());
        QVERIFY(label != nullptr);
        QCOMPARE(label->text(), texts.at(i));
        QCOMPARE(grid->itemAtPosition(i, 1)->widget(), combo(dialog, i));
    }
}

void TestDialogSlideshow::unsetSettingsAreTheDefaults()
{
    QVERIFY(QFile::remove(Machine::instance().settingsFile(QStringLiteral("lumivault"))));
    const DialogSlideshow dialog;
    QCOMPARE(combo(dialog, 0)->currentText(), QStringLiteral("Auto"));
    QCOMPARE(combo(dialog, 1)->currentText(), QStringLiteral("Default"));
    QCOMPARE(combo(dialog, 2)->currentText(), QStringLiteral("3 secs"));
    QCOMPARE(combo(dialog, 3)->currentText(), QStringLiteral("2x"));
    QCOMPARE(combo(dialog, 2)->currentIndex(), 1);
    QCOMPARE(combo(dialog, 3)->currentIndex(), 1);
}

void TestDialogSlideshow::showsWhatIsStored()
{
    store({1, 1, 8, 10});
    const DialogSlideshow dialog;
    QCOMPARE(combo(dialog, 0)->currentText(), QStringLiteral("Manual"));
    QCOMPARE(combo(dialog, 1)->currentText(), QStringLiteral("Random"));
    QCOMPARE(combo(dialog, 2)->currentText(), QStringLiteral("10 secs"));
    QCOMPARE(combo(dialog, 3)->currentText(), QStringLiteral("Forever"));
}

void TestDialogSlideshow::storedRowsOutOfRangeAreClamped_data()
{
    lumi::test::columns<int, QList<int>>();
    QTest::newRow("too large") << 99 << QList<int>{1, 1, 8, 10};
    QTest::newRow("negative") << -3 << QList<int>{0, 0, 0, 0};
}

void TestDialogSlideshow::storedRowsOutOfRangeAreClamped()
{
    const auto [value, rows] = lumi::test::row<int, QList<int>>();
    store({value, value, value, value});
    const DialogSlideshow dialog;
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(combo(dialog, i)->currentIndex(), rows.at(i));
    }
}

void TestDialogSlideshow::theOtherListsAreDisabledForManual_data()
{
    QTest::addColumn<int>("atFirst");
    QTest::newRow("automatic at first") << 0;
    QTest::newRow("by hand at first") << 1;
}

void TestDialogSlideshow::theOtherListsAreDisabledForManual()
{
    QFETCH(int, atFirst);
    Settings::setOperation(atFirst);
    const DialogSlideshow dialog;
    const auto enabled = [&dialog] {
        QList<bool> result;
        for (int i = 0; i < 4; ++i) {
            result.append(combo(dialog, i)->isEnabled());
        }
        return result;
    };
    const QList<bool> all{true, true, true, true};
    const QList<bool> transitionOnly{true, false, false, false};
    QCOMPARE(enabled(), atFirst == 0 ? all : transitionOnly);
    choose(combo(dialog, 0), 1 - atFirst);
    QCOMPARE(enabled(), atFirst == 0 ? transitionOnly : all);
    choose(combo(dialog, 0), atFirst);
    QCOMPARE(enabled(), atFirst == 0 ? all : transitionOnly);
}

void TestDialogSlideshow::okStoresAllFour()
{
    DialogSlideshow dialog;
    choose(combo(dialog, 0), 0);
    choose(combo(dialog, 1), 1);
    choose(combo(dialog, 2), 5);
    choose(combo(dialog, 3), 10);
    QTimer::singleShot(0, &dialog, [&dialog] {
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
    });
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(stored(), (QList<int>{0, 1, 5, 10}));
    // The order in the file is the order of writing.
    QVERIFY(QFile::remove(Machine::instance().settingsFile(QStringLiteral("lumivault"))));
    dialog.accept();
    QFile file(Machine::instance().settingsFile(QStringLiteral("lumivault")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    const QList<qsizetype> places{text.indexOf("Operation"), text.indexOf("DispOrder"),
                                  text.indexOf("DispTime"), text.indexOf("DispCount")};
    QVERIFY(places.first() >= 0);
    QVERIFY(std::is_sorted(places.begin(), places.end()));
}

void TestDialogSlideshow::okStoresDisabledListsToo()
{
    store({0, 1, 7, 4});
    DialogSlideshow dialog;
    choose(combo(dialog, 0), 1);
    QVERIFY(QFile::remove(Machine::instance().settingsFile(QStringLiteral("lumivault"))));
    dialog.accept();
    QCOMPARE(stored(), (QList<int>{1, 1, 7, 4}));
}

void TestDialogSlideshow::cancelStoresNothing()
{
    DialogSlideshow dialog;
    choose(combo(dialog, 2), 8);
    const Answer answer(QMessageBox::Yes);
    dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(stored(), (QList<int>{0, 0, 1, 1}));
}

void TestDialogSlideshow::leavingWithoutAChangeAsksNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Cancel") << 0;
    QTest::newRow("Escape") << 1;
    QTest::newRow("the window is closed") << 2;
}

void TestDialogSlideshow::leavingWithoutAChangeAsksNothing()
{
    QFETCH(int, way);
    DialogSlideshow dialog;
    // A list that was set by the program was not used by the user.
    combo(dialog, 2)->setCurrentIndex(4);
    bool asked = false;
    QTimer::singleShot(0, &dialog, [&] {
        if (way == 0) {
            dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel)->click();
        } else if (way == 1) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
        } else {
            dialog.close();
        }
    });
    QTimer::singleShot(0, [&asked] {
        asked = openBox() != nullptr;
    });
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCoreApplication::processEvents();
    QVERIFY(!asked);
}

void TestDialogSlideshow::leavingAChangeAsks_data()
{
    lumi::test::columns<int, bool>();
    QTest::newRow("Yes leaves") << int(QMessageBox::Yes) << false;
    QTest::newRow("No stays") << int(QMessageBox::No) << true;
    QTest::newRow("Escape stays") << int(QMessageBox::NoButton) << true;
}

void TestDialogSlideshow::leavingAChangeAsks()
{
    const auto [button, stays] = lumi::test::row<int, bool>();
    DialogSlideshow dialog;
    choose(combo(dialog, 3), 2);
    const Answer answer{QMessageBox::StandardButton(button)};
    dialog.reject();
    QCOMPARE(dialog.isVisible(), stays);
    QCOMPARE(answer.title, QStringLiteral("Edit cancelled"));
    QCOMPARE(answer.text,
             QStringLiteral("You are about to cancel.\nYour changes will not be saved. Continue?"));
    QCOMPARE(answer.buttons, QMessageBox::Yes | QMessageBox::No);
}

void TestDialogSlideshow::anyListCountsAsAChange_data()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < 4; ++i) {
        QTest::newRow(kNames[i]) << i;
    }
}

void TestDialogSlideshow::anyListCountsAsAChange()
{
    QFETCH(int, number);
    DialogSlideshow dialog;
    // Even if the row is the current one.
    choose(combo(dialog, number), combo(dialog, number)->currentIndex());
    const Answer answer(QMessageBox::Yes);
    dialog.reject();
    QCOMPARE(answer.title, QStringLiteral("Edit cancelled"));
}

void TestDialogSlideshow::closingTheWindowAsksToo()
{
    DialogSlideshow dialog;
    choose(combo(dialog, 1), 1);
    {
        const Answer answer(QMessageBox::No);
        QVERIFY(!dialog.close());
        QCOMPARE(answer.title, QStringLiteral("Edit cancelled"));
    }
    QVERIFY(dialog.isVisible());
    const Answer answer(QMessageBox::Yes);
    QVERIFY(dialog.close());
    QVERIFY(!dialog.isVisible());
    QCOMPARE(answer.title, QStringLiteral("Edit cancelled"));
}

void TestDialogSlideshow::returnKeyAccepts()
{
    DialogSlideshow dialog;
    choose(combo(dialog, 2), 6);
    QTest::keyClick(&dialog, Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(Settings::dispTime(), 6);
}

void TestDialogSlideshow::isModalAndFillsTheScreen()
{
    const DialogSlideshow dialog(nullptr, "options");
    QCOMPARE(dialog.objectName(), QStringLiteral("options"));
    QVERIFY(dialog.isModal());
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.isMaximized());
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Slideshow Options"));
}

void TestDialogSlideshow::targetsAreLargeEnoughForAFinger()
{
    DialogSlideshow dialog;
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QRegion taken;
    const auto place = [&dialog](const QWidget *widget) {
        return QRect(widget->mapTo(&dialog, QPoint()), widget->size());
    };
    QList<QWidget *> targets;
    for (int i = 0; i < 4; ++i) {
        targets.append(combo(dialog, i));
    }
    const auto buttons = dialog.findChild<QDialogButtonBox *>()->buttons();
    QCOMPARE(buttons.size(), 2);
    for (QAbstractButton *button : buttons) {
        targets.append(button);
    }
    for (const QWidget *target : targets) {
        QVERIFY(target->height() >= 40);
        QVERIFY(dialog.rect().contains(place(target)));
        QVERIFY(!taken.intersects(place(target)));
        taken += place(target);
    }
    const auto labels = dialog.findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        QVERIFY(label->width() >= label->sizeHint().width());
    }
}

void TestDialogSlideshow::leavesNothingBehind()
{
    constexpr int kOpenings = 500;
    lumi::test::leavesNothing(kOpenings, [](int number) {
        DialogSlideshow dialog;
        const auto leave = number % 2 == 0 ? &QDialog::accept : &QDialog::reject;
        QTimer::singleShot(0, &dialog, leave);
        QCOMPARE(dialog.exec(), number % 2 == 0 ? int(QDialog::Accepted) : int(QDialog::Rejected));
    });
}

void TestDialogSlideshow::slotsHaveTheirNames()
{
    const QMetaObject &meta = DialogSlideshow::staticMetaObject;
    for (const char *slot :
         {"combo_operation_activated(int)", "combo_activated(int)", "accept()", "reject()"}) {
        QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    }
}

LUMI_TEST(TestDialogSlideshow)
#include "TestDialogSlideshow.moc"
