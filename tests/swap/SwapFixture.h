// SPDX-License-Identifier: MIT
// A private tree of photos with a swap folder, on a machine with enough free space, and functions
// that look at the files of the store. The machine shows photos as stored, so that a swap folder
// that a test has made is not emptied at the start.
#pragma once

#include "swap/SwapSystem.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/testFiles.h"

#include <QDateTime>
#include <QImage>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

#include <cstdint>
#include <functional>
#include <memory>

namespace lumi::test {

/// Collects the messages of the message handler while it lives.
class MessageLog
{
public:
    MessageLog();
    ~MessageLog();
    MessageLog(const MessageLog &) = delete;
    MessageLog &operator=(const MessageLog &) = delete;

    QStringList warnings;
    QStringList trace; ///< what debugLog() wrote, which is switched on meanwhile

private:
    QtMessageHandler m_previous;
};

/// Closes each message box that opens while it lives, as soon as the event loop runs.
class BoxCloser
{
public:
    BoxCloser();
    ~BoxCloser();
    BoxCloser(const BoxCloser &) = delete;
    BoxCloser &operator=(const BoxCloser &) = delete;

    struct Box
    {
        QString title;
        QString text;
        int icon = 0;
        int buttons = 0;
        bool hasParent = false;
        bool anyOtherWindow = false;
    };

    QList<Box> boxes;

private:
    void closeBox();

    std::unique_ptr<QTimer> m_timer;
};

/// Builds the bytes of an index.
class IndexBytes
{
public:
    IndexBytes &number(std::int32_t value);
    /// Latin-1 characters.
    IndexBytes &text(const QByteArray &characters);

    QByteArray bytes;
};

class SwapFixture
{
public:
    SwapFixture();
    ~SwapFixture();

    /// Sets the free space of every disk; at first there is plenty.
    void setFreeKB(int kilobytes) const;

    /// Opens the store and publishes its handle.
    SwapSystem &start();
    /// Ends the run cleanly.
    void stop();
    /// Ends the run cleanly and starts the next one.
    SwapSystem &restart();

    [[nodiscard]] QString path(const QString &relative) const;

    [[nodiscard]] QString swapFolder() const { return path(QStringLiteral(".photo_swp")); }

    [[nodiscard]] QString indexPath() const;
    [[nodiscard]] QString markerPath() const;
    [[nodiscard]] QString swapFile(const QString &name) const;

    /// Makes a file as a photo of the time kTime, with its folders. Returns its full path.
    QString addPhoto(const QString &relative) const;
    /// Names in the swap folder that end in the extension, sorted.
    [[nodiscard]] QStringList swapFiles() const;

    static constexpr qint64 kTime = 1700000000;

    QTemporaryDir root;
    FakeMachine *machine;
    std::unique_ptr<SwapSystem> store;
};

/// Milliseconds since 1970-01-01 UTC.
void setFileTime(const QString &path, qint64 milliseconds);
/// Size and time of each file below the folder, hidden ones too.
[[nodiscard]] QMap<QString, QString> snapshot(const QString &folder);
/// A picture in which all pixels differ, so that a wrong one is noticed.
[[nodiscard]] QImage picture(int width = 40, int height = 30, int seed = 0);
/// All blocks of all controls.
[[nodiscard]] int blockCount(const SwapSystem &store);
[[nodiscard]] const SwapControl *controlOf(const SwapSystem &store, const QString &folder);

} // namespace lumi::test
