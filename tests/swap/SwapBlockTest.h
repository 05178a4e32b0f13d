// SPDX-License-Identifier: MIT
// The base of tests of a swap block: a photo in a private tree, and the block of its thumbnail.
#pragma once

#include "swap/SwapBlock.h"
#include "tests/swap/SwapFixture.h"

#include <QObject>

#include <memory>

class SwapBlockTest : public QObject
{
    Q_OBJECT

protected:
    /// A block of the photo that has not stored anything yet.
    [[nodiscard]] SwapBlock made() const;
    /// Whether the block can store the image for the present state of the photo.
    [[nodiscard]] bool write(SwapBlock &block, QImage image = lumi::test::picture()) const;
    /// Whether the block returns an image for the present state of the photo.
    [[nodiscard]] bool read(SwapBlock &block, QImage *image = nullptr) const;
    /// A block operation with this image.
    [[nodiscard]] static stSwap imageSwap(QImage *image);
    [[nodiscard]] QDateTime sourceTime() const;

    std::unique_ptr<lumi::test::SwapFixture> m_fixture;
    QString m_source;
    QString m_swapPath;

private Q_SLOTS:
    void init();
    void cleanup();
};
