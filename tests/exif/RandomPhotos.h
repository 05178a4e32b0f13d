// SPDX-License-Identifier: MIT
// Well-formed photos of all kinds, the same in every run: both byte orders, directories there
// and missing, values of all types and sizes, maker notes, thumbnails, tails of odd sizes.
#pragma once

#include "tests/support/ExifBuilder.h"

#include <QByteArray>

namespace lumi::test {

struct RandomPhoto
{
    QByteArray name; // what is special about it
    ExifBuilder builder;
};

/// The photo of that number; the kinds take turns by the bits of it.
[[nodiscard]] RandomPhoto randomPhoto(unsigned number);

} // namespace lumi::test
