// SPDX-License-Identifier: MIT
#include "app/FormTop.h"
#include "app/MainWindow.h"
#include "app/common/BusyScope.h"
#include "app/common/FormEvent.h"
#include "app/common/FormId.h"
#include "app/common/shutDownFlag.h"
#include "files/FormFile.h"
#include "import/FormImport.h"
#include "platform/windows/QPEMenuBar.h"
#include "platform/windows/QPEToolBar.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/methodNames.h"
#include "views/FPVThumbnailView.h"
#include "views/pageArithmetic.h"
#include "widgets/MyImageButton.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <memory>
#include <type_traits>

namespace {

// No form overrides these functions.
template <typename Form>
constexpr bool kKeepsTheBase = std::is_same_v<decltype(&Form::canClose), bool (FormBase::*)()>
    &&std::is_same_v<decltype(&Form::acceptForm), void (FormBase::*)()>;
static_assert(kKeepsTheBase<FormTop> && kKeepsTheBase<FormFile> && kKeepsTheBase<FormImport>);

class OpenMainWindow : public MainWindow
{
public:
    using MainWindow::eventFilter;
    using MainWindow::replaceForm;
};

/// Counts the calls of accept().
class RecordingForm : public FormBase
{
public:
    RecordingForm(QWidget *parent, QPEToolBar *toolBar)
        : FormBase(parent, toolBar, lumi::FileForm)
    { }

    static FormBase *make(QWidget *window, QPEToolBar *toolBar)
    {
        return new RecordingForm(window, toolBar);
    }

    void acceptForm() override { ++accepts; }

    int accepts = 0;
};

/// Asks for the top menu and lets events in while it is being made.
class HastyForm : public RecordingForm
{
public:
    HastyForm(QWidget *parent, QPEToolBar *toolBar)
        : RecordingForm(parent, toolBar)
    {
        requestForm(lumi::TopForm, QString());
        QCoreApplication::processEvents();
        const auto *window = qobject_cast<MainWindow *>(parent);
        formMeanwhile = window->currentForm();
    }

    static FormBase *make(QWidget *window, QPEToolBar *toolBar)
    {
        return new HastyForm(window, toolBar);
    }

