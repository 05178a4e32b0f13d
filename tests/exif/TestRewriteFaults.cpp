// SPDX-License-Identifier: MIT
// A photo is the only copy there is. Every call on the way to the new one fails once, and the
// process ends before each: up to the removal the old photo must be untouched, after it the
// new one must be whole under one of its two names.
#include "exif/FPVExifWriter.h"
#include "tests/exif/BlockCopy.h"
#include "tests/exif/FolderCalls.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/swap/FullDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cerrno>

#include <sys/stat.h>

using lumi::test::contentOf;
using lumi::test::ExifBuilder;
using lumi::test::FakeMachine;
using lumi::test::FolderCalls;
using lumi::test::kKilled;

namespace {

constexpr int kDone = 0;
constexpr int kNoRoom = 1;
constexpr int kFailed = 2;
constexpr int kPhotoSize = 30000;

/// The calls of a rewriting in which nothing goes wrong, of the photo below.
const QStringList kSteps = {
    QStringLiteral("open photo_tmp_0.jpg"),
    QStringLiteral("chmod photo_tmp_0.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"), // everything before the thumbnail
    QStringLiteral("read photo.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"), // the zero byte
    QStringLiteral("read photo.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"),
    QStringLiteral("read photo.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"),
    QStringLiteral("read photo.jpg"),
    QStringLiteral("write photo_tmp_0.jpg"),
    QStringLiteral("sync photo_tmp_0.jpg"),
    QStringLiteral("close photo_tmp_0.jpg"),
    QStringLiteral("open ."),
    QStringLiteral("sync ."),
    QStringLiteral("close ."),
    QStringLiteral("close photo.jpg"),
    QStringLiteral("remove photo.jpg"),
    QStringLiteral("rename photo_tmp_0.jpg"),
    QStringLiteral("open ."),
    QStringLiteral("sync ."),
    QStringLiteral("close ."),
};

int stepOf(const char *step)
{
    return int(kSteps.indexOf(QLatin1String(step)));
}

/// A photo whose thumbnail is of an odd size and whose image data take three blocks.
QByteArray oldPhoto()
{
    ExifBuilder photo(ExifBuilder::Order::Big);
    photo.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .thumbnail(QByteArray(501, 't'));
    const QByteArray file = photo.file();
    return file + QByteArray(kPhotoSize - file.size(), 'i');
}

int save(FPVExifWriter *writer)
{
    writer->setTag(0x013B, 2, 6, "Smith", ExifListKind::Ifd0);
    return writer->rewrite();
}

} // namespace

class TestRewriteFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void stepsInTheirOrder();
    void callFails_data();
    void callFails();
    void allCallsOnTheNewPhotoFail_data();
    void allCallsOnTheNewPhotoFail();
    void processEndsBeforeEachCall();
    void processEndsWithinEachWrite();
    void writesThatTakeAPartGoOn();
    void readsThatGiveAPartGoOn();
    void readsThatEndTooSoonAreAFailure();
    void diskIsReallyFull();
    void fileSizeIsReallyLimited_data();
    void fileSizeIsReallyLimited();
    void failedWriteAsksForRoom_data();
    void failedWriteAsksForRoom();
    void roomIsAskedOfTheMedium_data();
    void roomIsAskedOfTheMedium();
    void failedCreationAsksForRoom();
    void photoThatIsGoneCostsNothing();
    void photoChangedMeanwhileIsKept_data();
    void photoChangedMeanwhileIsKept();
    void photoRemovedMeanwhileLeavesTheNewOne_data();
    void photoRemovedMeanwhileLeavesTheNewOne();
    void removalThatOnlySeemedToFail();
    void fileThatTookTheNameMeanwhileIsKept_data();
    void fileThatTookTheNameMeanwhileIsKept();
    void fileThatTookTheTemporaryNameMeanwhileIsKept();
    void plainRenamingWhereNoOtherIsKnown();

private:
    [[nodiscard]] bool isOld() const { return contentOf(m_path) == m_old; }

    [[nodiscard]] bool isNew() const { return contentOf(m_path) == m_new; }

    [[nodiscard]] bool hasTemporary() const { return QFileInfo(m_temporary).exists(); }

    std::unique_ptr<lumi::test::PhotoFolder> m_folder;
    QString m_place;
    QString m_path;
    QString m_temporary;
    QByteArray m_old;
    QByteArray m_new;
};

