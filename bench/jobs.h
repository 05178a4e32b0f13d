// SPDX-License-Identifier: MIT
// The measured jobs, grouped by what they exercise. Each returns its rows of the table and
// works below a folder that the caller made and removes.
#pragma once

#include "bench/Measure.h"

#include <QString>

#include <vector>

namespace lumi::bench {

std::vector<Row> listingRows(const QString &folder);
std::vector<Row> thumbnailRows(const QString &folder);
std::vector<Row> pageRows(const QString &folder);
/// Uses the browsing form, from the tap to the first cell on the screen.
std::vector<Row> openingRows(const QString &folder);
std::vector<Row> screenDecodeRows(const QString &folder);
/// Needs no file.
std::vector<Row> viewerRedrawRows(const QString &folder);
std::vector<Row> exifTextRows(const QString &folder);
std::vector<Row> exifRewriteRows(const QString &folder);
std::vector<Row> importRows(const QString &folder);
/// Start-up and resident memory, each in separate processes.
std::vector<Row> processRows(const QString &folder);

/// Entry of the processes that processRows() starts. \return the exit status
int processMain(int argc, char **argv);

} // namespace lumi::bench
