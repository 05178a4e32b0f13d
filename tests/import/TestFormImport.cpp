// SPDX-License-Identifier: MIT
// The import form without a running import: layout, card buttons, labels, menu, names.
#include "app/common/BusyScope.h"
#include "import/importTexts.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEMenuBar.h"
#include "tests/import/ImportFixture.h"
#include "tests/support/RequestLog.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QApplication>
#include <QBoxLayout>
#include <QMetaMethod>
#include <QTest>

using lumi::test::BrowserWorld;
using lumi::test::ImportFixture;

namespace {

QColor middleOf(MyImageButton *button)
{
    return button->grab().toImage().pixelColor(120, 56);
}

} // namespace

class TestFormImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<ImportFixture>(); }

    void cleanup() { m_form.reset(); }

    void isFormThreeWithTheProgramsCaption();
    void everythingHasItsPlace();
    void theColumnLeadsBackOnly();
    void buttonsFollowTheCards_data();
    void buttonsFollowTheCards();
    void theFocusStartsOnACard_data();
    void theFocusStartsOnACard();
    void aPressedButtonLooksPressed();
    void aMissingCardCantBePressed();
    void aPulledCardIsGrayAtOnce();
    void aCardThatComesStartsNothing();
    void cardNewsWaitForABusyForm();
    void labelsShowTheFreeSpace();
    void labelsAreRefreshed();
    void theRefreshComesEveryFiveSeconds();
    void labelsGrowWithTheirTexts();
    void aFailedQueryIsRed();
    void theMenuHasTwoEntries();
    void menuEntriesOpenTheirDialogs();
    void theMenuBarIsHiddenUntilTheStart();
    void namesAreTheGivenOnes();
    void unusedSlotsDoNothing();

private:
    [[nodiscard]] QTimer *refreshTimer() const
    {
        return m_form->form->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    }

    std::unique_ptr<ImportFixture> m_form;
};

void TestFormImport::isFormThreeWithTheProgramsCaption()
{
    m_form->window.setWindowTitle(QString());
    m_form->start();
    QCOMPARE(m_form->form->formId(), 3);
    QCOMPARE(m_form->window.windowTitle(), QStringLiteral("Lumi Vault"));
    QVERIFY(m_form->form->isVisible());
    QVERIFY(m_form->form->canClose());
}

void TestFormImport::everythingHasItsPlace()
{
    m_form->start();
    QVERIFY(m_form->cf != nullptr);
    QVERIFY(m_form->sd != nullptr);
    QVERIFY(m_form->memory != nullptr);
    QVERIFY(m_form->capacity != nullptr);
    QCOMPARE(m_form->cf->geometry(), QRect(26, 117, 244, 112));
    QCOMPARE(m_form->sd->geometry(), QRect(284, 117, 244, 112));
    QWidget *side = m_form->cf->parentWidget();
    QCOMPARE(side->x(), 72);
    QCOMPARE(side->y(), 0);
    QCOMPARE(side->size(), QSize(m_form->form->width() - 72, m_form->form->height()));
    const auto *row = qobject_cast<QBoxLayout *>(m_form->form->layout());
    QCOMPARE(row->direction(), QBoxLayout::LeftToRight);
    QCOMPARE(row->contentsMargins(), QMargins());
    QCOMPARE(row->stretch(0), 0);
    QCOMPARE(row->stretch(1), 1);
    // Nothing is cut off, and nothing overlaps.
    const QList<QWidget *> parts{m_form->cf, m_form->sd, m_form->memory, m_form->capacity};
    for (const QWidget *part : parts) {
        QVERIFY(part->isVisible());
        QVERIFY(side->rect().contains(part->geometry()));
        for (const QWidget *other : parts) {
            QVERIFY(part == other || !part->geometry().intersects(other->geometry()));
        }
    }
    for (const QLabel *label : {m_form->memory, m_form->capacity}) {
        QCOMPARE(label->palette().color(QPalette::Window), QColor(204, 204, 204));
        QVERIFY(label->autoFillBackground());
    }
    QCOMPARE(side->grab().toImage().pixelColor(2, 2), QColor(204, 204, 204));
}

