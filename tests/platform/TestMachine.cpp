// SPDX-License-Identifier: MIT
#include "platform/Machine.h"
#include "platform/cards/SlotLinks.h"
#include "platform/power/PowerStatusManager.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using lumi::test::writeFile;

namespace {

/// Collects what the process and its children write to standard error while it lives.
class ErrorCatcher
{
public:
    explicit ErrorCatcher(const QString &path)
        : m_path(path)
        , m_saved(dup(STDERR_FILENO))
    {
        const int file
            = open(QFile::encodeName(path).constData(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
        dup2(file, STDERR_FILENO);
        close(file);
    }

    QByteArray finish()
    {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
        return lumi::test::readFile(m_path);
    }

private:
    QString m_path;
    int m_saved;
};

/// Sets a flag when it is destroyed.
class Mortal : public Machine
{
public:
    explicit Mortal(bool *ended)
        : m_ended(ended)
    { }

    ~Mortal() override { *m_ended = true; }

    PowerStatus power() const override { return {PowerStatus::Offline, 31}; }

private:
    bool *m_ended;
};

} // namespace

class TestMachine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void anInstalledMachineAnswersAndIsOwned();
    void aMountPointThatExistsIsUsed();
    void aMissingMountPointIsReplacedByALink();
    void theProfileMayForbidLinks();
    void withoutARuntimeFolderThereAreNoLinks();
    void memoryIsReadAtEachCall();
    void diskFiguresComeFromTheFileOrTheSystem();
    void powerIsReadAtEachCall();
    void pipesAndDevicesAreNotRead_data();
    void pipesAndDevicesAreNotRead();
    void hinge_data();
    void hinge();
    void aProgramNameIsQuotedForTheShell();
    void depth_data();
    void depth();
    void photosAreUprightUnlessTheProfileForbidsIt();
    void resourcesAndSettingsHaveTheirPlaces();

private:
    /// Installs a machine with this profile.
    void useProfile(const QByteArray &text);

    QString path(const char *name) const { return m_folder->filePath(QString::fromLatin1(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestMachine::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestMachine::cleanup()
{
    qunsetenv("LUMIVAULT_MACHINE");
    Machine::install(nullptr);
}

void TestMachine::useProfile(const QByteArray &text)
{
    QVERIFY(writeFile(path("machine.ini"), text));
    qputenv("LUMIVAULT_MACHINE", path("machine.ini").toLocal8Bit());
    Machine::install(nullptr);
}

void TestMachine::anInstalledMachineAnswersAndIsOwned()
{
    bool firstEnded = false;
    bool secondEnded = false;
    auto *second = new Mortal(&secondEnded);
    Machine::install(new Mortal(&firstEnded));
    QCOMPARE(PowerStatusManager::readStatus().batteryPercentRemaining(), 31);
    QCOMPARE(PowerStatusManager::readStatus().acStatus(), PowerStatus::Offline);
    QVERIFY(!firstEnded);
    Machine::install(second);
    QVERIFY(firstEnded);
    QCOMPARE(&Machine::instance(), second);
    Machine::install(nullptr);
    QVERIFY(secondEnded);
    QCOMPARE(Machine::instance().panelDepth(), 32);
}

void TestMachine::aMountPointThatExistsIsUsed()
{
    useProfile("[Mounts]\nCF=my cf\nSD=my sd/\n");
    QVERIFY(QDir().mkpath(path("my cf")) && QDir().mkpath(path("my sd")));
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), path("my cf"));
    QCOMPARE(Machine::instance().mountPoint(Slot::SD), path("my sd"));
    QVERIFY2(!QFile::exists(path("my cf/NotAvailable")), "a real folder gets no marker");
}

void TestMachine::aMissingMountPointIsReplacedByALink()
{
    useProfile("[Mounts]\nCF=cf\nSD=no sd\n");
    QVERIFY(QDir().mkpath(path("cf")));
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), path("cf"));
    const QString sd = Machine::instance().mountPoint(Slot::SD);
    QCOMPARE(sd, lumi::SlotLinks::path(Slot::SD));
    QVERIFY(sd.startsWith(qEnvironmentVariable("XDG_RUNTIME_DIR") + QLatin1Char('/')));
    QVERIFY2(!QFile::exists(path("no sd")), "the mount point itself isn't made");
    // The paths stay, so that a card is found where it was.
    QVERIFY(QDir().mkpath(path("no sd")) && QDir().rmdir(path("cf")));
    QCOMPARE(Machine::instance().mountPoint(Slot::SD), sd);
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), path("cf"));
}

