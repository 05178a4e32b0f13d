// SPDX-License-Identifier: MIT
// Receiver of "setScreenSaverMode(int)" on "QPE/System": keeps the screen on while the program
// asks for it. The desktop's screen saver service is asked first, the login manager if there
// is none; with neither nothing happens. All calls are asynchronous, so a daemon that hangs
// holds up nobody.
// Owns: the cookie or descriptor that keeps the screen on.
#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <optional>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace lumi {

class ScreenSaverAgent : public QObject
{
    Q_OBJECT

public:
    explicit ScreenSaverAgent(QObject *parent = nullptr);
    ~ScreenSaverAgent() override;

    /// Whether the screen is kept on at this moment.
    [[nodiscard]] bool isHolding() const { return m_cookie.has_value() || m_lock.isValid(); }

private:
    using Handler = void (ScreenSaverAgent::*)(const QDBusMessage &);

    void hear(const QByteArray &channel, const QByteArray &message, const QByteArray &data);
    void hold();
    void release();
    void askScreenSaver();
    void askLoginManager();
    void screenSaverAnswered(const QDBusMessage &reply);
    void loginManagerAnswered(const QDBusMessage &reply);
    void call(bool onSystemBus, const QDBusMessage &message, Handler handler);

    bool m_wanted = false;
    bool m_asking = false;
    std::optional<uint> m_cookie;
    QDBusUnixFileDescriptor m_lock;
};

} // namespace lumi
