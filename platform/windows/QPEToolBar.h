// SPDX-License-Identifier: MIT
// The bar at the top of a window. It holds one host widget, and the menu bars are children of the
// host: a menu bar added to a QToolBar directly ignores hide() and leaves an action behind when it
// is deleted.
#pragma once

#include <QToolBar>

class QMainWindow;

class QPEToolBar : public QToolBar
{
    Q_OBJECT

public:
    /// Adds itself to the window, which owns it.
    explicit QPEToolBar(QMainWindow *window, const char *name = nullptr);

    /// Whether the host takes the whole width of the window.
    void setHorizontalStretchable(bool stretchable);

    /// Parent of the menu bars; belongs to the tool bar.
    [[nodiscard]] QWidget *host() const { return m_host; }

private:
    QWidget *m_host;
};