    const FormBase *formMeanwhile;
};

/// Records the captions that a window is given, in their order.
class CaptionRecorder : public QObject
{
public:
    QStringList captions;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::WindowTitleChange) {
            captions.append(qobject_cast<QWidget *>(watched)->windowTitle());
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void aSmallWindowScrollsTheForm();
    void startsWithTheTopMenu();
    void formIsShownByTheEventLoop();
    void switchIsPosted();
    void oldFormIsDeletedBetweenConstructionAndStart();
    void captionIsEmptiedFirst();
    void toolBarOutlivesTheForms();
    void theTopMenuComesBackWithTheFocus();
    void theBrowserScrollsOnANarrowScreen();
    void previousFormIsRemembered();
    void requestsRunInOrder();
    void unknownFormChangesNothing_data();
    void unknownFormChangesNothing();
    void otherEventsOfTheTypeAreIgnored();
    void requestWaitsForABusyForm();
    void waitingRequestsKeepTheirOrder();
    void requestWaitsOnWhenBusyAgain();
    void requestWaitsForAFormThatIsBeingMade();
    void onlyTheCurrentFormHearsOfCards();
    void closeIsRefusedWhileForbidden();
    void onlyAnIdleWindowIsClosed();
    void acceptedCloseStopsEvents();
    void afterTheCloseTheToolBarGetsNothing();
    void closeNeverDeletesTheWindow();
    void acceptCanBeCalledByName();
    void windowMayDieAtAnyTime();
    void slotsKeepTheirNames();

private:
    std::unique_ptr<OpenMainWindow> m_window;
};

void TestMainWindow::initTestCase()
{
    QVERIFY(QDir().mkpath(QDir::homePath() + QStringLiteral("/Documents/Photo_Files")));
    lumi::test::FakeMachine::install();
}

void TestMainWindow::init()
{
    m_window = std::make_unique<OpenMainWindow>();
    m_window->show();
    QCoreApplication::processEvents();
}

void TestMainWindow::cleanup()
{
    lumi::setShutDownFlag(false);
    m_window.reset();
    lumi::setShutDownFlag(false);
}

void TestMainWindow::cleanupTestCase()
{
    Machine::install(nullptr);
}

void TestMainWindow::startsWithTheTopMenu()
{
    const MainWindow window;
    QVERIFY(qobject_cast<FormTop *>(window.currentForm()) != nullptr);
    QCOMPARE(window.currentForm()->formId(), 0);
    QCOMPARE(window.currentForm()->previousForm(), -1);
    QCOMPARE(window.windowTitle(), QStringLiteral("Lumi Vault"));
    QCOMPARE(window.size(), QSize(640, 480));
    QVERIFY(!window.toolBar()->isMovable());
    QVERIFY(window.findChildren<QPEToolBar *>() == QList<QPEToolBar *>{window.toolBar()});
}

void TestMainWindow::aSmallWindowScrollsTheForm()
{
    m_window->show();
    QCoreApplication::processEvents();
    const auto *area = m_window->findChild<QScrollArea *>();
    QVERIFY(area != nullptr);
    QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(area->verticalScrollBar()->maximum(), 0);
    m_window->currentForm()->setMinimumSize(500, 400);
    m_window->resize(300, 300);
    QCOMPARE(m_window->size(), QSize(300, 300));
    QTRY_VERIFY(area->verticalScrollBar()->maximum() > 0);
    QVERIFY(area->horizontalScrollBar()->maximum() > 0);
    QCOMPARE(m_window->currentForm()->size(), QSize(500, 400));
}

void TestMainWindow::formIsShownByTheEventLoop()
{
    MainWindow window;
    window.show();
    QVERIFY(!window.currentForm()->isVisible());
    QCoreApplication::processEvents();
    QVERIFY(window.currentForm()->isVisible());
}

void TestMainWindow::switchIsPosted()
{
    const QPointer<FormBase> old(m_window->currentForm());
    old->requestForm(2, QStringLiteral("nobody reads this"));
    QVERIFY(old);
    QCOMPARE(m_window->currentForm(), old.data());
    QCoreApplication::processEvents();
    QVERIFY(!old);
    QVERIFY(qobject_cast<FormFile *>(m_window->currentForm()) != nullptr);
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Lumi Vault"));
    QTRY_VERIFY(m_window->currentForm()->isVisible());
}

void TestMainWindow::oldFormIsDeletedBetweenConstructionAndStart()
{
    m_window->changeForm(2, QString());
    QCoreApplication::processEvents();
    auto *old = qobject_cast<FormFile *>(m_window->currentForm());
    int deaths = 0;
    connect(old, &QObject::destroyed, this, [&] {
        ++deaths;
        const FormBase *next = m_window->currentForm();
        QVERIFY(next != old);        // the new one is there
        QCOMPARE(next->formId(), 0); // and built
        QVERIFY(next->isHidden());   // but not started
    });
    old->menu_disp_Top();
    QCOMPARE(deaths, 0); // not while its own slot runs
    QCoreApplication::processEvents();
    QCOMPARE(deaths, 1);
    QTRY_VERIFY(m_window->currentForm()->isVisible());
}

void TestMainWindow::captionIsEmptiedFirst()
{
    CaptionRecorder recorder;
    m_window->installEventFilter(&recorder);
    m_window->setWindowTitle(QStringLiteral("of a form"));
    recorder.captions.clear();
    m_window->changeForm(2, QString());
    QCOMPARE(recorder.captions, (QStringList{QString(), QStringLiteral("Lumi Vault")}));
}

void TestMainWindow::toolBarOutlivesTheForms()
{
    const QPointer<QPEToolBar> toolBar(m_window->toolBar());
    for (const int id : {2, 0, 2, 0}) {
        m_window->changeForm(id, QString());
        QCoreApplication::processEvents();
        QCOMPARE(m_window->toolBar(), toolBar.data());
        // The menu bar of the old form was deleted with it.
        const auto bars = toolBar->findChildren<QPEMenuBar *>();
        QCOMPARE(bars.size(), qsizetype(1));
        QVERIFY(bars.first()->isVisible());
    }
}

/// The focus is always on this button, whatever had it in the form before.
void TestMainWindow::theTopMenuComesBackWithTheFocus()
{
    m_window->activateWindow();
    m_window->changeForm(2, QString());
    QTRY_VERIFY(qobject_cast<FPVThumbnailView *>(QApplication::focusWidget()) != nullptr);
    m_window->changeForm(0, QString());
    QTRY_VERIFY(m_window->currentForm()->isVisible());
    const auto *button = qobject_cast<MyImageButton *>(QApplication::focusWidget());
    QVERIFY(button != nullptr);
    QCOMPARE(button->pos(), QPoint(34, 85));
}

void TestMainWindow::theBrowserScrollsOnANarrowScreen()
{
    const auto *bar = m_window->findChild<QScrollArea *>()->horizontalScrollBar();
    for (const int width : {640, 480}) {
        m_window->resize(width, 640);
        m_window->changeForm(lumi::FileForm, QString());
        QCoreApplication::processEvents();
        QCOMPARE(m_window->findChild<FPVThumbnailView *>()->width(), lumi::kPageWidth);
        QCOMPARE(bar->maximum() > 0, width < 640);
    }
}

void TestMainWindow::previousFormIsRemembered()
{
    m_window->changeForm(2, QString());
    QCOMPARE(m_window->currentForm()->previousForm(), 0);
    m_window->changeForm(2, QString());
    QCOMPARE(m_window->currentForm()->previousForm(), 2);
}

void TestMainWindow::requestsRunInOrder()
{
    FormBase *form = m_window->currentForm();
    form->requestForm(2, QString());
    form->requestForm(0, QString());
    QCoreApplication::processEvents();
    QCOMPARE(m_window->currentForm()->formId(), 0);
    QCOMPARE(m_window->currentForm()->previousForm(), 2);
    QTRY_VERIFY(m_window->currentForm()->isVisible());
}

void TestMainWindow::unknownFormChangesNothing_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("there is no form 1") << 1;
    QTest::newRow("there is no form 4") << 4;
    QTest::newRow("no form has a negative id") << -1;
}

