// SPDX-License-Identifier: MIT
// The cycle of an automatic show, and what ends a show.
#include "platform/FrameBuffer.h"
#include "platform/QCopChannel.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/Leftovers.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/slideOrder.h"

#include <QAbstractButton>
#include <QDataStream>
#include <QTest>
#include <QTimer>

#include <cstdlib>

using lumi::DecodeError;
using lumi::test::DelayLog;
using lumi::test::kLong;
using lumi::test::ShowFixture;
using lumi::test::ShowOptions;
using lumi::test::SlowPicture;

namespace {

constexpr int kDelay = 60;

QStringList letters(const char *text)
{
    QStringList result;
    for (const char *c = text; *c != 0; ++c) {
        result.append(QString(QLatin1Char(*c)));
    }
    return result;
}

} // namespace

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
    void decodingMakesNoPictureLate();
    void afterAVerySlowDecodeItGoesOnAtOnce();
    void aVanishedFileIsPassedOver();
    void aVanishedFileTakesNoTime();
    void severalVanishedFiles();
    void theFirstFileIsGone();
    void allFilesAreGone();
    void theLastFilesVanishWhileOneIsShown();
    void theLastOfARoundIsGone();
    void aBadPictureEndsIt_data();
    void aBadPictureEndsIt();
    void thePictureBeforeABadOneKeepsItsTime();
    void withNothingToLookAtAFailureIsToldSoon();
    void theFirstPictureComesAfterAMoment();
    void theBatteryEndsIt_data();
    void theBatteryEndsIt();
    void anotherApplicationEndsIt();
    void anotherApplicationEndsItInTheFailureBox();
    void otherMessagesMeanNothing();
    void closingTheWindowEndsIt();
    void runsOnce();
    void theScreenSaverIsHeldOff();
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

void TestSlideShow::decodingMakesNoPictureLate()
{
    constexpr int kShortDelay = 300;
    m_show->addPictures(3);
    for (const char *name : {"a", "b", "c"}) {
        m_show->picture(name)->decodeMs = kShortDelay / 3;
    }
    m_show->make({true, true, kShortDelay, 0, 0});
    const DelayLog log(*m_show);
    m_show->run([this] {
        QVERIFY(m_show->seesCount(6));
    });
    QCOMPARE(log.shown.mid(0, 5), letters("bcabc"));
    QCOMPARE(log.lengths.mid(0, 5), QList<int>(5, kShortDelay));
}

void TestSlideShow::afterAVerySlowDecodeItGoesOnAtOnce()
{
    constexpr int kShortDelay = 200;
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kShortDelay, 0, 0});
    m_show->run([this] {
        QTRY_VERIFY(m_show->picture("b")->isDecoding());
        QTest::qWait(2 * kShortDelay + 50);
        m_show->picture("b")->finish();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->timer("slideTimer")->interval(), 0);
        QVERIFY(m_show->sees("c"));
    });
}

void TestSlideShow::aVanishedFileIsPassedOver()
{
    m_show->addPictures(4);
    m_show->make({});
    m_show->run([this] {
        QVERIFY(m_show->removeFile("c"));
        QVERIFY(m_show->playsOn("bdabda"));
    });
    // It has left the folder's list too.
    QCOMPARE(m_show->source.count(), 3);
    QVERIFY(m_show->picture("c") == nullptr);
}

void TestSlideShow::aVanishedFileTakesNoTime()
{
    m_show->addPictures(3);
    m_show->make({});
    m_show->run([this] {
        const QTimer *delay = m_show->timer("slideTimer");
        QVERIFY(m_show->removeFile("c"));
        QTRY_COMPARE(m_show->picture("b")->completes, 1);
        m_show->show->slot_timeout();
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(delay->isActive());
        QCOMPARE(delay->interval(), 10);
        // The one after it is decoded ahead within the delay, as if there had never been a c.
        QTRY_COMPARE(m_show->picture("a")->completes, 2);
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(delay->isActive());
        QCOMPARE(delay->interval(), kLong);
        QVERIFY(m_show->playsOn("a"));
    });
}

void TestSlideShow::severalVanishedFiles()
{
    m_show->addPictures(6);
    m_show->make({});
    m_show->run([this] {
        for (const char *name : {"c", "d", "f"}) {
            QVERIFY(m_show->removeFile(name));
        }
        QVERIFY(m_show->playsOn("beab"));
    });
    QCOMPARE(m_show->source.count(), 3);
}

void TestSlideShow::theFirstFileIsGone()
{
    m_show->addPictures(3);
    QVERIFY(m_show->removeFile("a"));
    m_show->make({});
    m_show->run([this] {
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        // It has its whole time.
        QVERIFY(m_show->timer("slideTimer")->isActive());
        QCOMPARE(m_show->timer("slideTimer")->interval(), kLong);
        QVERIFY(m_show->playsOn("cbc"));
    });
}

void TestSlideShow::allFilesAreGone()
{
    m_show->addPictures(1);
    QVERIFY(m_show->removeFile("a"));
    SlideShow *show = m_show->make({});
    QCOMPARE(show->exec(), 0);
    QVERIFY(!show->isVisible());
    QVERIFY(m_show->source.isEmpty());
    QVERIFY(show->lastItem() == nullptr);
}

