// SPDX-License-Identifier: MIT
#include "files/FormFile.h"

#include "app/common/FormId.h"
#include "app/common/labels.h"
#include "app/common/loadPixmap.h"
#include "app/common/messages.h"
#include "files/fileKeys.h"
#include "items/FPVItemList.h"
#include "platform/Resource.h"
#include "platform/keys/deviceKey.h"
#include "platform/screen/panel.h"
#include "platform/toolkit/BackgroundWidget.h"
#include "platform/toolkit/QAccel.h"
#include "views/FPVThumbnailView.h"
#include "views/folderRoots.h"
#include "views/pageArithmetic.h"
#include "widgets/LeftSide.h"
#include "widgets/MyLeftWidget.h"

#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr int kPictureMargin = 10;
constexpr int kPictureSpacing = 20;
constexpr int kUpIconSide = 28;

void setDarkGray(QWidget *widget)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, Qt::darkGray);
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

QString statusText(const FPVItemObject &item)
{
    const QString name = item.fileName();
    if (item.isPicture()) {
        return QFileInfo(name).baseName();
    }
    return name == QLatin1String("..") ? msg(lumi::MsgParentFolder) : name;
}

} // namespace

FormFile::FormFile(QWidget *parent, QPEToolBar *toolBar)
    : FormBase(parent, toolBar, lumi::FileForm)
    , m_photoFilesPath(lumi::photoStorePath())
    , m_cfPath(cardStartPath(Slot::CF))
    , m_sdPath(cardStartPath(Slot::SD))
    , m_cfCard(cardIn(Slot::CF))
    , m_sdCard(cardIn(Slot::SD))
{
    parent->setWindowTitle(msg(lumi::MsgLumiVault));
    buildMenus();
    for (const int key : {kKeyMail, static_cast<int>(Qt::Key_LaunchMail)}) {
        auto *accel = new QAccel(key, this);
        connect(accel, &QAccel::activated, this, &FormFile::accel_appendToMail);
    }
    // Made before the column, so that Tab leads to the photos first.
    QWidget *rightSide = buildRightSide();
    auto *leftSide = new lumi::LeftSide(this);
    m_leftWidget = leftSide->column();
    connect(m_leftWidget, &MyLeftWidget::btn_clicked, this, &FormFile::btn_leftWidget_clicked);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(leftSide, 0);
    row->addWidget(rightSide, 1);
    qApp->installEventFilter(this);
}

FormFile::~FormFile()
{
    // The view uses the list until it is destroyed.
    delete m_view;
}

QWidget *FormFile::buildRightSide()
{
    auto *rightSide = new QWidget(this);
    setDarkGray(rightSide);
    auto *column = new QVBoxLayout(rightSide);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(buildTopRow(rightSide));
    column->addWidget(buildPicturePart(rightSide), 1);
    return rightSide;
}

QLayout *FormFile::buildTopRow(QWidget *rightSide)
{
    m_deviceCombo = new QComboBox(rightSide);
    m_deviceCombo->setMinimumHeight(lumi::kFingerSize);
    m_deviceCombo->setAccessibleDescription(QStringLiteral("Place"));
    setDarkGray(m_deviceCombo);
    fillDeviceCombo();
    connect(m_deviceCombo, &QComboBox::textActivated, this, &FormFile::combo_device_activated);
    m_upButton = new QToolButton(rightSide);
    m_upButton->setIcon(lumi::loadPixmap("to_top"));
    m_upButton->setText(QStringLiteral("Up")); // if the picture is missing
    m_upButton->setIconSize(QSize(kUpIconSide, kUpIconSide));
    m_upButton->setMinimumSize(lumi::kFingerSize, lumi::kFingerSize);
    m_upButton->setAccessibleName(QStringLiteral("Folder up"));
    m_upButton->setEnabled(false);
    connect(m_upButton, &QToolButton::clicked, this, &FormFile::btn_root_cliced);
    m_statusField = new QLabel(rightSide);
    m_statusField->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // A long name is cut to the width of the field and must not widen it.
    m_statusField->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setDarkGray(m_statusField);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 0, kPictureMargin, 0);
    row->setSpacing(0);
    row->addWidget(m_deviceCombo, 0);
    row->addWidget(m_upButton, 0);
    row->addWidget(m_statusField, 1);
    return row;
}

