// SPDX-License-Identifier: MIT
// One display mode of the thumbnail view: its grid, what a cell shows, and, once it has been
// laid out, sizes and pictures. Passed by value; the view keeps the copy that is in use and
// the cells of a page look things up there, so that frames are scaled once per layout.
#pragma once

#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QSize>

#include <array>

class FPVThumbnailMetrics
{
public:
    /// Frames come in pairs: the second of each is that of the cell under the cursor.
    enum Frame : int { Picture, Folder, PicturesFolder, Back, FrameKinds };

    /// No cells at all.
    FPVThumbnailMetrics() = default;
    /// modeKind: 'l', 's' or 'd', under which the mode's thumbnails are kept.
    FPVThumbnailMetrics(char modeKind, int across, int down);

    /// The page's cells and pictures, for bars of this width (vertical) and height
    /// (horizontal); 0 for a bar that is not in use. Does nothing without columns or rows.
    void layOut(QSize bars);

    [[nodiscard]] const QImage &frame(Frame frame, bool isFocused) const;

    [[nodiscard]] const QPalette &palette(bool isFocused) const
    {
        return isFocused ? focusedPalette : normalPalette;
    }

    bool showName = false; ///< also selects the large set of frames
    bool showDetail = false;
    bool showCheck = false;
    int columns = 0;
    int rows = 0;
    QSize imageSize{-1, -1}; ///< the box for thumbnails; (-1, -1) before the layout
    int visibleCount = 0;
    QSize pitch{-1, -1}; ///< one cell; (-1, -1) before the layout
    char kind = 'l';
    std::array<QImage, std::size_t{2} * FrameKinds> frames;
    QPixmap checkOff;
    QPixmap checkOn;
    QPalette normalPalette{QColor(0xAC, 0xAC, 0xAC)};
    QPalette focusedPalette{QColor(0xE8, 0x94, 0x5A)};

private:
    void loadPictures();
};
