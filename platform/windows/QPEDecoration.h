// SPDX-License-Identifier: MIT
// What the window frame of the handheld offers; of it only the help button is used.
#pragma once

class QWidget;

class QPEDecoration
{
public:
    /// Shows the installed help pages in a modal window and returns when it is closed.
    void help(QWidget *widget);
};
