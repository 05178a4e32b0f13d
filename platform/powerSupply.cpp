// SPDX-License-Identifier: MIT
#include "platform/powerSupply.h"

#include <QDir>
#include <QFile>

#include <optional>

namespace {

constexpr int kFullPercent = 100;
constexpr qint64 kMaxPropertyBytes = 4096;

/// Property of one supply; null if it has none of this name.
QByteArray property(const QString &supply, const char *name)
{
    QFile file(supply + QLatin1Char('/') + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.read(kMaxPropertyBytes).trimmed() : QByteArray();
}

struct Content
{
    qint64 now = 0;
    qint64 full = 0;
};

/// What the battery holds, in the first unit it tells both figures in.
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

/// Sums over all supplies.
struct Survey
{
    int batteries = 0;
    int plugs = 0;
    int weighed = 0;
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
    int percent = property(supply, "capacity").toInt();
    if (content) {
        ++weighed;
        now += static_cast<double>(content->now);
        full += static_cast<double>(content->full);
        percent = qRound(kFullPercent * static_cast<double>(content->now)
                         / static_cast<double>(content->full));
    }
    percentSum += qBound(0, percent, kFullPercent);
}

void Survey::addPlug(const QString &supply)
{
    ++plugs;
    plugged = plugged || property(supply, "online").toInt() > 0;
}

int Survey::percent() const
{
    if (batteries == 0) {
        return kFullPercent;
    }
    // Weighing needs all of them; otherwise each counts alike.
    const int percent
        = weighed == batteries ? qRound(kFullPercent * now / full) : percentSum / batteries;
    return qBound(0, percent, kFullPercent);
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
