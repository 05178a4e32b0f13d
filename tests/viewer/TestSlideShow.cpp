// SPDX-License-Identifier: MIT
// The cycle of an automatic show, and what ends a show.
#include "platform/session/QCopChannel.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"

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

/// Replaces the toolkit's function: the test platform has no on-screen keyboard.
void QInputMethod::hide()
{
    ++hides;
}

class TestSlideShow : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void playsFromTheCursorOnAndRound();
    void randomOrderComesFromRand();
    void manualShowsIgnoreTheRandomOrder();
    void onePictureIsPlayedAgain_data();
    void onePictureIsPlayedAgain();
    void endsWhenTheRoundsAreDone_data();
    void endsWhenTheRoundsAreDone();
    void withoutPicturesItEndsAtOnce_data();
    void withoutPicturesItEndsAtOnce();
    void theFirstPictureIsDecodedInOnePiece();
    void decodesAtTheSizeOfTheScreen();
    void theNextIsDecodedWhileOneIsShown();
    void aSlowDecodeKeepsThePictureUntilItIsDone();
    void aFastDecodeWaitsForTheDelay();
    void theFirstPictureIsDrawnAfter100Ms();
    void theBatteryEndsIt_data();
    void theBatteryEndsIt();
    void anotherApplicationEndsIt();
    void otherMessagesAreIgnored();
    void closingTheWindowEndsIt();
    void aShowThatEndedDoesNotRunAgain();
    void theScreenSaverIsOffDuringAShow();
    void theInputMethodIsHidden();
    void coversTheScreenInBlack();
    void aDeletedItemIsNotTheLastItem();
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

void TestSlideShow::randomOrderComesFromRand()
{
    m_show->addPictures(5);
    std::srand(11);
    QStringList expected;
    for (lumi::SlideCycle cycle(m_show->source, 0, 0, std::rand); expected.size() < 5;
         cycle.goOn()) {
        expected.append(cycle.present()->fileName());
    }
    QVERIFY(expected != letters("abcde"));
    std::srand(11);
    m_show->make({true, false, kLong, 0, 0});
    m_show->run([&] {
        QVERIFY(m_show->playsOn(qPrintable(expected.mid(1).join(QString()))));
    });
    QCOMPARE(m_show->seen(), expected);
}

void TestSlideShow::manualShowsIgnoreTheRandomOrder()
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
}

void TestSlideShow::onePictureIsPlayedAgain()
{
    QFETCH(int, loops);
    const SlowPicture *only = m_show->add(QStringLiteral("a"));
    SlideShow *show = m_show->make({true, true, kDelay, loops, 0});
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(m_show->run(), 0);
    // One decode for each time it is shown, and one ahead that is not shown.
    QCOMPARE(only->completes, loops + 1);
    QVERIFY(timer.elapsed() >= loops * kDelay);
    QCOMPARE(show->lastItem(), only);
}

void TestSlideShow::endsWhenTheRoundsAreDone_data()
{
    QTest::addColumn<int>("loops");
    QTest::addColumn<QString>("seen");
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
    // Only the first decode: later the event loop must run.
    QVERIFY(m_show->picture("a")->starts > 1);
    QCOMPARE(m_show->picture("a")->startsInOnePiece, 1);
    QCOMPARE(m_show->picture("b")->startsInOnePiece, 0);
}

void TestSlideShow::decodesAtTheSizeOfTheScreen()
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

void TestSlideShow::theFirstPictureIsDrawnAfter100Ms()
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
        QCoreApplication::processEvents();
        QVERIFY(show->isVisible()); // the level is read when the message comes
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

void TestSlideShow::otherMessagesAreIgnored()
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

void TestSlideShow::aShowThatEndedDoesNotRunAgain()
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

void TestSlideShow::theScreenSaverIsOffDuringAShow()
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

void TestSlideShow::theInputMethodIsHidden()
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

void TestSlideShow::aDeletedItemIsNotTheLastItem()
{
    m_show->addPictures(1);
    SlideShow *show = m_show->make({});
    m_show->run([] {});
    QVERIFY(show->lastItem() != nullptr);
    m_show->source.clear();
    QVERIFY(show->lastItem() == nullptr);
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
