// SPDX-License-Identifier: MIT
#include "widgets/focusPainters.h"

#include "widgets/MyImageButton.h"

#include <QPainter>
#include <qdrawutil.h>

namespace {

const QColor kYellow(255, 255, 0);
constexpr int kStep = 2;

/// Each frame is two pixels further in than the one before at the top, the left and the
/// right, but not at the bottom: there the lines run nearer to the outer one.
void paintFrames(MyImageButton *button, int count)
{
    QPainter painter(button);
    for (int i = 0; i < count; ++i) {
        const int inset = i * kStep;
        const int heightLost = i == 0 ? 0 : 2 * inset - kStep;
        qDrawPlainRect(&painter, inset, inset, button->width() - 2 * inset,
                       button->height() - heightLost, kYellow);
    }
}

} // namespace

void lumi::paintThreeRectangles(MyImageButton *button)
{
    paintFrames(button, 3);
}

void lumi::paintFiveRectangles(MyImageButton *button)
{
    paintFrames(button, 5);
}
