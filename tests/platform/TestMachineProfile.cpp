// SPDX-License-Identifier: MIT
#include "platform/MachineProfile.h"
#include "platform/files/fileCalls.h"
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using Key = lumi::MachineProfile::Key;
using lumi::test::writeFile;

namespace {

const QString kProfile = QStringLiteral("/lumivault/machine.ini");

QByteArray withCard(const char *path)
{
    return QByteArray("[Mounts]\nSD=") + path + '\n';
}

} // namespace

class TestMachineProfile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void withoutAProfileTheDefaultsApply();
    void theNamedFileComesFirst();
    void theUsersFileChangesSingleKeys();
    void aRelativeNameIsRelativeToTheFolderOfTheStart();
    void aNamedFileThatIsMissingHidesTheOthersToo();
    void paths_data();
    void paths();
    void invalidNumbersGiveTheDefault();
    void keys_data();
    void keys();
    void theProfileNamesOtherKeys();
    void theInstalledProfileHasEveryKey();

private:
    static QString card() { return lumi::MachineProfile().path(Key::MountSD); }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_oldHome;
    QByteArray m_oldDirs;
    QString m_user;
    QString m_system;
};

/// No test of any folder may read the profile of the system that it runs on.
void TestMachineProfile::initTestCase()
{
    const QStringList folders
        = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    QVERIFY(folders.size() >= 2);
    for (const QString &folder : folders) {
        QVERIFY2(folder.startsWith(QDir::homePath() + QLatin1Char('/')), qPrintable(folder));
    }
}

void TestMachineProfile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_oldHome = qgetenv("XDG_CONFIG_HOME");
    m_oldDirs = qgetenv("XDG_CONFIG_DIRS");
    m_user = m_folder->filePath(QStringLiteral("user"));
    m_system = m_folder->filePath(QStringLiteral("system"));
    qputenv("XDG_CONFIG_HOME", m_user.toLocal8Bit());
    qputenv("XDG_CONFIG_DIRS", m_system.toLocal8Bit());
}

void TestMachineProfile::cleanup()
{
    qputenv("XDG_CONFIG_HOME", m_oldHome);
    qputenv("XDG_CONFIG_DIRS", m_oldDirs);
    qunsetenv("LUMIVAULT_MACHINE");
}

void TestMachineProfile::withoutAProfileTheDefaultsApply()
{
    const lumi::MachineProfile profile;
    QCOMPARE(profile.path(Key::MountCF), QStringLiteral("/mnt/cf"));
    QCOMPARE(profile.path(Key::MountSD), QStringLiteral("/mnt/card"));
    QCOMPARE(profile.path(Key::MountTable), QStringLiteral("/proc/self/mountinfo"));
    QCOMPARE(profile.number(Key::MountsOfDesktop), 1);
    QCOMPARE(profile.path(Key::MemoryFile), QStringLiteral("/proc/meminfo"));
    QCOMPARE(profile.path(Key::PowerDir), QStringLiteral("/sys/class/power_supply"));
    QCOMPARE(profile.path(Key::HingeProgram), QStringLiteral("/home/QtPalmtop/bin/chkhinge"));
    QCOMPARE(profile.path(Key::DiskFigures), QString());
    QCOMPARE(profile.number(Key::PanelDepth), 32);
    QCOMPARE(profile.number(Key::Upright), 1);
    QCOMPARE(profile.number(Key::KeyboardDevice), 0);
    QCOMPARE(profile.path(Key::ResourcePath), QStringLiteral("/usr/share/lumivault"));
    QVERIFY(lumi::MachineProfile::files().isEmpty());
}

void TestMachineProfile::theNamedFileComesFirst()
{
    QVERIFY(writeFile(m_system + kProfile, withCard("/system")));
    QCOMPARE(card(), QStringLiteral("/system"));
    QVERIFY(writeFile(m_user + kProfile, withCard("/user")));
    QCOMPARE(card(), QStringLiteral("/user"));
    const QString named = m_folder->filePath(QStringLiteral("named.ini"));
    QVERIFY(writeFile(named, withCard("/named")));
    QVERIFY(writeFile(m_user + kProfile, withCard("/user") + "CF=/user\n"));
    qputenv("LUMIVAULT_MACHINE", named.toLocal8Bit());
    QCOMPARE(card(), QStringLiteral("/named"));
    QCOMPARE(lumi::MachineProfile().path(Key::MountCF), QStringLiteral("/mnt/cf"));
    qputenv("LUMIVAULT_MACHINE", "");
    QCOMPARE(card(), QStringLiteral("/user"));
}

