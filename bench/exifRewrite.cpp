// SPDX-License-Identifier: MIT
// Compares the rewriting of a photo's Exif block with a bare copy of the file. Syncs are left out,
// because they measure the disk.
#include "bench/jobs.h"
#include "bench/photos.h"
#include "exif/write/FPVExifWriter.h"

#include <array>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr qint64 kPhotoSize = 3500000;
constexpr std::size_t kBlockSize = 10240;
constexpr int kRounds = 25;
constexpr mode_t kForAll = 0644;

bool syncs = true;

/// An ordinary camera's photo: a block with a thumbnail, megabytes of image data.
bool makeLargePhoto(const QString &path)
{
    if (!lumi::bench::makePhotoWithThumbnail(path, {1600, 1200})) {
        return false;
    }
    QFile photo(path);
    const QByteArray more(std::max<qint64>(kPhotoSize - photo.size(), 0), 'i');
    return photo.open(QIODevice::Append) && photo.write(more) == more.size();
}

void rewrite(const QString &path)
{
    FPVExifWriter writer(path);
    writer.setTag(0x013B, 2, 6, "Smith", ExifListKind::Ifd0); // the artist
    if (writer.rewrite() != 0) {
        std::abort();
    }
}

/// The necessary work: copies the photo to a new file in blocks and renames that.
void bareRewrite(const QByteArray &path)
{
    const QByteArray target = path + ".new";
    const int from = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    const int to = ::open(target.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kForAll);
    std::array<char, kBlockSize> block{};
    for (ssize_t got = 1; got > 0;) {
        got = ::read(from, block.data(), block.size());
        if (got < 0 || ::write(to, block.data(), static_cast<std::size_t>(got)) != got) {
            std::abort();
        }
    }
    ::close(from);
    ::close(to);
    if (::unlink(path.constData()) != 0 || std::rename(target.constData(), path.constData()) != 0) {
        std::abort();
    }
}

} // namespace

extern "C" int fsync(int handle)
{
    return syncs ? static_cast<int>(::syscall(SYS_fsync, handle)) : 0;
}

std::vector<lumi::bench::Row> lumi::bench::exifRewriteRows(const QString &folder)
{
    const QString photo = folder + QStringLiteral("/rewritten.jpg");
    const QString bare = folder + QStringLiteral("/copied.jpg");
    if (!makeLargePhoto(photo) || !makeLargePhoto(bare)) {
        return {};
    }
    const QByteArray bareName = QFile::encodeName(bare);
    syncs = false;
    const Row row = compare(
        {"Exif rewrite of a 3.5 MB photo, syncs left out", "copying it in blocks of 10240 bytes",
         1.15, kRounds},
        [&photo] {
            rewrite(photo);
        },
        [&bareName] {
            bareRewrite(bareName);
        });
    syncs = true;
    return {row};
}
