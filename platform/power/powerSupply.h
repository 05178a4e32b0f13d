// SPDX-License-Identifier: MIT
// Reads the kernel's power supply folder: a subfolder for each battery, mains plug and USB
// port, with a small text file for each of its properties.
#pragma once

#include "platform/Machine.h"

#include <QString>

namespace lumi {

/// State of the supplies in a folder such as /sys/class/power_supply. Several batteries are
/// weighed by what they hold; batteries of mice and the like don't count. Without a battery,
/// or a folder, the machine is on external power with 100 %. A battery that does not tell how
/// full it is counts as unknown, not as empty: the others give the percentage, or it is 100 %.
[[nodiscard]] PowerStatus readPowerSupply(const QString &folder);

} // namespace lumi
