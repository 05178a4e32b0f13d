// SPDX-License-Identifier: MIT
// Layout and navigation of the browser form, its status field, and the keys it forwards.
#include "items/FPVItemFolder.h"
#include "items/FPVItemList.h"
#include "platform/keys/deviceKey.h"
#include "platform/toolkit/QAccel.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QDir>
#include <QTest>

using lumi::test::FormFixture;

class TestFormFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void isFormTwoWithTheProgramsCaption();
    void startsInThePhotoStoreInLargeMode();
    void isLaidOutForAFinger();
    void aFolderOpensAndTheButtonLeadsUp();
    void theUpButtonStopsAtTheRoot();
    void enteringAFolderPutsTheCursorOnItsFirstItem();
    void aTapOnAFolderThatVanishedReadsTheListingAgain();
    void theStatusFieldShowsTheItem_data();
    void theStatusFieldShowsTheItem();
    void aLongNameIsCutInTheStatusField();
    void theParentEntryIsNotAnItem();
    void keysOfTheViewReachTheForm();
    void nothingIsKeptForTheNextForm();

private:
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

void TestFormFile::aTapOnAFolderThatVanishedReadsTheListingAgain()
{
    m_form->world.makePhotos(2, QStringLiteral("dir"));
    m_form->world.makePhotos(1);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    // Removed between press and release.
    QTest::mousePress(m_form->cell(QStringLiteral("dir")), Qt::LeftButton, {}, QPoint(1, 1));
    QVERIFY(QDir(m_form->world.path(QStringLiteral("dir"))).removeRecursively());
    QTest::mouseRelease(m_form->cell(QStringLiteral("dir")), Qt::LeftButton, {}, QPoint(1, 1));
    QVERIFY(m_form->waitForCells(1));
    QVERIFY(!m_form->up->isEnabled());
}

void TestFormFile::theStatusFieldShowsTheItem_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("a photo up to its first dot")
        << QStringLiteral("x.y.jpg") << QStringLiteral("x");
    QTest::newRow("a folder whole") << QStringLiteral("f.g") << QStringLiteral("f.g");
    QTest::newRow("a name that looks like markup")
        << QStringLiteral("<b>z<b>.jpg") << QStringLiteral("<b>z<b>");
}

void TestFormFile::theStatusFieldShowsTheItem()
{
    const auto [item, text] = lumi::test::row<QString, QString>();
    m_form->world.makePhoto(QStringLiteral("x.y.jpg"));
    m_form->world.makePhoto(QStringLiteral("<b>z<b>.jpg"));
    m_form->world.makeFolder(QStringLiteral("f.g"));
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    QTest::mousePress(m_form->cell(item), Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(m_form->status->text(), text);
    QCOMPARE(m_form->status->textFormat(), Qt::PlainText);
    m_form->form->filelist_selected(nullptr);
    QCOMPARE(m_form->status->text(), text);
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

/// Lists do not contain ".." today. If one does, the entry is not an item to work on.
void TestFormFile::theParentEntryIsNotAnItem()
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

void TestFormFile::keysOfTheViewReachTheForm()
{
    m_form->world.makePhotos(2);
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    m_form->tap(QStringLiteral("a00.jpg"));

    // The form forwards them in any case.
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
    driver.answerInOrder({}); // answers the deletion question with No
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
    QVERIFY(m_form->columnButton(0)->isOn());
    QCOMPARE(m_form->view->currentIndex(), -1);
}

LUMI_TEST(TestFormFile)
#include "TestFormFile.moc"
