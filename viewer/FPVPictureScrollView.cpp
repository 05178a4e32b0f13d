// SPDX-License-Identifier: MIT
// The window of the viewer: its widgets, its two looks and its keys.
#include "viewer/FPVPictureScrollView.h"

#include "app/common/loadPixmap.h"
#include "items/FPVItemImage.h"
#include "platform/QPEApplication.h"
#include "platform/Resource.h"
#include "platform/keys/deviceKey.h"
#include "platform/screen/QDirectPainter.h"
#include "platform/screen/panel.h"
#include "platform/session/QCopChannel.h"
#include "platform/touch/gestures.h"
#include "platform/windows/PointerHider.h"
#include "viewer/PictureScrollView.h"
#include "viewer/zoomSteps.h"
#include "views/FPVThumbnailView.h"
#include "widgets/AccessibleControl.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QStyle>
#include <QToolButton>

namespace {

constexpr int kRowSpacing = 5;
constexpr int kIconSide = 32;
constexpr int kBarHeight = 20;
/// The window cannot be closed before exec() has started.
constexpr int kCloseMs = 5;
/// A window size that has not changed for this long is final.
constexpr int kRefitMs = 100;

} // namespace

FPVPictureScrollView::FPVPictureScrollView(QWidget *parent, FPVThumbnailView *view,
                                           FPVItemImage *item)
    : DialogBase(parent, "PictureScrollView")
    , m_view(view)
    , m_zoomPercent(lumi::kFullSize)
    , m_decodedPercent(lumi::kFullSize)
{
    dropMessageBox();
    buildWidgets();
    setDecodingLook(true);
    connect(&m_regionTimer, &QTimer::timeout, this, &FPVPictureScrollView::checkRegion);
    m_refitTimer.setSingleShot(true);
    m_refitTimer.setInterval(kRefitMs);
    connect(&m_refitTimer, &QTimer::timeout, this, &FPVPictureScrollView::refit);
    QPEApplication::showMaximizedNow(this);
    m_closeButton->setVisible(frameGeometry() == geometry());
    m_scrollView->setFocus();
    new lumi::PointerHider(m_scrollView->viewport());
    m_systemChannel = new QCopChannel("QPE/System");
    connect(m_systemChannel, &QCopChannel::received, this, &FPVPictureScrollView::systemChannel);
    m_depth = QDirectPainter(m_scrollView->viewport()).depth();
    if (!setPicture(item, true)) {
        tellFailure();
        QTimer::singleShot(kCloseMs, this, &FPVPictureScrollView::memFull);
    }
}

FPVPictureScrollView::~FPVPictureScrollView()
{
    delete m_systemChannel;
    leavePicture();
}

/// DialogBase is a message box. This window uses neither its layout nor its parts, and screen readers
/// must not announce it as an alert.
void FPVPictureScrollView::dropMessageBox()
{
    delete layout();
    const auto parts = findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *part : parts) {
        part->hide();
    }
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    setWindowFlag(Qt::MSWindowsFixedSizeDialogHint, false);
    setModal(true);
    lumi::setAccessibleRole(this, QAccessible::Dialog);
}

QToolButton *FPVPictureScrollView::makeButton(const char *icon, const char *name,
                                              void (FPVPictureScrollView::*slot)())
{
    auto *button = new QToolButton(this);
    button->setIcon(lumi::loadPixmap(icon));
    button->setText(QLatin1String(name)); // if the picture is missing
    button->setAccessibleName(QLatin1String(name));
    button->setIconSize(QSize(kIconSide, kIconSide));
    button->setFixedSize(lumi::kFingerSize, lumi::kFingerSize);
    connect(button, &QToolButton::clicked, this, slot);
    return button;
}

