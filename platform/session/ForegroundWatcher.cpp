// SPDX-License-Identifier: MIT
#include "platform/session/ForegroundWatcher.h"

#include "platform/session/QCopHub.h"
#include "platform/session/activeWindow.h"

#include <QDataStream>
#include <QGuiApplication>
#include <QIODevice>

lumi::ForegroundWatcher::ForegroundWatcher(QObject *parent)
    : QObject(parent)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(kDelayMs);
    connect(&m_delay, &QTimer::timeout, this, &ForegroundWatcher::announce);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
            &ForegroundWatcher::stateChanged);
    stateChanged(QGuiApplication::applicationState());
}

void lumi::ForegroundWatcher::stateChanged(Qt::ApplicationState state)
{
    if (state == Qt::ApplicationActive) {
        m_wasActive = true;
        m_delay.stop();
    } else if (m_wasActive && !m_delay.isActive()) {
        m_delay.start();
    }
}

void lumi::ForegroundWatcher::announce()
{
    if (!isOtherProgramActive()) {
        m_delay.start();
        return;
    }
    m_wasActive = false;
    // The name stays empty: current window systems don't tell which program is in front.
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << QString();
    QCopHub::instance()->post("QPE/System", "appForeground(QString)", data);
}
