// SPDX-License-Identifier: MIT
#include "views/FPVThumbnailItem.h"

#include "app/common/messages.h"
#include "items/FPVItemImage.h"
#include "views/FPVThumbnailLabel.h"
#include "widgets/MyImageCheckBox.h"

#include <QMouseEvent>

namespace {

/// From one thumbnail to the next, so that the event loop runs in between.
constexpr int kChainMs = 10;
/// The box of a thumbnail if no size was given.
constexpr QSize kDefaultThumbnail(80, 60);
/// Size of a text label before the layout, which keeps the height.
constexpr QSize kTextLabel(100, 30);

} // namespace

FPVThumbnailItem::FPVThumbnailItem(QWidget *parent, FPVItemObject *item,
                                   const FPVThumbnailMetrics *metrics, int index)
    : QFrame(parent)
    , m_item(item)
    , m_metrics(metrics)
    , m_index(index)
{
    if (auto *image = qobject_cast<FPVItemImage *>(item)) {
        image->setThumbnailKind(metrics->kind);
    }
    setAttribute(Qt::WA_NoSystemBackground);
    setAccessibleName(isPicture() ? item->baseName() : item->fileName());
    setAccessibleDescription(isPicture() ? QStringLiteral("Photo") : QStringLiteral("Folder"));
    m_chainTimer.setSingleShot(true);
    connect(&m_chainTimer, &QTimer::timeout, this, &FPVThumbnailItem::viewthumbnail);
}

FPVThumbnailItem::~FPVThumbnailItem()
{
    leavePage();
}

QPixmap *FPVThumbnailItem::loadThumbnail(int w, int h)
{
    QSize size(w, h);
    if (w <= 0 || h <= 0) {
        if (m_pixmap) {
            return m_pixmap.get();
        }
        size = kDefaultThumbnail;
    }
    m_pixmap.reset(m_item ? m_item->thumbnail(size.width(), size.height()) : nullptr);
    if (m_pixmap && m_picture != nullptr) {
        m_picture->setPixmap(*m_pixmap);
    }
    return m_pixmap.get();
}

bool FPVThumbnailItem::setPictureVisible(bool show, bool relayout)
{
    if (show && loadThumbnail(-1, -1) == nullptr) {
        if (isPicture() && m_picture == nullptr) {
            makePicture();
            m_pictureVisible = true;
        }
        return false;
    }
    if (show) {
        makePicture();
        if (m_picture->pixmap().cacheKey() != m_pixmap->cacheKey()) {
            m_picture->setPixmap(*m_pixmap);
        }
    }
    m_pictureVisible = show;
    if (relayout) {
        this->relayout();
    }
    return true;
}

bool FPVThumbnailItem::setNameVisible(bool show, bool relayout)
{
    if (show && m_nameLabel == nullptr) {
        m_nameLabel = makeTextLabel();
        connect(m_nameLabel, &FPVThumbnailLabel::mousePress, this,
                &FPVThumbnailItem::mousePressEvent_FileName);
    }
    m_nameVisible = show;
    if (relayout) {
        this->relayout();
    }
    return true;
}

bool FPVThumbnailItem::setDetailVisible(bool show, bool relayout)
{
    if (show && m_detailLabel == nullptr) {
        m_detailLabel = makeTextLabel();
        connect(m_detailLabel, &FPVThumbnailLabel::mousePress, this,
                &FPVThumbnailItem::mousePressEvent);
    }
    m_detailVisible = show;
    if (relayout) {
        this->relayout();
    }
    return true;
}

bool FPVThumbnailItem::setCheckVisible(bool show, bool relayout)
{
    m_checkVisible = show;
    // An existing box is kept: the pen may be on it.
    if (show && m_checkBox == nullptr && isPicture()) {
        m_checkBox = new MyImageCheckBox(m_metrics->checkOn, m_metrics->checkOff, this);
        m_checkBox->hide();
        m_checkBox->setAccessibleName(QStringLiteral("Mark ") + accessibleName());
        connect(m_checkBox, &MyImageCheckBox::toggled, this, &FPVThumbnailItem::checkBoxChanged);
    }
    if (relayout) {
        this->relayout();
    }
    return true;
}

void FPVThumbnailItem::showPlaceholder(QSize size)
{
    if (!isPicture()) {
        return;
    }
    m_thumbSize = size;
    makePicture();
    m_pictureVisible = true;
}

void FPVThumbnailItem::setFocusMark(bool on, bool relayout)
{
    m_focusMark = on;
    if (relayout) {
        this->relayout();
    }
}

void FPVThumbnailItem::startChain(int ms)
{
    m_chainTimer.start(ms);
}

