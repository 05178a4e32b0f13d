// SPDX-License-Identifier: MIT
// The viewer with scripted pictures: its two looks, its row of buttons and labels, and when it
// draws.
#include "platform/screen/FrameBuffer.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ViewerTest.h"

#include <QApplication>
#include <QLabel>
#include <QMetaMethod>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using lumi::test::kPhoto;
using lumi::test::kStartFull;
using lumi::test::ScriptedImage;

class TestFPVPictureScrollView : public lumi::test::ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void fillsTheScreen();
    void startsInTheDecodingLook();
    void endsInTheViewingLook();
    void zoomButtonsComeASecondLater();
    void theRowDoesNotMoveAfterTheDecode();
    void theTitleIsTheFileName_data();
    void theTitleIsTheFileName();
    void progressCountsLines();
    void fitsThePhoto_data();
    void fitsThePhoto();
    void theLabelShowsTheSizeOfThePhoto();
    void eachButtonHasItsIcon();
    void theRowIsInOrder();
    void aDecodeWithoutPauses();
    void aFullDecodeWithoutPauses();
    void repaintsEverySecond();
    void nothingIsDrawnDuringADecode();
    void aResizeRedrawsAtOnce();
    void slotsHaveTheirNames();
    void hasNothingOfAMessageBoxButTheClass();
};

void TestFPVPictureScrollView::fillsTheScreen()
{
    openOne();
    QVERIFY(m_it->viewer->isVisible());
    QVERIFY(m_it->viewer->isMaximized());
    QVERIFY(m_it->viewer->isModal());
    QCOMPARE(m_it->viewer->frameGeometry(), m_it->viewer->screen()->availableGeometry());
    QCOMPARE(m_it->room().width(), m_it->viewer->width());
    QVERIFY(m_it->room().height() > m_it->viewer->height() - 50);
    QCOMPARE(m_it->scroll()->objectName(), QStringLiteral("ScrollView"));
}

void TestFPVPictureScrollView::startsInTheDecodingLook()
{
    const ScriptedImage *image = openOne();
    QVERIFY(m_it->isDecoding());
    QVERIFY(!m_it->bar()->isTextVisible());
    QVERIFY(!m_it->percent()->isVisible());
    for (const int zoom : {0, 1, 2}) {
        QVERIFY(m_it->button(zoom)->isVisible());
        QVERIFY(!m_it->button(zoom)->isEnabled());
    }
    QVERIFY(!m_it->button(3)->isVisible());
    QVERIFY(!m_it->button(4)->isVisible());
    const QSize room = m_it->room();
    QCOMPARE(image->calls,
             QStringList(QString::asprintf("start %dx%d", room.width(), room.height())));
}

void TestFPVPictureScrollView::endsInTheViewingLook()
{
    ScriptedImage *image = openOne();
    QVERIFY(!m_it->timer()->isActive());
    image->finish();
    QCOMPARE(m_it->bar()->value(), m_it->bar()->maximum());
    QCOMPARE(m_it->timer()->interval(), 50);
    QVERIFY(m_it->timer()->isSingleShot());
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
    QVERIFY(m_it->waitForLook());
    QVERIFY(m_it->percent()->isVisible());
    QVERIFY(m_it->button(3)->isVisible());
    QVERIFY(m_it->button(4)->isVisible());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::zoomButtonsComeASecondLater()
{
    showOne();
    for (const int zoom : {0, 1, 2}) {
        QVERIFY(!m_it->button(zoom)->isEnabled());
    }
    QCOMPARE(m_it->timer()->interval(), 1000);
    QVERIFY(!m_it->timer()->isSingleShot());
    QVERIFY(m_it->waitForButtons());
    QVERIFY(m_it->button(0)->isEnabled());
    QVERIFY(m_it->button(1)->isEnabled());
}

void TestFPVPictureScrollView::theRowDoesNotMoveAfterTheDecode()
{
    ScriptedImage *image = openOne();
    QCoreApplication::processEvents();
    const QRect size = m_it->sizeLabel()->geometry();
    const QSize room = m_it->room();
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCoreApplication::processEvents();
    QCOMPARE(m_it->sizeLabel()->geometry(), size);
    QCOMPARE(m_it->room(), room);
    for (const int index : {0, 1, 2, 3, 4}) {
        const QToolButton *button = m_it->button(index);
        QVERIFY(button->width() >= 40 && button->height() >= 40);
        QVERIFY(m_it->viewer->rect().contains(button->geometry()));
    }
    QCOMPARE(m_it->button(1)->x() - m_it->button(0)->geometry().right(), 5 + 1);
}

void TestFPVPictureScrollView::theTitleIsTheFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("DSC00001.JPG");
    QTest::newRow("with the place of a change mark") << QStringLiteral("a[*].jpg");
    QTest::newRow("with markup") << QStringLiteral("<b>a.jpg");
}

