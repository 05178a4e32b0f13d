// SPDX-License-Identifier: MIT
#include "bench/jobs.h"
#include "bench/photos.h"
#include "items/FPVItemList.h"

#include <QDir>

namespace {

constexpr int kPhotos = 10000;

} // namespace

std::vector<lumi::bench::Row> lumi::bench::listingRows(const QString &folder)
{
    const QString path = folder + QStringLiteral("/many");
    if (!makeFolder(path, kPhotos)) {
        return {};
    }
    const auto list = [&path] {
        FPVItemList items;
        if (items.load(path, path) != ListResult::Listed || items.count() != kPhotos) {
            std::abort();
        }
    };
    const auto bare = [&path] {
        const QDir dir(path);
        const QFileInfoList entries
            = dir.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoSymLinks | QDir::Readable,
                                QDir::Name | QDir::DirsFirst);
        if (entries.size() < kPhotos) {
            std::abort();
        }
    };
    std::vector<Row> rows{
        compare({"list 10,000 photos, items made", "sorted QDir listing", 1.5, 7}, list, bare)};
    // The allocator still has the pages of the rounds above. The first list uses them up, so the
    // second one shows the memory of the items.
    FPVItemList first;
    first.load(path, path);
    const long before = residentKiB();
    FPVItemList second;
    second.load(path, path);
    const double perItem = static_cast<double>(residentKiB() - before) / kPhotos;
    rows.push_back({"resident memory of one item", "nothing", perItem, 0, "KiB", 2.0, true});
    return rows;
}
