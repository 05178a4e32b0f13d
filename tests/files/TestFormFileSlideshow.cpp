// SPDX-License-Identifier: MIT
// The slideshow started from the browser, and the browser after it.
#include "app/common/Settings.h"
#include "files/slideshowOptions.h"
#include "items/FPVItemImage.h"
#include "tests/files/Deeds.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "viewer/DialogSlideshow.h"
#include "viewer/FPVPictureScrollView.h"
#include "widgets/MyDialogWait.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QFile>
#include <QMessageBox>
#include <QTest>

using lumi::Settings;
using lumi::slideshowOptions;
using lumi::SlideshowOptions;
using lumi::SlideshowRows;
using lumi::test::answers;
using lumi::test::chooses;
using lumi::test::closes;
using lumi::test::Deeds;
using lumi::test::FormFixture;
using lumi::test::opensMenu;
using lumi::test::openWindow;
using lumi::test::presses;
using lumi::test::seesNothing;
using lumi::test::seesPhoto;
using lumi::test::WindowLog;

Q_DECLARE_METATYPE(lumi::SlideshowRows)
Q_DECLARE_METATYPE(lumi::SlideshowOptions)

class TestFormFileSlideshow : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_form = std::make_unique<FormFixture>();
        Settings::setOperation(1);
        Settings::setDispOrder(0);
        Settings::setDispTime(0);
        Settings::setDispCount(0);
    }

    void cleanup() { m_form.reset(); }

    void rowsBecomeArguments_data();
    void rowsBecomeArguments();
    void startsAtTheCursorAndLeavesItThere();
    void theWaitDialogStandsForTheFirstPictureOnly();
    void theColumnStartsItToo();
    void playsByItself();
    void anEmptyFolderHasNoShow();
    void detailsShowThatPicture_data();
    void detailsShowThatPicture();
    void continueGoesOnAndEndLeaves();
    void fullViewShowsThatPicture();
    void optionsOpenWithoutAnotherShow();
    void aDeletedPictureLeavesTheBrowser_data();
    void aDeletedPictureLeavesTheBrowser();
    void fullViewWithoutAPictureShowsThePageAgain();
    void aCursorBehindTheEndIsMovedBack();
    void theLastPictureDeletedLeavesAnEmptyPage();
    void theFormIsBusyMeanwhile();
    void theOptionsOpen();

private:
    void startWith(int photos, int cursor);
    [[nodiscard]] QString cursorName() const;

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileSlideshow::startWith(int photos, int cursor)
{
    m_form->world.makePhotos(photos);
    m_form->start();
    QVERIFY(m_form->waitForCells(std::min(photos, 6)));
    if (photos > 0) {
        m_form->tap(QString::asprintf("a%02d.jpg", cursor));
        QCOMPARE(m_form->view->currentIndex(), cursor);
    }
}

QString TestFormFileSlideshow::cursorName() const
{
    const FPVItemObject *item = m_form->view->currentObject();
    return item != nullptr ? item->fileName() : QString();
}

void TestFormFileSlideshow::rowsBecomeArguments_data()
{
    lumi::test::columns<SlideshowRows, SlideshowOptions>();
    QTest::newRow("defaults") << SlideshowRows{0, 0, 1, 1} << SlideshowOptions{true, true, 3000, 2};
    QTest::newRow("the first rows")
        << SlideshowRows{0, 0, 0, 0} << SlideshowOptions{true, true, 2000, 1};
    QTest::newRow("manual, random, the longest delay")
        << SlideshowRows{1, 1, 8, 9} << SlideshowOptions{false, false, 10000, 10};
    QTest::newRow("endless") << SlideshowRows{0, 1, 3, 10}
                             << SlideshowOptions{true, false, 5000, 0};
    QTest::newRow("invalid numbers, too large")
        << SlideshowRows{7, 7, 99, 99} << SlideshowOptions{false, false, 10000, 0};
    QTest::newRow("invalid numbers, negative")
        << SlideshowRows{-1, -1, -5, -5} << SlideshowOptions{false, false, 2000, 1};
}

void TestFormFileSlideshow::rowsBecomeArguments()
{
    const auto [rows, options] = lumi::test::row<SlideshowRows, SlideshowOptions>();
    QVERIFY(slideshowOptions(rows) == options);
}

void TestFormFileSlideshow::startsAtTheCursorAndLeavesItThere()
{
    startWith(4, 1);
    const Deeds deeds({seesPhoto(QStringLiteral("a01.jpg")), presses(Qt::Key_Right),
                       seesPhoto(QStringLiteral("a02.jpg")), presses(Qt::Key_Escape)});
    m_form->entry(17)->trigger();
    QVERIFY(deeds.allDone());
    QCOMPARE(cursorName(), QStringLiteral("a02.jpg"));
    QVERIFY(m_form->waitForCells(4));
    QTRY_COMPARE(m_form->status->text(), QStringLiteral("a02"));
}

