// SPDX-License-Identifier: MIT
// Measures the budgets and prints them as a table; the exit status tells whether all are kept.
#include "bench/jobs.h"
#include "platform/QPEApplication.h"

#include <QTemporaryDir>

int main(int argc, char **argv)
{
    if (argc > 1) {
        return lumi::bench::processMain(argc, argv);
    }
    QPEApplication application(argc, argv);
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        return 2;
    }
    std::vector<lumi::bench::Row> rows;
    for (const auto job :
         {lumi::bench::listingRows, lumi::bench::thumbnailRows, lumi::bench::pageRows,
          lumi::bench::screenDecodeRows, lumi::bench::viewerRedrawRows, lumi::bench::exifTextRows,
          lumi::bench::exifRewriteRows, lumi::bench::importRows, lumi::bench::processRows}) {
        const std::vector<lumi::bench::Row> more = job(folder.path());
        if (more.empty()) {
            std::fprintf(stderr, "a job could not make its photos\n");
            return 2;
        }
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return lumi::bench::print(rows) ? 0 : 1;
}
