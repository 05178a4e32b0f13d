// SPDX-License-Identifier: MIT
// Services of the handheld's desktop that belong to no other class.
#pragma once

struct Global
{
    /// Hides the on-screen keyboard, if there is one.
    static void hideInputMethod();
};
