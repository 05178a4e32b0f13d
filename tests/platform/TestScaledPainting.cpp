// SPDX-License-Identifier: MIT
// Direct painting on a screen with a device pixel ratio above 1. The ratio is fixed when the
// application starts, so TestScaledPainting runs ScaledPaintingProcess in a process for each ratio.
#include "platform/QPEApplication.h"
#include "platform/screen/FrameBuffer.h"
#include "platform/screen/QWSRegionManager.h"
#include "tests/platform/ownProcess.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using lumi::test::BareWindow;
using lumi::test::drawWith;
using lumi::test::FakeMachine;
using lumi::test::shownPixel;

namespace {

/// Smooth scaling mixes adjacent pixels. So the pattern has tiles, and only their middle is
/// checked.
constexpr int kTile = 8;

quint32 tilePixel(int x, int y, int depth)
{
    return lumi::test::patternPixel(x / kTile * 13, y / kTile * 9, depth);
}

/// Each painted part is sampled on its own, so its rounding may differ.
constexpr int kRounding = 2;

int greatestDifference(const QImage &one, const QImage &other)
{
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(a) - qRed(b)),
                                 std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return greatest;
}

} // namespace

class TestScaledPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inAProcessOfItsOwn_data();
    void inAProcessOfItsOwn();
};

void TestScaledPainting::inAProcessOfItsOwn_data()
{
    QTest::addColumn<QString>("factor");
    QTest::newRow("twice as many pixels") << QStringLiteral("2");
    QTest::newRow("half as many again") << QStringLiteral("1.5");
    QTest::newRow("an odd height") << QStringLiteral("1.28");
}

void TestScaledPainting::inAProcessOfItsOwn()
{
    QFETCH(QString, factor);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), factor);
    environment.insert(QStringLiteral("QT_SCALE_FACTOR_ROUNDING_POLICY"),
                       QStringLiteral("PassThrough"));
    const QString fault
        = lumi::test::faultOfOwnProcess(QStringLiteral("ScaledPaintingProcess"), environment, 8);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

class ScaledPaintingProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void desktopIsInLogicalPixels();
    void lineStepIsWholeWords();
    void tiles_data();
    void tiles();
    void partialRepaintsLeaveNoSeam();
    void regionIsInLogicalPixels();

private:
    FakeMachine *m_machine = nullptr;
    double m_factor = 0;
};

void ScaledPaintingProcess::init()
{
    m_machine = FakeMachine::install();
    m_factor = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble();
    QVERIFY(m_factor > 1);
    QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), m_factor);
}

void ScaledPaintingProcess::cleanup()
{
    QVERIFY(!FrameBuffer::instance().isAllocated());
    Machine::install(nullptr);
}

void ScaledPaintingProcess::desktopIsInLogicalPixels()
{
    const QSize desktop = FrameBuffer::instance().desktopSize();
    QCOMPARE(desktop, QPEApplication::desktopSize());
    QCOMPARE(desktop.width(), qRound(640 / m_factor));
    QCOMPARE(desktop.height(), qRound(480 / m_factor));
}

void ScaledPaintingProcess::lineStepIsWholeWords()
{
    m_machine->depth = 16;
    const int pixels = FrameBuffer::instance().desktopSize().height();
    QCOMPARE(FrameBuffer::instance().lineStep(), pixels % 2 == 0 ? pixels * 2 : pixels * 2 + 2);
    BareWindow top(QRect(0, 0, 50, 50));
    QVERIFY(top.showNow());
    QDirectPainter painter(&top);
    const uchar *bits = painter.frameBuffer();
    QVERIFY(bits != nullptr);
    QCOMPARE(painter.lineStep(), pixels % 2 == 0 ? pixels * 2 : pixels * 2 + 2);
}

void ScaledPaintingProcess::tiles_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("16 bits") << 16;
    QTest::newRow("32 bits") << 32;
}

void ScaledPaintingProcess::tiles()
{
    QFETCH(int, depth);
    m_machine->depth = depth;
    BareWindow top(QRect(16, 24, 240, 160));
    QWidget child(&top);
    child.setGeometry(24, 8, 160, 120);
    QVERIFY(top.showNow());
    {
        QDirectPainter painter(&child);
        QCOMPARE(painter.yOffset(), 40);
        QCOMPARE(painter.xOffset(), QPEApplication::desktopSize().height() - 32 - 120);
        drawWith(painter, [depth](int x, int y) {
            return tilePixel(x, y, depth);
        });
    }
    const QImage shown = child.grab().toImage();
    QCOMPARE(shown.width(), int(std::ceil(160 * m_factor)));
    for (int y = kTile / 2; y < 120; y += kTile) {
        for (int x = kTile / 2; x < 160; x += kTile) {
            QCOMPARE(shownPixel(shown, int(x * m_factor), int(y * m_factor), depth),
                     tilePixel(x, y, depth));
        }
    }
}

void ScaledPaintingProcess::partialRepaintsLeaveNoSeam()
{
    BareWindow top(QRect(16, 24, 240, 160));
    QVERIFY(top.showNow());
    {
        QDirectPainter painter(&top);
        drawWith(painter, [](int x, int y) {
            return lumi::test::patternPixel(x, y, 32);
        });
    }
    const QImage before = lumi::test::screenShot();
    top.repaint(QRect(13, 17, 31, 23));
    top.repaint(QRegion(QRect(101, 33, 7, 91)) + QRect(60, 70, 77, 9));
    const QImage after = lumi::test::screenShot();
    QCOMPARE(after.size(), before.size());
    QVERIFY(greatestDifference(before, after) <= kRounding);
}

void ScaledPaintingProcess::regionIsInLogicalPixels()
{
    BareWindow top(QRect(16, 24, 200, 100));
    QVERIFY(top.showNow());
    const int rows = QPEApplication::desktopSize().height();
    QCOMPARE(qt_fbdpy->regionManager()->region(&top), QRegion(rows - 124, 16, 100, 200));
}

LUMI_TEST(TestScaledPainting)
LUMI_TEST(ScaledPaintingProcess)
#include "TestScaledPainting.moc"
