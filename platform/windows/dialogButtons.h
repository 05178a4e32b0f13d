// SPDX-License-Identifier: MIT
// On the handheld the window frame accepts and closes dialogs. A desktop's frame has no OK
// button, so dialogs without a way to accept or close get one of these rows.
#pragma once

class QDialog;
class QDialogButtonBox;

namespace lumi {

/// OK and Cancel, connected to accept() and reject(). A child of the dialog, which still has
/// to put it into its layout.
QDialogButtonBox *makeAcceptRow(QDialog *dialog);

/// Close, connected to reject(); otherwise as makeAcceptRow().
QDialogButtonBox *makeCloseRow(QDialog *dialog);

} // namespace lumi
