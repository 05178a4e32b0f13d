// SPDX-License-Identifier: MIT
// Layout, navigation and display modes of the browser form.
#include "app/common/FormEvent.h"
#include "items/FPVItemFolder.h"
#include "items/FPVItemList.h"
#include "platform/deviceKey.h"
#include "platform/toolkit/QAccel.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QTest>

using lumi::test::BrowserWorld;
using lumi::test::FormFixture;

namespace {

/// Notes which forms the window is asked for.
class RequestLog : public QObject
{
public:
    explicit RequestLog(QObject *window) { window->installEventFilter(this); }

    QList<int> forms;
    bool nullText = true;

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (const auto *request = dynamic_cast<const ChangeFormEvent *>(event)) {
            forms.append(request->formId());
            nullText = nullText && request->text().isNull();
        }
        return false;
    }
};

/// Counts the widgets that are put into another one.
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

class TestFormFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form.reset(new FormFixture); }

    void cleanup() { m_form.reset(); }

    void isFormTwoWithTheProgramsCaption();
    void startsInThePhotoStoreInLargeMode();
    void isLaidOutForAFinger();
    void nothingIsCutOffInAnyMode_data();
    void nothingIsCutOffInAnyMode();
    void aFolderOpensAndTheButtonLeadsUp();
    void theUpButtonStopsAtTheRoot();
    void enteringAFolderPutsTheCursorOnItsFirstItem();
    void aFolderThatVanishedKeepsTheListing();
    void theStatusFieldShowsTheItem_data();
    void theStatusFieldShowsTheItem();
    void aLongNameIsCutInTheStatusField();
    void modesGiveTheViewTheirGrid_data();
    void modesGiveTheViewTheirGrid();
    void theSameModeAgainIsNothing();
    void theModesButtonIsLit();
    void modesTakeTheFocusUnlessTheComboHasIt();
    void modesKeepTheCursorOnThePage();
    void largeModeBuildsOnePageOnly();
    void theColumnLeadsToModesAndTop();
    void theWayUpIsNoItem();
    void theMailKeyIsHeard_data();
    void theMailKeyIsHeard();
    void keysOfTheViewReachTheForm();
    void nothingIsKeptForTheNextForm();
    void goesInPeaceWhenTheToolBarGoesFirst();

private:
    MyImageButton *columnButton(int index) const
    {
        return m_form->form->findChild<MyLeftWidget *>()->button(index);
    }

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFile::isFormTwoWithTheProgramsCaption()
{
    m_form->window.setWindowTitle(QString());
    m_form->start();
    QCOMPARE(m_form->form->formId(), 2);
    QCOMPARE(m_form->window.windowTitle(), QStringLiteral("Lumi Vault"));
}

void TestFormFile::startsInThePhotoStoreInLargeMode()
{
    m_form->world.makePhotos(8);
    m_form->start();
    QVERIFY(m_form->waitForCells(6));
    QCOMPARE(m_form->names().first(), QStringLiteral("a00.jpg"));
    QVERIFY(m_form->view->hasFocus());
    QCOMPARE(m_form->view->currentIndex(), -1);
    QVERIFY(!m_form->up->isEnabled());
    QCOMPARE(m_form->combo->currentText(), QStringLiteral("Photo_Files"));
    QVERIFY(m_form->status->text().isEmpty());
}

void TestFormFile::isLaidOutForAFinger()
{
    m_form->start();
    QCOMPARE(m_form->status->alignment(), Qt::AlignRight | Qt::AlignVCenter);
    for (const QWidget *widget :
         {static_cast<QWidget *>(m_form->combo), static_cast<QWidget *>(m_form->up),
          static_cast<QWidget *>(m_form->status)}) {
        QVERIFY(widget->height() >= 40);
        QVERIFY(widget->width() >= 40);
        QCOMPARE(widget->y(), 0);
        QCOMPARE(widget->palette().color(QPalette::Window), QColor(Qt::darkGray));
    }
    QCOMPARE(m_form->combo->x(), 0);
    QCOMPARE(m_form->up->x(), m_form->combo->width());
    QCOMPARE(m_form->status->geometry().right(), m_form->status->parentWidget()->width() - 1 - 10);
    const auto *column = m_form->form->findChild<MyLeftWidget *>();
    QCOMPARE(column->x(), 0);
    QCOMPARE(m_form->combo->parentWidget()->x(), column->width());
}

void TestFormFile::nothingIsCutOffInAnyMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("top"); // of the view, below the row above
    QTest::newRow("large") << 0 << 10;
    QTest::newRow("small") << 1 << 10;
    // The detail panel of 185 stands above, with 20 in between.
    QTest::newRow("info") << 2 << 10 + 185 + 20;
}

void TestFormFile::nothingIsCutOffInAnyMode()
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

