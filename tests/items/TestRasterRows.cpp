// SPDX-License-Identifier: MIT
#include "items/rasterRows.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

#include <memory>

using lumi::test::Decoded;

class TestRasterRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void turnsBlocks_data();
    void turnsBlocks();
    void blackInBothDepths();
    void pixelsOfKnownSamples();
    void otherCombinationsHaveNoFunction();
};

namespace {

Decoded noise(QSize size, int components)
{
    Decoded decoded;
    decoded.size = size;
    decoded.components = components;
    std::uint32_t state = 12345;
    for (int i = 0; i < size.width() * size.height() * components; ++i) {
        state = state * 1664525 + 1013904223;
        decoded.samples.push_back(static_cast<std::uint8_t>(state >> 24));
    }
    return decoded;
}

std::uint32_t turnOne(int depth, const std::vector<uchar> &samples)
{
    std::uint32_t pixel = 0;
    lumi::turnerFor(depth, static_cast<int>(samples.size()))(
        {samples.data(), qsizetype(samples.size()), 0, 1}, {1, 1}, {},
        reinterpret_cast<uchar *>(&pixel));
    return pixel;
}

} // namespace

void TestRasterRows::turnsBlocks_data()
{
    lumi::test::columns<int, int, int>();
    for (const int depth : {16, 32}) {
        for (const int components : {1, 3, 4}) {
            for (const int block : {1, 7, lumi::kBlockLines}) {
                QTest::addRow("%d bits from %d samples, %d lines at once", depth, components, block)
                    << depth << components << block;
            }
        }
    }
}

void TestRasterRows::turnsBlocks()
{
    const auto [depth, components, block] = lumi::test::row<int, int, int>();
    const QSize size(37, 41);
    const Decoded decoded = noise(size, components);
    const qsizetype stride = qsizetype(size.width()) * components;
    const qsizetype pixels = qsizetype(size.width()) * size.height();
    const auto raster = std::make_unique<uchar[]>(static_cast<std::size_t>(pixels * depth / 8));
    lumi::fillBlack(raster.get(), pixels, depth);
    const lumi::TurnBlock turn = lumi::turnerFor(depth, components);
    QVERIFY(turn != nullptr);
    for (int first = 0; first < size.height(); first += block) {
        QCOMPARE(lumi::test::rasterFault(raster.get(), decoded, depth, first), QString());
        const int count = std::min(block, size.height() - first);
        turn({decoded.at(0, first), stride, first, count}, size, {}, raster.get());
    }
    QCOMPARE(lumi::test::rasterFault(raster.get(), decoded, depth, size.height()), QString());
}

void TestRasterRows::blackInBothDepths()
{
    std::uint32_t pixels[4] = {1, 1, 1, 1};
    lumi::fillBlack(reinterpret_cast<uchar *>(pixels), 3, 32);
    QCOMPARE(pixels[2], 0xFF000000U);
    QCOMPARE(pixels[3], 1U);
    lumi::fillBlack(reinterpret_cast<uchar *>(pixels), 4, 16);
    QCOMPARE(pixels[1], 0U);
    QCOMPARE(pixels[2], 0xFF000000U);
}

void TestRasterRows::pixelsOfKnownSamples()
{
    QCOMPARE(turnOne(16, {0xFF}), 0xFFFFU);
    QCOMPARE(turnOne(16, {0x87}), 0x8430U);
    QCOMPARE(turnOne(16, {0xFF, 0x04, 0x08}), 0xF821U);
    QCOMPARE(turnOne(16, {0x55, 0xFF, 0x04, 0x08}), 0xF821U);
    QCOMPARE(turnOne(32, {0x87}), 0xFF878787U);
    QCOMPARE(turnOne(32, {0x01, 0x02, 0x03}), 0xFF010203U);
    QCOMPARE(turnOne(32, {0x01, 0x02, 0x03, 0x04}), 0x04030201U);
}

void TestRasterRows::otherCombinationsHaveNoFunction()
{
    QVERIFY(lumi::turnerFor(24, 3) == nullptr);
    QVERIFY(lumi::turnerFor(16, 2) == nullptr);
    QVERIFY(lumi::turnerFor(32, 5) == nullptr);
}

LUMI_TEST(TestRasterRows)
#include "TestRasterRows.moc"