void TestMainWindow::unknownFormChangesNothing()
{
    QFETCH(int, id);
    const QPointer<FormBase> old(m_window->currentForm());
    const QByteArray warning
        = "MainWindow::changeForm: no form has the id " + QByteArray::number(id);
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
    old->requestForm(id, QString());
    QCoreApplication::processEvents();
    QCOMPARE(m_window->currentForm(), old.data());
    QVERIFY(old->isVisible());
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Lumi Vault"));
}

void TestMainWindow::otherEventsOfTheTypeAreIgnored()
{
    const QPointer<FormBase> old(m_window->currentForm());
    QCoreApplication::postEvent(m_window.get(), new QEvent(FormEvent::kType));
    QCoreApplication::postEvent(m_window.get(), new FormStartEvent);
    QCoreApplication::postEvent(m_window.get(), new FormEvent(FormEvent::ChangeForm));
    QCoreApplication::processEvents();
    QCOMPARE(m_window->currentForm(), old.data());
}

void TestMainWindow::requestWaitsForABusyForm()
{
    const QPointer<FormBase> old(m_window->currentForm());
    {
        const lumi::BusyScope busy(old);
        old->requestForm(2, QString());
        QTest::qWait(20); // a nested event loop, as of a message box
        QVERIFY(old);
        QCOMPARE(m_window->currentForm(), old.data());
    }
    QVERIFY(old); // its slot has not returned yet
    QCoreApplication::processEvents();
    QVERIFY(!old);
    QCOMPARE(m_window->currentForm()->formId(), 2);
}

void TestMainWindow::waitingRequestsKeepTheirOrder()
{
    FormBase *form = m_window->currentForm();
    form->enterBusy();
    form->requestForm(2, QString());
    QCoreApplication::processEvents(); // this one waits until the form is no longer busy
    form->requestForm(0, QString());   // this one still in the event queue
    form->leaveBusy();
    QCoreApplication::processEvents();
    QCOMPARE(m_window->currentForm()->formId(), 0);
    QCOMPARE(m_window->currentForm()->previousForm(), 2);
}

void TestMainWindow::requestWaitsOnWhenBusyAgain()
{
    const QPointer<FormBase> old(m_window->currentForm());
    old->enterBusy();
    old->requestForm(2, QString());
    QCoreApplication::processEvents();
    old->leaveBusy();
    old->enterBusy();
    QTest::qWait(20);
    QVERIFY(old);
    old->leaveBusy();
    QTRY_VERIFY(!old);
    QCOMPARE(m_window->currentForm()->formId(), 2);
}

void TestMainWindow::requestWaitsForAFormThatIsBeingMade()
{
    const QPointer<FormBase> old(m_window->currentForm());
    const FormBase *oldForm = old;
    m_window->replaceForm(HastyForm::make);
    const QPointer<FormBase> hasty(m_window->currentForm());
    const auto *made = dynamic_cast<HastyForm *>(hasty.data());
    QVERIFY(made != nullptr);
    QCOMPARE(made->formMeanwhile, oldForm);
    QVERIFY(!old);
    QTRY_VERIFY(!hasty);
    QCOMPARE(m_window->currentForm()->formId(), 0);
    QCOMPARE(m_window->currentForm()->previousForm(), int(lumi::FileForm));
}