void TestFormFile::aFolderOpensAndTheButtonLeadsUp()
{
    m_form->world.makePhotos(2, QStringLiteral("one/two"));
    m_form->world.makePhotos(3, QStringLiteral("one"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    m_form->tap(QStringLiteral("one"));
    QVERIFY(m_form->waitForCells(4));
    QVERIFY(m_form->up->isEnabled());
    m_form->tap(QStringLiteral("two"));
    QVERIFY(m_form->waitForCells(2));
    QTest::mouseClick(m_form->up, Qt::LeftButton);
    QVERIFY(m_form->waitForCells(4));
    QVERIFY(m_form->up->isEnabled());
    QTest::keyClick(m_form->view, Qt::Key_Backspace);
    QVERIFY(m_form->waitForCells(1));
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFile::theUpButtonStopsAtTheRoot()
{
    m_form->world.makePhotos(2);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    m_form->form->btn_root_cliced();
    QTest::qWait(60);
    QCOMPARE(m_form->names().size(), 2);
    QCOMPARE(m_form->view->currentIndex(), -1);
}

void TestFormFile::enteringAFolderPutsTheCursorOnItsFirstItem()
{
    m_form->world.makePhotos(3, QStringLiteral("dir"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    m_form->tap(QStringLiteral("dir"));
    QVERIFY(m_form->waitForCells(3));
    QCOMPARE(m_form->view->currentIndex(), 0);
    QCOMPARE(m_form->status->text(), QStringLiteral("a00"));
}

void TestFormFile::aFolderThatVanishedKeepsTheListing()
{
    m_form->world.makePhotos(2, QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    // Gone between press and release.
    QTest::mousePress(m_form->cell(QStringLiteral("dir")), Qt::LeftButton, {}, QPoint(1, 1));
    QVERIFY(QDir(m_form->world.path(QStringLiteral("dir"))).removeRecursively());
    QTest::mouseRelease(m_form->cell(QStringLiteral("dir")), Qt::LeftButton, {}, QPoint(1, 1));
    QVERIFY(m_form->waitForCells(1));
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFile::theStatusFieldShowsTheItem_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("text");
    QTest::newRow("a photo up to its first dot")
        << QStringLiteral("x.y.jpg") << QStringLiteral("x");
    QTest::newRow("a folder whole") << QStringLiteral("f.g") << QStringLiteral("f.g");
    QTest::newRow("a name that looks like markup")
        << QStringLiteral("<b>z<b>.jpg") << QStringLiteral("<b>z<b>");
}

void TestFormFile::theStatusFieldShowsTheItem()
{
    QFETCH(QString, item);
    m_form->world.makePhoto(QStringLiteral("x.y.jpg"));
    m_form->world.makePhoto(QStringLiteral("<b>z<b>.jpg"));
    m_form->world.makeFolder(QStringLiteral("f.g"));
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    QTest::mousePress(m_form->cell(item), Qt::LeftButton, {}, QPoint(1, 1));
    QTEST(m_form->status->text(), "text");
    QCOMPARE(m_form->status->textFormat(), Qt::PlainText);
    m_form->form->filelist_selected(nullptr);
    QTEST(m_form->status->text(), "text");
}

void TestFormFile::aLongNameIsCutInTheStatusField()
{
    const QString name(120, QLatin1Char('w'));
    m_form->world.makePhoto(name + QStringLiteral(".jpg"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    const int width = m_form->status->width();
    m_form->tap(name + QStringLiteral(".jpg"));
    QVERIFY(m_form->status->text().endsWith(QLatin1String("ww...")));
    QTest::qWait(20);
    QCOMPARE(m_form->status->width(), width);
    QCOMPARE(m_form->window.width(), 640);
}

void TestFormFile::modesGiveTheViewTheirGrid_data()
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

void TestFormFile::modesGiveTheViewTheirGrid()
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

void TestFormFile::theSameModeAgainIsNothing()
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

void TestFormFile::theModesButtonIsLit()
{
    m_form->start();
    for (const int id : {0, 2, 1, 0}) {
        m_form->form->btn_leftWidget_clicked(id);
        for (int button = 0; button <= 4; ++button) {
            QCOMPARE(columnButton(button)->isOn(), button == id);
            QVERIFY(columnButton(button)->isVisible());
        }
    }
}

void TestFormFile::modesTakeTheFocusUnlessTheComboHasIt()
{
    m_form->start();
    columnButton(1)->setFocus();
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(m_form->view->hasFocus());
    m_form->combo->setFocus();
    m_form->form->menu_disp_ThumbnailLarge();
    QVERIFY(m_form->combo->hasFocus());
    columnButton(2)->setFocus();
    m_form->form->menu_disp_DispDetail();
    QVERIFY(columnButton(2)->hasFocus());
}

void TestFormFile::modesKeepTheCursorOnThePage()
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

void TestFormFile::largeModeBuildsOnePageOnly()
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
    // The other modes go on to the cursor's page.
    QCOMPARE(pages.added, 2 * inLarge + 1);
}

void TestFormFile::theColumnLeadsToModesAndTop()
{
    RequestLog log(&m_form->window);
    m_form->world.makePhotos(40);
    m_form->start();
    QTest::mouseClick(columnButton(1), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(35));
    QTest::mouseClick(columnButton(2), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(7));
    QTest::mouseClick(columnButton(0), Qt::LeftButton);
    QVERIFY(m_form->waitForCells(6));
    m_form->form->btn_leftWidget_clicked(7);
    m_form->form->btn_leftWidget_clicked(-1);
    QVERIFY(log.forms.isEmpty());
    QTest::mouseClick(columnButton(4), Qt::LeftButton);
    // Not before the event loop runs.
    QVERIFY(log.forms.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(log.forms, QList<int>{0});
    QVERIFY(log.nullText);
}

/// The list of a folder has no such entry; a way up that stands in it is no item to work on.
void TestFormFile::theWayUpIsNoItem()
{
    m_form->world.makePhotos(1, QStringLiteral("dir"));
    m_form->start();
    FPVItemList list(m_form->world.path(QStringLiteral("dir")), m_form->world.store);
    QVERIFY(list.insert(
        0, new FPVItemFolder(m_form->world.path(QStringLiteral("dir/..")), QString(), false)));
    m_form->view->setList(&list);
    m_form->view->showPage(0, 0, true);
    QVERIFY(m_form->waitForCells(2));
    QVERIFY(m_form->view->currentIsParentEntry());
    QCOMPARE(m_form->status->text(), QStringLiteral("(:1)"));
    m_form->grayOut();
    QVERIFY(!m_form->entry(1)->isEnabled());
    QVERIFY(!m_form->entry(5)->isEnabled());
    m_form->form.reset();
}

void TestFormFile::theMailKeyIsHeard_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("the device's") << kKeyMail;
    QTest::newRow("a keyboard's") << static_cast<int>(Qt::Key_LaunchMail);
}

void TestFormFile::theMailKeyIsHeard()
{
    QFETCH(int, key);
    m_form->start();
    int heard = 0;
    const QList<QAccel *> accels = m_form->form->findChildren<QAccel *>();
    for (const QAccel *accel : accels) {
        connect(accel, &QAccel::activated, this, [&heard] {
            ++heard;
        });
    }
    // A key click of the test library knows only named keys and letters.
    QWindow *window = m_form->window.windowHandle();
    qt_handleKeyEvent(window, QEvent::KeyPress, key, Qt::NoModifier);
    qt_handleKeyEvent(window, QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::processEvents();
    QCOMPARE(heard, 1);
}

void TestFormFile::keysOfTheViewReachTheForm()
{
    m_form->world.makePhotos(2);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    m_form->tap(QStringLiteral("a00.jpg"));

    // The form passes them on in every case.
    struct Listener : QObject
    {
        QList<int> keys;

        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::KeyPress) {
                keys.append(static_cast<QKeyEvent *>(event)->key());
            }
            return false;
        }
    } listener;

    m_form->form->installEventFilter(&listener);
    m_form->window.installEventFilter(&listener);
    lumi::test::DialogDriver driver;
    driver.answerInOrder({}); // says no to the question about deleting
    QTest::keyClick(m_form->view, Qt::Key_C, Qt::ControlModifier);
    QTest::keyClick(m_form->view, Qt::Key_Delete);
    QTest::keyClick(m_form->view, Qt::Key_Right);
    listener.keys.removeAll(Qt::Key_Control);
    const QList<int> expected{Qt::Key_C, Qt::Key_C, Qt::Key_Delete, Qt::Key_Delete};
    QCOMPARE(listener.keys, expected);
}

void TestFormFile::nothingIsKeptForTheNextForm()
{
    m_form->world.makePhotos(2, QStringLiteral("dir"));
    m_form->world.makePhotos(3);
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    m_form->tap(QStringLiteral("dir"));
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(m_form->waitForCells(2));
    m_form->form->menu_edit_Copy();
    QVERIFY(!m_form->view->clipboardPaths().isEmpty());
    m_form->start();
    QVERIFY(m_form->waitForCells(4));
    QVERIFY(m_form->view->clipboardPaths().isEmpty());
    QVERIFY(columnButton(0)->isOn());
    QCOMPARE(m_form->view->currentIndex(), -1);
}

void TestFormFile::goesInPeaceWhenTheToolBarGoesFirst()
{
    QMainWindow window;
    auto *toolBar = new QPEToolBar(&window);
    auto form = std::make_unique<FormFile>(&window, toolBar);
    form->formStarted();
    delete toolBar;
    form->menuGrayout();
    form.reset();
    QVERIFY(window.findChild<FormFile *>() == nullptr);
}

LUMI_TEST(TestFormFile)
#include "TestFormFile.moc"