/// They are made in the order of the Tab key.
void FPVPictureScrollView::buildWidgets()
{
    m_zoomInButton = makeButton("spread", "Larger", &FPVPictureScrollView::zoomIn);
    m_zoomOutButton = makeButton("scaledown", "Smaller", &FPVPictureScrollView::zoomOut);
    m_fitButton = makeButton("fit", "Whole photo", &FPVPictureScrollView::fix);
    m_percentLabel = new QLabel(this);
    m_progressBar = new QProgressBar(this);
    m_progressBar->setTextVisible(false);
    m_progressBar->setFixedHeight(kBarHeight);
    m_sizeLabel = new QLabel(this);
    m_progressSpacer = new QWidget(this);
    m_prevButton = makeButton("i_left", "Previous photo", &FPVPictureScrollView::btn_prev_cliced);
    m_nextButton = makeButton("i_right", "Next photo", &FPVPictureScrollView::btn_next_cliced);
    m_closeButton = new QToolButton(this);
    m_closeButton->setIcon(style()->standardIcon(QStyle::SP_DialogCloseButton));
    m_closeButton->setToolTip(QStringLiteral("Close"));
    m_closeButton->setAccessibleName(QStringLiteral("Close"));
    m_closeButton->setFixedSize(lumi::kFingerSize, lumi::kFingerSize);
    m_closeButton->hide();
    connect(m_closeButton, &QToolButton::clicked, this, &QWidget::hide);
    m_progressSpacer->setFixedWidth(m_prevButton->width() + kRowSpacing + m_nextButton->width());
    m_scrollView = new PictureScrollView(this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(buildButtonRow());
    column->addWidget(m_scrollView, 1);
}

QLayout *FPVPictureScrollView::buildButtonRow()
{
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kRowSpacing);
    for (QWidget *widget :
         {static_cast<QWidget *>(m_zoomInButton), static_cast<QWidget *>(m_zoomOutButton),
          static_cast<QWidget *>(m_fitButton)}) {
        row->addWidget(widget);
    }
    row->addWidget(m_percentLabel);
    // While the bar is visible it takes all free width.
    row->addStretch();
    row->addWidget(m_progressBar, 1);
    row->addWidget(m_sizeLabel);
    row->addWidget(m_progressSpacer);
    row->addWidget(m_prevButton);
    row->addWidget(m_nextButton);
    row->addWidget(m_closeButton);
    return row;
}

bool FPVPictureScrollView::isDecodingLook() const
{
    return !m_progressBar->isHidden();
}

void FPVPictureScrollView::setDecodingLook(bool on)
{
    setZoomButtonsEnabled(false);
    const QWidgetList decoding{m_progressBar, m_progressSpacer};
    const QWidgetList viewing{m_percentLabel, m_prevButton, m_nextButton};
    // Both looks at once, even for a moment, would widen a narrow window.
    for (QWidget *widget : on ? viewing : decoding) {
        widget->hide();
    }
    for (QWidget *widget : on ? decoding : viewing) {
        widget->show();
    }
    // A button that is hidden or disabled passes the focus to another widget.
    m_scrollView->setFocus();
}

void FPVPictureScrollView::setZoomButtonsEnabled(bool on)
{
    m_zoomInButton->setEnabled(on && m_zoomPercent != lumi::kGreatestZoom);
    m_zoomOutButton->setEnabled(on && m_zoomPercent != lumi::kLeastZoom);
    m_fitButton->setEnabled(on);
}

void FPVPictureScrollView::showSize(QSize size)
{
    m_sizeLabel->setText(QString::asprintf("%d*%d ", size.width(), size.height()));
}

void FPVPictureScrollView::updateLabels()
{
    m_percentLabel->setText(QString::asprintf("%d%%", m_zoomPercent));
    if (m_item) {
        showSize(m_item->imageSize());
    }
}

void FPVPictureScrollView::keyPressEvent(QKeyEvent *event)
{
    switch (deviceKey(event)) {
    case DeviceKey::ZoomIn:
        zoomIn();
        return;
    case DeviceKey::ZoomOut:
        zoomOut();
        return;
    case DeviceKey::Fit:
        fix();
        return;
    default:
        break;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
        m_scrollView->scrollKey(event->key());
        break;
    case Qt::Key_Home:
        btn_prev_cliced();
        break;
    case Qt::Key_End:
        btn_next_cliced();
        break;
    case Qt::Key_Return:
        break;
    default:
        QDialog::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call): see below
        break;
    }
}

// QMessageBox would restore its own size and buttons and handle keys with them. These functions
// therefore call QDialog directly.
// NOLINTBEGIN(bugprone-parent-virtual-call)
bool FPVPictureScrollView::event(QEvent *event)
{
    if (event->type() == lumi::SwipeEvent::kType && m_isFitted) {
        event->accept();
        swipe(static_cast<lumi::SwipeEvent *>(event)->isToNext());
        return true;
    }
    if (event->type() == lumi::PinchEvent::kType) {
        const auto *pinch = static_cast<lumi::PinchEvent *>(event);
        event->accept();
        zoomAround(m_scrollView->viewport()->mapFromGlobal(pinch->globalCentre()),
                   pinch->isApart());
        return true;
    }
    return QDialog::event(event);
}

void FPVPictureScrollView::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (m_item) {
        m_refitTimer.start();
    }
}

void FPVPictureScrollView::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
}

void FPVPictureScrollView::closeEvent(QCloseEvent *event)
{
    QDialog::closeEvent(event);
}

void FPVPictureScrollView::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
}

// NOLINTEND(bugprone-parent-virtual-call)

void FPVPictureScrollView::hideEvent(QHideEvent *event)
{
    DialogBase::hideEvent(event);
    if (!event->spontaneous()) {
        m_regionTimer.stop();
        m_refitTimer.stop();
    }
}
