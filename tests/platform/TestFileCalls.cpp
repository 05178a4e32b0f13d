// SPDX-License-Identifier: MIT
#include "platform/files/fileCalls.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <sys/stat.h>

using lumi::readSmallFile;
using lumi::test::writeFile;

class TestFileCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theContentIsRead_data();
    void theContentIsRead();
    void linksAreFollowed();
    void filesOfTheKernelAreRead();
    void largeFilesAreNotRead();
    void onlyRegularFilesAreOpened();
    void linksAndPipesAreNotRegular();

private:
    QString path(const char *name) const { return m_folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestFileCalls::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void TestFileCalls::theContentIsRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("text") << QByteArray("some text\n");
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("NUL bytes") << QByteArray("a\0b\0", 4);
    QTest::newRow("as much as is allowed") << QByteArray(qsizetype(1024) * 1024, 'x');
}

void TestFileCalls::theContentIsRead()
{
    QFETCH(QByteArray, content);
    QVERIFY(writeFile(path("file"), content));
    const std::optional<QByteArray> read = readSmallFile(path("file"));
    QVERIFY(read.has_value());
    QCOMPARE(*read, content);
}

void TestFileCalls::linksAreFollowed()
{
    QVERIFY(writeFile(path("file"), "1"));
    QVERIFY(QFile::link(path("file"), path("link")));
    QCOMPARE(readSmallFile(path("link")).value_or(QByteArray()), QByteArray("1"));
    QVERIFY(QFile::remove(path("file")));
    QVERIFY(!readSmallFile(path("link")).has_value());
}

/// The kernel reports a size of 0 for these files.
void TestFileCalls::filesOfTheKernelAreRead()
{
    for (const char *name : {"/proc/meminfo", "/proc/self/mountinfo"}) {
        QVERIFY2(!readSmallFile(QLatin1String(name)).value_or(QByteArray()).isEmpty(), name);
    }
}

void TestFileCalls::largeFilesAreNotRead()
{
    QVERIFY(writeFile(path("file"), QByteArray(qsizetype(1024) * 1024 + 1, 'x')));
    QVERIFY(!readSmallFile(path("file")).has_value());
}

/// A read of the pipe would wait for a writer. A read of the device would never end.
void TestFileCalls::onlyRegularFilesAreOpened()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QVERIFY(QFile::link(path("pipe"), path("link")));
    for (const QString &file :
         {QString(), path("none"), m_folder->path(), path("pipe"), path("link"),
          QStringLiteral("/dev/zero"), QStringLiteral("/dev/null")}) {
        QVERIFY2(!lumi::openRegular(file).isOpen(), qPrintable(file));
        QVERIFY2(!readSmallFile(file).has_value(), qPrintable(file));
    }
    QVERIFY(writeFile(path("file"), "1"));
    QVERIFY(lumi::openRegular(path("file")).isOpen());
}

void TestFileCalls::linksAndPipesAreNotRegular()
{
    QVERIFY(!lumi::isRegular(path("file")));
    QVERIFY(writeFile(path("file"), "1"));
    QVERIFY(lumi::isRegular(path("file")));
    QCOMPARE(::mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    QVERIFY(!lumi::isRegular(path("pipe")));
    QVERIFY(QFile::link(path("file"), path("link")));
    QVERIFY(!lumi::isRegular(path("link")));
}

LUMI_TEST(TestFileCalls)
#include "TestFileCalls.moc"