void TestMachine::theProfileMayForbidLinks()
{
    useProfile("[Mounts]\nCF=\nSD=no sd\nDesktop=0\n");
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), QString());
    QCOMPARE(Machine::instance().mountPoint(Slot::SD), path("no sd"));
    useProfile("[Mounts]\nCF=\nSD=no sd\nDesktop=1\n");
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), lumi::SlotLinks::path(Slot::CF));
}

void TestMachine::withoutARuntimeFolderThereAreNoLinks()
{
    const QByteArray old = qgetenv("XDG_RUNTIME_DIR");
    QVERIFY(writeFile(path("file"), "x"));
    qputenv("XDG_RUNTIME_DIR", path("file").toLocal8Bit());
    qputenv("TMPDIR", path("file").toLocal8Bit()); // where the toolkit would make one
    useProfile("[Mounts]\nCF=no cf\n");
    QCOMPARE(Machine::instance().mountPoint(Slot::CF), path("no cf"));
    qunsetenv("TMPDIR");
    qputenv("XDG_RUNTIME_DIR", old);
}

void TestMachine::memoryIsReadAtEachCall()
{
    useProfile("[Memory]\nFile=mem\n");
    QVERIFY(Machine::instance().memInfo().isEmpty());
    QVERIFY(writeFile(path("mem"), "MemFree: 2 kB\n"));
    QVERIFY(Machine::instance().memInfo().endsWith("\nMem:  0 0 2048 0 0 0\n"));
    const QByteArray table = "heading\nMem: 1 2 3 4 5 6\n";
    QVERIFY(writeFile(path("mem"), table));
    QCOMPARE(Machine::instance().memInfo(), table);
    Machine::install(new Machine);
    qunsetenv("LUMIVAULT_MACHINE");
    const QByteArray own = Machine::instance().memInfo();
    QVERIFY2(own.contains("Mem:") && !own.contains("Mem:  0 "), own.constData());
}

void TestMachine::diskFiguresComeFromTheFileOrTheSystem()
{
    useProfile("[Disk]\nFigures=figures\n");
    QVERIFY(Machine::instance().disk("/").ok);
    const qint64 real = Machine::instance().disk("/").blocks;
    QVERIFY(writeFile(path("figures"), "/home 512 7 3\n"));
    QCOMPARE(Machine::instance().disk("/home/x").blocks, 7);
    QCOMPARE(Machine::instance().disk("/").blocks, real);
    QVERIFY(!Machine::instance().disk(QByteArray()).ok);
    QVERIFY(writeFile(path("figures"), "/ 512 9 3\n"));
    QCOMPARE(Machine::instance().disk("/").blocks, 9);
    QVERIFY2(!Machine::instance().disk(QByteArray()).ok, "a null path is on no disk");
}

void TestMachine::powerIsReadAtEachCall()
{
    useProfile("[Power]\nDir=power\n");
    QCOMPARE(PowerStatusManager::readStatus(), PowerStatus(PowerStatus::Online, 100));
    QVERIFY(writeFile(path("power/B/type"), "Battery\n"));
    QVERIFY(writeFile(path("power/B/capacity"), "12\n"));
    QVERIFY(writeFile(path("power/B/status"), "Discharging\n"));
    QCOMPARE(PowerStatusManager::readStatus(), PowerStatus(PowerStatus::Offline, 12));
}

void TestMachine::pipesAndDevicesAreNotRead_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("a pipe that nobody writes to") << QStringLiteral("pipe");
    QTest::newRow("a device without an end") << QStringLiteral("/dev/zero");
}

