// SPDX-License-Identifier: MIT
// A folder whose photos can be rewritten. Installs a machine with free disk space while it lives.
#pragma once

#include "exif/write/FPVExifWriter.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/FakeMachine.h"

namespace lumi::test {

/// The results of FPVExifWriter::rewrite().
inline constexpr int kDone = 0;
inline constexpr int kNoRoom = 1;
inline constexpr int kFailed = 2;

class RewriteFolder : public PhotoFolder
{
public:
    RewriteFolder() { FakeMachine::install()->setFreeDiskKB(kFreeKB); }

    ~RewriteFolder() { Machine::install(nullptr); }

    RewriteFolder(const RewriteFolder &) = delete;
    RewriteFolder &operator=(const RewriteFolder &) = delete;

private:
    static constexpr int kFreeKB = 1000000;
};

/// Rewrites the photo without a change and returns the result.
[[nodiscard]] inline int rewritten(const QString &path)
{
    return FPVExifWriter(path).rewrite();
}

} // namespace lumi::test
