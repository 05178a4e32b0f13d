// SPDX-License-Identifier: MIT
#include "items/FPVItemFolder.h"
#include "tests/support/TestMain.h"
#include "tests/views/CellFixture.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using lumi::test::BrowserWorld;
using lumi::test::CellFixture;
using lumi::test::checkBox;
using lumi::test::labels;
using lumi::test::nameLabel;
using lumi::test::NotingImage;
using lumi::test::pictureLabel;

class TestFPVThumbnailItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_cells = std::make_unique<CellFixture>(); }

    void cleanup() { m_cells.reset(); }

    void givesItsItemTheKindOfTheMode();
    void unknownSizeMeansTheLoadedThumbnail();
    void unknownSizeWithoutAThumbnailIs80By60();
    void aNewSizeReplacesTheThumbnail();
    void folderNamesAreCutAtTheFirstDotUntilLaidOut();
    void photoNamesHaveNoExtension();
    void longNamesEndInDots();
    void namesAreNoMarkup();
    void theParentEntryHasItsOwnName();
    void partsStandWhereTheyBelong();
    void withoutANameThePictureTakesTheCell();
    void theNameTakesTheLeftEdgeWithoutACheckBox();
    void theDetailLineStandsAboveTheName();
    void theDetailLineStandsAtTheBottomWithoutAName();
    void thePlaceholderIsBlackAndOfTheImagesSize();
    void aFailedThumbnailIsTriedOnceMoreAt80By60();
    void aFailedThumbnailLeavesTheBlackPlaceholder();
    void aFolderHasNeitherPictureNorCheckBox();
    void theCheckBoxAppearsWithTheThumbnail();
    void theChainGoesOnPastAFailure();
    void theChainEndsAtADeletedCell();
    void framesShowKindAndFocus_data();
    void framesShowKindAndFocus();
    void focusedPartsHaveTheFocusedPalette();
    void theFolderIsReadOnce();
    void aDeletedItemCountsAsNone();
    void theItemForgetsItsCell();
    void theItemKeepsANewerCell();
    void slotsAndSignalsHaveTheirNames();

private:
    std::unique_ptr<CellFixture> m_cells;
};

void TestFPVThumbnailItem::givesItsItemTheKindOfTheMode()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    m_cells->metrics.kind = 's';
    m_cells->makeCell(&item);
    QCOMPARE(item.thumbnailKind(), 's');
}

void TestFPVThumbnailItem::unknownSizeMeansTheLoadedThumbnail()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    const QPixmap *first = cell->loadThumbnail(171, 119);
    QVERIFY(first != nullptr);
    QCOMPARE(cell->loadThumbnail(-1, -1), first);
    QCOMPARE(cell->loadThumbnail(0, 119), first);
    QCOMPARE(cell->loadThumbnail(171, 0), first);
    QCOMPARE(item.asked, QList<QSize>{QSize(171, 119)});
}

void TestFPVThumbnailItem::unknownSizeWithoutAThumbnailIs80By60()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    m_cells->makeCell(&item)->loadThumbnail(-1, -1);
    QCOMPARE(item.asked, QList<QSize>{QSize(80, 60)});
}

void TestFPVThumbnailItem::aNewSizeReplacesTheThumbnail()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setPictureVisible(true, false);
    item.answer = QSize(20, 10);
    QCOMPARE(cell->loadThumbnail(20, 20)->size(), QSize(20, 10));
    QCOMPARE(labels(cell).first()->pixmap().size(), QSize(20, 10));
}

void TestFPVThumbnailItem::folderNamesAreCutAtTheFirstDotUntilLaidOut()
{
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("a.b")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    QVERIFY(cell->setNameVisible(true, false));
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("a"));
    cell->relayout();
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("a.b"));
}

void TestFPVThumbnailItem::photoNamesHaveNoExtension()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("x.y.jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setNameVisible(true, true);
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("x"));
}

