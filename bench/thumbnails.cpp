// SPDX-License-Identifier: MIT
#include "bench/BareJpeg.h"
#include "bench/jobs.h"
#include "bench/photos.h"
#include "items/FPVItemJpeg.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>

#include <memory>

#include <unistd.h>

namespace {

constexpr QSize kTwelveMegapixels(4000, 3000);
constexpr QSize kBox(171, 119); // a cell of the large view
constexpr int kRounds = 9;

void askThumbnail(const QString &path)
{
    FPVItemJpeg item(path, QString(), false);
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(kBox.width(), kBox.height()));
    if (!pixmap || pixmap->isNull()) {
        std::abort();
    }
}

/// Further names of the photo; none if the file system has no hard links.
QStringList namesOf(const QString &photo, int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names.append(QStringLiteral("%1.%2.jpg").arg(photo).arg(i));
        if (::link(QFile::encodeName(photo).constData(),
                   QFile::encodeName(names.last()).constData())
            != 0) {
            return {};
        }
    }
    return names;
}

/// The necessary work for an embedded thumbnail: reads the segment, finds the picture in it and
/// decodes it.
void bareEmbedded(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::abort();
    }
    const QByteArray head = file.read(65536);
    const auto start = head.indexOf("\xFF\xD8", 2);
    const QPixmap pixmap = QPixmap::fromImage(QImage::fromData(head.mid(start), "JPEG"));
    if (pixmap.isNull()) {
        std::abort();
    }
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::thumbnailRows(const QString &folder)
{
    const QString plain = folder + QStringLiteral("/plain.jpg");
    const QString embedded = folder + QStringLiteral("/embedded.jpg");
    if (!makePhoto(plain, kTwelveMegapixels) || !makePhotoWithThumbnail(embedded, {1600, 1200})) {
        return {};
    }
    const QString storeFolder = folder + QStringLiteral("/.photo_swp");
    SwapSystem store(QFile::encodeName(storeFolder), QStringLiteral(".swp"));
    swapSystem(&store);
    const auto forget = [&store] {
        store.Clear();
    };
    const QByteArray plainName = QFile::encodeName(plain);

    // Each round uses another name of the photo, so that no stored thumbnail has to be deleted. After a
    // deletion ext4 takes long to find a free inode.
    QStringList cold = namesOf(plain, kRounds + 1);
    if (cold.isEmpty()) {
        return {};
    }
    std::vector<Row> rows;
    rows.push_back(compare(
        {"cold thumbnail, 12 megapixels, none embedded", "libjpeg at 1/8 through the same window",
         1.08, kRounds},
        [&cold] {
            askThumbnail(cold.takeLast());
        },
        [&plainName] {
            bareDecode(plainName, 8);
        }));
    rows.push_back(compare(
        {"cold thumbnail from an embedded one", "finding and decoding it", 3.0, 4 * kRounds},
        [&embedded] {
            askThumbnail(embedded);
        },
        [&embedded] {
            bareEmbedded(embedded);
        },
        forget));
    askThumbnail(plain);
    const QStringList files = QDir(storeFolder).entryList({QStringLiteral("*.swp")}, QDir::Files);
    const QString stored = storeFolder + QLatin1Char('/') + files.value(0);
    rows.push_back(compare(
        {"warm thumbnail", "QImage::load and QPixmap of the stored file", 1.4, 20 * kRounds},
        [&plain] {
            askThumbnail(plain);
        },
        [&stored] {
            QImage image;
            if (!image.load(stored, "JPEG") || QPixmap::fromImage(image).isNull()) {
                std::abort();
            }
        }));
    return rows;
}
