// SPDX-License-Identifier: MIT
// The top menu: one large button for import from a card, one for looking at the photos, and
// a small menu for maintenance.
#pragma once

#include "app/common/FormBase.h"

class MyImageButton;
class MyLeftWidget;

class FormTop : public FormBase
{
    Q_OBJECT

public:
    FormTop(QWidget *parent, QPEToolBar *toolBar);

    void formStarted() override;

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_takein_clicked();
    void btn_look_clicked();
    void menu_disp_takein();
    void menu_disp_look();
    void menu_option_deleteTempFile();
    void menu_option_help();
    void menu_option_version();
    // NOLINTEND(readability-identifier-naming)

private:
    void buildMenu();
    void buildButtons(QWidget *area);
    void loadPressedPixmaps();
    void reportMissingPictures();

    MyLeftWidget *m_leftWidget;
    QList<MyImageButton *> m_buttons;
};
