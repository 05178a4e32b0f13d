// SPDX-License-Identifier: MIT
#include "platform/session/QuitRequest.h"

#include <QApplication>
#include <QSocketNotifier>
#include <QWidget>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};
/// A dialog that refuses to close, because the program works, is asked again after this time.
constexpr int kRepeatMs = 20;

std::atomic<bool> pending{false};
std::atomic<int> wakeUp{-1};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

std::array<struct sigaction, kSignals.size()> oldActions;

/// May run inside any call of the program, as a signal handler.
void note(int /*signal*/)
{
    const int error = errno;
    pending = true;
    const eventfd_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp, &one, sizeof one);
    errno = error;
}

void installHandlers()
{
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &oldActions[i]);
        if (oldActions[i].sa_handler != SIG_IGN) {
            ::sigaction(kSignals[i], &action, nullptr);
        }
    }
}

} // namespace

lumi::QuitRequest::QuitRequest(QObject *parent)
    : QObject(parent)
    , m_wakeUp(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    m_timer.setInterval(kRepeatMs);
    connect(&m_timer, &QTimer::timeout, this, &QuitRequest::closeTop);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, [] {
        note(0);
    });
    auto *notifier = new QSocketNotifier(m_wakeUp.get(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &QuitRequest::wake);
    wakeUp = m_wakeUp.get();
    installHandlers();
}

lumi::QuitRequest::~QuitRequest()
{
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &oldActions[i], nullptr);
    }
    wakeUp = -1;
    pending = false;
}

bool lumi::QuitRequest::isPending()
{
    return pending;
}

void lumi::QuitRequest::wake()
{
    eventfd_t count = 0;
    ::eventfd_read(m_wakeUp.get(), &count);
    m_timer.start();
    closeTop();
}

void lumi::QuitRequest::closeTop()
{
    QWidget *top = QApplication::activePopupWidget();
    if (top == nullptr) {
        top = QApplication::activeModalWidget();
    }
    if (top != nullptr) {
        top->close();
    } else {
        Q_EMIT idle();
    }
}
