// SPDX-License-Identifier: MIT
// Photos that are broken on purpose, in every way that has a name: cut at each boundary, with
// lying sizes, lengths, counts, types and links, of forms that few decoders know.
#pragma once

#include <QByteArray>

#include <vector>

namespace lumi::test {

struct HostileFile
{
    QByteArray name; ///< what is wrong with it
    QByteArray bytes;
};

/// The same files in every run, several hundred.
[[nodiscard]] std::vector<HostileFile> hostileFiles();

} // namespace lumi::test