void TestFPVThumbnailItem::longNamesEndInDots()
{
    const QString name(60, QLatin1Char('m'));
    NotingImage item(m_cells->world.makePhoto(name + QStringLiteral(".jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setNameVisible(true, true);
    const QString shown = nameLabel(cell)->text();
    QVERIFY(shown.startsWith(QLatin1String("mmm")));
    QVERIFY(shown.endsWith(QLatin1String("...")));
    QVERIFY(!shown.contains(QLatin1String("jpg")));
    const int shownWidth = QFontMetrics(nameLabel(cell)->font()).horizontalAdvance(shown);
    QVERIFY(shownWidth + nameLabel(cell)->indent() <= nameLabel(cell)->width());
}

void TestFPVThumbnailItem::namesAreNoMarkup()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("<b>x<b>.jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setNameVisible(true, true);
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("<b>x<b>"));
    QCOMPARE(nameLabel(cell)->textFormat(), Qt::PlainText);
}

void TestFPVThumbnailItem::theParentEntryHasItsOwnName()
{
    FPVItemFolder item(m_cells->world.store + QStringLiteral("/.."), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setNameVisible(true, true);
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("(:1)"));
}

void TestFPVThumbnailItem::partsStandWhereTheyBelong()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.answer = QSize(101, 51);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    // The cell is 175 x 157, its inner box ends at 172 and 154.
    QCOMPARE(checkBox(cell)->geometry(), QRect(2, 154 - 24, 24, 24));
    const QRect name = nameLabel(cell)->geometry();
    QCOMPARE(name.left(), 24 + 6);
    QCOMPARE(name.right(), 172);
    QCOMPARE(name.height(), 30);
    QCOMPARE(name.top(), 154 - 30);
    // The picture is centred between the inner box's top and the labels.
    QCOMPARE(pictureLabel(cell)->geometry(),
             QRect(2 + (171 - 101) / 2, 2 + (124 - 51) / 2, 101, 51));
}

void TestFPVThumbnailItem::withoutANameThePictureTakesTheCell()
{
    m_cells->metrics.showName = false;
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.answer = QSize(100, 50);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QCOMPARE(labels(cell).size(), 1);
    // The check box takes nothing from it.
    QCOMPARE(pictureLabel(cell)->geometry(), QRect(2 + 71 / 2, 2 + (153 - 50) / 2, 100, 50));
}

void TestFPVThumbnailItem::theNameTakesTheLeftEdgeWithoutACheckBox()
{
    m_cells->metrics.showCheck = false;
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QCOMPARE(nameLabel(cell)->geometry(), QRect(2, 124, 171, 30));
}

void TestFPVThumbnailItem::theDetailLineStandsAboveTheName()
{
    m_cells->metrics.showDetail = true;
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.answer = QSize(100, 50);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QVERIFY(labels(cell).size() == 3);
    const FPVThumbnailLabel *detail = labels(cell).last();
    QCOMPARE(detail->text(), QStringLiteral("a"));
    QCOMPARE(detail->geometry(), QRect(2, 124 - 30, 171, 30));
    QCOMPARE(pictureLabel(cell)->y(), 2 + (94 - 50) / 2);
}

void TestFPVThumbnailItem::theDetailLineStandsAtTheBottomWithoutAName()
{
    m_cells->metrics.showDetail = true;
    m_cells->metrics.showName = false;
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QCOMPARE(labels(cell).last()->geometry(), QRect(24 + 1, 124, 172 - 25 + 1, 30));
}

void TestFPVThumbnailItem::thePlaceholderIsBlackAndOfTheImagesSize()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QVERIFY(item.asked.isEmpty());
    QVERIFY(pictureLabel(cell)->isVisible());
    QCOMPARE(pictureLabel(cell)->size(), m_cells->metrics.imageSize);
    QCOMPARE(cell->grab().toImage().pixelColor(80, 60), QColor(Qt::black));
}

void TestFPVThumbnailItem::aFailedThumbnailIsTriedOnceMoreAt80By60()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.fails = true;
    m_cells->makeFullCell(&item)->viewthumbnail();
    QCOMPARE(item.asked, (QList<QSize>{m_cells->metrics.imageSize, QSize(80, 60)}));
}

void TestFPVThumbnailItem::aFailedThumbnailLeavesTheBlackPlaceholder()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.fails = true;
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    cell->setNext(nullptr, m_cells->metrics.imageSize, true);
    QVERIFY(!cell->setPictureVisible(true, true));
    cell->show();
    m_cells->page.show();
    cell->relayout();
    QVERIFY(pictureLabel(cell)->isVisible());
    QCOMPARE(cell->grab().toImage().pixelColor(80, 60), QColor(Qt::black));
    cell->viewthumbnail();
    QCOMPARE(labels(cell).size(), 1);
    QCOMPARE(cell->grab().toImage().pixelColor(80, 60), QColor(Qt::black));
    // A folder has no placeholder.
    FPVItemFolder folder(m_cells->world.store, QString(), false);
    FPVThumbnailItem *other = m_cells->makeCell(&folder);
    QVERIFY(!other->setPictureVisible(true, true));
    QVERIFY(labels(other).isEmpty());
}

