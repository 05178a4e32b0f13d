// SPDX-License-Identifier: MIT
#include "platform/cards/slotHolders.h"

#include <algorithm>

using lumi::CardSource;
using lumi::SlotHolder;
using lumi::SlotHolders;

namespace {

/// The source's folder: the one of before, if it is still mounted.
SlotHolder holderOf(const CardSource &source, const SlotHolder &before)
{
    const bool isSame = source.folders.contains(before.folder);
    return {source.name, isSame ? before.folder : source.folders.constFirst()};
}

} // namespace

SlotHolders lumi::fillSlots(const QList<Slot> &all, const SlotHolders &before,
                            QList<CardSource> sources)
{
    SlotHolders now;
    // Puts the source into the slot if it is free. Returns whether it was free.
    const auto take = [&](Slot slot, const CardSource &source) {
        const bool isFree = all.contains(slot) && !now.contains(slot);
        if (isFree) {
            now.insert(slot, holderOf(source, before.value(slot)));
        }
        return isFree;
    };
    sources.removeIf([&](const CardSource &source) {
        return std::any_of(all.begin(), all.end(), [&](Slot slot) {
            return before.value(slot).source == source.name && take(slot, source);
        });
    });
    sources.removeIf([&](const CardSource &source) {
        return source.kind && take(*source.kind, source);
    });
    sources.removeIf([&](const CardSource &source) {
        return std::any_of(all.begin(), all.end(), [&](Slot slot) {
            return take(slot, source);
        });
    });
    return now;
}
