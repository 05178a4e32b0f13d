// SPDX-License-Identifier: MIT
// The cycle of an automatic show, and what ends a show.
#include "platform/screen/FrameBuffer.h"
#include "platform/session/QCopChannel.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/Leftovers.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/slideOrder.h"

#include <QDataStream>
#include <QInputMethod>
#include <QTest>
#include <QTimer>

#include <cstdlib>

using lumi::test::kLong;
using lumi::test::ShowFixture;
using lumi::test::SlowPicture;

namespace {

constexpr int kDelay = 60;

int hides = 0; ///< of the keyboard on the screen

QStringList letters(const char *text)
{
    QStringList result;
    for (const char *c = text; *c != 0; ++c) {
        result.append(QString(QLatin1Char(*c)));
    }
    return result;
}

} // namespace

/// In the place of the toolkit's own: there is no keyboard on a screen here that could go.
void QInputMethod::hide()
{
    ++hides;
}

class TestSlideShow : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show.reset(new ShowFixture); }

    void cleanup() { m_show.reset(); }

    void playsFromTheCursorOnAndRound();
    void foldersAreNotPlayed();
    void randomOrderIsThatOfTheDice();
    void byHandTheOrderIsAlwaysTheFolders();
    void onePictureIsPlayedAgain_data();
    void onePictureIsPlayedAgain();
    void endsWhenTheRoundsAreDone_data();
    void endsWhenTheRoundsAreDone();
    void foreverHasNoEnd();
    void withoutPicturesItEndsAtOnce_data();
    void withoutPicturesItEndsAtOnce();
    void theFirstPictureIsDecodedInOnePiece();
    void decodesForTheWholeScreen();
    void theNextIsDecodedWhileOneIsShown();
    void aSlowDecodeKeepsThePictureUntilItIsDone();
    void aFastDecodeWaitsForTheDelay();
    void theFirstPictureComesAfterAMoment();
    void theBatteryEndsIt_data();
    void theBatteryEndsIt();
    void anotherApplicationEndsIt();
    void otherMessagesMeanNothing();
    void closingTheWindowEndsIt();
    void runsOnce();
    void theScreenSaverIsHeldOff();
    void theKeyboardOnTheScreenGoes();
    void coversTheScreenInBlack();
    void aDiedItemIsNoItem();
    void leavesNothingBehind();
    void slotsHaveTheirNames();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShow::playsFromTheCursorOnAndRound()
{
    m_show->addPictures(4);
    m_show->make({true, true, kLong, 0, 2});
    QCOMPARE(m_show->run([this] {
        QVERIFY(m_show->playsOn("dabcd"));
    }),
             0);
    QCOMPARE(m_show->seen(), letters("cdabcd"));
}

void TestSlideShow::foldersAreNotPlayed()
{
    m_show->addFolder(QStringLiteral("x"));
    m_show->addPictures(2);
    m_show->addFolder(QStringLiteral("y"));
    m_show->make({true, true, kLong, 0, 3});
    m_show->run([this] {
        QVERIFY(m_show->playsOn("ba"));
    });
    QCOMPARE(m_show->seen(), letters("aba"));
}

void TestSlideShow::randomOrderIsThatOfTheDice()
{
    m_show->addPictures(5);
    std::srand(11);
    QStringList expected;
    for (const int place : lumi::slideOrder(std::vector<bool>(5, true), 0, std::rand)) {
        expected.append(QString(QLatin1Char(char('a' + place))));
    }
    QVERIFY(expected != letters("abcde"));
    std::srand(11);
    m_show->make({true, false, kLong, 0, 0});
    m_show->run([&] {
        QVERIFY(m_show->playsOn(qPrintable(expected.mid(1).join(QString()))));
    });
    QCOMPARE(m_show->seen(), expected);
}

void TestSlideShow::byHandTheOrderIsAlwaysTheFolders()
{
    m_show->addPictures(4);
    std::srand(11);
    m_show->make({false, false, kLong, 0, 1});
    m_show->run([this] {
        for (const char *name : {"c", "d", "a", "b"}) {
            m_show->key(Qt::Key_Right);
            QVERIFY(m_show->sees(name));
        }
    });
}

