// SPDX-License-Identifier: MIT
// One picture, as large as the place it is given, that can be tapped. It decodes an item once
// and keeps the pixmap, so that a new size of the place costs no second decoding.
// Owns: the pixmap. The item is the list's and may die at any time: then there is none.
#pragma once

#include "items/FPVItemImage.h"

#include <QLabel>
#include <QPixmap>
#include <QPointer>

#include <memory>

class FPVPictureView : public QLabel
{
    Q_OBJECT

public:
    explicit FPVPictureView(QWidget *parent = nullptr);
    ~FPVPictureView() override;

    /// Takes another item; whatever is no picture counts as none. With refresh it is decoded
    /// and shown before this returns, else at the next change of size. Always true.
    bool setItem(FPVItemObject *item, bool refresh);

    /// Null when there is none, or when it has died.
    [[nodiscard]] FPVItemImage *item() const { return m_item; }

Q_SIGNALS:
    /// Part of the interface; nothing emits it.
    void clicked(QMouseEvent *event);
    /// The picture was tapped.
    void decided(FPVItemObject *item);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void showPicture();

    QPointer<FPVItemImage> m_item;
    std::unique_ptr<QPixmap> m_pixmap;
    bool m_refreshing = false;
};