void TestFormImport::theColumnLeadsBackOnly()
{
    m_form->start();
    auto *column = m_form->form->findChild<MyLeftWidget *>();
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(column->button(i)->isVisible(), i == 4);
    }
    const lumi::test::RequestLog log(&m_form->window);
    QTest::mouseClick(column->button(4), Qt::LeftButton);
    QVERIFY(log.forms.isEmpty()); // posted, not sent
    QCoreApplication::processEvents();
    QCOMPARE(log.forms, QList<int>{0});
    QCOMPARE(log.nullTexts, QList<bool>{true});
    for (const int id : {0, 1, 2, 3, 5, -1}) {
        m_form->form->btn_leftWidget_clicked(id);
    }
    QCoreApplication::processEvents();
    QCOMPARE(log.forms.size(), qsizetype(1));
}

void TestFormImport::buttonsFollowTheCards_data()
{
    lumi::test::columns<bool, bool>();
    QTest::newRow("no card") << false << false;
    QTest::newRow("CF card") << true << false;
    QTest::newRow("SD card") << false << true;
    QTest::newRow("both cards") << true << true;
}

void TestFormImport::buttonsFollowTheCards()
{
    const auto [cf, sd] = lumi::test::row<bool, bool>();
    if (cf) {
        m_form->insertCard(Slot::CF, {});
    }
    if (sd) {
        m_form->insertCard(Slot::SD, {});
    }
    m_form->start();
    QCOMPARE(m_form->cf->isEnabled(), cf);
    QCOMPARE(m_form->sd->isEnabled(), sd);
    const auto colour = [](const char *name) {
        return BrowserWorld::cardButtonColour(QLatin1String(name));
    };
    QCOMPARE(middleOf(m_form->cf), colour(cf ? "copy_cf" : "copy_cf_gray"));
    QCOMPARE(middleOf(m_form->sd), colour(sd ? "copy_sd" : "copy_sd_gray"));
}

void TestFormImport::theFocusStartsOnACard_data()
{
    lumi::test::columns<bool, bool, QString>();
    QTest::newRow("no card, no focus") << false << false << QString();
    QTest::newRow("the only card: CF") << true << false << QStringLiteral("cf");
    QTest::newRow("the only card: SD") << false << true << QStringLiteral("sd");
    QTest::newRow("both cards: SD") << true << true << QStringLiteral("sd");
}

void TestFormImport::theFocusStartsOnACard()
{
    const auto [cf, sd, focus] = lumi::test::row<bool, bool, QString>();
    if (cf) {
        m_form->insertCard(Slot::CF, {});
    }
    if (sd) {
        m_form->insertCard(Slot::SD, {});
    }
    m_form->start();
    QCOMPARE(m_form->cf->hasFocus(), focus == QLatin1String("cf"));
    QCOMPARE(m_form->sd->hasFocus(), focus == QLatin1String("sd"));
    if (focus.isEmpty()) {
        QVERIFY(qobject_cast<MyImageButton *>(QApplication::focusWidget()) == nullptr);
    }
}

void TestFormImport::aPressedButtonLooksPressed()
{
    m_form->insertCard(Slot::CF, {});
    m_form->insertCard(Slot::SD, {});
    m_form->start();
    for (MyImageButton *button : {m_form->cf, m_form->sd}) {
        QTest::mousePress(button, Qt::LeftButton);
        QCOMPARE(middleOf(button),
                 BrowserWorld::cardButtonColour(button == m_form->cf
                                                    ? QStringLiteral("copy_cf_push")
                                                    : QStringLiteral("copy_sd_push")));
        // Released outside the button: no import.
        QTest::mouseMove(button, QPoint(300, 300));
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(300, 300));
    }
    QVERIFY(m_form->driver.seen.isEmpty());
}

void TestFormImport::aMissingCardCantBePressed()
{
    m_form->start();
    for (MyImageButton *button : {m_form->cf, m_form->sd}) {
        button->setFocus();
        QVERIFY(!button->hasFocus());
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(button, Qt::Key_Return);
    }
    QVERIFY(m_form->driver.seen.isEmpty());
}

