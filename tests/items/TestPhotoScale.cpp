// SPDX-License-Identifier: MIT
#include "items/photoScale.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QTest>

class TestPhotoScale : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitsIntoABox_data();
    void fitsIntoABox();
    void thumbnailsOfAPhoto_data();
    void thumbnailsOfAPhoto();
    void everyChainOfThumbnailsIsOfThePhoto();
    void coversARequest_data();
    void coversARequest();
    void staysBelowTheScreenLimit_data();
    void staysBelowTheScreenLimit();
    void memoryNeeds();
    void linesHeldAtOnce_data();
    void linesHeldAtOnce();
};

void TestPhotoScale::fitsIntoABox_data()
{
    lumi::test::columns<QSize, QSize, QSize>();
    QTest::newRow("landscape in the large box")
        << QSize(640, 480) << QSize(174, 123) << QSize(164, 123);
    QTest::newRow("portrait in the large box")
        << QSize(480, 640) << QSize(174, 123) << QSize(92, 123);
    QTest::newRow("width decides") << QSize(640, 400) << QSize(80, 60) << QSize(80, 50);
    QTest::newRow("equal ratios keep the width")
        << QSize(640, 480) << QSize(80, 60) << QSize(80, 60);
    QTest::newRow("a half is rounded up") << QSize(4, 5) << QSize(2, 100) << QSize(2, 3);
    QTest::newRow("a small photo grows") << QSize(2, 1) << QSize(100, 100) << QSize(100, 50);
    QTest::newRow("a line keeps one pixel of height")
        << QSize(20000, 1) << QSize(174, 123) << QSize(174, 1);
    QTest::newRow("a column keeps one pixel of width")
        << QSize(1, 20000) << QSize(174, 123) << QSize(1, 123);
    QTest::newRow("unknown size") << QSize(-1, -1) << QSize(174, 123) << QSize(0, 0);
    QTest::newRow("no height") << QSize(10, 0) << QSize(174, 123) << QSize(0, 0);
    QTest::newRow("no box") << QSize(640, 480) << QSize(0, 123) << QSize(0, 0);
    QTest::newRow("the largest sides") << QSize(65500, 65500) << QSize(174, 123) << QSize(123, 123);
}

void TestPhotoScale::fitsIntoABox()
{
    const auto [photo, box, fitted] = lumi::test::row<QSize, QSize, QSize>();
    QCOMPARE(lumi::fittedSize(photo, box), fitted);
}

void TestPhotoScale::thumbnailsOfAPhoto_data()
{
    lumi::test::columns<QSize, QSize, bool>();
    const QSize landscape(4000, 3000);
    QTest::newRow("the photo itself") << landscape << landscape << true;
    QTest::newRow("a thumbnail") << landscape << QSize(164, 123) << true;
    QTest::newRow("a thumbnail of a portrait") << landscape << QSize(92, 123) << false;
    QTest::newRow("a small thumbnail") << landscape << QSize(69, 52) << true;
    QTest::newRow("a small one of 3:2") << landscape << QSize(69, 46) << false;
    QTest::newRow("a small one of 5:4") << landscape << QSize(66, 53) << false;
    QTest::newRow("one of 16:9 of a photo of 16:10")
        << QSize(1600, 1000) << QSize(160, 90) << false;
    QTest::newRow("a square of a portrait") << QSize(3000, 4000) << QSize(53, 53) << false;
    QTest::newRow("a line of a panorama") << QSize(20000, 1) << QSize(174, 1) << true;
    QTest::newRow("a line of a square") << QSize(100, 100) << QSize(174, 1) << false;
    QTest::newRow("a column") << QSize(1, 20000) << QSize(1, 123) << true;
    QTest::newRow("the largest sides") << QSize(65500, 65500) << QSize(65500, 65500) << true;
}

void TestPhotoScale::thumbnailsOfAPhoto()
{
    const auto [photo, thumbnail, isOfIt] = lumi::test::row<QSize, QSize, bool>();
    QCOMPARE(lumi::isThumbnailSizeOf(photo, thumbnail), isOfIt);
}

/// Each view fits by the size that the view before has recorded.
void TestPhotoScale::everyChainOfThumbnailsIsOfThePhoto()
{
    constexpr QSize kBoxes[] = {{171, 119}, {69, 53}, {80, 60}, {350, 250}};
    for (int width = 100; width < 12000; width += width / 7) {
        for (int height = 100; height < 12000; height += height / 11) {
            const QSize photo(width, height);
            for (const QSize first : kBoxes) {
                for (const QSize second : kBoxes) {
                    const QSize once = lumi::fittedSize(photo, first);
                    const QSize twice = lumi::fittedSize(once, second);
                    QVERIFY(lumi::isThumbnailSizeOf(photo, once));
                    QVERIFY(lumi::isThumbnailSizeOf(photo, twice));
                    QVERIFY(lumi::isThumbnailSizeOf(photo, lumi::fittedSize(twice, first)));
                }
            }
        }
    }
}