void TestFPVPictureScrollView::theTitleIsTheFileName()
{
    QFETCH(QString, name);
    m_it->open(m_it->add(name, kPhoto));
    // What the window shows, where doubled places of a change mark are single ones again.
    QCOMPARE(m_it->viewer->windowHandle()->title(), name);
}

void TestFPVPictureScrollView::progressCountsLines()
{
    ScriptedImage *image = openOne();
    QCOMPARE(m_it->bar()->maximum(), 600);
    // The update that startDecode() emits is not counted.
    QCOMPARE(m_it->bar()->value(), 0);
    for (const int lines : {64, 128, 192}) {
        image->slice();
        QCOMPARE(m_it->bar()->value(), lines);
    }
    for (int i = 0; i < 20; ++i) {
        image->slice();
    }
    QCOMPARE(m_it->bar()->value(), 600);
}

void TestFPVPictureScrollView::fitsThePhoto_data()
{
    QTest::addColumn<QSize>("photo");
    QTest::newRow("larger than the screen") << QSize(1600, 1200);
    QTest::newRow("smaller than the screen") << QSize(100, 100);
    QTest::newRow("a panorama") << QSize(20000, 100);
    QTest::newRow("a single pixel") << QSize(1, 1);
}

void TestFPVPictureScrollView::fitsThePhoto()
{
    QFETCH(QSize, photo);
    showOne(photo, 1);
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(photo)));
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::theLabelShowsTheSizeOfThePhoto()
{
    openOne();
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("1600*1200 "));
    QVERIFY(m_it->sizeLabel()->isVisible());
}

void TestFPVPictureScrollView::eachButtonHasItsIcon()
{
    const char *const icons[] = {"spread", "scaledown", "fit", "i_left", "i_right"};
    int red = 40;
    for (const char *icon : icons) {
        QPixmap pixmap(32, 32);
        pixmap.fill(QColor(red, 0, 0));
        QVERIFY(pixmap.save(QString(m_it->world.machine->resources
                                    + QStringLiteral("/pixmaps/lumivault/") + QLatin1String(icon)
                                    + QStringLiteral(".png"))));
        red += 40;
    }
    showOne();
    for (int i = 0; i < 5; ++i) {
        const QImage icon = m_it->button(i)->icon().pixmap(32, 32).toImage();
        QCOMPARE(icon.size(), QSize(32, 32));
        QCOMPARE(qRed(icon.pixel(16, 16)), 40 + 40 * i);
    }
}

void TestFPVPictureScrollView::theRowIsInOrder()
{
    ScriptedImage *image = openOne();
    QCoreApplication::processEvents();
    const auto isBefore = [](const QWidget *one, const QWidget *other) {
        return one->geometry().right() < other->x();
    };
    QVERIFY(isBefore(m_it->button(2), m_it->bar()));
    QVERIFY(isBefore(m_it->bar(), m_it->sizeLabel()));
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCoreApplication::processEvents();
    QVERIFY(isBefore(m_it->button(0), m_it->button(1)));
    QVERIFY(isBefore(m_it->button(1), m_it->button(2)));
    QVERIFY(isBefore(m_it->button(2), m_it->percent()));
    QVERIFY(isBefore(m_it->percent(), m_it->sizeLabel()));
    QVERIFY(isBefore(m_it->sizeLabel(), m_it->button(3)));
    QVERIFY(isBefore(m_it->button(3), m_it->button(4)));
    // The row touches the edges of the screen and the picture.
    QCOMPARE(m_it->button(0)->pos(), QPoint(0, 0));
    QCOMPARE(m_it->button(4)->geometry().right(), m_it->viewer->width() - 1);
    QCOMPARE(m_it->scroll()->y(), m_it->button(0)->height());
}

