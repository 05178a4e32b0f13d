// SPDX-License-Identifier: MIT
#include "exif/ui/MyImageWidget.h"

#include "app/common/Settings.h"
#include "app/common/labels.h"
#include "app/common/messages.h"
#include "exif/text/FPVExifFields.h"
#include "exif/ui/infoRow.h"
#include "platform/keys/deviceKey.h"
#include "platform/screen/panel.h"
#include "platform/touch/DragScroll.h"
#include "views/FPVPictureView.h"
#include "widgets/MyDialogWait.h"

#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QTextBrowser>

#include <array>

namespace {

constexpr QSize kPictureSize(245, 185);
constexpr std::array<int, 5> kFontPoints = {12, 16, 20, 24, 36};
constexpr int kDefaultFont = 2;
constexpr int kShiftToKB = 10;
constexpr QLatin1Char kLineEnd('\n');

int storedFontIndex()
{
    const int index = lumi::Settings::fontSize();
    return index >= 0 && index < static_cast<int>(kFontPoints.size()) ? index : kDefaultFont;
}

} // namespace

MyImageWidget::MyImageWidget(QWidget *parent)
    : QWidget(parent)
    , m_browser(new QTextBrowser(this))
    , m_picture(new FPVPictureView(this))
    , m_fontIndex(storedFontIndex())
{
    setFixedHeight(kPictureSize.height());
    m_picture->setFixedSize(kPictureSize);
    m_browser->setAccessibleName(QStringLiteral("Photo data"));
    setFontSize(m_browser, kFontPoints.at(static_cast<std::size_t>(m_fontIndex)));
    auto *right = new QVBoxLayout;
    right->setContentsMargins(0, 0, 0, 0);
    right->setSpacing(0);
    right->addLayout(buildTopRow());
    new lumi::DragScroll(m_browser);
    right->addWidget(m_browser, 1);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_picture);
    row->addLayout(right, 1);
}

MyImageWidget::~MyImageWidget() = default;

QHBoxLayout *MyImageWidget::buildTopRow()
{
    m_infoCombo = new QComboBox(this);
    m_infoCombo->setMinimumHeight(lumi::kFingerSize);
    m_infoCombo->setAccessibleDescription(QStringLiteral("Group of data"));
    const int groups = static_cast<int>(lumi::exifFieldGroups().size());
    for (int group = 0; group < groups; ++group) {
        m_infoCombo->addItem(FPVExifFields::groupTitle(group));
    }
    connect(m_infoCombo, &QComboBox::activated, this, &MyImageWidget::combo_exifinfo_activated);
    m_editButton = new QPushButton(msg(lumi::MsgEdit), this);
    m_editButton->setMinimumHeight(lumi::kFingerSize);
    connect(m_editButton, &QPushButton::clicked, this, &MyImageWidget::btn_edit_clicked);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_infoCombo);
    row->addWidget(m_editButton);
    return row;
}

void MyImageWidget::setVisible(bool visible)
{
    if (!visible) {
        setItem(nullptr);
    }
    QWidget::setVisible(visible);
}

void MyImageWidget::setItem(FPVItemObject *item)
{
    if (!isVisible()) {
        return;
    }
    m_wanted = item != nullptr && item->isPicture() ? qobject_cast<FPVItemImage *>(item) : nullptr;
    if (m_loading) {
        return; // the running load() shows it
    }
    if (!m_wanted) {
        showNothing();
    } else if (m_wanted != m_loaded) {
        load();
    }
}

void MyImageWidget::showNothing()
{
    m_infoCombo->setEnabled(false);
    m_editButton->setEnabled(false);
    setText(QString());
    m_picture->setItem(nullptr, true);
    // An open file would keep the user from removing the card.
    m_fields.reset();
    m_loaded.clear();
}

void MyImageWidget::load()
{
    MyDialogWait wait(window(), msg(lumi::MsgWorking));
    m_loading = true;
    wait.start(0);
    m_loading = false;
    if (!m_wanted) {
        showNothing();
        return;
    }
    connect(m_wanted, &QObject::destroyed, this, &MyImageWidget::forgetDead, Qt::UniqueConnection);
    m_loaded = m_wanted;
    m_fields = std::make_unique<FPVExifFields>(m_wanted->path());
    m_infoCombo->setEnabled(true);
    m_editButton->setEnabled(m_fields->isValid());
    m_photoSize = m_wanted->imageSize();
    m_fileBytes = QFileInfo(m_wanted->path()).size();
    const bool hasSize = m_photoSize.width() >= 0 && m_photoSize.height() >= 0;
    m_picture->setItem(hasSize ? m_wanted : nullptr, true);
    showGroup(m_infoCombo->currentIndex());
}

void MyImageWidget::forgetDead()
{
    if (!m_wanted && !m_loading) {
        showNothing();
    }
}

void MyImageWidget::combo_exifinfo_activated(int group)
{
    showGroup(group);
}

void MyImageWidget::showGroup(int group)
{
    setText(QString());
    if (!m_fields) {
        return;
    }
    m_fields->setGroup(group);
    const QString photo = m_picture->item() != nullptr && group == 0 ? photoRows() : QString();
    setText(photo + (m_fields->isValid() ? fieldRows() : msg(lumi::MsgNoExifData)));
}

QString MyImageWidget::photoRows() const
{
    const QString size = QString::number(m_photoSize.width()) + QLatin1String("&nbsp;x&nbsp;")
        + QString::number(m_photoSize.height());
    const QString bytes = QString::number(m_fileBytes >> kShiftToKB) + QLatin1String("KB");
    return lumi::infoRow(msg(lumi::MsgPictureSize), size, kLineEnd)
        + lumi::infoRow(msg(lumi::MsgFileSize), bytes, kLineEnd) + QLatin1String("<hr>");
}

QString MyImageWidget::fieldRows() const
{
    QString html;
    for (int row = 0; row < m_fields->rowCount(); ++row) {
        const QString text = m_fields->valueText(row, true);
        html += lumi::infoRow(m_fields->rowLabel(row),
                              text.isEmpty() ? msg(lumi::MsgNoneInBrackets) : text, kLineEnd);
    }
    return html;
}

void MyImageWidget::setText(const QString &html)
{
    m_html = html;
    layOut();
}

void MyImageWidget::layOut()
{
    // A table starts a new line itself; with the break there would be an empty line.
    QString html = m_html;
    html.replace(QLatin1String("<br><table"), QLatin1String("<table"));
    m_browser->setHtml(html);
}

void MyImageWidget::keyPressEvent(QKeyEvent *event)
{
    if (isVisible()) {
        const DeviceKey key = deviceKey(event);
        if (key == DeviceKey::ZoomIn) {
            setFontIndex(m_fontIndex + 1);
        } else if (key == DeviceKey::ZoomOut) {
            setFontIndex(m_fontIndex - 1);
        }
    }
    QWidget::keyPressEvent(event);
}

void MyImageWidget::setFontIndex(int index)
{
    if (index < 0 || index >= static_cast<int>(kFontPoints.size())) {
        return;
    }
    m_fontIndex = index;
    lumi::Settings::setFontSize(index);
    setFontSize(m_browser, kFontPoints.at(static_cast<std::size_t>(index)));
    layOut();
}
