// SPDX-License-Identifier: MIT
#include "import/importTexts.h"

#include "app/common/messages.h"
#include "platform/cards/CardSlots.h"

#include <QDate>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr int kGroup = 3;
constexpr int kMemoryField = 11;
constexpr int kCapacityField = 4;
constexpr int kBytesOfKB = 1024;
/// Space that must stay free. With less the memory counts as low.
constexpr int kMarginKB = 10240;

constexpr int kCard64 = 65536; // KB
constexpr int kCard128 = 131072;
constexpr int kCard256 = 262144;
constexpr int kCard512 = 524288;

QString cards(int freeKB, int cardKB)
{
    return QString::number(freeKB / cardKB).rightJustified(kCapacityField);
}

} // namespace

QString lumi::groupedNumber(int number)
{
    QString text = QString::number(number);
    const qsizetype first = number < 0 ? 1 : 0;
    for (qsizetype at = text.size() - kGroup; at > first; at -= kGroup) {
        text.insert(at, QLatin1Char(','));
    }
    return text;
}

QString lumi::memoryText(int freeKB)
{
    return msg(MsgAvailableMemory).arg(groupedNumber(freeKB), kMemoryField);
}

bool lumi::isMemoryLow(int freeKB)
{
    return freeKB < kMarginKB;
}

QString lumi::capacityText(int freeKB)
{
    return msg(MsgCardQuantity)
        .arg(cards(freeKB, kCard64), cards(freeKB, kCard128), cards(freeKB, kCard256),
             cards(freeKB, kCard512));
}

bool lumi::mayNotFit(int bytes, int freeKB)
{
    return freeKB < bytes / kBytesOfKB + kMarginKB;
}

int lumi::photoCount(const QStringList &paths)
{
    return static_cast<int>(std::count_if(paths.begin(), paths.end(), [](const QString &path) {
        const QString extension = QFileInfo(path).suffix().toLower();
        return extension == QLatin1String("jpg") || extension == QLatin1String("jpeg");
    }));
}

QString lumi::foundText(const QString &source, int photos, int bytes)
{
    return msg(MsgDataDetected)
        .arg(source, QString::number(photos), QString::number(bytes / kBytesOfKB));
}

QString lumi::defaultFolderName(QDate date)
{
    return QString::asprintf("%04d%02d%02d_", date.year(), date.month(), date.day());
}

QString lumi::copiedText(const QString &folder, int files)
{
    return msg(MsgAllDataCopied).arg(folder, QString::number(files));
}

QString lumi::partlyCopiedText(const QString &folder, int files)
{
    return copiedText(folder, files) + QLatin1String("\n\n") + msg(MsgErrorWhileCopying);
}

QString lumi::sourceName(const QString &path)
{
    const std::optional<Slot> slot = CardSlots::slotOf(path);
    if (!slot) {
        return msg(MsgPhotoFiles);
    }
    return msg(*slot == Slot::CF ? MsgCfCard : MsgSdCard);
}
