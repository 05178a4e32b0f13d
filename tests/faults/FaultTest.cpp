// SPDX-License-Identifier: MIT
#include "tests/faults/FaultTest.h"

#include "files/engine/FPVClipboard.h"
#include "items/FPVItemList.h"
#include "tests/support/FakeMachine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

using lumi::test::Ending;
using lumi::test::FakeMachine;
using lumi::test::Tree;
using namespace lumi::faults;

namespace {

constexpr unsigned kTransfers = Read | Write;
/// Calls that need free space, for themselves or for what was written before.
constexpr unsigned kNeedsRoom = OpenNew | Write | Sync | Close | Name;

constexpr FaultTest::Trouble kTroubles[] = {
    {"one call fails", AnyCall, Act::Fail, EIO, false},
    {"a signal interrupts one call", kTransfers | Sync | Close, Act::Fail, EINTR, true},
    {"everything fails from one call on", AnyCall, Act::FailFrom, EIO, false},
    {"the disk is full from one call on", kNeedsRoom, Act::FillUp, ENOSPC, false},
    {"one transfer takes half", kTransfers, Act::Shorten, 0, true},
    {"one read finds the end", Read, Act::EndTooSoon, 0, false},
    {"what was written is lost, as a later call tells", Sync | Close, Act::LoseWritten, EIO, false},
    {"the process is killed before one call", AnyCall, Act::KillBefore, 0, false},
    {"the process is killed within one write", Write, Act::KillWithin, 0, false},
};

struct DiskRow
{
    const char *name;
    FaultTest::Disk disk;
};

constexpr DiskRow kDisks[] = {
    {"", FaultTest::Disk::Whole},
    {", files always have a name", FaultTest::Disk::WithoutUnnamedFiles},
    {", as on FAT", FaultTest::Disk::Fat},
};

bool hasUnnamedFiles(const QString &folder)
{
    const int handle
        = ::open(QFile::encodeName(folder).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    return handle >= 0 && ::close(handle) == 0;
}

QStringList namesListed(const QString &folder)
{
    const FPVItemList list(folder, folder);
    QStringList names;
    for (const FPVItemObject *item : list) {
        names.append(QFileInfo(item->path()).fileName());
    }
    return names;
}

} // namespace

void FaultTest::initTestCase()
{
    if (!lumi::test::isLibraryLoaded()) {
        QFAIL("LD_PRELOAD has to name the library of these tests, as ctest does it");
    }
    FakeMachine::install();
    m_place = std::make_unique<QTemporaryDir>();
    m_placeHasUnnamedFiles = hasUnnamedFiles(m_place->path());
    m_points = 0;
    prepare();
}

void FaultTest::cleanupTestCase()
{
    qInfo("%d points", m_points);
    m_place.reset();
    Machine::install(nullptr);
}

QString FaultTest::path(const QString &name) const
{
    return name.isEmpty() ? m_place->path() : m_place->filePath(name);
}

QString FaultTest::make(const QString &name, const QByteArray &content) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot make %s", qPrintable(name));
    }
    return path(name);
}

Tree FaultTest::newTree(const QString &folder, const QStringList &known)
{
    Tree tree = lumi::test::treeOf(folder);
    const QStringList names = tree.keys();
    for (const QString &name : names) {
        if (QFileInfo(name).fileName().startsWith(u'.') && !known.contains(name)) {
            m_leftovers.append(folder + u'/' + name);
            tree.remove(name);
        }
    }
    return tree;
}

void FaultTest::everyCall_data()
{
    QTest::addColumn<const Trouble *>("trouble");
    QTest::addColumn<Disk>("disk");
    for (const DiskRow &row : kDisks) {
        for (const Trouble &trouble : kTroubles) {
            if (trouble.act == Act::EndTooSoon && !comparesSizes()) {
                continue;
            }
            QTest::addRow("%s%s", trouble.name, row.name) << &trouble << row.disk;
        }
    }
}