void TestRewriteFaults::initTestCase()
{
    m_old = oldPhoto();
    QCOMPARE(m_old.size(), kPhotoSize);
    lumi::test::PhotoFolder folder;
    FakeMachine::install()->setFreeDiskKB(1000000);
    const QString path = folder.put(m_old);
    FPVExifWriter writer(path);
    QCOMPARE(save(&writer), kDone);
    m_new = contentOf(path);
    QCOMPARE(m_new.size(), m_old.size() + 12 + 6 + 1); // an entry, its value, the zero byte
    QVERIFY(lumi::test::restOf(m_new) == lumi::test::restOf(m_old));
}

void TestRewriteFaults::init()
{
    FakeMachine::install()->setFreeDiskKB(1000000);
    m_folder = std::make_unique<lumi::test::PhotoFolder>();
    m_path = m_folder->put(m_old);
    m_place = QFileInfo(m_path).absolutePath();
    m_temporary = m_folder->path(QStringLiteral("photo_tmp_0.jpg"));
}

void TestRewriteFaults::cleanup()
{
    m_folder.reset();
    Machine::install(nullptr);
}

void TestRewriteFaults::stepsInTheirOrder()
{
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    QCOMPARE(save(&writer), kDone);
    QCOMPARE(FolderCalls::steps(), kSteps);
    QVERIFY(isNew());
}

void TestRewriteFaults::callFails_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("renewed");
    const auto row = [](int step, const char *what, int error, int result, bool renewed) {
        QTest::addRow("%d: %s: %s", step, qPrintable(kSteps.value(step)), what)
            << step << error << result << renewed;
    };
    for (int step = 0; step < kSteps.size(); ++step) {
        const QString call = kSteps.at(step).section(QLatin1Char(' '), 0, 0);
        const bool isAfter = step > stepOf("remove photo.jpg");
        if (call == QLatin1String("write")) {
            row(step, "the disk is full", ENOSPC, kNoRoom, false);
            row(step, "the disk is broken", EIO, kDone, false); // taken for a success
        } else if (step == stepOf("open .")) {
            row(step, "the folder cannot be read", EACCES, kDone, true);
            row(step, "the disk is broken", EIO, kFailed, false);
        } else if (call == QLatin1String("sync") && !isAfter) {
            row(step, "there is nothing to sync", EINVAL, kDone, true);
            row(step, "the disk is broken", EIO, kFailed, false);
        } else if (step == stepOf("rename photo_tmp_0.jpg")) {
            row(step, "the disk is broken", EIO, kFailed, false);
        } else {
            const bool isHarmless = isAfter || call == QLatin1String("chmod")
                || (call == QLatin1String("close") && step != stepOf("close photo_tmp_0.jpg"));
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
    FPVExifWriter writer(m_path);
    {
        const FolderCalls calls(m_place);
        FolderCalls::fail(step, error);
        QCOMPARE(save(&writer), result);
        QVERIFY(FolderCalls::steps().size() > step);
    }
    if (step == stepOf("rename photo_tmp_0.jpg")) {
        QVERIFY(!QFile::exists(m_path));
        QVERIFY(contentOf(m_temporary) == m_new);
        return;
    }
    QVERIFY(renewed ? isNew() : isOld());
    QVERIFY(!hasTemporary());
}

void TestRewriteFaults::allCallsOnTheNewPhotoFail_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("result");
    for (int step = 0; step < stepOf("close photo_tmp_0.jpg"); ++step) {
        const QString &call = kSteps.at(step);
        if (call.endsWith(QLatin1String("tmp_0.jpg"))) {
            const bool isWritten = call.startsWith(QLatin1String("write"))
                || call.startsWith(QLatin1String("chmod"));
            QTest::addRow("from %d, %s", step, qPrintable(call))
                << step << (isWritten ? kDone : kFailed);
        }
    }
}

void TestRewriteFaults::allCallsOnTheNewPhotoFail()
{
    QFETCH(int, step);
    QFETCH(int, result);
    FPVExifWriter writer(m_path);
    {
        const FolderCalls calls(m_place);
        FolderCalls::failFrom(step, EIO);
        QCOMPARE(save(&writer), result);
    }
    // The new one cannot even be removed, but nobody takes it for the photo.
    QVERIFY(isOld());
    QCOMPARE(hasTemporary(), step > 0);
}