void TestMachine::pipesAndDevicesAreNotRead()
{
    QFETCH(QString, target);
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QVERIFY(QFile::link(QDir(m_folder->path()).absoluteFilePath(target), path("odd")));
    useProfile("[Memory]\nFile=odd\n[Disk]\nFigures=odd\n[Power]\nDir=power\n");
    QVERIFY(Machine::instance().memInfo().isEmpty());
    QVERIFY(Machine::instance().disk("/").ok);
    QVERIFY(writeFile(path("power/B/type"), "Battery\n"));
    QVERIFY(writeFile(path("power/B/status"), "Discharging\n"));
    for (const char *property : {"power/B/present", "power/B/capacity", "power/B/energy_now"}) {
        QVERIFY(QFile::link(path("odd"), path(property)));
    }
    QCOMPARE(PowerStatusManager::readStatus(), PowerStatus(PowerStatus::Offline, 100));
    // The profile itself.
    qputenv("LUMIVAULT_MACHINE", path("odd").toLocal8Bit());
    Machine::install(nullptr);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("machine profile can't be read")));
    QCOMPARE(Machine::instance().mountTable(), QStringLiteral("/proc/self/mountinfo"));
}

void TestMachine::hinge_data()
{
    lumi::test::columns<QByteArray, bool, int>();
    QTest::newRow("usual position") << QByteArray("#!/bin/sh\nexit 0\n") << true << 0;
    QTest::newRow("another position") << QByteArray("#!/bin/sh\nexit 3\n") << true << (3 << 8);
    QTest::newRow("may not be run") << QByteArray("#!/bin/sh\nexit 0\n") << false << (126 << 8);
    QTest::newRow("is missing") << QByteArray() << false << (127 << 8);
}

void TestMachine::hinge()
{
    const auto [script, executable, result] = lumi::test::row<QByteArray, bool, int>();
    useProfile("[Hinge]\nProgram=chkhinge\n");
    if (!script.isEmpty()) {
        QVERIFY(writeFile(path("chkhinge"), script));
        QVERIFY(QFile::setPermissions(
            path("chkhinge"), executable ? QFile::ReadOwner | QFile::ExeOwner : QFile::ReadOwner));
    }
    ErrorCatcher errors(path("errors"));
    const int answer = Machine::instance().hinge();
    QCOMPARE(errors.finish(), QByteArray(""));
    QCOMPARE(answer, result);
}

void TestMachine::aProgramNameIsQuotedForTheShell()
{
    useProfile("[Hinge]\nProgram=it's a; exit 9\n");
    const QString program = path("it's a; exit 9");
    QCOMPARE(Machine::instance().hinge(), 127 << 8);
    QVERIFY(writeFile(program, "#!/bin/sh\nexit 4\n"));
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    QCOMPARE(Machine::instance().hinge(), 4 << 8);
    useProfile("[Hinge]\nProgram=\n");
    QCOMPARE(Machine::instance().hinge(), 127 << 8);
    useProfile("[Hinge]\nProgram=/\n");
    QCOMPARE(Machine::instance().hinge(), 127 << 8);
}

void TestMachine::depth_data()
{
    lumi::test::columns<QByteArray, int>();
    QTest::newRow("not said") << QByteArray("") << 32;
    QTest::newRow("16") << QByteArray("Depth=16") << 16;
    QTest::newRow("32") << QByteArray("Depth=32") << 32;
    QTest::newRow("one that no panel has") << QByteArray("Depth=8") << 32;
}

void TestMachine::depth()
{
    const auto [text, depth] = lumi::test::row<QByteArray, int>();
    useProfile("[Panel]\n" + text + '\n');
    QCOMPARE(Machine::instance().panelDepth(), depth);
}

void TestMachine::photosAreUprightUnlessTheProfileForbidsIt()
{
    useProfile("");
    QVERIFY(Machine::instance().showsUpright());
    useProfile("[Photos]\nUpright=0\n");
    QVERIFY(!Machine::instance().showsUpright());
}

void TestMachine::resourcesAndSettingsHaveTheirPlaces()
{
    useProfile("[Resources]\nPath=share/\n[Keys]\nDevice=1\n");
    QCOMPARE(Machine::instance().resourceDir(), path("share"));
    QCOMPARE(Machine::instance().keyDevice(), 1);
    QCOMPARE(Machine::instance().deviceKey(Qt::Key_F11, Qt::NoModifier), 0x103A);
    QCOMPARE(Machine::instance().settingsFile(QStringLiteral("lumivault")),
             QString(qEnvironmentVariable("XDG_CONFIG_HOME")
                     + QStringLiteral("/lumivault/lumivault.conf")));
    useProfile("");
    QCOMPARE(Machine::instance().resourceDir(), QStringLiteral("/usr/share/lumivault"));
    QCOMPARE(Machine::instance().keyDevice(), 0);
}

LUMI_TEST(TestMachine)
#include "TestMachine.moc"
