// SPDX-License-Identifier: MIT
// A whole import as its user meets it: the dialogs in their order, their words, and what is on
// the disk afterwards.
#include "app/common/FormEvent.h"
#include "files/engine/FPVClipboard.h"
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/importTexts.h"
#include "platform/QCopChannel.h"
#include "tests/import/ImportFixture.h"
#include "tests/support/FileFaults.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/swap/FullDisk.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>
#include <QTextBrowser>

#include <array>
#include <cerrno>
#include <functional>
#include <optional>
#include <stdexcept>

#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::SeenDialog;
using lumi::test::stateOf;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

const QString kError = QStringLiteral("Error");
const QString kStop = QStringLiteral("Stop");
const QString kDone = QStringLiteral("Done");
const QString kResult = QStringLiteral("Search Result");
const QString kFolder = QStringLiteral("New Folder");
const QString kDetails = QStringLiteral("Error Details");
const QString kStopped = QStringLiteral("Processing stopped");
const QString kThereWasAnError = QStringLiteral("There was an error. Processing is stopped.");
const QString kAccess = QStringLiteral("Due to access errors, processing is cancelled. Please do "
                                       "not remove the card while processing.");

const QStringList kThreePhotos{QStringLiteral("dcim/a.jpg"), QStringLiteral("dcim/b.jpg"),
                               QStringLiteral("dcim/c.jpg")};

lumi::test::DialogDriver::Answer enter(const QString &name)
{
    return [name](QDialog *dialog) {
        dialog->findChild<QLineEdit *>()->setText(name);
        QTest::keyClick(dialog->findChild<QLineEdit *>(), Qt::Key_Return);
    };
}

/// So that an ordinary user may write in the folder and gets there.
void openToAll(const QString &folder)
{
    for (QString path = folder; path != QDir::tempPath() && path != QLatin1String("/");
         path = QFileInfo(path).path()) {
        QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x7777)));
    }
}

} // namespace

class TestImportFlow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aWholeImport_data();
    void aWholeImport();
    void dialogsLookAsTheyShould();
    void theBatteryDecides_data();
    void theBatteryDecides();
    void theScreenSaverIsHeldInBothLongParts();
    void photosAreCountedAndEverythingIsSummed();
    void hiddenFoldersAreSearched();
    void tooLittleRoomIsAWarning_data();
    void tooLittleRoomIsAWarning();
    void aSumBeyondTwoGigabytesWrapsRound();
    void anEmptyCardHasItsMessage_data();
    void anEmptyCardHasItsMessage();
    void patternsOfTheBrowserCarryOver();
    void itsFilterGovernsLaterPastes();
    void theQuestionCanBeDenied_data();
    void theQuestionCanBeDenied();
    void theSearchCanBeCancelled();
    void aCancelBeforeTheWalkIsLost();
    void aCardPulledInTheSearch_data();
    void aCardPulledInTheSearch();
    void anotherPlaceHasTheStoresName();
    void theNameIsAskedFor();
    void noNameIsAStop_data();
    void noNameIsAStop();
    void anEmptyNameIsAName();
    void theSameNameAgainIsNumbered();
    void twoCardsUnderOneName();
    void aCardPulledWhileTheNameIsAsked();
    void theStoreCantBeUsed_data();
    void theStoreCantBeUsed();
    void whatCantBeReadStaysOnTheCard();
    void aCancelBeforeTheFirstFileIsThrough_data();
    void aCancelBeforeTheFirstFileIsThrough();
    void aCancelLaterHasAReport_data();
    void aCancelLaterHasAReport();
    void aFullStoreIsAWarning();
    void aMismatchInTheLastFileOnly();
    void aCardPulledDuringAFile();
    void aCardPulledBetweenFiles();
    void aPartThatCantBeRemovedIsReported();
    void contentsAreNotCompared();
    void theReportComesAgainUntilExit();
    void theBarIsNeverFull();
    void whateverIsThrownEndsInAMessage();
    void aSecondPressWhileItRuns_data();
    void aSecondPressWhileItRuns();
    void nothingGetsThroughBehindACancelledDialog();
    void aCardPulledUnderADialogGraysItsButtonAfterwards_data();
    void aCardPulledUnderADialogGraysItsButtonAfterwards();
    void theLabelsRestUntilTheEnd();
    void theFormWorksAfterEveryWayOut_data();
    void theFormWorksAfterEveryWayOut();

private:
    using Cards = std::array<Tree, 2>;

    void press(Slot slot);
    [[nodiscard]] Cards cards() const;
    void noteCards();
    void compareFailedRun(const QStringList &captions, const QStringList &texts);
    QString reportText(int failures);
    void cancelTheSearch();
    void failOneFile();
    void fillTheStore();
    void loseTheCard();
    void loseTheStore();
    void takeWayOut(const QString &way);

    std::unique_ptr<ImportFixture> m_form;
    std::optional<Cards> m_cards; // before the last press
};

void TestImportFlow::init()
{
    m_form.reset(new ImportFixture);
    m_cards.reset();
}

void TestImportFlow::cleanup()
{
    if (m_form->form) {
        QVERIFY(!m_form->form->isBusy());
        QVERIFY(m_form->form->canClose());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(m_form->driver.unused(), 0);
    }
    // However the import went: cards are only read.
    QVERIFY(!m_cards || *m_cards == cards());
    m_form.reset();
}

TestImportFlow::Cards TestImportFlow::cards() const
{
    return {stateOf(m_form->card(Slot::CF)), stateOf(m_form->card(Slot::SD))};
}

/// After a test has changed a card itself.
void TestImportFlow::noteCards()
{
    m_cards = cards();
}

void TestImportFlow::press(Slot slot)
{
    if (!m_form->form) {
        m_form->start();
    }
    noteCards();
    QTest::mouseClick(slot == Slot::CF ? m_form->cf : m_form->sd, Qt::LeftButton);
}

