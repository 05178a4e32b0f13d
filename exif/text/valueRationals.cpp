// SPDX-License-Identifier: MIT
// Values of type RATIONAL and SRATIONAL. Some are shown as stored, not reduced, most as a quotient
// with six digits. A zero denominator gives "inf" or "nan".
#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "exif/gps/Altitude.h"
#include "exif/gps/Latitude.h"
#include "exif/gps/Longitude.h"
#include "exif/read/FPVExifDocument.h"
#include "exif/tag/tagNumbers.h"
#include "exif/text/valueText.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cmath>
#include <cstring>
#include <optional>

namespace {

/// The texts before and after the quotient of a tag.
struct QuotientRule
{
    int tag;
    const char *prefix;
    const char *suffix;
};

constexpr QuotientRule kUnsignedQuotients[] = {
    {lumi::kTagFNumber, "", ""},          {lumi::kTagAperture, "F", ""},
    {lumi::kTagLargestAperture, "F", ""}, {lumi::kTagSubjectDistance, "", "m"},
    {lumi::kTagFocalLength, "", "mm"},    {lumi::kTagFlashEnergy, "", ""},
    {lumi::kTagFocalPlaneX, "", ""},      {lumi::kTagFocalPlaneY, "", ""},
};

constexpr QuotientRule kSignedQuotients[] = {
    {lumi::kTagBrightness, "", "(BV)"},
    {lumi::kTagExposureBias, "", "(EV)"},
};

/// The first count fractions of the value; nothing if it has fewer.
template <std::size_t count>
std::optional<std::array<lumi::Rational, count>> rationalsOf(const FPVExifTagBytes &tag)
{
    std::array<lumi::Rational, count> rationals;
    if (tag.size() < static_cast<qsizetype>(sizeof rationals)) {
        return std::nullopt;
    }
    std::memcpy(rationals.data(), tag.data(), sizeof rationals);
    return rationals;
}

QString quotientText(std::span<const QuotientRule> rules, int tag, double quotient)
{
    const auto found = std::find_if(rules.begin(), rules.end(), [tag](const QuotientRule &rule) {
        return rule.tag == tag;
    });
    if (found == rules.end()) {
        return {};
    }
    return QLatin1String(found->prefix) % QString::number(quotient, 'g', 6)
        % QLatin1String(found->suffix);
}

QString fractionText(const lumi::Rational &rational)
{
    return QString::number(rational.numerator) % QLatin1Char('/')
        % QString::number(rational.denominator);
}

template <class Value> QString coordinateText(const lumi::ShownValue &value, int referenceTag)
{
    const FPVExifTag *reference = value.document.find(referenceTag, ExifListKind::Gps);
    const auto rationals = rationalsOf<3>(value.tag);
    if (!reference || !rationals) {
        return {};
    }
    Value coordinate;
    coordinate.fromRationals(reference->text(), *rationals);
    return coordinate.text();
}

/// With a unit, an altitude without a valid text is the unit alone.
QString altitudeText(const lumi::ShownValue &value, const lumi::Rational &rational)
{
    const auto *reference = dynamic_cast<const FPVExifTagBytes *>(
        value.document.find(lumi::kTagAltitudeReference, ExifListKind::Gps));
    if (!reference) {
        return {};
    }
    const bool isBelow = reference->size() > 0 && *reference->data() != 0;
    Altitude altitude;
    altitude.fromRational(!isBelow, rational);
    return value.withUnit ? altitude.text() + QLatin1Char('m') : altitude.text();
}

/// Cameras store an exposure time as the negative of its logarithm to base 2.
QString shutterText(double exponent)
{
    if (!std::isfinite(exponent)) {
        return {};
    }
    const double power = std::min(std::pow(2.0, std::abs(exponent)), double(INT_MAX));
    const QLatin1String prefix(exponent > 0 ? "1/" : "");
    return prefix % QString::number(static_cast<int>(power)) % msg(lumi::MsgSec);
}

} // namespace

QString lumi::rationalValueText(const ShownValue &value)
{
    const auto first = rationalsOf<1>(value.tag);
    if (!first) {
        return {};
    }
    const Rational &rational = first->front();
    switch (value.row.tag) {
    case kTagLatitude:
        return coordinateText<Latitude>(value, kTagLatitudeReference);
    case kTagLongitude:
        return coordinateText<Longitude>(value, kTagLongitudeReference);
    case kTagAltitude:
        return altitudeText(value, rational);
    case kTagCompressedBitsPerPixel:
        return fractionText(rational) + QLatin1String(" bit/pel");
    case kTagExposureTime:
        return fractionText(rational) % QLatin1Char(' ') % msg(MsgSec);
    case kTagDigitalZoomRatio:
        return fractionText(rational);
    default:
        return quotientText(kUnsignedQuotients, value.row.tag,
                            double(rational.numerator) / double(rational.denominator));
    }
}

QString lumi::signedRationalValueText(const ShownValue &value)
{
    const auto first = rationalsOf<1>(value.tag);
    if (!first) {
        return {};
    }
    const double quotient = double(static_cast<qint32>(first->front().numerator))
        / double(static_cast<qint32>(first->front().denominator));
    return value.row.tag == kTagShutterSpeed
        ? shutterText(quotient)
        : quotientText(kSignedQuotients, value.row.tag, quotient);
}
