// SPDX-License-Identifier: MIT
// The application object of the handheld: shows the main window in a way that suits the screen,
// turns keys of an ordinary keyboard into the device's keys, and starts the agents that watch
// cards, battery, screen saver and foreground. Every agent is optional: the program also runs
// without a bus, a battery or card slots, and shows no message about it.
// Owns: the agents.
#pragma once

#include <QApplication>
#include <QPointer>
#include <QSize>

#include <memory>

class QKeyEvent;

class QPEApplication : public QApplication
{
    Q_OBJECT

public:
    enum Type { GuiClient };

    QPEApplication(
        int &argc, char **argv,
        Type type
        = GuiClient); // NOLINT(google-explicit-constructor): the arguments go in as main has them
    ~QPEApplication() override;

    /// Shows the main window: maximized on a small screen, else 640 x 480 (also with noMaximize).
    /// The caller keeps ownership of the widget.
    void showMainWidget(QWidget *widget, bool noMaximize = false);
    /// Kind of keyboard, see Machine::keyDevice().
    [[nodiscard]] int keyDevice() const;
    /// Whether the keyboard is the handheld's own.
    [[nodiscard]] static bool isOwnKeyboard();
    /// Keys that stand for device keys reach widgets as device keys (see deviceKey.h). If no widget
    /// accepts the key "Yes", it calls the slot accept() of the main window.
    bool notify(QObject *receiver, QEvent *event) override;

    /// Runs the event loop until the window is on the screen, at most `ms` milliseconds, then
    /// paints it; for a window that is shown just before long work.
    static void waitPainted(QWidget *widget, int ms);
    /// Shows a window maximized and returns when its size, and its layout's, are final.
    static void showMaximizedNow(QWidget *widget);
    /// The same for the whole screen.
    static void showFullScreenNow(QWidget *widget);
    /// Size of the screen of the main window in logical pixels. Use it wherever the desktop's size
    /// is needed, because the frame buffer has this size.
    static QSize desktopSize();
    /// While held, desktopSize() keeps its answer even if the screen changes. Calls nest.
    static void holdDesktopSize();
    static void releaseDesktopSize();

private:
    struct Agents;
    void startAgents();
    bool deliverKey(QWidget *receiver, QKeyEvent *event);
    bool deliverDeviceKey(QWidget *receiver, QKeyEvent *event, int key);
    void acceptMainWidget(const QWidget *receiver);

    QPointer<QWidget> m_mainWidget;
    std::unique_ptr<Agents> m_agents;
};