/// The dialogs so far, the words of the last ones, and nothing changed on the cards.
void TestImportFlow::compareFailedRun(const QStringList &captions, const QStringList &texts)
{
    QCOMPARE(m_form->driver.captions(), captions);
    QVERIFY(!texts.isEmpty());
    QCOMPARE(m_form->driver.texts().mid(captions.size() - texts.size()), texts);
    QVERIFY(m_cards && *m_cards == cards());
}

/// The report's plain text, and how many failures it tells of.
QString TestImportFlow::reportText(int failures)
{
    QString text;
    m_form->driver.expect(kDetails, [&text](QDialog *dialog) {
        text = dialog->findChild<QTextBrowser *>()->toPlainText();
        dialog->reject();
    });
    m_form->driver.press(kDone, kDetails);
    m_form->driver.press(kDone, QStringLiteral("Exit"));
    press(Slot::SD);
    if (text.count(QStringLiteral("CopyError")) != failures) {
        return QStringLiteral("not %1 failures: ").arg(failures) + text;
    }
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' '));
}

void TestImportFlow::aWholeImport_data()
{
    QTest::addColumn<Slot>("slot");
    QTest::addColumn<QString>("name");
    QTest::newRow("SD card") << Slot::SD << QStringLiteral("SD Card");
    QTest::newRow("CF card") << Slot::CF << QStringLiteral("CF Card");
}

void TestImportFlow::aWholeImport()
{
    QFETCH(Slot, slot);
    QFETCH(QString, name);
    m_form->world.machine->insertCard(slot);
    const int files = lumi::test::fillCard(m_form->card(slot), 60);
    const Tree before = stateOf(m_form->card(slot));
    press(slot);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    const QStringList texts = m_form->driver.texts();
    QVERIFY(texts.at(0).endsWith(
        QString(QStringLiteral(" was detected in ") + name
                + QStringLiteral("\nCopy file to the \"Photo_Files\" folder?"))));
    QCOMPARE(texts.at(2), lumi::copiedText(todaysFolder(), files));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(slot)));
    QCOMPARE(stateOf(m_form->card(slot)), before);
    QCOMPARE(m_form->folders(), QStringList{todaysFolder()});
}

void TestImportFlow::dialogsLookAsTheyShould()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    QStringList words;
    m_form->driver.expect(QStringLiteral("MyDialogProgressBar"), [&words](QDialog *dialog) {
        const auto labels = dialog->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            words.append(label->text());
        }
    });
    press(Slot::SD);
    const QList<SeenDialog> &seen = m_form->driver.seen;
    QCOMPARE(seen.size(), qsizetype(5));
    QCOMPARE(words,
             (QStringList{QStringLiteral("Copying..."),
                          QStringLiteral("Please do not remove the card while "
                                         "processing.")}));
    for (const SeenDialog &dialog : seen) {
        QCOMPARE(dialog.parent.data(), m_form->form.get());
    }
    QCOMPARE(seen.at(0).className, QStringLiteral("MyDialogWait"));
    QCOMPARE(seen.at(0).text,
             QStringLiteral("Searching...please wait. Do not remove the card while processing."));
    QCOMPARE(seen.at(0).buttons, QStringList{QStringLiteral("Cancel")});
    QCOMPARE(seen.at(1).buttons, (QStringList{QStringLiteral("Yes"), QStringLiteral("No")}));
    QCOMPARE(seen.at(1).icon, int(QMessageBox::NoIcon));
    QCOMPARE(seen.at(3).className, QStringLiteral("MyDialogProgressBar"));
    QCOMPARE(seen.at(3).text, QStringLiteral("Copying..."));
    QCOMPARE(seen.at(3).buttons, QStringList{QStringLiteral("Cancel")});
    QCOMPARE(seen.at(4).buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(seen.at(4).icon, int(QMessageBox::NoIcon)); // as the box that offers the report
}

void TestImportFlow::theBatteryDecides_data()
{
    QTest::addColumn<int>("ac");
    QTest::addColumn<int>("percent");
    QTest::addColumn<bool>("runs");
    QTest::newRow("31 percent are enough") << int(PowerStatus::Offline) << 31 << true;
    QTest::newRow("30 are not") << int(PowerStatus::Offline) << 30 << false;
    QTest::newRow("nor is an empty battery") << int(PowerStatus::Offline) << 0 << false;
    QTest::newRow("external power is") << int(PowerStatus::Online) << 1 << true;
    QTest::newRow("a backup battery is no external power")
        << int(PowerStatus::Backup) << 30 << false;
}

void TestImportFlow::theBatteryDecides()
{
    QFETCH(int, ac);
    QFETCH(int, percent);
    QFETCH(bool, runs);
    m_form->world.machine->powerStatus
        = PowerStatus(static_cast<PowerStatus::ACStatus>(ac), percent);
    m_form->insertCard(Slot::SD, kThreePhotos);
    press(Slot::SD);
    if (runs) {
        QCOMPARE(m_form->driver.captions().constLast(), kDone);
        return;
    }
    QCOMPARE(m_form->driver.seen.size(), qsizetype(1)); // no search
    compareFailedRun({kError}, {QStringLiteral("Job stopped because the battery is low.")});
    QCOMPARE(m_form->driver.seen.constFirst().icon, int(QMessageBox::Critical));
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportFlow::theScreenSaverIsHeldInBothLongParts()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    QCopChannel channel("QPE/System");
    QList<int> modes;
    QList<int> modesAtTheName;
    connect(&channel, &QCopChannel::received, this,
            [&modes](const QCString &message, const QByteArray &data) {
                int mode = -1;
                QDataStream(data) >> mode;
                modes.append(message == "setScreenSaverMode(int)" ? mode : -2);
            });
    m_form->driver.expect(kFolder, [&modes, &modesAtTheName](QDialog *dialog) {
        QCoreApplication::processEvents();
        modesAtTheName = modes;
        dialog->accept();
    });
    press(Slot::SD);
    QCoreApplication::processEvents();
    QCOMPARE(modesAtTheName, (QList<int>{0, 300, 200}));
    QCOMPARE(modes, (QList<int>{0, 300, 200, 0, 300, 200}));
}

