// SPDX-License-Identifier: MIT
// Tells which part of the screen memory a widget may write. Other windows over it are not
// taken off: the window system keeps them intact, and a hole that was never written would show
// old pixels once the other window moves away.
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
