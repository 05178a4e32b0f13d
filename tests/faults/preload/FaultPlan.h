// SPDX-License-Identifier: MIT
// The requests of a test to the preloaded library, and the results. Without Qt, because the library
// may use only the C library.
#pragma once

#include <array>
#include <cstddef>

namespace lumi::faults {

/// Kinds of calls, to be combined.
enum Call : unsigned {
    Look = 1U << 0, ///< queries the state of a file or lists a folder
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
    Fail,        ///< a close() that fails still closes the file
    FailFrom,    ///< this call and all later ones
    FillUp,      ///< like FailFrom, but if the first of these calls is a write, it writes half
    Shorten,     ///< a transfer takes half of its bytes
    EndTooSoon,  ///< a read returns the end of the file
    LoseWritten, ///< a sync or close fails, and half of what was written before is lost
    KillBefore,
    KillWithin ///< after half of a transfer
};

struct Plan
{
    std::array<const char *, 2> folders{}; ///< absolute paths; other files are not disturbed
    unsigned calls = AnyCall;              ///< the calls that are counted
    Act act = Act::Nothing;
    int nth = 0; ///< the call that is disturbed, counted from 1
    int error = 0;
    bool isWithoutUnnamedFiles = false; ///< no O_TMPFILE and no second name for a file
    bool isWithoutConditions = false;   ///< no rename that refuses a taken name
};

/// In memory that the disturbed process shares with the test.
struct Tally
{
    static constexpr std::size_t kCallRoom = 4200;

    int calls = 0;                     ///< number of counted calls
    int hits = 0;                      ///< number of disturbed calls
    std::array<char, kCallRoom> hit{}; ///< the first disturbed call, with its path
};

} // namespace lumi::faults

extern "C" {

/// Starts counting, or stops if the plan is null. Both objects are lent until then.
using LumiArmFaults = void(const lumi::faults::Plan *plan, lumi::faults::Tally *tally);
LumiArmFaults lumiArmFaults;
}
