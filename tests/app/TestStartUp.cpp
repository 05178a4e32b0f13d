// SPDX-License-Identifier: MIT
// Runs the program as a separate process, from its start to its end.
#include "tests/app/ProgramTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

class TestStartUp : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void firstStartMakesTheFolders();
    void secondStartReadsTheIndex();
    void killedRunIsNoticed();
    void exitStatusIsThatOfTheLoop_data();
    void exitStatusIsThatOfTheLoop();
    void startsIfTheStoreCannotBeMade_data();
    void startsIfTheStoreCannotBeMade();
    void unknownArgumentsAreIgnored();
    void aMissingBusBatteryOrCardSlotIsNotReported();
    void aClosedLogPipeDoesNotEndTheProgram();
    void aClosedLogIsNotReplacedByAnotherFile();
    void aLimitOnFileSizesDoesNotEndTheProgram();
    void relativeProfileIsFoundFromTheFolderOfTheStart();
    void profileOfTheProgramsPrefixIsFound();
    void picturesAreFoundFromTheProgramsPlace();
    void missingPicturesAreReportedAndReplaced();
    void aScaleThatTheScreenHasNoRoomForIsLowered_data();
    void aScaleThatTheScreenHasNoRoomForIsLowered();

private:
    /// Puts a photo into the store.
    void makePhoto() const;
    /// In the folder's pixmaps/lumivault. Makes the driver report the sizes of the pictures.
    void writePicture(const QString &folder);
    /// The profile names the folder of pictures; beside it a folder "pictures" is made.
    void writeProfile(const QString &name, const QByteArray &pictures = "pictures");
    /// The next starts use the copy.
    void copyProgram();
};

void TestStartUp::firstStartMakesTheFolders()
{
    QVERIFY(!QFile::exists(at(QStringLiteral("Documents"))));
    const Outcome outcome = run(QStringLiteral("close"));
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    // One window, no box before it.
    QCOMPARE(outcome.windows, QStringList{QStringLiteral("window: Lumi Vault")});
    QVERIFY(outcome.warnings.contains("SwapSystem::InitRead Not Initialze File")); // sic
    QVERIFY(QDir(at(QStringLiteral("Documents/Photo_Files/.photo_swp"))).exists());
}

void TestStartUp::secondStartReadsTheIndex()
{
    QVERIFY(run(QStringLiteral("close")).ended);
    const Outcome second = run(QStringLiteral("close"));
    QCOMPARE(second.status, 0);
    QCOMPARE(second.windows, QStringList{QStringLiteral("window: Lumi Vault")});
    QCOMPARE(ownWarnings(second), QByteArrayList());
}

