// SPDX-License-Identifier: MIT
// Imports a folder as if it were a card, without a window, and kills itself somewhere in
// between: as hard as a power failure would, and always at the same place. It writes a line
// when the search is over. Arguments: the folder, the name of the new one, and where to die:
// "events" or "folders", and how many of them it outlives: rounds of events, of which there is
// one for each entry found and for each block copied, or folders made in the store.
#include "files/engine/FPVFileTree.h"
#include "import/ImportRun.h"

#include <QCoreApplication>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstring>

#include <dlfcn.h>
#include <sys/stat.h>

namespace {

int eventsLeft = -1;
int foldersLeft = -1;

void countDown(int *left)
{
    if (*left == 0) {
        std::raise(SIGKILL);
    }
    *left -= *left > 0 ? 1 : 0;
}

} // namespace

extern "C" int mkdir(const char *path, mode_t mode) noexcept
{
    using Mkdir = int(const char *, mode_t);
    static auto *kReal = reinterpret_cast<Mkdir *>(::dlsym(RTLD_NEXT, "mkdir"));
    // Empty slots have a folder as well.
    if (std::strstr(path, "/Photo_Files/") != nullptr) {
        countDown(&foldersLeft);
    }
    return kReal(path, mode);
}

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        return 100;
    }
    int *const left = arguments.at(3) == QLatin1String("events") ? &eventsLeft : &foldersLeft;
    *left = arguments.at(4).toInt();
    QTimer rounds;
    QObject::connect(&rounds, &QTimer::timeout, &app, [] {
        countDown(&eventsLeft);
    });
    rounds.start(0);
    FPVFileTree tree;
    tree.walk(arguments.at(1), false, nullptr);
    std::puts("found");
    std::fflush(stdout);
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int) {};
    callbacks.isCardPresent = [] {
        return true;
    };
    callbacks.fileFailed = [](const QString &, lumi::ImportKind) {};
    lumi::ImportRun run({FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()}, callbacks);
    return static_cast<int>(run.run(arguments.at(2)));
}
