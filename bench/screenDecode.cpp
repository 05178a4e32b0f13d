// SPDX-License-Identifier: MIT
#include "bench/BareJpeg.h"
#include "bench/jobs.h"
#include "bench/photos.h"
#include "items/FPVItemJpeg.h"

#include <QFile>

namespace {

constexpr int kDepth = 32;
constexpr int kRounds = 9;

void decode(const QString &path, QSize *request)
{
    FPVItemJpeg item(path, QString(), false);
    item.setIncremental(false);
    QSize size;
    if (!item.startDecode(kDepth, &size, request) || item.rasterBits() == nullptr) {
        std::abort();
    }
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::screenDecodeRows(const QString &folder)
{
    const QString twelve = folder + QStringLiteral("/twelve.jpg");
    const QString eight = folder + QStringLiteral("/eight.jpg");
    if (!makePhoto(twelve, {4000, 3000}) || !makePhoto(eight, {3264, 2448})) {
        return {};
    }
    const QByteArray twelveName = QFile::encodeName(twelve);
    const QByteArray eightName = QFile::encodeName(eight);
    return {compare(
                {"screen decode, 12 megapixels for 640 x 480", "libjpeg at 1/4, not turned", 1.1,
                 kRounds},
                [&twelve] {
                    QSize request(640, 480);
                    decode(twelve, &request);
                },
                [&twelveName] {
                    bareDecode(twelveName, 4);
                }),
            compare(
                {"screen decode, 8 megapixels", "libjpeg at full size, not turned", 1.9, kRounds},
                [&eight] {
                    decode(eight, nullptr);
                },
                [&eightName] {
                    bareDecode(eightName, 1);
                })};
}
