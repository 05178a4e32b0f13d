// SPDX-License-Identifier: MIT
#include "app/EndSignals.h"

#include <QSocketNotifier>

#include <cerrno>

#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 3> kSignals{SIGTERM, SIGINT, SIGHUP};

/// What the handler writes to: it may use nothing else of the program.
volatile std::sig_atomic_t wakeUp = -1;

void note(int /*signal*/)
{
    const int error = errno;
    const char byte = 1;
    // A full socket has woken the program already.
    [[maybe_unused]] const ssize_t written = ::send(wakeUp, &byte, 1, MSG_DONTWAIT);
    errno = error;
}

} // namespace

lumi::EndSignals::EndSignals()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, m_sockets.data()) != 0) {
        qWarning("EndSignals: no sockets, a signal ends the program at once");
        return;
    }
    auto *notifier = new QSocketNotifier(m_sockets[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &EndSignals::take);
    wakeUp = m_sockets[0];
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &m_before[i]);
        // What is ignored stays so, as for a program that outlives its terminal.
        if (m_before[i].sa_handler != SIG_IGN) {
            ::sigaction(kSignals[i], &action, nullptr);
        }
    }
}

lumi::EndSignals::~EndSignals()
{
    if (m_sockets[0] < 0) {
        return;
    }
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &m_before[i], nullptr);
    }
    wakeUp = -1;
    for (const int socket : m_sockets) {
        ::close(socket);
    }
}

void lumi::EndSignals::take()
{
    char byte = 0;
    if (::recv(m_sockets[1], &byte, 1, MSG_DONTWAIT) == 1) {
        Q_EMIT came();
    }
}
