// SPDX-License-Identifier: MIT
// The left side of a form: the column of buttons at the top, which has a fixed size, and the
// background below it.
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
