// SPDX-License-Identifier: MIT
#include "platform/session/SingleInstance.h"

#include "platform/session/runtimePath.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QSocketNotifier>
#include <QThread>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using lumi::Descriptor;

namespace {

constexpr std::chrono::seconds kPatience(5);
constexpr int kRetryMs = 20;
/// A caller sends its message right after it has connected.
constexpr timeval kMessageTime{0, 100000};
constexpr std::size_t kLongestMessage = 4096;
constexpr int kWaitingCalls = 16;
/// The first byte of a message. The token follows.
constexpr char kCall = 'c';
constexpr char kAnswer = 'a';

/// Null if the path is too long for a socket.
std::optional<sockaddr_un> addressOf(const QByteArray &path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const auto size = static_cast<std::size_t>(path.size());
    if (size >= sizeof address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(address.sun_path, path.constData(), size);
    return address;
}

using SocketCall = int (*)(int, const sockaddr *, socklen_t);

/// Calls bind or connect.
bool attach(SocketCall call, const Descriptor &socket, const QByteArray &path)
{
    const std::optional<sockaddr_un> address = addressOf(path);
    return address && socket.isOpen()
        && call(socket.get(), reinterpret_cast<const sockaddr *>(&*address), sizeof *address) == 0;
}

void limitTime(const Descriptor &socket, timeval limit)
{
    ::setsockopt(socket.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    ::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
}

Descriptor makeSocket(int flags)
{
    return Descriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

} // namespace

lumi::SingleInstance::SingleInstance(const QString &home)
{
    const QString path = runtimePath(home);
    if (path.isEmpty()) {
        return;
    }
    m_path = QFile::encodeName(path);
    const QDeadlineTimer deadline(kPatience);
    while (!lock()) {
        if (callFirst() || deadline.hasExpired()) {
            m_isFirst = false;
            return;
        }
        QThread::msleep(kRetryMs); // it has not made its socket yet, or it is ending
    }
    listen();
}

lumi::SingleInstance::~SingleInstance()
{
    if (m_socket.isOpen()) {
        ::unlink(socketPath().constData());
    }
}

/// False if another process holds the lock.
bool lumi::SingleInstance::lock()
{
    constexpr int kOwnerOnly = 0600;
    const QByteArray path = m_path + ".lock";
    m_lock = Descriptor(
        ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, kOwnerOnly));
    if (m_lock.isOpen() && ::flock(m_lock.get(), LOCK_EX | LOCK_NB) == 0) {
        return true;
    }
    const bool isHeld = m_lock.isOpen() && errno == EWOULDBLOCK;
    if (!isHeld) {
        qWarning("%s can't be locked: %s", path.constData(), std::strerror(errno));
    }
    return !isHeld;
}

/// False if nobody listens, or if the first process ends before it answers.
bool lumi::SingleInstance::callFirst() const
{
    const Descriptor socket = makeSocket(0);
    limitTime(socket, {kPatience.count(), 0});
    const QByteArray message = kCall + qgetenv("XDG_ACTIVATION_TOKEN");
    const auto size = static_cast<std::size_t>(message.size());
    if (!attach(::connect, socket, socketPath())
        || ::send(socket.get(), message.constData(), size, MSG_NOSIGNAL) < 0) {
        return false;
    }
    char reply = 0;
    const ssize_t got = ::recv(socket.get(), &reply, sizeof reply, 0);
    return got > 0 || (got < 0 && errno == EAGAIN);
}

void lumi::SingleInstance::listen()
{
    const QByteArray path = socketPath();
    ::unlink(path.constData()); // of a killed program
    Descriptor socket = makeSocket(SOCK_NONBLOCK);
    if (!attach(::bind, socket, path) || ::listen(socket.get(), kWaitingCalls) != 0) {
        qWarning("%s can't be opened: %s", path.constData(), std::strerror(errno));
        return;
    }
    m_socket = std::move(socket);
    auto *notifier = new QSocketNotifier(m_socket.get(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SingleInstance::answer);
}

void lumi::SingleInstance::answer()
{
    const Descriptor caller(::accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
    limitTime(caller, kMessageTime);
    std::array<char, kLongestMessage> message{};
    const ssize_t got = ::recv(caller.get(), message.data(), message.size(), 0);
    if (got > 0 && message[0] == kCall) {
        ::send(caller.get(), &kAnswer, sizeof kAnswer, MSG_NOSIGNAL);
        Q_EMIT startedAgain(QByteArray(message.data() + 1, got - 1));
    }
}
