// SPDX-License-Identifier: MIT
// The steps of the user: what they show and when, and how they go with the automatic play.
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"

#include <QTest>

using lumi::test::kLong;
using lumi::test::ShowFixture;

namespace {

constexpr QRgb kGround = 0xFFCEDFFF;

/// On the screen: the ground of the sign just inside its frame, at the bottom left of it.
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

} // namespace

class TestSlideShowSteps : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show.reset(new ShowFixture); }

    void cleanup() { m_show.reset(); }

    void byHandNothingGoesByItself();
    void byHandPicturesGoRoundForEver();
    void byHandBackIsShownWithoutADecode();
    void byHandBackOverTheStart();
    void byHandTheLastKeyWins();
    void byHandOnlyPicturesAskedForAreDecoded();
    void aStepShowsThePictureAheadAtOnce();
    void aStepToAPictureInDecodeShowsItWhenItIsDone();
    void afterAStepThePlayGoesOn_data();
    void afterAStepThePlayGoesOn();
    void stepsAddUp();
    void aSupersededDecodeDrawsNothing();
    void backShowsTheLastPictureAgain();
    void backOverTheStart();
    void stepsInTheLastRoundEndIt_data();
    void stepsInTheLastRoundEndIt();
    void aStepTakesNoRoundAway();
    void aRoundBackIsPlayedAgain();
    void aRoundBackCountsAsNone();
    void theSignStandsUntilThePictureComes_data();
    void theSignStandsUntilThePictureComes();
    void theSignsTakeTurns();
    void theSignIsGoneAfterTheLastPictureCame();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowSteps::byHandNothingGoesByItself()
{
    m_show->addPictures(3);
    m_show->make({false, true, 20, 1, 0});
    m_show->run([this] {
        QVERIFY(!m_show->timer("slideTimer")->isActive());
        QTest::qWait(100);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QTest::qWait(100);
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(!m_show->isOver());
    });
}

void TestSlideShowSteps::byHandPicturesGoRoundForEver()
{
    m_show->addPictures(2);
    m_show->make({false, true, 20, 1, 0});
    bool isRunning = false;
    m_show->run([&] {
        for (int i = 0; i < 5; ++i) {
            m_show->key(Qt::Key_Right);
            QVERIFY(m_show->sees("b"));
            m_show->key(Qt::Key_Right);
            QVERIFY(m_show->sees("a"));
        }
        isRunning = m_show->show->isVisible();
    });
    QVERIFY(isRunning);
}

void TestSlideShowSteps::byHandBackIsShownWithoutADecode()
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
        // Only the last one is kept.
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QCOMPARE(m_show->picture("b")->starts, 2);
    });
}

void TestSlideShowSteps::byHandBackOverTheStart()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        for (const char *name : {"c", "b", "a", "c"}) {
            m_show->key(Qt::Key_Left);
            QVERIFY(m_show->sees(name));
        }
    });
}

void TestSlideShowSteps::byHandTheLastKeyWins()
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

void TestSlideShowSteps::byHandOnlyPicturesAskedForAreDecoded()
{
    m_show->addPictures(2);
    m_show->make({false, true, 20, 0, 0});
    m_show->run([this] {
        QTest::qWait(100);
        QCOMPARE(m_show->picture("b")->starts, 0);
    });
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
        QTest::qWait(50);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->picture("b")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
    });
}

void TestSlideShowSteps::afterAStepThePlayGoesOn_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("then");
    QTest::newRow("on") << int(Qt::Key_Right) << "b"
                        << "cda";
    QTest::newRow("back") << int(Qt::Key_Left) << "d"
                          << "abc";
}

void TestSlideShowSteps::afterAStepThePlayGoesOn()
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

void TestSlideShowSteps::backShowsTheLastPictureAgain()
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

void TestSlideShowSteps::backOverTheStart()
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

void TestSlideShowSteps::aStepTakesNoRoundAway()
{
    m_show->addPictures(2);
    m_show->make({true, true, kLong, 2, 0});
    m_show->run([this] {
        QVERIFY(m_show->playsOn("b"));
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->playsToItsEnd());
    });
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("abab"));
}

void TestSlideShowSteps::aRoundBackIsPlayedAgain()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 2, 0});
    m_show->run([this] {
        QVERIFY(m_show->playsOn("bca"));
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("c"));
        QVERIFY(m_show->playsToItsEnd());
    });
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("abcacabc"));
}

void TestSlideShowSteps::aRoundBackCountsAsNone()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 1, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("c"));
        QVERIFY(m_show->playsToItsEnd());
    });
    // From the last picture of the round before the show would have four to go.
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("ac"));
}

void TestSlideShowSteps::theSignStandsUntilThePictureComes_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("depth");
    for (const int depth : {16, 32}) {
        QTest::addRow("by itself, on, %d bits", depth) << true << int(Qt::Key_Right) << depth;
        QTest::addRow("by itself, back, %d bits", depth) << true << int(Qt::Key_Left) << depth;
        QTest::addRow("by hand, on, %d bits", depth) << false << int(Qt::Key_Right) << depth;
        QTest::addRow("by hand, back, %d bits", depth) << false << int(Qt::Key_Left) << depth;
    }
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

void TestSlideShowSteps::theSignsTakeTurns()
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

void TestSlideShowSteps::theSignIsGoneAfterTheLastPictureCame()
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
