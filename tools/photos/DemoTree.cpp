// SPDX-License-Identifier: MIT
#include "tools/photos/DemoTree.h"

#include "tools/photos/Files.h"
#include "tools/photos/Noise.h"
#include "tools/photos/Photo.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace lumi::photos {

namespace {

using Kind = SceneKind;

struct Row
{
    const char *path; ///< UTF-8, below the folder of the tree
    Kind scene;
    int seed;
    int width;
    int height;
    unsigned traits;
};

#define STORE "home/Documents/Photo_Files/"
constexpr std::array kRows{
    Row{STORE "Evening.jpg", Kind::Lake, 4, 1600, 1200, Camera | Gps | Comment},
    Row{STORE "First light over the hills, seen from the old bridge.jpg", Kind::Mountains, 2, 1600,
        1200, Camera},
    Row{STORE "In black and white.jpg", Kind::Lake, 2, 1280, 960, Gray | Camera},
    Row{STORE "Panorama.jpg", Kind::Mountains, 4, 4200, 900, Jfif},
    Row{STORE "Upright.JPG", Kind::Forest, 3, 1200, 1600, OtherCamera},
    Row{STORE "Web copy.jpeg", Kind::Sea, 2, 1024, 768, Progressive | Jfif},
    Row{STORE "Cut off.jpg", Kind::Lake, 8, 1024, 768, Plain | CutOff},
    Row{STORE "Small.jpg", Kind::Dunes, 5, 320, 240, Plain},
    Row{STORE "Alps 2004/DSC00101.JPG", Kind::Mountains, 1, 4000, 3000, Camera | Gps},
    Row{STORE "Alps 2004/DSC00102.JPG", Kind::Lake, 1, 4000, 3000, Camera | Gps},
    Row{STORE "Alps 2004/DSC00103.JPG", Kind::Mountains, 3, 4000, 3000, Exif | Gps},
    Row{STORE "Alps 2004/DSC00104.JPG", Kind::Lake, 3, 3264, 2448, Camera | Gps},
    Row{STORE "Alps 2004/DSC00105.JPG", Kind::Forest, 1, 3264, 2448, Camera},
    Row{STORE "Alps 2004/DSC00106.JPG", Kind::Lake, 5, 2448, 3264, Camera},
    Row{STORE "Alps 2004/DSC00107.JPG", Kind::Mountains, 5, 3000, 4000, Camera | Progressive},
    Row{STORE "Alps 2004/Second day/DSC00120.JPG", Kind::Mountains, 6, 1600, 1200, Camera | Gps},
    Row{STORE "Alps 2004/Second day/DSC00121.JPG", Kind::Lake, 6, 1600, 1200, Camera | Gps},
    Row{STORE "Alps 2004/Second day/DSC00122.JPG", Kind::Forest, 5, 1600, 1200, Camera},
    Row{STORE "By the sea/Coast.jpg", Kind::Sea, 1, 2048, 1536, OtherCamera | Gps},
    Row{STORE "By the sea/Dusk.jpg", Kind::Sea, 2, 2048, 1536, OtherCamera | Gps},
    Row{STORE "By the sea/Fog.jpg", Kind::Sea, 3, 2048, 1536, OtherCamera},
    Row{STORE "By the sea/Islands.jpg", Kind::Sea, 5, 2048, 1536, OtherCamera | Gps},
    Row{STORE "By the sea/Dunes/Path.jpg", Kind::Dunes, 2, 1600, 1200, OtherCamera},
    Row{STORE "By the sea/Dunes/Wind.jpg", Kind::Dunes, 3, 1600, 1200, OtherCamera},
    Row{STORE "City by night/Bridge.jpg", Kind::City, 1, 2048, 1536, Camera | Gps},
    Row{STORE "City by night/Harbour.jpg", Kind::City, 2, 2048, 1536, Camera | Gps},
    Row{STORE "City by night/Moon.jpg", Kind::City, 3, 1536, 2048, Camera},
    Row{STORE "City by night/Tower.jpg", Kind::City, 4, 2048, 1536, Camera | Progressive},
    Row{STORE "F\xC3\xBCr Oma/Gr\xC3\xBC\xC3\x9F"
              "e.jpg",
        Kind::Forest, 2, 1280, 960, Camera},
    Row{"cf/dcim/100helio/img_0001.jpg", Kind::Mountains, 7, 2048, 1536, Camera},
    Row{"cf/dcim/100helio/img_0002.jpg", Kind::Lake, 7, 2048, 1536, Camera},
    Row{"cf/dcim/100helio/img_0003.jpg", Kind::Forest, 7, 2048, 1536, Camera},
    Row{"cf/dcim/100helio/img_0005.jpg", Kind::Forest, 8, 2048, 1536, Camera},
    Row{"cf/dcim/101helio/img_0101.jpg", Kind::City, 7, 1600, 1200, Camera},
    Row{"cf/dcim/101helio/img_0102.jpg", Kind::City, 8, 1600, 1200, Camera},
    Row{"sd/dcim/nv000001.jpg", Kind::Sea, 7, 1600, 1200, OtherCamera},
    Row{"sd/dcim/nv000002.jpg", Kind::Sea, 8, 1600, 1200, OtherCamera},
    Row{"sd/dcim/103norvk/nv000003.jpg", Kind::Dunes, 7, 1600, 1200, OtherCamera | Gps},
    Row{"sd/dcim/103norvk/nv000004.jpg", Kind::Dunes, 8, 1600, 1200, OtherCamera | Gps},
};

struct OtherFile
{
    const char *path;
    int size; ///< bytes
};

constexpr std::array kOtherFiles{
    OtherFile{STORE "Shopping list.txt", 180},
    OtherFile{STORE "Damaged.jpg", 9000},
    OtherFile{"cf/dcim/100helio/mvi_0004.avi", 400000},
    OtherFile{"cf/dcim/100helio/mvi_0004.thm", 4000},
    OtherFile{"cf/dcim/autprint.mrk", 600},
    OtherFile{"sd/dcim/103norvk/nv000005.mov", 250000},
};

constexpr std::array kEmptyFolders{STORE "Nothing here yet", "cf/misc", "sd/private"};
#undef STORE

// Enough for several pages of the smallest thumbnails.
constexpr int kAlbumPhotos = 90;

struct Job
{
    QString path;
    PhotoOrder order;
};

std::vector<Job> photoJobs(const QString &folder)
{
    std::vector<Job> jobs;
    int number = 0;
    for (const Row &row : kRows) {
        PhotoOrder order{row.scene, static_cast<std::uint64_t>(row.seed),
                         QSize(row.width, row.height), row.traits, ++number};
        jobs.push_back({folder + QLatin1Char('/') + QString::fromUtf8(row.path), order});
    }
    for (int i = 1; i <= kAlbumPhotos; ++i) {
        PhotoOrder order;
        order.scene = static_cast<Kind>(i % kSceneKinds);
        order.seed = 100 + static_cast<std::uint64_t>(i);
        order.size = i % 7 == 0 ? QSize(300, 400) : QSize(400, 300);
        order.traits = i % 3 == 0 ? Camera : Plain;
        order.number = 200 + i;
        jobs.push_back(
            {folder + QString::asprintf("/home/Documents/Photo_Files/Album/Picture %03d.jpg", i),
             order});
    }
    return jobs;
}

bool makePhotoOf(const Job &job)
{
    return fileExists(job.path) || writeFile(job.path, makePhoto(job.order));
}

struct Progress
{
    std::atomic<std::size_t> next{0};
    std::atomic<bool> good{true};
};

void work(const std::vector<Job> &jobs, Progress &progress)
{
    for (std::size_t i = progress.next++; i < jobs.size(); i = progress.next++) {
        if (!makePhotoOf(jobs[i])) {
            progress.good = false;
        }
    }
}

/// Spreads the photos over the processors: painting them is all the work there is.
bool makePhotos(const std::vector<Job> &jobs)
{
    Progress progress;
    std::vector<std::thread> threads(std::clamp(std::thread::hardware_concurrency(), 1U, 8U));
    for (std::thread &thread : threads) {
        thread = std::thread(work, std::cref(jobs), std::ref(progress));
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    return progress.good;
}

QByteArray noise(int size)
{
    Random random(static_cast<std::uint64_t>(size));
    QByteArray bytes;
    for (int i = 0; i < size; ++i) {
        bytes.append(static_cast<char>(random.next() & 0xFFU));
    }
    return bytes;
}

bool makeOtherFiles(const QString &folder)
{
    bool good = true;
    for (const OtherFile &file : kOtherFiles) {
        const QString path = folder + QLatin1Char('/') + QString::fromUtf8(file.path);
        good = (fileExists(path) || writeFile(path, noise(file.size))) && good;
    }
    for (const char *path : kEmptyFolders) {
        good = makeFolder(folder + QLatin1Char('/') + QString::fromUtf8(path)) && good;
    }
    return good;
}

} // namespace

bool makeDemoTree(const QString &folder)
{
    const bool photos = makePhotos(photoJobs(folder));
    return makeOtherFiles(folder) && photos;
}

} // namespace lumi::photos
