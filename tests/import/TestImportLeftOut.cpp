// SPDX-License-Identifier: MIT
// A card with things that can't be copied: the report names them, and no box says that all was
// copied.
#include "import/importTexts.h"
#include "tests/import/FlowTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::ImportFixture;
using lumi::test::openToAll;
using lumi::test::OrdinaryUser;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

const QString kAccessError = QStringLiteral("  CopyError : Access Error");

/// The lines of a report's text, without those of its rules.
QStringList linesOf(const QString &report)
{
    return report.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class TestImportLeftOut : public FlowTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindIsReported();
    void otherwiseAllIsWell_data();
    void otherwiseAllIsWell();
    void aCancelledRunStaysCancelled();
    void aFailedRunKeepsItsFirstBlocks();
    void nothingElseOnTheCard();
    void theNextRunKnowsNothingOfIt();

private:
    [[nodiscard]] QByteArray onCard(const char *name) const;
    void makeFile(const char *name) const;
    void makeLink(const char *name, const QString &target) const;
    void lock(const char *name) const;
    /// While the search runs, and later, permissions count and this folder can't be read.
    void spoilTheSearch(const char *brokenFolder);

    std::optional<OrdinaryUser> m_user;
    std::optional<FileFaults> m_faults;
};

QByteArray TestImportLeftOut::onCard(const char *name) const
{
    return QFile::encodeName(m_form->card(Slot::SD)) + '/' + name;
}

void TestImportLeftOut::makeFile(const char *name) const
{
    const int file = ::open(onCard(name).constData(), O_CREAT | O_WRONLY, 0644);
    QVERIFY(file >= 0);
    QCOMPARE(::write(file, "photo", 5), ssize_t(5));
    ::close(file);
}

void TestImportLeftOut::makeLink(const char *name, const QString &target) const
{
    QVERIFY(::symlink(QFile::encodeName(target).constData(), onCard(name).constData()) == 0);
}

void TestImportLeftOut::lock(const char *name) const
{
    QVERIFY(::chmod(onCard(name).constData(), 0) == 0);
}

void TestImportLeftOut::spoilTheSearch(const char *brokenFolder)
{
    openToAll(m_form->card(Slot::SD));
    openToAll(m_form->world.store);
    m_form->driver.expect(QStringLiteral("MyDialogWait"), [this, brokenFolder](QDialog *) {
        m_user.emplace();
        m_faults.emplace(QFile::decodeName(onCard(brokenFolder)));
        m_faults->failFrom(FileFaults::ReadFolder, 4, EIO);
    });
    m_form->driver.expect(kResult, [this](QDialog *dialog) {
        m_faults.reset();
        QVERIFY(lumi::test::DialogDriver::pressButton(dialog, QStringLiteral("Yes")));
    });
}

void TestImportLeftOut::everyKindIsReported()
{
    m_form->insertCard(Slot::SD,
                       {QStringLiteral("a.jpg"), QStringLiteral("dcim/b.jpg"),
                        QStringLiteral("dcim/locked.jpg"), QStringLiteral("closed/c.jpg"),
                        QStringLiteral("broken/d.jpg"), QStringLiteral("broken/e.jpg")});
    const QString outside = m_form->world.machine->folder.filePath(QStringLiteral("outside.jpg"));
    lumi::test::writeBytes(outside, 700);
    makeFile("dcim/K\xE4se.jpg");
    QVERIFY(::mkdir(onCard("M\xFCll").constData(), 0755) == 0);
    makeFile("M\xFCll/x.jpg");
    makeLink("dcim/in.jpg", QStringLiteral("b.jpg"));
    makeLink("dcim/out.jpg", outside);
    Tree expected = importableTree(m_form->card(Slot::SD));
    for (const char *name : {"closed", "closed/c.jpg", "dcim/locked.jpg", "dcim/K\uFFFDse.jpg",
                             "dcim/out.jpg", "M\uFFFDll", "M\uFFFDll/x.jpg"}) {
        QCOMPARE(expected.remove(QString::fromUtf8(name)), qsizetype(1));
    }
    lock("dcim/locked.jpg");
    lock("closed");
    spoilTheSearch("broken");
    const QString report = reportText(6);
    m_user.reset();
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(linesOf(report),
             (QStringList{QStringLiteral("broken"), kAccessError, QStringLiteral("closed"),
                          kAccessError, QStringLiteral("K%E4se.jpg"), kAccessError,
                          QStringLiteral("locked.jpg"), kAccessError, QStringLiteral("out.jpg"),
                          kAccessError, QStringLiteral("M%FCll"), kAccessError}));
    // One entry of the broken folder was read.
    const Tree made = treeOf(m_form->target(todaysFolder()));
    QCOMPARE(expected.size() - made.size(), qsizetype(1));
    for (auto it = made.begin(); it != made.end(); ++it) {
        QCOMPARE(it.value(), expected.value(it.key()));
    }
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 4));
    lock("closed"); // for the comparison at the end
}

