// SPDX-License-Identifier: MIT
#include "app/common/labels.h"
#include "items/FPVItemFolder.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailLabel.h"
#include "widgets/MyImageCheckBox.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

/// The frame's inner box: first column, first line, and the margin at the other end.
constexpr int kInnerLeft = 2;
constexpr int kInnerTop = 2;
constexpr int kInnerMargin = 3;
/// Between the check box and the text beside it.
constexpr int kNameGap = 6;
constexpr int kDetailGap = 1;
/// Between a text and the left edge of its label, if the text leaves enough room.
constexpr int kTextIndent = 4;
/// Height of the label area of a cell without labels.
constexpr int kNoLabels = 4;

void indentText(QLabel *label)
{
    const int left = label->width() - label->fontMetrics().horizontalAdvance(label->text());
    label->setIndent(std::clamp(left, 0, kTextIndent));
}

} // namespace

void FPVThumbnailItem::relayout()
{
    if (!m_item) {
        return;
    }
    // Parts are hidden before they move and shown afterwards, so that they are painted once.
    hideParts();
    int labelsTop = height() - kNoLabels;
    labelsTop = placeCheckBox(labelsTop);
    labelsTop = placeName(labelsTop);
    labelsTop = placeDetail(labelsTop);
    placePicture(labelsTop);
    showParts();
    applyFocus();
    update();
}

void FPVThumbnailItem::hideParts()
{
    const std::pair<QWidget *, bool> parts[] = {{m_picture, m_pictureVisible},
                                                {m_nameLabel, m_nameVisible},
                                                {m_detailLabel, m_detailVisible},
                                                {m_checkBox, m_checkVisible}};
    for (const auto &[part, isVisible] : parts) {
        if (part != nullptr && !isVisible) {
            part->hide();
        }
    }
}

void FPVThumbnailItem::showParts()
{
    const std::pair<QWidget *, bool> parts[] = {{m_picture, m_pictureVisible},
                                                {m_nameLabel, m_nameVisible},
                                                {m_detailLabel, m_detailVisible},
                                                {m_checkBox, m_checkVisible && m_hadTurn}};
    for (const auto &[part, isVisible] : parts) {
        if (part != nullptr && isVisible) {
            part->show();
        }
    }
}

int FPVThumbnailItem::placeCheckBox(int top)
{
    if (m_checkBox == nullptr || !m_checkVisible) {
        return top;
    }
    const int side = m_checkBox->height();
    const int boxTop = height() - kInnerMargin - side;
    m_checkBox->setGeometry(kInnerLeft, boxTop, side, side);
    m_checkBox->setCheckState(m_item->isChecked() ? Qt::Checked : Qt::Unchecked);
    return m_nameVisible ? boxTop : top;
}

int FPVThumbnailItem::placeName(int top)
{
    if (m_nameLabel == nullptr || !m_nameVisible) {
        return top;
    }
    const bool hasCheck = m_checkBox != nullptr && m_checkVisible;
    const int left = hasCheck ? m_checkBox->width() + kNameGap : kInnerLeft;
    const int labelTop = height() - kInnerMargin - m_nameLabel->height();
    m_nameLabel->setGeometry(left, labelTop, width() - kInnerMargin - left + 1,
                             m_nameLabel->height());
    if (!isParentEntry()) {
        elideToLabel(m_nameLabel, isPicture() ? m_item->baseName() : m_item->fileName());
    }
    indentText(m_nameLabel);
    return std::min(top, labelTop);
}

int FPVThumbnailItem::placeDetail(int top)
{
    if (m_detailLabel == nullptr || !m_detailVisible) {
        return top;
    }
    const bool isAboveName = m_nameLabel != nullptr && m_nameVisible;
    const bool hasCheck = m_checkBox != nullptr && m_checkVisible;
    const int left = hasCheck && !isAboveName ? m_checkBox->width() + kDetailGap : kInnerLeft;
    const int bottom = isAboveName ? top : height() - kInnerMargin;
    const int labelTop = bottom - m_detailLabel->height();
    m_detailLabel->setGeometry(left, labelTop, width() - kInnerMargin - left + 1,
                               m_detailLabel->height());
    return std::min(top, labelTop);
}

void FPVThumbnailItem::placePicture(int top)
{
    if (m_picture == nullptr || !m_pictureVisible) {
        return;
    }
    QSize size = m_thumbSize;
    if (m_pixmap) {
        size = m_pixmap->size();
    } else if (isPicture()) {
        m_picture->setPalette(QPalette(Qt::black));
        m_picture->setAutoFillBackground(true);
    } else {
        return;
    }
    const int left = kInnerLeft + (width() - kInnerMargin - kInnerLeft + 1 - size.width()) / 2;
    m_picture->setGeometry(QRect(QPoint(left, kInnerTop + (top - size.height()) / 2), size));
}

FPVThumbnailMetrics::Frame FPVThumbnailItem::frameKind()
{
    if (isPicture()) {
        return FPVThumbnailMetrics::Picture;
    }
    if (isParentEntry()) {
        return FPVThumbnailMetrics::Back;
    }
    if (!m_hasPictures) {
        const auto *folder = qobject_cast<const FPVItemFolder *>(m_item.data());
        m_hasPictures = folder != nullptr && folder->hasPictures();
    }
    return *m_hasPictures ? FPVThumbnailMetrics::PicturesFolder : FPVThumbnailMetrics::Folder;
}

bool FPVThumbnailItem::isCoveredBy(const QImage &frame) const
{
    const QSizeF size = frame.deviceIndependentSize();
    return !frame.hasAlphaChannel() && size.width() >= width() && size.height() >= height();
}

void FPVThumbnailItem::applyFocus()
{
    m_frame = frameKind();
    const bool wasFocused = std::exchange(m_isFocused, m_focusMark && hasFocus());
    if (m_isFocused && !wasFocused) {
        // Qt may still have to report the focus of the view. The cell must be reported after it.
        QMetaObject::invokeMethod(this, &FPVThumbnailItem::tellFocus, Qt::QueuedConnection);
    }
    // Nothing behind the frame is visible then.
    setAttribute(Qt::WA_OpaquePaintEvent, isCoveredBy(m_metrics->frame(m_frame, m_isFocused)));
    const QPalette &palette = m_metrics->palette(m_isFocused);
    if (m_nameLabel != nullptr && m_nameVisible) {
        m_nameLabel->setPalette(palette);
    }
    if (m_checkBox != nullptr && m_checkVisible) {
        m_checkBox->setPalette(palette);
    }
}

/// The view has the keyboard focus; screen readers are told that the cell has it.
void FPVThumbnailItem::tellFocus()
{
    if (m_isFocused) {
        QAccessibleEvent event(this, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void FPVThumbnailItem::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QImage &frame = m_metrics->frame(m_frame, m_isFocused);
    // If the clip has several rectangles, Qt paints an image with a thread pool. For a cell, waking the
    // threads takes longer than painting.
    for (const QRect &rect : event->region()) {
        painter.setClipRect(rect);
        painter.drawImage(0, 0, frame);
    }
    painter.end();
    QFrame::paintEvent(event);
}
