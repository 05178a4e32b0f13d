// SPDX-License-Identifier: MIT
// A word about entries that a listing of a folder leaves out without one: who copies a card
// and then empties it should be able to learn of them.
#pragma once

class QString;

namespace lumi {

/// Warns of names that are no text, such as those of a card whose names are mounted in another
/// encoding, and of a folder that can't be read to its end.
void warnOfLostEntries(const QString &folder);

} // namespace lumi
