// SPDX-License-Identifier: MIT
#include "exif/write/PhotoReplacement.h"

#include "app/common/diskSpace.h"
#include "platform/files/fileCalls.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

constexpr int kTemporaryNames = 65535;
constexpr qint64 kBlockSize = 10240;
constexpr mode_t kPermissions = 07777;
constexpr int kShiftToKB = 10;

bool isDiskFull(int error)
{
    return error == ENOSPC || error == EDQUOT;
}

bool isSameState(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size
        && one.st_mtim.tv_sec == other.st_mtim.tv_sec
        && one.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
}

} // namespace

namespace lumi {

PhotoReplacement::PhotoReplacement(QFile &photo, const struct stat &state)
    : m_photo(photo)
    , m_path(QFileInfo(photo.fileName()).absoluteFilePath())
    , m_state(state)
{ }

ExifRewriteResult PhotoReplacement::run(const QByteArray &start, ByteRange thumbnail, qint64 rest)
{
    const QString temporary = freeTemporaryPath(m_path);
    NewFile fresh(temporary);
    if (!m_photo.isOpen() || !isUnchanged() || temporary.isEmpty() || !fresh.open()) {
        return ExifRewriteResult::Failed;
    }
    // Fails on file systems without permissions, where it does not matter.
    static_cast<void>(::fchmod(fresh.fd(), m_state.st_mode & kPermissions));
    if (!fill(fresh, start, thumbnail, rest)) {
        // Callers rely on Done for a failed write on a disk that is not full.
        return fresh.error() == 0 ? ExifRewriteResult::Failed
                                  : failure(fresh.error(), ExifRewriteResult::Done);
    }
    if (!fresh.sync() || !fresh.commit()) {
        return failure(fresh.error(), ExifRewriteResult::Failed);
    }
    if (const int error = syncFolder(QFileInfo(m_path).path()); error != 0) {
        drop(temporary);
        return failure(error, ExifRewriteResult::Failed);
    }
    return exchange(temporary);
}

/// Another program or a card change may have replaced the photo since its block was read.
bool PhotoReplacement::isUnchanged() const
{
    return m_state.st_mode != 0 && isSameState(m_state, stateOf(m_path));
}

/// False if a read or a write fails. fresh.error() is set by a failed write only.
bool PhotoReplacement::fill(NewFile &fresh, const QByteArray &start, ByteRange thumbnail,
                            qint64 rest)
{
    const bool isOdd = (start.size() + thumbnail.length) % 2 != 0;
    return fresh.write(start.constData(), start.size()) == start.size() && copy(fresh, thumbnail)
        && (!isOdd || fresh.write("", 1) == 1) && copy(fresh, {rest, m_state.st_size - rest});
}

/// The blocks end at multiples of their size in the new file. A block is two and a half pages long,
/// so only every second boundary lies inside a page. With other boundaries, copying takes a tenth
/// longer.
bool PhotoReplacement::copy(NewFile &fresh, ByteRange range)
{
    std::array<char, kBlockSize> block{};
    if (range.length > 0 && !m_photo.seek(range.place)) {
        return false;
    }
    for (qint64 left = range.length; left > 0;) {
        const qint64 wanted = kBlockSize - fresh.size() % kBlockSize;
        const qint64 got = m_photo.read(block.data(), std::min(left, wanted));
        if (got <= 0 || fresh.write(block.data(), got) != got) {
            return false;
        }
        left -= got;
    }
    return true;
}

ExifRewriteResult PhotoReplacement::exchange(const QString &temporary)
{
    m_photo.close();
    // remove() can fail although the file is gone.
    if (!isUnchanged() || (!QFile::remove(m_path) && QFile::exists(m_path))) {
        drop(temporary);
        return ExifRewriteResult::Failed;
    }
    if (renameNoReplace(temporary, m_path) != 0) {
        return ExifRewriteResult::Failed;
    }
    // The photo is complete and has its name even if this fails.
    static_cast<void>(syncFolder(QFileInfo(m_path).path()));
    return ExifRewriteResult::Done;
}

/// Keeps the new photo if another program removed the old one.
void PhotoReplacement::drop(const QString &temporary) const
{
    if (QFile::exists(m_path)) {
        QFile::remove(temporary);
    }
}

/// other: the result if the disk is not full.
ExifRewriteResult PhotoReplacement::failure(int error, ExifRewriteResult other) const
{
    return isDiskFull(error) || !hasRoom() ? ExifRewriteResult::NoRoom : other;
}

bool PhotoReplacement::hasRoom() const
{
    return freeVolumeKB(m_path) >= m_state.st_size >> kShiftToKB;
}

struct stat stateOf(const QString &path)
{
    struct stat state = {};
    if (::stat(QFile::encodeName(path).constData(), &state) != 0) {
        state = {};
    }
    return state;
}

QString freeTemporaryPath(const QString &path)
{
    const QFileInfo photo(path);
    const QString before
        = photo.absolutePath() + QLatin1Char('/') + photo.baseName() + QLatin1String("_tmp_");
    const QString after = QLatin1Char('.') + photo.suffix();
    for (int number = 0; number < kTemporaryNames; ++number) {
        QString candidate = before + QString::number(number) + after;
        if (!isTaken(candidate)) {
            return candidate;
        }
    }
    return {};
}

} // namespace lumi
