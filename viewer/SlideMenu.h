// SPDX-License-Identifier: MIT
// The menu of the running slideshow. The device key that opens the menu also closes it. The key
// that ends the slideshow works in the menu too.
#pragma once

#include "platform/toolkit/QPopupMenu.h"

namespace lumi {

class SlideMenu : public QPopupMenu
{
    Q_OBJECT

public:
    enum Entry : int { Continue = 0, Details = 1, FullView = 2, Delete = 3, Options = 4, End = 5 };

    explicit SlideMenu(QWidget *parent);

Q_SIGNALS:
    void stopped();

protected:
    void keyReleaseEvent(QKeyEvent *event) override;
};

} // namespace lumi
