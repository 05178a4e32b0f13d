// SPDX-License-Identifier: MIT
// Menu bar of a form. Several of them live in one tool bar; each form hides, shows and
// deletes its own.
#pragma once

#include <QMenuBar>

class QPEToolBar;

class QPEMenuBar : public QMenuBar
{
    Q_OBJECT

public:
    /// A child of the tool bar's host. It is deleted with the tool bar, which outlives all forms.
    explicit QPEMenuBar(QPEToolBar *toolBar, const char *name = nullptr);
};
