// SPDX-License-Identifier: MIT
// Photos that are broken on purpose: cut at each boundary, with wrong sizes, lengths, counts, types
// and links, or of rare formats.
#pragma once

#include <QByteArray>

#include <vector>

namespace lumi::test {

struct HostileFile
{
    QByteArray name; ///< what is wrong with it
    QByteArray bytes;
};

/// Several hundred files, the same in each run.
[[nodiscard]] std::vector<HostileFile> hostileFiles();

} // namespace lumi::test
