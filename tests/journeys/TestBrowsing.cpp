// SPDX-License-Identifier: MIT
// Browsing the photo store and the cards by taps on the real window.
#include "app/FormTop.h"
#include "files/FormFile.h"
#include "platform/session/QCopChannel.h"
#include "platform/toolkit/PagingScrollBar.h"
#include "tests/items/LibraryFaults.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/TestMain.h"
#include "views/FPVThumbnailItem.h"
#include "views/FPVThumbnailView.h"
#include "widgets/MyLeftWidget.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QToolButton>

using lumi::test::Traveller;

namespace {

/// The names from a<first>.jpg to a<last>.jpg.
QStringList names(int first, int last)
{
    QStringList result;
    for (int i = first; i <= last; ++i) {
        result.append(QString::asprintf("a%02d.jpg", i));
    }
    return result;
}

bool isNear(const QColor &one, const QColor &other)
{
    return qAbs(one.red() - other.red()) < 12 && qAbs(one.green() - other.green()) < 12
        && qAbs(one.blue() - other.blue()) < 12;
}

/// Replaces the contents but keeps name and time: a decode of the photo fails.
void spoil(const QString &path, const QDateTime &time)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no photo any more");
    file.flush();
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

} // namespace

class TestBrowsing : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<Traveller>(); }

    void cleanup() { m_user.reset(); }

    void throughFoldersModesAndPages();
    void fromCardToCardAndBackToTheStore();
    void theSecondVisitDecodesNothing();
    void aBadPhotoDoesNotStopTheBrowser();
    void aNarrowScreenFollowsTheCursor();

private:
    [[nodiscard]] PagingScrollBar *bar(Qt::Orientation orientation) const;

    std::unique_ptr<Traveller> m_user;
};

PagingScrollBar *TestBrowsing::bar(Qt::Orientation orientation) const
{
    const auto bars = m_user->view()->findChildren<PagingScrollBar *>();
    const auto found = std::find_if(bars.begin(), bars.end(), [orientation](const auto *candidate) {
        return candidate->orientation() == orientation;
    });
    return found == bars.end() ? nullptr : *found;
}

void TestBrowsing::throughFoldersModesAndPages()
{
    m_user->world.makePhotos(40, QStringLiteral("trip"));
    m_user->world.makePhotos(2, QStringLiteral("trip/day one"));
    m_user->world.makePhoto(QStringLiteral("alone.jpg"));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage({QStringLiteral("trip"), QStringLiteral("alone.jpg")}));
    QVERIFY(!m_user->upButton()->isEnabled());

    m_user->tapItem(QStringLiteral("trip"));
    const QStringList folder{QStringLiteral("day one")};
    QVERIFY(m_user->seesPage(folder + names(0, 4)));
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(m_user->status(), QStringLiteral("day one"));
    m_user->tapItem(QStringLiteral("a03.jpg"));
    QCOMPARE(m_user->status(), QStringLiteral("a03"));

    m_user->tapColumn(MyLeftWidget::ThumbnailSmall);
    QVERIFY(m_user->seesPage(folder + names(0, 33)));
    QVERIFY(m_user->seesThumbnails());
    QCOMPARE(m_user->view()->currentObject()->fileName(), QStringLiteral("a03.jpg"));
    // The groove below the slider: 41 items make 6 rows, the last 5 of them fit.
    PagingScrollBar *vertical = bar(Qt::Vertical);
    m_user->tap(vertical, QPoint(vertical->width() / 2, vertical->height() - 30));
    QVERIFY(m_user->seesPage(names(6, 39)));

    m_user->tapColumn(MyLeftWidget::Detail);
    QVERIFY(m_user->seesPage(folder + names(0, 5)));
    PagingScrollBar *sideways = bar(Qt::Horizontal);
    m_user->tap(sideways, QPoint(sideways->width() - 30, sideways->height() / 2));
    QVERIFY(m_user->seesPage(names(6, 12)));
    QVERIFY(m_user->seesThumbnails());

    m_user->tapColumn(MyLeftWidget::ThumbnailLarge);
    QVERIFY(m_user->seesPage(folder + names(0, 4)));
    m_user->tapItem(QStringLiteral("day one"));
    QVERIFY(m_user->seesPage(names(0, 1)));
    m_user->tapMiddle(m_user->upButton());
    QVERIFY(m_user->seesPage(folder + names(0, 4)));
    m_user->tapMiddle(m_user->upButton());
    QVERIFY(m_user->seesPage({QStringLiteral("trip"), QStringLiteral("alone.jpg")}));
    QVERIFY(!m_user->upButton()->isEnabled());

    m_user->tapColumn(MyLeftWidget::Top);
    QTRY_VERIFY(qobject_cast<FormTop *>(m_user->window->currentForm()) != nullptr);
}

