// SPDX-License-Identifier: MIT
// A shortcut for a key code in the whole window of its parent. The code may be one of the device's
// own keys, for which Qt has no name. Emits activated().
#pragma once

#include <QShortcut>

class QAccel : public QShortcut
{
    Q_OBJECT

public:
    /// key: a key code, with modifiers or'ed in. The parent owns the accelerator.
    QAccel(int key, QWidget *parent);
};
