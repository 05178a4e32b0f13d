// SPDX-License-Identifier: MIT
#include "platform/windows/QPEToolBar.h"

#include <QHBoxLayout>
#include <QMainWindow>

QPEToolBar::QPEToolBar(QMainWindow *window, const char *name)
    : QToolBar(window)
    , m_host(new QWidget)
{
    setObjectName(QString::fromLatin1(name));
    setMovable(false);
    setFloatable(false);
    // The window's default menu would let the user hide the bar for good.
    setContextMenuPolicy(Qt::PreventContextMenu);
    auto *row = new QHBoxLayout(m_host);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    addWidget(m_host);
    setHorizontalStretchable(false);
    window->addToolBar(this);
}

void QPEToolBar::setHorizontalStretchable(bool stretchable)
{
    m_host->setSizePolicy(stretchable ? QSizePolicy::Expanding : QSizePolicy::Maximum,
                          QSizePolicy::Preferred);
}
