// SPDX-License-Identifier: MIT
// The menu of the running show.
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QAbstractButton>
#include <QTest>
#include <QTimer>

using lumi::SlideMenu;
using lumi::test::kLong;
using lumi::test::ShowFixture;

class TestSlideShowMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void theMenuHasItsEntries();
    void opensAtThePress();
    void theMenuKeyOpensAndClosesIt_data();
    void theMenuKeyOpensAndClosesIt();
    void entriesEndTheShowWithTheirCode_data();
    void entriesEndTheShowWithTheirCode();
    void theStopKeyEndsTheShowFromTheMenu_data();
    void theStopKeyEndsTheShowFromTheMenu();
    void thePictureIsRedrawnAfterTheMenu_data();
    void thePictureIsRedrawnAfterTheMenu();
    void nothingIsDrawnWhileTheMenuIsOpen();
    void theShowGoesOnAfterTheMenu_data();
    void theShowGoesOnAfterTheMenu();
    void aStepDecodedUnderTheMenuIsShownAfterIt_data();
    void aStepDecodedUnderTheMenuIsShownAfterIt();
    void theMenuBeforeTheFirstPictureSkipsNothing();
    void aMissingFileIsSkippedAfterTheMenu_data();
    void aMissingFileIsSkippedAfterTheMenu();
    void anotherApplicationClosesTheMenu();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowMenu::theMenuHasItsEntries()
{
    const SlideMenu menu(nullptr);
    QStringList entries;
    const auto actions = menu.actions();
    for (const QAction *action : actions) {
        entries.append(action->isSeparator() ? QStringLiteral("-")
                                             : QString(QString::number(action->data().toInt())
                                                       + QLatin1Char(' ') + action->text()));
    }
    QCOMPARE(entries.join(QLatin1Char('\n')),
             QStringLiteral("0 Cont.\n-\n1 Details\n2 Full View\n-\n4 Options\n-\n3 Delete\n-\n"
                            "5 End slideshow"));
}

void TestSlideShowMenu::opensAtThePress()
{
    m_show->addPictures(2);
    m_show->make({});
    QPoint place(-1, -1);
    m_show->run([&] {
        m_show->inMenu([&] {
            place = m_show->menu()->pos();
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
    });
    QCOMPARE(place, QPoint(200, 100));
}

void TestSlideShowMenu::theMenuKeyOpensAndClosesIt_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the device's") << kKeyMenu;
    QTest::newRow("F11") << int(Qt::Key_F11);
    QTest::newRow("Menu") << int(Qt::Key_Menu);
}

void TestSlideShowMenu::theMenuKeyOpensAndClosesIt()
{
    QFETCH(int, key);
    m_show->addPictures(2);
    m_show->make({});
    QPoint place(-1, -1);
    m_show->run([&] {
        ShowFixture::press(m_show->show.get(), key);
        QVERIFY(m_show->menu() == nullptr);
        const auto isOpen = [this] {
            return m_show->menu() != nullptr;
        };
        const auto close = [&] {
            place = m_show->menu()->pos();
            ShowFixture::press(m_show->menu(), key);
            QVERIFY(m_show->menu() != nullptr);
            ShowFixture::release(m_show->menu(), key);
            QVERIFY(m_show->menu() == nullptr);
        };
        ShowFixture::inLoop(isOpen, close, [this, key] {
            ShowFixture::release(m_show->show.get(), key);
        });
        QVERIFY(m_show->show->isVisible());
    });
    // At (0, 0) plus the margin of the style.
    QVERIFY(QRect(0, 0, 4, 4).contains(place));
}

void TestSlideShowMenu::entriesEndTheShowWithTheirCode_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("code");
    QTest::newRow("details") << 1 << 1;
    QTest::newRow("full view") << 2 << 2;
    QTest::newRow("options") << 4 << 3;
    QTest::newRow("end") << 5 << 0;
}

void TestSlideShowMenu::entriesEndTheShowWithTheirCode()
{
    QFETCH(int, entry);
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 0, 1});
    bool ended = false;
    const int code = m_show->run([&] {
        m_show->choose(entry);
        ended = !m_show->show->isVisible();
    });
    QTEST(code, "code");
    QTEST(m_show->show->exitCode(), "code");
    QVERIFY(ended);
    QCOMPARE(m_show->shown(), QStringLiteral("b"));
}

void TestSlideShowMenu::theStopKeyEndsTheShowFromTheMenu_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the device's") << kKeyStop;
    QTest::newRow("Cancel") << int(Qt::Key_Cancel);
}

void TestSlideShowMenu::theStopKeyEndsTheShowFromTheMenu()
{
    QFETCH(int, key);
    m_show->addPictures(2);
    m_show->make({});
    bool ended = false;
    QCOMPARE(m_show->run([&] {
        m_show->inMenu([&] {
            ShowFixture::release(m_show->menu(), key);
        });
        ended = !m_show->show->isVisible();
    }),
             0);
    QVERIFY(ended);
}

void TestSlideShowMenu::thePictureIsRedrawnAfterTheMenu_data()
{
    QTest::addColumn<bool>("continues");
    QTest::newRow("Cont.") << true;
    QTest::newRow("left without a choice") << false;
}

