// SPDX-License-Identifier: MIT
// A photo is the only copy there is. Every call on the way to the new one fails once, and the
// process ends before each: up to the removal the old photo must be untouched, after it the
// new one must be whole under one of its two names.
#include "tests/exif/RewriteWorld.h"
#include "tests/support/TestMain.h"

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

    void undisturbedWayToTheNewPhoto();
    void callFails_data();
    void callFails();
    void processEndsBeforeEachCall();
    void processEndsWithinEachWrite();
    void writesThatTakeAPartGoOn();
    void readsThatGiveAPartGoOn();
    void readsThatEndTooSoonAreAFailure();

private:
    std::unique_ptr<RewriteWorld> m_world;
};

void TestRewriteFaults::undisturbedWayToTheNewPhoto()
{
    QCOMPARE(RewriteWorld::oldPhoto().size(), RewriteWorld::kPhotoSize);
    // An entry, its value, the zero byte behind the thumbnail.
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
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("renewed");
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
            row(step, "a signal comes in between", EINTR, kDone, true);
            row(step, "the disk is broken", EIO, kDone, false); // taken for a success
        } else if (call == QLatin1String("sync") && !isAfter) {
            row(step, "there is nothing to sync", EINVAL, kDone, true);
            row(step, "a signal comes in between", EINTR, kDone, true);
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
    QFETCH(int, step);
    QFETCH(int, error);
    QFETCH(int, result);
    QFETCH(bool, renewed);
    FPVExifWriter writer(m_world->path);
    {
        FileFaults faults(m_world->place);
        faults.fail(FileFaults::AnyCall, step + 1, error);
        QCOMPARE(RewriteWorld::save(&writer), result);
        QVERIFY(faults.steps().size() > step);
        // What a signal broke off is done again.
        QVERIFY(error != EINTR || faults.steps().size() > RewriteWorld::steps().size());
    }
    if (step == RewriteWorld::stepOf("rename photo_tmp_0.jpg") && result == kFailed) {
        QVERIFY(!QFile::exists(m_world->path));
        QVERIFY(contentOf(m_world->temporary) == RewriteWorld::newPhoto());
        return;
    }
    QVERIFY(renewed ? m_world->isNew() : m_world->isOld());
    QVERIFY(!m_world->hasTemporary());
}

void TestRewriteFaults::processEndsBeforeEachCall()
{
    for (int step = 0; step < RewriteWorld::steps().size(); ++step) {
        m_world->reset();
        QFile::remove(m_world->temporary);
        const int result = inChild([this, step] {
            FPVExifWriter writer(m_world->path);
            FileFaults faults(m_world->place);
            faults.killBefore(FileFaults::AnyCall, step + 1);
            return RewriteWorld::save(&writer);
        });
        QCOMPARE(result, kKilled);
        const QByteArray where
            = QByteArray::number(step) + ' ' + RewriteWorld::steps().at(step).toUtf8();
        const bool isNamed = step > RewriteWorld::stepOf("link photo_tmp_0.jpg")
            && step <= RewriteWorld::stepOf("rename photo_tmp_0.jpg");
        QVERIFY2(m_world->hasTemporary() == isNamed, where.constData());
        QVERIFY2(!isNamed || contentOf(m_world->temporary) == RewriteWorld::newPhoto(),
                 where.constData());
        if (step <= RewriteWorld::stepOf("remove photo.jpg")) {
            QVERIFY2(m_world->isOld(), where.constData());
        } else if (step == RewriteWorld::stepOf("rename photo_tmp_0.jpg")) {
            QVERIFY2(!QFile::exists(m_world->path), where.constData());
        } else {
            QVERIFY2(m_world->isNew(), where.constData());
        }
    }
    const int undisturbed = inChild([this] {
        m_world->reset();
        FPVExifWriter writer(m_world->path);
        return RewriteWorld::save(&writer);
    });
    QCOMPARE(undisturbed, kDone);
    QVERIFY(m_world->isNew());
}

void TestRewriteFaults::processEndsWithinEachWrite()
{
    int writes = 0;
    for (int step = 0; step < RewriteWorld::steps().size(); ++step) {
        if (!RewriteWorld::steps().at(step).startsWith(QLatin1String("write"))) {
            continue;
        }
        const int result = inChild([this, step] {
            FPVExifWriter writer(m_world->path);
            FileFaults faults(m_world->place);
            faults.killWithin(FileFaults::AnyCall, step + 1);
            return RewriteWorld::save(&writer);
        });
        QCOMPARE(result, kKilled);
        QVERIFY(m_world->isOld());
        QVERIFY(!m_world->hasTemporary());
        ++writes;
    }
    QCOMPARE(writes, 6);
}

void TestRewriteFaults::writesThatTakeAPartGoOn()
{
    const QStringList &steps = RewriteWorld::steps();
    const QString write = QStringLiteral("write unnamed");
    int shortened = 0;
    for (int step = 0; step < steps.size(); ++step) {
        // The zero byte, a write right behind that of the thumbnail, has no parts.
        const bool isZeroByte = step > 0 && steps.at(step - 1) == write;
        if (steps.at(step) != write || isZeroByte) {
            continue;
        }
        m_world->reset();
        FPVExifWriter writer(m_world->path);
        FileFaults faults(m_world->place);
        faults.shorten(FileFaults::AnyCall, step + 1, 1);
        QCOMPARE(RewriteWorld::save(&writer), kDone);
        QStringList expected = steps;
        expected.insert(step, write);
        QCOMPARE(faults.steps(), expected);
        QVERIFY(m_world->isNew());
        ++shortened;
    }
    QCOMPARE(shortened, 5);
}

void TestRewriteFaults::readsThatGiveAPartGoOn()
{
    for (int step = 0; step < RewriteWorld::steps().size(); ++step) {
        if (RewriteWorld::steps().at(step).startsWith(QLatin1String("read"))) {
            m_world->reset();
            FPVExifWriter writer(m_world->path);
            FileFaults faults(m_world->place);
            faults.shorten(FileFaults::AnyCall, step + 1, 1);
            QCOMPARE(RewriteWorld::save(&writer), kDone);
            const QString read = RewriteWorld::steps().at(step);
            QVERIFY(faults.steps().count(read) > RewriteWorld::steps().count(read));
            QVERIFY(m_world->isNew());
        }
    }
}

void TestRewriteFaults::readsThatEndTooSoonAreAFailure()
{
    int reads = 0;
    for (int step = 0; step < RewriteWorld::steps().size(); ++step) {
        if (RewriteWorld::steps().at(step).startsWith(QLatin1String("read"))) {
            FPVExifWriter writer(m_world->path);
            FileFaults faults(m_world->place);
            faults.shorten(FileFaults::AnyCall, step + 1, 0);
            QCOMPARE(RewriteWorld::save(&writer), kFailed);
            QVERIFY(m_world->isOld());
            QVERIFY(!m_world->hasTemporary());
            ++reads;
        }
    }
    QCOMPARE(reads, 4);
}

LUMI_TEST(TestRewriteFaults)
#include "TestRewriteFaults.moc"
