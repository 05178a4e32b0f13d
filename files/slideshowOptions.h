// SPDX-License-Identifier: MIT
// The options of a slideshow, computed from the stored rows of its dialog's lists.
#pragma once

namespace lumi {

/// The rows as stored by Settings. A hand-edited file may contain any number.
struct SlideshowRows
{
    int operation;
    int dispOrder;
    int dispTime;
    int dispCount;
};

struct SlideshowOptions
{
    bool autoMode;
    bool inOrder;
    int delay;     ///< milliseconds
    int loopCount; ///< 0 for ever

    friend bool operator==(const SlideshowOptions &, const SlideshowOptions &) = default;
};

[[nodiscard]] SlideshowOptions slideshowOptions(const SlideshowRows &rows);

} // namespace lumi
