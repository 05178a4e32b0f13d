// SPDX-License-Identifier: MIT
#include "exif/PhotoReplacement.h"

#include "app/common/Medium.h"
#include "app/common/diskSpace.h"
#include "app/common/paths.h"
#include "platform/Machine.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kTemporaryNames = 65535;
constexpr qint64 kBlockSize = 10240;
constexpr mode_t kPermissions = 07777;
constexpr int kShiftToKB = 10;

/// The folder whose file system is asked for room: the card that holds path, or the store.
QString mediumOf(const QString &path)
{
    for (const Slot slot : {Slot::CF, Slot::SD}) {
        QString card = Machine::instance().mountPoint(slot);
        if (path.startsWith(card) && lumi::isCardInSlot(slot)) {
            return card;
        }
    }
    return lumi::documentsPath();
}

/// The errno of a failure, else 0. Some file systems have nothing to bring to the disk and say
/// so by EINVAL.
int syncError(int handle)
{
    int error = 0;
    do {
        error = ::fsync(handle) == 0 ? 0 : errno;
    } while (error == EINTR);
    return error == EINVAL ? 0 : error;
}

/// The errno that closing the file would give, else 0: the toolkit's closing does not tell it.
/// File systems that write at the end do so for every handle that is closed.
int closingError(int handle)
{
    const int second = ::fcntl(handle, F_DUPFD_CLOEXEC, 0);
    return second < 0 || ::close(second) == 0 ? 0 : errno;
}

bool isDiskFull(int error)
{
    return error == ENOSPC || error == EDQUOT;
}

/// Brings the names in the folder of path to the disk: the errno of a failure, else 0. A folder
/// that may be written but not read cannot be opened for it, and has to do without.
int syncFolderOf(const QString &path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return errno == EACCES ? 0 : errno;
    }
    const int error = syncError(handle);
    ::close(handle);
    return error;
}

/// Unlike the toolkit's renaming this one never falls back to copying, which would leave half
/// a photo behind if it were cut short, and never replaces a file. File systems that cannot
/// rename with that condition refuse it for reasons of their own; the photo has no name at
/// this point, so anything but a file in its place is worth another try.
bool renameFile(const QString &from, const QString &to)
{
    const QByteArray oldName = QFile::encodeName(from);
    const QByteArray newName = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, oldName.constData(), AT_FDCWD, newName.constData(), RENAME_NOREPLACE)
        == 0) {
        return true;
    }
    return errno != EEXIST && !lumi::isTaken(to)
        && std::rename(oldName.constData(), newName.constData()) == 0;
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
    if (!m_photo.isOpen() || !isUnchanged()) {
        return ExifRewriteResult::Failed;
    }
    m_temporary.setFileName(freeTemporaryPath(m_path));
    if (m_temporary.fileName().isEmpty()) {
        return ExifRewriteResult::Failed;
    }
    if (const int error = openTemporary(); error != 0) {
        return failure(error);
    }
    const Outcome outcome = fill(start, thumbnail, rest);
    if (outcome != Outcome::Whole) {
        return giveUp(outcome);
    }
    if (const int error = bringToDisk(); error != 0) {
        dropWhole();
        return failure(error);
    }
    return exchange();
}

/// The name may stand for another file by now, or the file for another photo: a card was
/// changed, or another program saved the photo. That one is not ours to replace, and the block
/// that was read is not its own.
bool PhotoReplacement::isUnchanged() const
{
    return m_state.st_mode != 0 && isSameState(m_state, stateOf(m_path));
}

/// The errno of a failure, else 0. A full disk can refuse the very name.
int PhotoReplacement::openTemporary()
{
    errno = 0;
    if (!m_temporary.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        return errno != 0 ? errno : EIO;
    }
    // A card without permissions refuses this, and loses nothing by it.
    static_cast<void>(::fchmod(m_temporary.handle(), m_state.st_mode & kPermissions));
    return 0;
}