void TestFPVThumbnailItem::aFolderHasNeitherPictureNorCheckBox()
{
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QCOMPARE(labels(cell).size(), 1);
    QCOMPARE(nameLabel(cell)->text(), QStringLiteral("f"));
    QVERIFY(checkBox(cell) == nullptr);
}

void TestFPVThumbnailItem::theCheckBoxAppearsWithTheThumbnail()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    item.setChecked(true);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    QVERIFY(checkBox(cell) != nullptr);
    QVERIFY(!checkBox(cell)->isVisible());
    // The cursor does not show it either.
    cell->setFocusMark(true, true);
    QVERIFY(!checkBox(cell)->isVisible());
    cell->viewthumbnail();
    QVERIFY(checkBox(cell)->isVisible());
    QVERIFY(checkBox(cell)->isChecked());
    cell->setCheckVisible(false, true);
    QVERIFY(!checkBox(cell)->isVisible());
}

void TestFPVThumbnailItem::theChainGoesOnPastAFailure()
{
    NotingImage bad(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    NotingImage good(m_cells->world.makePhoto(QStringLiteral("b.jpg")));
    bad.fails = true;
    FPVThumbnailItem *first = m_cells->makeFullCell(&bad);
    FPVThumbnailItem *second = m_cells->makeFullCell(&good);
    first->setNext(second, m_cells->metrics.imageSize, true);
    first->startChain(10);
    QVERIFY(good.asked.isEmpty());
    QTRY_COMPARE(good.asked, QList<QSize>{m_cells->metrics.imageSize});
    QCOMPARE(bad.asked.size(), 2);
}

void TestFPVThumbnailItem::theChainEndsAtADeletedCell()
{
    NotingImage one(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    NotingImage two(m_cells->world.makePhoto(QStringLiteral("b.jpg")));
    FPVThumbnailItem *first = m_cells->makeFullCell(&one);
    FPVThumbnailItem *second = m_cells->makeFullCell(&two);
    first->setNext(second, m_cells->metrics.imageSize, true);
    delete second;
    first->viewthumbnail();
    QTest::qWait(50);
    QCOMPARE(one.asked.size(), 1);
    QVERIFY(two.asked.isEmpty());
}

void TestFPVThumbnailItem::framesShowKindAndFocus_data()
{
    QTest::addColumn<QString>("entry"); // in the photo store, "" for a photo
    QTest::addColumn<bool>("large");
    QTest::addColumn<QString>("frame");
    QTest::newRow("photo, large") << QString() << true << QStringLiteral("frame_pic_l");
    QTest::newRow("photo, small") << QString() << false << QStringLiteral("frame_pic_s");
    QTest::newRow("empty folder, large")
        << QStringLiteral("empty") << true << QStringLiteral("frame_folder_l");
    QTest::newRow("empty folder, small")
        << QStringLiteral("empty") << false << QStringLiteral("frame_folder_s");
    QTest::newRow("folder with photos, large")
        << QStringLiteral("full") << true << QStringLiteral("frame_folder_pl");
    QTest::newRow("folder with photos, small")
        << QStringLiteral("full") << false << QStringLiteral("frame_folder_ps");
    QTest::newRow("parent entry, large")
        << QStringLiteral("full/..") << true << QStringLiteral("frame_folder_l_back");
    QTest::newRow("parent entry, small")
        << QStringLiteral("full/..") << false << QStringLiteral("frame_folder_s_back");
}

void TestFPVThumbnailItem::framesShowKindAndFocus()
{
    QFETCH(QString, entry);
    QFETCH(bool, large);
    QFETCH(QString, frame);
    m_cells->world.makeFolder(QStringLiteral("empty"));
    m_cells->world.makePhoto(QStringLiteral("full/a.jpg"));
    if (!large) {
        m_cells->metrics = FPVThumbnailMetrics('s', 7, 5);
        m_cells->metrics.layOut(QSize(14, 0));
    }
    NotingImage photo(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVItemFolder folder(m_cells->world.path(entry), QString(), false);
    FPVItemObject *item = &folder;
    if (entry.isEmpty()) {
        item = &photo;
    }
    FPVThumbnailItem *cell = m_cells->makeFullCell(item);
    QVERIFY(m_cells->focusPage(cell));
    const auto colour = [cell] {
        return cell->grab().toImage().pixelColor(0, 0);
    };
    m_cells->page.setFocus();
    cell->setFocusMark(false, true);
    QCOMPARE(colour(), BrowserWorld::frameColour(frame));
    cell->setFocusMark(true, true);
    QCOMPARE(colour(), BrowserWorld::frameColour(frame + QStringLiteral("_on")));
    m_cells->page.clearFocus();
    cell->relayout();
    QCOMPARE(colour(), BrowserWorld::frameColour(frame));
}

void TestFPVThumbnailItem::focusedPartsHaveTheFocusedPalette()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    cell->viewthumbnail();
    QVERIFY(m_cells->focusPage(cell));
    m_cells->page.setFocus();
    const QPoint nameCorner = nameLabel(cell)->geometry().bottomRight();
    QCOMPARE(cell->grab().toImage().pixelColor(nameCorner), QColor(0xAC, 0xAC, 0xAC));
    cell->setFocusMark(true, true);
    QCOMPARE(cell->grab().toImage().pixelColor(nameCorner), QColor(0xE8, 0x94, 0x5A));
    QCOMPARE(checkBox(cell)->palette().color(QPalette::Window), QColor(0xE8, 0x94, 0x5A));
}

void TestFPVThumbnailItem::theFolderIsReadOnce()
{
    FPVItemFolder item(m_cells->world.makeFolder(QStringLiteral("f")), QString(), false);
    FPVThumbnailItem *cell = m_cells->makeFullCell(&item);
    m_cells->world.makePhoto(QStringLiteral("f/a.jpg"));
    cell->relayout();
    QCOMPARE(cell->grab().toImage().pixelColor(0, 0),
             BrowserWorld::frameColour(QStringLiteral("frame_folder_l")));
}

void TestFPVThumbnailItem::aDeletedItemCountsAsNone()
{
    auto item = std::make_unique<NotingImage>(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeFullCell(item.get());
    item.reset();
    QVERIFY(cell->item() == nullptr);
    const QSignalSpy clicks(cell, &FPVThumbnailItem::clicked);
    cell->viewthumbnail();
    QTest::mouseClick(nameLabel(cell), Qt::LeftButton);
    QTest::mouseClick(cell, Qt::LeftButton, {}, QPoint(1, 1));
    cell->checkBoxChanged(true);
    cell->toggleItemCheck(true);
    QVERIFY(cell->loadThumbnail(10, 10) == nullptr);
    QVERIFY(clicks.isEmpty());
}

void TestFPVThumbnailItem::theItemForgetsItsCell()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *cell = m_cells->makeCell(&item);
    item.setThumbnailItem(cell);
    cell->deleteLater();
    QCoreApplication::sendPostedEvents(cell, QEvent::DeferredDelete);
    QVERIFY(item.thumbnailItem() == nullptr);
}

void TestFPVThumbnailItem::theItemKeepsANewerCell()
{
    NotingImage item(m_cells->world.makePhoto(QStringLiteral("a.jpg")));
    FPVThumbnailItem *old = m_cells->makeCell(&item);
    FPVThumbnailItem *newer = m_cells->makeCell(&item);
    item.setThumbnailItem(newer);
    delete old;
    QCOMPARE(item.thumbnailItem(), newer);
}

void TestFPVThumbnailItem::slotsAndSignalsHaveTheirNames()
{
    const QMetaObject &cell = FPVThumbnailItem::staticMetaObject;
    const char *const cellMethods[] = {"clicked(FPVThumbnailItem*)",
                                       "decided(FPVThumbnailItem*)",
                                       "mousePressEvent(QMouseEvent*)",
                                       "mousePressEvent_FileName(QMouseEvent*)",
                                       "mouseReleaseEvent(QMouseEvent*)",
                                       "mouseDoubleClickEvent(QMouseEvent*)",
                                       "mouseMoveEvent(QMouseEvent*)",
                                       "checkBoxChanged(bool)",
                                       "viewthumbnail()"};
    int method = cell.methodOffset();
    for (const char *name : cellMethods) {
        QCOMPARE(cell.method(method).methodSignature(), QByteArray(name));
        QCOMPARE(cell.method(method).methodType(),
                 method < cell.methodOffset() + 2 ? QMetaMethod::Signal : QMetaMethod::Slot);
        ++method;
    }
    QCOMPARE(method, cell.methodCount());
    const QMetaObject &label = FPVThumbnailLabel::staticMetaObject;
    for (const char *name : {"mousePress(QMouseEvent*)", "mouseRelease(QMouseEvent*)",
                             "mouseDoubleClick(QMouseEvent*)", "mouseMove(QMouseEvent*)"}) {
        QVERIFY2(label.indexOfSignal(name) >= label.methodOffset(), name);
    }
}

LUMI_TEST(TestFPVThumbnailItem)
#include "TestFPVThumbnailItem.moc"
