// SPDX-License-Identifier: MIT
// Tells the program that the power supply changed, by "batteryChanged()" on "QPE/System".
// Looks only while somebody listens there: now and then, and when the power daemon reports
// something, which is a hint and no more; the figures are the machine's.
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

    /// Whether it is looking at all.
    [[nodiscard]] bool isActive() const { return m_timer.isActive(); }

private:
    /// Compares the figures with those of the last look.
    Q_SLOT void look();
    void follow(const QByteArray &channel);
    void listenToDaemon(bool on);

    QTimer m_timer;
    PowerStatus m_last;
};

} // namespace lumi
