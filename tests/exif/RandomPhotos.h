// SPDX-License-Identifier: MIT
// Well-formed photos of all kinds, the same in every run: both byte orders, with and without each
// directory, values of all types and sizes, maker notes, thumbnails, data behind the image.
#pragma once

#include "tests/support/ExifBuilder.h"

#include <QByteArray>

namespace lumi::test {

inline constexpr unsigned kRandomPhotos = 256;

struct RandomPhoto
{
    QByteArray name; // lists its properties
    ExifBuilder builder;
};

/// The photo of that number. Each of its eight bits is a property that the photo has or not. All
/// photos are built at the first call.
[[nodiscard]] const RandomPhoto &randomPhoto(unsigned number);

} // namespace lumi::test
