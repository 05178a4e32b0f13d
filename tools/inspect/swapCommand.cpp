// SPDX-License-Identifier: MIT
#include "tools/inspect/swapCommand.h"

#include "swap/IndexReader.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>

namespace {

QJsonObject blockJson(const lumi::BlockRecord &block)
{
    return {
        {QStringLiteral("sourceName"), block.sourceName},
        {QStringLiteral("sourceTime"), block.sourceTime},
        {QStringLiteral("width"), block.width},
        {QStringLiteral("height"), block.height},
        {QStringLiteral("param"), block.param},
        {QStringLiteral("kind"), block.kind == 0 ? QString() : QString(QLatin1Char(block.kind))},
        {QStringLiteral("swapPath"), block.swapPath},
        {QStringLiteral("swapTime"), block.swapTime},
        {QStringLiteral("swapFileExists"), QFile::exists(block.swapPath)},
    };
}

QJsonObject controlJson(lumi::IndexReader &index, const lumi::ControlRecord &control)
{
    QJsonArray blocks;
    lumi::BlockRecord block;
    for (int i = 0; i < control.blockCount && index.readBlock(block); ++i) {
        blocks.append(blockJson(block));
    }
    return {
        {QStringLiteral("id"), control.id},
        {QStringLiteral("folder"), control.folder},
        {QStringLiteral("blockCount"), control.blockCount},
        {QStringLiteral("blocks"), blocks},
    };
}

void printLine(QTextStream &out, const QJsonObject &object)
{
    out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) << '\n';
}

} // namespace

int swapCommand(const QStringList &arguments, QTextStream &out)
{
    if (arguments.size() != 1) {
        return 2;
    }
    const QString &folder = arguments.first();
    QFile file(folder + QStringLiteral("/.SwapMng.bin"));
    // Opening a pipe would block until something writes to it.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "lumivault-inspect: no index in %s\n", qUtf8Printable(folder));
        return 1;
    }
    lumi::IndexReader index(lumi::IndexReader::bytesOf(file));
    lumi::IndexHeader header;
    lumi::ControlRecord control;
    QList<QJsonObject> controls;
    bool more = index.readHeader(header);
    for (int i = 0; more && i < header.controlCount && index.readControl(control); ++i) {
        controls.append(controlJson(index, control));
        more = !index.failed();
    }
    printLine(
        out,
        {
            {QStringLiteral("writingTime"), header.writingTime},
            {QStringLiteral("controlCount"), header.controlCount},
            {QStringLiteral("whole"), !index.failed()},
            {QStringLiteral("running"), QFile::exists(folder + QStringLiteral("/.SwapMng.chk"))},
        });
    for (const QJsonObject &object : controls) {
        printLine(out, object);
    }
    return index.failed() ? 1 : 0;
}