void TestFormImport::aPulledCardIsGrayAtOnce()
{
    m_form->insertCard(Slot::CF, {});
    m_form->insertCard(Slot::SD, {});
    m_form->start();
    m_form->world.machine->removeCard(Slot::SD);
    QVERIFY(m_form->sd->isEnabled()); // no message was sent yet
    m_form->tellCardChange();
    QVERIFY(!m_form->sd->isEnabled());
    QVERIFY(m_form->cf->isEnabled());
    QCOMPARE(middleOf(m_form->sd), BrowserWorld::cardButtonColour(QStringLiteral("copy_sd_gray")));
}

void TestFormImport::aCardThatComesStartsNothing()
{
    m_form->start();
    m_form->insertCard(Slot::CF, {QStringLiteral("a.jpg")});
    m_form->tellCardChange();
    QVERIFY(m_form->cf->isEnabled());
    QVERIFY(m_form->driver.seen.isEmpty());
    QVERIFY(m_form->folders().isEmpty());
}

void TestFormImport::cardNewsWaitForABusyForm()
{
    m_form->insertCard(Slot::CF, {});
    m_form->start();
    {
        const lumi::BusyScope busy(m_form->form.get());
        m_form->world.machine->removeCard(Slot::CF);
        m_form->tellCardChange();
        QVERIFY(m_form->cf->isEnabled());
    }
    QCoreApplication::processEvents();
    QVERIFY(!m_form->cf->isEnabled());
}

void TestFormImport::labelsShowTheFreeSpace()
{
    m_form->setFreeKB(1234568);
    m_form->start();
    QCOMPARE(m_form->memory->text(), QStringLiteral("Available Memory          1,234,568KB"));
    QCOMPARE(m_form->capacity->text(),
             QStringLiteral("The quantity on the card that can be imported:  \n"
                            "    64MB Card            18      128MB Card             9   \n"
                            "   256MB Card             4      512MB Card             2   "));
    QCOMPARE(m_form->memory->palette().color(QPalette::WindowText), QColor(0, 0, 0));
}

void TestFormImport::labelsAreRefreshed()
{
    m_form->setFreeKB(10240);
    m_form->start();
    QCOMPARE(m_form->memory->text(), lumi::memoryText(10240));
    QCOMPARE(m_form->memory->palette().color(QPalette::WindowText), QColor(0, 0, 0));
    m_form->setFreeKB(10238);
    refreshTimer()->setInterval(1);
    QTRY_COMPARE(m_form->memory->text(), lumi::memoryText(10238));
    QCOMPARE(m_form->memory->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    QCOMPARE(m_form->capacity->text(), lumi::capacityText(10238));
    m_form->setFreeKB(655360);
    QTRY_COMPARE(m_form->memory->text(), lumi::memoryText(655360));
    QCOMPARE(m_form->capacity->text(), lumi::capacityText(655360));
    m_form->setFreeKB(0);
    m_form->form->repeatTimer();
    QCOMPARE(m_form->capacity->text(), lumi::capacityText(0));
    m_form->setFreeKB(20480);
    m_form->form->repeatTimer();
    QCOMPARE(m_form->memory->palette().color(QPalette::WindowText), QColor(0, 0, 0));
}

void TestFormImport::theRefreshComesEveryFiveSeconds()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")});
    m_form->start();
    m_form->setFreeKB(40000);
    const QTimer *timer = refreshTimer();
    const auto isTicking = [timer] {
        return timer->isActive() && !timer->isSingleShot() && timer->interval() == 5000;
    };
    QVERIFY(isTicking());
    bool wasActive = true;
    m_form->driver.expect(QStringLiteral("Done"), [timer, &wasActive](QDialog *dialog) {
        wasActive = timer->isActive();
        dialog->accept();
    });
    m_form->form->menu_import_sd();
    // Not refreshed during a run, but at its end.
    QVERIFY(!wasActive);
    QVERIFY(isTicking());
    QCOMPARE(m_form->memory->text(), lumi::memoryText(40000));
}

void TestFormImport::labelsGrowWithTheirTexts()
{
    m_form->setFreeKB(0);
    m_form->start();
    const QSize before = m_form->memory->size();
    m_form->setFreeKB(2000000000);
    m_form->form->repeatTimer();
    for (const QLabel *label : {m_form->memory, m_form->capacity}) {
        QVERIFY(label->width() >= label->sizeHint().width());
        QVERIFY(label->height() >= label->sizeHint().height());
        QVERIFY(label->parentWidget()->rect().contains(label->geometry()));
    }
    QVERIFY(m_form->memory->width() > before.width());
}

