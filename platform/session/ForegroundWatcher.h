// SPDX-License-Identifier: MIT
// Tells the program that another one came to the front, by "appForeground(QString)" on
// "QPE/System". Our own boxes and menus don't count, and neither does a window system that
// takes the focus away for a moment.
#pragma once

#include <QObject>
#include <QTimer>

namespace lumi {

class ForegroundWatcher : public QObject
{
    Q_OBJECT

public:
    /// How long the program must have been in the background.
    static constexpr int kDelayMs = 250;

    explicit ForegroundWatcher(QObject *parent = nullptr);

    void stateChanged(Qt::ApplicationState state);

private:
    void announce();

    QTimer m_delay;
    /// A program that was never in front hasn't lost anything.
    bool m_wasActive = false;
};

} // namespace lumi
