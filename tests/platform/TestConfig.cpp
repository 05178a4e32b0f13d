// SPDX-License-Identifier: MIT
#include "platform/Config.h"
#include "platform/Machine.h"
#include "tests/support/FullDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QTest>

#include <memory>

using lumi::test::FileSizeLimit;
using lumi::test::readFile;
using lumi::test::SmallDisk;
using lumi::test::writeFile;

namespace {

const QString kName = QStringLiteral("lumivault");
const QString kKey = QStringLiteral("FontSize");

Config common()
{
    Config config(kName, Config::User);
    config.setGroup(QStringLiteral("Common"));
    return config;
}

QString settingsPath()
{
    return Machine::instance().settingsFile(kName);
}

} // namespace

class TestConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void anUnsetKeyReadsAsTheDefault();
    void whatIsWrittenIsOnDiskAtOnce();
    void anOutsideEditIsSeenAtTheNextRead();
    void groupsAreApart();
    void valuesThatAreNotNumbers_data();
    void valuesThatAreNotNumbers();
    void theRestOfTheFileStays();
    void aFolderInPlaceOfTheFileIsLeftAlone();
    void anUnreadableFileIsLeftAlone();
    void aMissingHomeOnlyLogs();
    void whatCannotBeWrittenKeepsTheOldFile_data();
    void whatCannotBeWrittenKeepsTheOldFile();
};

void TestConfig::cleanup()
{
    QDir(QFileInfo(settingsPath()).path()).removeRecursively();
}

void TestConfig::anUnsetKeyReadsAsTheDefault()
{
    QVERIFY(!QFile::exists(settingsPath()));
    QCOMPARE(common().readNumEntry(kKey, 2), 2);
    QCOMPARE(common().readNumEntry(kKey, -5), -5);
    QVERIFY2(!QFile::exists(settingsPath()), "reading makes no file");
}

void TestConfig::whatIsWrittenIsOnDiskAtOnce()
{
    Config config = common();
    for (const int number :
         {4, 0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        config.writeEntry(kKey, number);
        QCOMPARE(readFile(settingsPath()),
                 QByteArray("[Common]\nFontSize=" + QByteArray::number(number) + '\n'));
        QCOMPARE(common().readNumEntry(kKey, 2), number);
    }
    const QDir folder(QFileInfo(settingsPath()).path());
    QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("lumivault.conf")));
}

void TestConfig::anOutsideEditIsSeenAtTheNextRead()
{
    const Config config = common();
    QVERIFY(writeFile(settingsPath(), "[Common]\nFontSize=1\n"));
    QCOMPARE(config.readNumEntry(kKey, 2), 1);
    QVERIFY(writeFile(settingsPath(), "[Common]\nFontSize=3\n"));
    QCOMPARE(config.readNumEntry(kKey, 2), 3);
    QVERIFY(QFile::remove(settingsPath()));
    QCOMPARE(config.readNumEntry(kKey, 2), 2);
}

void TestConfig::groupsAreApart()
{
    Config config(kName);
    config.setGroup(QStringLiteral("Slideshow"));
    config.writeEntry(kKey, 9);
    config.setGroup(QStringLiteral("Common"));
    QCOMPARE(config.readNumEntry(kKey, 2), 2);
    config.writeEntry(kKey, 1);
    config.setGroup(QStringLiteral("Slideshow"));
    QCOMPARE(config.readNumEntry(kKey, 2), 9);
}

void TestConfig::valuesThatAreNotNumbers_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("a word") << QByteArray("big");
    QTest::newRow("a fraction") << QByteArray("3.5");
    QTest::newRow("a number and more") << QByteArray("3 4");
    QTest::newRow("hexadecimal") << QByteArray("0x3");
    QTest::newRow("above an int") << QByteArray("2147483648");
    QTest::newRow("far above anything") << QByteArray(5000, '9');
    QTest::newRow("no UTF-8") << QByteArray("\xFF\xFE");
}

