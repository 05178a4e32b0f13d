// SPDX-License-Identifier: MIT
#include "platform/files/diskSync.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTimer>

#include <fcntl.h>

namespace {

/// A slow card writes it in a quarter of a second.
constexpr qint64 kPieceBytes = 256 * 1024;
constexpr int kAskMs = 50;

void start(QProcess *child, const QString &folder)
{
    child->setStandardInputFile(QProcess::nullDevice());
    child->setStandardOutputFile(QProcess::nullDevice());
    child->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child->start(QStringLiteral("sync"), {QStringLiteral("-f"), folder});
}

bool isRunning(const QProcess *child)
{
    return child->state() != QProcess::NotRunning;
}

void runEvents(QProcess *child, const lumi::GoOn &goOn)
{
    QEventLoop loop;
    QObject::connect(child, &QProcess::stateChanged, &loop, [&loop, child] {
        if (!isRunning(child)) {
            loop.quit();
        }
    });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&loop, &goOn] {
        if (!goOn()) {
            loop.quit();
        }
    });
    timer.start(kAskMs);
    if (isRunning(child)) {
        loop.exec();
    }
}

} // namespace

void lumi::startWriteBack(const QString &path, const GoOn &goOn)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return;
    }
    const qint64 size = file.size();
    for (qint64 at = 0; at < size && goOn(); at += kPieceBytes) {
        if (::sync_file_range(file.handle(), at, kPieceBytes, SYNC_FILE_RANGE_WRITE) != 0) {
            return;
        }
        QCoreApplication::processEvents();
    }
}

lumi::SyncResult lumi::waitForDisk(const QString &folder, const GoOn &goOn)
{
    // On the heap: the end of a QProcess waits for its child.
    auto *child = new QProcess;
    start(child, folder);
    runEvents(child, goOn);
    if (isRunning(child)) {
        QObject::connect(child, &QProcess::finished, child, &QObject::deleteLater);
        child->kill();
        return SyncResult::Stopped;
    }
    // No error: it was found and did not crash.
    const bool isDone = child->error() == QProcess::UnknownError && child->exitCode() == 0;
    delete child;
    return isDone ? SyncResult::OnDisk : SyncResult::Failed;
}