void TestStartUp::killedRunIsNoticed()
{
    QVERIFY(run(QStringLiteral("close")).ended);
    const QDir folder(inSwapFolder(QString()));
    const auto thumbnails = [&folder] {
        return folder.entryList({QStringLiteral("*.swp")}, QDir::Files).size();
    };
    QImage photo(320, 240, QImage::Format_RGB32);
    photo.fill(Qt::cyan);
    for (const char *name : {"a.jpg", "b.jpg", "c.jpg"}) {
        QVERIFY(photo.save(at(QStringLiteral("Documents/Photo_Files/") + QLatin1String(name))));
    }
    const std::unique_ptr<QProcess> killed = start(QStringLiteral("browse"));
    QTRY_COMPARE_WITH_TIMEOUT(thumbnails(), qsizetype(3), kTimeLimitMs);
    QVERIFY(QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
    killed->kill();
    QVERIFY(killed->waitForFinished(kTimeLimitMs));
    QCOMPARE(killed->exitStatus(), QProcess::CrashExit);
    QVERIFY(QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
    QCOMPARE(thumbnails(), qsizetype(3));

    const Outcome next = run(QStringLiteral("close"));
    QCOMPARE(next.status, 0);
    QCOMPARE(next.windows,
             (QStringList{QStringLiteral("box: Error: Temporary files seem corrupted.|They will "
                                         "be deleted.||(the program may run temporarily slow)"),
                          QStringLiteral("window: Lumi Vault")}));
    QCOMPARE(thumbnails(), qsizetype(0));
    QVERIFY(!QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
    QVERIFY(QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.bin"))));
}

void TestStartUp::exitStatusIsThatOfTheLoop_data()
{
    lumi::test::columns<QString, int>();
    QTest::newRow("a closed window gives 0") << QStringLiteral("close") << 0;
    QTest::newRow("a loop that is left with 0") << QStringLiteral("exit:0") << 0;
    QTest::newRow("a loop that is left with 7") << QStringLiteral("exit:7") << 7;
}

void TestStartUp::exitStatusIsThatOfTheLoop()
{
    const auto [end, status] = lumi::test::row<QString, int>();
    const Outcome outcome = run(end);
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, status);
    QVERIFY(!QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
}

void TestStartUp::startsIfTheStoreCannotBeMade_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("a file stands in the place of the documents") << QStringLiteral("Documents");
    QTest::newRow("a file stands in the place of the photo store")
        << QStringLiteral("Documents/Photo_Files");
}

void TestStartUp::startsIfTheStoreCannotBeMade()
{
    QFETCH(QString, obstacle);
    QVERIFY(QDir().mkpath(QFileInfo(at(obstacle)).path()));
    QFile file(at(obstacle));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    const Outcome outcome = run(QStringLiteral("close"));
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.windows, QStringList{QStringLiteral("window: Lumi Vault")});
    QVERIFY(outcome.warnings.contains("Photo_Files mkdir err"));
    QVERIFY(outcome.warnings.contains("Error SwapSystem("));
    QVERIFY(QFileInfo(at(obstacle)).isFile());
}

void TestStartUp::unknownArgumentsAreIgnored()
{
    // The program has no options and ignores unknown arguments.
    const Outcome outcome = run(QStringLiteral("close"),
                                {QStringLiteral("--help"), QStringLiteral("-style"),
                                 QStringLiteral("fusion"), QStringLiteral("/no/such/photo.jpg")});
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.windows, QStringList{QStringLiteral("window: Lumi Vault")});
}

void TestStartUp::aMissingBusBatteryOrCardSlotIsNotReported()
{
    QFile profile(at(QStringLiteral("machine.ini")));
    QVERIFY(profile.open(QIODevice::WriteOnly));
    profile.write("[Mounts]\nCF=/no/such/cf\nSD=/no/such/card\nTable=/no/such/table\n"
                  "[Memory]\nFile=/no/such/file\n[Power]\nDir=/no/such/folder\n"
                  "[Hinge]\nProgram=/no/such/program\n");
    profile.close();
    m_environment.insert(QStringLiteral("LUMIVAULT_MACHINE"), profile.fileName());
    QVERIFY(run(QStringLiteral("close")).ended);
    const Outcome second = run(QStringLiteral("close"));
    QCOMPARE(second.status, 0);
    QCOMPARE(second.windows, QStringList{QStringLiteral("window: Lumi Vault")});
    QCOMPARE(ownWarnings(second), QByteArrayList());
}

/// The first start logs that there is no index.
void TestStartUp::aClosedLogPipeDoesNotEndTheProgram()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::close(ends[0]);
    m_inChild = [log = ends[1]] {
        ::dup2(log, STDERR_FILENO);
    };
    const Outcome outcome = run(QStringLiteral("close"));
    ::close(ends[1]);
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.windows, QStringList{QStringLiteral("window: Lumi Vault")});
}

/// Otherwise log lines would be written into the next file that is opened.
void TestStartUp::aClosedLogIsNotReplacedByAnotherFile()
{
    m_inChild = [] {
        ::close(STDIN_FILENO);
        ::close(STDERR_FILENO);
    };
    const std::unique_ptr<QProcess> process = start(QStringLiteral("run"));
    QTRY_VERIFY_WITH_TIMEOUT(process->peek(1000).contains("running"), kTimeLimitMs);
    const QString streams = QStringLiteral("/proc/%1/fd/").arg(process->processId());
    for (const int stream : {STDIN_FILENO, STDERR_FILENO}) {
        QCOMPARE(QFile::symLinkTarget(streams + QString::number(stream)),
                 QStringLiteral("/dev/null"));
    }
    process->kill();
    QVERIFY(process->waitForFinished(kTimeLimitMs));
}

/// The index is written at the end, after the thumbnails.
void TestStartUp::aLimitOnFileSizesDoesNotEndTheProgram()
{
    makePhoto();
    m_inChild = [] {
        const rlimit nothing{0, 0};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
        std::signal(SIGXFSZ, SIG_DFL);
    };
    const Outcome outcome = run(QStringLiteral("visit"));
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.windows.contains(QStringLiteral("window: Lumi Vault")));
    QCOMPARE(QFileInfo(inSwapFolder(QStringLiteral(".SwapMng.bin"))).size(), 0);
}

void TestStartUp::makePhoto() const
{
    QVERIFY(QDir().mkpath(at(QStringLiteral("Documents/Photo_Files"))));
    QImage photo(320, 240, QImage::Format_RGB32);
    photo.fill(Qt::cyan);
    QVERIFY(photo.save(at(QStringLiteral("Documents/Photo_Files/a.jpg"))));
}

