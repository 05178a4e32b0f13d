// SPDX-License-Identifier: MIT
// What the viewer decodes when, how large it shows it, and its two looks, with pictures that
// decode at the test's word.
#include "platform/FrameBuffer.h"
#include "platform/QCopChannel.h"
#include "platform/deviceKey.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ViewerFixture.h"
#include "viewer/zoomSteps.h"

#include <QApplication>
#include <QLabel>
#include <QMetaMethod>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QWindow>

using lumi::DecodeError;
using lumi::test::ScriptedImage;
using lumi::test::ViewerFixture;

namespace {

constexpr QSize kPhoto(1600, 1200);
const QString kMemoryBox = QStringLiteral("Error: Memory full.\nProcessing cancelled (OK)");
const QString kOpenBox = QStringLiteral("Error: You did not open this file (OK)");
const QString kStartFull = QStringLiteral("start full");

} // namespace

class TestFPVPictureScrollView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void fillsTheScreen();
    void startsInTheDecodingLook();
    void endsInTheViewingLook();
    void zoomButtonsComeASecondLater();
    void theRowHoldsStill();
    void theTitleIsTheFileName_data();
    void theTitleIsTheFileName();
    void progressCountsLines();
    void fitsThePhoto_data();
    void fitsThePhoto();
    void labelsTellThePhoto();

    void zoomingInDecodesFullSizeOnce();
    void zoomingOutDecodesNothing();
    void aSmallPhotoIsNeverDecodedAgain();
    void zoomEndsAtItsLimits();
    void fitComesBack();
    void zoomingDuringADecode();
    void buttonsFollowTheZoom();
    void theFitButtonFits();
    void eachButtonHasItsIcon();
    void theRowIsInOrder();
    void aLargePhotoCountsAsHalf();

    void aDecodeWithoutPauses();
    void aFullDecodeWithoutPauses();
    void repaintsEverySecond();
    void nothingIsDrawnDuringADecode();
    void anotherSizeIsDrawnAtOnce();

    void nextAndPrevious();
    void nextOfTheOnlyPicture();
    void noOtherPicture_data();
    void noOtherPicture();
    void onlyOneRaster();
    void anotherPictureDuringADecode();
    void aNewDecodeStopsTheOldSteps_data();
    void aNewDecodeStopsTheOldSteps();
    void foldersArePassedOver();

    void failedStart_data();
    void failedStart();
    void noPictureAtAll();
    void failureWhileDecoding_data();
    void failureWhileDecoding();
    void failedFullDecode();
    void failedNextPicture();
    void oneBoxOnly();
    void closedWhileTheBoxIsUp();

    void anotherProgramComesToTheFront();
    void otherMessagesAreIgnored();
    void keys_data();
    void keys();
    void returnDoesNothing();
    void keysWithTheFocusOnAButton();
    void closing_data();
    void closing();
    void theItemMayDie();
    void theViewMayDie();
    void leavesNothingBehind();
    void slotsHaveTheirNames();
    void isAMessageBoxByNameOnly();

private:
    ScriptedImage *openOne(QSize size = kPhoto, int denominator = 2);
    /// Up to the viewing look.
    ScriptedImage *showOne(QSize size = kPhoto, int denominator = 2);
    [[nodiscard]] int fit(QSize photo) const;

    [[nodiscard]] QString shownPercent() const { return m_it->percent()->text(); }

    std::unique_ptr<ViewerFixture> m_it;
};

void TestFPVPictureScrollView::init()
{
    m_it = std::make_unique<ViewerFixture>();
}

void TestFPVPictureScrollView::cleanup()
{
    m_it.reset();
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

ScriptedImage *TestFPVPictureScrollView::openOne(QSize size, int denominator)
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), size, denominator);
    m_it->open(image);
    return image;
}

ScriptedImage *TestFPVPictureScrollView::showOne(QSize size, int denominator)
{
    ScriptedImage *image = openOne(size, denominator);
    image->finish();
    if (!m_it->waitForLook()) {
        qFatal("the picture doesn't come");
    }
    return image;
}

