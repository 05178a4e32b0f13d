// SPDX-License-Identifier: MIT
// A message box under a name of our own, as base of the full-screen viewer.
#pragma once

#include <QMessageBox>

class DialogBase : public QMessageBox
{
    Q_OBJECT

public:
    explicit DialogBase(QWidget *parent = nullptr, const char *name = nullptr);
};
