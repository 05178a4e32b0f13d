// SPDX-License-Identifier: MIT
#include "app/common/shutDownFlag.h"

namespace {

bool g_shuttingDown = false;

} // namespace

bool lumi::shutDownFlag()
{
    return g_shuttingDown;
}

void lumi::setShutDownFlag(bool shuttingDown)
{
    g_shuttingDown = shuttingDown;
}
