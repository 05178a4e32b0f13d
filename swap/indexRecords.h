// SPDX-License-Identifier: MIT
// The records of the store's index file as plain values.
// Format: integers are 32 bits, little-endian, without padding between them. A text is its
// length in characters, then its characters in Latin-1, in a field of (length + 4) rounded
// down to a multiple of 4 that is filled up with zero bytes. Times are whole seconds since
// 1970-01-01 UTC. The file is
//   writing time, number of controls, and for each control
//     id, number of blocks, folder (text), and for each block
//       source name (text), source time, width, height, param, kind, swap path (text),
//       swap time.
// There is no magic number, version or checksum.
#pragma once

#include <QString>

#include <cstdint>

namespace lumi {

struct IndexHeader
{
    std::int32_t writingTime = 0;
    std::int32_t controlCount = 0;
};

struct ControlRecord
{
    std::int32_t id = 0;
    std::int32_t blockCount = 0;
    QString folder; ///< absolute, no trailing slash
};

struct BlockRecord
{
    QString sourceName; ///< without folder
    std::int32_t sourceTime = 0;
    std::int32_t width = -1;
    std::int32_t height = -1;
    std::int32_t param = 0;
    signed char kind = 0; ///< written sign-extended, its low 7 bits read back
    QString swapPath;     ///< absolute
    std::int32_t swapTime = 0;
};

} // namespace lumi
