// SPDX-License-Identifier: MIT
#include "views/FPVThumbnailMetrics.h"

#include "app/common/loadPixmap.h"
#include "views/pageArithmetic.h"

#include <optional>

namespace {

constexpr QSize kCheckSize(30, 30); ///< of the pictures

using FrameNames = std::array<const char *, std::size_t{2} * FPVThumbnailMetrics::FrameKinds>;

constexpr FrameNames kLargeFrames = {
    "frame_pic_l",     "frame_pic_l_on",     "frame_folder_l",      "frame_folder_l_on",
    "frame_folder_pl", "frame_folder_pl_on", "frame_folder_l_back", "frame_folder_l_back_on",
};
constexpr FrameNames kSmallFrames = {
    "frame_pic_s",     "frame_pic_s_on",     "frame_folder_s",      "frame_folder_s_on",
    "frame_folder_ps", "frame_folder_ps_on", "frame_folder_s_back", "frame_folder_s_back_on",
};

/// The picture at exactly this size, in the resolution of a dense screen if there is one.
QImage scaledFrame(const char *name, QSize size)
{
    const QImage image = lumi::loadPixmap(name).toImage();
    if (image.isNull()) {
        return {};
    }
    const qreal ratio = image.devicePixelRatio();
    QImage scaled = image.scaled(size * ratio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(ratio);
    return scaled;
}

} // namespace

FPVThumbnailMetrics::FPVThumbnailMetrics(char modeKind, int across, int down)
    : columns(across)
    , rows(down)
    , visibleCount(across * down)
    , kind(modeKind)
{ }

void FPVThumbnailMetrics::layOut(QSize bars)
{
    const std::optional<lumi::CellSizes> sizes = lumi::cellSizes(columns, rows, showName, bars);
    if (!sizes) {
        return;
    }
    imageSize = sizes->image;
    if (pitch != sizes->pitch) {
        pitch = sizes->pitch;
        loadPictures();
    }
}

const QImage &FPVThumbnailMetrics::frame(Frame frame, bool isFocused) const
{
    const std::size_t plain = 2 * std::size_t(frame);
    return frames.at(isFocused ? plain + 1 : plain);
}

void FPVThumbnailMetrics::loadPictures()
{
    const FrameNames &names = showName ? kLargeFrames : kSmallFrames;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        frames.at(i) = scaledFrame(names.at(i), pitch);
    }
    checkOff = lumi::loadPixmap(showName ? "check_l" : "check_s", kCheckSize, QString());
    checkOn
        = lumi::loadPixmap(showName ? "check_l_on" : "check_s_on", kCheckSize, QStringLiteral("x"));
}
