// SPDX-License-Identifier: MIT
#include "platform/toolkit/BackgroundWidget.h"
#include "tests/support/TestMain.h"

#include <QPainter>
#include <QTest>

namespace {

constexpr int kTileWidth = 7;
constexpr int kTileHeight = 5;

QImage tile()
{
    QImage image(kTileWidth, kTileHeight, QImage::Format_RGB32);
    for (int y = 0; y < kTileHeight; ++y) {
        for (int x = 0; x < kTileWidth; ++x) {
            image.setPixel(x, y, qRgb(x * 30, y * 40, 77));
        }
    }
    return image;
}

} // namespace

class TestBackgroundWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tilesFromTheTopLeft();
    void partialPaintsFit();
    void nullMeansPlain();
    void childrenAreSpared();
    void childrenWithoutALayoutFit();
};

void TestBackgroundWidget::tilesFromTheTopLeft()
{
    BackgroundWidget widget;
    widget.resize(30, 23);
    widget.setBackgroundPixmap(QPixmap::fromImage(tile()));
    const QImage shown = widget.grab().toImage();
    QCOMPARE(shown.size(), QSize(30, 23));
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            QCOMPARE(shown.pixel(x, y), qRgb(x % kTileWidth * 30, y % kTileHeight * 40, 77));
        }
    }
}

void TestBackgroundWidget::partialPaintsFit()
{
    BackgroundWidget widget;
    widget.resize(30, 23);
    widget.setBackgroundPixmap(QPixmap::fromImage(tile()));
    const QRect part(4, 9, 17, 11);
    QCOMPARE(widget.grab(part).toImage(), widget.grab().toImage().copy(part));
}

void TestBackgroundWidget::nullMeansPlain()
{
    BackgroundWidget widget;
    widget.resize(10, 10);
    QPalette colours;
    colours.setColor(QPalette::Window, Qt::red);
    widget.setPalette(colours);
    widget.setBackgroundPixmap(QPixmap::fromImage(tile()));
    widget.setBackgroundPixmap(QPixmap());
    QCOMPARE(widget.grab().toImage().pixel(5, 5), qRgb(255, 0, 0));
}

void TestBackgroundWidget::childrenAreSpared()
{
    BackgroundWidget widget;
    widget.resize(40, 40);
    widget.setBackgroundPixmap(QPixmap::fromImage(tile()));
    QWidget child(&widget);
    child.setGeometry(10, 10, 20, 20);
    child.setAutoFillBackground(true);
    QPalette colours;
    colours.setColor(QPalette::Window, Qt::blue);
    child.setPalette(colours);
    const QImage shown = widget.grab().toImage();
    QCOMPARE(shown.pixel(15, 15), qRgb(0, 0, 255));
    QCOMPARE(shown.pixel(29, 29), qRgb(0, 0, 255));
    QCOMPARE(shown.pixel(35, 35), qRgb(0, 0, 77));
}

void TestBackgroundWidget::childrenWithoutALayoutFit()
{
    BackgroundWidget widget;
    QWidget child(&widget);
    child.setGeometry(30, 40, 100, 20);
    QCOMPARE(widget.minimumSizeHint(), QSize(130, 60));
}

LUMI_TEST(TestBackgroundWidget)
#include "TestBackgroundWidget.moc"
