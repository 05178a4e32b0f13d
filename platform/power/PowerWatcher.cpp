// SPDX-License-Identifier: MIT
#include "platform/power/PowerWatcher.h"

#include "platform/session/QCopHub.h"

#include <QDBusConnection>

namespace {

constexpr char kChannel[] = "QPE/System";

} // namespace

lumi::PowerWatcher::PowerWatcher(QObject *parent, int intervalMs)
    : QObject(parent)
{
    m_timer.setInterval(intervalMs);
    connect(&m_timer, &QTimer::timeout, this, &PowerWatcher::look);
    connect(QCopHub::instance(), &QCopHub::registrationChanged, this, &PowerWatcher::follow);
    follow(kChannel);
}

void lumi::PowerWatcher::follow(const QByteArray &channel)
{
    const bool wanted = QCopChannel::isRegistered(kChannel);
    if (channel != kChannel || wanted == m_timer.isActive()) {
        return;
    }
    if (wanted) {
        m_last = Machine::instance().power();
        m_timer.start();
    } else {
        m_timer.stop();
    }
    listenToDaemon(wanted);
}

void lumi::PowerWatcher::listenToDaemon(bool on)
{
    // No sender is named, because QtDBus would then wait for the daemon.
    const QString path = QStringLiteral("/org/freedesktop/UPower/devices/DisplayDevice");
    const QString interface = QStringLiteral("org.freedesktop.DBus.Properties");
    const QString signal = QStringLiteral("PropertiesChanged");
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected()) {
        return;
    }
    if (on) {
        bus.connect(QString(), path, interface, signal, this, SLOT(look()));
    } else {
        bus.disconnect(QString(), path, interface, signal, this, SLOT(look()));
    }
}

void lumi::PowerWatcher::look()
{
    const PowerStatus now = Machine::instance().power();
    if (now == m_last) {
        return;
    }
    m_last = now;
    QCopHub::instance()->post(kChannel, "batteryChanged()");
}
