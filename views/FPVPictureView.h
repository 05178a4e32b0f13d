// SPDX-License-Identifier: MIT
// One picture that fills its widget and can be tapped. It decodes an item once and keeps the
// pixmap, so a change of size needs no second decode.
// Owns: the pixmap. The item belongs to its list and may be deleted at any time.
#pragma once

#include "items/FPVItemImage.h"
#include "widgets/AccessibleControl.h"

#include <QLabel>
#include <QPixmap>
#include <QPointer>

#include <memory>

class FPVPictureView : public QLabel, public lumi::AccessibleControl
{
    Q_OBJECT

public:
    explicit FPVPictureView(QWidget *parent = nullptr);
    ~FPVPictureView() override;

    /// Shows another item. An item that is not a picture counts as none. With refresh it is decoded
    /// and shown before this returns, otherwise at the next change of size. Always true.
    bool setItem(FPVItemObject *item, bool refresh);

    /// Null if there is none or it was deleted.
    [[nodiscard]] FPVItemImage *item() const { return m_item; }

    [[nodiscard]] QAccessible::Role accessibleRole() const override { return QAccessible::Button; }

    void addAccessibleState(QAccessible::State *state) const override;
    void press() override;

Q_SIGNALS:
    /// Part of the interface. Never emitted.
    void clicked(QMouseEvent *event);
    /// The picture was tapped.
    void decided(FPVItemObject *item);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void showPicture();

    QPointer<FPVItemImage> m_item;
    std::unique_ptr<QPixmap> m_pixmap;
};
