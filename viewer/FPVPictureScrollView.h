// SPDX-License-Identifier: MIT
// The modal screen that shows one photo, with zoom, panning, next and previous. A photo is first
// decoded at the scale of the screen, which is fast. It is decoded at full size when the user
// zooms in. During a decode the window has the decoding look: a progress bar replaces the buttons.
// Otherwise it has the viewing look.
// Only the present picture has a raster. One timer ends the decoding look and then repaints, once a
// second, what another window may have covered.
// Owns: its widgets and its channel. Items and view belong to the browser.
#pragma once

#include "platform/toolkit/QCString.h"
#include "widgets/DialogBase.h"

#include <QPoint>
#include <QPointer>
#include <QSize>
#include <QTimer>

class FPVItemImage;
class FPVItemObject;
class FPVThumbnailView;
class PictureScrollView;
class QCopChannel;
class QLabel;
class QLayout;
class QProgressBar;
class QToolButton;

class FPVPictureScrollView : public DialogBase
{
    Q_OBJECT

public:
    /// Shows the window and runs the event loop, without user input, until it has its size.
    /// view: gives the next and previous picture; may be null. If the picture cannot be opened, the
    /// user is told here and exec() returns by itself.
    FPVPictureScrollView(QWidget *parent, FPVThumbnailView *view, FPVItemImage *item);
    ~FPVPictureScrollView() override;

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void memFull();
    void zoomIn();
    void zoomOut();
    /// Fits the picture to the screen.
    void fix();
    void checkRegion();
    void updatePixmap();
    void updateProgress();
    void systemChannel(const QCString &message, const QByteArray &data);
    void btn_prev_cliced(); // sic
    void btn_next_cliced(); // sic
    // NOLINTEND(readability-identifier-naming)

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void dropMessageBox();
    [[nodiscard]] QToolButton *makeButton(const char *icon, const char *name,
                                          void (FPVPictureScrollView::*slot)());
    void buildWidgets();
    [[nodiscard]] QLayout *buildButtonRow();
    [[nodiscard]] bool isDecodingLook() const;
    void setDecodingLook(bool on);
    void setZoomButtonsEnabled(bool on);
    void showSize(QSize size);
    void updateLabels();

    [[nodiscard]] bool setPicture(FPVItemImage *item, bool isFirst);
    void leavePicture();
    void forgetRaster();
    void decodeFullSize();
    void startProgress();
    void finishStart();
    [[nodiscard]] bool setFitPercent();
    [[nodiscard]] int drawnPercent() const;
    void redrawPicture();
    void showOther(FPVItemObject *object);
    void tellFailure();
    void failAndClose();
    void refit();
    void swipe(bool isToNext);
    void zoomAround(QPoint centre, bool isIn);
    [[nodiscard]] QSize drawnMargin() const;

    QToolButton *m_zoomInButton = nullptr;
    QToolButton *m_zoomOutButton = nullptr;
    QToolButton *m_fitButton = nullptr;
    QToolButton *m_prevButton = nullptr;
    QToolButton *m_nextButton = nullptr;
    QToolButton *m_closeButton = nullptr; ///< visible if the window has no title bar
    PictureScrollView *m_scrollView = nullptr;
    QPointer<FPVItemImage> m_item;
    FPVThumbnailView *m_view;
    QLabel *m_sizeLabel = nullptr;
    QLabel *m_percentLabel = nullptr;
    QProgressBar *m_progressBar = nullptr;
    QWidget *m_progressSpacer = nullptr;
    QTimer m_regionTimer{this};
    QTimer m_refitTimer{this}; ///< runs after the window was resized
    QCopChannel *m_systemChannel = nullptr;
    QSize m_rasterSize{-1, -1};
    int m_depth = 0;
    QPoint m_scrollOrigin;
    int m_zoomPercent;
    bool m_firstDraw = false; ///< a decode is being started
    int m_progressTotal = 0;
    int m_progress = 0;
    QSize m_photoSize{-1, -1};
    int m_decodedPercent;
    bool m_failureTold = false;
    bool m_isFitted = true; ///< the user has not zoomed since the picture was fitted
};
