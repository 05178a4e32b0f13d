// SPDX-License-Identifier: MIT
#include "tools/photos/Commands.h"

#include "tools/photos/Files.h"

#include <QImage>
#include <QStringList>

#include <algorithm>
#include <array>
#include <vector>

namespace lumi::photos {

namespace {

struct TraitName
{
    const char *name;
    unsigned traits;
};

constexpr std::array kTraitNames{
    TraitName{"none", Plain},
    TraitName{"exif", Exif},
    TraitName{"thumbnail", Camera},
    TraitName{"gps", Exif | Gps},
    TraitName{"comment", Exif | Comment},
    TraitName{"bigendian", Exif | BigEndian},
    TraitName{"progressive", Progressive},
    TraitName{"gray", Gray},
    TraitName{"jfif", Jfif},
    TraitName{"cutoff", CutOff},
};

// By SceneKind.
constexpr std::array kSceneNames{"mountains", "lake", "sea", "dunes", "forest", "city"};
static_assert(kSceneNames.size() == kSceneKinds);

// JPEG holds no longer side.
constexpr int kLongestSide = 65500;
constexpr int kMostPhotos = 1000000;
// Pictures that the photos of one folder share.
constexpr int kMotifs = 12;

bool readNumber(const QString &text, int least, int most, int &number)
{
    bool good = false;
    const int value = text.toInt(&good);
    if (!good || value < least || value > most) {
        return false;
    }
    number = value;
    return true;
}

bool readSize(const QString &text, QSize &size)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    int width = 0;
    int height = 0;
    if (sides.size() != 2 || !readNumber(sides.at(0), 1, kLongestSide, width)
        || !readNumber(sides.at(1), 1, kLongestSide, height)) {
        return false;
    }
    size = QSize(width, height);
    return true;
}

bool readTraits(const QString &text, unsigned &traits)
{
    traits = Plain;
    const QStringList words = text.split(QLatin1Char(','));
    for (const QString &word : words) {
        const auto *const row
            = std::find_if(kTraitNames.begin(), kTraitNames.end(), [&word](const TraitName &known) {
                  return word == QLatin1String(known.name);
              });
        if (row == kTraitNames.end()) {
            return false;
        }
        traits |= row->traits;
    }
    return true;
}

bool readScene(const QString &text, SceneKind &scene)
{
    for (std::size_t i = 0; i < kSceneNames.size(); ++i) {
        if (text == QLatin1String(kSceneNames[i])) {
            scene = static_cast<SceneKind>(i);
            return true;
        }
    }
    return false;
}

struct Motif
{
    PhotoOrder order;
    QByteArray jpeg;
    QByteArray thumbnail;
};

std::vector<Motif> makeMotifs(const Request &request)
{
    std::vector<Motif> motifs;
    for (int i = 0; i < kMotifs && i < request.count; ++i) {
        Motif motif;
        motif.order = request.photo;
        motif.order.scene = static_cast<SceneKind>(i % kSceneKinds);
        motif.order.seed += static_cast<std::uint64_t>(i);
        motif.order.traits &= ~static_cast<unsigned>(Exif);
        motif.jpeg = makePhoto(motif.order);
        motif.order.traits = request.photo.traits;
        if ((motif.order.traits & Embedded) != 0) {
            motif.thumbnail
                = makeThumbnail(QImage::fromData(motif.jpeg), (motif.order.traits & Gray) != 0);
        }
        motifs.push_back(motif);
    }
    return motifs;
}

} // namespace

bool setOption(Request &request, const QString &name, const QString &value)
{
    if (name == QLatin1String("count")) {
        return readNumber(value, 1, kMostPhotos, request.count);
    }
    if (name == QLatin1String("size")) {
        return readSize(value, request.photo.size);
    }
    if (name == QLatin1String("traits")) {
        return readTraits(value, request.photo.traits);
    }
    if (name == QLatin1String("scene")) {
        return readScene(value, request.photo.scene);
    }
    bool good = false;
    request.photo.seed = value.toULongLong(&good);
    return good && name == QLatin1String("seed");
}

bool makeMany(const QString &folder, const Request &request)
{
    const std::vector<Motif> motifs = makeMotifs(request);
    for (int i = 0; i < request.count; ++i) {
        const Motif &motif = motifs[static_cast<std::size_t>(i) % motifs.size()];
        PhotoOrder order = motif.order;
        order.number = i + 1;
        const bool exif = (order.traits & Exif) != 0;
        const QByteArray bytes
            = exif ? describePhoto(motif.jpeg, order, motif.thumbnail) : motif.jpeg;
        if (!writeFile(folder + QString::asprintf("/IMG_%05d.JPG", i + 1), bytes)) {
            return false;
        }
    }
    return true;
}

bool makeOne(const QString &path, const Request &request)
{
    return writeFile(path, makePhoto(request.photo));
}

} // namespace lumi::photos
