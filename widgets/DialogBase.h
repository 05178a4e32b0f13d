// SPDX-License-Identifier: MIT
// The base class of the full-screen viewer.
#pragma once

#include <QMessageBox>

class DialogBase : public QMessageBox
{
    Q_OBJECT

public:
    explicit DialogBase(QWidget *parent = nullptr, const char *name = nullptr);
};
