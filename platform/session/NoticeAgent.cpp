// SPDX-License-Identifier: MIT
#include "platform/session/NoticeAgent.h"

#include "platform/session/QCopHub.h"
#include "platform/session/sessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QVariantMap>

namespace {

constexpr char kChannel[] = "LumiVault/Notice";
constexpr char kMessage[] = "show(QString)";
constexpr int kUsualTime = -1;

void show(const QString &text)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    constexpr uint kNewNotice = 0;
    // The service may read the text as markup.
    call << QStringLiteral("Lumi Vault") << kNewNotice << QStringLiteral("lumivault")
         << QStringLiteral("Lumi Vault") << text.toHtmlEscaped() << QStringList()
         << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("lumivault")}}
         << kUsualTime;
    QDBusConnection::sessionBus().asyncCall(call);
}

} // namespace

lumi::NoticeAgent::NoticeAgent(QObject *parent)
    : QObject(parent)
    , m_channel(kChannel)
{
    connect(&m_channel, &QCopChannel::received, this,
            [](const QCString &message, const QByteArray &data) {
                const bool isInFront = QGuiApplication::applicationState() == Qt::ApplicationActive;
                if (message == kMessage && !isInFront && hasSessionBus()) {
                    show(QString::fromUtf8(data));
                }
            });
}

void lumi::NoticeAgent::post(const QString &text)
{
    QCopHub::instance()->post(kChannel, kMessage, text.toUtf8());
}
