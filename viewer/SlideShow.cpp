// SPDX-License-Identifier: MIT
// The start of a show and what ends it.
#include "viewer/SlideShow.h"

#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "app/common/power.h"
#include "platform/Global.h"
#include "platform/QPEApplication.h"
#include "platform/screen/QDirectPainter.h"
#include "platform/session/QCopChannel.h"
#include "viewer/SlideMenu.h"
#include "widgets/AccessibleControl.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QMessageBox>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int kFirstDrawMs = 100;
/// At this charge or below a show ends.
constexpr int kBatteryPercent = 10;
constexpr int kScreenSaverOff = 0;
constexpr int kScreenSaverBack = 1;

} // namespace

// NOLINTNEXTLINE(readability-function-size): part of the interface
SlideShow::SlideShow(QWidget *parent, FPVItemList *source, bool autoMode, bool inOrder, int delay,
                     int loopCount, int startIndex)
    : QWidget(parent, Qt::Window)
    , m_sourceList(source)
    , m_delay(std::max(0, delay))
    , m_autoMode(autoMode)
    , m_cycle(*source, startIndex, autoMode ? loopCount : 0,
              autoMode && !inOrder ? std::rand : lumi::SlideCycle::Dice())
    , m_screen(this, QPEApplication::desktopSize())
    , m_systemChannel(new QCopChannel("QPE/System", this))
{
    // Pictures are drawn for this size even if the screen changes.
    QPEApplication::holdDesktopSize();
    Global::hideInputMethod();
    lumi::setAccessibleRole(this, QAccessible::Window);
    setAccessibleName(msg(lumi::MsgSlideshow));
    setWindowModality(Qt::ApplicationModal);
    resize(m_screen.size());
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
    connect(m_systemChannel, &QCopChannel::received, this, &SlideShow::systemChannel);
    connectTimers();
    setScreenSaver(kScreenSaverOff);
    m_paused = true;
    decodeFirst();
}

SlideShow::~SlideShow()
{
    leaveDecoding();
    setScreenSaver(kScreenSaverBack);
    QPEApplication::releaseDesktopSize();
}

void SlideShow::connectTimers()
{
    m_slideTimer.setObjectName(QStringLiteral("slideTimer"));
    m_screenOutTimer.setObjectName(QStringLiteral("screenOutTimer"));
    m_redrawTimer.setObjectName(QStringLiteral("redrawTimer"));
    m_playBackTimer.setObjectName(QStringLiteral("playBackTimer"));
    for (QTimer *timer : {&m_slideTimer, &m_screenOutTimer, &m_redrawTimer, &m_playBackTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_slideTimer, &QTimer::timeout, this, &SlideShow::slot_timeout);
    connect(&m_screenOutTimer, &QTimer::timeout, this, &SlideShow::ScreenOut);
    connect(&m_redrawTimer, &QTimer::timeout, this, &SlideShow::ScreenOutRedraw);
    connect(&m_playBackTimer, &QTimer::timeout, this, &SlideShow::ScreenOutPlayBack);
}

/// Decodes in one piece, while the caller's wait dialog is open.
void SlideShow::decodeFirst()
{
    const QPointer<FPVItemImage> first(m_cycle.present());
    if (!first) {
        return;
    }
    first->setIncremental(false);
    startPicture(first);
    if (first) {
        first->setIncremental(true);
    }
}

int SlideShow::exec()
{
    if (m_cycle.isEmpty()) {
        end(ToBrowser);
    }
    if (m_ended || m_inLoop != nullptr) {
        return m_exitCode;
    }
    QPEApplication::showFullScreenNow(this);
    if (m_ended) {
        return m_exitCode; // events ran meanwhile
    }
    raise();
    activateWindow();
    update();
    if (!m_screen.hasPresent()) {
        m_paused = false;
        m_screenOutTimer.start(kFirstDrawMs);
    }
    QEventLoop loop;
    m_inLoop = &loop;
    loop.exec(QEventLoop::DialogExec);
    m_inLoop = nullptr;
    return m_exitCode;
}

void SlideShow::end(int code)
{
    if (m_ended) {
        return;
    }
    m_ended = true;
    m_exitCode = code;
    stopTimers();
    if (m_menu != nullptr) {
        m_menu->close();
    }
    if (m_box != nullptr) {
        m_box->done(QMessageBox::No);
    }
    hide();
    if (m_inLoop != nullptr) {
        m_inLoop->quit();
        m_inLoop = nullptr;
    }
}

void SlideShow::stopTimers()
{
    for (QTimer *timer : {&m_slideTimer, &m_screenOutTimer, &m_redrawTimer, &m_playBackTimer}) {
        timer->stop();
    }
}

void SlideShow::systemChannel(const QCString &message, const QByteArray & /*data*/)
{
    const bool isCovered = message == "appForeground(QString)";
    if (isCovered || (message == "batteryChanged()" && !batteryEnough(kBatteryPercent))) {
        end(ToBrowser);
    }
}

void SlideShow::closeEvent(QCloseEvent *event)
{
    event->accept();
    end(ToBrowser);
}

void SlideShow::paintEvent(QPaintEvent * /*event*/)
{
    // SlideScreen draws the pictures.
}
