// SPDX-License-Identifier: MIT
#include "bench/jobs.h"
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/ImportRun.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <cstdlib>

#include <unistd.h>

namespace {

constexpr int kFiles = 250;
constexpr int kFilesAFolder = 100;
constexpr qint64 kFileBytes = 140LL * 1000 * 1000 / kFiles;
constexpr int kRounds = 5;

/// A card of photos with bytes that no file system can pack.
bool makeCard(const QString &card)
{
    QByteArray bytes(kFileBytes, Qt::Uninitialized);
    quint32 state = 1;
    for (char &byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    for (int i = 0; i < kFiles; ++i) {
        const QString folder = card + QString::asprintf("/dcim/%03dbench", 100 + i / kFilesAFolder);
        QFile file(folder + QString::asprintf("/img_%04d.jpg", i));
        if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly)
            || file.write(bytes) != bytes.size()) {
            return false;
        }
    }
    return true;
}

void mustWork(bool ok)
{
    if (!ok) {
        std::abort();
    }
}

/// Search, copy and the wait for the disk, as the form does them, without its dialogs.
void importCard(const QString &card)
{
    FPVFileTree tree;
    tree.walk(card, false, nullptr);
    mustWork(FPVFileTree::fileCount() == kFiles);
    setCopyCancelled(false);
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int) {};
    callbacks.isCardPresent = [] {
        return true;
    };
    callbacks.fileFailed = [](const QString &, lumi::ImportKind) {};
    lumi::ImportRun run({FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()}, callbacks);
    mustWork(run.run(QStringLiteral("import")) == lumi::ImportKind::Done);
    mustWork(run.waitForDisk(lumi::ImportKind::Done) == lumi::ImportKind::Done);
}

void mustRun(const QString &program, const QStringList &arguments)
{
    mustWork(QProcess::execute(program, arguments) == 0);
}

} // namespace

std::vector<lumi::bench::Row> lumi::bench::importRows(const QString &folder)
{
    const QString card = folder + QStringLiteral("/card");
    const QString homes = folder + QStringLiteral("/homes");
    if (!makeCard(card)) {
        return {};
    }
    const QByteArray oldHome = qgetenv("HOME");
    int count = 0;
    // A new home each time, because file systems are slow after large deletions.
    const auto newHome = [&homes, &count] {
        const QString home = homes + QLatin1Char('/') + QString::number(++count);
        mustWork(QDir().mkpath(home + QStringLiteral("/Documents/Photo_Files")));
        qputenv("HOME", QFile::encodeName(home));
        ::sync();
    };
    const auto bare = [&card] {
        const QString copy = QDir::homePath() + QStringLiteral("/Documents/Photo_Files/copy");
        mustRun(QStringLiteral("cp"),
                {QStringLiteral("-r"), QStringLiteral("--reflink=never"), card, copy});
        mustRun(QStringLiteral("sync"), {QStringLiteral("-f"), copy});
    };
    const Row row = compare(
        {"import 250 files, 140 MB", "cp -r, sync -f", 1.25, kRounds},
        [&card] {
            importCard(card);
        },
        bare, newHome);
    qputenv("HOME", oldHome);
    QDir(card).removeRecursively();
    QDir(homes).removeRecursively();
    return {row};
}
