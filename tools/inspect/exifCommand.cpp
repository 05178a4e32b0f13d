// SPDX-License-Identifier: MIT
#include "tools/inspect/exifCommand.h"

#include "exif/read/FPVExifFile.h"
#include "exif/tag/FPVExifTagBytes.h"
#include "exif/tag/FPVExifTagNumber.h"
#include "exif/tag/FPVExifTagRational.h"
#include "exif/tag/FPVExifTagString.h"
#include "exif/text/FPVExifFields.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <memory>

namespace {

struct ListName
{
    const char *name;
    ExifListKind kind;
};

constexpr ListName kLists[] = {
    {"ifd0", ExifListKind::Ifd0},
    {"exif", ExifListKind::Exif},
    {"interoperability", ExifListKind::Interoperability},
    {"gps", ExifListKind::Gps},
    {"ifd1", ExifListKind::Ifd1},
};

QString hexOf(const FPVExifTag &tag)
{
    const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(&tag);
    return bytes ? QString::fromLatin1(QByteArray(bytes->data(), bytes->size()).toHex())
                 : QString();
}

QJsonArray listOf(const lumi::ExifTagList &list)
{
    QJsonArray tags;
    for (const FPVExifTag *tag : list) {
        tags.append(QJsonObject{{QStringLiteral("tag"), tag->tag()},
                                {QStringLiteral("type"), tag->type()},
                                {QStringLiteral("count"), qint64(tag->count())},
                                {QStringLiteral("bytes"), hexOf(*tag)}});
    }
    return tags;
}

QJsonObject documentOf(const FPVExifDocument &document)
{
    QJsonObject object{
        {QStringLiteral("valid"), document.isValid()},
        {QStringLiteral("littleEndian"), document.littleEndian()},
        {QStringLiteral("tiffBase"), document.tiffBase()},
        {QStringLiteral("app1Length"), document.app1Length()},
        {QStringLiteral("ifd0Offset"), qint64(document.ifd0Offset())},
        {QStringLiteral("ifd1Offset"), qint64(document.ifd1Offset())},
        {QStringLiteral("ifd0Span"), qint64(document.ifd0Span())},
        {QStringLiteral("nextIfdOffset"), qint64(document.nextIfdOffset())},
        {QStringLiteral("thumbnailOffset"), qint64(document.thumbnailOffset())},
        {QStringLiteral("thumbnailLength"), qint64(document.thumbnailLength())},
    };
    for (const ListName &list : kLists) {
        object.insert(QLatin1String(list.name), listOf(document.list(list.kind)));
    }
    return object;
}

QJsonValue textOf(const QString &text)
{
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

/// The text of each row in the panel and in the editor.
QJsonArray groupsOf(FPVExifFields &fields)
{
    QJsonArray groups;
    for (int group = 0; group < static_cast<int>(lumi::exifFieldGroups().size()); ++group) {
        fields.setGroup(group);
        QJsonArray rows;
        for (int row = 0; row < fields.rowCount(); ++row) {
            rows.append(
                QJsonObject{{QStringLiteral("withUnit"), textOf(fields.valueText(row, true))},
                            {QStringLiteral("plain"), textOf(fields.valueText(row, false))}});
        }
        groups.append(rows);
    }
    return groups;
}

QString classOf(const FPVExifTag &tag)
{
    if (dynamic_cast<const FPVExifTagNumber *>(&tag)) {
        return QStringLiteral("FPVExifTagNumber");
    }
    if (dynamic_cast<const FPVExifTagRational *>(&tag)) {
        return QStringLiteral("FPVExifTagRational");
    }
    if (dynamic_cast<const FPVExifTagString *>(&tag)) {
        return QStringLiteral("FPVExifTagString");
    }
    return QStringLiteral("FPVExifTagBytes");
}

QJsonObject walkOf(const QString &path)
{
    FPVExifFile file(path);
    const bool open = file.isOpen();
    QJsonArray tags;
    while (const auto tag = std::unique_ptr<FPVExifTag>(file.nextTag())) {
        tags.append(QJsonObject{{QStringLiteral("tag"), tag->tag()},
                                {QStringLiteral("class"), classOf(*tag)},
                                {QStringLiteral("intValue"), tag->intValue()},
                                {QStringLiteral("text"), tag->text()},
                                {QStringLiteral("description"), tag->description()}});
    }
    return {{QStringLiteral("open"), open}, {QStringLiteral("tags"), tags}};
}

} // namespace

int exifCommand(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    if (arguments.isEmpty()) {
        return 2;
    }
    int result = 0;
    for (const QString &path : arguments) {
        const QFileInfo info(path);
        if (!info.isFile() || !info.isReadable()) {
            err << "lumivault-inspect: cannot read " << path << '\n';
            result = 1;
            continue;
        }
        FPVExifFields fields(path);
        const QJsonObject line{{QStringLiteral("file"), path},
                               {QStringLiteral("document"), documentOf(fields)},
                               {QStringLiteral("hasThumbnail"), fields.hasThumbnail()},
                               {QStringLiteral("walking"), walkOf(path)},
                               {QStringLiteral("fields"), groupsOf(fields)}};
        out << QJsonDocument(line).toJson(QJsonDocument::Compact) << '\n';
    }
    return result;
}
