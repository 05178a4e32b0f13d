// SPDX-License-Identifier: MIT
// Converts the numbers of a value between the byte orders of file and host.
#pragma once

#include <QtGlobal>

#include <span>

namespace lumi {

/// Swaps the bytes of each number in a value of that TIFF type, if the file's order is not the
/// host's. Works in both directions. Bytes, texts and untyped values stay as they are, and so does
/// an incomplete number at the end.
void convertOrder(std::span<char> value, quint16 type, bool littleEndian);

} // namespace lumi
