// SPDX-License-Identifier: MIT
#include "tests/support/FullDisk.h"

#include <QFile>

#include <csignal>

#include <sched.h>
#include <sys/mount.h>

namespace lumi::test {

FileSizeLimit::FileSizeLimit(rlim_t bytes)
{
    // Ignored, so that the write fails instead of ending the process.
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit lower{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &lower);
}

FileSizeLimit::~FileSizeLimit()
{
    setrlimit(RLIMIT_FSIZE, &m_before);
}

SmallDisk::SmallDisk(const QString &folder, int kilobytes)
    : m_folder(QFile::encodeName(folder))
{
    const QByteArray size = "size=" + QByteArray::number(kilobytes) + "k";
    m_mounted = unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount("tmpfs", m_folder.constData(), "tmpfs", 0, size.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_mounted) {
        umount2(m_folder.constData(), MNT_DETACH);
    }
}

} // namespace lumi::test
