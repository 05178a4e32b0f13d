// SPDX-License-Identifier: MIT
// The three display modes.
#include "exif/ui/MyImageWidget.h"
#include "files/FormFile.h"
#include "views/FPVThumbnailView.h"
#include "widgets/MyLeftWidget.h"

#include <QComboBox>

namespace {

struct ModeRow
{
    char kind;
    int columns;
    int rows;
    bool showName;
    bool showDetail;
    bool showCheck;
    bool isDetail;
};

// The number of a mode is the index of its row, and of its button in the column.
constexpr std::array<ModeRow, 3> kModes = {{
    {'l', 3, 2, true, false, true, false},
    {'s', 7, 5, false, false, true, false},
    {'d', 7, 1, false, false, false, true},
}};

FPVThumbnailMetrics metricsOf(const ModeRow &row)
{
    FPVThumbnailMetrics metrics(row.kind, row.columns, row.rows);
    metrics.showName = row.showName;
    metrics.showDetail = row.showDetail;
    metrics.showCheck = row.showCheck;
    return metrics;
}

} // namespace

void FormFile::menu_disp_ThumbnailLarge()
{
    setMode(LargeMode);
}

void FormFile::menu_disp_ThumbnailSmall()
{
    setMode(SmallMode);
}

void FormFile::menu_disp_DispDetail()
{
    setMode(DetailMode);
}

void FormFile::setMode(Mode mode)
{
    if (m_mode == mode) {
        return;
    }
    const ModeRow &row = kModes.at(static_cast<std::size_t>(mode));
    if (!row.isDetail && !m_deviceCombo->hasFocus() && !m_view->hasFocus()) {
        m_view->setFocus();
    }
    m_mode = mode;
    m_leftWidget->setButtonOn(MyLeftWidget::AllButtons, false);
    m_leftWidget->setButtonOn(mode, true);
    // The page has a fixed size; the rest of a larger window stays empty.
    m_view->setMaximumSize(lumi::kPageWidth, lumi::pageBoxHeight(row.rows));
    if (row.isDetail) {
        m_view->setHorizontalMode(false);
    } else {
        m_detailPanel->hide();
        m_view->setVerticalMode(false);
    }
    m_view->setMetrics(metricsOf(row), true);
    if (mode != LargeMode) {
        m_view->showPage(-1, m_view->currentIndex(), true);
    }
    if (row.isDetail) {
        m_detailPanel->show();
        tellPanel(currentItem());
    }
}
