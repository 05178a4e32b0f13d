// SPDX-License-Identifier: MIT
// A card with entries that can't be copied: the report lists them, and no box says that everything
// was copied.
#include "import/importTexts.h"
#include "tests/import/FlowTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QTest>

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::FileFaults;
using lumi::test::importableTree;
using lumi::test::openToAll;
using lumi::test::OrdinaryUser;
using lumi::test::todaysFolder;
using lumi::test::Tree;
using lumi::test::treeOf;

namespace {

const QString kAccessError = QStringLiteral("  CopyError : Access Error");

/// The non-empty lines of a report's text.
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
    void nothingElseOnTheCard();

private:
    [[nodiscard]] QByteArray onCard(const char *name) const;
    void makeFile(const char *name) const;
    void makeLink(const char *name, const QString &target) const;
    void lock(const char *name) const;
    /// From the search on permissions apply; during the search this folder can't be read.
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

void TestImportLeftOut::nothingElseOnTheCard()
{
    m_form->insertCard(Slot::SD, {});
    makeFile("caf\xE9.jpg");
    makeLink("out.jpg", QStringLiteral("/etc/passwd"));
    press(Slot::SD);
    compareFailedRun({kResult}, {QStringLiteral("Data inspection was not performed on SD Card")});
    QVERIFY(m_form->folders().isEmpty());
}

LUMI_TEST(TestImportLeftOut)
#include "TestImportLeftOut.moc"
