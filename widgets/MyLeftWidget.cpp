// SPDX-License-Identifier: MIT
#include "widgets/MyLeftWidget.h"

#include "app/common/loadPixmap.h"
#include "widgets/MyImageButton.h"
#include "widgets/focusPainters.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <memory>
#include <utility>

namespace {

constexpr int kPictureStates = 4;
constexpr QSize kButtonSize(58, 58);
constexpr QSize kColumnSize(72, 400); ///< of the picture bg_left

using Slot = void (MyLeftWidget::*)();

struct ButtonRow
{
    QPoint position;
    std::array<const char *, kPictureStates> pictures{}; ///< normal, pressed, on, on and pressed
    Slot slot = nullptr;
    const char *name = nullptr; ///< for screen readers, and if the pictures are missing
};

// Slideshow and top menu are actions, not modes, so their "on" pictures are those of "off".
constexpr std::array<ButtonRow, MyLeftWidget::AllButtons> kButtons = {{
    {{7, 10},
     {"look_a", "look_a_push", "look_a_on", "look_a_push_on"},
     &MyLeftWidget::btn_thumbnailLarge_clicked,
     "Large"},
    {{7, 75},
     {"look_b", "look_b_push", "look_b_on", "look_b_push_on"},
     &MyLeftWidget::btn_thumbnailSmall_clicked,
     "Small"},
    {{7, 140},
     {"look_c", "look_c_push", "look_c_on", "look_c_push_on"},
     &MyLeftWidget::btn_detail_clicked,
     "Info"},
    {{7, 205},
     {"look_d", "look_d_push", "look_d", "look_d_push"},
     &MyLeftWidget::btn_slideshow_clicked,
     "Slideshow"},
    {{7, 307},
     {"goto_top", "goto_top_push", "goto_top", "goto_top_push"},
     &MyLeftWidget::btn_top_clicked,
     "Top menu"},
}};

/// Of each button: normal, pressed, on, on and pressed.
using ButtonPictures
    = std::array<std::array<QPixmap, kPictureStates>, std::size_t(MyLeftWidget::AllButtons)>;

/// The pictures of all columns, null until a column shows a button.
std::unique_ptr<const ButtonPictures> &pictureStore()
{
    static std::unique_ptr<const ButtonPictures> store;
    return store;
}

void releasePictures()
{
    pictureStore().reset();
}

std::unique_ptr<const ButtonPictures> loadPictures()
{
    auto pictures = std::make_unique<ButtonPictures>();
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        const ButtonRow &row = kButtons.at(i);
        for (std::size_t state = 0; state < kPictureStates; ++state) {
            pictures->at(i).at(state)
                = lumi::loadPixmap(row.pictures.at(state), kButtonSize, QLatin1String(row.name));
        }
    }
    return pictures;
}

const ButtonPictures &sharedPictures()
{
    if (!pictureStore()) {
        pictureStore() = loadPictures();
        // No pixmap may outlive the application object.
        qAddPostRoutine(releasePictures);
    }
    return *pictureStore();
}

} // namespace

MyLeftWidget::MyLeftWidget(QWidget *parent)
    : QWidget(parent)
    , m_background(lumi::loadPixmap("bg_left"))
{
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        auto *button = new MyImageButton(this, lumi::paintThreeRectangles);
        button->move(kButtons.at(i).position);
        button->setAccessibleName(QLatin1String(kButtons.at(i).name));
        connect(button, &MyImageButton::clicked, this, kButtons.at(i).slot);
        m_buttons.at(i) = button;
    }
    setFixedSize(kColumnSize);
}

void MyLeftWidget::setPictures()
{
    if (std::exchange(m_hasPictures, true)) {
        return;
    }
    for (std::size_t i = 0; i < kButtons.size(); ++i) {
        const auto &pictures = sharedPictures().at(i);
        MyImageButton *button = m_buttons.at(i);
        button->setNormalPixmap(pictures[0]);
        button->setPressedPixmap(pictures[1]);
        button->setOnPixmap(pictures[2]);
        button->setOnPressedPixmap(pictures[3]);
    }
}

template <typename Operation> void MyLeftWidget::forButtons(int index, Operation operation)
{
    for (int i = 0; i < AllButtons; ++i) {
        if (index == i || index == AllButtons) {
            operation(button(i));
        }
    }
}

void MyLeftWidget::showButton(int index)
{
    setPictures();
    forButtons(index, [](MyImageButton *button) {
        button->show();
    });
}

void MyLeftWidget::hideButton(int index)
{
    forButtons(index, [](MyImageButton *button) {
        button->hide();
    });
}

void MyLeftWidget::setButtonEnabled(int index, bool enabled)
{
    forButtons(index, [enabled](MyImageButton *button) {
        button->setEnabled(enabled);
    });
}

void MyLeftWidget::setButtonOn(int index, bool on)
{
    forButtons(index, [on](MyImageButton *button) {
        button->setOn(on);
    });
}

MyImageButton *MyLeftWidget::button(int index) const
{
    const bool known = index >= 0 && index < AllButtons;
    return known ? m_buttons.at(static_cast<std::size_t>(index)) : nullptr;
}

void MyLeftWidget::btn_top_clicked()
{
    Q_EMIT btn_clicked(Top);
}

void MyLeftWidget::btn_thumbnailLarge_clicked()
{
    Q_EMIT btn_clicked(ThumbnailLarge);
}

void MyLeftWidget::btn_thumbnailSmall_clicked()
{
    Q_EMIT btn_clicked(ThumbnailSmall);
}

void MyLeftWidget::btn_detail_clicked()
{
    Q_EMIT btn_clicked(Detail);
}

void MyLeftWidget::btn_slideshow_clicked()
{
    Q_EMIT btn_clicked(Slideshow);
}

/// The top menu hides all buttons. It appears sooner without their pictures.
void MyLeftWidget::showEvent(QShowEvent *event)
{
    if (std::any_of(m_buttons.begin(), m_buttons.end(), [](const MyImageButton *button) {
            return !button->isHidden();
        })) {
        setPictures();
    }
    QWidget::showEvent(event);
}

void MyLeftWidget::paintEvent(QPaintEvent * /*event*/)
{
    QPainter(this).drawPixmap(0, 0, m_background);
}