void TestFormFileSlideshow::theWaitDialogStandsForTheFirstPictureOnly()
{
    startWith(2, 0);
    const WindowLog log;
    QList<bool> waits; // at the end of each decode
    const auto *first = qobject_cast<FPVItemImage *>(m_form->view->currentObject());
    connect(first, &FPVItemImage::decodeComplete, this, [this, &waits] {
        const auto *wait = m_form->form->findChild<MyDialogWait *>();
        waits.append(wait != nullptr && wait->isVisible());
    });
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Escape)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QCOMPARE(waits, QList<bool>{true});
    QCOMPARE(log.shown.mid(0, 3),
             (QStringList{QStringLiteral("MyDialogWait"), QStringLiteral("wait is gone"),
                          QStringLiteral("SlideShow")}));
}

void TestFormFileSlideshow::theColumnStartsItToo()
{
    startWith(2, 0);
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Escape)});
    m_form->form->btn_leftWidget_clicked(MyLeftWidget::Slideshow);
    QVERIFY(deeds.allDone());
}

void TestFormFileSlideshow::playsByItself()
{
    Settings::setOperation(0);
    startWith(2, 1);
    QElapsedTimer timer;
    timer.start();
    const Deeds deeds({seesPhoto(QStringLiteral("a01.jpg")), seesPhoto(QStringLiteral("a00.jpg")),
                       presses(Qt::Key_Escape)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(timer.elapsed() >= 2000);
    QCOMPARE(cursorName(), QStringLiteral("a00.jpg"));
}

void TestFormFileSlideshow::anEmptyFolderHasNoShow()
{
    m_form->world.makeFolder(QStringLiteral("only"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    const WindowLog log;
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(!log.shown.contains(QStringLiteral("SlideShow")));
    QVERIFY(m_form->waitForCells(1));
}

void TestFormFileSlideshow::detailsShowThatPicture_data()
{
    QTest::addColumn<bool>("wereShown");
    QTest::newRow("with thumbnails before") << false;
    QTest::newRow("with details before") << true;
}

void TestFormFileSlideshow::detailsShowThatPicture()
{
    QFETCH(bool, wereShown);
    startWith(3, 0);
    if (wereShown) {
        m_form->form->menu_disp_DispDetail();
        QVERIFY(m_form->waitForCells(3));
    }
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Right),
                       seesPhoto(QStringLiteral("a01.jpg")), opensMenu(), chooses(1)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(m_form->columnButton(2)->isOn());
    QCOMPARE(cursorName(), QStringLiteral("a01.jpg"));
    QVERIFY(m_form->waitForCells(3));
    QVERIFY(m_form->cell(QStringLiteral("a01.jpg")) != nullptr);
}

void TestFormFileSlideshow::continueGoesOnAndEndLeaves()
{
    startWith(2, 0);
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), opensMenu(), chooses(0),
                       presses(Qt::Key_Right), seesPhoto(QStringLiteral("a01.jpg")), opensMenu(),
                       chooses(5)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!m_form->columnButton(2)->isOn());
    QCOMPARE(cursorName(), QStringLiteral("a01.jpg"));
    QVERIFY(m_form->waitForCells(2));
}

void TestFormFileSlideshow::fullViewShowsThatPicture()
{
    startWith(3, 0);
    QString caption;
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Right),
                       seesPhoto(QStringLiteral("a01.jpg")), opensMenu(), chooses(2), [&caption] {
                           auto *viewer = openWindow<FPVPictureScrollView>();
                           caption = viewer != nullptr ? viewer->windowTitle() : QString();
                           // The title is set with the picture, after the window is shown.
                           return !caption.isEmpty() && viewer->close();
                       }});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QCOMPARE(caption, QStringLiteral("a01.jpg"));
    QVERIFY(m_form->waitForCells(3));
}

void TestFormFileSlideshow::optionsOpenWithoutAnotherShow()
{
    startWith(2, 0);
    const WindowLog log;
    const Deeds deeds(
        {seesPhoto(QStringLiteral("a00.jpg")), opensMenu(), chooses(4), closes<DialogSlideshow>()});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QCOMPARE(log.shown.count(QStringLiteral("SlideShow")), 1);
    QVERIFY(m_form->waitForCells(2));
}

void TestFormFileSlideshow::aDeletedPictureLeavesTheBrowser_data()
{
    QTest::addColumn<bool>("byMenu");
    QTest::newRow("by key") << false;
    QTest::newRow("by menu") << true;
}

