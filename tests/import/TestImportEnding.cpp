// SPDX-License-Identifier: MIT
// An import while the program is asked to end: its dialogs close as by Escape or Cancel, no other one
// opens, and what was copied stays.
#include "files/engine/FPVFileTree.h"
#include "platform/session/QuitRequest.h"
#include "tests/import/FlowTest.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <csignal>

using lumi::QuitRequest;
using lumi::test::importableTree;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;

class TestImportEnding : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void theSearchEnds();
    void anOpenBoxIsClosed_data();
    void anOpenBoxIsClosed();
    void theCopyEnds();
    void theErrorReportIsClosed();

private:
    /// Classes of all dialogs so far.
    [[nodiscard]] QStringList dialogs() const;
};

QStringList TestImportEnding::dialogs() const
{
    QStringList classes;
    for (const lumi::test::SeenDialog &dialog : m_form->driver.seen) {
        classes.append(dialog.className);
    }
    return classes;
}

void TestImportEnding::theSearchEnds()
{
    const QuitRequest request;
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->when(
        [] {
            return FPVFileTree::fileCount() == 2;
        },
        [] {
            ::raise(SIGTERM);
        });
    press(Slot::SD);
    QCOMPARE(FPVFileTree::fileCount(), 2);
    QCOMPARE(dialogs(), QStringList{QStringLiteral("MyDialogWait")});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportEnding::anOpenBoxIsClosed_data()
{
    QTest::addColumn<QString>("caption");
    QTest::newRow("the question whether to copy") << kResult;
    QTest::newRow("the dialog for the folder's name") << kFolder;
}

void TestImportEnding::anOpenBoxIsClosed()
{
    QFETCH(QString, caption);
    const QuitRequest request;
    m_form->insertCard(Slot::SD, kThreePhotos);
    m_form->driver.expect(caption, [](QDialog * /*dialog*/) {
        ::raise(SIGTERM);
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions().constLast(), caption);
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportEnding::theCopyEnds()
{
    const QuitRequest request;
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("b.jpg"), [] {
        ::raise(SIGTERM);
    });
    press(Slot::SD);
    QCOMPARE(dialogs().constLast(), QStringLiteral("MyDialogProgressBar"));
    QCOMPARE(dialogs().count(QStringLiteral("MyDialogProgressBar")), qsizetype(1));
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder}));
    Tree expected = importableTree(m_form->card(Slot::SD));
    expected.remove(QStringLiteral("dcim/b.jpg"));
    expected.remove(QStringLiteral("dcim/c.jpg"));
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportEnding::theErrorReportIsClosed()
{
    const QuitRequest request;
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    m_form->whenInFile(QStringLiteral("c.jpg"), [] {
        QVERIFY(lumi::test::ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    m_form->driver.expect(kDetails, [](QDialog * /*dialog*/) {
        ::raise(SIGTERM);
    });
    press(Slot::SD);
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kStop, kDone, kDetails}));
}

LUMI_TEST(TestImportEnding)
#include "TestImportEnding.moc"
