// SPDX-License-Identifier: MIT
// `lumivault-inspect rewrite FILE OPS.json`: changes the Exif block of a photo as the editor
// does. It is the one command that changes a file.
// Format: a list of {"op": "set", "tag", "type", "count", "data", "kind"} and
// {"op": "remove", "tag", "kind"}; data in hexadecimal, numbers in host order, or null, which
// removes the tag; kind is 0 IFD0, 1 Exif, 2 interoperability, 3 GPS, 4 IFD1.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments are those behind the command's name. Prints the result of the rewriting: 0 done,
/// 1 no room, 2 failed. 0 when that was 0, 1 when it was not or when the operations are not
/// well-formed, in which case nothing is printed and the photo is not touched, 2 on wrong usage.
int rewriteCommand(const QStringList &arguments, QTextStream &out, QTextStream &err);
