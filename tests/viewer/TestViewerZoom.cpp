// SPDX-License-Identifier: MIT
// What the viewer decodes when it zooms, how large it shows it, and the keys and buttons for it.
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/viewer/ViewerTest.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using lumi::test::kPhoto;
using lumi::test::kStartFull;
using lumi::test::ScriptedImage;

class TestViewerZoom : public lumi::test::ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void zoomingInDecodesFullSizeOnce();
    void zoomingOutDecodesNothing();
    void aSmallPhotoIsNeverDecodedAgain();
    void zoomEndsAtItsLimits();
    void fitComesBack();
    void aResizedWindowFitsAgain();
    void aLargerWindowDecodesAgain();
    void aZoomedPictureKeepsItsZoom();
    void aDecodeKeepsTheWidthOfANarrowWindow();
    void zoomingDuringADecode();
    void buttonsFollowTheZoom();
    void theFitButtonFits();
    void aLargePhotoCountsAsHalf();
    void keys_data();
    void keys();
    void returnDoesNothing();
    void keysWithTheFocusOnAButton();
};

void TestViewerZoom::zoomingInDecodesFullSizeOnce()
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

void TestViewerZoom::zoomingOutDecodesNothing()
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

void TestViewerZoom::aSmallPhotoIsNeverDecodedAgain()
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

void TestViewerZoom::zoomEndsAtItsLimits()
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

void TestViewerZoom::fitComesBack()
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

void TestViewerZoom::aResizedWindowFitsAgain()
{
    ScriptedImage *image = showOne();
    image->calls.clear();
    const int before = fit(kPhoto);
    m_it->viewer->resize(320, 480);
    QVERIFY(fit(kPhoto) < before);
    QTRY_COMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    QVERIFY(image->calls.isEmpty());
}

void TestViewerZoom::aLargerWindowDecodesAgain()
{
    ScriptedImage *first = showOne();
    auto *second = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    m_it->viewer->resize(320, 480);
    QTRY_COMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    m_it->viewer->btn_next_cliced();
    second->finish();
    QVERIFY(m_it->waitForLook());
    first->calls.clear();
    second->calls.clear();
    m_it->viewer->resize(640, 480);
    QTRY_VERIFY(m_it->isDecoding());
    QCOMPARE(second->calls.first(), QStringLiteral("release"));
    QCOMPARE(second->calls.size(), 2);
    second->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    QVERIFY(first->calls.isEmpty());
}

void TestViewerZoom::aZoomedPictureKeepsItsZoom()
{
    showOne(QSize(100, 100), 1);
    m_it->viewer->zoomOut();
    m_it->viewer->resize(320, 480);
    QTest::qWait(300); // longer than the viewer waits for a final size
    QCOMPARE(shownPercent(), QStringLiteral("400%"));
}

void TestViewerZoom::aDecodeKeepsTheWidthOfANarrowWindow()
{
    constexpr QSize kNarrow(480, 600);
    ScriptedImage *image = showOne();
    m_it->viewer->resize(kNarrow);
    QTRY_COMPARE(shownPercent(), QString::asprintf("%d%%", fit(kPhoto)));
    m_it->viewer->zoomIn();
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->viewer->size(), kNarrow);
    image->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->viewer->size(), kNarrow);
}

void TestViewerZoom::zoomingDuringADecode()
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
    // Also before the first picture is shown: the decode begins again at full size.
    m_it->close();
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto, 2);
    m_it->open(other);
    m_it->viewer->zoomIn();
    QCOMPARE(other->calls.last(), kStartFull);
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(shownPercent(), QStringLiteral("50%"));
}

void TestViewerZoom::buttonsFollowTheZoom()
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

void TestViewerZoom::theFitButtonFits()
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

void TestViewerZoom::aLargePhotoCountsAsHalf()
{
    // The least number of pixels at which the decoder halves the photo.
    const QSize photo(4096, 2048);
    showOne(photo, 4);
    QCOMPARE(shownPercent(), QString::asprintf("%d%%", fit(photo / 2)));
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("4096*2048 "));
    // The raster of 1024 is drawn at twice the percentage of a photo of 2048.
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

void TestViewerZoom::keys_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("zoom in") << kKeyZoomIn << QStringLiteral("600%");
    QTest::newRow("zoom in, by its name") << int(Qt::Key_ZoomIn) << QStringLiteral("600%");
    QTest::newRow("zoom out") << kKeyZoomOut << QStringLiteral("300%");
    QTest::newRow("zoom out, by its name") << int(Qt::Key_ZoomOut) << QStringLiteral("300%");
    QTest::newRow("fit") << kKeyFit << QStringLiteral("fit");
    QTest::newRow("fit, by its name") << int(Qt::Key_F23) << QStringLiteral("fit");
    QTest::newRow("any other") << int(Qt::Key_A) << QStringLiteral("400%");
}

void TestViewerZoom::keys()
{
    const auto [key, percent] = lumi::test::row<int, QString>();
    showOne(QSize(100, 100), 1);
    m_it->viewer->zoomOut();
    QCOMPARE(shownPercent(), QStringLiteral("400%"));
    m_it->key(key);
    const QString fitted = QString::asprintf("%d%%", fit(QSize(100, 100)));
    QCOMPARE(shownPercent(), percent == QStringLiteral("fit") ? fitted : percent);
    QVERIFY(m_it->viewer->isVisible());
}

void TestViewerZoom::returnDoesNothing()
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

void TestViewerZoom::keysWithTheFocusOnAButton()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), kPhoto);
    showOne();
    QCOMPARE(QApplication::focusWidget(), m_it->scroll());
    QTest::keyClick(m_it->scroll(), Qt::Key_Backtab);
    QCOMPARE(QApplication::focusWidget(), m_it->button(4));
    QTest::keyClick(m_it->button(4), Qt::Key_Space);
    QCOMPARE(m_it->view->currentObject(), other);
    // The button is hidden, so the keys act on the picture again.
    QCOMPARE(QApplication::focusWidget(), m_it->scroll());
}

LUMI_TEST(TestViewerZoom)
#include "TestViewerZoom.moc"
