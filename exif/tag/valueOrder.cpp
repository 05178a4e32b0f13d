// SPDX-License-Identifier: MIT
#include "exif/tag/valueOrder.h"

#include "exif/tag/exifFormat.h"

#include <QtEndian>

namespace {

template <class Number> void convert(std::span<char> value, bool littleEndian)
{
    const auto units = static_cast<qsizetype>(value.size() / sizeof(Number));
    if (littleEndian) {
        qFromLittleEndian<Number>(value.data(), units, value.data());
    } else {
        qFromBigEndian<Number>(value.data(), units, value.data());
    }
}

} // namespace

void lumi::convertOrder(std::span<char> value, quint16 type, bool littleEndian)
{
    const bool isFraction = type == TiffRational || type == TiffSignedRational;
    const int unit = isFraction ? 4 : typeSize(type);
    if (unit == 2) {
        convert<quint16>(value, littleEndian);
    } else if (unit == 4) {
        convert<quint32>(value, littleEndian);
    }
}