void FaultTest::everyCall()
{
    QFETCH(const Trouble *, trouble);
    QFETCH(Disk, disk);
    m_trouble = trouble;
    m_disk = disk;
    m_sweeps = 0;
    QStringList complaints;
    int points = 0;
    for (bool isDisturbed = true; isDisturbed;) {
        prepare();
        const Ending ending = lumi::test::runInChild(planFor(points + 1), watched(), [this] {
            return job();
        });
        const QString wrong = complaint(ending);
        if (!wrong.isNull()) {
            complaints.append(QStringLiteral("call %1 (%2): %3")
                                  .arg(points + 1)
                                  .arg(QString::fromUtf8(ending.call), wrong));
        }
        isDisturbed = ending.isDisturbed;
        points += isDisturbed ? 1 : 0;
    }
    m_points += points;
    qInfo("%d points", points);
    for (const QString &wrong : complaints) {
        qWarning("%s", qPrintable(wrong));
    }
    QCOMPARE(complaints.size(), qsizetype(0));
    QVERIFY(trouble->calls != AnyCall || points >= leastCalls());
    QVERIFY(points > 0);
    const bool leavesFiles = disk != Disk::Whole && trouble->act == Act::KillBefore;
    QVERIFY(!leavesFiles || !leavesHiddenFiles() || m_sweeps > 0);
}

Plan FaultTest::planFor(int nth) const
{
    Plan plan;
    plan.calls = m_trouble->calls;
    plan.act = nth > 0 ? m_trouble->act : Act::Nothing;
    plan.nth = nth;
    plan.error = m_trouble->error;
    plan.isWithoutUnnamedFiles = m_disk != Disk::Whole;
    plan.isWithoutConditions = m_disk == Disk::Fat;
    return plan;
}

bool FaultTest::mustSucceed(const Ending &ending) const
{
    return !ending.isDisturbed || m_trouble->isHarmless;
}

/// What is wrong after a run, null if nothing is.
QString FaultTest::complaint(const Ending &ending)
{
    m_leftovers.clear();
    if (!ending.crash.isEmpty()) {
        return QString::fromUtf8(ending.crash);
    }
    if (mustSucceed(ending) && ending.result != 0) {
        return QStringLiteral("result %1 though nothing is wrong").arg(ending.result);
    }
    const QString wrong = judge(ending);
    return wrong.isNull() ? complaintOfLeftovers(ending) : wrong;
}

/// A file without its name may remain only if the process was killed or if every later call fails.
/// It does no harm: it isn't shown, and the next copy removes it.
QString FaultTest::complaintOfLeftovers(const Ending &ending)
{
    const bool mayLeave = (m_disk != Disk::Whole || !m_placeHasUnnamedFiles)
        && (ending.isKilled || m_trouble->act == Act::FailFrom);
    for (const QString &leftover : m_leftovers) {
        const QString wrong = mayLeave ? sweep(leftover) : QStringLiteral("is left over");
        if (!wrong.isNull()) {
            return leftover + u' ' + wrong;
        }
    }
    return {};
}

QString FaultTest::sweep(const QString &leftover)
{
    ++m_sweeps;
    const QFileInfo info(leftover);
    if (namesListed(info.path()).contains(info.fileName())) {
        return QStringLiteral("is shown");
    }
    const QString photo = make(QStringLiteral("sweeper.jpg"), "a photo");
    const Ending ending = lumi::test::runInChild(planFor(0), watched(), [&photo, &info] {
        FPVClipboard clipboard;
        clipboard.take({photo}, false);
        return static_cast<int>(clipboard.paste(info.path(), nullptr));
    });
    if (ending.result != 0) {
        return QStringLiteral("keeps the next copy from its folder");
    }
    return QFileInfo::exists(leftover) ? QStringLiteral("outlives the next copy") : QString();
}
