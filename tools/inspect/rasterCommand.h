// SPDX-License-Identifier: MIT
// `lumivault-inspect raster FILE --depth 16|32 [--request WxH]`: decodes a photo as the viewer
// does and writes the turned raster raw to standard output.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments: those after the command's name. Prints the decoded (unturned) size to err as WxH.
/// Without a request the photo is decoded at its full size, halved while that is too large for a
/// raster. Returns 0 on success, 1 if the photo cannot be decoded or the raster cannot be written,
/// 2 on wrong usage.
int rasterCommand(const QStringList &arguments, QTextStream &err);
