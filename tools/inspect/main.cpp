// SPDX-License-Identifier: MIT
// lumivault-inspect prints what the program reads from a file, for bug reports and for comparison
// with other programs. Only the command rewrite changes a file. It needs no display.
#include "tools/inspect/exifCommand.h"
#include "tools/inspect/gpsCommands.h"
#include "tools/inspect/rasterCommand.h"
#include "tools/inspect/rewriteCommand.h"
#include "tools/inspect/swapCommand.h"
#include "tools/inspect/thumbnailCommand.h"

#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>
#include <memory>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr char kUsage[] = "usage: lumivault-inspect exif FILE...\n"
                          "       lumivault-inspect rewrite FILE OPS.json\n"
                          "       lumivault-inspect swap FOLDER\n"
                          "       lumivault-inspect raster FILE --depth 16|32 [--request WxH]\n"
                          "       lumivault-inspect thumbnail FILE --box WxH\n"
                          "       lumivault-inspect coordinates [TEXT...]\n"
                          "       lumivault-inspect altitude [TEXT...]\n"
                          "\n"
                          "exif    what both Exif readers make of a file and what is shown,\n"
                          "        a JSON object a line for each\n"
                          "rewrite changes tags of a photo by a list of operations, as the editor\n"
                          "        does, and prints 0 done, 1 no room, 2 failed\n"
                          "swap    the index of a thumbnail store, a JSON object a line\n"
                          "raster  the decoded, turned photo: pixels to standard output, its size\n"
                          "        to standard error\n"
                          "thumbnail\n"
                          "        what a cell of this size shows of a photo, a JSON object:\n"
                          "        outcome \"thumbnail\" and its size, or outcome \"undecodable\"\n"
                          "        and the error code; the store of thumbnails is not used\n"
                          "coordinates, altitude\n"
                          "        what each text, or line of standard input, means and how it\n"
                          "        would be stored in a photo, a JSON object a line\n"
                          "\n"
                          "Result: 0 success, 1 a file could not be read or changed,\n"
                          "        2 wrong usage\n";

struct Command
{
    const char *name;
    int (*run)(const QStringList &arguments, QTextStream &out, QTextStream &err);
};

constexpr char kThumbnailCommand[] = "thumbnail";

constexpr Command kCommands[] = {
    {"exif", exifCommand},
    {"rewrite", rewriteCommand},
    {"swap",
     [](const QStringList &arguments, QTextStream &out, QTextStream &) {
         return swapCommand(arguments, out);
     }},
    {"raster",
     [](const QStringList &arguments, QTextStream &, QTextStream &err) {
         return rasterCommand(arguments, err);
     }},
    {kThumbnailCommand, thumbnailCommand},
    {"coordinates",
     [](const QStringList &arguments, QTextStream &out, QTextStream &) {
         return coordinatesCommand(arguments, out);
     }},
    {"altitude",
     [](const QStringList &arguments, QTextStream &out, QTextStream &) {
         return altitudeCommand(arguments, out);
     }},
};

int runCommand(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    const QString name = arguments.value(1);
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        out << kUsage;
        return 0;
    }
    for (const Command &command : kCommands) {
        if (name == QLatin1String(command.name)) {
            return command.run(arguments.mid(2), out, err);
        }
    }
    return kWrongUsage;
}

/// Pixmaps need an application with a platform. The offscreen platform needs no display.
std::unique_ptr<QCoreApplication> newApplication(int &argc, char **argv)
{
    if (argc < 2 || qstrcmp(argv[1], kThumbnailCommand) != 0) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int main(int argc, char **argv)
{
    const std::unique_ptr<QCoreApplication> app = newApplication(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    int result = runCommand(QCoreApplication::arguments(), out, err);
    if (result == kWrongUsage) {
        err << kUsage;
    }
    out.flush();
    if (result == 0 && (out.status() != QTextStream::Ok || std::fflush(stdout) != 0)) {
        err << "lumivault-inspect: the output could not be written\n";
        result = kFailed;
    }
    return result;
}