int TestFPVPictureScrollView::fit(QSize photo) const
{
    return *lumi::fitPercent(m_it->room(), photo);
}

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
    QTest::qWait(120);
    QVERIFY(m_it->isDecoding());
    QElapsedTimer clock;
    clock.start();
    image->finish();
    QCOMPARE(m_it->bar()->value(), m_it->bar()->maximum());
    QCOMPARE(m_it->timer()->interval(), 50);
    QVERIFY(m_it->timer()->isSingleShot());
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
    QVERIFY(m_it->waitForLook());
    QVERIFY(clock.elapsed() >= 45);
    QVERIFY(m_it->percent()->isVisible());
    QVERIFY(m_it->button(3)->isVisible());
    QVERIFY(m_it->button(4)->isVisible());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::zoomButtonsComeASecondLater()
{
    showOne();
    QElapsedTimer clock;
    clock.start();
    for (const int zoom : {0, 1, 2}) {
        QVERIFY(!m_it->button(zoom)->isEnabled());
    }
    QVERIFY(m_it->waitForButtons());
    QCOMPARE(m_it->timer()->interval(), 1000);
    QVERIFY(!m_it->timer()->isSingleShot());
    // Such a timer may be early by a part of its time.
    QVERIFY(clock.elapsed() >= 700);
    QVERIFY(m_it->button(0)->isEnabled());
    QVERIFY(m_it->button(1)->isEnabled());
}

void TestFPVPictureScrollView::theRowHoldsStill()
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
    // What was told before the start returned doesn't count.
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

void TestFPVPictureScrollView::labelsTellThePhoto()
{
    openOne();
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("1600*1200 "));
    QVERIFY(m_it->sizeLabel()->isVisible());
}

void TestFPVPictureScrollView::zoomingInDecodesFullSizeOnce()
{
    ScriptedImage *image = showOne();
    image->calls.clear();
    QVERIFY(fit(kPhoto) < 50);
    m_it->key(kKeyZoomIn);
    QCOMPARE(image->calls, QStringList({QStringLiteral("release"), kStartFull}));
    QVERIFY(m_it->isDecoding());
    QVERIFY(!m_it->button(3)->isVisible());
    QVERIFY(!m_it->percent()->isVisible());
    QCOMPARE(m_it->bar()->maximum(), 1200);
    QCOMPARE(m_it->bar()->value(), 0);
    QCOMPARE(shownPercent(), QStringLiteral("50%"));
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->middle(), ScriptedImage::kFullColour);
    m_it->viewer->zoomIn();
    QCOMPARE(shownPercent(), QStringLiteral("100%"));
    m_it->viewer->zoomIn();
    QCOMPARE(shownPercent(), QStringLiteral("150%"));
    QVERIFY(!m_it->isDecoding());
    QCOMPARE(image->calls, QStringList({QStringLiteral("release"), kStartFull}));
}

