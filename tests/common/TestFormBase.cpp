// SPDX-License-Identifier: MIT
#include "app/common/BusyScope.h"
#include "app/common/FormBase.h"
#include "app/common/FormEvent.h"
#include "tests/support/RequestLog.h"
#include "tests/support/TestMain.h"
#include "tests/support/methodNames.h"
#include "tests/support/rows.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include <csignal>
#include <memory>

#include <sys/wait.h>
#include <unistd.h>

namespace {

class RecordingForm : public FormBase
{
public:
    explicit RecordingForm(QWidget *window)
        : FormBase(window, nullptr, 2)
    { }

    void formStarted() override
    {
        ++started;
        FormBase::formStarted();
    }

    void mtabChanged() override
    {
        ++cardChanges;
        if (atCardChange) {
            atCardChange();
        }
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        filtered.append(event->type());
        return FormBase::eventFilter(watched, event);
    }

    int started = 0;
    int cardChanges = 0;
    std::function<void()> atCardChange;
    QList<QEvent::Type> filtered;
};

void sendCardChange(int times = 1)
{
    for (int i = 0; i < times; ++i) {
        QVERIFY(QCopChannel::send("QPE/Card", "mtabChanged()"));
    }
}

} // namespace

class TestFormBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void startsHiddenAndStaysSo();
    void startEventShowsIt();
    void foreignEventsOfTheTypeAreIgnored();
    void requestIsPosted();
    void requestsKeepTheirOrder();
    void returnToPreviousAsksOnce();
    void returnWithoutPreviousAsksNothing();
    void closeFlag();
    void acceptDoesNothing();
    void seesTheWindowsEvents();
    void cardMessage_data();
    void cardMessage();
    void otherChannelIsNotHeard();
    void everyCardMessageArrivesOnce();
    void deletedFormGetsNoCardMessage();
    void busyFormHearsAfterTheRelease();
    void nestedBusyCounts();
    void busyAgainBeforeTheDelivery();
    void idleHasNothingToDeliver();
    void cardChangeInsideADelivery();
    void releaseIsSignalledOnce();
    void aBusyFormMustNotBeDestroyed();
    void slotsKeepTheirNames();

private:
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<lumi::test::RequestLog> m_requests;
    RecordingForm *m_form = nullptr;
};

void TestFormBase::init()
{
    m_window = std::make_unique<QWidget>();
    m_requests = std::make_unique<lumi::test::RequestLog>(m_window.get());
    m_form = new RecordingForm(m_window.get());
}

void TestFormBase::cleanup()
{
    m_window.reset();
}

void TestFormBase::startsHiddenAndStaysSo()
{
    QCOMPARE(m_form->formId(), 2);
    QCOMPARE(m_form->previousForm(), -1);
    QCOMPARE(m_form->parentWidget(), m_window.get());
    QVERIFY(m_form->isHidden());
    auto *layout = new QVBoxLayout(m_window.get());
    layout->addWidget(m_form);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(!m_form->isVisible());
}

void TestFormBase::startEventShowsIt()
{
    m_window->show();
    QCoreApplication::postEvent(m_form, new FormStartEvent);
    QVERIFY(!m_form->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(m_form->started, 1);
    QVERIFY(m_form->isVisible());
}

void TestFormBase::foreignEventsOfTheTypeAreIgnored()
{
    QCoreApplication::postEvent(m_form, new QEvent(FormEvent::kType));
    QCoreApplication::postEvent(m_form, new ChangeFormEvent(0, QString()));
    QCoreApplication::postEvent(m_form, new FormEvent(7));
    QCoreApplication::processEvents();
    QCOMPARE(m_form->started, 0);
    QCOMPARE(int(FormEvent::kType), 1000);
    QCOMPARE(ChangeFormEvent(3, QString()).kind(), 0);
    QCOMPARE(FormStartEvent().kind(), 1);
}

void TestFormBase::requestIsPosted()
{
    m_form->requestForm(3, QString());
    QVERIFY(m_requests->forms.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(m_requests->forms, QList<int>{3});
    QCOMPARE(m_requests->nullTexts, QList<bool>{true});
}

void TestFormBase::requestsKeepTheirOrder()
{
    m_form->requestForm(3, QString());
    m_form->requestForm(0, QString());
    m_form->requestForm(2, QString());
    QCoreApplication::processEvents();
    QCOMPARE(m_requests->forms, (QList<int>{3, 0, 2}));
}

void TestFormBase::returnToPreviousAsksOnce()
{
    m_form->setPreviousForm(0);
    m_form->returnToPrevious();
    m_form->returnToPrevious();
    QCoreApplication::processEvents();
    QCOMPARE(m_requests->forms, QList<int>{0});
    QCOMPARE(m_form->previousForm(), -1);
}

void TestFormBase::returnWithoutPreviousAsksNothing()
{
    m_form->setPreviousForm(-5);
    m_form->returnToPrevious();
    QCoreApplication::processEvents();
    QVERIFY(m_requests->forms.isEmpty());
    QCOMPARE(m_form->previousForm(), -1);
}

void TestFormBase::closeFlag()
{
    QVERIFY(m_form->canClose());
    m_form->forbidClose();
    QVERIFY(!m_form->canClose());
    m_form->forbidClose();
    m_form->allowClose(); // a flag, not a count
    QVERIFY(m_form->canClose());
}

void TestFormBase::acceptDoesNothing()
{
    m_form->acceptForm();
    QCoreApplication::processEvents();
    QVERIFY(m_requests->forms.isEmpty());
    QCOMPARE(m_form->started, 0);
}

void TestFormBase::seesTheWindowsEvents()
{
    m_form->filtered.clear();
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(m_window.get(), &event);
    QCOMPARE(m_form->filtered.count(QEvent::User), qsizetype(1));
}

void TestFormBase::cardMessage_data()
{
    lumi::test::columns<QByteArray, int>();
    QTest::newRow("the mount table changed") << QByteArray("mtabChanged()") << 1;
    QTest::newRow("without brackets") << QByteArray("mtabChanged") << 0;
    QTest::newRow("in capitals") << QByteArray("MTABCHANGED()") << 0;
    QTest::newRow("with a blank") << QByteArray("mtabChanged() ") << 0;
    QTest::newRow("another message") << QByteArray("stabChanged()") << 0;
    QTest::newRow("an empty message") << QByteArray("") << 0;
}

void TestFormBase::cardMessage()
{
    const auto [message, heard] = lumi::test::row<QByteArray, int>();
    m_form->cardChannel(message, "data that nobody reads");
    QCOMPARE(m_form->cardChanges, heard);
    QVERIFY(QCopChannel::send("QPE/Card", message));
    sendCardChange(); // behind the other one
    QTRY_COMPARE(m_form->cardChanges, 2 * heard + 1);
}

void TestFormBase::otherChannelIsNotHeard()
{
    QVERIFY(QCopChannel::send("QPE/System", "mtabChanged()"));
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 0);
}

void TestFormBase::everyCardMessageArrivesOnce()
{
    sendCardChange(3);
    QTRY_COMPARE(m_form->cardChanges, 3);
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 3);
}

