// SPDX-License-Identifier: MIT
// `lumivault-inspect rewrite FILE OPS.json`: changes the Exif block of a photo with the editor's
// writer, but without its check of the length. It is the only command that changes a file.
// Format: a list of {"op": "set", "tag", "type", "count", "data", "kind"} and
// {"op": "remove", "tag", "kind"}; data in hexadecimal, numbers in host order, or null, which
// removes the tag; kind is 0 IFD0, 1 Exif, 2 interoperability, 3 GPS, 4 IFD1.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments: those after the command's name. Prints the result of FPVExifWriter::rewrite(): 0
/// done, 1 no room, 2 failed. If the operations are not well-formed, prints nothing and does not
/// touch the photo. Returns 0 if the result is 0, 1 if not, 2 on wrong usage.
int rewriteCommand(const QStringList &arguments, QTextStream &out, QTextStream &err);
