// SPDX-License-Identifier: MIT
#include "tests/viewer/ScriptedImage.h"

lumi::test::ScriptedImage::ScriptedImage(const QString &name, QSize photo)
    : FPVItemImage(QStringLiteral("/nowhere/") + name, QString(), false)
    , size(photo)
{ }

bool lumi::test::ScriptedImage::startDecode(int depth, QSize *outSize, QSize *request)
{
    calls.append(request == nullptr
                     ? QStringLiteral("start full")
                     : QString::asprintf("start %dx%d", request->width(), request->height()));
    m_raster.clear();
    error = DecodeError::None;
    if (depth != 32 || starts-- <= 0) {
        error = reason;
        return false;
    }
    m_rasterSize = request == nullptr ? size : size / denominator;
    *outSize = m_rasterSize;
    const auto count = std::size_t(m_rasterSize.width()) * std::size_t(m_rasterSize.height());
    m_raster.assign(count, request == nullptr ? kFullColour : kScreenColour);
    slice();
    if (completesAtOnce) {
        finish();
    }
    return true;
}

uchar *lumi::test::ScriptedImage::decodedRaster(int depth, QSize *outSize, QSize *request)
{
    if (m_raster.empty()) {
        return startDecode(depth, outSize, request) ? rasterBits() : nullptr;
    }
    *outSize = m_rasterSize;
    return rasterBits();
}

uchar *lumi::test::ScriptedImage::rasterBits()
{
    return m_raster.empty() ? nullptr : reinterpret_cast<uchar *>(m_raster.data());
}

void lumi::test::ScriptedImage::releaseDecode()
{
    calls.append(QStringLiteral("release"));
    m_raster.clear();
}

void lumi::test::ScriptedImage::abortDecode()
{
    calls.append(QStringLiteral("abort"));
}

void lumi::test::ScriptedImage::failSlice(DecodeError why)
{
    error = why;
    m_raster.clear();
    slice();
}
