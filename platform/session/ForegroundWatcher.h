// SPDX-License-Identifier: MIT
// Sends "appForeground(QString)" on "QPE/System" when another program has come to the front. The
// program's own boxes and menus don't count, nor does a short loss of the focus, a minimised window
// or a menu of the window manager.
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
    /// A program that was never in front sends nothing.
    bool m_wasActive = false;
};

} // namespace lumi
