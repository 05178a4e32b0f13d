// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QElapsedTimer>
#include <QIcon>
#include <QImage>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

namespace {

class Canvas : public QWidget
{
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

/// The window once its size no longer changes.
QSize finalSize(const QWidget &widget)
{
    QTest::qWait(50);
    return widget.size();
}

/// The frame of the window may be a little smaller or larger.
bool fillsTheScreen(const QWidget &window)
{
    const QSize left = window.screen()->size() - window.frameSize();
    return qAbs(left.width()) <= 10 && qAbs(left.height()) <= 10;
}

} // namespace

class TestQPEApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void cleanup() { Machine::install(nullptr); }

    void boxesAndMenusAreOurOwn();
    void theKeyboardIsTheMachines();
    void theMainWindowFillsASmallScreen();
    void theMainWindowMayStaySmall();
    void theMainWindowHasTheProgramsIcon();
    void theDesktopIsTheScreen();
    void aWindowIsPaintedBeforeWorkBegins();
    void waitingForAHiddenWindowReturnsAtOnce();
    void aMaximizedWindowHasItsSizeAtOnce();
    void aFullScreenWindowHasItsSizeAtOnce();
    void aWindowMayDieWhileItSettles();
};

void TestQPEApplication::boxesAndMenusAreOurOwn()
{
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    QVERIFY(QCoreApplication::testAttribute(Qt::AA_DontUseNativeMenuBar));
    QVERIFY(qobject_cast<QPEApplication *>(qApp) != nullptr);
}

void TestQPEApplication::theKeyboardIsTheMachines()
{
    auto *machine = lumi::test::FakeMachine::install();
    auto *app = qobject_cast<QPEApplication *>(qApp);
    QCOMPARE(app->keyDevice(), 0);
    machine->keyboard = 1;
    QCOMPARE(app->keyDevice(), 1);
}

void TestQPEApplication::theMainWindowFillsASmallScreen()
{
    QCOMPARE(QGuiApplication::primaryScreen()->size(), QSize(640, 480));
    Canvas window;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, false);
    QVERIFY(window.isVisible());
    QVERIFY(window.isMaximized());
    QTRY_VERIFY(fillsTheScreen(window));
}

void TestQPEApplication::theMainWindowMayStaySmall()
{
    Canvas window;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QVERIFY(window.isVisible());
    QVERIFY(!window.isMaximized());
    QCOMPARE(finalSize(window), QSize(640, 480));
}

void TestQPEApplication::theMainWindowHasTheProgramsIcon()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->resources = machine->folder.path();
    const QString pixmaps = machine->resources + QStringLiteral("/pixmaps/lumivault");
    QVERIFY(QDir().mkpath(pixmaps));
    QImage icon(16, 16, QImage::Format_RGB32);
    icon.fill(Qt::red);
    QVERIFY(icon.save(pixmaps + QStringLiteral("/lumivault.png")));
    QWidget window;
    QVERIFY(window.windowIcon().isNull());
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QCOMPARE(window.windowIcon().pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
}

void TestQPEApplication::theDesktopIsTheScreen()
{
    QCOMPARE(QPEApplication::desktopSize(), QSize(640, 480));
    Canvas window;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QCOMPARE(QPEApplication::desktopSize(), window.screen()->size());
}

void TestQPEApplication::aWindowIsPaintedBeforeWorkBegins()
{
    Canvas window;
    window.show();
    QPEApplication::waitPainted(&window, 1000);
    QVERIFY(window.paints > 0);
    QVERIFY(window.windowHandle() != nullptr);
    // For a child widget, this waits for its window.
    Canvas outer;
    auto *inner = new Canvas;
    QVBoxLayout(&outer).addWidget(inner);
    outer.show();
    QPEApplication::waitPainted(inner, 1000);
    QVERIFY(inner->paints > 0);
}

void TestQPEApplication::waitingForAHiddenWindowReturnsAtOnce()
{
    Canvas window;
    QElapsedTimer timer;
    timer.start();
    QPEApplication::waitPainted(&window, 5000);
    QVERIFY(timer.elapsed() < 2500);
    QCOMPARE(window.paints, 0);
}

void TestQPEApplication::aMaximizedWindowHasItsSizeAtOnce()
{
    Canvas window;
    auto *inner = new QWidget;
    auto *column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(inner);
    QPEApplication::showMaximizedNow(&window);
    QVERIFY(window.isMaximized());
    const QSize size = inner->size();
    QCOMPARE(size, window.size());
    QCOMPARE(finalSize(*inner), size);
    QVERIFY(fillsTheScreen(window));
}

void TestQPEApplication::aFullScreenWindowHasItsSizeAtOnce()
{
    Canvas window;
    QPEApplication::showFullScreenNow(&window);
    QVERIFY(window.isFullScreen());
    QCOMPARE(window.size(), QSize(640, 480));
    QCOMPARE(finalSize(window), QSize(640, 480));
}

void TestQPEApplication::aWindowMayDieWhileItSettles()
{
    auto *window = new Canvas;
    const QPointer<QWidget> alive(window);
    QTimer::singleShot(0, window, [window] {
        delete window;
    });
    QPEApplication::showMaximizedNow(window);
    QVERIFY(alive.isNull());
    window = new Canvas;
    window->show();
    QTimer::singleShot(0, window, [window] {
        delete window;
    });
    QPEApplication::waitPainted(window, 100);
}

LUMI_TEST(TestQPEApplication)
#include "TestQPEApplication.moc"