PhotoReplacement::Outcome PhotoReplacement::fill(const QByteArray &start, ByteRange thumbnail,
                                                 qint64 rest)
{
    if (!write(start.constData(), start.size())) {
        return Outcome::WriteFailed;
    }
    Outcome outcome = copy(thumbnail);
    const bool isOdd = (start.size() + thumbnail.length) % 2 != 0;
    if (outcome == Outcome::Whole && isOdd && !write("", 1)) {
        outcome = Outcome::WriteFailed;
    }
    return outcome == Outcome::Whole ? copy({rest, m_state.st_size - rest}) : outcome;
}

/// The blocks end at multiples of their size in the new file. A block is two and a half pages
/// long, so only every second boundary lies within a page then; elsewhere both ends of every
/// block would share a page with a neighbour, which costs a tenth of the time.
PhotoReplacement::Outcome PhotoReplacement::copy(ByteRange range)
{
    std::array<char, kBlockSize> block{};
    if (range.length > 0 && !m_photo.seek(range.place)) {
        return Outcome::ReadFailed;
    }
    for (qint64 left = range.length; left > 0;) {
        const qint64 wanted = kBlockSize - m_written % kBlockSize;
        const qint64 got = m_photo.read(block.data(), std::min(left, wanted));
        if (got <= 0) {
            return Outcome::ReadFailed;
        }
        if (!write(block.data(), got)) {
            return Outcome::WriteFailed;
        }
        left -= got;
    }
    return Outcome::Whole;
}

/// A disk that fills up takes a part first; why it took no more only the next try tells. The
/// toolkit's writing would tell a full disk, but not one whose share for this user is used up.
bool PhotoReplacement::write(const char *bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t written
            = ::write(m_temporary.handle(), bytes, static_cast<std::size_t>(size));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            m_writeError = written < 0 ? errno : 0;
            return false;
        }
        bytes += written;
        size -= written;
        m_written += written;
    }
    return true;
}

/// After this no write can fail any more, and the folder knows the new file. The errno of what
/// went wrong, else 0.
int PhotoReplacement::bringToDisk()
{
    int error = syncError(m_temporary.handle());
    if (error == 0) {
        error = closingError(m_temporary.handle());
    }
    m_temporary.close();
    if (error == 0 && m_temporary.error() != QFileDevice::NoError) {
        error = EIO;
    }
    return error != 0 ? error : syncFolderOf(m_temporary.fileName());
}

ExifRewriteResult PhotoReplacement::giveUp(Outcome outcome)
{
    drop();
    if (outcome == Outcome::ReadFailed) {
        return ExifRewriteResult::Failed;
    }
    return isDiskFull(m_writeError) || !hasRoom() ? ExifRewriteResult::NoRoom
                                                  : ExifRewriteResult::Done;
}

ExifRewriteResult PhotoReplacement::exchange()
{
    m_photo.close();
    // A removal can be reported as failed and have happened all the same.
    if (!isUnchanged() || (!QFile::remove(m_path) && QFile::exists(m_path))) {
        dropWhole();
        return ExifRewriteResult::Failed;
    }
    if (!renameFile(m_temporary.fileName(), m_path)) {
        return ExifRewriteResult::Failed;
    }
    // Whatever this says, the photo is whole and has its name.
    static_cast<void>(syncFolderOf(m_path));
    return ExifRewriteResult::Done;
}

/// An open file's own removal would not remove it when it cannot be closed without an error, as
/// on the full disk it is removed from.
void PhotoReplacement::drop()
{
    m_temporary.close();
    QFile::remove(m_temporary.fileName());
}

/// Somebody else may have removed the old photo meanwhile. The new one, whole as it is, could
/// be the only one left then and is kept.
void PhotoReplacement::dropWhole()
{
    if (QFile::exists(m_path)) {
        drop();
    }
}

ExifRewriteResult PhotoReplacement::failure(int error) const
{
    return isDiskFull(error) || !hasRoom() ? ExifRewriteResult::NoRoom : ExifRewriteResult::Failed;
}

bool PhotoReplacement::hasRoom() const
{
    return freeDiskKB(QFile::encodeName(mediumOf(m_path))) >= m_state.st_size >> kShiftToKB;
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
        if (!lumi::isTaken(candidate)) {
            return candidate;
        }
    }
    return {};
}

} // namespace lumi
