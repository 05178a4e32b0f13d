// SPDX-License-Identifier: MIT
#include "platform/power/powerSupply.h"

#include "platform/files/fileCalls.h"

#include <QDir>

#include <optional>

namespace {

constexpr int kFullPercent = 100;

/// Property of one supply; null if it has none of this name.
QByteArray property(const QString &supply, const char *name)
{
    const std::optional<QByteArray> text
        = lumi::readSmallFile(supply + QLatin1Char('/') + QLatin1String(name));
    return text ? text->trimmed() : QByteArray();
}

struct Content
{
    qint64 now = 0;
    qint64 full = 0;
};

/// The charge of the battery, in the first unit in which it reports both figures.
std::optional<Content> contentOf(const QString &supply)
{
    constexpr const char *kUnits[][2]
        = {{"energy_now", "energy_full"}, {"charge_now", "charge_full"}};
    for (const auto &unit : kUnits) {
        bool toldNow = false;
        bool toldFull = false;
        const Content content{property(supply, unit[0]).toLongLong(&toldNow),
                              property(supply, unit[1]).toLongLong(&toldFull)};
        if (toldNow && toldFull && content.now >= 0 && content.full > 0) {
            return content;
        }
    }
    return std::nullopt;
}

/// The percentage that the battery itself reports.
std::optional<int> capacityOf(const QString &supply)
{
    bool isNumber = false;
    const int percent = property(supply, "capacity").toInt(&isNumber);
    return isNumber && percent >= 0 ? std::optional(percent) : std::nullopt;
}

int percentOf(double now, double full)
{
    return qRound(qMin(double{kFullPercent}, kFullPercent * now / full));
}

/// Sums over all supplies.
struct Survey
{
    int batteries = 0;
    int plugs = 0;
    int known = 0;   ///< batteries with a known percentage
    int weighed = 0; ///< of these, batteries with a known capacity
    bool plugged = false;
    bool discharging = false;
    double now = 0;
    double full = 0;
    int percentSum = 0;

    void addBattery(const QString &supply);
    void addPlug(const QString &supply);
    [[nodiscard]] int percent() const;
    [[nodiscard]] bool external() const;
};

void Survey::addBattery(const QString &supply)
{
    if (property(supply, "present") == "0") {
        return;
    }
    ++batteries;
    discharging = discharging || property(supply, "status") == "Discharging";
    const std::optional<Content> content = contentOf(supply);
    std::optional<int> percent = capacityOf(supply);
    if (content) {
        ++weighed;
        now += static_cast<double>(content->now);
        full += static_cast<double>(content->full);
        percent = percentOf(static_cast<double>(content->now), static_cast<double>(content->full));
    }
    if (percent) {
        ++known;
        percentSum += qMin(*percent, kFullPercent);
    }
}

void Survey::addPlug(const QString &supply)
{
    ++plugs;
    plugged = plugged || property(supply, "online").toInt() > 0;
}

int Survey::percent() const
{
    if (known == 0) {
        return kFullPercent;
    }
    // Weighted by capacity if all batteries give theirs, otherwise a plain average.
    return weighed == known ? percentOf(now, full) : percentSum / known;
}

bool Survey::external() const
{
    if (batteries == 0 || plugged) {
        return true;
    }
    return plugs == 0 && !discharging;
}

} // namespace

PowerStatus lumi::readPowerSupply(const QString &folder)
{
    Survey survey;
    const QDir dir(folder);
    const QStringList names = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        const QString supply = dir.filePath(name);
        const QByteArray type = property(supply, "type");
        if (type.isEmpty() || property(supply, "scope") == "Device") {
            continue;
        }
        if (type == "Battery") {
            survey.addBattery(supply);
        } else if (type == "Mains" || type.startsWith("USB")) {
            survey.addPlug(supply);
        }
    }
    return {survey.external() ? PowerStatus::Online : PowerStatus::Offline, survey.percent()};
}
