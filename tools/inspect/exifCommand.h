// SPDX-License-Identifier: MIT
// `lumivault-inspect exif FILE...`: prints what both Exif readers make of each file,
// and the texts that the user sees of it.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments are those behind the command's name. A line of JSON for each file that can be
/// read, with Exif data or without, and a complaint for each other one. 0 when all could be
/// read, 1 when one could not, 2 on wrong usage.
int exifCommand(const QStringList &arguments, QTextStream &out, QTextStream &err);