void TestSlideShow::theLastFilesVanishWhileOneIsShown()
{
    m_show->addPictures(2);
    m_show->make({});
    bool ended = false;
    QCOMPARE(m_show->run([this, &ended] {
        QVERIFY(m_show->removeFile("a"));
        QVERIFY(m_show->removeFile("b"));
        ended = m_show->playsToItsEnd();
    }),
             0);
    QVERIFY(ended);
    QVERIFY(m_show->source.isEmpty());
    QVERIFY(m_show->show->lastItem() == nullptr);
}

void TestSlideShow::theLastOfARoundIsGone()
{
    m_show->addPictures(3);
    QVERIFY(m_show->removeFile("c"));
    m_show->make({true, true, kLong, 2, 0});
    QCOMPARE(m_show->run([this] {
        QVERIFY(m_show->playsToItsEnd());
    }),
             0);
    QCOMPARE(m_show->seen(), letters("abab"));
}

void TestSlideShow::aBadPictureEndsIt_data()
{
    QTest::addColumn<QString>("bad");
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<bool>("inItsMiddle");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("last");
    const QString full = QStringLiteral("Memory full.\nProcessing cancelled");
    const QString other = QStringLiteral("You did not open this file");
    for (const bool autoMode : {true, false}) {
        const char *mode = autoMode ? "by itself" : "by hand";
        for (const bool middle : {false, true}) {
            const char *when = middle ? "in its middle" : "at its start";
            QTest::addRow("the first, no memory, %s, %s", mode, when)
                << "a" << autoMode << middle << 2 << full << "";
            QTest::addRow("the first, undecodable, %s, %s", mode, when)
                << "a" << autoMode << middle << 3 << other << "a";
            QTest::addRow("the second, no memory, %s, %s", mode, when)
                << "b" << autoMode << middle << 2 << full << "a";
            QTest::addRow("the second, undecodable, %s, %s", mode, when)
                << "b" << autoMode << middle << 3 << other << "b";
            QTest::addRow("the second, of a wrong depth, %s, %s", mode, when)
                << "b" << autoMode << middle << 0 << other << "b";
        }
    }
}

void TestSlideShow::aBadPictureEndsIt()
{
    QFETCH(QString, bad);
    QFETCH(bool, autoMode);
    QFETCH(bool, inItsMiddle);
    QFETCH(int, error);
    m_show->addPictures(3);
    SlowPicture *picture = m_show->picture(qPrintable(bad));
    (inItsMiddle ? picture->breaksOff : picture->refuses) = DecodeError(error);
    QString title;
    QString text;
    bool isParentless = false;
    SlideShow *show = m_show->make({autoMode, true, 80, 0, 0});
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, show, [&] {
        if (QMessageBox *box = ShowFixture::box()) {
            title = box->windowTitle();
            text = box->text();
            isParentless = box->parentWidget() == nullptr;
            box->button(QMessageBox::Ok)->click();
        }
    });
    reader.start(20);
    QTimer stepper; // a timer of its own: the box opens inside the key
    QObject::connect(&stepper, &QTimer::timeout, show, [&] {
        if (!autoMode && !m_show->shown().isEmpty()) {
            m_show->key(Qt::Key_Right);
        }
    });
    stepper.start(20);
    QCOMPARE(m_show->run(), 0);
    QCOMPARE(title, QStringLiteral("Error"));
    QTEST(text, "text");
    QVERIFY(isParentless);
    QTEST(m_show->shown(), "last");
    QVERIFY(!show->isVisible());
}

void TestSlideShow::thePictureBeforeABadOneKeepsItsTime()
{
    m_show->addPictures(2);
    m_show->picture("b")->refuses = DecodeError::Undecodable;
    m_show->make({});
    m_show->run([this] {
        QTimer *report = m_show->timer("redrawTimer");
        QVERIFY(report->isActive());
        QCOMPARE(report->interval(), kLong);
        const auto waitForIt = [this, report] {
            report->start(0);
            QVERIFY(m_show->ends());
        };
        ShowFixture::inBox(waitForIt, [] {
            ShowFixture::box()->button(QMessageBox::Ok)->click();
        });
        QVERIFY(m_show->isOver());
    });
}

void TestSlideShow::withNothingToLookAtAFailureIsToldSoon()
{
    m_show->addPictures(2);
    m_show->picture("a")->refuses = DecodeError::Undecodable;
    m_show->make({});
    QVERIFY(m_show->timer("redrawTimer")->isActive());
    QCOMPARE(m_show->timer("redrawTimer")->interval(), 10);
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

void TestSlideShow::anotherApplicationEndsItInTheFailureBox()
{
    m_show->addPictures(1);
    m_show->picture("a")->refuses = DecodeError::OutOfMemory;
    SlideShow *show = m_show->make({});
    QTimer::singleShot(300, show, [] {
        QTRY_VERIFY(ShowFixture::box() != nullptr);
        ShowFixture::tell("appForeground(QString)");
    });
    QCOMPARE(m_show->run(), 0);
    QVERIFY(ShowFixture::box() == nullptr);
    QVERIFY(!show->isVisible());
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
