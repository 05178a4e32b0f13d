// SPDX-License-Identifier: MIT
// `lumivault-inspect exif FILE...`: prints what both Exif readers read from each file, and the
// texts that the user sees.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments: those after the command's name. Prints a line of JSON for each file that can be read,
/// with or without Exif data, and an error for each other one. Returns 0 if all could be read, 1 if
/// one could not, 2 on wrong usage.
int exifCommand(const QStringList &arguments, QTextStream &out, QTextStream &err);