void TestFPVPictureScrollView::zoomingOutDecodesNothing()
{
    ScriptedImage *image = showOne();
    image->calls.clear();
    m_it->viewer->zoomOut();
    QCOMPARE(shownPercent(), QStringLiteral("30%"));
    QVERIFY(!m_it->isDecoding());
    QVERIFY(image->calls.isEmpty());
    // 1600 pixels at 30 percent, in a raster of half the size.
    const QImage shot = m_it->shot();
    const int left = (shot.width() - 480) / 2;
    QCOMPARE(shot.pixel(left - 1, shot.height() / 2), 0xFF808080U);
    QCOMPARE(shot.pixel(left, shot.height() / 2), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::aSmallPhotoIsNeverDecodedAgain()
{
    ScriptedImage *image = showOne(QSize(100, 100), 1);
    image->calls.clear();
    m_it->viewer->zoomOut();
    QCOMPARE(shownPercent(), QStringLiteral("400%"));
    m_it->viewer->zoomIn();
    QCOMPARE(shownPercent(), QStringLiteral("600%"));
    QVERIFY(image->calls.isEmpty());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::zoomEndsAtItsLimits()
{
    ScriptedImage *image = showOne(QSize(100, 100), 1);
    for (int i = 0; i < 10; ++i) {
        m_it->viewer->zoomIn();
    }
    QCOMPARE(shownPercent(), QStringLiteral("1000%"));
    for (int i = 0; i < 15; ++i) {
        m_it->viewer->zoomOut();
    }
    QCOMPARE(shownPercent(), QStringLiteral("10%"));
    QCOMPARE(image->calls.filter(kStartFull).size(), 0);
}

void TestFPVPictureScrollView::fitComesBack()
{
    ScriptedImage *image = showOne();
    m_it->viewer->zoomIn();
    image->finish();
    QVERIFY(m_it->waitForLook());
    image->calls.clear();
    m_it->viewer->fix();
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    QVERIFY(image->calls.isEmpty());
    m_it->viewer->zoomIn();
    QVERIFY(image->calls.isEmpty());
}

void TestFPVPictureScrollView::zoomingDuringADecode()
{
    ScriptedImage *image = showOne();
    m_it->viewer->zoomIn();
    m_it->viewer->zoomIn();
    m_it->viewer->zoomIn();
    QCOMPARE(image->calls.filter(kStartFull).size(), 1);
    QVERIFY(m_it->isDecoding());
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QStringLiteral("150%"));
    QCOMPARE(m_it->middle(), ScriptedImage::kFullColour);
    // And before the first picture is there: the decode begins anew, at full size.
    m_it->close();
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    m_it->open(other);
    m_it->viewer->zoomIn();
    QCOMPARE(other->calls.last(), kStartFull);
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QStringLiteral("50%"));
}

void TestFPVPictureScrollView::buttonsFollowTheZoom()
{
    showOne(QSize(20000, 100), 1);
    QVERIFY(m_it->waitForButtons());
    QVERIFY(m_it->button(0)->isEnabled());
    QVERIFY(!m_it->button(1)->isEnabled());
    m_it->close();
    m_it->items.clear();
    showOne(QSize(10, 10), 1);
    QVERIFY(m_it->waitForButtons());
    QVERIFY(!m_it->button(0)->isEnabled());
    QVERIFY(m_it->button(1)->isEnabled());
    m_it->button(1)->click();
    QCOMPARE(shownPercent(), QStringLiteral("800%"));
    QTRY_VERIFY(m_it->button(0)->isEnabled());
}

void TestFPVPictureScrollView::theFitButtonFits()
{
    showOne(QSize(100, 100), 1);
    m_it->viewer->zoomOut();
    m_it->viewer->zoomOut();
    QCOMPARE(shownPercent(), QStringLiteral("300%"));
    QVERIFY(m_it->waitForButtons());
    QTest::mouseClick(m_it->button(2), Qt::LeftButton);
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(QSize(100, 100))));
    QTest::mouseClick(m_it->button(1), Qt::LeftButton);
    QCOMPARE(shownPercent(), QStringLiteral("400%"));
    QTest::mouseClick(m_it->button(0), Qt::LeftButton);
    QCOMPARE(shownPercent(), QStringLiteral("600%"));
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

