// SPDX-License-Identifier: MIT
// The wait for the disk at the end of an import: no box appears before the copies are on the disk.
#include "import/importTexts.h"
#include "tests/import/FlowTest.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::StandInSync;
using lumi::test::todaysFolder;
using lumi::test::treeOf;

namespace {

constexpr int kLongestGapMs = 300;
const QByteArray kHang = "touch started; exec sleep 60";

/// Measures the longest time without events.
class Gaps
{
public:
    Gaps()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            note();
        });
        m_timer.setInterval(10);
    }

    void begin()
    {
        m_longest = 0;
        m_sinceLast.start();
        m_timer.start();
    }

    void end()
    {
        note();
        m_timer.stop();
    }

    [[nodiscard]] qint64 longest() const { return m_longest; }

private:
    void note() { m_longest = qMax(m_longest, m_sinceLast.restart()); }

    QTimer m_timer;
    QElapsedTimer m_sinceLast;
    qint64 m_longest = -1;
};

} // namespace

class TestImportDisk : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theLastBoxWaitsForTheDisk();
    void theRealProgramWaits();
    void aFailureIsReported();
    void aCancelEndsTheWait();
    void aCancelledCopyWaitsToo();
    void aSecondCancelEndsTheWait();
    void withoutACopyNothingWaits();

private:
    /// Calls the function when the stand-in for "sync" has started.
    void whenItWaits(const StandInSync &sync, std::function<void()> doIt);
    [[nodiscard]] static bool isProgressSeen();
};

void TestImportDisk::whenItWaits(const StandInSync &sync, std::function<void()> doIt)
{
    m_form->when(
        [&sync] {
            return QFile::exists(sync.path(QStringLiteral("started")));
        },
        std::move(doIt));
}

bool TestImportDisk::isProgressSeen()
{
    const QWidget *dialog = QApplication::activeModalWidget();
    return dialog != nullptr && dialog->inherits("MyDialogProgressBar") && dialog->isVisible();
}

void TestImportDisk::theLastBoxWaitsForTheDisk()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const StandInSync sync("echo \"$2\" > folder; touch started; sleep 1; touch ended");
    Gaps gaps;
    bool waited = false;
    whenItWaits(sync, [&] {
        waited = isProgressSeen();
        QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(Slot::SD)));
        gaps.begin();
    });
    m_form->driver.expect(kDone, [&](QDialog *dialog) {
        gaps.end();
        QVERIFY(QFile::exists(sync.path(QStringLiteral("ended"))));
        dialog->accept();
    });
    press(Slot::SD);
    QVERIFY(waited);
    QVERIFY(gaps.longest() >= 0);
    QVERIFY2(gaps.longest() < kLongestGapMs, qPrintable(QString::number(gaps.longest())));
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 3));
    QFile folder(sync.path(QStringLiteral("folder")));
    QVERIFY(folder.open(QIODevice::ReadOnly));
    QCOMPARE(folder.readAll(), QFile::encodeName(m_form->target(todaysFolder())) + '\n');
}

void TestImportDisk::theRealProgramWaits()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    // Removes the fixture's stand-in from the search path.
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", path.mid(path.indexOf(':') + 1));
    press(Slot::SD);
    qputenv("PATH", path);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 3));
}

void TestImportDisk::aFailureIsReported()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    const StandInSync sync("exit 1");
    QCOMPARE(reportText(1),
             QString(todaysFolder() + QStringLiteral("\n  CopyError : Access Error\n")));
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 3));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(Slot::SD)));
}

void TestImportDisk::aCancelEndsTheWait()
{
    m_form->insertCard(Slot::SD, kThreePhotos);
    const StandInSync sync(kHang);
    QElapsedTimer sinceCancel;
    whenItWaits(sync, [&sinceCancel] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
        sinceCancel.start();
    });
    qint64 untilTheBox = -1;
    m_form->driver.expect(kStop, [&](QDialog *dialog) {
        untilTheBox = sinceCancel.elapsed();
        dialog->accept();
    });
    QCOMPARE(reportText(1),
             QString(todaysFolder() + QStringLiteral("\n  CopyError : User cancellation\n")));
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone}));
    QVERIFY2(untilTheBox >= 0 && untilTheBox < kLongestGapMs,
             qPrintable(QString::number(untilTheBox)));
    // The copies stay.
    QCOMPARE(treeOf(m_form->target(todaysFolder())), importableTree(m_form->card(Slot::SD)));
}

/// The files copied before the Cancel must be on the disk, too.
void TestImportDisk::aCancelledCopyWaitsToo()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const StandInSync sync("touch started; sleep 0.3; touch ended");
    m_form->whenInFile(QStringLiteral("b.jpg"), [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    bool isSeen = false;
    whenItWaits(sync, [&isSeen] {
        isSeen = isProgressSeen();
    });
    m_form->driver.expect(kStop, [&sync](QDialog *dialog) {
        QVERIFY(QFile::exists(sync.path(QStringLiteral("ended"))));
        dialog->accept();
    });
    QCOMPARE(reportText(1), QStringLiteral("b.jpg\n  CopyError : User cancellation\n"));
    QVERIFY(isSeen);
}

void TestImportDisk::aSecondCancelEndsTheWait()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const StandInSync sync(kHang);
    m_form->whenInFile(QStringLiteral("b.jpg"), [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    whenItWaits(sync, [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    const QString report = reportText(2);
    QVERIFY(report.startsWith(QStringLiteral("b.jpg\n  CopyError : User cancellation\n")));
    QVERIFY(report.endsWith(
        QString(todaysFolder() + QStringLiteral("\n  CopyError : User cancellation\n"))));
}

void TestImportDisk::withoutACopyNothingWaits()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    const StandInSync sync(kHang);
    m_form->driver.press(QStringLiteral("MyDialogProgressBar"), QStringLiteral("Cancel"));
    press(Slot::SD);
    compareFailedRun({kResult, kFolder, kStop}, {QStringLiteral("Processing cancelled")});
    QVERIFY(!QFile::exists(sync.path(QStringLiteral("started"))));
    QCOMPARE(m_form->driver.ofClass(QStringLiteral("MyDialogProgressBar")).size(), qsizetype(1));
}

LUMI_TEST(TestImportDisk)
#include "TestImportDisk.moc"