void TestRewriteFaults::processEndsBeforeEachCall()
{
    for (int step = 0; step < kSteps.size(); ++step) {
        m_folder->put(m_old);
        QFile::remove(m_temporary);
        const int result = lumi::test::inChild([this, step] {
            FPVExifWriter writer(m_path);
            const FolderCalls calls(m_place);
            FolderCalls::killBefore(step);
            return save(&writer);
        });
        QCOMPARE(result, kKilled);
        const QByteArray where = QByteArray::number(step) + ' ' + kSteps.at(step).toUtf8();
        if (step <= stepOf("remove photo.jpg")) {
            QVERIFY2(isOld(), where.constData());
            QCOMPARE(hasTemporary(), step > 0);
        } else if (step == stepOf("rename photo_tmp_0.jpg")) {
            QVERIFY2(!QFile::exists(m_path), where.constData());
            QVERIFY2(contentOf(m_temporary) == m_new, where.constData());
        } else {
            QVERIFY2(isNew(), where.constData());
            QVERIFY2(!hasTemporary(), where.constData());
        }
        if (step > stepOf("sync photo_tmp_0.jpg") && step <= stepOf("remove photo.jpg")) {
            QVERIFY2(contentOf(m_temporary) == m_new, where.constData());
        }
    }
    const int undisturbed = lumi::test::inChild([this] {
        m_folder->put(m_old);
        FPVExifWriter writer(m_path);
        return save(&writer);
    });
    QCOMPARE(undisturbed, kDone);
    QVERIFY(isNew());
}

void TestRewriteFaults::processEndsWithinEachWrite()
{
    int writes = 0;
    for (int step = 0; step < kSteps.size(); ++step) {
        if (!kSteps.at(step).startsWith(QLatin1String("write"))) {
            continue;
        }
        QFile::remove(m_temporary);
        const int result = lumi::test::inChild([this, step] {
            FPVExifWriter writer(m_path);
            const FolderCalls calls(m_place);
            FolderCalls::killWithin(step);
            return save(&writer);
        });
        QCOMPARE(result, kKilled);
        QVERIFY(isOld());
        QVERIFY(QFileInfo(m_temporary).size() < m_new.size());
        // What is left over does no harm to the next try.
        const QString other = m_folder->put(m_old, QStringLiteral("photo.two.jpg"));
        FPVExifWriter writer(other);
        QCOMPARE(save(&writer), kDone);
        QVERIFY(contentOf(other) == m_new);
        ++writes;
    }
    QCOMPARE(writes, 6);
}

void TestRewriteFaults::writesThatTakeAPartGoOn()
{
    for (int step = 0; step < kSteps.size(); ++step) {
        if (kSteps.at(step).startsWith(QLatin1String("write"))) {
            m_folder->put(m_old);
            FPVExifWriter writer(m_path);
            const FolderCalls calls(m_place);
            FolderCalls::shorten(step, 1);
            QCOMPARE(save(&writer), kDone);
            QVERIFY(isNew());
        }
    }
}

void TestRewriteFaults::readsThatGiveAPartGoOn()
{
    for (int step = 0; step < kSteps.size(); ++step) {
        if (kSteps.at(step).startsWith(QLatin1String("read"))) {
            m_folder->put(m_old);
            FPVExifWriter writer(m_path);
            const FolderCalls calls(m_place);
            FolderCalls::shorten(step, 1);
            QCOMPARE(save(&writer), kDone);
            QVERIFY(isNew());
        }
    }
}

void TestRewriteFaults::readsThatEndTooSoonAreAFailure()
{
    int reads = 0;
    for (int step = 0; step < kSteps.size(); ++step) {
        if (kSteps.at(step).startsWith(QLatin1String("read"))) {
            FPVExifWriter writer(m_path);
            const FolderCalls calls(m_place);
            FolderCalls::shorten(step, 0);
            QCOMPARE(save(&writer), kFailed);
            QVERIFY(isOld());
            QVERIFY(!hasTemporary());
            ++reads;
        }
    }
    QCOMPARE(reads, 4);
}