void TestImportFlow::photosAreCountedAndEverythingIsSummed()
{
    m_form->insertCard(Slot::SD,
                       {QStringLiteral("dcim/a.jpg"), QStringLiteral("b.JPEG"),
                        QStringLiteral("dcim/x/c.Jpg"), QStringLiteral("d.mov"),
                        QStringLiteral("e")},
                       1000);
    press(Slot::SD);
    QCOMPARE(m_form->driver.texts().constFirst(),
             QStringLiteral("4KB of data in 3 was detected in SD Card\nCopy file to the "
                            "\"Photo_Files\" folder?"));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 5));
}

void TestImportFlow::hiddenFoldersAreSearched()
{
    m_form->insertCard(Slot::SD, {QStringLiteral(".hidden/deep/.a.jpg")});
    press(Slot::SD);
    QVERIFY(m_form->driver.texts().constFirst().contains(QStringLiteral("in 1 was")));
    QVERIFY(QFile::exists(m_form->target(todaysFolder() + QStringLiteral("/.hidden/deep/.a.jpg"))));
}

void TestImportFlow::tooLittleRoomIsAWarning_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<bool>("fits");
    QTest::newRow("just enough") << 10240 + 20 << true;
    QTest::newRow("just below") << 10240 + 18 << false;
    QTest::newRow("nothing at all") << 0 << false;
}

void TestImportFlow::tooLittleRoomIsAWarning()
{
    QFETCH(int, freeKB);
    QFETCH(bool, fits);
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}, 10240);
    m_form->setFreeKB(freeKB);
    press(Slot::SD);
    QCOMPARE(m_form->driver.texts().constFirst(),
             QString(QStringLiteral("20KB of data in 2 was detected in SD Card\n")
                     + (fits ? QStringLiteral("Copy file to the \"Photo_Files\" folder?")
                             : QStringLiteral("There may not be enough room to copy all files "
                                              "from the card. Continue?"))));
    // Yes goes on in any case.
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(Slot::SD)));
}

void TestImportFlow::aSumBeyondTwoGigabytesWrapsRound()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.mov")});
    // 3 GB, all of it a hole.
    QVERIFY(QFile::resize(m_form->card(Slot::SD) + QStringLiteral("/a.mov"), 3LL << 30));
    m_form->driver.press(kResult, QStringLiteral("No"));
    m_form->start();
    m_form->form->btn_sd_clicked(); // nobody reads 3 GB to compare them afterwards
    QCOMPARE(m_form->driver.texts().constFirst(),
             QStringLiteral("-1048576KB of data in 0 was detected in SD Card\nCopy file to the "
                            "\"Photo_Files\" folder?"));
}

void TestImportFlow::anEmptyCardHasItsMessage_data()
{
    QTest::addColumn<bool>("folders");
    QTest::addColumn<Slot>("slot");
    QTest::newRow("nothing at all") << false << Slot::SD;
    QTest::newRow("empty folders") << true << Slot::SD;
    QTest::newRow("the other card") << true << Slot::CF;
}

void TestImportFlow::anEmptyCardHasItsMessage()
{
    QFETCH(bool, folders);
    QFETCH(Slot, slot);
    m_form->insertCard(slot, {});
    if (folders) {
        m_form->world.makeFolder(m_form->card(slot) + QStringLiteral("/dcim/100"));
    }
    press(slot);
    compareFailedRun({kResult},
                     {slot == Slot::CF
                          ? QStringLiteral("Data inspection was not performed on CF Card")
                          : QStringLiteral("Data inspection was not performed on SD Card")});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Information));
    QCOMPARE(m_form->driver.seen.constLast().buttons, QStringList{QStringLiteral("OK")});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportFlow::patternsOfTheBrowserCarryOver()
{
    m_form->insertCard(Slot::SD,
                       {QStringLiteral("a.jpg"), QStringLiteral("b.MOV"),
                        QStringLiteral("dcim/c.JPEG"), QStringLiteral("d.xmp")});
    press(Slot::SD);
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 4));
    // A folder is pasted, and all later searches see photos only.
    m_form->world.makePhoto(QStringLiteral("trip/x.jpg"));
    FPVClipboard clipboard;
    clipboard.take({m_form->world.path(QStringLiteral("trip"))}, false);
    QCOMPARE(clipboard.paste(m_form->world.makeFolder(QStringLiteral("to")), nullptr),
             lumi::PasteResult::Done);
    m_form->driver.seen.clear();
    press(Slot::SD);
    QVERIFY(m_form->driver.texts().constFirst().startsWith(
        QStringLiteral("1KB of data in 2 was detected in SD Card\n")));
    const QString made = todaysFolder() + QStringLiteral("001");
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(made, 2));
    QCOMPARE(treeOf(m_form->target(made)).keys(),
             (QStringList{QStringLiteral("a.jpg"), QStringLiteral("dcim"),
                          QStringLiteral("dcim/c.JPEG")}));
}

