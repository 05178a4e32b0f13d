// SPDX-License-Identifier: MIT
// The left side of a form: the column of buttons, whose size is fixed, at the top, and its
// background from there down to the bottom of the form.
#pragma once

#include "platform/toolkit/BackgroundWidget.h"

class MyLeftWidget;

namespace lumi {

class LeftSide : public BackgroundWidget
{
    Q_OBJECT

public:
    explicit LeftSide(QWidget *parent);

    [[nodiscard]] MyLeftWidget *column() const { return m_column; }

private:
    MyLeftWidget *m_column;
};

} // namespace lumi
