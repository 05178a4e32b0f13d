// SPDX-License-Identifier: MIT
#include "tools/photos/Photo.h"

#include "tools/photos/ExifBlock.h"
#include "tools/photos/JpegFile.h"
#include "tools/photos/Noise.h"

#include <QDateTime>
#include <QTimeZone>

#include <array>

namespace lumi::photos {

namespace {

struct Position
{
    double latitude;
    double longitude;
    double altitude;
};

// Where each kind of scene was taken, by SceneKind.
constexpr std::array<Position, kSceneKinds> kPositions{{
    {46.5587, 7.8925, 2061.0},
    {47.5942, 12.9876, 603.0},
    {-34.3568, 18.4740, 12.5},
    {31.0802, -4.0133, 712.0},
    {48.1351, 8.2040, 864.0},
    {40.7061, -73.9969, 8.0},
}};

QByteArray dateOf(int number)
{
    // A shot every 37 minutes keeps every photo's time its own.
    const QDateTime first(QDate(2004, 7, 12), QTime(9, 30), QTimeZone::utc());
    return first.addSecs(37LL * 60 * number)
        .toString(QStringLiteral("yyyy:MM:dd HH:mm:ss"))
        .toLatin1();
}

ExifFacts factsOf(const PhotoOrder &order)
{
    Random random(order.seed + 77);
    constexpr std::array<quint32, 5> kExposures{60, 125, 250, 500, 1000};
    constexpr std::array<quint32, 4> kApertures{28, 40, 56, 80};
    ExifFacts facts;
    facts.bigEndian = (order.traits & BigEndian) != 0;
    facts.make = facts.bigEndian ? "NORVIK" : "Helio Optics";
    facts.model = facts.bigEndian ? "NORVIK N3 Zoom" : "Helio D20";
    facts.dateTaken = dateOf(order.number);
    facts.size = order.size;
    const bool night = order.scene == SceneKind::City;
    facts.exposureDenominator = night ? 4 : kExposures[static_cast<std::size_t>(random.pick(5))];
    facts.apertureTenths = night ? 28 : kApertures[static_cast<std::size_t>(random.pick(4))];
    facts.iso = night ? 400 : 100;
    facts.focalTenths = 60 + 10 * static_cast<quint32>(random.pick(18));
    if ((order.traits & Comment) != 0) {
        facts.comment = "Taken on the way home";
    }
    if ((order.traits & Gps) != 0) {
        const Position &position = kPositions[static_cast<std::size_t>(order.scene)];
        facts.gps = true;
        facts.latitude = position.latitude + order.number * 0.0013;
        facts.longitude = position.longitude - order.number * 0.0017;
        facts.altitude = position.altitude;
    }
    return facts;
}

} // namespace

QByteArray makeThumbnail(const QImage &image, bool gray)
{
    JpegForm form;
    form.quality = 80;
    form.gray = gray;
    return encodeJpeg(image.scaled(160, 120, Qt::KeepAspectRatio, Qt::SmoothTransformation), form);
}

QByteArray describePhoto(const QByteArray &jpeg, const PhotoOrder &order,
                         const QByteArray &thumbnail)
{
    return withExif(jpeg, exifBlock(factsOf(order), thumbnail));
}

QByteArray makePhoto(const PhotoOrder &order)
{
    constexpr int kGrain = 5;
    const bool gray = (order.traits & Gray) != 0;
    const QImage image = paintScene(order.scene, order.size, order.seed)
                             .toImage(order.size, static_cast<unsigned>(order.seed), kGrain);
    JpegForm form;
    form.quality = order.quality;
    form.gray = gray;
    form.progressive = (order.traits & Progressive) != 0;
    form.jfif = (order.traits & Jfif) != 0;
    QByteArray bytes = encodeJpeg(image, form);
    if ((order.traits & Exif) != 0) {
        const bool embedded = (order.traits & Embedded) != 0;
        bytes = describePhoto(bytes, order, embedded ? makeThumbnail(image, gray) : QByteArray());
    }
    if ((order.traits & CutOff) != 0) {
        bytes.truncate(bytes.size() * 3 / 5);
    }
    return bytes;
}

} // namespace lumi::photos