void TestSlideShow::onePictureIsPlayedAgain_data()
{
    QTest::addColumn<int>("loops");
    QTest::newRow("one round") << 1;
    QTest::newRow("two rounds") << 2;
    QTest::newRow("three rounds") << 3;
}

void TestSlideShow::onePictureIsPlayedAgain()
{
    QFETCH(int, loops);
    const SlowPicture *only = m_show->add(QStringLiteral("a"));
    SlideShow *show = m_show->make({true, true, kDelay, loops, 0});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(m_show->run(), 0);
    // One decode ahead of each showing, and one more that nobody sees.
    QCOMPARE(only->completes, loops + 1);
    QVERIFY(timer.elapsed() >= loops * kDelay);
    QCOMPARE(show->lastItem(), only);
}

void TestSlideShow::endsWhenTheRoundsAreDone_data()
{
    QTest::addColumn<int>("loops");
    QTest::addColumn<QString>("seen");
    QTest::newRow("once") << 1 << "abc";
    QTest::newRow("twice") << 2 << "abcabc";
}

void TestSlideShow::endsWhenTheRoundsAreDone()
{
    QFETCH(int, loops);
    QFETCH(QString, seen);
    m_show->addPictures(3);
    m_show->make({true, true, kLong, loops, 0});
    QCOMPARE(m_show->run([this] {
        QVERIFY(m_show->playsToItsEnd());
    }),
             0);
    QCOMPARE(m_show->seen(), letters(qPrintable(seen)));
}

void TestSlideShow::foreverHasNoEnd()
{
    m_show->addPictures(2);
    m_show->make({true, true, kLong, 0, 0});
    bool isRunning = false;
    m_show->run([this, &isRunning] {
        QVERIFY(m_show->playsOn("babababababababababababa"));
        isRunning = !m_show->isOver();
    });
    QVERIFY(isRunning);
}

void TestSlideShow::withoutPicturesItEndsAtOnce_data()
{
    QTest::addColumn<int>("folders");
    QTest::newRow("nothing at all") << 0;
    QTest::newRow("folders only") << 3;
}

void TestSlideShow::withoutPicturesItEndsAtOnce()
{
    QFETCH(int, folders);
    for (int i = 0; i < folders; ++i) {
        m_show->addFolder(QString::number(i));
    }
    SlideShow *show = m_show->make({});
    bool ranEvents = false;
    QTimer::singleShot(0, show, [&ranEvents] {
        ranEvents = true;
    });
    QCOMPARE(show->exec(), 0);
    QVERIFY(!ranEvents);
    QVERIFY(!show->isVisible());
    QVERIFY(show->lastItem() == nullptr);
}

void TestSlideShow::theFirstPictureIsDecodedInOnePiece()
{
    m_show->addPictures(2);
    m_show->make({});
    QCOMPARE(m_show->picture("a")->completes, 1);
    QCOMPARE(m_show->picture("a")->startsInOnePiece, 1);
    QCOMPARE(m_show->picture("b")->starts, 0);
    m_show->run([this] {
        QVERIFY(m_show->playsOn("ba"));
    });
    // Only that once: later on the event loop must stay alive.
    QVERIFY(m_show->picture("a")->starts > 1);
    QCOMPARE(m_show->picture("a")->startsInOnePiece, 1);
    QCOMPARE(m_show->picture("b")->startsInOnePiece, 0);
}

void TestSlideShow::decodesForTheWholeScreen()
{
    m_show->addPictures(1);
    m_show->make({});
    QCOMPARE(m_show->picture("a")->lastRequest, QSize(640, 480));
}

void TestSlideShow::theNextIsDecodedWhileOneIsShown()
{
    m_show->addPictures(3);
    m_show->make({});
    m_show->run([this] {
        QTRY_COMPARE(m_show->picture("b")->completes, 1);
        QTest::qWait(50);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        QCOMPARE(m_show->picture("c")->starts, 0);
    });
}

