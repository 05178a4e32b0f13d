// SPDX-License-Identifier: MIT
// A fraction as Exif stores it: not reduced, and the denominator can be 0.
#pragma once

#include <QtGlobal>

namespace lumi {

struct Rational
{
    quint32 numerator = 0;
    quint32 denominator = 1;

    friend bool operator==(const Rational &, const Rational &) = default;
};

static_assert(sizeof(Rational) == 8, "the bytes of a tag are copied to and from this type");

} // namespace lumi
