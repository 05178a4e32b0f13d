// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"
#include "platform/Resource.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QImage>
#include <QScreen>
#include <QTest>

class TestWideScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void cleanup() { Machine::install(nullptr); }

    void theMainWindowStaysAsBigAsThePanel();
    void theDesktopCountsInLogicalPixels();
    void picturesAreTheDenseOnes();
    void aPictureWithoutADenseOneIsTheOther();
};

void TestWideScreen::initTestCase()
{
    QVERIFY2(QGuiApplication::primaryScreen()->size().width() > 800, "needs the wide screen");
}

void TestWideScreen::theMainWindowStaysAsBigAsThePanel()
{
    QWidget window;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, false);
    QVERIFY(window.isVisible());
    QVERIFY(!window.isMaximized());
    QCOMPARE(window.size(), QSize(640, 480));
}

void TestWideScreen::theDesktopCountsInLogicalPixels()
{
    QCOMPARE(QPEApplication::desktopSize(), QGuiApplication::primaryScreen()->size());
    QCOMPARE(qGuiApp->devicePixelRatio(), 2.0);
}

void TestWideScreen::picturesAreTheDenseOnes()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->resources = machine->folder.path();
    QVERIFY(QDir().mkpath(machine->resources + QStringLiteral("/pixmaps")));
    const QString stem = machine->resources + QStringLiteral("/pixmaps/x");
    QVERIFY(QImage(5, 7, QImage::Format_RGB32).save(stem + QStringLiteral(".png")));
    QVERIFY(QImage(10, 14, QImage::Format_RGB32).save(stem + QStringLiteral("@2x.png")));
    const QPixmap pixmap = Resource::loadPixmap(QStringLiteral("x"));
    QCOMPARE(pixmap.size(), QSize(10, 14));
    QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(5, 7));
}

void TestWideScreen::aPictureWithoutADenseOneIsTheOther()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->resources = machine->folder.path();
    QVERIFY(QDir().mkpath(machine->resources + QStringLiteral("/pixmaps")));
    const QString stem = machine->resources + QStringLiteral("/pixmaps/x");
    QVERIFY(QImage(5, 7, QImage::Format_RGB32).save(stem + QStringLiteral(".png")));
    QCOMPARE(Resource::loadPixmap(QStringLiteral("x")).deviceIndependentSize(), QSizeF(5, 7));
}

LUMI_TEST(TestWideScreen)
#include "TestWideScreen.moc"
