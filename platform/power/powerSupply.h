// SPDX-License-Identifier: MIT
// Reads the kernel's power supply folder: a subfolder for each battery, mains plug and USB
// port, with a small text file for each of its properties.
#pragma once

#include "platform/Machine.h"

#include <QString>

namespace lumi {

/// State of the supplies in a folder such as /sys/class/power_supply. Several batteries are
/// weighted by capacity; batteries of mice and similar devices don't count. Without a battery or
/// without the folder the result is external power and 100 %. A battery of unknown charge is left
/// out of the percentage; if there is no other, the percentage is 100.
[[nodiscard]] PowerStatus readPowerSupply(const QString &folder);

} // namespace lumi
