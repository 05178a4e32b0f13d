// SPDX-License-Identifier: MIT
// The commands of the sample-photo maker that take options, and the reading of those.
#pragma once

#include "tools/photos/Photo.h"

#include <QString>

namespace lumi::photos {

struct Request
{
    PhotoOrder photo{SceneKind::Mountains, 1, {320, 240}, Camera, 1, 85};
    int count = 100;
};

/// Takes over one option. False if its value makes no sense.
[[nodiscard]] bool setOption(Request &request, const QString &name, const QString &value);

/// Photos that share a few pictures but each have a time of their own, as many as wanted at
/// the price of writing them.
[[nodiscard]] bool makeMany(const QString &folder, const Request &request);
[[nodiscard]] bool makeOne(const QString &path, const Request &request);

} // namespace lumi::photos