QWidget *FormFile::buildPicturePart(QWidget *rightSide)
{
    const QPixmap background = lumi::loadPixmap("bg_right");
    auto *part = new BackgroundWidget(rightSide);
    part->setBackgroundPixmap(background);
    QWidget *panel = buildDetailPanel(part);
    m_view = new FPVThumbnailView(part, nullptr);
    m_view->setBackground(background);
    // On a narrower screen the form scrolls.
    m_view->setMinimumWidth(lumi::kPageWidth);
    connect(m_view, &FPVThumbnailView::selected, this, &FormFile::filelist_selected);
    connect(m_view, &FPVThumbnailView::decided, this, &FormFile::filelist_decided);
    auto *column = new QVBoxLayout(part);
    column->setContentsMargins(kPictureMargin, kPictureMargin, kPictureMargin, kPictureMargin);
    column->setSpacing(kPictureSpacing);
    column->addWidget(panel);
    column->addWidget(m_view, 1);
    column->addStretch();
    return part;
}

void FormFile::formStarted()
{
    FormBase::formStarted();
    const QString store = lumi::photoStorePath();
    m_rootItem = std::make_unique<FPVItemList>(store, store);
    m_currentPath = &m_photoFilesPath;
    m_view->setList(m_rootItem.get());
    menu_disp_ThumbnailLarge();
    m_view->setFocus();
}

void FormFile::enterFolder(const QString &path)
{
    if (path.isNull()) {
        m_view->reload(m_rootItem->currentPath());
    } else {
        m_view->reload(path);
        *m_currentPath = path;
    }
    m_upButton->setEnabled(!lumi::isFolderRoot(m_rootItem->currentPath()));
    m_view->showPage(0, 0, true);
    showName(currentItem());
}

void FormFile::filelist_decided(FPVItemObject *item)
{
    if (item == nullptr) {
        enterFolder(m_rootItem->currentPath() + QLatin1String("/.."));
    } else if (item->isPicture()) {
        menu_disp_DispAll();
    } else if (item->isFolder()) {
        enterFolder(item->path());
    }
}

void FormFile::filelist_selected(FPVItemObject *item)
{
    if (item == nullptr || !(item->isPicture() || item->isFolder())) {
        return;
    }
    showName(item);
    tellPanel(item->isPicture() ? item : nullptr);
}

void FormFile::showName(const FPVItemObject *item)
{
    elideToLabel(m_statusField, item != nullptr ? statusText(*item) : QString());
}

void FormFile::btn_root_cliced() // sic
{
    m_view->action(static_cast<int>(lumi::ViewAction::FolderUp));
}

void FormFile::btn_leftWidget_clicked(int id)
{
    switch (id) {
    case MyLeftWidget::ThumbnailLarge:
        menu_disp_ThumbnailLarge();
        break;
    case MyLeftWidget::ThumbnailSmall:
        menu_disp_ThumbnailSmall();
        break;
    case MyLeftWidget::Detail:
        menu_disp_DispDetail();
        break;
    case MyLeftWidget::Slideshow:
        menu_disp_Slideshow_Execution();
        break;
    case MyLeftWidget::Top:
        menu_disp_Top();
        break;
    default:
        break;
    }
}

void FormFile::menu_disp_Top()
{
    requestForm(lumi::TopForm, QString());
}

/// Keeps the form's keys from the widget that has the focus, because lists and text displays would
/// consume them. Qt then offers the key to the parents, up to the form. Text is edited in dialogs
/// only. Dialogs, menus and open lists are separate windows and keep their keys.
bool FormFile::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || watched == this
        || !isAncestorOf(qobject_cast<QWidget *>(watched))) {
        return FormBase::eventFilter(watched, event);
    }
    const auto *key = static_cast<QKeyEvent *>(event);
    if (lumi::fileKey(key->key(), key->modifiers()) == lumi::FileKey::None) {
        return false;
    }
    event->ignore();
    return true;
}

void FormFile::keyPressEvent(QKeyEvent *event)
{
    const lumi::FileKey key = lumi::fileKey(event->key(), event->modifiers());
    QWidget::keyPressEvent(event);
    const FPVItemObject *item = currentItem();
    if (lumi::needsPhoto(key) && (item == nullptr || !item->isPicture())) {
        return;
    }
    switch (key) {
    case lumi::FileKey::Copy:
        menu_edit_Copy();
        break;
    case lumi::FileKey::Cut:
        menu_edit_Cut();
        break;
    case lumi::FileKey::Paste:
        menu_edit_Paste();
        break;
    case lumi::FileKey::Delete:
        menu_file_Delete();
        break;
    case lumi::FileKey::None:
        break;
    }
}

FPVItemObject *FormFile::currentItem() const
{
    return m_view->currentObject();
}
