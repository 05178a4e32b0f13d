// SPDX-License-Identifier: MIT
#include "tools/inspect/thumbnailCommand.h"

#include "items/FPVItemJpeg.h"
#include "tools/inspect/sizeText.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QTextStream>

#include <memory>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

QJsonObject thumbnailOf(const QString &file, QSize box)
{
    FPVItemJpeg item(file, QString(), false);
    const std::unique_ptr<QPixmap> pixmap(item.thumbnail(box.width(), box.height()));
    QJsonObject result{{QStringLiteral("file"), file}};
    if (pixmap) {
        result.insert(QStringLiteral("outcome"), QStringLiteral("thumbnail"));
        result.insert(QStringLiteral("size"), textOfSize(pixmap->size()));
    } else {
        result.insert(QStringLiteral("outcome"), QStringLiteral("undecodable"));
        result.insert(QStringLiteral("size"), QJsonValue::Null);
        result.insert(QStringLiteral("errorCode"), static_cast<int>(item.errorCode()));
    }
    return result;
}

} // namespace

int thumbnailCommand(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    QStringList files = arguments;
    const auto option = files.indexOf(QLatin1String("--box"));
    const std::optional<QSize> box = sizeFromText(files.value(option + 1));
    if (option < 0 || !box || box->isEmpty() || files.size() != 3) {
        return kWrongUsage;
    }
    files.remove(option, 2);
    const QFileInfo info(files.first());
    if (!info.isFile() || !info.isReadable()) {
        err << "lumivault-inspect: cannot read " << files.first() << '\n';
        return kFailed;
    }
    out << QJsonDocument(thumbnailOf(files.first(), *box)).toJson(QJsonDocument::Compact) << '\n';
    return 0;
}
