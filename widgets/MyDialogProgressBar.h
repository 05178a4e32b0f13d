// SPDX-License-Identifier: MIT
// The dialog of a long run with a known number of steps. Cancel hides it at once and emits a
// signal. The dialog does not stop the work.
#pragma once

#include <QDialog>

class QProgressBar;

class MyDialogProgressBar : public QDialog
{
    Q_OBJECT

public:
    /// @param secondText below the bar; a null string for none
    MyDialogProgressBar(QWidget *parent, const QString &text,
                        const QString &secondText = QString());
    ~MyDialogProgressBar() override;

    /// Shows the dialog and runs events until it is painted.
    void start(int total);
    void progress(int n);

Q_SIGNALS:
    void btn_cancel_clicked();

public Q_SLOTS:
    void reject() override;

private:
    QProgressBar *m_bar;
};
