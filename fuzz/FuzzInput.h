// SPDX-License-Identifier: MIT
// The environment of the harnesses: an application object without a display, a machine with 64 MB
// of free memory, a silent log, and the input as a file.
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

namespace lumi::fuzz {

/// Call it from LLVMFuzzerInitialize. The objects live to the end of the process.
void begin();

/// Writes the input to the same private file each time and returns its path. name: the file's name
/// in its folder.
[[nodiscard]] QString inputFile(const std::uint8_t *data, std::size_t size, const char *name);

} // namespace lumi::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
