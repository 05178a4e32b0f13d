// SPDX-License-Identifier: MIT
// Deleting the picture on the screen, and events while a box is open.
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QAbstractButton>
#include <QFile>
#include <QTest>
#include <QTimer>

using lumi::SlideMenu;
using lumi::test::kLong;
using lumi::test::ShowFixture;
using lumi::test::SlowPicture;

namespace {

constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;

void answer(QMessageBox::StandardButton button)
{
    ShowFixture::box()->button(button)->click();
}

} // namespace

class TestSlideShowDelete : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void deletesThePictureOnTheScreen_data();
    void deletesThePictureOnTheScreen();
    void theAnswerNoDeletesNothing_data();
    void theAnswerNoDeletesNothing();
    void theQuestionNamesThePicture();
    void longNamesAreCut();
    void deletingTheLastOfTheRound();
    void deletingTheOnlyOneEndsIt();
    void deletingAllPicturesEndsTheShow();
    void stepsAfterItCountFromTheFollower_data();
    void stepsAfterItCountFromTheFollower();
    void deletingInAManualShowAfterAStep();
    void deletingDuringAStep();
    void theFollowerComesWhenItIsDecoded();
    void theDeletedOneIsNotTheLastItem();
    void aFailedDeletionIsReported_data();
    void aFailedDeletionIsReported();
    void anotherApplicationDuringTheQuestionMeansNo();
    void theFollowerIsMissingToo();

private:
    bool exists(const char *name) const { return QFile::exists(m_show->path(name)); }

    void deleteShown(bool byKey, QMessageBox::StandardButton button);

    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowDelete::deleteShown(bool byKey, QMessageBox::StandardButton button)
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

void TestSlideShowDelete::deletesThePictureOnTheScreen_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("automatic, key") << true << true;
    QTest::newRow("automatic, menu") << true << false;
    QTest::newRow("manual, key") << false << true;
    QTest::newRow("manual, menu") << false << false;
}

void TestSlideShowDelete::deletesThePictureOnTheScreen()
{
    QFETCH(bool, autoMode);
    QFETCH(bool, byKey);
    m_show->addPictures(5);
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([&] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        deleteShown(byKey, QMessageBox::Yes);
        // The following picture is shown, none is skipped.
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

void TestSlideShowDelete::theAnswerNoDeletesNothing_data()
{
    deletesThePictureOnTheScreen_data();
}

void TestSlideShowDelete::theAnswerNoDeletesNothing()
{
    QFETCH(bool, autoMode);
    QFETCH(bool, byKey);
    m_show->addPictures(3);
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([&] {
        deleteShown(byKey, QMessageBox::No);
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        if (!autoMode) {
            m_show->key(Qt::Key_Right);
        }
        QVERIFY(m_show->playsOn("b"));
    });
    QCOMPARE(m_show->source.count(), 3);
    QVERIFY(exists("a") && exists("b") && exists("c"));
}

void TestSlideShowDelete::theQuestionNamesThePicture()
{
    m_show->add(QStringLiteral("<b>a.jpg"));
    m_show->add(QStringLiteral("b"));
    m_show->make({});
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
                // The picture stays on the screen while the box is open.
                QTRY_COMPARE(m_show->picture("b")->completes, 1);
                QVERIFY(!m_show->timer("slideTimer")->isActive());
                m_show->show->slot_timeout();
                shown = m_show->shown();
                QTest::keyClick(ShowFixture::box(), Qt::Key_Escape);
            });
    });
    QCOMPARE(title, QStringLiteral("Delete"));
    QCOMPARE(text, QStringLiteral("<b>a.jpg will be deleted. Are you sure?"));
    QCOMPARE(shown, QStringLiteral("<b>a.jpg"));
    QVERIFY(QFile::exists(m_show->source.first()->path()));
}

void TestSlideShowDelete::longNamesAreCut()
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

void TestSlideShowDelete::deletingTheLastOfTheRound()
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

void TestSlideShowDelete::deletingTheOnlyOneEndsIt()
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

