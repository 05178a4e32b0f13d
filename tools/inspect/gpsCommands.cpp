// SPDX-License-Identifier: MIT
#include "tools/inspect/gpsCommands.h"

#include "exif/gps/Altitude.h"
#include "exif/gps/LatLongPair.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>

namespace {

using Rationals = std::span<const lumi::Rational, 3>;

QStringList textsOf(const QStringList &arguments)
{
    if (!arguments.isEmpty()) {
        return arguments;
    }
    QStringList lines;
    QTextStream in(stdin);
    for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
        lines.append(line);
    }
    return lines;
}

/// As numbers, and as the bytes that a tag in memory has.
void addStored(QJsonObject &object, std::span<const lumi::Rational> stored)
{
    QJsonArray pairs;
    for (const lumi::Rational &rational : stored) {
        pairs.append(QJsonArray{qint64(rational.numerator), qint64(rational.denominator)});
    }
    const QByteArray bytes(reinterpret_cast<const char *>(stored.data()),
                           static_cast<qsizetype>(stored.size_bytes()));
    object.insert(QStringLiteral("rationals"), pairs);
    object.insert(QStringLiteral("bytes"), QString::fromLatin1(bytes.toHex()));
}

template <class Value> QJsonObject coordinateOf(const Value &value)
{
    const lumi::Rational *stored = value.rationals();
    if (!stored) {
        return {{QStringLiteral("valid"), false}};
    }
    QJsonObject object{
        {QStringLiteral("valid"), true},
        {QStringLiteral("text"), value.text()},
        {QStringLiteral("hemisphere"), int(value.hemisphere())},
        {QStringLiteral("degrees"), int(value.degrees())},
        {QStringLiteral("minutes"), int(value.minutes())},
        {QStringLiteral("seconds"), int(value.seconds())},
        {QStringLiteral("fraction"), int(value.fraction())},
    };
    Value readBack;
    readBack.fromRationals(value.text().left(1), Rationals(stored, 3));
    object.insert(QStringLiteral("readBack"), readBack.text());
    addStored(object, Rationals(stored, 3));
    return object;
}

template <class Value> QJsonObject coordinateOf(const QString &text)
{
    Value value;
    // A text that is not valid leaves the value empty, which is printed as invalid.
    static_cast<void>(value.setText(text));
    return coordinateOf(value);
}

QJsonObject positionOf(const QString &text)
{
    LatLongPair pair;
    if (!pair.fromText(text)) {
        return {{QStringLiteral("valid"), false}};
    }
    return {{QStringLiteral("valid"), true},
            {QStringLiteral("latitude"), coordinateOf(pair.latitude())},
            {QStringLiteral("longitude"), coordinateOf(pair.longitude())}};
}

QJsonObject altitudeOf(const QString &text)
{
    Altitude value;
    if (!value.setText(text)) {
        return {{QStringLiteral("input"), text}, {QStringLiteral("valid"), false}};
    }
    QJsonObject object{
        {QStringLiteral("input"), text},
        {QStringLiteral("valid"), true},
        {QStringLiteral("text"), value.text()},
        {QStringLiteral("aboveSeaLevel"), value.aboveSeaLevel()},
        {QStringLiteral("whole"), int(value.whole())},
        {QStringLiteral("fraction"), int(value.fraction())},
    };
    const lumi::Rational stored = *value.rational();
    Altitude readBack;
    readBack.fromRational(value.aboveSeaLevel(), stored);
    object.insert(QStringLiteral("readBack"), readBack.text());
    addStored(object, {&stored, 1});
    return object;
}

void printLine(QTextStream &out, const QJsonObject &object)
{
    out << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) << '\n';
}

} // namespace

int coordinatesCommand(const QStringList &arguments, QTextStream &out)
{
    for (const QString &text : textsOf(arguments)) {
        printLine(out,
                  {{QStringLiteral("input"), text},
                   {QStringLiteral("latitude"), coordinateOf<Latitude>(text)},
                   {QStringLiteral("longitude"), coordinateOf<Longitude>(text)},
                   {QStringLiteral("position"), positionOf(text)}});
    }
    return 0;
}

int altitudeCommand(const QStringList &arguments, QTextStream &out)
{
    for (const QString &text : textsOf(arguments)) {
        printLine(out, altitudeOf(text));
    }
    return 0;
}
