// SPDX-License-Identifier: MIT
// One cell on a page of the thumbnail view: a frame with a picture and, depending on the display
// mode, a name, a detail line and a check box. Frame, name and a black placeholder appear at once,
// thumbnail and check box when the chain of cells reaches the cell.
// It lives as long as its page. Its item may be deleted earlier.
// Owns: the thumbnail and its parts.
#pragma once

#include "items/FPVItemObject.h"
#include "views/FPVThumbnailMetrics.h"
#include "widgets/AccessibleControl.h"

#include <QFrame>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <optional>

class FPVThumbnailLabel;
class MyImageCheckBox;

class FPVThumbnailItem : public QFrame, public lumi::AccessibleControl
{
    Q_OBJECT

public:
    /// index: of the item in its list. metrics: lent by the view, outlives the cell.
    FPVThumbnailItem(QWidget *parent, FPVItemObject *item, const FPVThumbnailMetrics *metrics,
                     int index);
    ~FPVThumbnailItem() override;

    /// The thumbnail that fits w x h, null if there is none. A side that is not positive means the
    /// thumbnail loaded before, if any, else one that fits 80 x 60. Lent: the cell keeps it.
    QPixmap *loadThumbnail(int w, int h);
    /// These show or hide a part, and lay the cell out again if relayout is set. False if a picture
    /// has no thumbnail and stays a black placeholder.
    bool setPictureVisible(bool show, bool relayout);
    bool setNameVisible(bool show, bool relayout);
    bool setDetailVisible(bool show, bool relayout);
    /// Photos only. The box takes its place at once but appears with viewthumbnail().
    bool setCheckVisible(bool show, bool relayout);
    /// A black picture of this size in place of a photo's thumbnail. Loads nothing.
    void showPlaceholder(QSize size);
    /// Whether the cursor is here. It is drawn while the view has the keyboard focus.
    void setFocusMark(bool on, bool relayout);
    /// The thumbnail is loaded after this many milliseconds.
    void startChain(int ms);
    void stopChain();
    /// next: the following cell of the chain, or null. size: the box for the thumbnail.
    void setNext(FPVThumbnailItem *next, QSize size, bool wantCheck);
    void toggleItemCheck(bool on);
    void relayout();
    /// Before the cell is deleted: takes it off item, chain and timer, and blocks its signals.
    void leavePage();

    /// Null after the item was deleted or the cell has left its page.
    [[nodiscard]] FPVItemObject *item() const { return m_item; }

    [[nodiscard]] int index() const { return m_index; }

    [[nodiscard]] QAccessible::Role accessibleRole() const override
    {
        return QAccessible::ListItem;
    }

    void addAccessibleState(QAccessible::State *state) const override;
    void press() override;

Q_SIGNALS:
    /// A tap. A tap on a photo's name emits null first, which removes the cursor, so that the tap
    /// selects the photo and never opens it.
    void clicked(FPVThumbnailItem *cell);
    /// A tap on a folder that ended inside it.
    void decided(FPVThumbnailItem *cell);

public Q_SLOTS:
    void mousePressEvent(QMouseEvent *event) override;
    // NOLINTNEXTLINE(readability-identifier-naming): part of the interface
    void mousePressEvent_FileName(QMouseEvent *event);
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void checkBoxChanged(bool on);
    void viewthumbnail();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] bool isPicture() const { return m_item && m_item->isPicture(); }

    [[nodiscard]] bool isParentEntry() const;
    [[nodiscard]] FPVThumbnailLabel *makeTextLabel();
    void makePicture();
    void hideParts();
    void showParts();
    [[nodiscard]] int placeCheckBox(int top);
    [[nodiscard]] int placeName(int top);
    [[nodiscard]] int placeDetail(int top);
    void placePicture(int top);
    [[nodiscard]] FPVThumbnailMetrics::Frame frameKind();
    [[nodiscard]] bool isCoveredBy(const QImage &frame) const;
    void applyFocus();
    void tellFocus();

    QPointer<FPVItemObject> m_item;
    FPVThumbnailLabel *m_picture = nullptr;
    FPVThumbnailLabel *m_nameLabel = nullptr;
    FPVThumbnailLabel *m_detailLabel = nullptr;
    MyImageCheckBox *m_checkBox = nullptr;
    const FPVThumbnailMetrics *m_metrics;
    std::unique_ptr<QPixmap> m_pixmap;
    int m_index;
    QTimer m_chainTimer;
    QSize m_thumbSize{-1, -1};
    QPointer<FPVThumbnailItem> m_next;
    bool m_wantCheck = false;
    bool m_pictureVisible = false;
    bool m_nameVisible = false;
    bool m_detailVisible = false;
    bool m_checkVisible = false;
    bool m_focusMark = false;
    bool m_hadTurn = false;            ///< the chain was here: the check box is visible
    std::optional<bool> m_hasPictures; ///< asked once because it reads the folder
    FPVThumbnailMetrics::Frame m_frame = FPVThumbnailMetrics::Picture;
    bool m_isFocused = false;
};