void FPVThumbnailItem::stopChain()
{
    m_chainTimer.stop();
}

void FPVThumbnailItem::setNext(FPVThumbnailItem *next, QSize size, bool wantCheck)
{
    m_next = next;
    m_thumbSize = size;
    m_wantCheck = wantCheck;
}

void FPVThumbnailItem::toggleItemCheck(bool on)
{
    if (m_item) {
        m_item->setChecked(on);
    }
    relayout();
}

void FPVThumbnailItem::leavePage()
{
    m_chainTimer.stop();
    if (m_item && m_item->thumbnailItem() == this) {
        m_item->setThumbnailItem(nullptr);
    }
    m_item = nullptr;
    m_next = nullptr;
    // disconnect() would also cut the connection by which Qt forgets a deleted cell for screen readers.
    blockSignals(true);
    // If the focus proxy has the keyboard focus, deleting this widget would clear the focus.
    setFocusProxy(nullptr);
}

void FPVThumbnailItem::mousePressEvent(QMouseEvent *event)
{
    QFrame::mousePressEvent(event);
    event->accept();
    if (m_item) {
        Q_EMIT clicked(this);
    }
}

// NOLINTNEXTLINE(readability-identifier-naming): part of the interface
void FPVThumbnailItem::mousePressEvent_FileName(QMouseEvent *event)
{
    QFrame::mousePressEvent(event);
    event->accept();
    if (!m_item) {
        return;
    }
    if (m_item->isFolder()) {
        Q_EMIT clicked(this);
    } else if (m_checkBox != nullptr) {
        m_checkBox->setChecked(!m_item->isChecked());
        Q_EMIT clicked(nullptr);
        Q_EMIT clicked(this);
    }
}

void FPVThumbnailItem::mouseReleaseEvent(QMouseEvent *event)
{
    QFrame::mouseReleaseEvent(event);
    event->accept();
    const QPoint at = event->position().toPoint();
    const bool isInside = at.x() > 0 && at.y() > 0 && at.x() < width() && at.y() < height();
    if (m_item && m_item->isFolder() && isInside) {
        Q_EMIT decided(this);
    }
}

void FPVThumbnailItem::mouseDoubleClickEvent(QMouseEvent *event)
{
    // The base class handles it as a press.
    QFrame::mouseDoubleClickEvent(event);
    event->accept();
}

void FPVThumbnailItem::mouseMoveEvent(QMouseEvent *event)
{
    QFrame::mouseMoveEvent(event);
    event->accept();
}

void FPVThumbnailItem::checkBoxChanged(bool on)
{
    if (m_item) {
        m_item->setChecked(on);
    }
    lumi::tellCheckChanged(this);
}

void FPVThumbnailItem::addAccessibleState(QAccessible::State *state) const
{
    state->focusable = true;
    state->focused = m_isFocused;
    state->selectable = true;
    state->selected = m_focusMark;
    state->checkable = m_checkBox != nullptr && m_checkVisible;
    state->checked = state->checkable && m_item && m_item->isChecked();
}

void FPVThumbnailItem::press()
{
    const QPointer<FPVThumbnailItem> alive(this);
    if (m_item) {
        Q_EMIT clicked(this);
    }
    if (alive && m_item && m_item->isFolder()) {
        Q_EMIT decided(this);
    }
}

void FPVThumbnailItem::viewthumbnail()
{
    m_hadTurn = true;
    loadThumbnail(m_thumbSize.width(), m_thumbSize.height());
    setPictureVisible(true, false);
    setCheckVisible(m_wantCheck, false);
    relayout();
    if (m_next) {
        m_next->startChain(kChainMs);
    }
}

bool FPVThumbnailItem::isParentEntry() const
{
    return m_item && m_item->fileName() == QLatin1String("..");
}

FPVThumbnailLabel *FPVThumbnailItem::makeTextLabel()
{
    auto *label = new FPVThumbnailLabel(this);
    label->resize(kTextLabel);
    label->setAutoFillBackground(true);
    if (m_item) {
        label->setText(isParentEntry() ? msg(lumi::MsgParentFolder) : m_item->baseName());
    }
    return label;
}

void FPVThumbnailItem::makePicture()
{
    if (m_picture != nullptr) {
        return;
    }
    m_picture = new FPVThumbnailLabel(this);
    m_picture->lower();
    connect(m_picture, &FPVThumbnailLabel::mousePress, this, &FPVThumbnailItem::mousePressEvent);
    connect(m_picture, &FPVThumbnailLabel::mouseRelease, this,
            &FPVThumbnailItem::mouseReleaseEvent);
}
