// SPDX-License-Identifier: MIT
// The menu of the running show and what it leads to.
#include "platform/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QTimer>

using lumi::SlideMenu;
using lumi::test::ShowFixture;

namespace {

constexpr int kLong = 60000;

void answer(QMessageBox::StandardButton button)
{
    ShowFixture::box()->button(button)->click();
}

} // namespace

class TestSlideShowMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show.reset(new ShowFixture); }

    void cleanup() { m_show.reset(); }

    void hasItsEntries();
    void opensWhereThePenIs();
    void theMenuKeyOpensAndClosesIt_data();
    void theMenuKeyOpensAndClosesIt();
    void choicesEndItWithTheirCode_data();
    void choicesEndItWithTheirCode();
    void theEndingKeyWorksInIt_data();
    void theEndingKeyWorksInIt();
    void afterItThePictureIsThere_data();
    void afterItThePictureIsThere();
    void whileItIsOpenNothingMoves();
    void afterItThePlayGoesOn_data();
    void afterItThePlayGoesOn();
    void byHandAPictureDecodedUnderItComesAfterIt();
    void aStepUnderItComesAfterIt();
    void beforeTheFirstPictureItLosesNothing();
    void aVanishedFileUnderItIsPassedOver_data();
    void aVanishedFileUnderItIsPassedOver();
    void anotherApplicationClosesIt();
    void aFailureWaitsForItsEnd();
    void notInAFailure();
    void deletesThePictureOnTheScreen_data();
    void deletesThePictureOnTheScreen();
    void noDeletesNothing_data();
    void noDeletesNothing();
    void theQuestionNamesThePicture();
    void longNamesAreCut();
    void deletingTheLastOfTheRound();
    void deletingTheOnlyOneEndsIt();
    void deletingAllOneByOne();
    void deletingByHandAfterAStep();
    void deletingUnderAStep();
    void theFollowerComesWhenItIsDecoded();
    void theDeletedOneIsNotTheLastItem();
    void aFailedDeletionIsTold();
    void anotherApplicationInTheQuestionMeansNo();
    void theFollowerIsGoneToo();

private:
    bool exists(const char *name) const { return QFile::exists(m_show->path(name)); }

    void deleteShown(bool byKey, QMessageBox::StandardButton button);

    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowMenu::deleteShown(bool byKey, QMessageBox::StandardButton button)
{
    ShowFixture::inBox(
        [this, byKey] {
            if (byKey) {
                m_show->key(Qt::Key_Delete);
            } else {
                m_show->choose(SlideMenu::Delete);
            }
        },
        [button] {
            answer(button);
        });
}

void TestSlideShowMenu::hasItsEntries()
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

void TestSlideShowMenu::opensWhereThePenIs()
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
    // As far into the corner as the style lets a menu go.
    QVERIFY(QRect(0, 0, 4, 4).contains(place));
}

void TestSlideShowMenu::choicesEndItWithTheirCode_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<int>("code");
    QTest::newRow("details") << 1 << 1;
    QTest::newRow("full view") << 2 << 2;
    QTest::newRow("options") << 4 << 3;
    QTest::newRow("end") << 5 << 0;
}

void TestSlideShowMenu::choicesEndItWithTheirCode()
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

void TestSlideShowMenu::theEndingKeyWorksInIt_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the device's") << kKeyStop;
    QTest::newRow("Cancel") << int(Qt::Key_Cancel);
}

void TestSlideShowMenu::theEndingKeyWorksInIt()
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

void TestSlideShowMenu::afterItThePictureIsThere_data()
{
    QTest::addColumn<bool>("continues");
    QTest::newRow("Cont.") << true;
    QTest::newRow("left without a choice") << false;
}

void TestSlideShowMenu::afterItThePictureIsThere()
{
    QFETCH(bool, continues);
    m_show->addPictures(2);
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([&] {
        const QImage before = m_show->screen();
        if (continues) {
            m_show->choose(SlideMenu::Continue);
        } else {
            m_show->inMenu([this] {
                QTest::keyClick(m_show->menu(), Qt::Key_Escape);
            });
        }
        QVERIFY(m_show->show->isFullScreen());
        QTest::qWait(50);
        QCOMPARE(m_show->screen(), before);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
    });
}

