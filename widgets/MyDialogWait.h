// SPDX-License-Identifier: MIT
// The dialog shown while the program works. The user can't close it; it is closed by the caller or
// by its time limit.
#pragma once

#include <QDialog>

class MyDialogWait : public QDialog
{
    Q_OBJECT

public:
    /// @param buttonText a null string for a dialog without a button
    MyDialogWait(QWidget *parent, const QString &text, const QString &buttonText = QString());
    ~MyDialogWait() override;

    /// Shows the dialog and runs events until it is painted, so that other slots can run before
    /// this returns. @param ms time after which it closes by itself; 0 or less for no limit
    void start(int ms);

Q_SIGNALS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_clicked();

public Q_SLOTS:
    void slot_timeout();
    // NOLINTEND(readability-identifier-naming)

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
};
