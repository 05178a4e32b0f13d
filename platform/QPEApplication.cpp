// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"

#include "platform/Machine.h"
#include "platform/MachineProfile.h"
#include "platform/Resource.h"
#include "platform/cards/DesktopCards.h"
#include "platform/cards/MountWatcher.h"
#include "platform/keys/keyTranslation.h"
#include "platform/power/PowerWatcher.h"
#include "platform/screen/PanelStyle.h"
#include "platform/screen/panel.h"
#include "platform/session/ForegroundWatcher.h"
#include "platform/session/NoticeAgent.h"
#include "platform/session/QCopHub.h"
#include "platform/session/ScreenSaverAgent.h"
#include "platform/session/windowSystem.h"
#include "platform/touch/TouchJudge.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLayout>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace {

/// Wider screens are desktops: there the window stays as big as the handheld's panel.
constexpr int kWidestPanel = 800;
/// The longest time that a window manager needs until the size of a new window is final.
constexpr int kSettleMs = 500;
/// A size that has not changed for this long is final.
constexpr int kSteadyMs = 30;

int heldCount = 0;
QSize heldSize;

bool isExposed(const QWidget *widget)
{
    const QWindow *window = widget->window()->windowHandle();
    return window != nullptr && window->isExposed();
}

/// Waits for any event except user input, at most until `timer` has run for `ms`.
void waitForEvent(const QElapsedTimer &timer, int ms)
{
    const qint64 left = ms - timer.elapsed();
    if (left <= 0) {
        return;
    }
    QTimer wake;
    wake.setSingleShot(true);
    wake.start(static_cast<int>(left));
    QEventLoop().processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

/// Prepares a window for being shown maximized or full screen.
void fitInto(QWidget *widget, const QRect &room)
{
    if (!lumi::isWayland()) {
        // Without a window manager the window would not get this size.
        widget->setGeometry(room);
        return;
    }
    // A compositor disconnects a client whose window is larger than allowed, for instance beside a
    // panel of the compositor. So the lower edge of a form may be cut off.
    if (widget->layout() != nullptr) {
        widget->layout()->setSizeConstraint(QLayout::SetNoConstraint);
    }
    widget->setMinimumSize(0, 0);
}

void maximize(QWidget *widget)
{
    fitInto(widget, widget->screen()->availableGeometry());
    widget->showMaximized();
}

/// Returns when the window is on the screen and its size no longer changes.
void settle(QWidget *widget)
{
    const QPointer<QWidget> alive(widget);
    QElapsedTimer total;
    QElapsedTimer steady;
    total.start();
    steady.start();
    QSize size = widget->size();
    while (alive && widget->isVisible() && total.elapsed() < kSettleMs
           && (!isExposed(widget) || steady.elapsed() < kSteadyMs)) {
        waitForEvent(steady, isExposed(widget) ? kSteadyMs : kSettleMs);
        if (alive && widget->size() != size) {
            size = widget->size();
            steady.restart();
        }
    }
    if (alive && widget->layout() != nullptr) {
        widget->layout()->activate();
    }
}

} // namespace

struct QPEApplication::Agents
{
    lumi::DesktopCards desktopCards; // makes the links that MountWatcher watches
    lumi::MountWatcher mounts;
    lumi::PowerWatcher power;
    lumi::ScreenSaverAgent screenSaver;
    lumi::ForegroundWatcher foreground;
    lumi::NoticeAgent notices;
};

QPEApplication::QPEApplication(int &argc, char **argv, Type /*type*/)
    : QApplication(argc, argv)
{
    setAttribute(Qt::AA_DontUseNativeDialogs);
    setAttribute(Qt::AA_DontUseNativeMenuBar);
    setDesktopFileName(QStringLiteral("lumivault"));
    setStyle(new lumi::PanelStyle);
    new lumi::TouchJudge(this);
    lumi::MachineProfile::fixNamedFile();
    // Started later, because they are not needed until the first window is being shown.
    QMetaObject::invokeMethod(this, &QPEApplication::startAgents, Qt::QueuedConnection);
}

