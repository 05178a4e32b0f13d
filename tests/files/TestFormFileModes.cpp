// SPDX-License-Identifier: MIT
// The display modes of the browser form, and the column of buttons that chooses them.
#include "tests/files/FormFixture.h"
#include "tests/support/RequestLog.h"
#include "tests/support/TestMain.h"
#include "widgets/MyImageButton.h"

#include <QTest>

using lumi::test::FormFixture;

namespace {

/// Counts the children that are added to a widget.
class ChildCounter : public QObject
{
public:
    explicit ChildCounter(QObject *parent) { parent->installEventFilter(this); }

    int added = 0;

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        added += event->type() == QEvent::ChildAdded ? 1 : 0;
        return false;
    }
};

} // namespace

class TestFormFileModes : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void nothingIsCutOffInAnyMode_data();
    void nothingIsCutOffInAnyMode();
    void modesGiveTheViewTheirGrid_data();
    void modesGiveTheViewTheirGrid();
    void theSameModeAgainIsNothing();
    void theModesButtonIsLit();
    void modesTakeTheFocusUnlessTheComboHasIt();
    void modesKeepTheCursorOnThePage();
    void largeModeBuildsOnePageOnly();
    void theColumnLeadsToModesAndTop();

private:
    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileModes::nothingIsCutOffInAnyMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("top"); // of the view, below the row above
    QTest::newRow("large") << 0 << 10;
    QTest::newRow("small") << 1 << 10;
    // The detail panel above is 185 high, and the gap 20.
    QTest::newRow("info") << 2 << 10 + 185 + 20;
}

void TestFormFileModes::nothingIsCutOffInAnyMode()
{
    QFETCH(int, mode);
    m_form->world.makePhotos(40);
    m_form->start();
    m_form->form->btn_leftWidget_clicked(mode);
    QVERIFY(QTest::qWaitFor([this] {
        return !m_form->names().isEmpty();
    }));
    QTest::qWait(20);
    QTEST(m_form->view->y(), "top");
    const QRect screen = m_form->form->rect();
    const QRect view(m_form->view->mapTo(m_form->form.get(), QPoint()), m_form->view->size());
    QVERIFY(screen.adjusted(0, 0, -10, -10).contains(view));
    for (const FPVThumbnailItem *cell : m_form->view->findChildren<FPVThumbnailItem *>()) {
        QVERIFY(m_form->view->rect().contains(cell->geometry()));
    }
}

void TestFormFileModes::modesGiveTheViewTheirGrid_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("cells");
    QTest::addColumn<bool>("names");
    QTest::addColumn<bool>("checks");
    QTest::addColumn<char>("kind");
    QTest::newRow("large") << 0 << 6 << true << true << 'l';
    QTest::newRow("small") << 1 << 35 << false << true << 's';
    QTest::newRow("info") << 2 << 7 << false << false << 'd';
}

void TestFormFileModes::modesGiveTheViewTheirGrid()
{
    QFETCH(int, id);
    QFETCH(int, cells);
    m_form->world.makePhotos(40);
    m_form->start();
    m_form->form->btn_leftWidget_clicked(id);
    QVERIFY(m_form->waitForCells(cells));
    const FPVThumbnailItem *cell = m_form->cell(QStringLiteral("a00.jpg"));
    const bool hasName = cell->findChildren<QLabel *>().size() == 2;
    QTEST(hasName, "names");
    const bool hasCheck = cell->findChild<QAbstractButton *>() != nullptr;
    QTEST(hasCheck, "checks");
    QTEST(qobject_cast<FPVItemImage *>(cell->item())->thumbnailKind(), "kind");
}

void TestFormFileModes::theSameModeAgainIsNothing()
{
    m_form->world.makePhotos(2);
    m_form->start();
    for (const int id : {0, 1, 2}) {
        m_form->form->btn_leftWidget_clicked(id);
        QVERIFY(m_form->waitForCells(2));
        const QPointer<FPVThumbnailItem> cell = m_form->cell(QStringLiteral("a00.jpg"));
        m_form->form->btn_leftWidget_clicked(id);
        QCOMPARE(m_form->cell(QStringLiteral("a00.jpg")), cell.data());
        QVERIFY(!cell.isNull());
    }
}

void TestFormFileModes::theModesButtonIsLit()
{
    m_form->start();
    for (const int id : {0, 2, 1, 0}) {
        m_form->form->btn_leftWidget_clicked(id);
        for (int button = 0; button <= 4; ++button) {
            QCOMPARE(m_form->columnButton(button)->isOn(), button == id);
            QVERIFY(m_form->columnButton(button)->isVisible());
        }
    }
}

void TestFormFileModes::modesTakeTheFocusUnlessTheComboHasIt()
{
    m_form->start();
    m_form->columnButton(1)->setFocus();
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(m_form->view->hasFocus());
    m_form->combo->setFocus();
    m_form->form->menu_disp_ThumbnailLarge();
    QVERIFY(m_form->combo->hasFocus());
    m_form->columnButton(2)->setFocus();
    m_form->form->menu_disp_DispDetail();
    QVERIFY(m_form->columnButton(2)->hasFocus());
}

void TestFormFileModes::modesKeepTheCursorOnThePage()
{
    m_form->world.makePhotos(40);
    m_form->start();
    QVERIFY(m_form->waitForCells(6));
    m_form->view->showPage(-1, 37, true);
    QVERIFY(m_form->waitForCells(6 - 2));
    m_form->form->menu_disp_DispDetail();
    QVERIFY(m_form->waitForCells(5));
    QCOMPARE(m_form->view->topIndex(), 35);
    QCOMPARE(m_form->view->currentIndex(), 37);
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(m_form->waitForCells(33));
    QCOMPARE(m_form->view->topIndex(), 7);
    m_form->form->menu_disp_ThumbnailLarge();
    QVERIFY(m_form->waitForCells(4));
    QCOMPARE(m_form->view->topIndex(), 36);
}

void TestFormFileModes::largeModeBuildsOnePageOnly()
{
    m_form->world.makePhotos(2);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    m_form->view->setCurrentObject(m_form->cell(QStringLiteral("a01.jpg"))->item());
    m_form->form->menu_disp_ThumbnailSmall();
    ChildCounter pages(m_form->view->viewport());
    m_form->form->menu_disp_ThumbnailLarge();
    const int inLarge = pages.added;
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(inLarge > 0);
    // The other modes then show the page with the cursor.
    QCOMPARE(pages.added, 2 * inLarge + 1);
}

void TestFormFileModes::theColumnLeadsToModesAndTop()
{
    const lumi::test::RequestLog log(&m_form->window);
    m_form->world.makePhotos(40);
    m_form->start();
    QTest::mouseClick(m_form->columnButton(1), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(35));
    QTest::mouseClick(m_form->columnButton(2), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(7));
    QTest::mouseClick(m_form->columnButton(0), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(6));
    m_form->form->btn_leftWidget_clicked(7);
    m_form->form->btn_leftWidget_clicked(-1);
    QVERIFY(log.forms.isEmpty());
    QTest::mouseClick(m_form->columnButton(4), Qt::LeftButton);
    // Not before the event loop runs.
    QVERIFY(log.forms.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(log.forms, QList<int>{0});
    QCOMPARE(log.nullTexts, QList<bool>{true});
}

LUMI_TEST(TestFormFileModes)
#include "TestFormFileModes.moc"