void TestRewriteFaults::diskIsReallyFull()
{
    QTemporaryDir place;
    constexpr int kDiskKB = 48; // the photo takes 32 of them
    const lumi::test::SmallDisk disk(place.path(), kDiskKB);
    if (!disk.isMounted()) {
        // Only a privileged user may mount one; fileSizeIsReallyLimited() needs no privilege.
        return;
    }
    QFile photo(place.filePath(QStringLiteral("photo.jpg")));
    QVERIFY(photo.open(QIODevice::WriteOnly) && photo.write(m_old) == m_old.size());
    photo.close();
    FPVExifWriter writer(photo.fileName());
    QCOMPARE(save(&writer), kNoRoom);
    QVERIFY(contentOf(photo.fileName()) == m_old);
    QCOMPARE(QDir(place.path()).entryList(QDir::Files).size(), 1);
}

void TestRewriteFaults::fileSizeIsReallyLimited_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<int>("result");
    for (const int limit : {0, 1, 100, 700, 5000, 20000, kPhotoSize}) {
        QTest::addRow("%d bytes and room", limit) << limit << 1000000 << kDone;
        QTest::addRow("%d bytes and no room", limit) << limit << 5 << kNoRoom;
    }
}

void TestRewriteFaults::fileSizeIsReallyLimited()
{
    QFETCH(int, limit);
    QFETCH(int, freeKB);
    QFETCH(int, result);
    FakeMachine::install()->setFreeDiskKB(freeKB);
    FPVExifWriter writer(m_path);
    int saved = -1;
    {
        const lumi::test::FileSizeLimit limited{rlim_t(limit)};
        saved = save(&writer);
    }
    QCOMPARE(saved, result);
    QVERIFY(isOld());
    QVERIFY(!hasTemporary());
}

void TestRewriteFaults::failedWriteAsksForRoom_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<int>("result");
    QTest::newRow("as much as the photo takes") << kPhotoSize / 1024 << kDone;
    QTest::newRow("less than the photo takes") << kPhotoSize / 1024 - 1 << kNoRoom;
    QTest::newRow("nothing") << 0 << kNoRoom;
}

void TestRewriteFaults::failedWriteAsksForRoom()
{
    QFETCH(int, freeKB);
    QFETCH(int, result);
    FakeMachine::install()->setFreeDiskKB(freeKB);
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    FolderCalls::fail(stepOf("write photo_tmp_0.jpg"), EIO);
    QCOMPARE(save(&writer), result);
    QVERIFY(isOld());
    QVERIFY(!hasTemporary());
}

void TestRewriteFaults::roomIsAskedOfTheMedium_data()
{
    QTest::addColumn<QString>("slot");
    QTest::addColumn<bool>("inserted");
    QTest::newRow("a photo on the CF card") << QStringLiteral("cf") << true;
    QTest::newRow("a photo on the SD card") << QStringLiteral("sd") << true;
    QTest::newRow("a photo in an empty CF slot") << QStringLiteral("cf") << false;
    QTest::newRow("a photo in an empty SD slot") << QStringLiteral("sd") << false;
    QTest::newRow("a photo anywhere else") << QString() << true;
}

void TestRewriteFaults::roomIsAskedOfTheMedium()
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
    const QString folder = card.isEmpty() ? m_place : card + QStringLiteral("/dcim");
    const QString path = folder + QStringLiteral("/photo.jpg");
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(card.isEmpty() || QFile::copy(m_path, path));
    FPVExifWriter writer(path);
    const FolderCalls calls(folder);
    FolderCalls::fail(stepOf("write photo_tmp_0.jpg"), EIO);
    QCOMPARE(save(&writer), kDone);
    const QString expected
        = inserted && !card.isEmpty() ? card : QDir::homePath() + QStringLiteral("/Documents");
    QCOMPARE(asked, QByteArrayList{QFile::encodeName(expected)});
}

void TestRewriteFaults::failedCreationAsksForRoom()
{
    FakeMachine::install()->setFreeDiskKB(5);
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    FolderCalls::fail(stepOf("open photo_tmp_0.jpg"), ENOSPC);
    QCOMPARE(save(&writer), kNoRoom);
    QVERIFY(isOld());
}

void TestRewriteFaults::photoThatIsGoneCostsNothing()
{
    FPVExifWriter writer(m_path);
    QVERIFY(QFile::remove(m_path));
    const FolderCalls calls(m_place);
    QCOMPARE(save(&writer), kFailed);
    QCOMPARE(FolderCalls::steps(), QStringList());
}

