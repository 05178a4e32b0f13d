// SPDX-License-Identifier: MIT
// The desktop's size must not change while a viewer writes lines of this width. The tests need two
// screens, which are fixed when the application starts, so TestHeldDesktop runs them in a process
// of their own.
#include "platform/QPEApplication.h"
#include "platform/screen/FrameBuffer.h"
#include "platform/screen/QDirectPainter.h"
#include "tests/platform/ownProcess.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>

using lumi::test::BareWindow;

namespace {

constexpr QSize kSmall(640, 480);
constexpr QSize kBig(800, 600);

constexpr char kScreens[] = R"({"screens": [
{"name": "small", "x": 0, "y": 0, "width": 640, "height": 480,
 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
{"name": "big", "x": 640, "y": 0, "width": 800, "height": 600,
 "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

QPEApplication *application()
{
    return qobject_cast<QPEApplication *>(QCoreApplication::instance());
}

/// The platform lists the screens in an order of its own.
QScreen *screenOf(QSize size)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto found = std::find_if(screens.begin(), screens.end(), [size](const QScreen *screen) {
        return screen->size() == size;
    });
    return found == screens.end() ? nullptr : *found;
}

/// A main widget on the screen of this size.
std::unique_ptr<QWidget> mainWidgetOn(QSize screenSize)
{
    auto widget = std::make_unique<QWidget>();
    widget->setScreen(screenOf(screenSize));
    widget->move(widget->screen()->geometry().topLeft() + QPoint(5, 5));
    application()->showMainWidget(widget.get(), true);
    return widget;
}

} // namespace

class TestHeldDesktop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inAProcessOfItsOwn();
};

void TestHeldDesktop::inAProcessOfItsOwn()
{
    const QTemporaryDir folder;
    QFile screens(folder.filePath(QStringLiteral("screens.json")));
    QVERIFY(screens.open(QIODevice::WriteOnly));
    QCOMPARE(screens.write(kScreens), qint64(std::strlen(kScreens)));
    screens.close();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                       QStringLiteral("offscreen:configfile=") + screens.fileName());
    const QString fault
        = lumi::test::faultOfOwnProcess(QStringLiteral("HeldDesktopProcess"), environment, 5);
    QVERIFY2(fault.isEmpty(), qPrintable(fault));
}

class HeldDesktopProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { lumi::test::FakeMachine::install(); }

    void cleanup() { Machine::install(nullptr); }

    void surfaceHoldsTheSize();
    void painterHoldsTheSize();
    void windowOnTheOtherScreen();
};

void HeldDesktopProcess::surfaceHoldsTheSize()
{
    const auto first = mainWidgetOn(kSmall);
    QCOMPARE(QPEApplication::desktopSize(), kSmall);
    BareWindow viewer(QRect(0, 0, 300, 200));
    QVERIFY(viewer.showNow());
    lumi::test::drawPattern(&viewer);
    const auto second = mainWidgetOn(kBig);
    QCOMPARE(QPEApplication::desktopSize(), kSmall);
    QCOMPARE(FrameBuffer::instance().desktopSize(), kSmall);
    lumi::test::drawPattern(&viewer);
    viewer.hide();
    QCOMPARE(QPEApplication::desktopSize(), kBig);
    QVERIFY(viewer.showNow());
    QDirectPainter painter(&viewer);
    QCOMPARE(painter.lineStep(), kBig.height() * 4);
}

void HeldDesktopProcess::painterHoldsTheSize()
{
    const auto first = mainWidgetOn(kSmall);
    BareWindow viewer(QRect(0, 0, 640, 480));
    {
        QDirectPainter painter(&viewer);
        const auto second = mainWidgetOn(kBig);
        QCOMPARE(painter.lineStep(), kSmall.height() * 4);
        uchar *bits = painter.frameBuffer();
        QVERIFY(bits != nullptr);
        QCOMPARE(painter.lineStep(), kSmall.height() * 4);
        std::memset(bits, 0, static_cast<std::size_t>(painter.lineStep() * kSmall.width()));
    }
    const auto third = mainWidgetOn(kBig);
    QCOMPARE(QPEApplication::desktopSize(), kBig);
}

// Positions are relative to the screen of the window.
void HeldDesktopProcess::windowOnTheOtherScreen()
{
    const auto main = mainWidgetOn(kBig);
    BareWindow viewer(QRect(640 + 37, 21, 200, 150));
    viewer.setScreen(screenOf(kBig));
    QVERIFY(viewer.showNow());
    QCOMPARE(viewer.mapToGlobal(QPoint()), QPoint(677, 21));
    const QDirectPainter painter(&viewer);
    QCOMPARE(painter.yOffset(), 37);
    QCOMPARE(painter.xOffset(), 600 - 21 - 150);
}

LUMI_TEST(TestHeldDesktop)
LUMI_TEST(HeldDesktopProcess)
#include "TestHeldDesktop.moc"
