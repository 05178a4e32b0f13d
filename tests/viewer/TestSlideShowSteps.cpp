// SPDX-License-Identifier: MIT
// The steps of the user: what they show and when, also in an automatic show.
#include "platform/touch/gestures.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"

#include <QCoreApplication>
#include <QTest>

using lumi::test::kLong;
using lumi::test::ShowFixture;

namespace {

constexpr QRgb kGround = 0xFFCEDFFF;

/// Whether the sign's ground is on the screen, just inside the bottom left of its frame.
bool hasSign(const ShowFixture &show, int left)
{
    return show.screen().pixel(left + 4, 479 - 4) == kGround;
}

bool hasNextSign(const ShowFixture &show)
{
    return hasSign(show, 580);
}

bool hasPreviousSign(const ShowFixture &show)
{
    return hasSign(show, 0);
}

/// Whether the show used the swipe.
bool swipe(const ShowFixture &show, lumi::SwipeEvent::Direction direction)
{
    lumi::SwipeEvent event(direction);
    QCoreApplication::sendEvent(show.show.get(), &event);
    return event.isAccepted();
}

} // namespace

class TestSlideShowSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void aManualShowOnlyFollowsKeys();
    void aManualShowFollowsSwipes();
    void anAutomaticShowIgnoresSwipes();
    void aManualShowCountsNoRounds();
    void aManualStepBackNeedsNoDecode();
    void theLastManualStepWins();
    void aStepShowsThePictureAheadAtOnce();
    void aStepToAPictureInDecodeShowsItWhenItIsDone();
    void anAutomaticShowGoesOnAfterAStep_data();
    void anAutomaticShowGoesOnAfterAStep();
    void stepsAddUp();
    void aSupersededDecodeDrawsNothing();
    void aStepBackShowsTheKeptRaster();
    void aStepBackFromTheFirstShowsTheLast();
    void stepsInTheLastRoundEndIt_data();
    void stepsInTheLastRoundEndIt();
    void theSignStandsUntilThePictureComes_data();
    void theSignStandsUntilThePictureComes();
    void aNewSignReplacesTheOld();
    void theSignIsGoneAfterAStepBack();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowSteps::aManualShowOnlyFollowsKeys()
{
    m_show->addPictures(3);
    m_show->make({false, true, 20, 1, 0});
    m_show->run([this] {
        QVERIFY(!m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->picture("b")->starts, 0);
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QVERIFY(!m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->picture("c")->starts, 0);
        QVERIFY(!m_show->isOver());
    });
}

void TestSlideShowSteps::aManualShowFollowsSwipes()
{
    m_show->addPictures(3);
    m_show->make({false, true, 20, 1, 0});
    m_show->run([this] {
        QVERIFY(swipe(*m_show, lumi::SwipeEvent::Left));
        QVERIFY(m_show->sees("b"));
        QVERIFY(swipe(*m_show, lumi::SwipeEvent::Up));
        QVERIFY(m_show->sees("c"));
        QVERIFY(swipe(*m_show, lumi::SwipeEvent::Right));
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowSteps::anAutomaticShowIgnoresSwipes()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 1, 0});
    m_show->run([this] {
        QVERIFY(!swipe(*m_show, lumi::SwipeEvent::Left));
        QVERIFY(!swipe(*m_show, lumi::SwipeEvent::Right));
        QVERIFY(m_show->playsOn("bc"));
        QCOMPARE(m_show->seen().join(QString()), QStringLiteral("abc"));
    });
}

void TestSlideShowSteps::aManualShowCountsNoRounds()
{
    m_show->addPictures(2);
    m_show->make({false, true, 20, 1, 0});
    bool isRunning = false;
    m_show->run([&] {
        for (const char *name : {"b", "a", "b", "a"}) {
            m_show->key(Qt::Key_Right);
            QVERIFY(m_show->sees(name));
        }
        isRunning = m_show->show->isVisible();
    });
    QVERIFY(isRunning);
}

