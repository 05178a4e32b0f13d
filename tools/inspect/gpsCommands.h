// SPDX-License-Identifier: MIT
// `lumivault-inspect coordinates` and `lumivault-inspect altitude`: print how the editor reads
// texts that are typed or pasted, and what it would store in a photo.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments: the texts; without any, the lines of standard input. Prints a line of JSON for each,
/// valid or not. Returns 0.
int coordinatesCommand(const QStringList &arguments, QTextStream &out);
int altitudeCommand(const QStringList &arguments, QTextStream &out);
