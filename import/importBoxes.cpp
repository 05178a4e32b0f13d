// SPDX-License-Identifier: MIT
#include "import/importBoxes.h"

#include "platform/windows/dialogButtons.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 4;
/// Of a text in a box, in pixels: with icon and frame it still fits the screen.
constexpr int kLongestLine = 460;
constexpr QSize kReportSize(380, 240);

/// A message box breaks lines at half the screen's width; ours are made to stand in one piece.
void widenForLines(QMessageBox *box)
{
    auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr) {
        return;
    }
    const QSize needed = label->fontMetrics().size(0, box->text());
    label->setMinimumWidth(qMin(needed.width() + 1, kLongestLine));
}

/// Made on the heap: the parent may go while it is up. Gives the button, or NoButton.
QMessageBox::StandardButton show(QMessageBox *newBox, const QString &caption, const QString &text)
{
    const QPointer<QMessageBox> box(newBox);
    box->setWindowTitle(caption);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    widenForLines(box);
    box->exec();
    const auto button = box ? box->standardButton(box->clickedButton()) : QMessageBox::NoButton;
    delete box;
    return button;
}

} // namespace

void lumi::tellBox(QWidget *parent, QMessageBox::Icon icon, const QString &caption,
                   const QString &text)
{
    auto *box = new QMessageBox(parent);
    box->setIcon(icon);
    box->setStandardButtons(QMessageBox::Ok);
    show(box, caption, text);
}

bool lumi::askYesNo(QWidget *parent, const QString &caption, const QString &text)
{
    auto *box = new QMessageBox(parent);
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::Yes);
    box->setEscapeButton(QMessageBox::No);
    return show(box, caption, text) == QMessageBox::Yes;
}

void lumi::showReport(QWidget *parent, const QString &caption, const QString &richText)
{
    const QPointer<QDialog> dialog(new QDialog(parent));
    dialog->setModal(true);
    dialog->setWindowTitle(caption);
    auto *layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    auto *browser = new QTextBrowser(dialog);
    browser->setMinimumSize(kReportSize);
    browser->setOpenLinks(false);
    browser->setHtml(richText);
    layout->addWidget(browser);
    layout->addWidget(makeCloseRow(dialog));
    dialog->exec();
    delete dialog;
}
