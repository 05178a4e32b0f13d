// SPDX-License-Identifier: MIT
// The bare form of the version dialog: four labels and a button, by their object names.
#pragma once

#include <QDialog>

class QLabel;
class QPushButton;

class HkAboutDialogBase : public QDialog
{
    Q_OBJECT

public:
    explicit HkAboutDialogBase(QWidget *parent = nullptr);

protected:
    QLabel *appName = nullptr;
    QLabel *version = nullptr;
    QLabel *copyright = nullptr;
    QLabel *buildInfo = nullptr;
    QPushButton *okBtn = nullptr;
};
