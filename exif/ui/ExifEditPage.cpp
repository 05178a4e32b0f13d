// SPDX-License-Identifier: MIT
#include "exif/ui/ExifEditPage.h"

#include "exif/text/FPVExifFields.h"
#include "exif/ui/MyMultiLineEdit.h"

#include <QGridLayout>
#include <QLabel>

namespace {

constexpr int kMargin = 4;
constexpr int kSpacing = 4;

} // namespace

lumi::ExifEditPage::ExifEditPage(QWidget *parent, const EditPage &page, FPVExifFields *fields)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    grid->setSpacing(kSpacing);
    fields->setGroup(page.group);
    for (int row = 0; row < fields->rowCount() && m_edits.size() < page.rules.size(); ++row) {
        if (fields->rowReadOnly(row)) {
            continue;
        }
        const int line = static_cast<int>(m_edits.size());
        auto *edit = makeEdit(page.rules[m_edits.size()], fields->valueText(row, false));
        auto *label = new QLabel(fields->rowLabel(row), this);
        label->setTextFormat(Qt::PlainText);
        label->setBuddy(edit);
        grid->addWidget(label, line, 0, Qt::AlignVCenter);
        grid->addWidget(edit, line, 1, Qt::AlignVCenter);
        m_edits.push_back(edit);
    }
    // Keeps the lines at the top, because an on-screen keyboard may cover the bottom.
    grid->setRowStretch(grid->rowCount(), 1);
}

MyMultiLineEdit *lumi::ExifEditPage::makeEdit(const EditRule &rule, const QString &text)
{
    auto *edit = new MyMultiLineEdit(this);
    edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    edit->setFocusPolicy(Qt::StrongFocus);
    edit->setFixedVisibleLines(1);
    edit->setCharMask(rule.charMask);
    edit->setText(text);
    edit->setEdited(false);
    edit->setMaxLength(rule.maxLength);
    return edit;
}