void TestImportFlow::itsFilterGovernsLaterPastes()
{
    const auto pasteTrip = [this](const QString &to) {
        FPVClipboard clipboard;
        clipboard.take({m_form->world.path(QStringLiteral("trip"))}, false);
        const bool isDone
            = clipboard.paste(m_form->world.makeFolder(to), nullptr) == lumi::PasteResult::Done;
        const QDir folder(m_form->target(to + QStringLiteral("/trip")));
        return isDone ? folder.entryList(QDir::Files | QDir::Hidden) : QStringList();
    };
    const QString photo = m_form->world.makePhoto(QStringLiteral("trip/a.jpg"));
    m_form->world.makePhoto(QStringLiteral("trip/.hidden.jpg"));
    QVERIFY(QFile::link(photo, m_form->world.path(QStringLiteral("trip/link.jpg"))));
    QCOMPARE(FPVFileTree::dirFilter(), 0x1B);
    QCOMPARE(pasteTrip(QStringLiteral("before")), QStringList{QStringLiteral("a.jpg")});
    m_form->insertCard(Slot::SD, kThreePhotos);
    press(Slot::SD);
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 3));
    QCOMPARE(FPVFileTree::dirFilter(), 0x313);
    // The form gone, it stays for good.
    m_form->form.reset();
    QCOMPARE(FPVFileTree::dirFilter(), 0x313);
    QCOMPARE(pasteTrip(QStringLiteral("after")),
             (QStringList{QStringLiteral(".hidden.jpg"), QStringLiteral("a.jpg"),
                          QStringLiteral("link.jpg")}));
    QCOMPARE(FPVFileTree::dirFilter(), 0x313);
}

void TestImportFlow::theQuestionCanBeDenied_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("No") << QStringLiteral("No");
    QTest::newRow("Escape") << QStringLiteral("escape");
    QTest::newRow("the window is closed") << QStringLiteral("close");
}

void TestImportFlow::theQuestionCanBeDenied()
{
    QFETCH(QString, way);
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kResult, [way](QDialog *dialog) {
        if (way == QLatin1String("close")) {
            dialog->close();
        } else if (way == QLatin1String("escape")) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            QVERIFY(lumi::test::DialogDriver::pressButton(dialog, way));
        }
    });
    press(Slot::SD);
    compareFailedRun({kResult, kStop}, {kStopped});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Information));
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportFlow::theSearchCanBeCancelled()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->when(
        [] {
            return FPVFileTree::fileCount() == 2;
        },
        [] {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        });
    press(Slot::SD);
    compareFailedRun({kStop}, {kStopped});
    QCOMPARE(FPVFileTree::fileCount(), 2);
}

void TestImportFlow::aCancelBeforeTheWalkIsLost()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    int pressed = 0;
    m_form->driver.expect(QStringLiteral("MyDialogWait"), [&pressed](QDialog *dialog) {
        QCOMPARE(FPVFileTree::fileCount(), 0);
        pressed += lumi::test::DialogDriver::pressButton(dialog, QStringLiteral("Cancel")) ? 1 : 0;
    });
    press(Slot::SD);
    QCOMPARE(pressed, 1);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
}

void TestImportFlow::aCardPulledInTheSearch_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<QStringList>("gone");
    QTest::newRow("its files can still be read") << false << QStringList();
    QTest::newRow("the files go with it")
        << false << QStringList{QStringLiteral("dcim/b.jpg"), QStringLiteral("zz/d.jpg")};
    QTest::newRow("the user cancels too") << true << QStringList();
    QTest::newRow("nothing is left of it") << false << QStringList{QString()};
}

void TestImportFlow::aCardPulledInTheSearch()
{
    QFETCH(bool, cancelled);
    QFETCH(QStringList, gone);
    m_form->insertCard(Slot::SD, kThreePhotos + QStringList{QStringLiteral("zz/d.jpg")});
    m_form->when(
        [] {
            return FPVFileTree::fileCount() == 1;
        },
        [this, cancelled, gone] {
            for (const QString &name : gone) {
                const QString path = m_form->card(Slot::SD) + QLatin1Char('/') + name;
                QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
            }
            m_form->world.machine->removeCard(Slot::SD);
            noteCards();
            if (cancelled) {
                QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
            }
        });
    press(Slot::SD);
    compareFailedRun({kError}, {kAccess});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Critical));
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportFlow::anotherPlaceHasTheStoresName()
{
    m_form->start();
    const QString place = m_form->world.machine->folder.filePath(QStringLiteral("place"));
    lumi::test::writeBytes(place + QStringLiteral("/a.jpg"), 2048);
    m_form->form->startImport(place);
    QVERIFY(m_form->driver.texts().constFirst().startsWith(
        QStringLiteral("2KB of data in 1 was detected in Photo_Files\n")));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(place));
}

void TestImportFlow::theNameIsAskedFor()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, [](QDialog *dialog) {
        auto *line = dialog->findChild<QLineEdit *>();
        QCOMPARE(dialog->findChild<QLabel *>()->text(),
                 QStringLiteral("Please input the folder name before copying."));
        QCOMPARE(line->text(), todaysFolder());
        QCOMPARE(line->selectedText(), todaysFolder());
        QCOMPARE(line->maxLength(), 30);
        QTest::keyClicks(line, QString(40, QLatin1Char('n')));
        QTest::keyClick(line, Qt::Key_Return);
    });
    press(Slot::SD);
    QCOMPARE(m_form->folders(), QStringList{QString(30, QLatin1Char('n'))});
    QCOMPARE(m_form->driver.texts().constLast(),
             lumi::copiedText(QString(30, QLatin1Char('n')), 3));
}

void TestImportFlow::noNameIsAStop_data()
{
    QTest::addColumn<bool>("closed");
    QTest::newRow("Escape") << false;
    QTest::newRow("the window is closed") << true;
}

void TestImportFlow::noNameIsAStop()
{
    QFETCH(bool, closed);
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, [closed](QDialog *dialog) {
        if (closed) {
            dialog->close();
        } else {
            QTest::keyClick(dialog, Qt::Key_Escape);
        }
    });
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kStop}, {kStopped});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportFlow::anEmptyNameIsAName()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, enter(QStringLiteral("")));
    press(Slot::SD);
    QCOMPARE(m_form->folders(), QStringList{QStringLiteral("001")});
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(QStringLiteral("001"), 3));
    QCOMPARE(treeOf(m_form->target(QStringLiteral("001"))), importableTree(m_form->card(Slot::SD)));
}