void TestConfig::valuesThatAreNotNumbers()
{
    QFETCH(QByteArray, value);
    QVERIFY(writeFile(settingsPath(), "[Common]\nFontSize=" + value + "\nOther=3\n"));
    QCOMPARE(common().readNumEntry(kKey, 2), 2);
    QCOMPARE(common().readNumEntry(QStringLiteral("Other"), 2), 3);
    common().writeEntry(kKey, 4);
    QCOMPARE(readFile(settingsPath()), QByteArray("[Common]\nFontSize=4\nOther=3\n"));
}

void TestConfig::theRestOfTheFileStays()
{
    QVERIFY(writeFile(settingsPath(), "# mine\n[Slideshow]\nDispTime=8\n\n[Common]\n???\n"));
    common().writeEntry(kKey, 0);
    QCOMPARE(readFile(settingsPath()),
             QByteArray("# mine\n[Slideshow]\nDispTime=8\n\n[Common]\n???\nFontSize=0\n"));
}

void TestConfig::aFolderInPlaceOfTheFileIsLeftAlone()
{
    QVERIFY(QDir().mkpath(settingsPath() + QStringLiteral("/inside")));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("can't be written")));
    common().writeEntry(kKey, 4);
    QCOMPARE(common().readNumEntry(kKey, 2), 2);
    QVERIFY(QFileInfo(settingsPath() + QStringLiteral("/inside")).isDir());
}

void TestConfig::anUnreadableFileIsLeftAlone()
{
    // Larger than the limit: a file that can't be read completely must not be overwritten.
    const QByteArray big = "[Common]\nFontSize=1\n" + QByteArray(qsizetype(2) * 1024 * 1024, '#');
    QVERIFY(writeFile(settingsPath(), big));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("can't be written")));
    common().writeEntry(kKey, 4);
    QCOMPARE(readFile(settingsPath()), big);
}

void TestConfig::aMissingHomeOnlyLogs()
{
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/proc/none");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("can't be written")));
    common().writeEntry(kKey, 4);
    QCOMPARE(common().readNumEntry(kKey, 2), 2);
    qputenv("XDG_CONFIG_HOME", config);
}

void TestConfig::whatCannotBeWrittenKeepsTheOldFile_data()
{
    QTest::addColumn<bool>("isDiskFull");
    QTest::newRow("the disk is full") << true;
    QTest::newRow("the new file would be too large") << false;
}

void TestConfig::whatCannotBeWrittenKeepsTheOldFile()
{
    QFETCH(bool, isDiskFull);
    constexpr int kDiskKB = 4; // the old file takes them
    const QByteArray old = "[Common]\nFontSize=1\n";
    const QString folder = QFileInfo(settingsPath()).path();
    QVERIFY(QDir().mkpath(folder));
    const std::unique_ptr<SmallDisk> disk(isDiskFull ? new SmallDisk(folder, kDiskKB) : nullptr);
    QVERIFY(writeFile(settingsPath(), old));
    {
        const bool needsLimit = !isDiskFull || !disk->isMounted();
        const std::unique_ptr<FileSizeLimit> limit(needsLimit ? new FileSizeLimit(10) : nullptr);
        const QString reason = needsLimit ? QStringLiteral("File too large")
                                          : QStringLiteral("No space left on device");
        QTest::ignoreMessage(
            QtWarningMsg,
            qPrintable(
                QStringLiteral("Settings can't be written: %1: %2").arg(settingsPath(), reason)));
        common().writeEntry(kKey, 4);
    }
    QCOMPARE(readFile(settingsPath()), old);
    QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("lumivault.conf")));
    if (!isDiskFull) {
        common().writeEntry(kKey, 4);
        QCOMPARE(common().readNumEntry(kKey, 2), 4);
    }
}

LUMI_TEST(TestConfig)
#include "TestConfig.moc"
