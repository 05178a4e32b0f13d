// SPDX-License-Identifier: MIT
// The user's message bus, if one is there.
#pragma once

namespace lumi {

/// Whether the session bus runs and this process is on it. Never starts a bus: the D-Bus
/// library would do so by itself where it finds a display and no address.
[[nodiscard]] bool hasSessionBus();

} // namespace lumi
