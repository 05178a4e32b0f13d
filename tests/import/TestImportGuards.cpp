// SPDX-License-Identifier: MIT
// Events that arrive during an import, and the state of the form after each import.
#include "platform/session/QCopChannel.h"
#include "tests/import/FlowTest.h"
#include "tests/support/TestMain.h"
#include "widgets/MyImageButton.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTest>

#include <stdexcept>

using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::todaysFolder;
using lumi::test::treeOf;

class TestImportGuards : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void anExceptionEndsTheImportWithAMessage();
    void aSecondPressWhileItRuns_data();
    void aSecondPressWhileItRuns();
    void inputIsIgnoredUntilACancelledCopyStops();
    void aCardPulledUnderADialogGraysItsButtonAfterwards_data();
    void aCardPulledUnderADialogGraysItsButtonAfterwards();
    void aCardExchangedWhileTheNameIsAsked();
    void aCardExchangedInOneBurst();
    void theNextRunStartsAnew();
    void everyRunHasItsOwnReport();
};

void TestImportGuards::anExceptionEndsTheImportWithAMessage()
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
    QCOMPARE(savers, 3); // turned off, kept off, turned on
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

void TestImportGuards::inputIsIgnoredUntilACancelledCopyStops()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->insertCard(Slot::CF, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("b.jpg"), [this] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        // The dialog is closed and the buttons are free, but the copy hasn't stopped yet.
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
    // The card is checked after the name was entered.
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

/// The search found the files of the first card.
void TestImportGuards::aCardExchangedWhileTheNameIsAsked()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        m_form->world.machine->removeCard(Slot::SD);
        m_form->tellCardChange();
        m_form->world.machine->insertCard(Slot::SD);
        m_form->tellCardChange();
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kError}, {kAccess});
    QVERIFY(m_form->folders().isEmpty());
}

/// No message was sent yet, and nothing looked at the slot while it was empty.
void TestImportGuards::aCardExchangedInOneBurst()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->driver.expect(kFolder, [this](QDialog *dialog) {
        const QString card = m_form->card(Slot::SD);
        QVERIFY(QFile::rename(card, card + QStringLiteral(" before")));
        QVERIFY(QDir().mkpath(card));
        m_form->insertCard(Slot::SD, kThreePhotos, 60000);
        noteCards();
        dialog->accept();
    });
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kError}, {kAccess});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportGuards::theNextRunStartsAnew()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->driver.press(QStringLiteral("MyDialogProgressBar"), QStringLiteral("Cancel"));
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kStop}));
    m_form->driver.seen.clear();
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    // The folder of the cancelled run has the first name.
    const QString made = todaysFolder() + QStringLiteral("001");
    QCOMPARE(m_form->folders(), (QStringList{todaysFolder(), made}));
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
