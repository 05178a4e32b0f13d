// SPDX-License-Identifier: MIT
// The services of the handheld's window frame. Only its help button is used.
#pragma once

class QWidget;

class QPEDecoration
{
public:
    /// Shows the installed help pages in a modal window and returns when it is closed.
    void help(QWidget *widget);
};
