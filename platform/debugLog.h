// SPDX-License-Identifier: MIT
// Log for finding faults.
#pragma once

/// Writes a printf text to the log category "lumivault.trace", which is off unless
/// QT_LOGGING_RULES="lumivault.trace.debug=true" switches it on.
[[gnu::format(printf, 1, 2)]] void debugLog(const char *format, ...);
