// SPDX-License-Identifier: MIT
// A photo is rewritten while its disk fills up and while other programs change its folder.
#include "tests/exif/RewriteWorld.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <optional>

using namespace lumi::test;

class TestRewriteMeanwhile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_world = std::make_unique<RewriteWorld>(); }

    void cleanup() { m_world.reset(); }

    void fullDiskIsNoRoom();
    void failedWriteTouchesNothing_data();
    void failedWriteTouchesNothing();
    void failedWriteAsksForRoom_data();
    void failedWriteAsksForRoom();
    void roomIsAskedOfTheMedium_data();
    void roomIsAskedOfTheMedium();
    void photoChangedWhileItWasReadIsKept();
    void photoChangedMeanwhileIsKept_data();
    void photoChangedMeanwhileIsKept();
    void photoRemovedMeanwhileLeavesTheNewOne();
    void removalThatFailsAfterRemoving();
    void fileThatTookTheNameMeanwhileIsKept_data();
    void fileThatTookTheNameMeanwhileIsKept();
    void fileThatTookTheTemporaryNameMeanwhileIsKept();

private:
    std::unique_ptr<RewriteWorld> m_world;
};

void TestRewriteMeanwhile::fullDiskIsNoRoom()
{
    QTemporaryDir place;
    constexpr int kDiskKB = 48;
    constexpr int kLeftKB = 16; // free beside the old photo
    const SmallDisk disk(place.path(), kDiskKB);
    QFile photo(place.filePath(QStringLiteral("photo.jpg")));
    QVERIFY(photo.open(QIODevice::WriteOnly)
            && photo.write(RewriteWorld::oldPhoto()) == RewriteWorld::oldPhoto().size());
    photo.close();
    FPVExifWriter writer(photo.fileName());
    int saved = -1;
    {
        // Only root can mount a disk. Other users get a limit for the size of files.
        std::optional<FileSizeLimit> limit;
        if (!disk.isMounted()) {
            FakeMachine::install()->setFreeDiskKB(kLeftKB);
            limit.emplace(rlim_t(kLeftKB) * 1024);
        }
        saved = RewriteWorld::save(&writer);
    }
    QCOMPARE(saved, kNoRoom);
    QVERIFY(contentOf(photo.fileName()) == RewriteWorld::oldPhoto());
    QCOMPARE(QDir(place.path()).entryList(QDir::Files).size(), 1);
}

void TestRewriteMeanwhile::failedWriteTouchesNothing_data()
{
    lumi::test::columns<int, int, int>();
    for (const int limit : {0, 1, 100, 700, 5000, 20000, RewriteWorld::kPhotoSize}) {
        QTest::addRow("%d bytes and room", limit) << limit << 1000000 << kDone;
        QTest::addRow("%d bytes and no room", limit) << limit << 5 << kNoRoom;
    }
}

void TestRewriteMeanwhile::failedWriteTouchesNothing()
{
    const auto [limit, freeKB, result] = lumi::test::row<int, int, int>();
    FakeMachine::install()->setFreeDiskKB(freeKB);
    FPVExifWriter writer(m_world->path);
    int saved = -1;
    {
        const FileSizeLimit limited{rlim_t(limit)};
        saved = RewriteWorld::save(&writer);
    }
    QCOMPARE(saved, result);
    QVERIFY(m_world->isOld());
    QVERIFY(!m_world->hasTemporary());
}

void TestRewriteMeanwhile::failedWriteAsksForRoom_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("as much as the photo takes") << RewriteWorld::kPhotoSize / 1024 << kDone;
    QTest::newRow("less than the photo takes") << RewriteWorld::kPhotoSize / 1024 - 1 << kNoRoom;
    QTest::newRow("nothing") << 0 << kNoRoom;
}

void TestRewriteMeanwhile::failedWriteAsksForRoom()
{
    const auto [freeKB, result] = lumi::test::row<int, int>();
    FakeMachine::install()->setFreeDiskKB(freeKB);
    FPVExifWriter writer(m_world->path);
    FileFaults faults(m_world->place);
    faults.fail(FileFaults::AnyCall, RewriteWorld::stepOf("write unnamed") + 1, EIO);
    QCOMPARE(RewriteWorld::save(&writer), result);
    QVERIFY(m_world->isOld());
    QVERIFY(!m_world->hasTemporary());
}

void TestRewriteMeanwhile::roomIsAskedOfTheMedium_data()
{
    QTest::addColumn<QString>("slot");
    QTest::addColumn<bool>("inserted");
    QTest::newRow("a photo on the CF card") << QStringLiteral("cf") << true;
    QTest::newRow("a photo on the SD card") << QStringLiteral("sd") << true;
    QTest::newRow("a photo in an empty CF slot") << QStringLiteral("cf") << false;
    QTest::newRow("a photo in an empty SD slot") << QStringLiteral("sd") << false;
    QTest::newRow("a photo anywhere else") << QString() << true;
}

