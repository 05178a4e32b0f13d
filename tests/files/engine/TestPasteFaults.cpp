// SPDX-License-Identifier: MIT
// The results of pastes with a failing call, and changes between two calls. tests/faults checks what
// each failing call leaves on the disk.
#include "tests/files/engine/PhotoPasteTest.h"
#include "tests/support/FileFaults.h"
#include "tests/support/TestMain.h"
#include "tests/support/nameList.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTest>

#include <cerrno>

using lumi::PasteResult;
using lumi::test::FileFaults;
using lumi::test::list;

class TestPasteFaults : public PhotoPasteTest
{
    Q_OBJECT

private Q_SLOTS:
    void resultsHaveTheirNumbers();
    void oneFaultFailsThePaste_data();
    void oneFaultFailsThePaste();
    void aShortSourceIsAFailure();
    void aSourceThatChangesIsKept_data();
    void aSourceThatChangesIsKept();
    void onlyACutWaitsForTheDisk();
    void aDiskThatCantSyncIsNoFailure();
    void aSourceThatCantBeRemovedEndsThePaste();
    void aTargetThatComesInBetweenIsKept();
    void copiesBeforeTheFailureStay();
    void aFolderStopsAtItsFirstFailure();
    void failedOpensAreTraced();
};

void TestPasteFaults::resultsHaveTheirNumbers()
{
    QCOMPARE(int(PasteResult::Missing), -1);
    QCOMPARE(int(PasteResult::Done), 0);
    QCOMPARE(int(PasteResult::SourceNotOpened), 1);
    QCOMPARE(int(PasteResult::TargetNotMade), 2);
    QCOMPARE(int(PasteResult::NoRoom), 3);
    QCOMPARE(int(PasteResult::NoBuffer), 4);
    QCOMPARE(int(PasteResult::SourceNotRemoved), 5);
    QCOMPARE(int(PasteResult::NotWritten), 6);
}

void TestPasteFaults::oneFaultFailsThePaste_data()
{
    lumi::test::columns<unsigned, int, int, bool, PasteResult>();
    QTest::newRow("the source can't be opened")
        << unsigned(FileFaults::OpenToRead) << 1 << EIO << false << PasteResult::SourceNotOpened;
    QTest::newRow("the card fails")
        << unsigned(FileFaults::Read) << 2 << EIO << false << PasteResult::NotWritten;
    QTest::newRow("the disk is full")
        << unsigned(FileFaults::Write) << 2 << ENOSPC << false << PasteResult::NotWritten;
    QTest::newRow("the copy doesn't reach the disk")
        << unsigned(FileFaults::Sync) << 1 << EIO << true << PasteResult::NotWritten;
    QTest::newRow("the copy's name doesn't reach the disk")
        << unsigned(FileFaults::Sync) << 2 << EIO << true << PasteResult::NotWritten;
    QTest::newRow("the target fails when it is closed")
        << unsigned(FileFaults::Close) << 1 << EIO << false << PasteResult::NotWritten;
}

void TestPasteFaults::oneFaultFailsThePaste()
{
    const auto [call, nth, error, cutOnly, result]
        = lumi::test::row<unsigned, int, int, bool, PasteResult>();
    for (const bool cut : {true, false}) {
        if (cut || !cutOnly) {
            FileFaults faults(m_files->path());
            faults.fail(call, nth, error);
            QCOMPARE(paste(cut), result);
            QVERIFY(faults.count(call) >= nth);
            isUntouched();
        }
    }
    // Without the fault it works.
    QCOMPARE(paste(true), PasteResult::Done);
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), m_photo);
}

void TestPasteFaults::aShortSourceIsAFailure()
{
    for (const bool cut : {true, false}) {
        FileFaults faults(m_files->path());
        faults.shorten(FileFaults::Read, 2, 0);
        QCOMPARE(paste(cut), PasteResult::NotWritten);
        isUntouched();
    }
}

void TestPasteFaults::aSourceThatChangesIsKept_data()
{
    QTest::addColumn<unsigned>("call");
    QTest::addColumn<int>("nth");
    QTest::addColumn<int>("size");
    QTest::newRow("it grows behind the last read")
        << unsigned(FileFaults::Sync) << 1 << kBlocks * kBlock;
    QTest::newRow("it is cut off meanwhile") << unsigned(FileFaults::Write) << 2 << 10;
    QTest::newRow("it is emptied at the end") << unsigned(FileFaults::Sync) << 1 << 0;
}

void TestPasteFaults::aSourceThatChangesIsKept()
{
    QFETCH(unsigned, call);
    QFETCH(int, nth);
    QFETCH(int, size);
    FileFaults faults(m_files->path());
    faults.doBefore(call, nth, [this, size] {
        QVERIFY(QFile::resize(m_files->path(QStringLiteral("a.jpg")), size));
    });
    QCOMPARE(paste(true), PasteResult::NotWritten);
    QCOMPARE(m_files->entries(), list("a.jpg to/"));
    QCOMPARE(QFileInfo(m_files->path(QStringLiteral("a.jpg"))).size(), size);
}

