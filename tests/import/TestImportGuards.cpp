// SPDX-License-Identifier: MIT
// What keeps an import together while its dialogs let events in, and that the form is as good
// as new after each.
#include "files/engine/FPVFileTree.h"
#include "import/importTexts.h"
#include "platform/session/QCopChannel.h"
#include "tests/import/FlowTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyImageButton.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QTest>

#include <cerrno>
#include <functional>
#include <stdexcept>

using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::todaysFolder;
using lumi::test::treeOf;

namespace {

/// Stands in a text for today's folder, as the day may change between row and test.
const QString kToday = QStringLiteral("today's folder");

} // namespace

class TestImportGuards : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void whateverIsThrownEndsInAMessage();
    void aSecondPressWhileItRuns_data();
    void aSecondPressWhileItRuns();
    void nothingGetsThroughBehindACancelledDialog();
    void aCardPulledUnderADialogGraysItsButtonAfterwards_data();
    void aCardPulledUnderADialogGraysItsButtonAfterwards();
    void theLabelsRestUntilTheEnd();
    void theFormWorksAfterEveryWayOut_data();
    void theFormWorksAfterEveryWayOut();
    void everyRunHasItsOwnReport();

private:
    void cancelTheSearch();
    void failOneFile();
    void fillTheStore();
    void loseTheCard();
    void exchangeTheCard();
    void exchangeTheCardInOneBurst();
    void loseTheStore();
    void takeWayOut(const QString &way);
};

void TestImportGuards::whateverIsThrownEndsInAMessage()
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

void TestImportGuards::aSecondPressWhileItRuns_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::newRow("in the search") << QStringLiteral("MyDialogWait");
    QTest::newRow("at the question") << kResult;
    QTest::newRow("at the name") << kFolder;
    QTest::newRow("in the copy") << QStringLiteral("MyDialogProgressBar");
    QTest::newRow("at the end") << kDone;
}

void TestImportGuards::aSecondPressWhileItRuns()
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

void TestImportGuards::nothingGetsThroughBehindACancelledDialog()
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

void TestImportGuards::aCardPulledUnderADialogGraysItsButtonAfterwards_data()
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

void TestImportGuards::aCardPulledUnderADialogGraysItsButtonAfterwards()
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

void TestImportGuards::theLabelsRestUntilTheEnd()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->setFreeKB(40000);
    m_form->start();
    m_form->driver.expect(kDone, [this](QDialog *dialog) {
        m_form->setFreeKB(30000);
        QTest::qWait(6000); // longer than a tick of the form's clock
        QCOMPARE(m_form->memory->text(), lumi::memoryText(40000));
        dialog->accept();
    });
    press(Slot::SD);
    QCOMPARE(m_form->memory->text(), lumi::memoryText(30000));
    // The clock runs again.
    m_form->setFreeKB(20000);
    QTest::qWait(100);
    QCOMPARE(m_form->memory->text(), lumi::memoryText(30000));
    QTRY_COMPARE_WITH_TIMEOUT(m_form->memory->text(), lumi::memoryText(20000), 8000);
}

void TestImportGuards::cancelTheSearch()
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

void TestImportGuards::failOneFile()
{
    std::unique_ptr<FileFaults> faults;
    m_form->whenInFile(QStringLiteral("b.jpg"), [this, &faults] {
        faults = std::make_unique<FileFaults>(m_form->card(Slot::SD));
        faults->fail(FileFaults::Read, 1, EIO);
    });
    m_form->driver.press(kDone, QStringLiteral("Exit"));
    press(Slot::SD);
}

void TestImportGuards::fillTheStore()
{
    const auto before = m_form->world.machine->diskAt;
    m_form->setFreeKB(20);
    const lumi::test::FileSizeLimit limit(30000);
    press(Slot::SD);
    m_form->world.machine->diskAt = before;
}

void TestImportGuards::loseTheCard()
{
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        m_form->world.machine->removeCard(Slot::SD);
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
    m_form->world.machine->insertCard(Slot::SD);
}

/// What was found was on the first card.
void TestImportGuards::exchangeTheCard()
{
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        m_form->world.machine->removeCard(Slot::SD);
        m_form->tellCardChange();
        m_form->world.machine->insertCard(Slot::SD);
        m_form->tellCardChange();
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
}

/// No message has come yet, and nobody has seen the slot empty.
void TestImportGuards::exchangeTheCardInOneBurst()
{
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        const QString card = m_form->card(Slot::SD);
        QVERIFY(QFile::rename(card, card + QStringLiteral(" before")));
        QVERIFY(QDir().mkpath(card));
        m_form->insertCard(Slot::SD, kThreePhotos, 60000);
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
}

void TestImportGuards::loseTheStore()
{
    QVERIFY(QDir(m_form->world.store).removeRecursively());
    press(Slot::SD);
    m_form->world.makeFolder(m_form->world.store);
}

void TestImportGuards::takeWayOut(const QString &way)
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

void TestImportGuards::theFormWorksAfterEveryWayOut_data()
{
    using Way = void (TestImportGuards::*)();
    lumi::test::columns<std::function<void()>, QString>();
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
    row("the search was cancelled", &TestImportGuards::cancelTheSearch, kStopped);
    row("the card had gone", &TestImportGuards::loseTheCard, kAccess);
    row("the card was exchanged", &TestImportGuards::exchangeTheCard, kAccess);
    row("the card was exchanged in one burst", &TestImportGuards::exchangeTheCardInOneBurst,
        kAccess);
    row("a copy was no match", &TestImportGuards::failOneFile, lumi::partlyCopiedText(kToday, 3));
    row("the store was full", &TestImportGuards::fillTheStore,
        QStringLiteral("Out of space. Processing stopped."));
    row("the store had gone", &TestImportGuards::loseTheStore, kThereWasAnError);
}

void TestImportGuards::theFormWorksAfterEveryWayOut()
{
    auto [leave, lastText] = lumi::test::row<std::function<void()>, QString>();
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->insertCard(Slot::CF, {});
    leave();
    QCOMPARE(m_form->driver.texts().constLast(), lastText.replace(kToday, todaysFolder()));
    const QStringList before = m_form->folders();
    m_form->driver.seen.clear();
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    // The folder of a run that ended early holds the first name.
    const QString made = todaysFolder() + QLatin1String(before.isEmpty() ? "" : "001");
    QCOMPARE(m_form->folders(), before + QStringList{made});
    QCOMPARE(treeOf(m_form->target(made)), importableTree(m_form->card(Slot::SD)));
}

void TestImportGuards::everyRunHasItsOwnReport()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    for (const QString &name : {QStringLiteral("c.jpg"), QStringLiteral("b.jpg")}) {
        m_form->whenInFile(name, [] {
            QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        });
        QCOMPARE(reportText(1), name + QStringLiteral("\n  CopyError : User cancellation\n"));
    }
}

LUMI_TEST(TestImportGuards)
#include "TestImportGuards.moc"
