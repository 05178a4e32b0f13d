// SPDX-License-Identifier: MIT
#include "widgets/LeftSide.h"

#include "app/common/loadPixmap.h"
#include "widgets/MyLeftWidget.h"

#include <QVBoxLayout>

lumi::LeftSide::LeftSide(QWidget *parent)
    : BackgroundWidget(parent)
    , m_column(new MyLeftWidget(this))
{
    setBackgroundPixmap(loadPixmap("bg_left"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_column, 0, Qt::AlignTop);
}