void TestFormBase::deletedFormGetsNoCardMessage()
{
    QVERIFY(QCopChannel::isRegistered("QPE/Card"));
    sendCardChange();
    delete m_form;
    QVERIFY(!QCopChannel::isRegistered("QPE/Card"));
    QTest::qWait(20);
}

void TestFormBase::busyFormHearsAfterTheRelease()
{
    {
        const lumi::BusyScope busy(m_form);
        QVERIFY(m_form->isBusy());
        sendCardChange(3);
        QTest::qWait(20); // a nested event loop, as of a message box
        QCOMPARE(m_form->cardChanges, 0);
    }
    QVERIFY(!m_form->isBusy());
    QCOMPARE(m_form->cardChanges, 0); // the slot of the form is not done yet
    QTRY_COMPARE(m_form->cardChanges, 1);
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 1);
    sendCardChange();
    QTRY_COMPARE(m_form->cardChanges, 2);
}

void TestFormBase::nestedBusyCounts()
{
    m_form->enterBusy();
    {
        const lumi::BusyScope inner(m_form);
        m_form->cardChannel("mtabChanged()", QByteArray());
    }
    QVERIFY(m_form->isBusy());
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 0);
    m_form->leaveBusy();
    QVERIFY(!m_form->isBusy());
    QTRY_COMPARE(m_form->cardChanges, 1);
}

void TestFormBase::busyAgainBeforeTheDelivery()
{
    m_form->enterBusy();
    m_form->cardChannel("mtabChanged()", QByteArray());
    m_form->leaveBusy();
    m_form->enterBusy();
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 0);
    m_form->leaveBusy();
    QTRY_COMPARE(m_form->cardChanges, 1);
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 1);
}

void TestFormBase::idleHasNothingToDeliver()
{
    m_form->enterBusy();
    m_form->leaveBusy();
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 0);
}

void TestFormBase::cardChangeInsideADelivery()
{
    // The form answers a card change with a message box; another change comes meanwhile.
    m_form->atCardChange = [this] {
        const lumi::BusyScope busy(m_form);
        m_form->atCardChange = nullptr;
        sendCardChange(2);
        QTest::qWait(20);
        QCOMPARE(m_form->cardChanges, 1);
    };
    sendCardChange();
    QTRY_COMPARE(m_form->cardChanges, 2);
    QTest::qWait(20);
    QCOMPARE(m_form->cardChanges, 2);
}

void TestFormBase::releaseIsSignalledOnce()
{
    const QSignalSpy spy(m_form, &FormBase::busyReleased);
    m_form->enterBusy();
    m_form->enterBusy();
    m_form->leaveBusy();
    QCOMPARE(spy.size(), 0);
    m_form->leaveBusy();
    QCOMPARE(spy.size(), 1);
}

void TestFormBase::aBusyFormMustNotBeDestroyed()
{
    // A process of its own, because it is aborted.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        close(STDERR_FILENO);
        std::signal(SIGABRT, SIG_DFL);
        m_form->enterBusy();
        delete m_form;
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT);
}

void TestFormBase::slotsKeepTheirNames()
{
    QCOMPARE(lumi::test::methodNames(FormBase::staticMetaObject, QMetaMethod::Slot),
             QList<QByteArray>{"cardChannel(QCString,QByteArray)"});
}

LUMI_TEST(TestFormBase)
#include "TestFormBase.moc"
