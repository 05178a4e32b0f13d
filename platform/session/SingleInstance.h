// SPDX-License-Identifier: MIT
// Lets the program run once per home, because two programs would empty each other's swap store.
// The first process holds a lock in the runtime directory. A later process calls the first one
// through a socket beside the lock, so that its window comes to the front.
// The kernel releases the lock when the process ends, also when it is killed.
// Without a usable runtime directory every process counts as the first.
// Owns: the lock and the socket.
#pragma once

#include "platform/files/fileCalls.h"

#include <QByteArray>
#include <QObject>

namespace lumi {

class SingleInstance : public QObject
{
    Q_OBJECT

public:
    /// Waits until this process holds the lock, or until the first process has answered the call,
    /// at most 5 seconds. It gets the lock if the first process ends meanwhile. A busy first process
    /// answers the call later.
    /// @param home programs with different homes run side by side
    explicit SingleInstance(const QString &home);
    ~SingleInstance() override;

    [[nodiscard]] bool isFirst() const { return m_isFirst; }

Q_SIGNALS:
    /// A later process has called.
    /// @param token its activation token, which a Wayland compositor may require for bringing a
    ///        window to the front; often empty
    void startedAgain(const QByteArray &token);

private:
    [[nodiscard]] QByteArray socketPath() const { return m_path + ".socket"; }

    [[nodiscard]] bool lock();
    [[nodiscard]] bool callFirst() const;
    void listen();
    void answer();

    QByteArray m_path; ///< of the lock and the socket, without their endings
    Descriptor m_lock;
    Descriptor m_socket;
    bool m_isFirst = true;
};

} // namespace lumi
