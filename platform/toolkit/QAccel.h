// SPDX-License-Identifier: MIT
// An accelerator on a key code, heard wherever the focus is in the window of its parent; the
// code may be one of the device's own keys, which stand for no character or named key.
// activated() tells of it.
#pragma once

#include <QShortcut>

class QAccel : public QShortcut
{
    Q_OBJECT

public:
    /// key: a key code, with modifiers or'ed in. The parent owns the accelerator.
    QAccel(int key, QWidget *parent);
};
