// SPDX-License-Identifier: MIT
#include "widgets/messageBoxes.h"

#include "platform/session/QuitRequest.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace {

/// Width of a text in pixels.
constexpr int kLongestLine = 460;
/// Width of a box's icon, margins and frame.
constexpr int kAroundText = 180;

/// QMessageBox wraps texts at half the width of the screen.
void keepLinesWhole(QMessageBox *box)
{
    auto *label = box->findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    if (label != nullptr) {
        const QSize needed = label->fontMetrics().size(0, box->text());
        const int room = box->screen()->availableSize().width() - kAroundText;
        label->setMinimumWidth(std::min({needed.width() + 1, kLongestLine, room}));
    }
}

} // namespace

std::unique_ptr<QMessageBox> lumi::makeBox(QWidget *parent, QMessageBox::Icon icon,
                                           const QString &caption, const QString &text,
                                           QMessageBox::StandardButtons buttons)
{
    const auto fallback = buttons.testFlag(QMessageBox::No) ? QMessageBox::No : QMessageBox::Ok;
    auto box = std::make_unique<QMessageBox>(icon, caption, QString(), buttons, parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setDefaultButton(fallback);
    box->setEscapeButton(fallback);
    return box;
}

int lumi::execBox(QMessageBox *box)
{
    return QuitRequest::isPending() ? box->standardButton(box->escapeButton()) : box->exec();
}

void lumi::tell(QWidget *parent, QMessageBox::Icon icon, const QString &caption,
                const QString &text, BoxLines lines)
{
    const auto box = makeBox(parent, icon, caption, text);
    if (lines == BoxLines::Whole) {
        keepLinesWhole(box.get());
    }
    execBox(box.get());
}

void lumi::tellError(QWidget *parent, const QString &text, BoxLines lines)
{
    tell(parent, QMessageBox::Critical, msg(MsgError), text, lines);
}

bool lumi::confirm(QWidget *parent, const QString &caption, const QString &question)
{
    const auto box = makeBox(parent, QMessageBox::Warning, caption, question,
                             QMessageBox::Yes | QMessageBox::No);
    return execBox(box.get()) == QMessageBox::Yes;
}

bool lumi::confirmDiscard(QWidget *parent, const QString &caption, const QString &question)
{
    return QuitRequest::isPending() || confirm(parent, caption, question);
}

bool lumi::ask(QWidget *parent, const QString &caption, const QString &question)
{
    const auto box = makeBox(parent, QMessageBox::NoIcon, caption, question,
                             QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::Yes);
    keepLinesWhole(box.get());
    return execBox(box.get()) == QMessageBox::Yes;
}

bool lumi::ask(QWidget *parent, const QString &caption, const QString &question, const QString &yes,
               const QString &no)
{
    const auto box = makeBox(parent, QMessageBox::NoIcon, caption, question, QMessageBox::NoButton);
    QPushButton *first = box->addButton(yes, QMessageBox::AcceptRole);
    box->setEscapeButton(box->addButton(no, QMessageBox::RejectRole));
    box->setDefaultButton(first);
    execBox(box.get());
    return box->clickedButton() == first;
}
