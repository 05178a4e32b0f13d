// SPDX-License-Identifier: MIT
// One cell of a page, without a view around it.
#pragma once

#include "tests/views/BrowserWorld.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailLabel.h"
#include "widgets/MyImageCheckBox.h"

#include <QWidget>

namespace lumi::test {

struct CellFixture
{
    /// Large mode with a bar of 14 pixels: cells of 175 x 157, pictures of 171 x 119.
    CellFixture();

    FPVThumbnailItem *makeCell(FPVItemObject *item);
    /// As the view makes it, visible, before the chain reaches it.
    FPVThumbnailItem *makeFullCell(FPVItemObject *item);
    /// Gives the page and the cell the keyboard focus. False if the window cannot get it.
    [[nodiscard]] bool focusPage(FPVThumbnailItem *cell);

    BrowserWorld world;
    FPVThumbnailMetrics metrics;
    QWidget page;
};

/// In the order in which they were made.
QList<FPVThumbnailLabel *> labels(const FPVThumbnailItem *cell);
/// The first label with a text, and the one without.
FPVThumbnailLabel *nameLabel(const FPVThumbnailItem *cell);
FPVThumbnailLabel *pictureLabel(const FPVThumbnailItem *cell);
MyImageCheckBox *checkBox(const FPVThumbnailItem *cell);

} // namespace lumi::test
