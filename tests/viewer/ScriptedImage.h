// SPDX-License-Identifier: MIT
// A picture whose decode is controlled by a test. Its raster has one colour for a decode at screen
// size and another one for a decode at full size.
#pragma once

#include "items/FPVItemImage.h"

#include <QStringList>

#include <vector>

namespace lumi::test {

class ScriptedImage : public FPVItemImage
{
    Q_OBJECT

public:
    static constexpr quint32 kScreenColour = 0xFF206030U;
    static constexpr quint32 kFullColour = 0xFFA02040U;

    /// name: of a file that need not exist.
    ScriptedImage(const QString &name, QSize photo);

    [[nodiscard]] QSize imageSize() override { return size; }

    [[nodiscard]] bool startDecode(int depth, QSize *outSize, QSize *request) override;
    [[nodiscard]] uchar *decodedRaster(int depth, QSize *outSize,
                                       QSize *request = nullptr) override;
    [[nodiscard]] uchar *rasterBits() override;
    void releaseDecode() override;
    void abortDecode() override;

    [[nodiscard]] DecodeError errorCode() const override { return error; }

    /// The decode reports another 64 lines, or its failure.
    void slice() { Q_EMIT decodeUpdate(); }

    void failSlice(DecodeError why);

    void finish() { Q_EMIT decodeComplete(); }

    /// The script.
    QSize size;
    int denominator = 1; ///< of a decode made for the screen
    int starts = 1000;   ///< this many work, the next one fails with `reason`
    DecodeError reason = DecodeError::Undecodable;
    bool completesAtOnce = false;

    /// What was asked of it: "start 640x436", "start full", "release", "abort".
    QStringList calls;
    DecodeError error = DecodeError::None;

private:
    std::vector<quint32> m_raster;
    QSize m_rasterSize;
};

} // namespace lumi::test
