// SPDX-License-Identifier: MIT
// The base of tests of thumbnails: photos in a private folder and a swap store. Checks that no
// decompressor is left.
#pragma once

#include "tests/items/JpegMaker.h"
#include "tests/swap/SwapFixture.h"

#include <QObject>

#include <memory>

namespace lumi::test {

class ThumbnailTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    QString photo(const JpegKind &kind, const QString &name = QStringLiteral("p/a.jpg")) const;

    std::unique_ptr<SwapFixture> m_fixture;
};

} // namespace lumi::test
