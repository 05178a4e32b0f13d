// SPDX-License-Identifier: MIT
// Menu bar of a form. Several of them live in one tool bar; each form hides, shows and
// deletes its own. F10 opens the first menu of the visible bar; the arrow keys go on from there.
#pragma once

#include <QMenuBar>

class QPEToolBar;

class QPEMenuBar : public QMenuBar
{
    Q_OBJECT

public:
    /// A child of the tool bar's host. It is deleted with the tool bar, which outlives all forms.
    explicit QPEMenuBar(QPEToolBar *toolBar, const char *name = nullptr);

private:
    void openFirstMenu();
};
