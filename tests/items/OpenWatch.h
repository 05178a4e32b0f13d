// SPDX-License-Identifier: MIT
// Tells whether a file was opened.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/inotify.h>
#include <unistd.h>

namespace lumi::test {

class OpenWatch
{
public:
    explicit OpenWatch(const QString &path)
        : m_handle(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        m_works = ::inotify_add_watch(m_handle, QFile::encodeName(path).constData(), IN_OPEN) >= 0;
    }

    ~OpenWatch() { ::close(m_handle); }

    OpenWatch(const OpenWatch &) = delete;
    OpenWatch &operator=(const OpenWatch &) = delete;

    [[nodiscard]] bool works() const { return m_works; }

    /// Whether it was opened since the construction or the last call.
    [[nodiscard]] bool wasOpened() const
    {
        QByteArray events(4096, '\0');
        return ::read(m_handle, events.data(), std::size_t(events.size())) > 0;
    }

private:
    int m_handle;
    bool m_works = false;
};

} // namespace lumi::test
