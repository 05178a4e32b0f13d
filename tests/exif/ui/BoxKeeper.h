// SPDX-License-Identifier: MIT
// Answers every message box as soon as it is shown, and records its contents.
#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>

namespace lumi::test {

class BoxKeeper : public QObject
{
    Q_OBJECT

public:
    struct Box
    {
        QMessageBox::Icon icon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton defaultButton;
        const QWidget *parent;
        bool duringWait; ///< a wait dialog was visible too
    };

    BoxKeeper();

    QList<Box> boxes;
    /// The button to click. NoButton closes the box. If a key is set, it is pressed instead.
    QMessageBox::StandardButton answer = QMessageBox::Ok;
    int key = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void note(const QMessageBox *box);
    void dismiss(QMessageBox *box) const;
};

} // namespace lumi::test
