// SPDX-License-Identifier: MIT
// What is kept between runs: the row numbers of the slideshow's choices and of the font size.
// Every access opens the settings file and closes it again, so a write is on disk when the
// function returns and an edit from outside is seen at once.
//
// The values are rows of tables in other classes. A file edited by hand may hold any number:
// callers must clamp.
#pragma once

namespace lumi {

class Settings
{
public:
    /// Row of the transition choice: 0 auto, 1 manual.
    [[nodiscard]] static int operation();
    static void setOperation(int row);

    /// Row of the order choice: 0 as listed, 1 random.
    [[nodiscard]] static int dispOrder();
    static void setDispOrder(int row);

    /// Row of the delay choice: 0 is 2 seconds, 8 is 10 seconds.
    [[nodiscard]] static int dispTime();
    static void setDispTime(int row);

    /// Row of the loop choice: 0 is once, 9 is ten times, 10 is for ever.
    [[nodiscard]] static int dispCount();
    static void setDispCount(int row);

    /// Index into the font sizes of the Exif panel, 0 to 4.
    [[nodiscard]] static int fontSize();
    static void setFontSize(int index);
};

} // namespace lumi
