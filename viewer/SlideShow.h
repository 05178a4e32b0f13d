// SPDX-License-Identifier: MIT
// Plays the pictures of a folder over the whole screen, by itself or step by step. Pictures go
// straight into the screen memory; while one is shown the next one is being decoded in slices,
// so that in a show that runs by itself nobody waits for a decode shorter than the delay.
// A show runs in a nested event loop and ends with a code that says what is to come next.
// The next picture of an automatic show waits for two events, the end of the delay and the end
// of its decode, and whichever comes second draws it: `paused` tells the decode not to draw,
// until the delay is over.
// Owns: the play list (not its items) and up to three rasters.
#pragma once

#include "items/FPVItemList.h"
#include "platform/toolkit/QCString.h"
#include "viewer/SlideRaster.h"
#include "viewer/slideDrawing.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <optional>

class QCopChannel;
class QEventLoop;
class QMessageBox;

namespace lumi {
class SlideMenu;
} // namespace lumi

class SlideShow : public QWidget
{
    Q_OBJECT

public:
    enum ExitCode : int { ToBrowser = 0, ToDetails = 1, ToFullView = 2, ToOptions = 3 };

    /// Decodes the first picture, which takes its time.
    /// source: lent; pictures that are gone are removed from it. inOrder counts in an automatic
    /// show only. delay: milliseconds. loopCount: 0 for ever. startIndex: in source.
    SlideShow(QWidget *parent, FPVItemList *source, bool autoMode, bool inOrder, int delay,
              int loopCount, int startIndex);
    ~SlideShow() override;

    /// Runs the show to its end, once; gives exitCode(). Ends too when the show is deleted.
    int exec();

    /// A SlideShow::ExitCode.
    [[nodiscard]] int exitCode() const { return m_exitCode; }

    /// The picture on the screen at the end, or the one that could not be decoded; null if none
    /// was shown or it was deleted.
    [[nodiscard]] FPVItemImage *lastItem() const { return m_shownItem; }

    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
public Q_SLOTS:
    void slot_timeout();
    void decodeComplete();
    void ScreenOut();
    void ScreenOutRedraw();
    void ScreenOutPlayBack();
    void systemChannel(const QCString &message, const QByteArray &data);
    // NOLINTEND(readability-identifier-naming)

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void buildPlayList(int startIndex);
    void connectTimers();
    void decodeFirst();
    void stopTimers();
    void end(int code);

    [[nodiscard]] FPVItemImage *currentPicture() const;
    [[nodiscard]] bool isInterrupted() const;
    [[nodiscard]] bool isStepPending() const;
    [[nodiscard]] bool isReady() const;
    [[nodiscard]] bool roundsAreOver() const;

    void startPicture(FPVItemImage *item);
    void leaveDecoding();
    void watchDecode();
    void noteFailure();
    void reportFailure();
    void skipMissing(FPVItemImage *item);
    bool dropPicture(FPVItemImage *item);
    void startNewRound();
    void countStepsFromPresent();
    void playPresent();

    void drawNext();
    void drawRaster();
    void playOn();
    void nextInList();
    void prevInList();
    void jump(lumi::SlideSign sign);
    void goTo(FPVItemImage *item, lumi::SlideSign sign);
    void userNext(bool show);
    void userPrevious(bool show);
    void step(lumi::SlideSign sign, bool show);
    void setOverlay(lumi::SlideSign sign, bool show);

    void interrupt();
    void resume();
    void openMenu(QPoint position);
    void actOn(int entry);
    [[nodiscard]] bool deletePicture();
    void deleteAndGoOn();
    int runBox(QMessageBox *made);
    void keyUp();
    void keyDown();

    FPVItemList m_playList;
    FPVItemList *m_sourceList;
    QTimer m_slideTimer{this};
    QTimer m_screenOutTimer{this};
    QTimer m_redrawTimer{this};
    QTimer m_playBackTimer{this};
    int m_pictureCount = 0;
    int m_delay;
    int m_loopCount;
    int m_loopsDone = 0;
    int m_exitCode = ToBrowser;
    bool m_autoMode;
    bool m_inOrder;
    QEventLoop *m_inLoop = nullptr; ///< that of exec(), null while none runs
    bool m_drawing = false;
    QSize m_screenSize;
    lumi::SlideRasterPtr m_nextRaster;
    lumi::SlideRasterPtr m_curRaster;
    lumi::SlideRasterPtr m_prevRaster;
    QPointer<FPVItemImage> m_decodingItem;
    QPointer<FPVItemImage> m_shownItem;
    int m_depth;
    bool m_paused = false;
    QElapsedTimer m_decodeTimer;
    QCopChannel *m_systemChannel;
    bool m_ended = false;
    bool m_decodeDone = false;
    int m_step = 0;
    std::optional<int> m_prevStep; ///< none: no step of the user is under way
    QPointer<FPVItemImage> m_startItem;
    QPointer<lumi::SlideMenu> m_menu;
    bool m_failed = false;
    lumi::SlideSign m_overlay = lumi::SlideSign::None;
    bool m_aheadInNewRound = false; ///< the picture decoded ahead was counted as a new round
    QPointer<QMessageBox> m_box;
};
