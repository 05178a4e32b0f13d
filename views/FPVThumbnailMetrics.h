// SPDX-License-Identifier: MIT
// One display mode of the thumbnail view: its grid, the parts of a cell and, after the layout,
// sizes and pictures. Passed by value. The cells of a page use the view's copy, so that frames are
// scaled once per layout.
#pragma once

#include "platform/screen/panel.h"

#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QSize>

#include <array>

class FPVThumbnailMetrics
{
public:
    /// Each frame has a second version for the cell with the cursor.
    enum Frame : int { Picture, Folder, PicturesFolder, Back, FrameKinds };

    /// No cells at all.
    FPVThumbnailMetrics() = default;
    /// modeKind: 'l', 's' or 'd', part of the key under which thumbnails are stored.
    FPVThumbnailMetrics(char modeKind, int across, int down);

    /// Computes the sizes and loads the pictures. bars: width of the vertical and height of the
    /// horizontal bar, 0 for a bar that is not in use. Does nothing without columns or rows.
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
    QPalette normalPalette{QColor(lumi::kCellColor)};
    QPalette focusedPalette{QColor(lumi::kChosenColor)};

private:
    void loadPictures();
};
