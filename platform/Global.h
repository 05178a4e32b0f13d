// SPDX-License-Identifier: MIT
// Services of the handheld's desktop that have no better home.
#pragma once

struct Global
{
    /// Puts the on-screen keyboard away, if there is one.
    static void hideInputMethod();
};
