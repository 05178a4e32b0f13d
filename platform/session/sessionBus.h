// SPDX-License-Identifier: MIT
// The user's message bus, if one is there.
#pragma once

namespace lumi {

/// Whether the session bus runs and this process is connected. Never starts a bus, which the D-Bus
/// library would do on a display without a bus address.
[[nodiscard]] bool hasSessionBus();

} // namespace lumi
