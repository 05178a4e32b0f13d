// SPDX-License-Identifier: MIT
// A dialog that asks for one of several texts. Return accepts, Escape rejects.
#pragma once

#include <QDialog>
#include <QStringList>

class RadioButtonDialog : public QDialog
{
    Q_OBJECT

public:
    RadioButtonDialog(QWidget *parent, const QString &caption, const QString &text,
                      const QStringList &choices, int defaultIndex);

    /// The chosen index, or -1 if the dialog was rejected.
    int exec() override;

public Q_SLOTS:
    // NOLINTNEXTLINE(readability-identifier-naming): part of the interface
    void btn_clicked(int index);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    int m_index;
};
