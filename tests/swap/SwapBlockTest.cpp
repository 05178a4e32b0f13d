// SPDX-License-Identifier: MIT
#include "tests/swap/SwapBlockTest.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using lumi::test::SwapFixture;

void SwapBlockTest::init()
{
    m_fixture = std::make_unique<SwapFixture>();
    QVERIFY(QDir().mkpath(m_fixture->swapFolder()));
    m_source = m_fixture->addPhoto(QStringLiteral("photos/a.jpg"));
    m_swapPath = m_fixture->swapFile(QStringLiteral("0000s_100_a.jpg.swp"));
}

void SwapBlockTest::cleanup()
{
    m_fixture.reset();
}

SwapBlock SwapBlockTest::made() const
{
    return {QStringLiteral("a.jpg"), m_swapPath, 100, 's'};
}

bool SwapBlockTest::write(SwapBlock &block, QImage image) const
{
    stSwap swap = imageSwap(&image);
    return block.bWrite(swap, sourceTime());
}

bool SwapBlockTest::read(SwapBlock &block, QImage *image) const
{
    QImage old = lumi::test::picture(); // which must not count as what was read
    stSwap swap = imageSwap(image != nullptr ? image : &old);
    return block.bRead(swap, sourceTime());
}

stSwap SwapBlockTest::imageSwap(QImage *image)
{
    return {image, nullptr, 0, 100, 's'};
}

QDateTime SwapBlockTest::sourceTime() const
{
    return QFileInfo(m_source).lastModified();
}
