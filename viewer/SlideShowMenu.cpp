// SPDX-License-Identifier: MIT
// What the user does: keys, menu and the deletion of a picture.
#include "app/common/labels.h"
#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "files/engine/folderEntries.h"
#include "platform/Machine.h"
#include "platform/QPEApplication.h"
#include "platform/keys/deviceKey.h"
#include "platform/touch/gestures.h"
#include "viewer/SlideMenu.h"
#include "viewer/SlideShow.h"
#include "widgets/messageBoxes.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>
#include <iterator>

using lumi::DecodeError;
using lumi::SlideMenu;

namespace {

/// From the closing of the menu to the redrawing of the picture.
constexpr int kRedrawMs = 1;
/// Longer names do not fit into a box.
constexpr int kNameLength = 40;

bool isHingeNormal()
{
    return Machine::instance().hinge() == 0;
}

} // namespace

void SlideShow::keyPressEvent(QKeyEvent *event)
{
    struct Row
    {
        int key;
        void (*act)(SlideShow *show);
    };

    // clang-format off
    static constexpr Row kRows[] = {
        {Qt::Key_Escape, [](SlideShow *show) { show->end(ToBrowser); }},
        {Qt::Key_Left, [](SlideShow *show) { show->userPrevious(); }},
        {Qt::Key_Right, [](SlideShow *show) { show->userNext(); }},
        {Qt::Key_Return, [](SlideShow *show) { show->userNext(); }},
        {Qt::Key_Up, [](SlideShow *show) { show->keyUpOrDown(true); }},
        {Qt::Key_Down, [](SlideShow *show) { show->keyUpOrDown(false); }},
        {Qt::Key_Delete, [](SlideShow *show) { show->deleteAndGoOn(); }},
    };
    // clang-format on
    if (m_drawing || m_ended) {
        return;
    }
    const int key = deviceKey(event) == DeviceKey::Stop ? int(Qt::Key_Escape) : event->key();
    const auto *row = std::find_if(std::begin(kRows), std::end(kRows), [key](const Row &r) {
        return r.key == key;
    });
    if (row != std::end(kRows)) {
        event->accept();
        row->act(this);
    } else {
        QWidget::keyReleaseEvent(event); // not the one for presses
    }
    if (m_failed) {
        ScreenOutRedraw();
    }
}

void SlideShow::keyReleaseEvent(QKeyEvent *event)
{
    if (m_drawing || m_ended) {
        return;
    }
    switch (deviceKey(event)) {
    case DeviceKey::Menu:
        mousePressEvent(nullptr);
        break;
    case DeviceKey::Stop:
        event->accept();
        end(ToBrowser);
        break;
    default:
        QWidget::keyReleaseEvent(event);
        break;
    }
}

bool SlideShow::event(QEvent *event)
{
    if (event->type() != lumi::SwipeEvent::kType || m_autoMode) {
        return QWidget::event(event);
    }
    event->accept();
    if (m_drawing || m_ended) {
        return true;
    }
    if (static_cast<lumi::SwipeEvent *>(event)->isToNext()) {
        userNext();
    } else {
        userPrevious();
    }
    return true;
}

/// With the hinge turned, the two keys change places.
void SlideShow::keyUpOrDown(bool isUp)
{
    // Up and Down have no effect on other keyboards.
    if (!QPEApplication::isOwnKeyboard()) {
        return;
    }
    if (isUp == isHingeNormal()) {
        userNext();
    } else {
        userPrevious();
    }
}

void SlideShow::mousePressEvent(QMouseEvent *event)
{
    openMenu(event != nullptr ? event->globalPosition().toPoint() : QPoint());
}

void SlideShow::openMenu(QPoint position)
{
    if (isHeld()) {
        return;
    }
    interrupt();
    int entry = SlideMenu::Continue;
    {
        SlideMenu menu(this);
        const QScopedValueRollback<SlideMenu *> isOpen(m_menu, &menu);
        connect(&menu, &SlideMenu::stopped, this, [this] {
            end(ToBrowser);
        });
        entry = menu.exec(position);
    }
    actOn(entry);
}

