// SPDX-License-Identifier: MIT
// A card that is exchanged while the form is busy. The second card has the same slot, the same
// device and photos with the same names. Operations on the first card must not affect it.
#include "app/common/BusyScope.h"
#include "exif/ui/FormExif.h"
#include "tests/files/Deeds.h"
#include "tests/files/FormFixture.h"
#include "tests/files/menuEntries.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/fileAge.h"
#include "viewer/FPVPictureScrollView.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QThread>

using namespace lumi::test;

namespace {

const QString kStore = QStringLiteral("Photo_Files");
const QString kSd = QStringLiteral("SD Card");
const QString kCf = QStringLiteral("CF Card");

constexpr int kRun = 17;
constexpr int kFullView = 19;
constexpr std::time_t kLongAgo = 1'000'000'000;

ExifBuilder photoOf(const QByteArray &owner)
{
    ExifBuilder photo;
    photo.ascii(ExifListKind::Ifd0, 0x013B, owner).photo(ExifBuilder::jpeg(80, 60, 0x4080C0));
    return photo;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestCardExchanged : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void underAWindow();
    void underTheViewer();
    void underTheEditor();
    void underAQuestion_data();
    void underAQuestion();
    void andReadAgainUnderTheQuestion_data();
    void andReadAgainUnderTheQuestion();
    void underTheQuestionOfTheSlideshow();
    void beforeTheFormHasHeardOfIt();
    void inOneBurst();
    void withAnotherFolderOnShow_data();
    void withAnotherFolderOnShow();

    void andReadAgainInBetween_data() { withAnotherFolderOnShow_data(); }

    void andReadAgainInBetween();
    void withoutTheFolderOnShow();

    void notBeingOnShow_data() { withAnotherFolderOnShow_data(); }

    void notBeingOnShow();

    void laterNewsResetNothing_data() { withAnotherFolderOnShow_data(); }

    void laterNewsResetNothing();
    void theOtherCardIsLeftAlone();
    void beforeTheStart();

private:
    /// Inserts the first card and starts the form.
    void start(Slot slot = Slot::SD);
    /// start(), then shows the card with the cursor on its first photo and all photos marked.
    void showMarked(Slot slot = Slot::SD);
    /// Removes the card and inserts the second one, with a message for each.
    void exchange();
    void exchangeWhileBusy();
    void takeOut();
    void putIn();
    /// Whether the second card is shown, unmarked and unchanged.
    [[nodiscard]] bool isSecondCardWhole();
    [[nodiscard]] QStringList secondCard() const;

    std::unique_ptr<FormFixture> m_form;
    Slot m_slot = Slot::SD;
    QString m_card;
    QString m_name;
};

void TestCardExchanged::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->world.makePhoto(QStringLiteral("mine.jpg"));
}

void TestCardExchanged::cleanup()
{
    m_form.reset();
}

