// SPDX-License-Identifier: MIT
// `lumivault-inspect swap FOLDER`: prints the index of a swap folder and changes nothing.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments are those behind the command's name. A line of JSON for the index, then one for
/// each control. 0 when the whole index was read, 1 when it is missing or damaged, 2 on wrong
/// usage.
int swapCommand(const QStringList &arguments, QTextStream &out);