void SlideShow::actOn(int entry)
{
    if (m_ended) {
        return;
    }
    switch (entry) {
    case SlideMenu::Details:
        end(ToDetails);
        break;
    case SlideMenu::FullView:
        end(ToFullView);
        break;
    case SlideMenu::Options:
        end(ToOptions);
        break;
    case SlideMenu::End:
        end(ToBrowser);
        break;
    case SlideMenu::Delete:
        deleteAndGoOn();
        break;
    default:
        resume();
        break;
    }
}

/// Nothing is drawn until resume().
void SlideShow::interrupt()
{
    if (m_playBackTimer.isActive()) {
        ScreenOutPlayBack();
    }
    m_paused = true;
    m_slideTimer.stop();
    m_screen.forgetSign();
}

void SlideShow::resume()
{
    if (m_ended) {
        return;
    }
    showFullScreen();
    raise();
    m_decodeTimer.start();
    m_redrawTimer.start(kRedrawMs);
    if (m_failed) {
        return;
    }
    // A picture that the user asked for is shown at once, any other after the delay.
    const bool isAwaited = !m_autoMode || m_cycle.isStepPending() || !m_screen.hasPresent();
    m_paused = !isAwaited && !m_decodeDone;
    if (!m_decodingItem || (isAwaited && isReady())) {
        m_slideTimer.start(kRedrawMs);
    } else if (!isAwaited) {
        m_slideTimer.start(m_delay);
    }
}

/// False if the picture was not deleted.
bool SlideShow::deletePicture()
{
    const QPointer<FPVItemImage> item(m_shownItem);
    if (!item) {
        return false;
    }
    const QString name = elideToChars(this, item->fileName(), kNameLength);
    const int answer = runBox(lumi::makeBox(this, QMessageBox::Warning, msg(lumi::MsgDelete),
                                            msg(lumi::MsgNameWillBeDeleted).arg(name),
                                            QMessageBox::Yes | QMessageBox::No));
    if (answer != QMessageBox::Yes || !item) {
        return false;
    }
    // On another card there may be a photo of this name.
    if (!m_sourceList->medium().isThere() || !lumi::removePhoto(item->path())) {
        runBox(lumi::makeBox(this, QMessageBox::Critical, msg(lumi::MsgDelete),
                             msg(lumi::MsgDeletionFailed)));
        return false;
    }
    dropPicture(item);
    if (m_cycle.isEmpty()) {
        end(ToBrowser);
    }
    return true;
}

void SlideShow::deleteAndGoOn()
{
    if (m_ended || isInterrupted()) {
        return;
    }
    interrupt();
    const bool isDeleted = deletePicture();
    if (m_ended) {
        return;
    }
    if (isDeleted) {
        m_cycle.awaitPresent();
        if (!m_decodingItem) {
            startPicture(m_cycle.present());
        }
    }
    resume();
}

void SlideShow::reportFailure()
{
    const bool isMemoryFull
        = m_decodingItem && m_decodingItem->errorCode() == DecodeError::OutOfMemory;
    if (!isMemoryFull) {
        m_shownItem = m_decodingItem;
    }
    const QString text = msg(isMemoryFull ? lumi::MsgMemoryFullCancelled : lumi::MsgDidNotOpen);
    runBox(lumi::makeBox(nullptr, QMessageBox::Critical, msg(lumi::MsgError), text));
    end(ToBrowser);
}

/// Its answer; No if the show ended meanwhile.
int SlideShow::runBox(std::unique_ptr<QMessageBox> box)
{
    const QScopedValueRollback<QMessageBox *> isOpen(m_box, box.get());
    const int answer = lumi::execBox(box.get());
    return m_ended ? int(QMessageBox::No) : answer;
}