void TestSlideShowSteps::aManualStepBackNeedsNoDecode()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QCOMPARE(m_show->picture("a")->starts, 1);
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("a"));
        QCOMPARE(m_show->picture("a")->starts, 1);
        QCOMPARE(m_show->screen().pixelColor(320, 240), QColor(40, 250, 100));
        // Only one previous raster is kept.
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QCOMPARE(m_show->picture("b")->starts, 2);
    });
}

void TestSlideShowSteps::theLastManualStepWins()
{
    m_show->addPictures(4);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        for (const char *name : {"b", "c"}) {
            m_show->picture(name)->decodeMs = -1;
        }
        m_show->key(Qt::Key_Right);
        m_show->key(Qt::Key_Right);
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("d"));
        QVERIFY(!m_show->picture("b")->isDecoding());
        QVERIFY(!m_show->picture("c")->isDecoding());
    });
    QCOMPARE(m_show->seen(), (QStringList{QStringLiteral("a"), QStringLiteral("d")}));
}

void TestSlideShowSteps::aStepShowsThePictureAheadAtOnce()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        QTRY_COMPARE(m_show->picture("b")->completes, 1);
        m_show->key(Qt::Key_Right);
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QCOMPARE(m_show->picture("b")->starts, 1);
    });
}

void TestSlideShowSteps::aStepToAPictureInDecodeShowsItWhenItIsDone()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        QTRY_VERIFY(m_show->picture("b")->isDecoding());
        m_show->key(Qt::Key_Right);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->picture("b")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
    });
}

void TestSlideShowSteps::anAutomaticShowGoesOnAfterAStep_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("then");
    QTest::newRow("on") << int(Qt::Key_Right) << "b"
                        << "cda";
    QTest::newRow("back") << int(Qt::Key_Left) << "d"
                          << "abc";
}

void TestSlideShowSteps::anAutomaticShowGoesOnAfterAStep()
{
    QFETCH(int, key);
    QFETCH(QString, asked);
    QFETCH(QString, then);
    m_show->addPictures(4);
    m_show->make({});
    m_show->run([&] {
        m_show->key(key);
        QVERIFY(m_show->sees(qPrintable(asked)));
        // The picture asked for has its whole time.
        QVERIFY(m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->timer("slideTimer")->interval(), kLong);
        QVERIFY(m_show->playsOn(qPrintable(then)));
    });
    QCOMPARE(m_show->seen().join(QString()), QString(QLatin1Char('a') + asked + then));
}

void TestSlideShowSteps::stepsAddUp()
{
    m_show->addPictures(6);
    for (const char *name : {"b", "c", "d", "e", "f"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({});
    m_show->run([this] {
        for (const int key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left,
                              Qt::Key_Right, Qt::Key_Right}) {
            m_show->key(key);
        }
        QVERIFY(m_show->picture("e")->isDecoding());
        m_show->picture("e")->finish();
        QVERIFY(m_show->sees("e"));
    });
    QCOMPARE(m_show->seen(), (QStringList{QStringLiteral("a"), QStringLiteral("e")}));
}

void TestSlideShowSteps::aSupersededDecodeDrawsNothing()
{
    m_show->addPictures(4);
    for (const char *name : {"b", "c"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({});
    m_show->run([this] {
        m_show->key(Qt::Key_Right); // b, which is being decoded
        m_show->key(Qt::Key_Right); // c instead
        QVERIFY(!m_show->picture("b")->isDecoding());
        m_show->picture("b")->finish();
        QVERIFY(!m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->picture("c")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("c"));
        QVERIFY(m_show->playsOn("d"));
    });
    QVERIFY(!m_show->seen().contains(QStringLiteral("b")));
}

void TestSlideShowSteps::aStepBackShowsTheKeptRaster()
{
    m_show->addPictures(3);
    m_show->make({});
    m_show->run([this] {
        QVERIFY(m_show->playsOn("b"));
        const int starts = m_show->picture("a")->starts;
        m_show->key(Qt::Key_Left);
        QCOMPARE(m_show->timer("playBackTimer")->interval(), 1);
        QVERIFY(m_show->sees("a"));
        QCOMPARE(m_show->picture("a")->starts, starts);
        QCOMPARE(m_show->screen().pixelColor(320, 240), QColor(40, 250, 100));
        // No remains of the other picture or of the sign.
        QCOMPARE(m_show->screen().pixelColor(2, 2), QColor(40, 250, 100));
        QVERIFY(!hasPreviousSign(*m_show));
        QVERIFY(m_show->playsOn("bc"));
    });
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("ababc"));
}

void TestSlideShowSteps::aStepBackFromTheFirstShowsTheLast()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("c"));
        // The one before is a, but what lies before c is b.
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowSteps::stepsInTheLastRoundEndIt_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("on") << int(Qt::Key_Right);
    QTest::newRow("back") << int(Qt::Key_Left);
}

