// SPDX-License-Identifier: MIT
// `lumivault-inspect raster FILE --depth 16|32 [--request WxH]`: decodes a photo as the viewer
// does and writes the turned raster raw to standard output.
#pragma once

#include <QStringList>

class QTextStream;

/// arguments are those behind the command's name. The decoded (unturned) size goes to err as
/// WxH. Without a request the photo is decoded at its full size, halved while that is too
/// large for a raster. 0 on success, 1 when the photo cannot be decoded or the raster cannot be
/// written, 2 on wrong usage.
int rasterCommand(const QStringList &arguments, QTextStream &err);