QPEApplication::~QPEApplication()
{
    m_agents.reset();
    delete lumi::QCopHub::existing();
}

void QPEApplication::startAgents()
{
    m_agents = std::make_unique<Agents>();
}

void QPEApplication::showMainWidget(QWidget *widget, bool noMaximize)
{
    m_mainWidget = widget;
    widget->setWindowIcon(Resource::loadPixmap(QStringLiteral("lumivault/lumivault")));
    widget->resize(lumi::kPanelSize);
    if (noMaximize || widget->screen()->availableSize().width() > kWidestPanel) {
        widget->show();
    } else {
        maximize(widget);
    }
}

int QPEApplication::keyDevice() const
{
    return Machine::instance().keyDevice();
}

bool QPEApplication::isOwnKeyboard()
{
    constexpr int kOwnKeyboard = 1;
    const auto *app = qobject_cast<QPEApplication *>(QCoreApplication::instance());
    return app != nullptr && app->keyDevice() == kOwnKeyboard;
}

bool QPEApplication::notify(QObject *receiver, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (isKey && receiver->isWidgetType()) {
        return deliverKey(static_cast<QWidget *>(receiver), static_cast<QKeyEvent *>(event));
    }
    return QApplication::notify(receiver, event);
}

bool QPEApplication::deliverKey(QWidget *receiver, QKeyEvent *event)
{
    const int key = lumi::translatedKey(receiver, event);
    if (key != 0) {
        return deliverDeviceKey(receiver, event, key);
    }
    const QPointer<QWidget> alive(receiver);
    const bool done = QApplication::notify(receiver, event);
    const bool isUnused = event->type() == QEvent::KeyPress && !event->isAccepted();
    if (alive && isUnused && event->key() == Qt::Key_Yes) {
        acceptMainWidget(receiver);
    }
    return done;
}

bool QPEApplication::deliverDeviceKey(QWidget *receiver, QKeyEvent *event, int key)
{
    if (event->type() == QEvent::KeyPress && lumi::activateShortcut(receiver, key)) {
        event->accept();
        return true;
    }
    QKeyEvent translated(event->type(), key, Qt::NoModifier, QString(), event->isAutoRepeat());
    const bool done = QApplication::notify(receiver, &translated);
    event->setAccepted(translated.isAccepted());
    return done;
}

void QPEApplication::acceptMainWidget(const QWidget *receiver)
{
    const bool hasSlot = m_mainWidget != nullptr && m_mainWidget->window() == receiver->window()
        && m_mainWidget->metaObject()->indexOfSlot("accept()") >= 0;
    if (hasSlot) {
        QMetaObject::invokeMethod(m_mainWidget, "accept");
    }
}

void QPEApplication::waitPainted(QWidget *widget, int ms)
{
    const QPointer<QWidget> alive(widget);
    QElapsedTimer timer;
    timer.start();
    while (alive && widget->isVisible() && !isExposed(widget) && timer.elapsed() < ms) {
        waitForEvent(timer, ms);
    }
    if (alive && widget->isVisible()) {
        widget->window()->repaint();
    }
}

void QPEApplication::showMaximizedNow(QWidget *widget)
{
    maximize(widget);
    settle(widget);
}

void QPEApplication::showFullScreenNow(QWidget *widget)
{
    fitInto(widget, widget->screen()->geometry());
    widget->showFullScreen();
    settle(widget);
}

QSize QPEApplication::desktopSize()
{
    if (heldCount > 0) {
        return heldSize;
    }
    const auto *app = qobject_cast<QPEApplication *>(QCoreApplication::instance());
    const QWidget *window = app != nullptr ? app->m_mainWidget.data() : nullptr;
    const QScreen *screen = window != nullptr ? window->screen() : QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->size() : lumi::kPanelSize;
}

void QPEApplication::holdDesktopSize()
{
    heldSize = desktopSize();
    ++heldCount;
}

void QPEApplication::releaseDesktopSize()
{
    Q_ASSERT(heldCount > 0);
    --heldCount;
}
