// SPDX-License-Identifier: MIT
#include "exif/gps/CoordinateForm.h"

std::optional<lumi::Coordinate> lumi::coordinateOf(const QString &text, const CoordinateForm &form)
{
    for (const CoordinateForm::Side &side : form.sides) {
        if (text.startsWith(side.letter)) {
            const auto angle = angleOf(text, form.degreeDigits);
            return angle && isWithin(*angle, form.mostDegrees)
                ? std::optional(Coordinate{side.hemisphere, *angle})
                : std::nullopt;
        }
    }
    return std::nullopt;
}

QString lumi::letterOf(Hemisphere hemisphere, const CoordinateForm &form)
{
    for (const CoordinateForm::Side &side : form.sides) {
        if (side.hemisphere == hemisphere) {
            return QString(side.letter);
        }
    }
    return QString();
}