void TestSlideShow::aSlowDecodeKeepsThePictureUntilItIsDone()
{
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({});
    m_show->run([this] {
        m_show->endDelay();
        QTRY_VERIFY(!m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->picture("b")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
    });
}

void TestSlideShow::aFastDecodeWaitsForTheDelay()
{
    m_show->addPictures(3);
    m_show->make({});
    m_show->run([this] {
        const QTimer *delay = m_show->timer("slideTimer");
        for (const char *name : {"b", "c"}) {
            QTRY_COMPARE(m_show->picture(name)->completes, 1);
            QVERIFY(m_show->shown() != QLatin1String(name));
            QVERIFY(delay->isActive());
            QCOMPARE(delay->interval(), kLong);
            m_show->endDelay();
            QVERIFY(m_show->sees(name));
        }
    });
}

void TestSlideShow::theFirstPictureComesAfterAMoment()
{
    m_show->addPictures(2);
    m_show->hurriesFirst = false;
    m_show->make({});
    const QTimer *first = m_show->timer("screenOutTimer");
    QStringList shown;
    connect(first, &QTimer::timeout, first, [this, &shown] {
        shown.append(m_show->shown());
    });
    QVERIFY(!first->isActive());
    m_show->run([first] {
        QCOMPARE(first->interval(), 100);
    });
    QCOMPARE(shown, letters("a"));
}

void TestSlideShow::theBatteryEndsIt_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<bool>("external");
    QTest::addColumn<bool>("ends");
    QTest::newRow("10 percent") << 10 << false << true;
    QTest::newRow("nothing left") << 0 << false << true;
    QTest::newRow("11 percent") << 11 << false << false;
    QTest::newRow("10 percent, but power from outside") << 10 << true << false;
}

void TestSlideShow::theBatteryEndsIt()
{
    QFETCH(int, percent);
    QFETCH(bool, external);
    QFETCH(bool, ends);
    m_show->addPictures(2);
    SlideShow *show = m_show->make({});
    bool stays = false;
    QCOMPARE(m_show->run([&] {
        m_show->machine->powerStatus
            = PowerStatus(external ? PowerStatus::Online : PowerStatus::Offline, percent);
        QTest::qWait(50);
        QVERIFY(show->isVisible()); // somebody has to tell
        ShowFixture::tell("batteryChanged()");
        stays = show->isVisible();
    }),
             0);
    QCOMPARE(stays, !ends);
}

void TestSlideShow::anotherApplicationEndsIt()
{
    m_show->addPictures(2);
    SlideShow *show = m_show->make({});
    bool stays = true;
    QCOMPARE(m_show->run([&] {
        ShowFixture::tell("appForeground(QString)");
        stays = show->isVisible();
    }),
             0);
    QVERIFY(!stays);
}

void TestSlideShow::otherMessagesMeanNothing()
{
    m_show->addPictures(2);
    m_show->machine->powerStatus = PowerStatus(PowerStatus::Offline, 3);
    SlideShow *show = m_show->make({});
    bool stays = false;
    m_show->run([&] {
        ShowFixture::tell("appForeground()");
        ShowFixture::tell("setScreenSaverMode(int)");
        QCopChannel::send("QPE/Card", "batteryChanged()");
        QCoreApplication::processEvents();
        stays = show->isVisible();
    });
    QVERIFY(stays);
}

void TestSlideShow::closingTheWindowEndsIt()
{
    m_show->addPictures(2);
    SlideShow *show = m_show->make({});
    QTimer::singleShot(300, show, &QWidget::close);
    QCOMPARE(m_show->run(), 0);
    QVERIFY(!show->isVisible());
    QCOMPARE(show->exitCode(), 0);
}

void TestSlideShow::runsOnce()
{
    m_show->addPictures(2);
    SlideShow *show = m_show->make({});
    m_show->run([] {});
    bool ranEvents = false;
    QTimer::singleShot(0, show, [&ranEvents] {
        ranEvents = true;
    });
    QCOMPARE(show->exec(), 0);
    QVERIFY(!ranEvents);
    QVERIFY(!show->isVisible());
}

