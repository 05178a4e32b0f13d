// SPDX-License-Identifier: MIT
// The second half of an import as the user sees it: the name of the folder, the copy, the report,
// and the files afterwards.
#include "import/importTexts.h"
#include "tests/import/FlowTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/dialogAnswers.h"
#include "tests/support/rows.h"
#include "widgets/MyImageButton.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QTest>
#include <QTextBrowser>

#include <cerrno>

#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::stateOf;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;
using lumi::test::typing;

class TestImportCopying : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theNameIsAskedFor();
    void noNameIsAStop();
    void anEmptyNameIsAName();
    void theSameNameAgainIsNumbered();
    void theStoreCantBeUsed_data();
    void theStoreCantBeUsed();
    void aCancelBeforeTheFirstFileIsCopied_data();
    void aCancelBeforeTheFirstFileIsCopied();
    void aCancelLaterHasAReport();
    void aFullStoreIsAWarning();
    void aMismatchInTheLastFileOnly();
    void aCardPulledDuringAFile();
    void aCardExchangedDuringAFile();
    void contentsAreNotCompared();
    void theReportComesAgainUntilExit();
    void theBarIsNeverFull();
};

void TestImportCopying::theNameIsAskedFor()
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

void TestImportCopying::noNameIsAStop()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, lumi::test::pressing(Qt::Key_Escape));
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kStop}, {kStopped});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportCopying::anEmptyNameIsAName()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, typing(QString()));
    press(Slot::SD);
    QCOMPARE(m_form->folders(), QStringList{QStringLiteral("001")});
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(QStringLiteral("001"), 3));
}

void TestImportCopying::theSameNameAgainIsNumbered()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    press(Slot::SD);
    press(Slot::SD);
    press(Slot::SD);
    QCOMPARE(m_form->folders(),
             (QStringList{todaysFolder(), todaysFolder() + QStringLiteral("001"),
                          todaysFolder() + QStringLiteral("002")}));
    // The box names the folder that was made.
    QCOMPARE(m_form->driver.texts().constLast(),
             lumi::copiedText(todaysFolder() + QStringLiteral("002"), 3));
}

void TestImportCopying::theStoreCantBeUsed_data()
{
    lumi::test::columns<int, QString, int>();
    QTest::newRow("the folder can't be made")
        << 1000000 << kThereWasAnError << int(QMessageBox::Critical);
    QTest::newRow("the disk is full")
        << 0 << QStringLiteral("Out of space. Processing stopped.") << int(QMessageBox::Warning);
}

void TestImportCopying::theStoreCantBeUsed()
{
    const auto [freeKB, text, icon] = lumi::test::row<int, QString, int>();
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(kFolder, typing(QStringLiteral("a/b")));
    m_form->setFreeKB(freeKB);
    press(Slot::SD);
    // Nothing was copied, so no report is offered.
    compareFailedRun({kResult, kFolder, kError}, {text});
    QCOMPARE(m_form->driver.seen.constLast().icon, icon);
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportCopying::aCancelBeforeTheFirstFileIsCopied_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("as soon as the dialog is there") << true;
    QTest::newRow("in the middle of the file") << false;
}

void TestImportCopying::aCancelBeforeTheFirstFileIsCopied()
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
    QCOMPARE(notices(), QStringList{QStringLiteral("Processing cancelled")});
    QCOMPARE(m_form->driver.seen.constLast().icon, int(QMessageBox::Information));
    // The folders stay.
    QCOMPARE(treeOf(m_form->target(todaysFolder())),
             (Tree{{QStringLiteral("dcim"), "folder"}, {QStringLiteral("dcim/empty"), "folder"}}));
}

void TestImportCopying::aCancelLaterHasAReport()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const Tree before = stateOf(m_form->card(Slot::SD));
    m_form->whenInFile(QStringLiteral("c.jpg"), [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    });
    const QString report = reportText(1);
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), QStringLiteral("Processing cancelled"));
    QCOMPARE(m_form->driver.texts().at(3), lumi::partlyCopiedText(todaysFolder(), 2));
    QCOMPARE(notices(), QStringList{m_form->driver.texts().at(3)});
    QCOMPARE(report, QStringLiteral("c.jpg\n  CopyError : User cancellation\n"));
    Tree expected = importableTree(m_form->card(Slot::SD));
    expected.remove(QStringLiteral("dcim/c.jpg"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
    QCOMPARE(stateOf(m_form->card(Slot::SD)), before);
}

void TestImportCopying::aFullStoreIsAWarning()
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

void TestImportCopying::aMismatchInTheLastFileOnly()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    std::unique_ptr<FileFaults> faults;
    // An unreadable block is treated as the end of the file.
    m_form->whenInFile(QStringLiteral("c.jpg"), [this, &faults] {
        faults = std::make_unique<FileFaults>(m_form->card(Slot::SD));
        faults->fail(FileFaults::Read, 1, EIO);
    });
    const QString report = reportText(1);
    // The box of the report is the first one.
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 3));
    QCOMPARE(report, QStringLiteral("c.jpg\n  CopyError : File Mismatch\n"));
    QVERIFY(!QFile::exists(m_form->target(todaysFolder() + QStringLiteral("/dcim/c.jpg"))));
}

/// Otherwise the rest would be copied from the other card, and nobody would notice.
void TestImportCopying::aCardExchangedDuringAFile()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("b.jpg"), [this] {
        m_form->world.machine->removeCard(Slot::SD);
        m_form->tellCardChange();
        m_form->world.machine->insertCard(Slot::SD);
        m_form->tellCardChange();
        noteCards();
    });
    const QString report = reportText(1);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 2));
    QCOMPARE(report, QStringLiteral("c.jpg\n  CopyError : Access Error\n"));
    QCOMPARE(treeOf(m_form->target(todaysFolder() + QStringLiteral("/dcim"))).keys(),
             (QStringList{QStringLiteral("a.jpg"), QStringLiteral("b.jpg")}));
}

void TestImportCopying::aCardPulledDuringAFile()
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
    // The damaged file counts as copied; the file that could not be opened does not.
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 2));
    QVERIFY(report.startsWith(QStringLiteral("b.jpg\n  CopyError : File Mismatch\n")));
    QVERIFY(report.endsWith(QStringLiteral("c.jpg\n  CopyError : Access Error\n")));
    QCOMPARE(treeOf(m_form->target(todaysFolder())).keys(),
             (QStringList{QStringLiteral("dcim"), QStringLiteral("dcim/a.jpg")}));
    QCoreApplication::processEvents();
    QVERIFY(!m_form->sd->isEnabled());
}

void TestImportCopying::contentsAreNotCompared()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")}, 60000);
    const auto copy = [] {
        return lumi::test::openFile(QStringLiteral(" (deleted)")); // not linked yet
    };
    m_form->when(
        [copy] {
            return ::lseek(copy(), 0, SEEK_CUR) > 0;
        },
        [copy] {
            QCOMPARE(::pwrite(copy(), "x", 1, 0), ssize_t(1));
        });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 1));
    Tree expected = importableTree(m_form->card(Slot::SD));
    QByteArray &bytes = expected[QStringLiteral("a.jpg")];
    QVERIFY(bytes.at(4) != 'x'); // after the prefix "file"
    bytes[4] = 'x';
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportCopying::theReportComesAgainUntilExit()
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

void TestImportCopying::theBarIsNeverFull()
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

LUMI_TEST(TestImportCopying)
#include "TestImportCopying.moc"
