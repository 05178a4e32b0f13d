// SPDX-License-Identifier: MIT
// The first half of an import as the user sees it, from the press on a card's button to the question
// whether to copy: the order and the texts of the dialogs.
#include "files/engine/FPVClipboard.h"
#include "files/engine/FPVFileTree.h"
#include "import/importTexts.h"
#include "platform/session/QCopChannel.h"
#include "tests/import/FlowTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::SeenDialog;
using lumi::test::stateOf;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;

class TestImportFlow : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
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
    void theQuestionCanBeDenied();
    void theSearchCanBeCancelled();
    void aCancelBeforeTheWalkHasNoEffect();
    void aCardPulledInTheSearch_data();
    void aCardPulledInTheSearch();
    void anotherPlaceHasTheStoresName();
};

void TestImportFlow::aWholeImport_data()
{
    lumi::test::columns<Slot, QString>();
    QTest::newRow("SD card") << Slot::SD << QStringLiteral("SD Card");
    QTest::newRow("CF card") << Slot::CF << QStringLiteral("CF Card");
}

void TestImportFlow::aWholeImport()
{
    const auto [slot, name] = lumi::test::row<Slot, QString>();
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
    QCOMPARE(notices(), QStringList{texts.at(2)});
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
    QCOMPARE(seen.at(4).icon, int(QMessageBox::NoIcon));
}

void TestImportFlow::theBatteryDecides_data()
{
    lumi::test::columns<int, int, bool>();
    QTest::newRow("31 percent are enough") << int(PowerStatus::Offline) << 31 << true;
    QTest::newRow("30 percent are not enough") << int(PowerStatus::Offline) << 30 << false;
    QTest::newRow("an empty battery is not enough") << int(PowerStatus::Offline) << 0 << false;
    QTest::newRow("external power is enough") << int(PowerStatus::Online) << 1 << true;
    QTest::newRow("a backup battery does not count as external power")
        << int(PowerStatus::Backup) << 30 << false;
}

void TestImportFlow::theBatteryDecides()
{
    const auto [ac, percent, runs] = lumi::test::row<int, int, bool>();
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
    QMessageBox::StandardButton usual = QMessageBox::NoButton;
    m_form->driver.expect(kResult, [&usual](QDialog *dialog) {
        const auto *box = qobject_cast<QMessageBox *>(dialog);
        usual = box->standardButton(box->defaultButton());
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    press(Slot::SD);
    QCOMPARE(usual, QMessageBox::Yes);
    QCOMPARE(m_form->driver.texts().constFirst(),
             QString(QStringLiteral("20KB of data in 2 was detected in SD Card\n")
                     + (fits ? QStringLiteral("Copy file to the \"Photo_Files\" folder?")
                             : QStringLiteral("There may not be enough room to copy all files "
                                              "from the card. Continue?"))));
    // Return continues in both cases.
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(Slot::SD)));
}

void TestImportFlow::aSumBeyondTwoGigabytesWrapsRound()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.mov")});
    // A sparse file of 3 GB.
    QVERIFY(QFile::resize(m_form->card(Slot::SD) + QStringLiteral("/a.mov"), 3LL << 30));
    m_form->driver.press(kResult, QStringLiteral("No"));
    m_form->start();
    m_form->form->btn_sd_clicked(); // press() would read 3 GB to compare the card afterwards
    QCOMPARE(m_form->driver.texts().constFirst(),
             QStringLiteral("-1048576KB of data in 0 was detected in SD Card\nCopy file to the "
                            "\"Photo_Files\" folder?"));
}

void TestImportFlow::anEmptyCardHasItsMessage_data()
{
    lumi::test::columns<bool, Slot>();
    QTest::newRow("nothing at all") << false << Slot::SD;
    QTest::newRow("empty folders") << true << Slot::SD;
    QTest::newRow("the other card") << true << Slot::CF;
}

void TestImportFlow::anEmptyCardHasItsMessage()
{
    const auto [folders, slot] = lumi::test::row<bool, Slot>();
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
    // After the paste of a folder all later searches find photos only.
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
    // It applies after the end of the form, too.
    m_form->form.reset();
    QCOMPARE(FPVFileTree::dirFilter(), 0x313);
    QCOMPARE(pasteTrip(QStringLiteral("after")),
             (QStringList{QStringLiteral(".hidden.jpg"), QStringLiteral("a.jpg"),
                          QStringLiteral("link.jpg")}));
    QCOMPARE(FPVFileTree::dirFilter(), 0x313);
}

void TestImportFlow::theQuestionCanBeDenied()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.press(kResult, QStringLiteral("No"));
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

void TestImportFlow::aCancelBeforeTheWalkHasNoEffect()
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
    QTest::addColumn<bool>("exchanged");
    QTest::newRow("its files can still be read") << false << QStringList() << false;
    QTest::newRow("the files go with it")
        << false << QStringList{QStringLiteral("dcim/b.jpg"), QStringLiteral("zz/d.jpg")} << false;
    QTest::newRow("the user cancels, too") << true << QStringList() << false;
    QTest::newRow("all its files are gone") << false << QStringList{QString()} << false;
    QTest::newRow("another one is put in") << false << QStringList() << true;
}

void TestImportFlow::aCardPulledInTheSearch()
{
    QFETCH(bool, cancelled);
    QFETCH(QStringList, gone);
    QFETCH(bool, exchanged);
    m_form->insertCard(Slot::SD, kThreePhotos + QStringList{QStringLiteral("zz/d.jpg")});
    m_form->when(
        [] {
            return FPVFileTree::fileCount() == 1;
        },
        [this, cancelled, gone, exchanged] {
            for (const QString &name : gone) {
                const QString path = m_form->card(Slot::SD) + QLatin1Char('/') + name;
                QVERIFY(QFile::remove(path) || QDir(path).removeRecursively());
            }
            m_form->world.machine->removeCard(Slot::SD);
            m_form->tellCardChange();
            if (exchanged) {
                m_form->world.machine->insertCard(Slot::SD);
                m_form->tellCardChange();
            }
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

LUMI_TEST(TestImportFlow)
#include "TestImportFlow.moc"
