// SPDX-License-Identifier: MIT
// How long each picture is shown, measured with the clock. No other test should run meanwhile.
#include "items/FPVItemJpeg.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QFile>
#include <QTest>

using lumi::SlideMenu;
using lumi::test::DelayLog;
using lumi::test::JpegKind;
using lumi::test::ShowFixture;

class TestSlideShowPace : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void aDecodeShorterThanTheDelayCostsNoTime();
    void afterAVerySlowDecodeItGoesOnAtOnce();
    void theTimeInTheMenuDoesNotCount();
    void aStepBackRestartsTheDelay();
    void largePhotosComeInTime();

private:
    std::unique_ptr<ShowFixture> m_show;
};

void TestSlideShowPace::aDecodeShorterThanTheDelayCostsNoTime()
{
    constexpr int kShortDelay = 400;
    m_show->addPictures(3);
    for (const char *name : {"a", "b", "c"}) {
        m_show->picture(name)->decodeMs = kShortDelay / 4;
    }
    m_show->make({true, true, kShortDelay, 0, 0});
    const DelayLog log(*m_show);
    m_show->run([this] {
        QVERIFY(m_show->seesCount(3));
    });
    QCOMPARE(log.shown.mid(0, 2).join(QString()), QStringLiteral("bc"));
    QCOMPARE(log.lengths.mid(0, 2), QList<int>(2, kShortDelay));
}

void TestSlideShowPace::afterAVerySlowDecodeItGoesOnAtOnce()
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

void TestSlideShowPace::theTimeInTheMenuDoesNotCount()
{
    constexpr int kShortDelay = 200;
    m_show->addPictures(3);
    m_show->make({true, true, kShortDelay, 0, 0});
    m_show->picture("c")->decodeMs = -1; // so that b stays
    m_show->run([this] {
        m_show->inMenu([this] {
            QTRY_COMPARE(m_show->picture("b")->completes, 1);
            QTest::qWait(2 * kShortDelay + 50);
            m_show->menu()->setActiveAction(m_show->menu()->findItem(SlideMenu::Continue));
            QTest::keyClick(m_show->menu(), Qt::Key_Return);
        });
        QCOMPARE(m_show->shown(), QStringLiteral("a"));
        m_show->endDelay();
        QVERIFY(m_show->sees("b"));
        QCOMPARE(m_show->timer("slideTimer")->interval(), kShortDelay);
    });
}

void TestSlideShowPace::aStepBackRestartsTheDelay()
{
    constexpr int kShortDelay = 200;
    m_show->addPictures(3);
    m_show->make({true, true, kShortDelay, 0, 0});
    m_show->picture("c")->decodeMs = -1;
    m_show->run([this] {
        QVERIFY(m_show->sees("b"));
        QVERIFY(m_show->picture("c")->isDecoding());
        QTest::qWait(2 * kShortDelay + 50);
        m_show->key(Qt::Key_Left);
        QVERIFY(m_show->sees("a"));
        QCOMPARE(m_show->timer("slideTimer")->interval(), kShortDelay);
    });
}

void TestSlideShowPace::largePhotosComeInTime()
{
    constexpr int kShortest = 2000; // of the delays that can be chosen
    JpegKind kind;
    kind.size = QSize(4000, 3000);
    const QByteArray photo = lumi::test::makeJpeg(kind);
    for (const char *name : {"a", "b", "c"}) {
        QFile file(m_show->path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(photo) == photo.size());
        m_show->source.append(new FPVItemJpeg(file.fileName(), QString(), false));
    }
    m_show->make({true, true, kShortest, 1, 0});
    const DelayLog log(*m_show);
    QCOMPARE(m_show->run(), 0);
    // Each was decoded before its delay ended.
    QCOMPARE(log.shown.join(QString()), QStringLiteral("bcc"));
    QCOMPARE(log.lengths.mid(0, 2), QList<int>(2, kShortest));
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("abc"));
}

LUMI_TEST(TestSlideShowPace)
#include "TestSlideShowPace.moc"
