// SPDX-License-Identifier: MIT
#include "tests/exif/ui/BoxKeeper.h"

#include "widgets/MyDialogWait.h"

#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>

lumi::test::BoxKeeper::BoxKeeper()
{
    qApp->installEventFilter(this);
}

bool lumi::test::BoxKeeper::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = qobject_cast<QMessageBox *>(watched);
    if (box != nullptr && event->type() == QEvent::Show) {
        note(box);
        QTimer::singleShot(0, box, [this, box] {
            dismiss(box);
        });
    }
    return QObject::eventFilter(watched, event);
}

void lumi::test::BoxKeeper::note(const QMessageBox *box)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool waits = std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
        return qobject_cast<const MyDialogWait *>(window) != nullptr && window->isVisible();
    });
    boxes.append({box->icon(), box->windowTitle(), box->text(), box->standardButtons(),
                  box->standardButton(box->defaultButton()), box->parentWidget(), waits});
}

void lumi::test::BoxKeeper::dismiss(QMessageBox *box) const
{
    if (key != 0) {
        QTest::keyClick(box, static_cast<Qt::Key>(key));
    } else if (QAbstractButton *button = box->button(answer)) {
        button->click();
    } else {
        box->close();
    }
}
