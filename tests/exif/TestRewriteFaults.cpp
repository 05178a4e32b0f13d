// SPDX-License-Identifier: MIT
// The system calls of a rewrite and its result if one of them fails. tests/faults checks the files
// that are left on the disk.
#include "tests/exif/RewriteWorld.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QFile>
#include <QTest>

#include <cerrno>

using namespace lumi::test;

class TestRewriteFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<RewriteWorld>(); }

    void cleanup() { m_world.reset(); }

    void callsWithoutErrors();
    void callFails_data();
    void callFails();

private:
    std::unique_ptr<RewriteWorld> m_world;
};

void TestRewriteFaults::callsWithoutErrors()
{
    QCOMPARE(RewriteWorld::oldPhoto().size(), RewriteWorld::kPhotoSize);
    // The new photo has one more entry with its value, and a padding byte behind the thumbnail.
    QCOMPARE(RewriteWorld::newPhoto().size(), RewriteWorld::oldPhoto().size() + 12 + 6 + 1);
    QVERIFY(restOf(RewriteWorld::newPhoto()) == restOf(RewriteWorld::oldPhoto()));
    FPVExifWriter writer(m_world->path);
    FileFaults faults(m_world->place);
    QCOMPARE(RewriteWorld::save(&writer), kDone);
    QCOMPARE(faults.steps(), RewriteWorld::steps());
    QVERIFY(m_world->isNew());
}

void TestRewriteFaults::callFails_data()
{
    lumi::test::columns<int, int, int, bool>();
    const auto row = [](int step, const char *what, int error, int result, bool renewed) {
        QTest::addRow("%d: %s: %s", step, qPrintable(RewriteWorld::steps().value(step)), what)
            << step << error << result << renewed;
    };
    for (int step = 0; step < RewriteWorld::steps().size(); ++step) {
        const QString call = RewriteWorld::steps().at(step).section(QLatin1Char(' '), 0, 0);
        const bool isAfter = step > RewriteWorld::stepOf("remove photo.jpg");
        if (step == RewriteWorld::stepOf("open unnamed")) {
            row(step, "unnamed files are not supported", EOPNOTSUPP, kDone, true);
        } else if (call == QLatin1String("write")) {
            row(step, "the disk is full", ENOSPC, kNoRoom, false);
            row(step, "the user has no more room", EDQUOT, kNoRoom, false);
            row(step, "the disk is broken", EIO, kDone, false); // documented: reported as a success
        } else if (call == QLatin1String("sync") && !isAfter) {
            row(step, "there is nothing to sync", EINVAL, kDone, true);
            row(step, "the disk is full", ENOSPC, kNoRoom, false);
            row(step, "the user has no more room", EDQUOT, kNoRoom, false);
            row(step, "the disk is broken", EIO, kFailed, false);
        } else if (step == RewriteWorld::stepOf("close unnamed")
                   || step == RewriteWorld::stepOf("link photo_tmp_0.jpg")) {
            row(step, "the disk is full", ENOSPC, kNoRoom, false);
            row(step, "the user has no more room", EDQUOT, kNoRoom, false);
            row(step, "the disk is broken", EIO, kFailed, false);
        } else if (step == RewriteWorld::stepOf("rename photo_tmp_0.jpg")) {
            row(step, "another photo has the name", EEXIST, kFailed, false);
            row(step, "the disk is broken for a moment", EIO, kDone, true);
        } else {
            const bool isHarmless
                = isAfter || call == QLatin1String("chmod") || call == QLatin1String("close");
            row(step, "the disk is broken", EIO, isHarmless ? kDone : kFailed, isHarmless);
        }
    }
}

void TestRewriteFaults::callFails()
{
    const auto [step, error, result, renewed] = lumi::test::row<int, int, int, bool>();
    FPVExifWriter writer(m_world->path);
    {
        FileFaults faults(m_world->place);
        faults.fail(FileFaults::AnyCall, step + 1, error);
        QCOMPARE(RewriteWorld::save(&writer), result);
        QVERIFY(faults.steps().size() > step);
    }
    if (step == RewriteWorld::stepOf("rename photo_tmp_0.jpg") && result == kFailed) {
        QVERIFY(!QFile::exists(m_world->path));
        QVERIFY(contentOf(m_world->temporary) == RewriteWorld::newPhoto());
        return;
    }
    QVERIFY(renewed ? m_world->isNew() : m_world->isOld());
    QVERIFY(!m_world->hasTemporary());
}

LUMI_TEST(TestRewriteFaults)
#include "TestRewriteFaults.moc"
