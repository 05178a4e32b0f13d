// SPDX-License-Identifier: MIT
// The column at the left of every form: three view buttons, the slideshow and the way back to
// the top menu. It only reports which button was clicked; the form decides what that means.
#pragma once

#include <QPixmap>
#include <QWidget>

#include <array>

class MyImageButton;

class MyLeftWidget : public QWidget
{
    Q_OBJECT

public:
    /// Index of a button, and the id it emits. These are not form ids.
    enum Button : int {
        ThumbnailLarge = 0,
        ThumbnailSmall = 1,
        Detail = 2,
        Slideshow = 3,
        Top = 4,
        AllButtons = 5,
    };

    explicit MyLeftWidget(QWidget *parent);

    /// Each for one index, or for all five with AllButtons; any other index does nothing.
    void showButton(int index);
    void hideButton(int index);
    void setButtonEnabled(int index, bool enabled);
    void setButtonOn(int index, bool on);

    /// Lent; null for an index that is none of the five.
    [[nodiscard]] MyImageButton *button(int index) const;

Q_SIGNALS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_clicked(int id);

public Q_SLOTS:
    void btn_top_clicked();
    void btn_thumbnailLarge_clicked();
    void btn_thumbnailSmall_clicked();
    void btn_detail_clicked();
    void btn_slideshow_clicked();
    // NOLINTEND(readability-identifier-naming)

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setPictures();
    template <typename Operation> void forButtons(int index, Operation operation);

    std::array<MyImageButton *, AllButtons> m_buttons{};
    QPixmap m_background;
    bool m_hasPictures = false; ///< of the buttons
};
