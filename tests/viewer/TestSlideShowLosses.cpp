// SPDX-License-Identifier: MIT
// Files that are missing when they are to be shown.
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"

#include <QTest>
#include <QTimer>

using lumi::test::kLong;
using lumi::test::ShowFixture;

class TestSlideShowLosses : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void aMissingFileIsSkipped();
    void aMissingFileIsSkippedAfter10Ms();
    void theFirstFileIsMissing();
    void allFilesAreMissing();
    void allFilesAreDeletedWhileOneIsShown();
    void aStepBackToAMissingFile();
    void aStepToAMissingFileShowsItsFollower_data();
    void aStepToAMissingFileShowsItsFollower();
    void stepsCountFromTheFollowerOfAMissingFile_data();
    void stepsCountFromTheFollowerOfAMissingFile();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowLosses::aMissingFileIsSkipped()
{
    m_show->addPictures(4);
    m_show->make({});
    m_show->run([this] {
        QVERIFY(m_show->removeFile("c"));
        QVERIFY(m_show->playsOn("bdabda"));
    });
    // It was removed from the folder's list too.
    QCOMPARE(m_show->source.count(), 3);
    QVERIFY(m_show->picture("c") == nullptr);
}

void TestSlideShowLosses::aMissingFileIsSkippedAfter10Ms()
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
        // Its follower is decoded during the same delay.
        QTRY_COMPARE(m_show->picture("a")->completes, 2);
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
        QVERIFY(delay->isActive());
        QCOMPARE(delay->interval(), kLong);
        QVERIFY(m_show->playsOn("a"));
    });
}

void TestSlideShowLosses::theFirstFileIsMissing()
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

void TestSlideShowLosses::allFilesAreMissing()
{
    m_show->addPictures(1);
    QVERIFY(m_show->removeFile("a"));
    SlideShow *show = m_show->make({});
    QCOMPARE(show->exec(), 0);
    QVERIFY(!show->isVisible());
    QVERIFY(m_show->source.isEmpty());
    QVERIFY(show->lastItem() == nullptr);
}

void TestSlideShowLosses::allFilesAreDeletedWhileOneIsShown()
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

void TestSlideShowLosses::aStepBackToAMissingFile()
{
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([this] {
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        QVERIFY(m_show->removeFile("a"));
        m_show->key(Qt::Key_Left);
        QTRY_VERIFY(m_show->picture("a") == nullptr);
        QTRY_COMPARE(m_show->picture("b")->starts, 2);
        QCOMPARE(m_show->shown(), QStringLiteral("b"));
    });
}

void TestSlideShowLosses::aStepToAMissingFileShowsItsFollower_data()
{
    QTest::addColumn<bool>("autoMode");
    QTest::newRow("automatic") << true;
    QTest::newRow("manual") << false;
}

void TestSlideShowLosses::aStepToAMissingFileShowsItsFollower()
{
    QFETCH(bool, autoMode);
    m_show->addPictures(4);
    m_show->make({autoMode, true, kLong, 0, 0});
    m_show->run([this] {
        QVERIFY(m_show->removeFile("c"));
        m_show->key(Qt::Key_Right);
        QVERIFY(m_show->sees("b"));
        m_show->key(Qt::Key_Right);
        // Its follower comes at once, not after the delay.
        QVERIFY(m_show->sees("d"));
        QVERIFY(m_show->picture("c") == nullptr);
    });
}

void TestSlideShowLosses::stepsCountFromTheFollowerOfAMissingFile_data()
{
    QTest::addColumn<QString>("played");
    QTest::addColumn<QString>("gone");
    QTest::addColumn<QString>("shown");
    QTest::newRow("within a round") << "bc"
                                    << "b"
                                    << "a";
    QTest::newRow("over its start") << ""
                                    << "e"
                                    << "d";
}

void TestSlideShowLosses::stepsCountFromTheFollowerOfAMissingFile()
{
    QFETCH(QString, played);
    QFETCH(QString, gone);
    QFETCH(QString, shown);
    m_show->addPictures(5);
    m_show->make({});
    m_show->run([&] {
        QVERIFY(m_show->playsOn(qPrintable(played)));
        QVERIFY(m_show->removeFile(qPrintable(gone)));
        const QString before = m_show->shown();
        // The second key comes before any other event.
        m_show->key(Qt::Key_Left);
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->picture(qPrintable(gone)) == nullptr);
        QTRY_VERIFY(m_show->shown() != before);
        QCOMPARE(m_show->shown(), shown);
    });
}

LUMI_TEST(TestSlideShowLosses)
#include "TestSlideShowLosses.moc"
