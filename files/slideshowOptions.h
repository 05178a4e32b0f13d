// SPDX-License-Identifier: MIT
// What the stored rows of the slideshow's lists mean.
#pragma once

namespace lumi {

/// The rows as Settings keeps them; any number may come from a file edited by hand.
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
