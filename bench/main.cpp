// SPDX-License-Identifier: MIT
// Measures the budgets and prints them as a table; the exit status tells whether all are kept.
// Job names as arguments choose among them.
#include "bench/jobs.h"
#include "platform/QPEApplication.h"

#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <string>

namespace {

struct Job
{
    const char *name;
    std::vector<lumi::bench::Row> (*run)(const QString &folder);
};

constexpr std::array kJobs{
    Job{"listing", lumi::bench::listingRows},     Job{"thumbnails", lumi::bench::thumbnailRows},
    Job{"pages", lumi::bench::pageRows},          Job{"opening", lumi::bench::openingRows},
    Job{"screen", lumi::bench::screenDecodeRows}, Job{"redraw", lumi::bench::viewerRedrawRows},
    Job{"texts", lumi::bench::exifTextRows},      Job{"rewrite", lumi::bench::exifRewriteRows},
    Job{"import", lumi::bench::importRows},       Job{"processes", lumi::bench::processRows},
};

bool isJob(const std::string &name)
{
    return std::any_of(kJobs.begin(), kJobs.end(), [&name](const Job &job) {
        return name == job.name;
    });
}

} // namespace

int main(int argc, char **argv)
{
    const std::vector<std::string> chosen(argv + 1, argv + argc);
    if (!std::all_of(chosen.begin(), chosen.end(), isJob)) {
        return lumi::bench::processMain(argc, argv);
    }
    QPEApplication application(argc, argv);
    const QTemporaryDir folder;
    if (!folder.isValid()) {
        return 2;
    }
    std::vector<lumi::bench::Row> rows;
    for (const Job &job : kJobs) {
        if (!chosen.empty() && std::find(chosen.begin(), chosen.end(), job.name) == chosen.end()) {
            continue;
        }
        const std::vector<lumi::bench::Row> more = job.run(folder.path());
        if (more.empty()) {
            std::fprintf(stderr, "%s could not make its photos\n", job.name);
            return 2;
        }
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return lumi::bench::print(rows) ? 0 : 1;
}