void TestImportFlow::theSameNameAgainIsNumbered()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    press(Slot::SD);
    press(Slot::SD);
    press(Slot::SD);
    QCOMPARE(m_form->folders(),
             (QStringList{todaysFolder(), todaysFolder() + QStringLiteral("001"),
                          todaysFolder() + QStringLiteral("002")}));
    // The boxes name the folder that was really made.
    QCOMPARE(m_form->driver.texts().constLast(),
             lumi::copiedText(todaysFolder() + QStringLiteral("002"), 3));
}

void TestImportFlow::twoCardsUnderOneName()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 100);
    m_form->insertCard(Slot::CF, kThreePhotos, 200);
    m_form->driver.expect(kFolder, enter(QStringLiteral("<i>trip</i>").remove(QLatin1Char('/'))));
    m_form->driver.expect(kFolder, enter(QStringLiteral("<i>trip</i>").remove(QLatin1Char('/'))));
    press(Slot::SD);
    press(Slot::CF);
    QCOMPARE(m_form->folders(),
             (QStringList{QStringLiteral("<i>trip<i>"), QStringLiteral("<i>trip<i>001")}));
    QCOMPARE(treeOf(m_form->target(QStringLiteral("<i>trip<i>"))),
             importableTree(m_form->card(Slot::SD)));
    QCOMPARE(treeOf(m_form->target(QStringLiteral("<i>trip<i>001"))),
             importableTree(m_form->card(Slot::CF)));
    // Shown as it is, not as rich text.
    QVERIFY(m_form->driver.texts().constLast().contains(QStringLiteral("<i>trip<i>001")));
}

void TestImportFlow::aCardPulledWhileTheNameIsAsked()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        m_form->world.machine->removeCard(Slot::SD);
        noteCards();
        m_form->tellCardChange();
        dialog->accept();
    });
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kError}, {kAccess});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Critical));
    QVERIFY(m_form->folders().isEmpty());
    QCoreApplication::processEvents();
    QVERIFY(!m_form->sd->isEnabled());
}

void TestImportFlow::theStoreCantBeUsed_data()
{
    QTest::addColumn<QString>("cause");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("icon");
    QTest::newRow("it is gone") << QStringLiteral("gone") << kThereWasAnError
                                << int(QMessageBox::Critical);
    QTest::newRow("its owner locked it")
        << QStringLiteral("locked") << kThereWasAnError << int(QMessageBox::Critical);
    QTest::newRow("the name is none")
        << QStringLiteral("slash") << kThereWasAnError << int(QMessageBox::Critical);
    QTest::newRow("the disk is full to the last KB")
        << QStringLiteral("full") << QStringLiteral("Out of space. Processing stopped.")
        << int(QMessageBox::Warning);
}

void TestImportFlow::theStoreCantBeUsed()
{
    QFETCH(QString, cause);
    QFETCH(QString, text);
    QFETCH(int, icon);
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->start();
    std::optional<lumi::test::OrdinaryUser> user;
    if (cause == QLatin1String("gone")) {
        QVERIFY(QDir(m_form->world.store).removeRecursively());
    } else if (cause == QLatin1String("locked")) {
        openToAll(m_form->card(Slot::SD));
        openToAll(m_form->world.store);
        QVERIFY(QFile::setPermissions(m_form->world.store, QFile::Permissions(0x5555)));
        user.emplace();
    } else {
        m_form->driver.expect(kFolder, enter(QStringLiteral("a/b")));
    }
    if (cause == QLatin1String("full")) {
        m_form->setFreeKB(0);
    }
    press(Slot::SD);
    // Nothing was copied: no report.
    compareFailedRun({kResult, kFolder, kError}, {text});
    QCOMPARE(m_form->driver.seen.constLast().icon, icon);
    QVERIFY(m_form->folders().isEmpty());
    user.reset();
    QFile::setPermissions(m_form->world.store, QFile::Permissions(0x7755));
}

void TestImportFlow::whatCantBeReadStaysOnTheCard()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    const QString card = m_form->card(Slot::SD);
    QVERIFY(QFile::setPermissions(card + QStringLiteral("/dcim/b.jpg"), {}));
    openToAll(card);
    openToAll(m_form->world.store);
    m_form->start();
    noteCards();
    {
        const lumi::test::OrdinaryUser user;
        QTest::mouseClick(m_form->sd, Qt::LeftButton);
    }
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QVERIFY(m_form->driver.texts().constFirst().startsWith(
        QStringLiteral("1KB of data in 2 was detected in SD Card\n")));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 2));
    Tree expected = importableTree(card);
    expected.remove(QStringLiteral("dcim/b.jpg"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportFlow::aCancelBeforeTheFirstFileIsThrough_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("as soon as the dialog is there") << true;
    QTest::newRow("in the middle of the file") << false;
}

void TestImportFlow::aCancelBeforeTheFirstFileIsThrough()
{
    QFETCH(bool, atOnce);
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->world.makeFolder(m_form->card(Slot::SD) + QStringLiteral("/dcim/empty"));
    if (atOnce) {
        m_form->driver.press(QStringLiteral("MyDialogProgressBar"), QStringLiteral("Cancel"));
    } else {
        m_form->whenInFile(QStringLiteral("a.jpg"), [] {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        });
    }
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kStop}, {QStringLiteral("Processing cancelled")});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Information));
    // The folders stay.
    QCOMPARE(treeOf(m_form->target(todaysFolder())),
             (Tree{{QStringLiteral("dcim"), "folder"}, {QStringLiteral("dcim/empty"), "folder"}}));
}

