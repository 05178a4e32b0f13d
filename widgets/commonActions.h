// SPDX-License-Identifier: MIT
// The menu entries that all forms have.
#pragma once

class QWidget;

/// Shows the help pages for this window.
void showHelp(QWidget *window);

/// Shows the version dialog over this window and waits until it is closed.
void showVersion(QWidget *window);
