// SPDX-License-Identifier: MIT
#include "platform/screen/scaleCap.h"

#include "platform/screen/panel.h"
#include "platform/session/windowSystem.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

#include <unistd.h>

namespace {

constexpr const char *kDoneVariable = "LUMIVAULT_SCALE_CAPPED";
constexpr const char *kFactorVariable = "QT_SCALE_FACTOR";

/// The part of the ratio that the environment cannot change. On Wayland the compositor sets it.
qreal fixedRatio(qreal ratio)
{
    if (!lumi::isWayland()) {
        return 1;
    }
    const qreal factor = qEnvironmentVariable(kFactorVariable).toDouble();
    return factor > 0 ? ratio / factor : ratio;
}

} // namespace

std::optional<qreal> lumi::cappedScale(QSize logical, qreal ratio)
{
    const qreal across = logical.width() * ratio / kPanelSize.width();
    const qreal down = logical.height() * ratio / kPanelSize.height();
    const qreal fitting = std::max(1.0, std::min(across, down));
    return fitting < ratio ? std::optional<qreal>(fitting) : std::nullopt;
}

void lumi::capScale(char **argv)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || qEnvironmentVariableIsSet(kDoneVariable)) {
        return;
    }
    const qreal ratio = screen->devicePixelRatio();
    const auto factor = cappedScale(screen->size(), ratio);
    if (!factor) {
        return;
    }
    qputenv(kDoneVariable, "1");
    qputenv("QT_FONT_DPI", "96");
    qputenv(kFactorVariable, QByteArray::number(*factor / fixedRatio(ratio)));
    qunsetenv("QT_SCREEN_SCALE_FACTORS");
    ::execv("/proc/self/exe", argv);
    qWarning("The scale factor stays: the program could not be started anew");
}
