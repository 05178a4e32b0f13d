// SPDX-License-Identifier: MIT
#include "tools/inspect/rewriteCommand.h"

#include "exif/tag/exifFormat.h"
#include "exif/write/FPVExifWriter.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace {

struct Operation
{
    quint16 tag = 0;
    quint16 type = 0;
    quint32 count = 0;
    ExifListKind kind = ExifListKind::Ifd0;
    std::optional<QByteArray> data; // without it the tag is removed
};

/// The whole number of that name. False if there is none or it does not fit.
template <class Number> bool take(const QJsonObject &object, const char *name, Number &number)
{
    const double value = object.value(QLatin1String(name)).toDouble(-0.5);
    if (value != std::floor(value) || value < std::numeric_limits<Number>::min()
        || value > std::numeric_limits<Number>::max()) {
        return false;
    }
    number = static_cast<Number>(value);
    return true;
}

bool takeData(const QJsonObject &object, Operation &operation)
{
    const QJsonValue data = object.value(QStringLiteral("data"));
    if (data.isNull()) {
        return true;
    }
    const QByteArray text = data.toString().toLower().toLatin1();
    operation.data = QByteArray::fromHex(text);
    return data.isString() && operation.data->toHex() == text
        && qint64(operation.count) * typeSize(operation.type) <= operation.data->size();
}

bool takeOperation(const QJsonObject &object, Operation &operation)
{
    const QString name = object.value(QStringLiteral("op")).toString();
    int kind = 0;
    if (!take(object, "tag", operation.tag) || !take(object, "kind", kind)) {
        return false;
    }
    operation.kind = static_cast<ExifListKind>(kind);
    if (name == QLatin1String("set")) {
        return take(object, "type", operation.type) && take(object, "count", operation.count)
            && takeData(object, operation);
    }
    return name == QLatin1String("remove");
}

/// The operations in the file; nothing if it cannot be read or one is not well-formed.
std::optional<std::vector<Operation>> operationsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isArray()) {
        return std::nullopt;
    }
    std::vector<Operation> operations;
    const QJsonArray array = document.array();
    for (const auto &value : array) {
        if (!takeOperation(value.toObject(), operations.emplace_back())) {
            return std::nullopt;
        }
    }
    return operations;
}

} // namespace

int rewriteCommand(const QStringList &arguments, QTextStream &out, QTextStream &err)
{
    if (arguments.size() != 2) {
        return 2;
    }
    const auto operations = operationsOf(arguments[1]);
    if (!operations) {
        err << "lumivault-inspect: no list of operations in " << arguments[1] << '\n';
        return 1;
    }
    FPVExifWriter writer(arguments[0]);
    for (const Operation &operation : *operations) {
        writer.setTag(operation.tag, operation.type, operation.count,
                      operation.data ? operation.data->constData() : nullptr, operation.kind);
    }
    const int result = writer.rewrite();
    out << result << '\n';
    return result == 0 ? 0 : 1;
}