void TestSlideShowDelete::deletingAllPicturesEndsTheShow()
{
    m_show->addPictures(4);
    m_show->make({});
    QCOMPARE(m_show->run([this] {
        for (const char *name : {"a", "b", "c", "d"}) {
            QVERIFY(m_show->sees(name));
            deleteShown(true, QMessageBox::Yes);
        }
        QVERIFY(m_show->isOver());
    }),
             0);
    QVERIFY(m_show->source.isEmpty());
}

void TestSlideShowDelete::stepsAfterItCountFromTheFollower_data()
{
    QTest::addColumn<QString>("keys"); // R and L before and, after a stroke, behind the deletion
    QTest::addColumn<QString>("shown");
    QTest::newRow("one step on") << "/R"
                                 << "c";
    QTest::newRow("a step back") << "/L"
                                 << "f";
    QTest::newRow("under a step, another one") << "R/R"
                                               << "c";
}

void TestSlideShowDelete::stepsAfterItCountFromTheFollower()
{
    QFETCH(QString, keys);
    QFETCH(QString, shown);
    m_show->addPictures(6);
    for (const char *name : {"b", "c", "d", "e", "f"}) {
        m_show->picture(name)->decodeMs = -1;
    }
    m_show->make({});
    m_show->run([&] {
        for (const QChar key : keys) {
            if (key == QLatin1Char('/')) {
                deleteShown(true, QMessageBox::Yes);
            } else {
                m_show->key(key == QLatin1Char('R') ? Qt::Key_Right : Qt::Key_Left);
            }
        }
        QVERIFY(!exists("a"));
        SlowPicture *picture = m_show->picture(qPrintable(shown));
        QVERIFY(picture->isDecoding());
        picture->finish();
        QVERIFY(m_show->sees(qPrintable(shown)));
    });
}

void TestSlideShowDelete::deletingInAManualShowAfterAStep()
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

void TestSlideShowDelete::deletingDuringAStep()
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

void TestSlideShowDelete::theFollowerComesWhenItIsDecoded()
{
    m_show->addPictures(3);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        deleteShown(true, QMessageBox::Yes);
        QVERIFY(m_show->show->lastItem() == nullptr);
        m_show->picture("b")->finish();
        QVERIFY(m_show->sees("b"));
    });
}

void TestSlideShowDelete::theDeletedOneIsNotTheLastItem()
{
    m_show->addPictures(2);
    m_show->picture("b")->decodeMs = -1;
    m_show->make({true, true, kLong, 0, 0});
    m_show->run([this] {
        deleteShown(true, QMessageBox::Yes);
        m_show->key(Qt::Key_Escape);
    });
    QVERIFY(m_show->show->lastItem() == nullptr);
    QVERIFY(exists("b"));
}

void TestSlideShowDelete::aFailedDeletionIsReported_data()
{
    QTest::addColumn<bool>("isProtected");
    QTest::newRow("nobody may write it: cameras mark photos to be kept that way") << true;
    QTest::newRow("the file was removed before") << false;
}

void TestSlideShowDelete::aFailedDeletionIsReported()
{
    QFETCH(bool, isProtected);
    m_show->addPictures(3);
    m_show->make({});
    QString title;
    QString text;
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, &reader, [&] {
        QMessageBox *box = ShowFixture::box();
        if (box == nullptr) {
            return;
        }
        if (box->standardButtons().testFlag(QMessageBox::Yes)) {
            QVERIFY(isProtected ? QFile::setPermissions(m_show->path("a"), kReadOnly)
                                : m_show->removeFile("a"));
            answer(QMessageBox::Yes);
        } else {
            title = box->windowTitle();
            text = box->text();
            answer(QMessageBox::Ok);
        }
    });
    reader.start(5);
    m_show->run([&] {
        m_show->key(Qt::Key_Delete);
        QVERIFY(!m_show->isOver());
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        QCOMPARE(exists("a"), isProtected);
        QVERIFY(m_show->playsOn("b"));
    });
    QCOMPARE(title, QStringLiteral("Delete"));
    QCOMPARE(text, QStringLiteral("Deletion failed."));
    QCOMPARE(m_show->source.count(), 3);
}

void TestSlideShowDelete::anotherApplicationDuringTheQuestionMeansNo()
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

void TestSlideShowDelete::theFollowerIsMissingToo()
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

LUMI_TEST(TestSlideShowDelete)
#include "TestSlideShowDelete.moc"
