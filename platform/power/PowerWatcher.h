// SPDX-License-Identifier: MIT
// Tells the program that the power supply changed, by "batteryChanged()" on "QPE/System".
// Reads the figures of the machine at intervals, and when the power daemon reports a change. Does
// so only while the channel has a listener.
#pragma once

#include "platform/Machine.h"

#include <QObject>
#include <QTimer>

namespace lumi {

class PowerWatcher : public QObject
{
    Q_OBJECT

public:
    static constexpr int kIntervalMs = 30000;

    explicit PowerWatcher(QObject *parent = nullptr, int intervalMs = kIntervalMs);

    /// Whether the watcher is active.
    [[nodiscard]] bool isActive() const { return m_timer.isActive(); }

private:
    /// Compares the figures with the previous ones.
    Q_SLOT void look();
    void follow(const QByteArray &channel);
    void listenToDaemon(bool on);

    QTimer m_timer;
    PowerStatus m_last;
};

} // namespace lumi
