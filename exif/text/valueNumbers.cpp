// SPDX-License-Identifier: MIT
// Values of type BYTE, SHORT and LONG: choices as words, the flash as lines, the others as numbers.
#include "exif/tag/tagNumbers.h"
#include "exif/text/flashText.h"
#include "exif/text/valueText.h"
#include "exif/text/valueWords.h"

#include <QStringList>

#include <algorithm>
#include <cstring>

namespace {

constexpr int kStandardColor = 1;
// Only a LONG can have this value. A SHORT with all bits set is 65535.
constexpr int kUncalibrated = -1;

QString versionText(const lumi::ShownValue &value)
{
    constexpr int kParts = 4;
    if (value.row.list != ExifListKind::Gps || value.tag.count() != kParts
        || value.tag.size() < kParts) {
        return {};
    }
    QStringList parts;
    for (int i = 0; i < kParts; ++i) {
        parts.append(QString::number(static_cast<uchar>(value.tag.data()[i])));
    }
    return QLatin1String("Ver ") + parts.join(QLatin1Char('.'));
}

QString colorSpaceText(int value)
{
    if (value == kStandardColor) {
        return QStringLiteral("sRGB");
    }
    return value == kUncalibrated ? QStringLiteral("Uncalibrated") : QString();
}

/// Each two bytes as a signed number, whatever type they have.
QString areaText(const FPVExifTagBytes &tag)
{
    constexpr qint64 kSize = 2;
    const qint64 count = std::min<qint64>(tag.count(), tag.size() / kSize);
    QStringList numbers;
    for (qint64 i = 0; i < count; ++i) {
        qint16 number = 0;
        std::memcpy(&number, tag.data() + i * kSize, sizeof number);
        numbers.append(QString::number(number));
    }
    return numbers.join(QLatin1Char(','));
}

} // namespace

QString lumi::numberValueText(const ShownValue &value)
{
    const int number = value.tag.intValue();
    if (const auto word = valueWord(value.row.tag, number)) {
        return *word;
    }
    switch (value.row.tag) {
    case kTagGpsVersion:
        return versionText(value);
    case kTagIsoSpeed:
        return QString::number(number);
    case kTagFlash:
        return flashText(number);
    case kTagSubjectArea:
        return areaText(value.tag);
    case kTagColorSpace:
        return colorSpaceText(number);
    case kTagFocalLength35mm:
        return QString::number(number) + QLatin1String("mm");
    default:
        return value.tag.text();
    }
}