void TestFormFileSlideshow::aDeletedPictureLeavesTheBrowser()
{
    QFETCH(bool, byMenu);
    startWith(3, 1);
    QList<Deeds::Deed> steps{seesPhoto(QStringLiteral("a01.jpg"))};
    steps += byMenu ? QList<Deeds::Deed>{opensMenu(), chooses(3)}
                    : QList<Deeds::Deed>{presses(Qt::Key_Delete)};
    steps += {answers(QMessageBox::Yes), seesPhoto(QStringLiteral("a02.jpg")),
              presses(Qt::Key_Escape)};
    const Deeds deeds(steps);
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(!QFile::exists(m_form->world.path(QStringLiteral("a01.jpg"))));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("a00.jpg"))));
    QVERIFY(QFile::exists(m_form->world.path(QStringLiteral("a02.jpg"))));
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), (QStringList{QStringLiteral("a00.jpg"), QStringLiteral("a02.jpg")}));
    QCOMPARE(cursorName(), QStringLiteral("a02.jpg"));
}

void TestFormFileSlideshow::fullViewWithoutAPictureShowsThePageAgain()
{
    // If the picture under the cursor is deleted, the cursor stays on the folder.
    m_form->world.makeFolder(QStringLiteral("a"));
    m_form->world.makePhotos(1);
    m_form->world.makePhoto(QStringLiteral("b00.jpg"), QSize(2500, 1900)); // takes its time
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    // A tap would open it.
    m_form->view->setCurrentObject(m_form->cell(QStringLiteral("a"))->item());
    QCOMPARE(cursorName(), QStringLiteral("a"));
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Delete),
                       answers(QMessageBox::Yes), seesNothing(), opensMenu(), chooses(2)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(m_form->waitForCells(2));
    QCOMPARE(m_form->names(), (QStringList{QStringLiteral("a"), QStringLiteral("b00.jpg")}));
    QCOMPARE(cursorName(), QStringLiteral("a"));
}

void TestFormFileSlideshow::aCursorBehindTheEndIsMovedBack()
{
    m_form->world.makePhoto(QStringLiteral("a00.jpg"), QSize(2500, 1900)); // takes its time
    m_form->world.makePhoto(QStringLiteral("a01.jpg"));
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    m_form->tap(QStringLiteral("a01.jpg"));
    const Deeds deeds({seesPhoto(QStringLiteral("a01.jpg")), presses(Qt::Key_Delete),
                       answers(QMessageBox::Yes), seesNothing(), presses(Qt::Key_Escape)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(m_form->waitForCells(1));
    QCOMPARE(cursorName(), QStringLiteral("a00.jpg"));
    QCOMPARE(m_form->status->text(), QStringLiteral("a00"));
}

void TestFormFileSlideshow::theLastPictureDeletedLeavesAnEmptyPage()
{
    startWith(1, 0);
    const Deeds deeds(
        {seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Delete), answers(QMessageBox::Yes)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(m_form->waitForCells(0));
    QVERIFY(m_form->view->currentObject() == nullptr);
    QVERIFY(m_form->status->text().isEmpty());
}

void TestFormFileSlideshow::theFormIsBusyMeanwhile()
{
    startWith(2, 0);
    const int media = int(m_form->media().size());
    bool wasBusy = false;
    int mediaMeanwhile = 0;
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")),
                       [&] {
                           wasBusy = m_form->form->isBusy();
                           m_form->world.machine->insertCard(Slot::CF);
                           m_form->tellCardChange();
                           mediaMeanwhile = int(m_form->media().size());
                           return true;
                       },
                       presses(Qt::Key_Escape)});
    m_form->form->menu_disp_Slideshow_Execution();
    QVERIFY(deeds.allDone());
    QVERIFY(wasBusy);
    QVERIFY(!m_form->form->isBusy());
    QCOMPARE(mediaMeanwhile, media);
    QTRY_COMPARE(int(m_form->media().size()), media + 1);
}

void TestFormFileSlideshow::theOptionsOpen()
{
    startWith(1, 0);
    const QWidget *parent = nullptr;
    const Deeds deeds({[&parent] {
        auto *dialog = openWindow<DialogSlideshow>();
        if (dialog == nullptr) {
            return false;
        }
        parent = dialog->parentWidget();
        dialog->accept();
        return true;
    }});
    m_form->entry(18)->trigger();
    QVERIFY(deeds.allDone());
    QCOMPARE(parent, m_form->form.get());
}

LUMI_TEST(TestFormFileSlideshow)
#include "TestFormFileSlideshow.moc"