void TestBrowsing::fromCardToCardAndBackToTheStore()
{
    lumi::test::BrowserWorld &world = m_user->world;
    world.makePhotos(2, QStringLiteral("kept"));
    world.makePhotos(3, world.machine->sd + QStringLiteral("/dcim/100cam"));
    world.makePhoto(world.machine->cf + QStringLiteral("/dcim/c.jpg"));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage({QStringLiteral("kept")}));
    m_user->tapItem(QStringLiteral("kept"));
    QVERIFY(m_user->seesPage(names(0, 1)));
    QCOMPARE(m_user->combo()->count(), 1);

    world.machine->insertCard(Slot::SD);
    world.machine->insertCard(Slot::CF);
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QTRY_COMPARE(m_user->combo()->count(), 3);
    m_user->choose(QStringLiteral("SD Card"));
    QVERIFY(m_user->seesPage({QStringLiteral("100cam")}));
    m_user->tapItem(QStringLiteral("100cam"));
    QVERIFY(m_user->seesPage(names(0, 2)));
    m_user->choose(QStringLiteral("CF Card"));
    QVERIFY(m_user->seesPage({QStringLiteral("c.jpg")}));
    m_user->choose(QStringLiteral("SD Card"));
    QVERIFY(m_user->seesPage(names(0, 2)));
    QVERIFY(m_user->seesThumbnails());

    // The card is removed while it is shown, with the page half built.
    m_user->tapMiddle(m_user->upButton());
    QVERIFY(QDir(world.machine->sd + QStringLiteral("/dcim")).removeRecursively());
    world.machine->removeCard(Slot::SD);
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QVERIFY(m_user->seesPage(names(0, 1)));
    QCOMPARE(m_user->combo()->currentText(), QStringLiteral("Photo_Files"));
    QCOMPARE(m_user->combo()->count(), 2);
    QVERIFY(m_user->upButton()->isEnabled());
    QVERIFY(m_user->seesThumbnails());
}