void TestRewriteMeanwhile::roomIsAskedOfTheMedium()
{
    QFETCH(QString, slot);
    QFETCH(bool, inserted);
    FakeMachine *machine = FakeMachine::install();
    if (inserted) {
        machine->insertCard(Slot::CF);
        machine->insertCard(Slot::SD);
    }
    QByteArrayList asked;
    machine->diskAt = [&asked](const QByteArray &path) {
        asked.append(path);
        return DiskFigures{1024, 1000000, 1000000, true};
    };
    const QString card = slot.isEmpty() ? QString()
        : slot == QLatin1String("cf")   ? machine->cf
                                        : machine->sd;
    const QString folder = card.isEmpty() ? m_world->place : card + QStringLiteral("/dcim");
    const QString path = folder + QStringLiteral("/photo.jpg");
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(card.isEmpty() || QFile::copy(m_world->path, path));
    FPVExifWriter writer(path);
    FileFaults faults(folder);
    faults.fail(FileFaults::AnyCall, RewriteWorld::stepOf("write unnamed") + 1, EIO);
    QCOMPARE(RewriteWorld::save(&writer), kDone);
    const QString expected
        = inserted && !card.isEmpty() ? card : QDir::homePath() + QStringLiteral("/Documents");
    QCOMPARE(asked, QByteArrayList{QFile::encodeName(expected)});
}

void TestRewriteMeanwhile::photoChangedWhileItWasReadIsKept()
{
    const QByteArray other = RewriteWorld::oldPhoto() + "saved by another program";
    FileFaults faults(m_world->place);
    faults.doBefore(FileFaults::Read, 2, [&] {
        m_world->folder.put(other);
    });
    FPVExifWriter writer(m_world->path);
    QVERIFY(writer.isValid());
    QCOMPARE(faults.steps(),
             QStringList({QStringLiteral("open photo.jpg"), QStringLiteral("read photo.jpg"),
                          QStringLiteral("read photo.jpg")}));
    QCOMPARE(RewriteWorld::save(&writer), kFailed);
    QVERIFY(contentOf(m_world->path) == other);
    QVERIFY(!m_world->hasTemporary());
}

void TestRewriteMeanwhile::photoChangedMeanwhileIsKept_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("while it was copied") << RewriteWorld::stepOf("write unnamed");
    QTest::newRow("just before it would be removed") << RewriteWorld::stepOf("close photo.jpg");
}

void TestRewriteMeanwhile::photoChangedMeanwhileIsKept()
{
    QFETCH(int, step);
    for (const bool inPlace : {true, false}) {
        const QByteArray other = RewriteWorld::oldPhoto() + "saved by another program";
        m_world->reset();
        FPVExifWriter writer(m_world->path);
        {
            FileFaults faults(m_world->place);
            faults.doBefore(FileFaults::AnyCall, step + 1, [&] {
                QVERIFY(inPlace || QFile::remove(m_world->path));
                m_world->folder.put(other);
            });
            QCOMPARE(RewriteWorld::save(&writer), kFailed);
        }
        QVERIFY(contentOf(m_world->path) == other);
        QVERIFY(!m_world->hasTemporary());
    }
}

void TestRewriteMeanwhile::photoRemovedMeanwhileLeavesTheNewOne()
{
    FPVExifWriter writer(m_world->path);
    FileFaults faults(m_world->place);
    const auto removePhoto = [this] {
        QVERIFY(QFile::remove(m_world->path));
    };
    faults.doBefore(FileFaults::AnyCall, RewriteWorld::stepOf("close photo.jpg") + 1, removePhoto);
    QCOMPARE(RewriteWorld::save(&writer), kFailed);
    QVERIFY(!QFile::exists(m_world->path));
    QVERIFY(contentOf(m_world->temporary) == RewriteWorld::newPhoto());
}

void TestRewriteMeanwhile::removalThatFailsAfterRemoving()
{
    for (const int error : {EIO, ENOENT}) {
        m_world->reset();
        FPVExifWriter writer(m_world->path);
        FileFaults faults(m_world->place);
        const auto removePhoto = [this] {
            QVERIFY(QFile::remove(m_world->path));
        };
        faults.doBefore(FileFaults::AnyCall, RewriteWorld::stepOf("remove photo.jpg") + 1,
                        removePhoto, error);
        QCOMPARE(RewriteWorld::save(&writer), kDone);
        QVERIFY(m_world->isNew());
        QVERIFY(!m_world->hasTemporary());
    }
}

void TestRewriteMeanwhile::fileThatTookTheNameMeanwhileIsKept_data()
{
    QTest::addColumn<bool>("plainly");
    QTest::newRow("where renaming can refuse") << false;
    QTest::newRow("where it cannot") << true;
}

void TestRewriteMeanwhile::fileThatTookTheNameMeanwhileIsKept()
{
    QFETCH(bool, plainly);
    FPVExifWriter writer(m_world->path);
    FileFaults faults(m_world->place);
    const auto takeName = [this] {
        m_world->folder.put("another photo");
    };
    faults.doBefore(FileFaults::AnyCall, RewriteWorld::stepOf("rename photo_tmp_0.jpg") + 1,
                    takeName, plainly ? EINVAL : 0);
    QCOMPARE(RewriteWorld::save(&writer), kFailed);
    QCOMPARE(contentOf(m_world->path), QByteArray("another photo"));
    QVERIFY(contentOf(m_world->temporary) == RewriteWorld::newPhoto());
}

void TestRewriteMeanwhile::fileThatTookTheTemporaryNameMeanwhileIsKept()
{
    FPVExifWriter writer(m_world->path);
    FileFaults faults(m_world->place);
    faults.doBefore(FileFaults::AnyCall, RewriteWorld::stepOf("link photo_tmp_0.jpg") + 1, [this] {
        m_world->folder.put("of another program", QStringLiteral("photo_tmp_0.jpg"));
    });
    QCOMPARE(RewriteWorld::save(&writer), kFailed);
    QVERIFY(m_world->isOld());
    QCOMPARE(contentOf(m_world->temporary), QByteArray("of another program"));
}

LUMI_TEST(TestRewriteMeanwhile)
#include "TestRewriteMeanwhile.moc"
