// SPDX-License-Identifier: MIT
// lumivault-photos: makes sample photos. See usage() for what it can be told.
#include "tools/photos/Commands.h"
#include "tools/photos/DemoTree.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr const char *kUsage
    = "usage: lumivault-photos demo FOLDER\n"
      "       lumivault-photos many FOLDER [--count N] [--size WxH] [--seed N] [--traits LIST]\n"
      "       lumivault-photos one FILE [--scene NAME] [--size WxH] [--seed N] [--traits LIST]\n"
      "\n"
      "demo   a photo store and two cards: FOLDER/home, FOLDER/cf, FOLDER/sd\n"
      "many   N small photos of a few motifs, quickly, named IMG_00001.JPG and so on\n"
      "one    a single photo\n"
      "\n"
      "NAME   mountains, lake, sea, dunes, forest, city\n"
      "LIST   of exif, thumbnail, gps, bigendian, comment, progressive, gray, jfif,\n"
      "       cutoff, joined by commas; none for none of them. Default: exif,thumbnail\n";

int usage()
{
    std::fputs(kUsage, stderr);
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    const QStringList names{QStringLiteral("count"), QStringLiteral("size"), QStringLiteral("seed"),
                            QStringLiteral("traits"), QStringLiteral("scene")};
    for (const QString &name : names) {
        parser.addOption({name, QString(), QStringLiteral("value")});
    }
    if (!parser.parse(QCoreApplication::arguments()) || parser.positionalArguments().size() != 2) {
        return usage();
    }
    const QString command = parser.positionalArguments().constFirst();
    const QString target = parser.positionalArguments().constLast();
    if (command == QLatin1String("demo")) {
        return lumi::photos::makeDemoTree(target) ? 0 : 1;
    }
    lumi::photos::Request request;
    for (const QString &name : names) {
        if (parser.isSet(name) && !lumi::photos::setOption(request, name, parser.value(name))) {
            return usage();
        }
    }
    if (command == QLatin1String("many")) {
        return lumi::photos::makeMany(target, request) ? 0 : 1;
    }
    if (command == QLatin1String("one")) {
        return lumi::photos::makeOne(target, request) ? 0 : 1;
    }
    return usage();
}
