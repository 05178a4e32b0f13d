// SPDX-License-Identifier: MIT
#include "widgets/focusPainters.h"

#include "widgets/MyImageButton.h"

#include <QPainter>
#include <qdrawutil.h>

namespace {

constexpr int kStep = 2;

/// Each frame lies two pixels inside the one before at the top, the left and the right. At the
/// bottom each frame lies two pixels lower than that.
void paintFrames(MyImageButton *button, int count)
{
    QPainter painter(button);
    for (int i = 0; i < count; ++i) {
        const int inset = i * kStep;
        const int heightLost = i == 0 ? 0 : 2 * inset - kStep;
        const QRect frame(inset, inset, button->width() - 2 * inset, button->height() - heightLost);
        qDrawPlainRect(&painter, frame.adjusted(1, 1, -1, -1), lumi::kFocusShade);
        qDrawPlainRect(&painter, frame, lumi::kFocusColor);
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
