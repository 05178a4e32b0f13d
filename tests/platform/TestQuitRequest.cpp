// SPDX-License-Identifier: MIT
#include "platform/session/QuitRequest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <cstddef>

using lumi::QuitRequest;

namespace {

/// Refuses to close until it is told to allow it.
class StubbornDialog : public QDialog
{
public:
    int refusals = 0;
    bool mayClose = false;

protected:
    void closeEvent(QCloseEvent *event) override
    {
        if (!mayClose) {
            ++refusals;
            event->ignore();
            return;
        }
        QDialog::closeEvent(event);
    }
};

auto handlerOf(int signal)
{
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

} // namespace

class TestQuitRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSignalIsPendingAtOnce_data();
    void aSignalIsPendingAtOnce();
    void anIgnoredSignalStaysIgnored();
    void theEndOfTheSessionIsARequest();
    void withoutARequestNothingHappens();
    void idleIsRepeated();
    void theTopmostIsClosedFirst();
    void aDialogThatRefusesIsAskedAgain();
};

void TestQuitRequest::aSignalIsPendingAtOnce_data()
{
    lumi::test::columns<int>();
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestQuitRequest::aSignalIsPendingAtOnce()
{
    const auto [signal] = lumi::test::row<int>();
    const auto before = handlerOf(signal);
    {
        const QuitRequest request;
        QVERIFY(!QuitRequest::isPending());
        ::raise(signal);
        QVERIFY(QuitRequest::isPending());
    }
    QVERIFY(!QuitRequest::isPending());
    QVERIFY(handlerOf(signal) == before);
}

void TestQuitRequest::anIgnoredSignalStaysIgnored()
{
    std::signal(SIGHUP, SIG_IGN);
    {
        const QuitRequest request;
        ::raise(SIGHUP);
        QVERIFY(!QuitRequest::isPending());
    }
    QVERIFY(std::signal(SIGHUP, SIG_DFL) == SIG_IGN);
}

/// Only Qt can make a session manager. The receivers of the signal don't use theirs.
void TestQuitRequest::theEndOfTheSessionIsARequest()
{
    const QuitRequest request;
    const QSignalSpy idle(&request, &QuitRequest::idle);
    alignas(std::max_align_t) std::byte manager[sizeof(void *)] = {};
    void *arguments[] = {nullptr, manager};
    const int index
        = QGuiApplication::staticMetaObject.indexOfMethod("commitDataRequest(QSessionManager&)");
    QVERIFY(index >= 0);
    qGuiApp->qt_metacall(QMetaObject::InvokeMetaMethod, index, arguments);
    QVERIFY(QuitRequest::isPending());
    QTRY_VERIFY(!idle.isEmpty());
}

void TestQuitRequest::withoutARequestNothingHappens()
{
    const QuitRequest request;
    const QSignalSpy idle(&request, &QuitRequest::idle);
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    QTest::qWait(100);
    QVERIFY(dialog.isVisible());
    QVERIFY(idle.isEmpty());
}

void TestQuitRequest::idleIsRepeated()
{
    const QuitRequest request;
    const QSignalSpy idle(&request, &QuitRequest::idle);
    ::raise(SIGTERM);
    QTRY_VERIFY(idle.size() >= 3);
}

void TestQuitRequest::theTopmostIsClosedFirst()
{
    const QuitRequest request;
    const QSignalSpy idle(&request, &QuitRequest::idle);
    QStringList closed;
    QDialog outer;
    QTimer::singleShot(0, &outer, [&] {
        QMessageBox box(QMessageBox::Warning, {}, {}, QMessageBox::Yes | QMessageBox::No, &outer);
        QTimer::singleShot(0, &box, [&] {
            QMenu menu(&box);
            menu.addAction(QStringLiteral("entry"));
            QTimer::singleShot(0, &menu, [] {
                ::raise(SIGTERM);
            });
            QCOMPARE(menu.exec(QPoint()), nullptr);
            closed << QStringLiteral("menu");
        });
        QCOMPARE(box.exec(), int(QMessageBox::No));
        closed << QStringLiteral("box");
    });
    QCOMPARE(outer.exec(), int(QDialog::Rejected));
    closed << QStringLiteral("dialog");
    QCOMPARE(closed.join(QLatin1Char(' ')), QStringLiteral("menu box dialog"));
    QVERIFY(idle.isEmpty());
    QTRY_VERIFY(!idle.isEmpty());
}

void TestQuitRequest::aDialogThatRefusesIsAskedAgain()
{
    const QuitRequest request;
    const QSignalSpy idle(&request, &QuitRequest::idle);
    StubbornDialog dialog;
    dialog.setModal(true);
    dialog.show();
    ::raise(SIGTERM);
    QTRY_VERIFY(dialog.refusals >= 3);
    QVERIFY(dialog.isVisible());
    QVERIFY(idle.isEmpty());
    dialog.mayClose = true;
    QTRY_VERIFY(!idle.isEmpty());
    QVERIFY(!dialog.isVisible());
}

LUMI_TEST(TestQuitRequest)
#include "TestQuitRequest.moc"