void TestPhotoScale::coversARequest_data()
{
    lumi::test::columns<QSize, QSize, int>();
    QTest::newRow("a quarter covers") << QSize(1600, 1200) << QSize(320, 240) << 4;
    QTest::newRow("the smaller denominator of the axes")
        << QSize(1600, 1200) << QSize(800, 10) << 2;
    QTest::newRow("an eighth exactly") << QSize(1600, 1200) << QSize(200, 150) << 8;
    QTest::newRow("one more than an eighth") << QSize(1600, 1200) << QSize(201, 150) << 4;
    QTest::newRow("one more than a half") << QSize(1600, 1200) << QSize(801, 600) << 1;
    QTest::newRow("larger than the photo") << QSize(100, 100) << QSize(640, 480) << 1;
    QTest::newRow("no scaling") << QSize(1600, 1200) << QSize(0, 0) << 1;
    QTest::newRow("no width is no scaling") << QSize(1600, 1200) << QSize(0, 10) << 1;
    QTest::newRow("no height is no scaling") << QSize(1600, 1200) << QSize(10, 0) << 1;
    QTest::newRow("a tiny photo") << QSize(1, 1) << QSize(1, 1) << 1;
}

void TestPhotoScale::coversARequest()
{
    const auto [photo, wanted, denominator] = lumi::test::row<QSize, QSize, int>();
    QCOMPARE(lumi::coveringDenominator(photo, wanted), denominator);
}

void TestPhotoScale::staysBelowTheScreenLimit_data()
{
    lumi::test::columns<QSize, int>();
    QTest::newRow("small") << QSize(640, 480) << 1;
    QTest::newRow("one pixel below the limit") << QSize(178481, 47) << 1;
    QTest::newRow("the limit") << QSize(4096, 2048) << 2;
    QTest::newRow("12 megapixels") << QSize(4000, 3000) << 2;
    QTest::newRow("a half that rounds up goes on to a quarter") << QSize(8003, 6000) << 4;
    QTest::newRow("108 megapixels") << QSize(12000, 9000) << 4;
    QTest::newRow("an eighth") << QSize(20000, 20000) << 8;
    QTest::newRow("a quarter that rounds up to the limit") << QSize(16381, 8189) << 8;
    QTest::newRow("too large at an eighth") << QSize(65500, 65500) << 0;
    QTest::newRow("the limit at an eighth") << QSize(32768, 16384) << 0;
    QTest::newRow("just below it at an eighth") << QSize(32768, 16376) << 8;
}

void TestPhotoScale::staysBelowTheScreenLimit()
{
    const auto [photo, denominator] = lumi::test::row<QSize, int>();
    QCOMPARE(lumi::screenDenominator(photo), denominator);
    if (denominator != 0) {
        const QSize decoded = lumi::decodedSize(photo, denominator);
        QVERIFY(qint64(decoded.width()) * decoded.height() < lumi::kScreenPixelLimit);
    }
}

void TestPhotoScale::memoryNeeds()
{
    QCOMPARE(lumi::progressiveNeedKB(QSize(2048, 1536)), 30720);
    QCOMPARE(lumi::progressiveNeedKB(QSize(65500, 65500)),
             ((65500LL * 65500 * 7 + 1048576) >> 10) + 8192);
    QCOMPARE(lumi::thumbnailNeedKB(4000, 375), (4000 * 375 + 262144) >> 8);
    QCOMPARE(lumi::thumbnailNeedKB(65500, 65500), (65500LL * 65500 + 262144) >> 8);
    QCOMPARE(lumi::screenNeedKB(4000, QSize(1000, 750), 16),
             (1000 * 750 * 2 + 16000 + 1048576) >> 10);
    QCOMPARE(lumi::screenNeedKB(65500, QSize(65500, 65500), 32),
             (65500LL * 65500 * 4 + 262000 + 1048576) >> 10);
}

void TestPhotoScale::linesHeldAtOnce_data()
{
    lumi::test::columns<qint64, int>();
    QTest::newRow("a usual photo") << qint64{2000 * 3} << 16;
    QTest::newRow("a megabyte exactly") << qint64{65536} << 16;
    QTest::newRow("a byte more") << qint64{65537} << 8;
    QTest::newRow("a line of a quarter of a megabyte") << qint64{262144} << 4;
    QTest::newRow("the widest photo, of four samples") << qint64{65500 * 4} << 4;
    QTest::newRow("a line of a megabyte") << qint64{1048576} << 1;
    QTest::newRow("a line of two megabytes") << qint64{2097152} << 1;
}

void TestPhotoScale::linesHeldAtOnce()
{
    const auto [lineBytes, lines] = lumi::test::row<qint64, int>();
    QCOMPARE(lumi::heldLines(lineBytes, 16), lines);
}

LUMI_TEST(TestPhotoScale)
#include "TestPhotoScale.moc"
