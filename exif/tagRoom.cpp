// SPDX-License-Identifier: MIT
#include "exif/tagRoom.h"

#include "exif/exifBlockBytes.h"
#include "exif/pointerTags.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace {

struct ListedTag
{
    lumi::ExifTagList *list;
    const FPVExifTag *tag;
};

constexpr int kPointers[] = {lumi::kExifPointer, lumi::kGpsPointer, lumi::kInteroperabilityPointer,
                             lumi::kThumbnailOffset, lumi::kThumbnailLength};

/// The higher, the sooner the tag goes. What is too large for a pointer is none.
quint32 lossOrder(const ListedTag &listed)
{
    constexpr qsizetype kPointerSize = 4;
    const FPVExifTag &tag = *listed.tag;
    const bool isPointer = std::ranges::find(kPointers, tag.tag()) != std::end(kPointers)
        && lumi::valueSize(tag) <= kPointerSize;
    return isPointer ? 0 : lumi::entrySize(tag);
}

/// What goes last comes first, equals in their order.
std::vector<ListedTag> byLossOrder(lumi::ExifTagLists lists)
{
    std::vector<ListedTag> tags;
    for (lumi::ExifTagList *list : lists) {
        for (const FPVExifTag *tag : *list) {
            tags.push_back({list, tag});
        }
    }
    std::stable_sort(tags.begin(), tags.end(), [](const ListedTag &one, const ListedTag &other) {
        return lossOrder(one) < lossOrder(other);
    });
    return tags;
}

} // namespace

qint64 lumi::sizeOfTags(ExifTagLists lists, qint64 largest)
{
    qint64 all = 0;
    for (const ExifTagList *list : lists) {
        qint64 size = 0;
        for (const FPVExifTag *tag : *list) {
            const qint64 entry = entrySize(*tag);
            size += entry <= largest ? entry : 0;
        }
        all += size > 0 ? kBareDirectorySize + size : 0;
    }
    return all;
}

qint64 lumi::fitTags(ExifTagLists lists, qint64 room)
{
    qint64 size = sizeOfTags(lists, std::numeric_limits<qint64>::max());
    if (size <= room) {
        return 0;
    }
    qint64 gone = 0;
    std::vector<ListedTag> tags = byLossOrder(lists);
    while (size > room && !tags.empty()) {
        const auto [list, tag] = tags.back();
        tags.pop_back();
        size -= entrySize(*tag);
        gone += valueSize(*tag);
        list->removeNumber(tag->tag());
        size -= list->isEmpty() ? kBareDirectorySize : 0;
    }
    return gone;
}