void TestFPVPictureScrollView::aDecodeWithoutPauses()
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto, 2);
    image->completesAtOnce = true;
    m_it->open(image);
    QCOMPARE(m_it->timer()->interval(), 5);
    QVERIFY(m_it->timer()->isSingleShot());
    QCOMPARE(m_it->bar()->value(), m_it->bar()->maximum());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    QCOMPARE(image->calls.size(), 1);
}

void TestFPVPictureScrollView::aFullDecodeWithoutPauses()
{
    ScriptedImage *image = showOne();
    image->completesAtOnce = true;
    m_it->viewer->zoomIn();
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->middle(), ScriptedImage::kFullColour);
    QVERIFY(m_it->waitForLook());
    QCOMPARE(image->calls.filter(kStartFull).size(), 1);
}

void TestFPVPictureScrollView::repaintsEverySecond()
{
    showOne();
    const int second = m_it->timer()->interval();
    for (int round = 0; round < 2; ++round) {
        lumi::test::drawColour(m_it->scroll()->viewport(), 0xFFFFFF00U);
        QCOMPARE(m_it->middle(), 0xFFFFFF00U);
        m_it->timer()->setInterval(10);
        QTRY_COMPARE(m_it->middle(), ScriptedImage::kScreenColour);
        m_it->timer()->setInterval(second);
    }
}

void TestFPVPictureScrollView::nothingIsDrawnDuringADecode()
{
    ScriptedImage *image = openOne();
    image->slice();
    QCoreApplication::processEvents();
    QVERIFY(!FrameBuffer::instance().hasSurface(m_it->scroll()->viewport()));
    // The place has the colour of the margin, so that nothing flashes.
    QCOMPARE(m_it->middle(), 0xFF808080U);
    image->finish();
    QVERIFY(m_it->waitForLook());
    m_it->viewer->zoomIn();
    m_it->scroll()->redraw();
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::aResizeRedrawsAtOnce()
{
    ScriptedImage *image = showOne(QSize(3200, 2400), 1);
    m_it->viewer->zoomIn();
    image->finish();
    QVERIFY(m_it->waitForLook());
    m_it->viewer->showNormal();
    m_it->viewer->resize(560, 250);
    QTRY_COMPARE(m_it->viewer->size(), QSize(560, 250));
    m_it->viewer->resize(620, 400);
    QCoreApplication::processEvents();
    const QImage shot = m_it->shot();
    QCOMPARE(shot.size(), m_it->room());
    QCOMPARE(shot.pixel(shot.width() - 1, shot.height() - 1), ScriptedImage::kFullColour);
}

void TestFPVPictureScrollView::slotsHaveTheirNames()
{
    const QMetaObject &meta = FPVPictureScrollView::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Slot) {
            names.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
    }
    QCOMPARE(names.join(QLatin1Char('\n')),
             QStringLiteral("memFull()\nzoomIn()\nzoomOut()\nfix()\ncheckRegion()\n"
                            "updatePixmap()\nupdateProgress()\n"
                            "systemChannel(QCString,QByteArray)\n"
                            "btn_prev_cliced()\nbtn_next_cliced()"));
}

void TestFPVPictureScrollView::hasNothingOfAMessageBoxButTheClass()
{
    openOne();
    QVERIFY(m_it->viewer->inherits("DialogBase"));
    QVERIFY(m_it->viewer->inherits("QMessageBox"));
    QVERIFY(m_it->viewer->buttons().isEmpty());
    const QSize size = m_it->viewer->size();
    QCoreApplication::processEvents();
    QCOMPARE(m_it->viewer->size(), size);
    QCOMPARE(m_it->viewer->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

LUMI_TEST(TestFPVPictureScrollView)
#include "TestFPVPictureScrollView.moc"
