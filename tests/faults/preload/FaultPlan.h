// SPDX-License-Identifier: MIT
// What a test asks of the preloaded library and what it gets back. Without Qt: the library has
// only the C library below it.
#pragma once

#include <array>
#include <cstddef>

namespace lumi::faults {

/// Kinds of calls, to be combined.
enum Call : unsigned {
    Look = 1U << 0, ///< asks for the state of a file or lists a folder
    OpenOld = 1U << 1,
    OpenNew = 1U << 2, ///< opens for writing, named or not
    Read = 1U << 3,
    Write = 1U << 4,
    Sync = 1U << 5,
    Close = 1U << 6,
    Name = 1U << 7, ///< gives a name: link, rename, mkdir
    Remove = 1U << 8,
    Change = 1U << 9, ///< size, mode or time
    AnyCall = (1U << 10) - 1
};

enum class Act {
    Nothing,
    Fail,        ///< a file to be closed is closed all the same
    FailFrom,    ///< this call and all later ones
    FillUp,      ///< as FailFrom, but if the first of them is a write, it takes half
    Shorten,     ///< a transfer takes half of its bytes
    EndTooSoon,  ///< a read finds the end of the file
    LoseWritten, ///< a sync or close fails, and half of what was written before is lost
    KillBefore,
    KillWithin ///< after half of a transfer
};

struct Plan
{
    std::array<const char *, 2> folders{}; ///< absolute paths; other files are left alone
    unsigned calls = AnyCall;              ///< those that are counted
    Act act = Act::Nothing;
    int nth = 0; ///< the call that is disturbed, counted from 1
    int error = 0;
    bool isWithoutUnnamedFiles = false; ///< no O_TMPFILE and no second name
    bool isWithoutConditions = false;   ///< no renaming that spares the target
};

/// Lies in memory that the disturbed process shares with the test.
struct Tally
{
    static constexpr std::size_t kCallRoom = 4200;

    int calls = 0;                     ///< that were counted
    int hits = 0;                      ///< that were disturbed
    std::array<char, kCallRoom> hit{}; ///< the first of them, with its path
};

} // namespace lumi::faults

extern "C" {

/// Begins to count, or ends it if the plan is null. Both objects are lent until then.
using LumiArmFaults = void(const lumi::faults::Plan *plan, lumi::faults::Tally *tally);
LumiArmFaults lumiArmFaults;
}