void TestCardExchanged::start(Slot slot)
{
    m_slot = slot;
    m_card = m_form->world.machine->mountPoint(slot);
    m_name = slot == Slot::SD ? kSd : kCf;
    m_form->world.machine->insertCard(slot);
    m_form->world.makePhotos(2, m_card + QStringLiteral("/dcim"));
    m_form->world.makePhotos(1, m_card + QStringLiteral("/dcim/trip"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
}

void TestCardExchanged::showMarked(Slot slot)
{
    start(slot);
    m_form->choose(m_name);
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
    m_form->select("a00.jpg");
    m_form->view->checkAll();
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
}

void TestCardExchanged::exchange()
{
    takeOut();
    putIn();
}

void TestCardExchanged::exchangeWhileBusy()
{
    const lumi::BusyScope busy(m_form->form.get());
    exchange();
}

void TestCardExchanged::takeOut()
{
    QVERIFY(QDir(m_card + QStringLiteral("/dcim")).removeRecursively());
    m_form->world.machine->removeCard(m_slot);
    m_form->tellCardChange();
}

void TestCardExchanged::putIn()
{
    for (const char *name : {"dcim/a00.jpg", "dcim/a01.jpg", "dcim/b.jpg"}) {
        m_form->world.makePhoto(m_card + QLatin1Char('/') + QLatin1String(name));
    }
    m_form->world.makeFolder(m_card + QStringLiteral("/dcim/empty"));
    m_form->world.machine->insertCard(m_slot);
    m_form->tellCardChange();
}

QStringList TestCardExchanged::secondCard() const
{
    return QDir(m_card + QStringLiteral("/dcim"))
        .entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

bool TestCardExchanged::isSecondCardWhole()
{
    const bool isShown = QTest::qWaitFor([this] {
        return m_form->names() == list("empty a00.jpg a01.jpg b.jpg");
    });
    return isShown && m_form->combo->currentText() == m_name && !m_form->view->anyChecked()
        && secondCard() == list("a00.jpg a01.jpg b.jpg empty") && !m_form->form->isBusy();
}

void TestCardExchanged::underAWindow()
{
    showMarked();
    DialogDriver driver;
    const auto act = [this] {
        exchange();
    };
    driver.answerInOrder({after(act, closing())});
    m_form->form->menu_option_Version();
    QCOMPARE(driver.captions(), QStringList{QStringLiteral("Version")});
    QVERIFY(isSecondCardWhole());
}

void TestCardExchanged::underTheViewer()
{
    showMarked();
    const Deeds deeds({[this] {
                           const auto *viewer = openWindow<FPVPictureScrollView>();
                           if (viewer == nullptr || viewer->windowTitle().isEmpty()) {
                               return false;
                           }
                           exchange();
                           return true;
                       },
                       closes<FPVPictureScrollView>()});
    m_form->entry(kFullView)->trigger();
    QVERIFY(deeds.allDone());
    QVERIFY(isSecondCardWhole());
}

/// The texts in its fields are those of the first card's photo.
void TestCardExchanged::underTheEditor()
{
    showMarked();
    const QString photo = m_card + QStringLiteral("/dcim/a00.jpg");
    QVERIFY(photoOf("Jane Doe").write(photo));
    setChangedAt(photo, kLongAgo);
    QByteArray before;
    const Deeds deeds({[&] {
                           // The window is shown in the constructor, before its loop runs.
                           const int loops = QThread::currentThread()->loopLevel();
                           if (openWindow<FormExif>() == nullptr || loops == 0) {
                               return false;
                           }
                           exchange();
                           before = photoOf("Mary Roe").write(photo) ? bytesOf(photo) : before;
                           QTimer::singleShot(0, openWindow<FormExif>(), &FormExif::menu_edit_save);
                           return true;
                       },
                       answers(QMessageBox::Ok), closes<FormExif>()});
    m_form->form->btn_edit_clicked();
    QVERIFY(deeds.allDone());
    QVERIFY(!before.isEmpty());
    QCOMPARE(bytesOf(photo), before);
    QVERIFY(isSecondCardWhole());
}

void TestCardExchanged::underAQuestion_data()
{
    addQuestionsInVain();
}

void TestCardExchanged::underAQuestion()
{
    QFETCH(int, entry);
    showMarked();
    const DialogAnswer answer = [](QDialog *dialog) {
        const bool isQuestion = qobject_cast<QMessageBox *>(dialog) != nullptr;
        (isQuestion ? yes() : typing(QStringLiteral("new")))(dialog);
    };
    const auto act = [this] {
        exchange();
    };
    QTEST(m_form->play(entry, {after(act, answer), ok()}), "dialogs");
    QVERIFY(isSecondCardWhole());
}

void TestCardExchanged::andReadAgainUnderTheQuestion_data()
{
    QTest::addColumn<int>("entry");
    QTest::newRow("Rename") << kRename;
    QTest::newRow("Delete") << kDelete;
    QTest::newRow("New Folder") << kNewFolder;
    QTest::newRow("Delete Empty Folder") << kDeleteEmpty;
}

/// A page built in between lists the second card, and the cursor is on its photo.
void TestCardExchanged::andReadAgainUnderTheQuestion()
{
    QFETCH(int, entry);
    showMarked();
    const DialogAnswer answer = [](QDialog *dialog) {
        const bool isQuestion = qobject_cast<QMessageBox *>(dialog) != nullptr;
        (isQuestion ? yes() : typing(QStringLiteral("new")))(dialog);
    };
    const auto act = [this] {
        exchange();
        m_form->view->showPage(0, -1, true);
        QTRY_COMPARE(m_form->names(), list("empty a00.jpg a01.jpg b.jpg"));
        QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a00.jpg"));
    };
    QVERIFY(m_form->play(entry, {after(act, answer), ok()})
                .last()
                .startsWith(QLatin1String("critical Error")));
    QVERIFY(isSecondCardWhole());
}

void TestCardExchanged::underTheQuestionOfTheSlideshow()
{
    showMarked();
    const Deeds deeds({seesPhoto(QStringLiteral("a00.jpg")), presses(Qt::Key_Delete),
                       [this] {
                           if (openWindow<QMessageBox>() == nullptr) {
                               return false;
                           }
                           exchange();
                           return true;
                       },
                       answers(QMessageBox::Yes), answers(QMessageBox::Ok), closes<SlideShow>()});
    m_form->entry(kRun)->trigger();
    QVERIFY(deeds.allDone());
    QVERIFY(isSecondCardWhole());
}

/// The form gets the message from the event loop, after its modal window has closed.
void TestCardExchanged::beforeTheFormHasHeardOfIt()
{
    showMarked();
    exchangeWhileBusy();
    QVERIFY(!m_form->view->makeFolder(QStringLiteral("new")));
    QVERIFY(!m_form->view->renameItem(QStringLiteral("a00.jpg"), QStringLiteral("new.jpg")));
    QVERIFY(!m_form->view->deleteEmptyFolders());
    QVERIFY(!m_form->view->deleteChecked());
    QVERIFY(!m_form->view->deleteCurrent());
    QVERIFY(isSecondCardWhole());
}

/// No message was sent yet, and nothing looked at the slot while it was empty.
void TestCardExchanged::inOneBurst()
{
    showMarked();
    QVERIFY(QFile::rename(m_card, m_form->world.path(QStringLiteral("../first card"))));
    m_form->world.makePhotos(2, m_card + QStringLiteral("/dcim"));
    QVERIFY(!m_form->view->deleteCurrent());
    QVERIFY(!m_form->view->deleteChecked());
    for (const char *name : {"/dcim/a00.jpg", "/dcim/a01.jpg"}) {
        QVERIFY(QFile::exists(m_card + QLatin1String(name)));
    }
}

void TestCardExchanged::withAnotherFolderOnShow_data()
{
    QTest::addColumn<Slot>("slot");
    QTest::newRow("the SD card") << Slot::SD;
    QTest::newRow("the CF card") << Slot::CF;
}

void TestCardExchanged::withAnotherFolderOnShow()
{
    QFETCH(Slot, slot);
    showMarked(slot);
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    exchangeWhileBusy();
    // The card is shown as if it had just been chosen.
    QVERIFY(isSecondCardWhole());
    QVERIFY(m_form->up->isEnabled());
}

/// A page built in between lists the empty slot, which is on the same device as both cards.
void TestCardExchanged::andReadAgainInBetween()
{
    QFETCH(Slot, slot);
    showMarked(slot);
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    {
        const lumi::BusyScope busy(m_form->form.get());
        takeOut();
        m_form->view->showPage(0, -1, true);
        QTRY_VERIFY(m_form->view->currentObject() == nullptr);
        putIn();
    }
    QVERIFY(isSecondCardWhole());
}

void TestCardExchanged::withoutTheFolderOnShow()
{
    showMarked();
    m_form->tap(QStringLiteral("trip"));
    QTRY_COMPARE(m_form->names(), list("a00.jpg"));
    {
        const lumi::BusyScope busy(m_form->form.get());
        exchange();
        QVERIFY(QDir(m_card + QStringLiteral("/dcim")).removeRecursively());
        m_form->world.makePhoto(m_card + QStringLiteral("/top.jpg"));
    }
    QTRY_COMPARE(m_form->names(), list("top.jpg"));
    QCOMPARE(m_form->combo->currentText(), kSd);
    QVERIFY(!m_form->up->isEnabled());
}

void TestCardExchanged::notBeingOnShow()
{
    QFETCH(Slot, slot);
    start(slot);
    m_form->choose(m_name);
    QTRY_COMPARE(m_form->names(), list("trip a00.jpg a01.jpg"));
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    m_form->choose(kStore);
    QTRY_COMPARE(m_form->names(), list("mine.jpg"));
    m_form->view->checkAll();
    QTRY_COMPARE(m_form->names(), list("mine.jpg"));
    const QPointer<FPVThumbnailItem> cell(m_form->cell(QStringLiteral("mine.jpg")));
    exchangeWhileBusy();
    QTest::qWait(60);
    QVERIFY(cell != nullptr);
    QVERIFY(m_form->view->anyChecked());
    QCOMPARE(m_form->combo->currentText(), kStore);
    // The card opens in its camera folder.
    m_form->choose(m_name);
    QVERIFY(isSecondCardWhole());
}

/// The exchange is handled once. Later messages do not reset the remembered folder.
void TestCardExchanged::laterNewsResetNothing()
{
    QFETCH(Slot, slot);
    start(slot);
    exchange();
    m_form->choose(m_name);
    QVERIFY(isSecondCardWhole());
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    const QPointer<FPVThumbnailItem> cell(m_form->cell(QStringLiteral("dcim")));
    m_form->tellCardChange();
    QTest::qWait(60);
    QVERIFY(cell != nullptr);
    m_form->choose(kStore);
    QTRY_COMPARE(m_form->names(), list("mine.jpg"));
    m_form->tellCardChange();
    m_form->choose(m_name);
    QTRY_COMPARE(m_form->names(), list("dcim"));
}

void TestCardExchanged::theOtherCardIsLeftAlone()
{
    start();
    m_form->world.machine->insertCard(Slot::CF);
    m_form->world.makePhotos(2, m_form->world.machine->cf + QStringLiteral("/dcim"));
    m_form->tellCardChange();
    m_form->choose(kCf);
    QTRY_COMPARE(m_form->names(), list("a00.jpg a01.jpg"));
    m_form->up->click();
    QTRY_COMPARE(m_form->names(), list("dcim"));
    const QPointer<FPVThumbnailItem> cell(m_form->cell(QStringLiteral("dcim")));
    exchangeWhileBusy();
    QTest::qWait(60);
    QVERIFY(cell != nullptr);
    QCOMPARE(m_form->combo->currentText(), kCf);
    m_form->choose(kStore);
    QTRY_COMPARE(m_form->names(), list("mine.jpg"));
    m_form->choose(kCf);
    QTRY_COMPARE(m_form->names(), list("dcim"));
}

/// The main window creates the form before it starts it.
void TestCardExchanged::beforeTheStart()
{
    start();
    FormFile form(&m_form->window, &m_form->toolBar);
    auto *combo = form.findChild<QComboBox *>();
    QCOMPARE(combo->count(), 2);
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    QCOMPARE(combo->count(), 1);
    m_form->world.machine->insertCard(Slot::SD);
    m_form->tellCardChange();
    QCOMPARE(combo->count(), 2);
    combo->setCurrentIndex(1);
    m_form->world.machine->removeCard(Slot::SD);
    m_form->tellCardChange();
    QCOMPARE(combo->currentText(), kStore);
    form.formStarted();
    QCOMPARE(form.findChild<FPVThumbnailView *>()->topIndex(), 0);
}

LUMI_TEST(TestCardExchanged)
#include "TestCardExchanged.moc"