void TestSlideShow::theScreenSaverIsHeldOff()
{
    m_show->addPictures(1);
    QCoreApplication::processEvents(); // what the last show has left
    QList<int> modes;
    QCopChannel channel("QPE/System");
    QObject::connect(&channel, &QCopChannel::received, &channel,
                     [&modes](const QByteArray &message, const QByteArray &data) {
                         if (message == "setScreenSaverMode(int)") {
                             int mode = -1;
                             QDataStream(data) >> mode;
                             modes.append(mode);
                         }
                     });
    m_show->make({});
    QCoreApplication::processEvents();
    QCOMPARE(modes, (QList<int>{0, 300}));
    m_show->run([] {});
    QCoreApplication::processEvents();
    QCOMPARE(modes.size(), 2);
    m_show->show.reset();
    QCoreApplication::processEvents();
    QCOMPARE(modes, (QList<int>{0, 300, 200}));
}

void TestSlideShow::theKeyboardOnTheScreenGoes()
{
    m_show->addPictures(1);
    hides = 0;
    m_show->make({});
    QCOMPARE(hides, 1);
}

void TestSlideShow::coversTheScreenInBlack()
{
    m_show->addPictures(1);
    SlideShow *show = m_show->make({});
    QVERIFY(show->isWindow());
    QCOMPARE(show->windowModality(), Qt::ApplicationModal);
    QCOMPARE(show->parentWidget(), &m_show->parent);
    QCOMPARE(show->palette().color(show->backgroundRole()), QColor(Qt::black));
    QCOMPARE(show->size(), QSize(640, 480));
    m_show->run([show] {
        QVERIFY(show->isFullScreen());
        QCOMPARE(show->geometry(), QRect(0, 0, 640, 480));
    });
}

void TestSlideShow::aDiedItemIsNoItem()
{
    m_show->addPictures(1);
    SlideShow *show = m_show->make({});
    m_show->run([] {});
    QVERIFY(show->lastItem() != nullptr);
    m_show->source.clear();
    QVERIFY(show->lastItem() == nullptr);
}

void TestSlideShow::leavesNothingBehind()
{
    constexpr int kOpenings = 500;
    // Odd numbers: of shows of both kinds.
    constexpr int kShown = 5;
    constexpr int kStories = 25;
    m_show->addPictures(2);
    int told = 0;
    lumi::test::leavesNothing(kOpenings, [&](int number) {
        m_show->make({number % 2 == 0, true, kLong, 0, 0});
        QVERIFY(QCopChannel::isRegistered("QPE/System"));
        if (number % kStories == 0) {
            m_show->run([this, &told] {
                m_show->key(Qt::Key_Right);
                QVERIFY(m_show->sees("b"));
                m_show->choose(0);
                ++told;
            });
        } else if (number % kShown == 0) {
            m_show->run([] {});
        } else {
            QTimer::singleShot(0, m_show->show.get(), &QWidget::close);
            m_show->show->exec();
        }
        m_show->show.reset();
        QVERIFY(!QCopChannel::isRegistered("QPE/System"));
        QVERIFY(!FrameBuffer::instance().isAllocated());
    });
    QCOMPARE(told, kOpenings / kStories);
    QVERIFY(m_show->parent.children().isEmpty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    for (const char *name : {"a", "b"}) {
        QVERIFY(!m_show->picture(name)->isDecoding());
        QVERIFY(m_show->picture(name)->rasterBits() == nullptr);
    }
}

void TestSlideShow::slotsHaveTheirNames()
{
    const QMetaObject &meta = SlideShow::staticMetaObject;
    for (const char *slot :
         {"slot_timeout()", "decodeComplete()", "ScreenOut()", "ScreenOutRedraw()",
          "ScreenOutPlayBack()", "systemChannel(QCString,QByteArray)"}) {
        QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    }
}

LUMI_TEST(TestSlideShow)
#include "TestSlideShow.moc"