void TestMainWindow::onlyTheCurrentFormHearsOfCards()
{
    // The top menu ignores card changes.
    const QPointer<FormBase> old(m_window->currentForm());
    QVERIFY(QCopChannel::send("QPE/Card", "mtabChanged()"));
    QTest::qWait(20);
    QCOMPARE(m_window->currentForm(), old.data());
    QVERIFY(old->isVisible());
    m_window->changeForm(2, QString());
    QCOMPARE(m_window->findChildren<QCopChannel *>().size(), qsizetype(1));
}

void TestMainWindow::closeIsRefusedWhileForbidden()
{
    m_window->currentForm()->forbidClose();
    QVERIFY(!m_window->close());
    QVERIFY(m_window->isVisible());
    QVERIFY(!lumi::shutDownFlag());
    QEvent event(QEvent::User);
    QVERIFY(!m_window->eventFilter(m_window->currentForm(), &event));
    m_window->currentForm()->allowClose();
    QVERIFY(m_window->close());
    QVERIFY(!m_window->isVisible());
    QVERIFY(lumi::shutDownFlag());
}

void TestMainWindow::onlyAnIdleWindowIsClosed()
{
    FormBase *form = m_window->currentForm();
    {
        const lumi::BusyScope busy(form);
        m_window->closeIfIdle();
        QVERIFY(m_window->isVisible());
    }
    form->forbidClose();
    m_window->closeIfIdle();
    QVERIFY(m_window->isVisible());
    form->allowClose();
    m_window->closeIfIdle();
    QVERIFY(!m_window->isVisible());
}

void TestMainWindow::acceptedCloseStopsEvents()
{
    FormBase *form = m_window->currentForm();
    QVERIFY(m_window->close());
    QEvent event(QEvent::User);
    QVERIFY(m_window->eventFilter(form, &event));
    // The window filters all events of the form, so the form doesn't start again.
    lumi::setShutDownFlag(false);
    form->hide();
    lumi::setShutDownFlag(true);
    QCoreApplication::postEvent(form, new FormStartEvent);
    QCoreApplication::processEvents();
    QVERIFY(form->isHidden());
    lumi::setShutDownFlag(false);
    QCoreApplication::postEvent(form, new FormStartEvent);
    QCoreApplication::processEvents();
    QVERIFY(!form->isHidden());
}

void TestMainWindow::afterTheCloseTheToolBarGetsNothing()
{
    QEvent event(QEvent::None);
    QVERIFY(!QCoreApplication::sendEvent(m_window->toolBar(), &event));
    QVERIFY(m_window->close());
    QVERIFY(QCoreApplication::sendEvent(m_window->toolBar(), &event));
}

void TestMainWindow::closeNeverDeletesTheWindow()
{
    m_window->setAttribute(Qt::WA_DeleteOnClose);
    m_window->changeForm(0, QString());
    QVERIFY(!m_window->testAttribute(Qt::WA_DeleteOnClose));
    const QPointer<QWidget> window(m_window.get());
    QVERIFY(m_window->close());
    QCoreApplication::processEvents();
    QVERIFY(window);
}

void TestMainWindow::acceptCanBeCalledByName()
{
    m_window->replaceForm(RecordingForm::make);
    const auto *form = dynamic_cast<RecordingForm *>(m_window->currentForm());
    QVERIFY(form != nullptr);
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "accept"));
    QCOMPARE(form->accepts, 1);
    m_window->changeForm(0, QString());
    QVERIFY(QMetaObject::invokeMethod(m_window.get(), "accept"));
    QCOMPARE(m_window->currentForm()->formId(), 0);
}

void TestMainWindow::windowMayDieAtAnyTime()
{
    const QPointer<FormBase> form(m_window->currentForm());
    form->requestForm(2, QString());
    m_window.reset();
    QVERIFY(!form);
    QCoreApplication::processEvents();
}

void TestMainWindow::slotsKeepTheirNames()
{
    QCOMPARE(lumi::test::methodNames(MainWindow::staticMetaObject, QMetaMethod::Slot),
             (QList<QByteArray>{"accept()", "changeForm(int,QString)"}));
    QCOMPARE(lumi::test::methodNames(FormTop::staticMetaObject, QMetaMethod::Slot),
             (QList<QByteArray>{"btn_takein_clicked()", "btn_look_clicked()", "menu_disp_takein()",
                                "menu_disp_look()", "menu_option_deleteTempFile()",
                                "menu_option_help()", "menu_option_version()"}));
    QVERIFY(lumi::test::methodNames(FormTop::staticMetaObject, QMetaMethod::Signal).isEmpty());
}

LUMI_TEST(TestMainWindow)
#include "TestMainWindow.moc"