void TestMachineProfile::theUsersFileChangesSingleKeys()
{
    QVERIFY(writeFile(m_system + kProfile,
                      "[Mounts]\nCF=cf\nSD=sd\nDesktop=0\n[Panel]\nDepth=16\n[Keys]\nMenu=F1\n"));
    QVERIFY(writeFile(m_user + kProfile, "[Mounts]\nCF=cf\n[Panel]\nDepth=deep\n"));
    const lumi::MachineProfile profile;
    QCOMPARE(profile.path(Key::MountCF), QString(m_user + QStringLiteral("/lumivault/cf")));
    QCOMPARE(profile.path(Key::MountSD), QString(m_system + QStringLiteral("/lumivault/sd")));
    QCOMPARE(profile.number(Key::MountsOfDesktop), 0);
    QCOMPARE(profile.number(Key::PanelDepth), 32); // no number: the default
    QCOMPARE(profile.deviceKey(Qt::Key_F1, Qt::NoModifier), kKeyMenu);
    QCOMPARE(profile.path(Key::MemoryFile), QStringLiteral("/proc/meminfo"));
}

void TestMachineProfile::aRelativeNameIsRelativeToTheFolderOfTheStart()
{
    const QString before = QDir::currentPath();
    QVERIFY(writeFile(m_folder->filePath(QStringLiteral("named.ini")), withCard("cards/sd")));
    QVERIFY(QDir::setCurrent(m_folder->path()));
    qputenv("LUMIVAULT_MACHINE", "named.ini");
    lumi::MachineProfile::fixNamedFile();
    QVERIFY(QDir::setCurrent(QDir::rootPath()));
    QCOMPARE(card(), m_folder->filePath(QStringLiteral("cards/sd")));
    lumi::MachineProfile::fixNamedFile(); // an absolute one stays
    QCOMPARE(card(), m_folder->filePath(QStringLiteral("cards/sd")));
    qputenv("LUMIVAULT_MACHINE", "");
    lumi::MachineProfile::fixNamedFile(); // and none stays none
    QVERIFY(lumi::MachineProfile::files().isEmpty());
    QVERIFY(QDir::setCurrent(before));
}

void TestMachineProfile::aNamedFileThatIsMissingHidesTheOthersToo()
{
    QVERIFY(writeFile(m_user + kProfile, withCard("/user")));
    qputenv("LUMIVAULT_MACHINE", "/no/such/profile.ini");
    QTest::ignoreMessage(QtWarningMsg, "The machine profile can't be read: /no/such/profile.ini");
    QCOMPARE(card(), QStringLiteral("/mnt/card"));
}

void TestMachineProfile::paths_data()
{
    lumi::test::columns<QByteArray, QString>();
    QTest::newRow("as it is") << QByteArray("/media/a b") << QStringLiteral("/media/a b");
    QTest::newRow("closing slashes go") << QByteArray("/media/x//") << QStringLiteral("/media/x");
    QTest::newRow("double slashes go") << QByteArray("//media//x") << QStringLiteral("/media/x");
    QTest::newRow("the root stays") << QByteArray("/") << QStringLiteral("/");
    QTest::newRow("empty stays empty") << QByteArray("") << QString();
}

void TestMachineProfile::paths()
{
    const auto [value, path] = lumi::test::row<QByteArray, QString>();
    QVERIFY(writeFile(m_user + kProfile, withCard(value.constData())));
    QCOMPARE(card(), path);
    QVERIFY(writeFile(m_user + kProfile, withCard("sd")));
    QCOMPARE(card(), QString(m_user + QStringLiteral("/lumivault/sd")));
}

void TestMachineProfile::invalidNumbersGiveTheDefault()
{
    QVERIFY(writeFile(m_user + kProfile, "[Panel]\nDepth=deep\n[Keys]\nDevice=1\n"));
    QCOMPARE(lumi::MachineProfile().number(Key::PanelDepth), 32);
    QCOMPARE(lumi::MachineProfile().number(Key::KeyboardDevice), 1);
}

void TestMachineProfile::keys_data()
{
    lumi::test::columns<int, Qt::KeyboardModifiers, int>();
    const auto row = [](const char *name, int key, Qt::KeyboardModifiers modifiers, int code) {
        QTest::newRow(name) << key << modifiers << code;
    };
    row("plus", Qt::Key_Plus, Qt::NoModifier, kKeyZoomIn);
    row("plus with Shift", Qt::Key_Plus, Qt::ShiftModifier, kKeyZoomIn);
    row("plus of the keypad", Qt::Key_Plus, Qt::KeypadModifier, kKeyZoomIn);
    row("plus with Ctrl", Qt::Key_Plus, Qt::ControlModifier, kKeyZoomIn);
    row("plus with Ctrl and Shift", Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier,
        kKeyZoomIn);
    row("plus with Alt is nothing", Qt::Key_Plus, Qt::AltModifier, 0);
    row("equals", Qt::Key_Equal, Qt::NoModifier, kKeyZoomIn);
    row("minus", Qt::Key_Minus, Qt::NoModifier, kKeyZoomOut);
    row("zero", Qt::Key_0, Qt::NoModifier, kKeyFit);
    row("asterisk", Qt::Key_Asterisk, Qt::ShiftModifier, kKeyFit);
    row("F11", Qt::Key_F11, Qt::NoModifier, kKeyMenu);
    row("the menu key", Qt::Key_Menu, Qt::NoModifier, kKeyMenu);
    row("M with Ctrl", Qt::Key_M, Qt::ControlModifier, kKeyMail);
    row("M alone is a letter", Qt::Key_M, Qt::NoModifier, 0);
    row("an arrow is itself", Qt::Key_Left, Qt::NoModifier, 0);
    row("Escape is itself", Qt::Key_Escape, Qt::NoModifier, 0);
}

