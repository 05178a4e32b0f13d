// SPDX-License-Identifier: MIT
// Plays the pictures of a folder over the whole screen, automatically or step by step. SlideCycle
// says which picture comes next, SlideScreen draws it into the screen memory. While a picture is
// shown the next one is decoded in slices, so that a decode shorter than the delay takes no time.
// A show runs in a nested event loop and ends with a code that tells the caller what to do next.
// In an automatic show the next picture waits for two events: the end of the delay and the end of
// its decode. The later one draws it. While m_paused is set the end of the decode does not draw.
#pragma once

#include "platform/toolkit/QCString.h"
#include "viewer/SlideCycle.h"
#include "viewer/SlideScreen.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

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

    /// Decodes the first picture before it returns.
    /// source: lent; pictures whose files are missing are removed from it. inOrder has an effect in
    /// an automatic show only. delay: milliseconds. loopCount: 0 for no end. startIndex: in source.
    SlideShow(QWidget *parent, FPVItemList *source, bool autoMode, bool inOrder, int delay,
              int loopCount, int startIndex);
    ~SlideShow() override;

    /// Runs the show to its end, once. Returns exitCode().
    int exec();

    /// A SlideShow::ExitCode.
    [[nodiscard]] int exitCode() const { return m_exitCode; }

    /// The last picture on the screen, or the one that could not be decoded. Null if none was shown
    /// or if it was deleted.
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
    /// A swipe shows the next or previous picture of a show that is not automatic.
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void connectTimers();
    void decodeFirst();
    void stopTimers();
    void end(int code);

    [[nodiscard]] bool isInterrupted() const;
    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool isDelayRunning() const;
    [[nodiscard]] bool isReady() const;

    void startPicture(FPVItemImage *item);
    void leaveDecoding();
    void watchDecode();
    void noteFailure();
    void reportFailure();
    void skipMissing(FPVItemImage *item);
    void dropPicture(FPVItemImage *item);
    void playPresent();
    void playOn();

    void userNext();
    void userPrevious();
    void step(lumi::SlideSign sign);
    void goTo(FPVItemImage *item, lumi::SlideSign sign);

    void interrupt();
    void resume();
    void openMenu(QPoint position);
    void actOn(int entry);
    [[nodiscard]] bool deletePicture();
    void deleteAndGoOn();
    int runBox(std::unique_ptr<QMessageBox> box);
    void keyUpOrDown(bool isUp);

    FPVItemList *m_sourceList;
    QTimer m_slideTimer{this};
    QTimer m_screenOutTimer{this};
    QTimer m_redrawTimer{this};
    QTimer m_playBackTimer{this};
    int m_delay;
    int m_exitCode = ToBrowser;
    bool m_autoMode;
    QEventLoop *m_inLoop = nullptr; ///< of exec(); null while it does not run
    lumi::SlideCycle m_cycle;
    lumi::SlideScreen m_screen;
    QPointer<FPVItemImage> m_decodingItem;
    QPointer<FPVItemImage> m_shownItem;
    bool m_drawing = false; ///< keys are ignored
    bool m_paused = false;
    QElapsedTimer m_decodeTimer;
    QCopChannel *m_systemChannel;
    bool m_ended = false;
    bool m_decodeDone = false;
    lumi::SlideMenu *m_menu = nullptr; ///< while it is open
    bool m_failed = false;
    QMessageBox *m_box = nullptr; ///< while it is open
};
