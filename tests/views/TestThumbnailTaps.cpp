// SPDX-License-Identifier: MIT
#include "items/FPVItemFolder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/views/CellFixture.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using lumi::test::CellFixture;
using lumi::test::checkBox;
using lumi::test::labels;
using lumi::test::nameLabel;
using lumi::test::NotingImage;
using lumi::test::pictureLabel;

namespace {

QPoint middle(const QWidget *widget)
{
    return widget->rect().center();
}

} // namespace

class TestThumbnailTaps : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_cells = std::make_unique<CellFixture>(); }

    void cleanup() { m_cells.reset(); }

    void aTapEmitsOneSignal_data();
    void aTapEmitsOneSignal();
    void aDoubleTapIsTwoTaps();
    void aTapOnAPhotosNameTogglesItsCheck();
    void aTapOnANameBeforeTheThumbnailTogglesToo();
    void aTapOnAFoldersNameOnlySelects();
    void aTapOnAPhotosNameWithoutACheckBoxIsNothing();
    void aTapOnTheDetailLineIsATap();
    void aTapOnTheCheckBoxIsNoTapOnTheCell();
    void aFolderOpensOnReleaseInside_data();
    void aFolderOpensOnReleaseInside();
    void aPhotoNeverOpensOnRelease();
    void aCellThatLeftItsPageEmitsNothing();

private:
    std::unique_ptr<CellFixture> m_cells;
};

void TestThumbnailTaps::aTapEmitsOneSignal_data()
{
    QTest::addColumn<bool>("onPicture");
    QTest::newRow("on the picture") << true;
    QTest::newRow("beside it") << false;
}

void TestThumbnailTaps::aTapEmitsOneSignal()
{
    QFETCH(bool, onPicture);
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    const QPoint at = onPicture ? middle(pictureLabel(cell)) : QPoint(1, 1);
    QTest::mousePress(onPicture ? static_cast<QWidget *>(pictureLabel(cell)) : cell, Qt::LeftButton,
                      {}, at);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.first().first().value<FPVThumbnailItem *>(), cell);
}

void TestThumbnailTaps::aDoubleTapIsTwoTaps()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    FPVThumbnailLabel *picture = pictureLabel(cell);
    int twice = 0;
    connect(picture, &FPVThumbnailLabel::mouseDoubleClick, this, [&twice] {
        ++twice;
    });
    QTest::mouseClick(picture, Qt::LeftButton, {}, middle(picture));
    QTest::mouseDClick(picture, Qt::LeftButton, {}, middle(picture));
    QCOMPARE(clicked.size(), 2);
    QCOMPARE(twice, 1);
}

void TestThumbnailTaps::aTapOnAPhotosNameTogglesItsCheck()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QVERIFY(item.isChecked());
    QVERIFY(checkBox(cell)->isChecked());
    QCOMPARE(clicked.size(), 2);
    QVERIFY(clicked.at(0).first().value<FPVThumbnailItem *>() == nullptr);
    QCOMPARE(clicked.at(1).first().value<FPVThumbnailItem *>(), cell);
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QVERIFY(!item.isChecked());
    QVERIFY(!checkBox(cell)->isChecked());
}

void TestThumbnailTaps::aTapOnANameBeforeTheThumbnailTogglesToo()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QVERIFY(item.isChecked());
    cell->viewthumbnail();
    QVERIFY(checkBox(cell)->isChecked());
}

void TestThumbnailTaps::aTapOnAFoldersNameOnlySelects()
{
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QSignalSpy decided(cell, &FPVThumbnailItem::decided);
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.first().first().value<FPVThumbnailItem *>(), cell);
    QCOMPARE(decided.size(), 0);
    QVERIFY(!item.isChecked());
}

void TestThumbnailTaps::aTapOnAPhotosNameWithoutACheckBoxIsNothing()
{
    m_cells->metrics.showCheck = false;
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QCOMPARE(clicked.size(), 0);
    QVERIFY(!item.isChecked());
}

void TestThumbnailTaps::aTapOnTheDetailLineIsATap()
{
    m_cells->metrics.showDetail = true;
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QSignalSpy decided(cell, &FPVThumbnailItem::decided);
    QTest::mouseClick(labels(cell).last(), Qt::LeftButton);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(decided.size(), 0);
}

void TestThumbnailTaps::aTapOnTheCheckBoxIsNoTapOnTheCell()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QTest::mouseClick(checkBox(cell), Qt::LeftButton);
    QVERIFY(item.isChecked());
    QCOMPARE(clicked.size(), 0);
}

void TestThumbnailTaps::aFolderOpensOnReleaseInside_data()
{
    lumi::test::columns<QPoint, int>();
    QTest::newRow("inside") << QPoint(80, 60) << 1;
    QTest::newRow("at the first inner point") << QPoint(1, 1) << 1;
    QTest::newRow("at the last point") << QPoint(174, 156) << 1;
    QTest::newRow("on the left edge") << QPoint(0, 60) << 0;
    QTest::newRow("on the upper edge") << QPoint(80, 0) << 0;
    QTest::newRow("right of it") << QPoint(175, 60) << 0;
    QTest::newRow("below it") << QPoint(80, 157) << 0;
    QTest::newRow("far outside") << QPoint(-300, -300) << 0;
}

void TestThumbnailTaps::aFolderOpensOnReleaseInside()
{
    const auto [at, opened] = lumi::test::row<QPoint, int>();
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QSignalSpy clicked(cell, &FPVThumbnailItem::clicked);
    QSignalSpy decided(cell, &FPVThumbnailItem::decided);
    QTest::mousePress(cell, Qt::LeftButton, {}, QPoint(80, 60));
    QCOMPARE(decided.size(), 0);
    QTest::mouseMove(cell, at);
    QTest::mouseRelease(cell, Qt::LeftButton, {}, at);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(static_cast<int>(decided.size()), opened);
}

void TestThumbnailTaps::aPhotoNeverOpensOnRelease()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QSignalSpy decided(cell, &FPVThumbnailItem::decided);
    QTest::mouseClick(cell, Qt::LeftButton, {}, QPoint(1, 1));
    QTest::mouseClick(pictureLabel(cell), Qt::LeftButton);
    QCOMPARE(decided.size(), 0);
}

void TestThumbnailTaps::aCellThatLeftItsPageEmitsNothing()
{
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    NotingImage next(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *follower = m_cells->makeFullCell(&next);
    cell->setNext(follower, m_cells->metrics.imageSize, true);
    item.setThumbnailItem(cell);
    QSignalSpy decided(cell, &FPVThumbnailItem::decided);
    cell->startChain(0);
    cell->leavePage();
    QVERIFY(item.thumbnailItem() == nullptr);
    QTest::mouseRelease(cell, Qt::LeftButton, {}, QPoint(80, 60));
    QTest::qWait(40);
    QCOMPARE(decided.size(), 0);
    QVERIFY(next.asked.isEmpty());
}

LUMI_TEST(TestThumbnailTaps)
#include "TestThumbnailTaps.moc"
