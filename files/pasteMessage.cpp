// SPDX-License-Identifier: MIT
#include "files/pasteMessage.h"

lumi::MessageId lumi::pasteMessage(PasteResult result)
{
    // The user can do something about the room only.
    return result == PasteResult::NoRoom ? MsgFreeSomeMemory : MsgPasteFailed;
}
