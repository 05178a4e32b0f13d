// SPDX-License-Identifier: MIT
// Numbers among the bytes of a tag's value, between the order of a file and that of the host.
#pragma once

#include <QtGlobal>

#include <span>

namespace lumi {

/// Swaps the numbers of a value of that TIFF type where the order meant is not the host's.
/// The way back is the same call. Bytes, texts and untyped values are left alone, and so are
/// bytes at the end that make no whole number.
void convertOrder(std::span<char> value, quint16 type, bool littleEndian);

} // namespace lumi
