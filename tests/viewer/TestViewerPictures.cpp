// SPDX-License-Identifier: MIT
// From one picture to another in the viewer.
#include "items/FPVItemJpeg.h"
#include "tests/platform/paintedPixels.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/viewer/ViewerTest.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

using lumi::DecodeError;
using lumi::test::isNear;
using lumi::test::kPhoto;
using lumi::test::ScriptedImage;

class TestViewerPictures : public lumi::test::ViewerTest
{
    Q_OBJECT

private Q_SLOTS:
    void nextAndPrevious();
    void nextOfTheOnlyPicture();
    void noOtherPicture_data();
    void noOtherPicture();
    void onlyOneRaster();
    void anotherPictureDuringADecode();
    void aNewDecodeStopsTheTimer_data();
    void aNewDecodeStopsTheTimer();
    void foldersAreSkipped();
    void aNewPictureStartsAtItsTopLeft();
};

void TestViewerPictures::nextAndPrevious()
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

void TestViewerPictures::nextOfTheOnlyPicture()
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

void TestViewerPictures::noOtherPicture_data()
{
    QTest::addColumn<bool>("next");
    QTest::newRow("next") << true;
    QTest::newRow("previous") << false;
}

void TestViewerPictures::noOtherPicture()
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

void TestViewerPictures::onlyOneRaster()
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

void TestViewerPictures::anotherPictureDuringADecode()
{
    ScriptedImage *other = m_it->add(QStringLiteral("b.jpg"), QSize(800, 640), 1);
    ScriptedImage *image = openOne();
    image->slice();
    m_it->key(Qt::Key_End);
    // Late signals of the previous picture.
    image->slice();
    image->finish();
    image->failSlice(DecodeError::Undecodable);
    QVERIFY(!m_it->timer()->isActive());
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->bar()->value(), 0);
    QCOMPARE(m_it->bar()->maximum(), 640);
    QVERIFY(m_it->boxes.texts.isEmpty());
    other->finish();
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->sizeLabel()->text(), QStringLiteral("800*640 "));
}

void TestViewerPictures::aNewDecodeStopsTheTimer_data()
{
    lumi::test::columns<bool, bool>();
    QTest::newRow("zoom in") << false << false;
    QTest::newRow("zoom in before the buttons are back") << false << true;
    QTest::newRow("next") << true << false;
    QTest::newRow("next before the buttons are back") << true << true;
}

/// Neither the end of the old decode nor the repainting may affect the new decode.
void TestViewerPictures::aNewDecodeStopsTheTimer()
{
    const auto [next, early] = lumi::test::row<bool, bool>();
    constexpr QRgb kOld = 0xFFFFFF00U;
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
    QVERIFY(!m_it->timer()->isActive());
    QCoreApplication::processEvents();
    QVERIFY(m_it->isDecoding());
    QCOMPARE(m_it->middle(), kOld);
}

void TestViewerPictures::foldersAreSkipped()
{
    m_it->world.makeFolder(QStringLiteral("folder"));
    m_it->items.append(
        FPVItemList::makeItem(QFileInfo(m_it->world.path(QStringLiteral("folder")))));
    m_it->add(QStringLiteral("b.jpg"), kPhoto);
    openOne();
    m_it->key(Qt::Key_End);
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("b.jpg"));
}

/// Moving a picture does not move the next one.
void TestViewerPictures::aNewPictureStartsAtItsTopLeft()
{
    constexpr QSize kPanorama(20000, 100);
    constexpr int kMarked = 400; // columns
    constexpr QRgb kRed = 0xFFE01010U;
    constexpr QRgb kYellow = 0xFFE0E010U;
    constexpr int kSteps = 10; // of 120 columns each
    QImage image(kPanorama, QImage::Format_RGB32);
    image.fill(QColor::fromRgb(kYellow));
    QPainter painter(&image);
    painter.fillRect(0, 0, kMarked, kPanorama.height(), QColor::fromRgb(kRed));
    painter.end();
    for (const char *name : {"a.jpg", "b.jpg"}) {
        const QString path = m_it->world.path(QLatin1String(name));
        QVERIFY(image.save(path, "JPEG", 100));
        m_it->items.append(new FPVItemJpeg(path, QString(), false));
    }
    const auto leftmost = [this] {
        const QImage shot = m_it->shot();
        return shot.pixel(0, shot.height() / 2);
    };
    m_it->open(qobject_cast<FPVItemImage *>(m_it->items.first()));
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->percent()->text(), QStringLiteral("10%"));
    QVERIFY(isNear(leftmost(), kRed));
    for (int i = 0; i < kSteps; ++i) {
        m_it->key(Qt::Key_Right);
    }
    QVERIFY(isNear(leftmost(), kYellow));
    m_it->key(Qt::Key_End);
    QVERIFY(m_it->waitForLook());
    QCOMPARE(m_it->viewer->windowTitle(), QStringLiteral("b.jpg"));
    QVERIFY(isNear(leftmost(), kRed));
}

LUMI_TEST(TestViewerPictures)
#include "TestViewerPictures.moc"