void TestSlideShowMenu::whileItIsOpenNothingMoves()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = 100;
    m_show->make({true, true, 60, 0, 0});
    m_show->run([this] {
        m_show->inMenu([this] {
            QTest::qWait(400);
            QCOMPARE(m_show->picture("b")->completes, 1);
            QCOMPARE(m_show->shown(), QStringLiteral("a"));
            QCOMPARE(m_show->picture("c")->starts, 0);
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
    });
}

void TestSlideShowMenu::afterItThePlayGoesOn_data()
{
    QTest::addColumn<int>("decodeMs");
    QTest::addColumn<int>("openMs");
    QTest::newRow("the next one was ready before") << 0 << 0;
    QTest::newRow("it became ready meanwhile") << 150 << 300;
    QTest::newRow("it becomes ready within the delay") << 250 << 100;
    QTest::newRow("it becomes ready after the delay") << 900 << 100;
}

void TestSlideShowMenu::afterItThePlayGoesOn()
{
    QFETCH(int, decodeMs);
    QFETCH(int, openMs);
    constexpr int kDelay = 400;
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = decodeMs;
    m_show->make({true, true, kDelay, 0, 0});
    m_show->run([&] {
        m_show->inMenu([&] {
            QTest::qWait(openMs);
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
        QElapsedTimer timer;
        timer.start();
        QVERIFY(m_show->sees("b"));
        QVERIFY(timer.elapsed() >= kDelay - 10);
        QVERIFY(m_show->sees("c"));
    });
}

void TestSlideShowMenu::byHandAPictureDecodedUnderItComesAfterIt()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        m_show->inMenu([this] {
            m_show->picture("b")->finish();
            QCOMPARE(m_show->shown(), QStringLiteral("a"));
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
        QVERIFY(m_show->sees("b"));
        // One that is not ready by then is not swallowed either.
        m_show->picture("c")->decodeMs = -1;
        m_show->key(Qt::Key_Right);
        m_show->choose(SlideMenu::Continue);
        m_show->picture("c")->finish();
        QVERIFY(m_show->sees("c"));
    });
}

void TestSlideShowMenu::aStepUnderItComesAfterIt()
{
    m_show->addPictures(4);
    for (const char *name : {"b", "c"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({true, true, kLong, 0, 0});
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

void TestSlideShowMenu::beforeTheFirstPictureItLosesNothing()
{
    m_show->addPictures(2);
    SlideShow *show = m_show->make({true, true, 100, 0, 0});
    bool opened = false;
    QTimer opener;
    QObject::connect(&opener, &QTimer::timeout, show, [&] {
        if (show->isVisible() && m_show->shown().isEmpty()) {
            opener.stop();
            QTimer::singleShot(0, show, [&] {
                m_show->inMenu([&] {
                    opened = m_show->shown().isEmpty();
                    QTest::qWait(250);
                    QTest::keyClick(m_show->menu(), Qt::Key_Escape);
                });
            });
        }
    });
    opener.start(1);
    m_show->run([this] {
        QVERIFY(m_show->seesCount(3));
    });
    QVERIFY(opened);
}

void TestSlideShowMenu::aVanishedFileUnderItIsPassedOver_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::newRow("by itself") << true;
    QTest::newRow("by hand") << false;
}

void TestSlideShowMenu::aVanishedFileUnderItIsPassedOver()
{
    QFETCH(bool, autoMode);
    m_show->addPictures(3);
    m_show->make({autoMode, true, 100, 0, 0});
    m_show->run([&] {
        if (autoMode) {
            QVERIFY(m_show->removeFile("c"));
            QVERIFY(m_show->sees("b"));
        } else {
            QVERIFY(m_show->removeFile("b"));
            m_show->key(Qt::Key_Right);
        }
        // Within the 10 ms before the one after it is begun.
        m_show->choose(SlideMenu::Continue);
        QVERIFY(m_show->sees(autoMode ? "a" : "c"));
    });
}

void TestSlideShowMenu::anotherApplicationClosesIt()
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

void TestSlideShowMenu::aFailureWaitsForItsEnd()
{
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->picture("b")->breaksOff = lumi::DecodeError::Undecodable;
    m_show->make({true, true, 50, 0, 0});
    bool told = false;
    m_show->run([&] {
        m_show->inMenu([&] {
            m_show->picture("b")->finish();
            QTest::qWait(200);
            QVERIFY(ShowFixture::box() == nullptr);
            QVERIFY(m_show->menu() != nullptr);
            QTest::keyClick(m_show->menu(), Qt::Key_Escape);
        });
        ShowFixture::inBox(
            [] {
                QTest::qWait(300);
            },
            [&told] {
                told = true;
                answer(QMessageBox::Ok);
            });
        QVERIFY(!m_show->show->isVisible());
    });
    QVERIFY(told);
}

void TestSlideShowMenu::notInAFailure()
{
    m_show->addPictures(2);
    m_show->picture("b")->refuses = lumi::DecodeError::Undecodable;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        QTest::mousePress(m_show->show.get(), Qt::LeftButton);
        QVERIFY(m_show->menu() == nullptr);
    });
}

void TestSlideShowMenu::deletesThePictureOnTheScreen_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("by itself, key") << true << true;
    QTest::newRow("by itself, menu") << true << false;
    QTest::newRow("by hand, key") << false << true;
    QTest::newRow("by hand, menu") << false << false;
}

void TestSlideShowMenu::deletesThePictureOnTheScreen()
{
    QFETCH(bool, autoMode);
    QFETCH(bool, byKey);
    m_show->addPictures(5);
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([&] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        deleteShown(byKey, QMessageBox::Yes);
        // The one after it comes, none is left out.
        QVERIFY(m_show->sees("c"));
        QVERIFY(!exists("b"));
        for (const char *name : {"a", "c", "d", "e"}) {
            QVERIFY2(exists(name), name);
        }
        QCOMPARE(m_show->source.count(), 4);
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("a"));
    });
}

