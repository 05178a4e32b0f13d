// SPDX-License-Identifier: MIT
// `lumivault-inspect coordinates` and `lumivault-inspect altitude`: print what the editor would
// make of texts that somebody types or pastes, and what it would store in a photo.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments are the texts; without any, each line of standard input is one. A line of JSON for
/// each, valid or not. Always 0.
int coordinatesCommand(const QStringList &arguments, QTextStream &out);
int altitudeCommand(const QStringList &arguments, QTextStream &out);