void TestStartUp::writePicture(const QString &folder)
{
    const QString pictures = at(folder) + QStringLiteral("/pixmaps/lumivault");
    QVERIFY(QDir().mkpath(pictures));
    QImage picture(17, 19, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(pictures + QStringLiteral("/top_look.png")));
    m_environment.insert(QStringLiteral("LUMI_DRIVER_PICTURES"), QStringLiteral("1"));
}

void TestStartUp::writeProfile(const QString &name, const QByteArray &pictures)
{
    writePicture(QFileInfo(name).path() + QStringLiteral("/pictures"));
    QVERIFY(lumi::test::writeFile(at(name), "[Resources]\nPath=" + pictures + '\n'));
}

void TestStartUp::copyProgram()
{
    QVERIFY(QDir().mkpath(at(QStringLiteral("prefix/bin"))));
    m_program = at(QStringLiteral("prefix/bin/lumivault"));
    QVERIFY(QFile::copy(QStringLiteral(LUMI_PROGRAM), m_program));
    m_environment.insert(QStringLiteral("XDG_CONFIG_DIRS"), at(QStringLiteral("none")));
}

void TestStartUp::relativeProfileIsFoundFromTheFolderOfTheStart()
{
    writeProfile(QStringLiteral("profiles/mine.ini"));
    m_environment.insert(QStringLiteral("LUMIVAULT_MACHINE"), QStringLiteral("profiles/mine.ini"));
    const Outcome outcome = run(QStringLiteral("close"));
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.windows.contains(QStringLiteral("picture: 17x19")));
}

/// The program may be installed in a place that the configuration folders don't include.
void TestStartUp::profileOfTheProgramsPrefixIsFound()
{
    writeProfile(QStringLiteral("prefix/etc/xdg/lumivault/machine.ini"));
    copyProgram();
    const Outcome outcome = run(QStringLiteral("close"));
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.windows.contains(QStringLiteral("picture: 17x19")));
    // A key in a configuration folder's profile counts before the same key of the prefix. Other keys of
    // the prefix still count.
    QVERIFY(lumi::test::writeFile(at(QStringLiteral("none/lumivault/machine.ini")),
                                  "[Panel]\nDepth=16\n"));
    QVERIFY(run(QStringLiteral("close")).windows.contains(QStringLiteral("picture: 17x19")));
    writeProfile(QStringLiteral("none/lumivault/machine.ini"));
    QVERIFY(QFile::remove(at(QStringLiteral("none/lumivault/pictures/pixmaps/lumivault/"
                                            "top_look.png"))));
    const Outcome second = run(QStringLiteral("close"));
    QCOMPARE(second.status, 0);
    QVERIFY(!second.windows.contains(QStringLiteral("picture: 17x19")));
}

/// An installed tree may be moved.
void TestStartUp::picturesAreFoundFromTheProgramsPlace()
{
    writePicture(QStringLiteral("prefix/share/lumivault"));
    copyProgram();
    const QStringList windows = run(QStringLiteral("close")).windows;
    QCOMPARE(windows.constFirst(), QStringLiteral("window: Lumi Vault"));
    QVERIFY(windows.contains(QStringLiteral("picture: 17x19")));
}

void TestStartUp::missingPicturesAreReportedAndReplaced()
{
    const QString folder = at(QStringLiteral("no/pictures"));
    writeProfile(QStringLiteral("profiles/mine.ini"), folder.toUtf8());
    m_environment.insert(QStringLiteral("LUMIVAULT_MACHINE"), QStringLiteral("profiles/mine.ini"));
    QStringList windows = run(QStringLiteral("close")).windows;
    QCOMPARE(windows.mid(0, 2),
             (QStringList{QStringLiteral("window: Lumi Vault"),
                          QStringLiteral("box: Error: The pictures of the program were not found "
                                         "in|%1|Its buttons show their names instead.|Please "
                                         "install the program again.")
                              .arg(folder)}));
    windows.removeAll(QStringLiteral("picture: 58x58")); // the left column
    QCOMPARE(windows.mid(2),
             (QStringList{QStringLiteral("picture: 236x236"), QStringLiteral("picture: 236x236")}));
}

void TestStartUp::aScaleThatTheScreenHasNoRoomForIsLowered_data()
{
    lumi::test::columns<QString>();
    QTest::newRow("twice as large") << QStringLiteral("2");
    QTest::newRow("a little larger") << QStringLiteral("1.25");
}

void TestStartUp::aScaleThatTheScreenHasNoRoomForIsLowered()
{
    const auto [factor] = lumi::test::row<QString>();
    m_environment.insert(QStringLiteral("QT_SCALE_FACTOR"), factor);
    const Outcome outcome = run(QStringLiteral("screen"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(
        outcome.windows,
        (QStringList{QStringLiteral("window: Lumi Vault"), QStringLiteral("screen: 640x480")}));
}

LUMI_TEST(TestStartUp)
#include "TestStartUp.moc"