void TestImportLeftOut::otherwiseAllIsWell_data()
{
    lumi::test::columns<QString, QString>();
    QTest::newRow("a Latin-1 name") << QStringLiteral("name") << QStringLiteral("caf%E9.jpg");
    QTest::newRow("a file without permission")
        << QStringLiteral("file") << QStringLiteral("locked.jpg");
    QTest::newRow("a folder without permission")
        << QStringLiteral("folder") << QStringLiteral("closed");
    QTest::newRow("a link to a file outside")
        << QStringLiteral("link") << QStringLiteral("out.jpg");
    QTest::newRow("a folder with a read error")
        << QStringLiteral("broken") << QStringLiteral("dcim");
    QTest::newRow("none") << QString() << QString();
}

void TestImportLeftOut::otherwiseAllIsWell()
{
    const auto [trouble, name] = lumi::test::row<QString, QString>();
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg"), QStringLiteral("dcim/b.jpg")});
    Tree expected = importableTree(m_form->card(Slot::SD));
    if (trouble == QLatin1String("name")) {
        makeFile("dcim/caf\xE9.jpg");
    } else if (trouble == QLatin1String("file")) {
        makeFile("dcim/locked.jpg");
        lock("dcim/locked.jpg");
    } else if (trouble == QLatin1String("folder")) {
        QVERIFY(::mkdir(onCard("closed").constData(), 0) == 0);
    } else if (trouble == QLatin1String("link")) {
        makeLink("dcim/out.jpg", QStringLiteral("/etc/passwd"));
    }
    // The folder holds one photo: the fourth call would find its end.
    spoilTheSearch(trouble == QLatin1String("broken") ? "dcim" : "none");
    if (trouble.isEmpty()) {
        press(Slot::SD);
        QCOMPARE(m_form->driver.texts().constLast(), lumi::copiedText(todaysFolder(), 2));
        QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone}));
    } else {
        QCOMPARE(linesOf(reportText(1)), (QStringList{name, kAccessError}));
        QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 2));
    }
    m_user.reset();
    QCOMPARE(treeOf(m_form->target(todaysFolder())), expected);
}

void TestImportLeftOut::aCancelledRunStaysCancelled()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    makeFile("caf\xE9.jpg");
    m_form->whenInFile(QStringLiteral("b.jpg"), [] {
        QVERIFY(ImportFixture::pressNow(QStringLiteral("Cancel")));
    });
    const QString report = reportText(2);
    QCOMPARE(m_form->driver.captions(),
             (QStringList{kResult, kFolder, kStop, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), QStringLiteral("Processing cancelled"));
    QCOMPARE(linesOf(report),
             (QStringList{QStringLiteral("caf%E9.jpg"), kAccessError, QStringLiteral("b.jpg"),
                          QStringLiteral("  CopyError : User cancellation")}));
}

void TestImportLeftOut::aFailedRunKeepsItsFirstBlocks()
{
    m_form->insertCard(Slot::SD, kThreePhotos, 60000);
    makeFile("caf\xE9.jpg");
    m_form->whenInFile(QStringLiteral("b.jpg"), [this] {
        QVERIFY(QFile::remove(m_form->card(Slot::SD) + QStringLiteral("/dcim/c.jpg")));
        noteCards();
    });
    QCOMPARE(linesOf(reportText(2)),
             (QStringList{QStringLiteral("caf%E9.jpg"), kAccessError, QStringLiteral("c.jpg"),
                          kAccessError}));
    QCOMPARE(m_form->driver.captions(), (QStringList{kResult, kFolder, kDone, kDetails, kDone}));
    QCOMPARE(m_form->driver.texts().at(2), lumi::partlyCopiedText(todaysFolder(), 2));
}

void TestImportLeftOut::nothingElseOnTheCard()
{
    m_form->insertCard(Slot::SD, {});
    makeFile("caf\xE9.jpg");
    makeLink("out.jpg", QStringLiteral("/etc/passwd"));
    press(Slot::SD);
    compareFailedRun({kResult}, {QStringLiteral("Data inspection was not performed on SD Card")});
    QVERIFY(m_form->folders().isEmpty());
}

void TestImportLeftOut::theNextRunKnowsNothingOfIt()
{
    m_form->insertCard(Slot::SD, {QStringLiteral("a.jpg")});
    makeFile("caf\xE9.jpg");
    QCOMPARE(linesOf(reportText(1)), (QStringList{QStringLiteral("caf%E9.jpg"), kAccessError}));
    QVERIFY(::unlink(onCard("caf\xE9.jpg").constData()) == 0);
    press(Slot::SD);
    QCOMPARE(m_form->driver.texts().constLast(),
             lumi::copiedText(todaysFolder() + QStringLiteral("001"), 1));
}

LUMI_TEST(TestImportLeftOut)
#include "TestImportLeftOut.moc"
