// SPDX-License-Identifier: MIT
// `lumivault-inspect swap FOLDER`: prints the index of a swap folder and changes nothing.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments: those after the command's name. Prints a line of JSON for the index, then one for
/// each control. Returns 0 if the whole index was read, 1 if it is missing or damaged, 2 on wrong
/// usage.
int swapCommand(const QStringList &arguments, QTextStream &out);