void TestRewriteFaults::photoChangedMeanwhileIsKept_data()
{
    QTest::addColumn<int>("step");
    QTest::newRow("while it was copied") << stepOf("write photo_tmp_0.jpg");
    QTest::newRow("just before it would be removed") << stepOf("close photo.jpg");
}

void TestRewriteFaults::photoChangedMeanwhileIsKept()
{
    QFETCH(int, step);
    for (const bool inPlace : {true, false}) {
        const QByteArray other = m_old + "saved by another program";
        m_folder->put(m_old);
        FPVExifWriter writer(m_path);
        {
            const FolderCalls calls(m_place);
            FolderCalls::before(step, [&] {
                QVERIFY(inPlace || QFile::remove(m_path));
                m_folder->put(other);
            });
            QCOMPARE(save(&writer), kFailed);
        }
        QVERIFY(contentOf(m_path) == other);
        QVERIFY(!hasTemporary());
    }
}

void TestRewriteFaults::photoRemovedMeanwhileLeavesTheNewOne_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("error");
    QTest::newRow("just before it would be removed") << stepOf("close photo.jpg") << 0;
    QTest::newRow("while the new one could not be synced") << stepOf("sync photo_tmp_0.jpg") << EIO;
}

void TestRewriteFaults::photoRemovedMeanwhileLeavesTheNewOne()
{
    QFETCH(int, step);
    QFETCH(int, error);
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    const auto removePhoto = [this] {
        QVERIFY(QFile::remove(m_path));
    };
    FolderCalls::before(step, removePhoto, error);
    QCOMPARE(save(&writer), kFailed);
    QVERIFY(!QFile::exists(m_path));
    QVERIFY(contentOf(m_temporary) == m_new);
}

void TestRewriteFaults::removalThatOnlySeemedToFail()
{
    for (const int error : {EIO, ENOENT}) {
        m_folder->put(m_old);
        FPVExifWriter writer(m_path);
        const FolderCalls calls(m_place);
        const auto removePhoto = [this] {
            QVERIFY(QFile::remove(m_path));
        };
        FolderCalls::before(stepOf("remove photo.jpg"), removePhoto, error);
        QCOMPARE(save(&writer), kDone);
        QVERIFY(isNew());
        QVERIFY(!hasTemporary());
    }
}

void TestRewriteFaults::fileThatTookTheNameMeanwhileIsKept_data()
{
    QTest::addColumn<bool>("plainly");
    QTest::newRow("where renaming can refuse") << false;
    QTest::newRow("where it cannot") << true;
}

void TestRewriteFaults::fileThatTookTheNameMeanwhileIsKept()
{
    QFETCH(bool, plainly);
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    const auto takeName = [this] {
        m_folder->put("another photo");
    };
    FolderCalls::before(stepOf("rename photo_tmp_0.jpg"), takeName, plainly ? EINVAL : 0);
    QCOMPARE(save(&writer), kFailed);
    QCOMPARE(contentOf(m_path), QByteArray("another photo"));
    QVERIFY(contentOf(m_temporary) == m_new);
}

void TestRewriteFaults::fileThatTookTheTemporaryNameMeanwhileIsKept()
{
    FPVExifWriter writer(m_path);
    const FolderCalls calls(m_place);
    FolderCalls::before(stepOf("open photo_tmp_0.jpg"), [this] {
        m_folder->put("of another program", QStringLiteral("photo_tmp_0.jpg"));
    });
    QCOMPARE(save(&writer), kFailed);
    QVERIFY(isOld());
    QCOMPARE(contentOf(m_temporary), QByteArray("of another program"));
}

void TestRewriteFaults::plainRenamingWhereNoOtherIsKnown()
{
    for (const int error : {EINVAL, ENOSYS}) {
        m_folder->put(m_old);
        FPVExifWriter writer(m_path);
        const FolderCalls calls(m_place);
        FolderCalls::fail(stepOf("rename photo_tmp_0.jpg"), error);
        QCOMPARE(save(&writer), kDone);
        QVERIFY(FolderCalls::steps().contains(QStringLiteral("rename plainly photo_tmp_0.jpg")));
        QVERIFY(isNew());
        QVERIFY(!hasTemporary());
    }
}

LUMI_TEST(TestRewriteFaults)
#include "TestRewriteFaults.moc"
