// SPDX-License-Identifier: MIT
#include "platform/session/ScreenSaverAgent.h"

#include "platform/session/QCopHub.h"
#include "platform/session/sessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDataStream>

#include <limits>

namespace {

/// Time for the desktop to answer before the login manager is asked as well.
constexpr int kPatienceMs = 500;
constexpr int kNoTimeLimit = std::numeric_limits<int>::max();

/// Values of the message. The first two come as a pair and mean the same here.
constexpr int kModeOff = 0;
constexpr int kModeNever = 300;
constexpr int kModeUsual = 200;

QString programName()
{
    return QStringLiteral("Lumi Vault");
}

QString reason()
{
    return QStringLiteral("Showing or copying pictures");
}

QDBusMessage screenSaverCall(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.ScreenSaver");
    QDBusMessage message = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/ScreenSaver"), name, method);
    message.setAutoStartService(false);
    return message;
}

} // namespace

lumi::ScreenSaverAgent::ScreenSaverAgent(QObject *parent)
    : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(kPatienceMs);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        if (m_wanted) {
            askLoginManager();
        }
    });
    connect(QCopHub::instance(), &QCopHub::sentHere, this, &ScreenSaverAgent::hear);
}

lumi::ScreenSaverAgent::~ScreenSaverAgent()
{
    release();
}

void lumi::ScreenSaverAgent::hear(const QByteArray &channel, const QByteArray &message,
                                  const QByteArray &data)
{
    if (channel != "QPE/System" || message != "setScreenSaverMode(int)") {
        return;
    }
    QDataStream stream(data);
    int mode = -1;
    stream >> mode;
    if (stream.status() != QDataStream::Ok) {
        return;
    }
    if (mode == kModeOff || mode == kModeNever) {
        hold();
    } else if (mode == kModeUsual) {
        release();
    }
}

void lumi::ScreenSaverAgent::hold()
{
    m_wanted = true;
    if (!isHolding() && !m_patience.isActive()) {
        askScreenSaver();
    }
}

void lumi::ScreenSaverAgent::release()
{
    m_wanted = false;
    if (m_cookie) {
        QDBusMessage message = screenSaverCall(QStringLiteral("UnInhibit"));
        message << *m_cookie;
        QDBusConnection::sessionBus().send(message);
        m_cookie.reset();
    }
    m_lock = QDBusUnixFileDescriptor();
}

void lumi::ScreenSaverAgent::askScreenSaver()
{
    if (m_askingScreenSaver || !hasSessionBus()) {
        askLoginManager();
        return;
    }
    QDBusMessage message = screenSaverCall(QStringLiteral("Inhibit"));
    message << programName() << reason();
    m_patience.start();
    call(QDBusConnection::sessionBus(), message, &ScreenSaverAgent::m_askingScreenSaver,
         &ScreenSaverAgent::screenSaverAnswered);
}

void lumi::ScreenSaverAgent::askLoginManager()
{
    if (m_askingLoginManager) {
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    message.setAutoStartService(false);
    message << QStringLiteral("idle") << programName() << reason() << QStringLiteral("block");
    call(QDBusConnection::systemBus(), message, &ScreenSaverAgent::m_askingLoginManager,
         &ScreenSaverAgent::loginManagerAnswered);
}

void lumi::ScreenSaverAgent::call(const QDBusConnection &bus, const QDBusMessage &message,
                                  bool ScreenSaverAgent::*asking, Handler handler)
{
    if (!bus.isConnected()) {
        return;
    }
    this->*asking = true;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kNoTimeLimit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, asking, handler] {
        watcher->deleteLater();
        this->*asking = false;
        (this->*handler)(watcher->reply());
    });
}

void lumi::ScreenSaverAgent::screenSaverAnswered(const QDBusMessage &reply)
{
    m_patience.stop();
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        m_cookie = reply.arguments().constFirst().toUInt();
    } else if (m_wanted && !isHolding()) {
        askLoginManager();
    }
    if (!m_wanted) {
        release();
    }
}

void lumi::ScreenSaverAgent::loginManagerAnswered(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
        m_lock = reply.arguments().constFirst().value<QDBusUnixFileDescriptor>();
    }
    if (!m_wanted) {
        release();
    }
}
