// SPDX-License-Identifier: MIT
#include "platform/files/diskSync.h"

#include "platform/files/fileCalls.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <fcntl.h>

namespace {

/// A slow card needs a quarter of a second to write this much.
constexpr qint64 kPieceBytes = qint64(256) * 1024;
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
    const Descriptor file = openRegular(path);
    const qint64 size = file.isOpen() ? QFileInfo(path).size() : 0;
    for (qint64 at = 0; at < size && goOn(); at += kPieceBytes) {
        if (::sync_file_range(file.get(), at, kPieceBytes, SYNC_FILE_RANGE_WRITE) != 0) {
            return;
        }
        QCoreApplication::processEvents();
    }
}

lumi::SyncResult lumi::waitForDisk(const QString &folder, const GoOn &goOn)
{
    // Not a local variable, because the destructor of a QProcess waits for its child.
    auto *child = new QProcess;
    start(child, folder);
    runEvents(child, goOn);
    if (isRunning(child)) {
        QObject::connect(child, &QProcess::finished, child, &QObject::deleteLater);
        child->kill();
        return SyncResult::Stopped;
    }
    // UnknownError means that the program was found and did not crash.
    const bool isDone = child->error() == QProcess::UnknownError && child->exitCode() == 0;
    delete child;
    return isDone ? SyncResult::OnDisk : SyncResult::Failed;
}
