// SPDX-License-Identifier: MIT
// Imports a folder as if it were a card, without a window, and writes a line for each step: a
// test kills it somewhere in between. Arguments: the folder, the name of the new one.
#include "files/engine/FPVFileTree.h"
#include "import/ImportRun.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

void report(const char *what, int number)
{
    std::printf("%s %d\n", what, number);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        return 2;
    }
    FPVFileTree tree;
    tree.walk(arguments.at(1), false, nullptr);
    report("found", FPVFileTree::fileCount());
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int step) {
        report("step", step);
    };
    callbacks.isCardPresent = [] {
        return true;
    };
    callbacks.fileFailed = [](const QString &, lumi::ImportKind kind) {
        report("failed", static_cast<int>(kind));
    };
    lumi::ImportRun run({FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()}, callbacks);
    return static_cast<int>(run.run(arguments.at(2)));
}