void TestImportFlow::aCancelLaterHasAReport_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("the button") << QStringLiteral("button");
    QTest::newRow("Escape") << QStringLiteral("escape");
    QTest::newRow("the window is closed") << QStringLiteral("close");
}

void TestImportFlow::aCancelLaterHasAReport()
{
    QFETCH(QString, way);
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const Tree before = stateOf(m_form->card(Slot::SD));
    m_form->whenInFile(QStringLiteral("c.jpg"), [way] {
        QWidget *dialog = QApplication::activeModalWidget();
        QVERIFY(dialog != nullptr);
        if (way == QLatin1String("button")) {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        } else if (way == QLatin1String("escape")) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            dialog->close();
        }
        QVERIFY(!dialog->isVisible());
    });
    const QString report = reportText(1);
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), QStringLiteral("Processing cancelled"));
    QCOMPARE(m_form->driver.texts().at(3), lumi::partlyCopiedText(todaysFolder(), 2));
    QCOMPARE(report, QStringLiteral("c.jpg\n  CopyError : User cancellation\n"));
    Tree expected = importableTree(m_form->card(Slot::SD));
    expected.remove(QStringLiteral("dcim/c.jpg"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
    QCOMPARE(stateOf(m_form->card(Slot::SD)), before);
}

void TestImportFlow::aFullStoreIsAWarning()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")}, 1000);
    m_form->insertCard(Slot::SD, {QStringLiteral("b.jpg")}, 60000);
    m_form->setFreeKB(20);
    const lumi::test::FileSizeLimit limit(30000);
    const QString report = reportText(1);
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kError, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), QStringLiteral("Out of space. Processing stopped."));
    QCOMPARE(m_form->driver.seen.at(4).icon, int(QMessageBox::Warning));
    QCOMPARE(report, QStringLiteral("b.jpg\n  CopyError : Memory Full\n"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())).keys(), QStringList{QStringLiteral("a.jpg")});
}

void TestImportFlow::aMismatchInTheLastFileOnly()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    std::unique_ptr<FileFaults> faults;
    // A block that can't be read looks like the end of the file.
    m_form->whenInFile(QStringLiteral("c.jpg"), [this, &faults] {
        faults = std::make_unique<FileFaults>(m_form->card(Slot::SD));
        faults->fail(FileFaults::Read, 1, EIO);
    });
    const QString report = reportText(1);
    // No box before that of the report.
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 3));
    QCOMPARE(report, QStringLiteral("c.jpg\n  CopyError : File Mismatch\n"));
    QVERIFY(!QFile::exists(m_form->target(todaysFolder() + QStringLiteral("/dcim/c.jpg"))));
}

void TestImportFlow::aCardPulledDuringAFile()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    std::unique_ptr<FileFaults> faults;
    m_form->whenInFile(QStringLiteral("b.jpg"), [this, &faults] {
        m_form->world.machine->removeCard(Slot::SD);
        noteCards();
        m_form->tellCardChange();
        faults = std::make_unique<FileFaults>(m_form->card(Slot::SD));
        faults->failFrom(FileFaults::Read | FileFaults::Open, 1, EIO);
    });
    const QString report = reportText(2);
    faults.reset();
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    // The damaged one counts; the one that could not be opened doesn't.
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 2));
    QVERIFY(report.startsWith(QStringLiteral("b.jpg\n  CopyError : File Mismatch\n")));
    QVERIFY(report.endsWith(QStringLiteral("c.jpg\n  CopyError : Access Error\n")));
    QCOMPARE(treeOf(m_form->target(todaysFolder())).keys(),
             (QStringList{QStringLiteral("dcim"), QStringLiteral("dcim/a.jpg")}));
    QCoreApplication::processEvents();
    QVERIFY(!m_form->sd->isEnabled());
}