void TestFPVPictureScrollView::aLargePhotoCountsAsHalf()
{
    // Just as many pixels as make the decoder halve it.
    const QSize photo(4096, 2048);
    showOne(photo, 4);
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(photo / 2)));
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("4096*2048 "));
    // The raster of 1024 is drawn twice as large as a percent of 2048 says.
    const QImage shot = m_it->shot();
    const int width = fit(photo / 2) * 2 * 1024 / 100;
    const int left = (shot.width() - width) / 2;
    QCOMPARE(shot.pixel(left, shot.height() / 2), ScriptedImage::kScreenColour);
    QVERIFY(left == 0 || shot.pixel(left - 1, shot.height() / 2) == 0xFF808080U);
    m_it->close();
    m_it->items.clear();
    showOne(QSize(4095, 2048), 4);
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(QSize(4095, 2048))));
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
    for (int round = 0; round < 2; ++round) {
        lumi::test::drawColour(m_it->scroll()->viewport(), 0xFFFFFF00U);
        QCOMPARE(m_it->middle(), 0xFFFFFF00U);
        QElapsedTimer clock;
        clock.start();
        QTRY_COMPARE(m_it->middle(), ScriptedImage::kScreenColour);
        QVERIFY(clock.elapsed() < 3000);
    }
}

void TestFPVPictureScrollView::nothingIsDrawnDuringADecode()
{
    ScriptedImage *image = openOne();
    image->slice();
    QTest::qWait(100);
    QVERIFY(!FrameBuffer::instance().hasSurface(m_it->scroll()->viewport()));
    // The margin's colour stands there, so that nothing flashes.
    QCOMPARE(m_it->middle(), 0xFF808080U);
    image->finish();
    QVERIFY(m_it->waitForLook());
    m_it->viewer->zoomIn();
    m_it->scroll()->redraw();
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
}

void TestFPVPictureScrollView::anotherSizeIsDrawnAtOnce()
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

void TestFPVPictureScrollView::nextAndPrevious()
{
    QList<ScriptedImage *> images;
    for (const char *name : {"a.jpg", "b.jpg", "c.jpg"}) {
        images.append(m_it->add(QLatin1String(name), QSize(800 + 16 * int(images.size()), 600), 1));
    }
    m_it->open(images.at(1));
    images.at(1)->finish();
    QVERIFY(m_it->waitForLook());
    QTest::mouseClick(m_it->button(4), Qt::LeftButton);
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("c.jpg"));
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("832*600 "));
    QCOMPARE(m_it->view->currentIndex(), 2);
    images.at(2)->finish();
    QVERIFY(m_it->waitForLook());
    m_it->key(Qt::Key_End);
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("a.jpg"));
    images.at(0)->finish();
    QVERIFY(m_it->waitForLook());
    m_it->key(Qt::Key_Home);
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("c.jpg"));
    images.at(2)->finish();
    QVERIFY(m_it->waitForLook());
    QTest::mouseClick(m_it->button(3), Qt::LeftButton);
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("b.jpg"));
    QCOMPARE(m_it->view->currentIndex(), 1);
}

void TestFPVPictureScrollView::nextOfTheOnlyPicture()
{
    ScriptedImage *image = showOne();
    m_it->viewer->zoomIn();
    image->finish();
    QVERIFY(m_it->waitForLook());
    image->calls.clear();
    m_it->key(Qt::Key_End);
    const QSize room = m_it->room();
    QCOMPARE(image->calls,
             QStringList({QStringLiteral("release"),
                          QString::asprintf("start %dx%d", room.width(), room.height())}));
    image->slice();
    QCOMPARE(m_it->bar()->value(), 64);
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
}

void TestFPVPictureScrollView::noOtherPicture_data()
{
    QTest::addColumn<bool>("next");
    QTest::newRow("next") << true;
    QTest::newRow("previous") << false;
}

void TestFPVPictureScrollView::noOtherPicture()
{
    QFETCH(bool, next);
    openOne();
    m_it->view->setList(nullptr);
    QTimer::singleShot(20, m_it->viewer.get(),
                       next ? &FPVPictureScrollView::btn_next_cliced
                            : &FPVPictureScrollView::btn_prev_cliced);
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QVERIFY(m_it->boxes.texts.isEmpty());
}

void TestFPVPictureScrollView::onlyOneRaster()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    ScriptedImage *image = showOne();
    m_it->key(Qt::Key_End);
    QVERIFY(image->rasterBits() == nullptr);
    QCOMPARE(image->calls.last(), QStringLiteral("release"));
    QVERIFY(other->rasterBits() != nullptr);
    m_it->close();
    QVERIFY(other->rasterBits() == nullptr);
}

