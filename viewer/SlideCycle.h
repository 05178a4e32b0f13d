// SPDX-License-Identifier: MIT
// The order of a slideshow, its rounds and the steps of the user, without a widget or a clock.
// The cycle has a present picture: the one that is being decoded or is to be decoded next. An
// automatic show counts rounds. Its steps add up until a picture comes on the screen: they are
// counted from the picture on the screen, not from the present one.
// Owns: nothing. The pictures are only compared, never used.
#pragma once

#include "items/FPVItemList.h"

#include <functional>
#include <vector>

class FPVItemImage;

namespace lumi {

class SlideCycle
{
public:
    /// Gives random numbers of 0 or more.
    using Dice = std::function<int()>;

    /// Takes the pictures of items from place startIndex on and round (from the first item if
    /// startIndex is negative), or in the order of the dice. The first one is present.
    /// loopCount: rounds to play, 0 for no limit.
    SlideCycle(const FPVItemList &items, int startIndex, int loopCount, const Dice &dice = {});

    /// Null if there are no pictures.
    [[nodiscard]] FPVItemImage *present() const;

    [[nodiscard]] bool isEmpty() const { return m_pictures.empty(); }

    [[nodiscard]] bool roundsAreOver() const;

    /// To the next picture. After the last one a new round begins.
    void goOn();
    /// To the picture before, from the first one to the last one. Counts no round.
    void goBack();

    /// Adds a step of +1 or -1 and goes to the picture that all pending steps lead to.
    void step(int direction);

    [[nodiscard]] bool isStepPending() const { return m_isStepPending; }

    /// The picture was drawn for the first time since it was decoded.
    void setShown(const FPVItemImage *picture);
    /// The picture was drawn again from its kept raster.
    void setShownAgain(const FPVItemImage *picture);

    /// Removes a picture. Then ahead is present, or, if that is null, the follower of the
    /// removed picture; a new round begins if it was the last of its round.
    void remove(const FPVItemImage *picture, const FPVItemImage *ahead);
    /// Counts steps from the present picture if the one they were counted from was removed, or
    /// if a step is pending, which led to a removed picture.
    void repairSteps();
    /// Counts steps from the present picture, which is shown as soon as it is decoded.
    void awaitPresent();

private:
    [[nodiscard]] int placeOf(const FPVItemImage *picture) const;
    void startNewRound();
    void countStepsFromPresent();

    std::vector<FPVItemImage *> m_pictures;
    int m_place = 0;
    int m_loopCount;
    int m_loopsDone = 0;
    const FPVItemImage *m_startItem = nullptr; ///< steps are counted from it; null: none
    int m_step = 0;
    bool m_isStepPending = false;
    bool m_aheadInNewRound = false; ///< the present picture was counted as a new round
};

} // namespace lumi