void TestSlideShowMenu::noDeletesNothing_data()
{
    deletesThePictureOnTheScreen_data();
}

void TestSlideShowMenu::noDeletesNothing()
{
    QFETCH(bool, autoMode);
    QFETCH(bool, byKey);
    m_show->addPictures(3);
    m_show->make({autoMode, true, 150, 0, 0});
    m_show->run([&] {
        deleteShown(byKey, QMessageBox::No);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        if (!autoMode) {
            m_show->key(Qt::Key_Right);
        }
        QVERIFY(m_show->sees("b"));
    });
    QCOMPARE(m_show->source.count(), 3);
    QVERIFY(exists("a") && exists("b") && exists("c"));
}

void TestSlideShowMenu::theQuestionNamesThePicture()
{
    m_show->add(QStringLiteral("<b>a.jpg"));
    m_show->add(QStringLiteral("b"));
    m_show->make({true, true, 100, 0, 0});
    QString title;
    QString text;
    QString shown;
    m_show->run([&] {
        ShowFixture::inBox(
            [this] {
                m_show->key(Qt::Key_Delete);
            },
            [&] {
                title = ShowFixture::box()->windowTitle();
                text = ShowFixture::box()->text();
                QCOMPARE(ShowFixture::box()->textFormat(), Qt::PlainText);
                QCOMPARE(ShowFixture::box()->parentWidget(), m_show->show.get());
                // It stays there as long as it is asked about.
                QTest::qWait(300);
                shown = m_show->shown();
                QTest::keyClick(ShowFixture::box(), Qt::Key_Escape);
            });
    });
    QCOMPARE(title, QStringLiteral("Delete"));
    QCOMPARE(text, QStringLiteral("<b>a.jpg will be deleted. Are you sure?"));
    QCOMPARE(shown, QStringLiteral("<b>a.jpg"));
    QVERIFY(QFile::exists(m_show->source.first()->path()));
}

void TestSlideShowMenu::longNamesAreCut()
{
    m_show->add(QString(200, QLatin1Char('w')) + QStringLiteral(".jpg"));
    m_show->make({});
    int width = 0;
    QString text;
    m_show->run([&] {
        ShowFixture::inBox(
            [this] {
                m_show->key(Qt::Key_Delete);
            },
            [&] {
                width = ShowFixture::box()->width();
                text = ShowFixture::box()->text();
                QTest::keyClick(ShowFixture::box(), Qt::Key_Escape);
            });
    });
    QVERIFY(text.contains(QStringLiteral("www... will be deleted.")));
    QVERIFY2(width <= 640, qPrintable(QString::number(width)));
}

void TestSlideShowMenu::deletingTheLastOfTheRound()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 2});
    m_show->run([this] {
        QCOMPARE(m_show->shown(), QStringLiteral("c"));
        // c was the first to be played, so b is the last.
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("b"));
        deleteShown(true, QMessageBox::Yes);
        QVERIFY(m_show->sees("c"));
    });
    QVERIFY(!exists("b"));
}

