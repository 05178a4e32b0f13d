// SPDX-License-Identifier: MIT
// Receiver of "setScreenSaverMode(int)" on "QPE/System": keeps the screen on while the program
// asks for it. Asks the desktop's screen saver service first, and the login manager if there is
// none or it is slow; without both it does nothing. All calls are asynchronous and have no time
// limit: a late grant is kept, or released if it is no longer wanted.
// Owns: the cookie or descriptor that keeps the screen on.
#pragma once

#include <QDBusUnixFileDescriptor>
#include <QObject>
#include <QTimer>

#include <optional>

class QDBusConnection;
class QDBusMessage;

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
    /// `asking` is true until the answer arrives. It stays false without a bus.
    void call(const QDBusConnection &bus, const QDBusMessage &message,
              bool ScreenSaverAgent::*asking, Handler handler);

    bool m_wanted = false;
    bool m_askingScreenSaver = false;
    bool m_askingLoginManager = false;
    QTimer m_patience; ///< runs while only the screen saver service has been asked
    std::optional<uint> m_cookie;
    QDBusUnixFileDescriptor m_lock;
};

} // namespace lumi
