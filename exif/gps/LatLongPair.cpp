// SPDX-License-Identifier: MIT
#include "exif/gps/LatLongPair.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>

namespace {

using Groups = std::array<quint32, 4>;

/// The numbers between the separators; nothing if there are more than four or one is no number.
/// A negative number wraps to a large one, which setValues() refuses.
std::optional<Groups> groupsOf(const QString &text, const QRegularExpression &separators)
{
    const QStringList parts = text.split(separators, Qt::SkipEmptyParts);
    Groups groups = {};
    if (parts.size() > static_cast<qsizetype>(groups.size())) {
        return std::nullopt;
    }
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        groups[static_cast<std::size_t>(i)] = static_cast<quint32>(parts[i].toInt(&isNumber));
        if (!isNumber) {
            return std::nullopt;
        }
    }
    return groups;
}

bool setGroups(LatLong &value, Hemisphere hemisphere, const Groups &groups)
{
    return value.setValues(hemisphere, groups[0], groups[1], groups[2], groups[3]);
}

} // namespace

bool LatLongPair::fromText(const QString &text)
{
    static const QRegularExpression kEastOrWest(QStringLiteral("[EW]"));
    static const QRegularExpression kLatitudeSeparators(QStringLiteral("[.NS]"));
    static const QRegularExpression kLongitudeSeparators(QStringLiteral("[.EW]"));
    const qsizetype middle = text.indexOf(kEastOrWest);
    if (middle < 0) {
        return false;
    }
    const QString latitude = text.left(middle);
    const QString longitude = text.mid(middle);
    const bool isNorth = latitude.startsWith(QLatin1Char('N'));
    if (!isNorth && !latitude.startsWith(QLatin1Char('S'))) {
        return false;
    }
    const auto latitudeGroups = groupsOf(latitude, kLatitudeSeparators);
    const auto longitudeGroups = groupsOf(longitude, kLongitudeSeparators);
    if (!latitudeGroups || !longitudeGroups) {
        return false;
    }
    const bool isEast = longitude.startsWith(QLatin1Char('E'));
    const bool tookLatitude
        = setGroups(m_latitude, isNorth ? Hemisphere::North : Hemisphere::South, *latitudeGroups);
    const bool tookLongitude
        = setGroups(m_longitude, isEast ? Hemisphere::East : Hemisphere::West, *longitudeGroups);
    return tookLatitude && tookLongitude;
}