void TestFPVPictureScrollView::anotherPictureDuringADecode()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), QSize(800, 640), 1);
    ScriptedImage *image = openOne();
    image->slice();
    m_it->key(Qt::Key_End);
    // Late news of the picture that was left.
    image->slice();
    image->finish();
    image->failSlice(DecodeError::Undecodable);
    QTest::qWait(100);
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->bar()->value(), 0);
    QCOMPARE(m_it->bar()->maximum(), 640);
    QVERIFY(m_it->boxes.texts.isEmpty());
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("800*640 "));
}

void TestFPVPictureScrollView::aNewDecodeStopsTheOldSteps_data()
{
    QTest::addColumn<bool>("next");
    QTest::addColumn<bool>("early");
    QTest::newRow("zoom in") << false << false;
    QTest::newRow("zoom in before the buttons are back") << false << true;
    QTest::newRow("next") << true << false;
    QTest::newRow("next before the buttons are back") << true << true;
}

/// Neither the end of the last decode nor the repainting may meet the new one.
void TestFPVPictureScrollView::aNewDecodeStopsTheOldSteps()
{
    QFETCH(bool, next);
    QFETCH(bool, early);
    constexpr QRgb kOld = 0xFFFFFF00U;
    constexpr int kLongerThanASecond = 1300;
    m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    openOne()->finish();
    QVERIFY(early || m_it->waitForLook());
    QVERIFY(m_it->timer()->isActive());
    lumi::test::drawColour(m_it->scroll()->viewport(), kOld);
    if (next) {
        m_it->viewer->btn_next_cliced();
    } else {
        m_it->viewer->zoomIn();
    }
    QTest::qWait(kLongerThanASecond);
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->middle(), kOld);
}

void TestFPVPictureScrollView::foldersArePassedOver()
{
    m_it->world.makeFolder(QStringLiteral("folder"));
    m_it->items.append(
        FPVItemList::makeItem(QFileInfo(m_it->world.path(QStringLiteral("folder")))));
    m_it->add(QStringLiteral("b.jpg"), kPhoto);
    openOne();
    m_it->key(Qt::Key_End);
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("b.jpg"));
}

Q_DECLARE_METATYPE(lumi::DecodeError)

void TestFPVPictureScrollView::failedStart_data()
{
    QTest::addColumn<DecodeError>("error");
    QTest::addColumn<QString>("box");
    QTest::newRow("memory") << DecodeError::OutOfMemory << kMemoryBox;
    QTest::newRow("bad file") << DecodeError::Undecodable << kOpenBox;
    QTest::newRow("wrong depth") << DecodeError::WrongDepth << kOpenBox;
    QTest::newRow("no reason given") << DecodeError::None << kOpenBox;
}

void TestFPVPictureScrollView::failedStart()
{
    QFETCH(DecodeError, error);
    QFETCH(QString, box);
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto);
    image->starts = 0;
    image->reason = error;
    m_it->open(image);
    QCOMPARE(m_it->boxes.texts, QStringList(box));
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QCOMPARE(m_it->boxes.texts.size(), 1);
}

void TestFPVPictureScrollView::noPictureAtAll()
{
    m_it->open(nullptr);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
}

void TestFPVPictureScrollView::failureWhileDecoding_data()
{
    failedStart_data();
}

void TestFPVPictureScrollView::failureWhileDecoding()
{
    QFETCH(DecodeError, error);
    QFETCH(QString, box);
    if (error == DecodeError::None) {
        error = DecodeError::Undecodable;
    }
    ScriptedImage *image = openOne();
    QTimer::singleShot(20, image, [image, error] {
        image->slice();
        image->failSlice(error);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(box));
    QVERIFY(!m_it->viewer->isVisible());
}

void TestFPVPictureScrollView::failedFullDecode()
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto, 2);
    image->starts = 1;
    image->reason = DecodeError::OutOfMemory;
    m_it->open(image);
    image->finish();
    QTimer::singleShot(20, m_it->viewer.get(), &FPVPictureScrollView::zoomIn);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kMemoryBox));
}

