// SPDX-License-Identifier: MIT
// Gives the part of the screen memory that a widget may write. Windows above it are not
// subtracted: the window system keeps them intact, and a part that was never written would show old
// pixels when such a window moves away.
#pragma once

#include <QRegion>

class QWidget;

class QWSRegionManager
{
public:
    /// The exposed part of the widget, in coordinates of the turned memory and inside it.
    /// Empty for a widget that is hidden, minimised or not yet on the screen.
    [[nodiscard]] QRegion region(const QWidget *widget) const;
};

struct QWSDisplay
{
    /// Never null.
    [[nodiscard]] QWSRegionManager *regionManager() { return &m_regionManager; }

private:
    QWSRegionManager m_regionManager;
};

/// The display of the process; never null.
extern QWSDisplay *qt_fbdpy; // NOLINT(readability-identifier-naming): part of the interface