void TestImportFlow::aCardPulledBetweenFiles()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 10);
    Tree expected = importableTree(m_form->card(Slot::SD));
    expected.remove(QStringLiteral("dcim/b.jpg"));
    expected.remove(QStringLiteral("dcim/c.jpg"));
    const QString first = m_form->target(todaysFolder() + QStringLiteral("/dcim/a.jpg"));
    m_form->when(
        [first] {
            return QFileInfo(first).size() == 10;
        },
        [this] {
            QDir(m_form->card(Slot::SD) + QStringLiteral("/dcim")).removeRecursively();
            m_form->world.machine->removeCard(Slot::SD);
            noteCards();
        });
    const QString report = reportText(1);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 1));
    QCOMPARE(report, QStringLiteral("b.jpg\n  CopyError : Access Error\n"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportFlow::aPartThatCantBeRemovedIsReported()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    std::unique_ptr<FileFaults> faults;
    m_form->whenInFile(QStringLiteral("b.jpg"), [this, &faults] {
        faults = std::make_unique<FileFaults>(m_form->world.store);
        faults->failFrom(FileFaults::Remove, 1, EROFS);
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    const QString report = reportText(1);
    QVERIFY(faults->hits() > 0);
    faults.reset();
    QCOMPARE(m_form->driver.texts().at(3), lumi::partlyCopiedText(todaysFolder(), 1));
    QCOMPARE(report, QStringLiteral("b.jpg\n  CopyError : User cancellation\n"));
    // It is there, and the report names it.
    const Tree made = treeOf(m_form->target(todaysFolder()));
    const Tree whole = importableTree(m_form->card(Slot::SD));
    const QString part = QStringLiteral("dcim/b.jpg");
    QVERIFY(made.value(part).size() < whole.value(part).size());
    QVERIFY(whole.value(part).startsWith(made.value(part)));
}

void TestImportFlow::contentsAreNotCompared()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")}, 60000);
    const QString copy = m_form->target(todaysFolder() + QStringLiteral("/a.jpg"));
    m_form->whenInFile(QStringLiteral("a.jpg"), [copy] {
        QFile file(copy);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.putChar('x'));
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 1));
    Tree expected = importableTree(m_form->card(Slot::SD));
    QByteArray &bytes = expected[QStringLiteral("a.jpg")];
    QVERIFY(bytes.at(4) != 'x'); // behind the word "file"
    bytes[4] = 'x';
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportFlow::theReportComesAgainUntilExit()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("b.jpg"), [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    const QList<QByteArray> waysToClose{"reject", "close", "button"};
    for (const QByteArray &way : waysToClose) {
        m_form->driver.press(kDone, kDetails);
        m_form->driver.expect(kDetails, [this, way](QDialog *dialog) {
            QVERIFY(dialog->isModal());
            QCOMPARE(dialog->parentWidget(), m_form->form.get());
            QCOMPARE(dialog->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
            QCOMPARE(dialog->layout()->spacing(), 4);
            const auto *browser = dialog->findChild<QTextBrowser *>();
            QVERIFY(browser->width() >= 380);
            QVERIFY(browser->height() >= 240);
            if (way == "reject") {
                QTest::keyClick(dialog, Qt::Key_Escape);
            } else if (way == "close") {
                dialog->close();
            } else {
                QVERIFY(lumi::test::DialogDriver::pressButton(dialog, QStringLiteral("Close")));
            }
        });
    }
    m_form->driver.expect(kDone, [](QDialog *dialog) {
        dialog->close(); // counts as Exit
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone, kDetails, kDone,
                          kDetails, kDone}));
    QCOMPARE(m_form->driver.seen.constLast().buttons,
             (QStringList{kDetails, QStringLiteral("Exit")}));
}

void TestImportFlow::theBarIsNeverFull()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    QList<int> values;
    int total = 0;
    m_form->driver.expect(QStringLiteral("MyDialogProgressBar"), [&](QDialog *dialog) {
        auto *bar = dialog->findChild<QProgressBar *>();
        total = bar->maximum();
        connect(bar, &QProgressBar::valueChanged, this, [&values](int value) {
            values.append(value);
        });
    });
    press(Slot::SD);
    QCOMPARE(total, 5);
    QCOMPARE(values, (QList<int>{0, 1, 2, 3, 4}));
}

void TestImportFlow::whateverIsThrownEndsInAMessage()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->start();
    int calls = 0;
    m_form->world.machine->diskAt = [&calls](const QByteArray &) -> DiskFigures {
        if (++calls == 1) {
            throw std::runtime_error("no answer");
        }
        return {1024, 1 << 20, 1 << 20, true};
    };
    QCopChannel channel("QPE/System");
    int savers = 0;
    connect(&channel, &QCopChannel::received, this, [&savers] {
        ++savers;
    });
    press(Slot::SD);
    compareFailedRun({kError}, {kThereWasAnError});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Critical));
    QVERIFY(calls >= 2); // the labels are written again
    QCoreApplication::processEvents();
    QCOMPARE(savers, 3); // off, held, and given back
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions().constLast(), kDone);
}

void TestImportFlow::aSecondPressWhileItRuns_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::newRow("in the search") << QStringLiteral("MyDialogWait");
    QTest::newRow("at the question") << kResult;
    QTest::newRow("at the name") << kFolder;
    QTest::newRow("in the copy") << QStringLiteral("MyDialogProgressBar");
    QTest::newRow("at the end") << kDone;
}

void TestImportFlow::aSecondPressWhileItRuns()
{
    QFETCH(QString, dialog);
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->insertCard(Slot::CF, kThreePhotos);
    m_form->driver.expect(dialog, [this](QDialog *shown) {
        const qsizetype before = m_form->driver.seen.size();
        m_form->form->btn_cf_clicked();
        m_form->form->menu_import_sd();
        m_form->form->menu_option_help();
        m_form->form->menu_option_version();
        QVERIFY(!m_form->form->canClose());
        QCOMPARE(m_form->driver.seen.size(), before);
        if (!shown->inherits("MyDialogWait") && !shown->inherits("MyDialogProgressBar")) {
            auto *box = qobject_cast<QMessageBox *>(shown);
            if (box != nullptr) {
                box->buttons().constFirst()->click();
            } else {
                shown->accept();
            }
        }
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(m_form->folders(), QStringList{todaysFolder()});
}

void TestImportFlow::nothingGetsThroughBehindACancelledDialog()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->insertCard(Slot::CF, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("b.jpg"), [this] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        // The dialog is gone and the buttons are free, but the work hasn't stopped yet.
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QTest::mouseClick(m_form->cf, Qt::LeftButton);
        QTest::keyClick(m_form->sd, Qt::Key_Return);
        QVERIFY(!m_form->form->canClose());
        QVERIFY(m_form->form->isBusy());
    });
    m_form->driver.press(kDone, QStringLiteral("Exit"));
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kStop, kDone}));
    QCOMPARE(m_form->folders(), QStringList{todaysFolder()});
}

void TestImportFlow::aCardPulledUnderADialogGraysItsButtonAfterwards_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<QStringList>("captions");
    QTest::newRow("under the last box") << kDone << false << QStringList{kResult, kFolder, kDone};
    // What follows asks for the card after the name.
    QTest::newRow("under the question")
        << kResult << false << QStringList{kResult, kFolder, kError};
    QTest::newRow("under the report")
        << kDetails << true << QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone};
}