void TestBrowsing::theSecondVisitDecodesNothing()
{
    const QColor colour(30, 140, 220);
    const QDateTime time = QDateTime::currentDateTime().addDays(-3);
    QStringList paths;
    // Square photos: the store keeps rounded sizes, so other proportions may differ by a pixel and
    // have another key in the next mode.
    for (const QString &name : names(0, 5)) {
        paths.append(m_user->world.makePhoto(name, QSize(480, 480), colour));
        QFile file(paths.last());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
    const auto visit = [this, &colour](int mode) {
        m_user->tapColumn(mode);
        return m_user->seesPage(names(0, 5)) && m_user->seesThumbnails()
            && isNear(m_user->thumbnailColour(QStringLiteral("a05.jpg")), colour);
    };
    m_user->startProgram();
    m_user->openBrowser();
    for (const int mode : {0, 1, 2}) {
        QVERIFY(visit(mode));
    }
    m_user->endProgram();
    for (const QString &path : paths) {
        spoil(path, time);
    }
    const int opened = lumi::test::photosOpened();
    QVERIFY(opened >= paths.size());
    m_user->startProgram();
    m_user->openBrowser();
    for (const int mode : {0, 1, 2}) {
        QVERIFY(visit(mode));
    }
    m_user->endProgram();
    QCOMPARE(lumi::test::photosOpened(), opened);

    // A photo with another time counts as another photo and is decoded again.
    spoil(paths.first(), time.addSecs(60));
    m_user->startProgram();
    m_user->openBrowser();
    QTest::ignoreMessage(QtWarningMsg, "FPVItemJpeg Error (3)");
    QVERIFY(m_user->seesPage(names(0, 5)));
    QTRY_VERIFY(m_user->thumbnailColour(QStringLiteral("a05.jpg")).isValid());
    QVERIFY(!m_user->thumbnailColour(QStringLiteral("a00.jpg")).isValid());
}

void TestBrowsing::aBadPhotoDoesNotStopTheBrowser()
{
    m_user->world.makePhoto(QStringLiteral("a.jpg"), QSize(80, 60), Qt::red);
    m_user->world.makeFile(QStringLiteral("b.jpg"), "this is no photo");
    m_user->world.makeFile(QStringLiteral("c.jpg"), QByteArray());
    m_user->world.makePhoto(QStringLiteral("d.jpg"), QSize(80, 60), Qt::blue);
    m_user->startProgram();
    m_user->openBrowser();
    QTest::ignoreMessage(QtWarningMsg, "FPVItemJpeg Error (3)");
    QVERIFY(m_user->seesPage({QStringLiteral("a.jpg"), QStringLiteral("b.jpg"),
                              QStringLiteral("c.jpg"), QStringLiteral("d.jpg")}));
    QTRY_VERIFY(isNear(m_user->thumbnailColour(QStringLiteral("d.jpg")), Qt::blue));
    const QWidget *bad = m_user->cell(QStringLiteral("b.jpg"));
    const QPoint middle = bad->mapTo(m_user->window.get(), QPoint(bad->width() / 2, 60));
    QCOMPARE(m_user->window->grab().toImage().pixelColor(middle), QColor(Qt::black));
    // It can be selected, and the cursor can leave it, like any other photo.
    m_user->tapItem(QStringLiteral("b.jpg"));
    QCOMPARE(m_user->status(), QStringLiteral("b"));
    QTest::keyClick(m_user->view(), Qt::Key_Right);
    QCOMPARE(m_user->status(), QStringLiteral("c"));
}

void TestBrowsing::aNarrowScreenFollowsTheCursor()
{
    constexpr QSize kNarrow(480, 640);
    m_user->world.makePhotos(6);
    m_user->startProgram();
    m_user->window->resize(kNarrow);
    m_user->openBrowser();
    QVERIFY(m_user->seesPage(names(0, 5)));
    QVERIFY(m_user->seesThumbnails());
    const auto isWhole = [this](const QString &name) {
        const FPVThumbnailItem *cell = m_user->cell(name);
        return cell->visibleRegion().boundingRect() == cell->rect();
    };
    QVERIFY(isWhole(QStringLiteral("a00.jpg")) && !isWhole(QStringLiteral("a02.jpg")));
    m_user->tapItem(QStringLiteral("a00.jpg"));
    QTest::keyClick(m_user->view(), Qt::Key_Right);
    QTest::keyClick(m_user->view(), Qt::Key_Right);
    QCOMPARE(m_user->status(), QStringLiteral("a02"));
    QVERIFY(isWhole(QStringLiteral("a02.jpg")));
    QTest::keyClick(m_user->view(), Qt::Key_Left);
    QTest::keyClick(m_user->view(), Qt::Key_Left);
    QVERIFY(isWhole(QStringLiteral("a00.jpg")));
}

LUMI_TEST(TestBrowsing)
#include "TestBrowsing.moc"