void TestSlideShowSteps::stepsInTheLastRoundEndIt()
{
    QFETCH(int, key);
    m_show->addPictures(2);
    m_show->make({true, true, kLong, 1, 0});
    bool ended = false;
    QCOMPARE(m_show->run([&] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        m_show->key(key);
        ended = !m_show->show->isVisible();
    }),
             0);
    QVERIFY(ended);
    QCOMPARE(m_show->shown(), QStringLiteral("b"));
}

void TestSlideShowSteps::theSignStandsUntilThePictureComes_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("depth");
    QTest::newRow("automatic, next, 16 bits") << true << int(Qt::Key_Right) << 16;
    QTest::newRow("automatic, previous, 32 bits") << true << int(Qt::Key_Left) << 32;
    QTest::newRow("manual, next, 32 bits") << false << int(Qt::Key_Right) << 32;
}

void TestSlideShowSteps::theSignStandsUntilThePictureComes()
{
    QFETCH(bool, autoMode);
    QFETCH(int, key);
    QFETCH(int, depth);
    m_show->machine->depth = depth;
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([this, key] {
        QVERIFY(!hasNextSign(*m_show) && !hasPreviousSign(*m_show));
        m_show->key(key);
        QCOMPARE(hasNextSign(*m_show), key == Qt::Key_Right);
        QCOMPARE(hasPreviousSign(*m_show), key == Qt::Key_Left);
        m_show->picture("b")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(!hasNextSign(*m_show) && !hasPreviousSign(*m_show));
    });
}

void TestSlideShowSteps::aNewSignReplacesTheOld()
{
    m_show->addPictures(3);
    for (const char *name : {"a", "b", "c"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        const QImage plain = m_show->screen();
        m_show->key(Qt::Key_Right);
        QVERIFY(hasNextSign(*m_show));
        m_show->key(Qt::Key_Left);
        QVERIFY(!hasNextSign(*m_show));
        QVERIFY(hasPreviousSign(*m_show));
        // The triangle points to the left.
        QImage screen = m_show->screen();
        QVERIFY(screen.pixel(10, 450) != kGround);
        QCOMPARE(screen.pixel(10, 430), kGround);
        QVERIFY(screen.pixel(26, 438) != kGround);
        m_show->key(Qt::Key_Right);
        screen = m_show->screen();
        QVERIFY(screen.pixel(639 - 10, 450) != kGround);
        QCOMPARE(screen.pixel(639 - 10, 430), kGround);
        QCOMPARE(screen.copy(0, 0, 640, 420), plain.copy(0, 0, 640, 420));
    });
}

void TestSlideShowSteps::theSignIsGoneAfterAStepBack()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("a"));
        QVERIFY(!hasPreviousSign(*m_show));
        QCOMPARE(m_show->screen().pixelColor(4, 4), QColor(40, 250, 100));
    });
}

LUMI_TEST(TestSlideShowSteps)
#include "TestSlideShowSteps.moc"