void TestImportFlow::aCardPulledUnderADialogGraysItsButtonAfterwards()
{
    QFETCH(QString, dialog);
    QFETCH(bool, cancelled);
    QFETCH(QStringList, captions);
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    if (cancelled) {
        m_form->whenInFile(QStringLiteral("b.jpg"), [] {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        });
        m_form->driver.press(kDone, kDetails);
        m_form->driver.press(kDone, QStringLiteral("Exit"));
    }
    m_form->driver.expect(dialog, [this](QDialog *shown) {
        m_form->world.machine->removeCard(Slot::SD);
        noteCards();
        m_form->tellCardChange();
        QVERIFY(m_form->sd->isEnabled());
        auto *box = qobject_cast<QMessageBox *>(shown);
        if (box != nullptr) {
            box->buttons().constFirst()->click(); // Yes, or the only one
        } else {
            shown->reject();
        }
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), captions);
    QCoreApplication::processEvents();
    QVERIFY(!m_form->sd->isEnabled());
}

void TestImportFlow::theLabelsRestUntilTheEnd()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->setFreeKB(40000);
    m_form->start();
    m_form->driver.expect(kDone, [this](QDialog *dialog) {
        m_form->setFreeKB(30000);
        QTest::qWait(5300); // longer than a tick of the form's clock
        QCOMPARE(m_form->memory->text(), lumi::memoryText(40000));
        dialog->accept();
    });
    press(Slot::SD);
    QCOMPARE(m_form->memory->text(), lumi::memoryText(30000));
    // The clock runs again.
    m_form->setFreeKB(20000);
    QTest::qWait(100);
    QCOMPARE(m_form->memory->text(), lumi::memoryText(30000));
    QTRY_COMPARE_WITH_TIMEOUT(m_form->memory->text(), lumi::memoryText(20000), 5500);
}

void TestImportFlow::cancelTheSearch()
{
    m_form->when(
        [] {
            return FPVFileTree::fileCount() == 1;
        },
        [] {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        });
    press(Slot::SD);
}

void TestImportFlow::failOneFile()
{
    std::unique_ptr<FileFaults> faults;
    m_form->whenInFile(QStringLiteral("b.jpg"), [this, &faults] {
        faults = std::make_unique<FileFaults>(m_form->card(Slot::SD));
        faults->fail(FileFaults::Read, 1, EIO);
    });
    m_form->driver.press(kDone, QStringLiteral("Exit"));
    press(Slot::SD);
}

void TestImportFlow::fillTheStore()
{
    const auto before = m_form->world.machine->diskAt;
    m_form->setFreeKB(20);
    const lumi::test::FileSizeLimit limit(30000);
    press(Slot::SD);
    m_form->world.machine->diskAt = before;
}

void TestImportFlow::loseTheCard()
{
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        m_form->world.machine->removeCard(Slot::SD);
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
    m_form->world.machine->insertCard(Slot::SD);
}

void TestImportFlow::loseTheStore()
{
    QVERIFY(QDir(m_form->world.store).removeRecursively());
    press(Slot::SD);
    m_form->world.makeFolder(m_form->world.store);
}

void TestImportFlow::takeWayOut(const QString &way)
{
    if (way == QLatin1String("denied")) {
        m_form->driver.press(kResult, QStringLiteral("No"));
    } else if (way == QLatin1String("no name")) {
        m_form->driver.expect(kFolder, [](QDialog *dialog) {
            dialog->reject();
        });
    } else if (way == QLatin1String("cancelled")) {
        m_form->driver.press(QStringLiteral("MyDialogProgressBar"), QStringLiteral("Cancel"));
    } else if (way == QLatin1String("battery")) {
        m_form->world.machine->powerStatus = PowerStatus(PowerStatus::Offline, 5);
    }
    press(way == QLatin1String("empty card") ? Slot::CF : Slot::SD);
    m_form->world.machine->powerStatus = PowerStatus(PowerStatus::Online, 5);
}

void TestImportFlow::theFormWorksAfterEveryWayOut_data()
{
    using Way = void (TestImportFlow::*)();
    QTest::addColumn<std::function<void()>>("leave");
    QTest::addColumn<QString>("lastText");
    const auto row = [this](const char *name, Way way, const QString &lastText) {
        QTest::newRow(name) << std::function<void()>([this, way] {
            (this->*way)();
        }) << lastText;
    };
    const auto plainRow = [this](const char *name, const char *way, const QString &lastText) {
        QTest::newRow(name) << std::function<void()>([this, way] {
            takeWayOut(QLatin1String(way));
        }) << lastText;
    };
    plainRow("the question was denied", "denied", kStopped);
    plainRow("no name was given", "no name", kStopped);
    plainRow("the copy was cancelled", "cancelled", QStringLiteral("Processing cancelled"));
    plainRow("the battery was low", "battery",
             QStringLiteral("Job stopped because the battery is low."));
    plainRow("the card was empty", "empty card",
             QStringLiteral("Data inspection was not performed on CF Card"));
    row("the search was cancelled", &TestImportFlow::cancelTheSearch, kStopped);
    row("the card had gone", &TestImportFlow::loseTheCard, kAccess);
    row("a copy was no match", &TestImportFlow::failOneFile,
        lumi::partlyCopiedText(todaysFolder(), 3));
    row("the store was full", &TestImportFlow::fillTheStore,
        QStringLiteral("Out of space. Processing stopped."));
    row("the store had gone", &TestImportFlow::loseTheStore, kThereWasAnError);
}

void TestImportFlow::theFormWorksAfterEveryWayOut()
{
    QFETCH(std::function<void()>, leave);
    QFETCH(QString, lastText);
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->insertCard(Slot::CF, {});
    leave();
    QCOMPARE(m_form->driver.texts().constLast(), lastText);
    const QStringList before = m_form->folders();
    m_form->driver.seen.clear();
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    // The folder of a run that ended early holds the first name.
    const QString made = todaysFolder() + QLatin1String(before.isEmpty() ? "" : "001");
    QCOMPARE(m_form->folders(), before + QStringList{made});
    QCOMPARE(treeOf(m_form->target(made)), importableTree(m_form->card(Slot::SD)));
}

LUMI_TEST(TestImportFlow)
#include "TestImportFlow.moc"