void TestFPVPictureScrollView::failedNextPicture()
{
    ScriptedImage *bad = m_it->add(QStringLiteral("b.jpg"), QSize(-1, -1));
    bad->starts = 0;
    openOne()->finish();
    QTimer::singleShot(20, m_it->viewer.get(), &FPVPictureScrollView::btn_next_cliced);
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
    QCOMPARE(m_it->view->currentObject(), bad);
}

void TestFPVPictureScrollView::oneBoxOnly()
{
    ScriptedImage *image = openOne();
    m_it->boxes.whileOpen = [image] {
        image->failSlice(DecodeError::OutOfMemory);
    };
    QTimer::singleShot(20, image, [image] {
        image->failSlice(DecodeError::Undecodable);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts, QStringList(kOpenBox));
}

void TestFPVPictureScrollView::closedWhileTheBoxIsUp()
{
    ScriptedImage *image = openOne();
    m_it->boxes.whileOpen = [this] {
        m_it->viewer->systemChannel("appForeground(QString)", {});
    };
    QTimer::singleShot(20, image, [image] {
        image->failSlice(DecodeError::Undecodable);
    });
    QVERIFY(m_it->run());
    QCOMPARE(m_it->boxes.texts.size(), 1);
}

void TestFPVPictureScrollView::anotherProgramComesToTheFront()
{
    ScriptedImage *image = openOne();
    image->slice();
    image->calls.clear();
    QCopChannel::send("QPE/System", "appForeground(QString)");
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QCOMPARE(image->calls, QStringList(QStringLiteral("abort")));
    // News of a decode that can't be held up any more.
    image->slice();
    image->failSlice(DecodeError::OutOfMemory);
    image->finish();
    QTest::qWait(100);
    QVERIFY(m_it->boxes.texts.isEmpty());
    QVERIFY(!FrameBuffer::instance().isAllocated());
}

void TestFPVPictureScrollView::otherMessagesAreIgnored()
{
    openOne();
    QCopChannel::send("QPE/System", "batteryChanged()");
    QCopChannel::send("QPE/Card", "appForeground(QString)");
    QTest::qWait(50);
    QVERIFY(m_it->viewer->isVisible());
}

void TestFPVPictureScrollView::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("percent");
    QTest::newRow("zoom in") << kKeyZoomIn << QStringLiteral("600%");
    QTest::newRow("zoom in, by its name") << int(Qt::Key_ZoomIn) << QStringLiteral("600%");
    QTest::newRow("zoom out") << kKeyZoomOut << QStringLiteral("300%");
    QTest::newRow("zoom out, by its name") << int(Qt::Key_ZoomOut) << QStringLiteral("300%");
    QTest::newRow("fit") << kKeyFit << QStringLiteral("fit");
    QTest::newRow("fit, by its name") << int(Qt::Key_F23) << QStringLiteral("fit");
    QTest::newRow("any other") << int(Qt::Key_A) << QStringLiteral("400%");
}

void TestFPVPictureScrollView::keys()
{
    QFETCH(int, key);
    QFETCH(QString, percent);
    showOne(QSize(100, 100), 1);
    m_it->viewer->zoomOut();
    QCOMPARE(shownPercent(), QStringLiteral("400%"));
    m_it->key(key);
    const QString fitted = QString::asprintf("%d%%", fit(QSize(100, 100)));
    QCOMPARE(shownPercent(), percent == QStringLiteral("fit") ? fitted : percent);
    QVERIFY(m_it->viewer->isVisible());
}

