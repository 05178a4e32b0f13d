// SPDX-License-Identifier: MIT
// Well-formed photos of all kinds, the same in every run: both byte orders, with and without each
// directory, values of all types and sizes, maker notes, thumbnails, data behind the image.
#pragma once

#include "tests/support/ExifBuilder.h"

#include <QByteArray>

namespace lumi::test {

struct RandomPhoto
{
    QByteArray name; // lists its properties
    ExifBuilder builder;
};

/// The photo of that number. Each of its eight lower bits is a property that the photo has or not.
[[nodiscard]] RandomPhoto randomPhoto(unsigned number);

} // namespace lumi::test