void TestMachineProfile::keys()
{
    const auto [key, modifiers, code] = lumi::test::row<int, Qt::KeyboardModifiers, int>();
    QCOMPARE(lumi::MachineProfile().deviceKey(key, modifiers), code);
}

void TestMachineProfile::theProfileNamesOtherKeys()
{
    QVERIFY(writeFile(m_user + kProfile, "[Keys]\nZoomIn=Z  Nonsense Ctrl+A,Ctrl+B\nFit=\n"));
    const lumi::MachineProfile profile;
    QCOMPARE(profile.deviceKey(Qt::Key_Z, Qt::NoModifier), kKeyZoomIn);
    QCOMPARE(profile.deviceKey(Qt::Key_Plus, Qt::NoModifier), 0);
    QCOMPARE(profile.deviceKey(Qt::Key_A, Qt::ControlModifier), 0);
    QCOMPARE(profile.deviceKey(Qt::Key_unknown, Qt::NoModifier), 0);
    QCOMPARE(profile.deviceKey(Qt::Key_0, Qt::NoModifier), 0);
    QCOMPARE(profile.deviceKey(Qt::Key_Minus, Qt::NoModifier), kKeyZoomOut);
}

void TestMachineProfile::theInstalledProfileHasEveryKey()
{
    const QString source = QStringLiteral(LUMI_SOURCE_DIR "/platform/machine.ini");
    const std::optional<QByteArray> text = lumi::readSmallFile(source);
    QVERIFY(text.has_value());
    const lumi::MachineProfile builtIn;
    const QString installed = m_user + kProfile;
    QVERIFY(writeFile(installed, *text));
    const lumi::MachineProfile profile;
    for (const Key key : {Key::MountCF, Key::MountSD, Key::MountTable, Key::MemoryFile,
                          Key::PowerDir, Key::DiskFigures}) {
        QCOMPARE(profile.path(key), builtIn.path(key));
    }
    QCOMPARE(profile.number(Key::MountsOfDesktop), builtIn.number(Key::MountsOfDesktop));
    QCOMPARE(profile.number(Key::Upright), builtIn.number(Key::Upright));
    QCOMPARE(profile.number(Key::PanelDepth), builtIn.number(Key::PanelDepth));
    QCOMPARE(profile.number(Key::KeyboardDevice), builtIn.number(Key::KeyboardDevice));
    const lumi::IniText ini(*text);
    constexpr const char *kNames[][2]
        = {{"Mounts", "CF"},   {"Mounts", "SD"},   {"Mounts", "Table"},  {"Mounts", "Desktop"},
           {"Memory", "File"}, {"Power", "Dir"},   {"Disk", "Figures"},  {"Panel", "Depth"},
           {"Keys", "Device"}, {"Keys", "ZoomIn"}, {"Keys", "ZoomOut"},  {"Keys", "Fit"},
           {"Keys", "Menu"},   {"Keys", "Mail"},   {"Photos", "Upright"}};
    for (const auto &name : kNames) {
        QVERIFY2(ini.value(QString::fromLatin1(name[0]), QString::fromLatin1(name[1])).has_value(),
                 name[1]);
    }
    QCOMPARE(profile.deviceKey(Qt::Key_Plus, Qt::NoModifier), kKeyZoomIn);
    QCOMPARE(profile.deviceKey(Qt::Key_Minus, Qt::NoModifier), kKeyZoomOut);
    QCOMPARE(profile.deviceKey(Qt::Key_Asterisk, Qt::NoModifier), kKeyFit);
    QCOMPARE(profile.deviceKey(Qt::Key_F11, Qt::NoModifier), kKeyMenu);
    QCOMPARE(profile.deviceKey(Qt::Key_M, Qt::ControlModifier), kKeyMail);
}

LUMI_TEST(TestMachineProfile)
#include "TestMachineProfile.moc"