void TestFPVPictureScrollView::returnDoesNothing()
{
    showOne();
    // In a dialog the key presses the default button.
    QPushButton button(m_it->viewer.get());
    button.setDefault(true);
    button.show();
    const QSignalSpy clicks(&button, &QPushButton::clicked);
    m_it->key(Qt::Key_Return);
    QCOMPARE(clicks.count(), 0);
    QVERIFY(m_it->viewer->isVisible());
    m_it->key(Qt::Key_Enter);
    QCOMPARE(clicks.count(), 1);
}

void TestFPVPictureScrollView::keysWithTheFocusOnAButton()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto);
    showOne();
    QCOMPARE(QApplication::focusWidget(), m_it->scroll());
    QTest::keyClick(m_it->scroll(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), m_it->button(4));
    QTest::keyClick(m_it->button(4), Qt::Key_Space);
    QCOMPARE(m_it->view->currentObject(), other);
    // The button has gone; the keys are the picture's again.
    QCOMPARE(QApplication::focusWidget(), m_it->scroll());
}

void TestFPVPictureScrollView::closing_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("the window's own button") << false;
}

void TestFPVPictureScrollView::closing()
{
    QFETCH(bool, byKey);
    ScriptedImage *image = openOne();
    QTimer::singleShot(20, m_it->viewer.get(), [this, byKey] {
        byKey ? m_it->key(Qt::Key_Escape) : static_cast<void>(m_it->viewer->close());
    });
    QVERIFY(m_it->run());
    QVERIFY(!m_it->viewer->isVisible());
    QVERIFY(!FrameBuffer::instance().isAllocated());
    m_it->close();
    QVERIFY(image->rasterBits() == nullptr);
}

void TestFPVPictureScrollView::theItemMayDie()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    ScriptedImage *image = showOne();
    m_it->view->setCurrentObjectQuiet(other);
    m_it->items.remove(image);
    m_it->scroll()->redraw();
    m_it->viewer->zoomOut();
    m_it->viewer->zoomIn();
    m_it->viewer->fix();
    m_it->viewer->checkRegion();
    m_it->key(Qt::Key_Right);
    QVERIFY(m_it->viewer->isVisible());
    m_it->key(Qt::Key_End);
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->middle(), ScriptedImage::kScreenColour);
    m_it->items.remove(other);
    m_it->viewer->systemChannel("appForeground(QString)", {});
    QVERIFY(!m_it->viewer->isVisible());
}

void TestFPVPictureScrollView::theViewMayDie()
{
    showOne();
    m_it->view.reset();
    m_it->key(Qt::Key_End);
    QVERIFY(!m_it->viewer->isVisible());
}

void TestFPVPictureScrollView::leavesNothingBehind()
{
    ScriptedImage *image = m_it->add(QStringLiteral("a.jpg"), kPhoto, 2);
    image->completesAtOnce = true;
    const auto windows = QApplication::topLevelWidgets().size();
    const auto all = QApplication::allWidgets().size();
    for (int i = 0; i < 50; ++i) {
        m_it->open(image);
        QVERIFY(FrameBuffer::instance().hasSurface(m_it->scroll()->viewport()));
        m_it->close();
        QVERIFY(!FrameBuffer::instance().isAllocated());
        QVERIFY(image->rasterBits() == nullptr);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(QApplication::topLevelWidgets().size(), windows);
    QCOMPARE(QApplication::allWidgets().size(), all);
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

void TestFPVPictureScrollView::isAMessageBoxByNameOnly()
{
    openOne();
    QVERIFY(m_it->viewer->inherits("DialogBase"));
    QVERIFY(m_it->viewer->inherits("QMessageBox"));
    QVERIFY(m_it->viewer->buttons().isEmpty());
    const QSize size = m_it->viewer->size();
    QTest::qWait(50);
    QCOMPARE(m_it->viewer->size(), size);
    QCOMPARE(m_it->viewer->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

LUMI_TEST(TestFPVPictureScrollView)
#include "TestFPVPictureScrollView.moc"