void TestFormImport::aFailedQueryIsRed()
{
    m_form->world.machine->diskAt = [](const QByteArray &) {
        return DiskFigures();
    };
    m_form->start();
    QVERIFY(m_form->memory->text().endsWith(QStringLiteral(" -1KB")));
    QCOMPARE(m_form->memory->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    QCOMPARE(m_form->capacity->text(), lumi::capacityText(0));
}

void TestFormImport::theMenuHasTwoEntries()
{
    m_form->start();
    const auto *bar = m_form->toolBar.findChild<QPEMenuBar *>();
    QCOMPARE(bar->actions().size(), qsizetype(1));
    auto *menu = qobject_cast<QPopupMenu *>(bar->actions().constFirst()->menu());
    QCOMPARE(menu->title(), QStringLiteral("About"));
    QStringList texts;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        texts.append(action->text());
    }
    QCOMPARE(texts, (QStringList{QStringLiteral("Help"), QStringLiteral("Version")}));
    // No entry starts an import.
    m_form->form->menuGrayout();
    QVERIFY(menu->findItem(0) == nullptr);
    QVERIFY(menu->findItem(1) == nullptr);
    QVERIFY(actions.constFirst()->isEnabled() && actions.constLast()->isEnabled());
}

void TestFormImport::menuEntriesOpenTheirDialogs()
{
    m_form->start();
    auto *bar = m_form->toolBar.findChild<QPEMenuBar *>();
    const auto actions = bar->actions().constFirst()->menu()->actions();
    bool wasBusy = false;
    m_form->driver.expect(QStringLiteral("Help"), [this, &wasBusy](QDialog *dialog) {
        wasBusy = m_form->form->isBusy();
        dialog->reject();
    });
    actions.constFirst()->trigger();
    QVERIFY(wasBusy);
    QCOMPARE(m_form->driver.seen.size(), qsizetype(1));
    actions.constLast()->trigger();
    QCOMPARE(m_form->driver.seen.size(), qsizetype(2));
    QCOMPARE(m_form->driver.seen.constLast().className, QStringLiteral("HkAboutDialog"));
    QVERIFY(!m_form->form->isBusy());
}

void TestFormImport::theMenuBarIsHiddenUntilTheStart()
{
    m_form->form = std::make_unique<FormImport>(&m_form->window, &m_form->toolBar);
    m_form->window.setCentralWidget(m_form->form.get());
    m_form->window.show();
    auto *bar = m_form->toolBar.findChild<QPEMenuBar *>();
    QVERIFY(bar->isHidden());
    QVERIFY(m_form->form->isHidden());
    m_form->form->formStarted();
    QVERIFY(bar->isVisible());
    QVERIFY(m_form->form->isVisible());
    m_form->form.reset();
    QVERIFY(m_form->toolBar.findChildren<QPEMenuBar *>().isEmpty());
}

void TestFormImport::namesAreTheGivenOnes()
{
    QList<QByteArray> found;
    const QMetaObject &meta = FormImport::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        found.append(meta.method(i).methodSignature());
    }
    QCOMPARE(
        found,
        (QList<QByteArray>{"btn_leftWidget_clicked(int)", "btn_cf_clicked()", "btn_sd_clicked()",
                           "btn_main_clicked()", "menu_disp_Top()", "menu_import_cf()",
                           "menu_import_sd()", "menu_option_help()", "menu_option_version()",
                           "menuGrayout()", "searchCancel()", "copyCancel()", "repeatTimer()"}));
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("FormBase"));
}

void TestFormImport::unusedSlotsDoNothing()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")});
    m_form->start();
    const QImage before = m_form->form->grab().toImage();
    m_form->form->btn_main_clicked();
    m_form->form->menuGrayout();
    QCoreApplication::processEvents();
    QCOMPARE(m_form->form->grab().toImage(), before);
    QVERIFY(m_form->driver.seen.isEmpty());
}

LUMI_TEST(TestFormImport)
#include "TestFormImport.moc"