void TestSlideShowMenu::thePictureIsRedrawnAfterTheMenu()
{
    QFETCH(bool, continues);
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({});
    m_show->run([&] {
        const QImage plain = m_show->screen();
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->screen() != plain); // the sign of the step stands
        if (continues) {
            m_show->choose(SlideMenu::Continue);
        } else {
            m_show->inMenu([this] {
                QTest::keyClick(m_show->menu(), Qt::Key_Escape);
            });
        }
        QVERIFY(m_show->show->isFullScreen());
        QVERIFY(m_show->timer("redrawTimer")->isActive());
        QCOMPARE(m_show->timer("redrawTimer")->interval(), 1);
        QTRY_COMPARE(m_show->screen(), plain);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
    });
}

void TestSlideShowMenu::nothingIsDrawnWhileTheMenuIsOpen()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({});
    m_show->run([this] {
        QVERIFY(m_show->timer("slideTimer")->isActive());
        m_show->inMenu([this] {
            QVERIFY(!m_show->timer("slideTimer")->isActive());
            m_show->picture("b")->finish();
            QCOMPARE(m_show->picture("b")->completes, 1);
            m_show->show->slot_timeout();
            m_show->show->ScreenOut();
            m_show->show->ScreenOutPlayBack();
            QCOMPARE(m_show->shown(), QStringLiteral("a"));
            QCOMPARE(m_show->picture("c")->starts, 0);
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
    });
}

void TestSlideShowMenu::theShowGoesOnAfterTheMenu_data()
{
    QTest::addColumn<QString>("readyAt");
    QTest::newRow("the next one was ready before") << "before";
    QTest::newRow("it became ready meanwhile") << "meanwhile";
    QTest::newRow("it becomes ready within the delay") << "within";
    QTest::newRow("it becomes ready after the delay") << "after";
}

void TestSlideShowMenu::theShowGoesOnAfterTheMenu()
{
    QFETCH(QString, readyAt);
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({});
    const auto readyIf = [&](const char *when) {
        if (readyAt == QLatin1String(when)) {
            m_show->picture("b")->finish();
        }
    };
    m_show->run([&] {
        const QTimer *delay = m_show->timer("slideTimer");
        readyIf("before");
        m_show->inMenu([&] {
            readyIf("meanwhile");
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
        // The picture has its whole time again.
        QVERIFY(delay->isActive());
        QCOMPARE(delay->interval(), kLong);
        readyIf("within");
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->endDelay();
        QTRY_VERIFY(!delay->isActive() || m_show->shown() == QLatin1String("b"));
        readyIf("after");
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(m_show->playsOn("c"));
    });
}

void TestSlideShowMenu::aStepDecodedUnderTheMenuIsShownAfterIt_data()
{
    aMissingFileIsSkippedAfterTheMenu_data();
}

void TestSlideShowMenu::aStepDecodedUnderTheMenuIsShownAfterIt()
{
    QFETCH(bool, autoMode);
    m_show->addPictures(4);
    for (const char *name : {"b", "c"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        m_show->inMenu([this] {
            m_show->picture("b")->finish();
            QCOMPARE(m_show->shown(), QStringLiteral("a"));
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
        QVERIFY(m_show->sees("b"));
        m_show->key(Qt::Key_Right);
        m_show->choose(SlideMenu::Continue);
        m_show->picture("c")->finish();
        QVERIFY(m_show->sees("c"));
    });
}

void TestSlideShowMenu::theMenuBeforeTheFirstPictureSkipsNothing()
{
    m_show->addPictures(2);
    m_show->hurriesFirst = false;
    SlideShow *show = m_show->make({});
    QTimer *first = m_show->timer("screenOutTimer");
    bool opened = false;
    QTimer opener;
    QObject::connect(&opener, &QTimer::timeout, show, [&] {
        if (first->isActive()) {
            opener.stop();
            first->stop(); // it is told to draw below
            QTimer::singleShot(0, show, [&] {
                m_show->inMenu([&] {
                    show->ScreenOut();
                    opened = m_show->shown().isEmpty();
                    QTest::keyClick(m_show->menu(), Qt::Key_Escape);
                });
            });
        }
    });
    opener.start(1);
    m_show->run([this] {
        QVERIFY(m_show->playsOn("ba"));
    });
    QVERIFY(opened);
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("aba"));
}

void TestSlideShowMenu::aMissingFileIsSkippedAfterTheMenu_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::newRow("automatic") << true;
    QTest::newRow("manual") << false;
}

void TestSlideShowMenu::aMissingFileIsSkippedAfterTheMenu()
{
    QFETCH(bool, autoMode);
    m_show->addPictures(3);
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([&] {
        if (autoMode) {
            QVERIFY(m_show->removeFile("c"));
            QTRY_COMPARE(m_show->picture("b")->completes, 1);
            m_show->show->slot_timeout();
            QCOMPARE(m_show->shown(), QStringLiteral("b"));
        } else {
            QVERIFY(m_show->removeFile("b"));
            m_show->key(Qt::Key_Right);
        }
        // Before the decode of its follower.
        QCOMPARE(m_show->timer("slideTimer")->interval(), 10);
        m_show->choose(SlideMenu::Continue);
        QVERIFY(m_show->playsOn(autoMode ? "a" : "c"));
    });
}

void TestSlideShowMenu::anotherApplicationClosesTheMenu()
{
    m_show->addPictures(2);
    m_show->make({});
    bool ended = false;
    QCOMPARE(m_show->run([&] {
        m_show->inMenu([&] {
            ShowFixture::tell("appForeground(QString)");
            ended = m_show->menu() == nullptr && !m_show->show->isVisible();
        });
    }),
             0);
    QVERIFY(ended);
}

LUMI_TEST(TestSlideShowMenu)
#include "TestSlideShowMenu.moc"