void TestSlideShowMenu::deletingTheOnlyOneEndsIt()
{
    m_show->addPictures(1);
    m_show->make({});
    bool ended = false;
    QCOMPARE(m_show->run([&] {
        deleteShown(false, QMessageBox::Yes);
        ended = !m_show->show->isVisible();
    }),
             0);
    QVERIFY(ended);
    QVERIFY(!exists("a"));
    QVERIFY(m_show->show->lastItem() == nullptr);
    QVERIFY(m_show->source.isEmpty());
}

void TestSlideShowMenu::deletingAllOneByOne()
{
    m_show->addPictures(4);
    m_show->make({true, true, kLong, 0, 0});
    QCOMPARE(m_show->run([this] {
        for (const char *name : {"a", "b", "c", "d"}) {
            QVERIFY(m_show->sees(name));
            deleteShown(true, QMessageBox::Yes);
        }
        QVERIFY(!m_show->show->isVisible());
    }),
             0);
    QVERIFY(m_show->source.isEmpty());
}

void TestSlideShowMenu::deletingByHandAfterAStep()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        m_show->key(Qt::Key_Left); // a comes back a moment later
        deleteShown(true, QMessageBox::Yes);
        QVERIFY(!exists("a"));
        QVERIFY(exists("b"));
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowMenu::deletingUnderAStep()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        // b is being decoded, a is on the screen.
        deleteShown(true, QMessageBox::Yes);
        QVERIFY(!exists("a"));
        QVERIFY(exists("b"));
        m_show->picture("b")->finish();
        QVERIFY(m_show->sees("b"));
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("c"));
    });
}

void TestSlideShowMenu::theFollowerComesWhenItIsDecoded()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        deleteShown(true, QMessageBox::Yes);
        QTest::qWait(50);
        QVERIFY(m_show->show->lastItem() == nullptr);
        m_show->picture("b")->finish();
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowMenu::theDeletedOneIsNotTheLastItem()
{
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        deleteShown(true, QMessageBox::Yes);
        QTest::qWait(50);
        m_show->key(Qt::Key_Escape);
    });
    QVERIFY(m_show->show->lastItem() == nullptr);
    QVERIFY(exists("b"));
}

void TestSlideShowMenu::aFailedDeletionIsTold()
{
    m_show->addPictures(3);
    m_show->make({true, true, kLong, 0, 0});
    QString title;
    QString text;
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, &reader, [&] {
        QMessageBox *box = ShowFixture::box();
        if (box == nullptr) {
            return;
        }
        if (box->standardButtons().testFlag(QMessageBox::Yes)) {
            QVERIFY(m_show->removeFile("a")); // somebody else was faster
            answer(QMessageBox::Yes);
        } else {
            title = box->windowTitle();
            text = box->text();
            answer(QMessageBox::Ok);
        }
    });
    reader.start(5);
    m_show->run([this] {
        m_show->key(Qt::Key_Delete);
        QVERIFY(m_show->show->isVisible());
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
    });
    QCOMPARE(title, QStringLiteral("Delete"));
    QCOMPARE(text, QStringLiteral("Deletion failed."));
    QCOMPARE(m_show->source.count(), 3);
}

void TestSlideShowMenu::anotherApplicationInTheQuestionMeansNo()
{
    m_show->addPictures(2);
    m_show->make({true, true, kLong, 0, 0});
    QCOMPARE(m_show->run([this] {
        ShowFixture::inBox(
            [this] {
                m_show->key(Qt::Key_Delete);
            },
            [] {
                ShowFixture::tell("appForeground(QString)");
            });
        QVERIFY(ShowFixture::box() == nullptr);
        QVERIFY(!m_show->show->isVisible());
    }),
             0);
    QVERIFY(exists("a"));
    QCOMPARE(m_show->source.count(), 2);
}

void TestSlideShowMenu::theFollowerIsGoneToo()
{
    m_show->addPictures(4);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        QVERIFY(m_show->removeFile("b"));
        deleteShown(true, QMessageBox::Yes);
        QVERIFY(m_show->sees("c"));
        QCOMPARE(m_show->source.count(), 2);
    });
}

LUMI_TEST(TestSlideShowMenu)
#include "TestSlideShowMenu.moc"