void TestPasteFaults::onlyACutWaitsForTheDisk()
{
    FileFaults faults(m_files->path());
    QCOMPARE(paste(false), PasteResult::Done);
    QCOMPARE(faults.count(FileFaults::Sync), 0);
    // The copy and the folder with its name are synced before the source is removed.
    bool isBoth = false;
    faults.doBefore(FileFaults::Remove, 1, [&faults, &isBoth] {
        isBoth = faults.count(FileFaults::Sync) == 2;
    });
    QCOMPARE(paste(true), PasteResult::Done);
    QVERIFY(isBoth);
    QCOMPARE(faults.count(FileFaults::Sync), 2);
}

void TestPasteFaults::aDiskThatCantSyncIsNoFailure()
{
    FileFaults faults(m_files->path());
    faults.failFrom(FileFaults::Sync, 1, EINVAL);
    QCOMPARE(paste(true), PasteResult::Done);
    QCOMPARE(m_files->entries(), list("to/ to/a.jpg"));
}

void TestPasteFaults::aSourceThatCantBeRemovedEndsThePaste()
{
    const QString second = m_files->make(QStringLiteral("b.jpg"), m_photo);
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Remove, 1, EROFS);
    m_clipboard.take({m_files->path(QStringLiteral("a.jpg")), second}, true);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get()),
             PasteResult::SourceNotRemoved);
    QCOMPARE(m_files->entries(), list("a.jpg b.jpg to/ to/a.jpg"));
    QCOMPARE(m_items->count(), 1);
    QVERIFY(m_clipboard.paths().isEmpty());
}

void TestPasteFaults::aTargetThatComesInBetweenIsKept()
{
    FileFaults faults(m_files->path());
    faults.doBefore(FileFaults::OpenToRead, 1, [this] {
        m_files->make(QStringLiteral("to/a.jpg"), "mine");
    });
    QCOMPARE(paste(true), PasteResult::TargetNotMade);
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), QByteArray("mine"));
    QCOMPARE(m_files->content(QStringLiteral("a.jpg")), m_photo);
}

void TestPasteFaults::copiesBeforeTheFailureStay()
{
    QStringList paths{m_files->path(QStringLiteral("a.jpg"))};
    for (const char *name : {"b.jpg", "c.jpg"}) {
        paths.append(m_files->make(QLatin1String(name), m_photo));
    }
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Write, kBlocks + 2, ENOSPC);
    m_clipboard.take(paths, true);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get()),
             PasteResult::NotWritten);
    QCOMPARE(m_files->entries(), list("b.jpg c.jpg to/ to/a.jpg"));
    QCOMPARE(m_files->content(QStringLiteral("to/a.jpg")), m_photo);
    QCOMPARE(m_files->content(QStringLiteral("b.jpg")), m_photo);
    QCOMPARE(m_items->count(), 1);
    QVERIFY(m_clipboard.paths().isEmpty());
}

void TestPasteFaults::aFolderStopsAtItsFirstFailure()
{
    for (const char *name : {"trip/a.jpg", "trip/b.jpg", "trip/c.jpg"}) {
        m_files->make(QLatin1String(name), m_photo);
    }
    FileFaults faults(m_files->path());
    faults.fail(FileFaults::Write, kBlocks + 2, ENOSPC);
    m_clipboard.take(
        {m_files->path(QStringLiteral("trip")), m_files->path(QStringLiteral("a.jpg"))}, false);
    QCOMPARE(m_clipboard.paste(m_files->path(QStringLiteral("to")), m_items.get()),
             PasteResult::NotWritten);
    QCOMPARE(m_files->entries(QStringLiteral("to")), list("trip/ trip/a.jpg"));
    // The folder was made and is listed.
    QCOMPARE(m_items->count(), 1);
}

void TestPasteFaults::failedOpensAreTraced()
{
    QLoggingCategory::setFilterRules(QStringLiteral("lumivault.trace.debug=true"));
    {
        FileFaults faults(m_files->path());
        faults.fail(FileFaults::OpenToRead, 1, ENXIO);
        QTest::ignoreMessage(QtDebugMsg, "errno = 6");
        QCOMPARE(paste(false), PasteResult::SourceNotOpened);
    }
    FileFaults faults(m_files->path());
    faults.failFrom(FileFaults::OpenToWrite, 1, ENOSPC);
    QTest::ignoreMessage(QtDebugMsg, "errno = 28");
    QCOMPARE(paste(false), PasteResult::TargetNotMade);
    QLoggingCategory::setFilterRules(QString());
}

LUMI_TEST(TestPasteFaults)
#include "TestPasteFaults.moc"
