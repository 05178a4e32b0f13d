// SPDX-License-Identifier: MIT
// Asks the running program to end by a signal.
#include "tests/app/ProgramTest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "tests/support/testFiles.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>
#include <QThread>

#include <csignal>
#include <cstdlib>
#include <random>

namespace {

constexpr int kMoments = 20;
constexpr int kFiles = 40;
constexpr int kFileBytes = 300000;

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

QByteArray noise()
{
    QByteArray bytes(kFileBytes, '\0');
    std::minstd_rand dice; // NOLINT(cert-msc51-cpp): the same bytes in each run
    for (char &byte : bytes) {
        byte = static_cast<char>(dice());
    }
    return bytes;
}

} // namespace

class TestQuitting : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void everySignalIsTheNormalEnd_data();
    void everySignalIsTheNormalEnd();
    void openWindowsAreClosed_data();
    void openWindowsAreClosed();
    void changedOptionsAreDiscarded();
    void aLostDisplayKeepsTheStore();
    void anImportCanEndAtAnyMoment();

private:
    void terminate(QProcess *process, int signal = SIGTERM) const;
    void makeCard(const QByteArray &photo);
    /// Lets an import run to this moment, and ends the program. False if nothing was left to copy.
    bool endImportAt(int moment, const QByteArray &photo);

    QString store() const { return at(QStringLiteral("Documents/Photo_Files")); }

    /// The one folder that the import has made, or an empty string.
    QString importFolder() const
    {
        const QStringList names = QDir(store()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return names.isEmpty() ? QString() : store() + QLatin1Char('/') + names.constFirst();
    }
};

/// Ends the program and checks that it was the normal end.
void TestQuitting::terminate(QProcess *process, int signal) const
{
    QCOMPARE(::kill(static_cast<pid_t>(process->processId()), signal), 0);
    const Outcome outcome = outcomeOf(process);
    QVERIFY(outcome.ended);
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, 0);
    QVERIFY(!QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
    QVERIFY(QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.bin"))));
}

void TestQuitting::everySignalIsTheNormalEnd_data()
{
    lumi::test::columns<int>();
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestQuitting::everySignalIsTheNormalEnd()
{
    const auto [signal] = lumi::test::row<int>();
    const std::unique_ptr<QProcess> process = start(QStringLiteral("run"));
    QVERIFY(waitFor(process.get(), "running"));
    terminate(process.get(), signal);
}

void TestQuitting::openWindowsAreClosed_data()
{
    lumi::test::columns<QString, QByteArray>();
    QTest::newRow("the help") << "menu_option_Help" << QByteArray("QDialog");
    QTest::newRow("the version") << "menu_option_Version" << QByteArray("HkAboutDialog");
    QTest::newRow("the options of the slideshow")
        << "menu_disp_Slideshow_Setting" << QByteArray("DialogSlideshow");
    QTest::newRow("the slideshow") << "menu_disp_Slideshow_Execution" << QByteArray("SlideShow");
    // The slideshow leaves the cursor on the photo.
    QTest::newRow("the full view")
        << "menu_disp_Slideshow_Execution,menu_disp_DispAll" << QByteArray("FPVPictureScrollView");
}

void TestQuitting::openWindowsAreClosed()
{
    const auto [opened, window] = lumi::test::row<QString, QByteArray>();
    QVERIFY(QDir().mkpath(store()));
    QImage photo(320, 240, QImage::Format_RGB32);
    photo.fill(Qt::cyan);
    QVERIFY(photo.save(store() + QStringLiteral("/a.jpg")));
    const std::unique_ptr<QProcess> process = start(QStringLiteral("open:") + opened);
    QVERIFY(waitFor(process.get(), "modal: " + window));
    terminate(process.get());
}

void TestQuitting::changedOptionsAreDiscarded()
{
    m_environment.insert(QStringLiteral("LUMI_DRIVER_CHANGE"), QStringLiteral("1"));
    const std::unique_ptr<QProcess> process
        = start(QStringLiteral("open:menu_disp_Slideshow_Setting"));
    QVERIFY(waitFor(process.get(), "changed"));
    terminate(process.get());
}

void TestQuitting::aLostDisplayKeepsTheStore()
{
    const Outcome outcome = run(QStringLiteral("lost"));
    QCOMPARE(outcome.how, QProcess::NormalExit);
    QCOMPARE(outcome.status, EXIT_FAILURE);
    QVERIFY(!QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.chk"))));
    QVERIFY(QFile::exists(inSwapFolder(QStringLiteral(".SwapMng.bin"))));
}

void TestQuitting::makeCard(const QByteArray &photo)
{
    for (int i = 0; i < kFiles; ++i) {
        QVERIFY(lumi::test::writeFile(at(QStringLiteral("card/%1.jpg").arg(i)), photo));
    }
    QVERIFY(
        lumi::test::writeFile(at(QStringLiteral("machine.ini")), "[Mounts]\nCF=none\nSD=card\n"));
    m_environment.insert(QStringLiteral("LUMIVAULT_MACHINE"), at(QStringLiteral("machine.ini")));
}

bool TestQuitting::endImportAt(int moment, const QByteArray &photo)
{
    static const QByteArrayList kDialogs{"modal: MyDialogWait", "box: Search Result",
                                         "modal: QDialog", "modal: MyDialogProgressBar"};
    const std::unique_ptr<QProcess> process = start(QStringLiteral("import"));
    const auto files = static_cast<int>(moment - kDialogs.size()) * 2;
    const bool isReached = moment < kDialogs.size()
        ? waitFor(process.get(), kDialogs[moment])
        : QTest::qWaitFor(
            [this, files] {
                return !importFolder().isEmpty() && filesIn(importFolder()).size() > files;
            },
            kTimeLimitMs);
    if (!isReached) {
        qFatal("moment %d is not reached", moment);
    }
    terminate(process.get());
    const QString folder = importFolder();
    const QStringList names = folder.isEmpty() ? QStringList() : filesIn(folder);
    for (const QString &name : names) {
        const bool isWhole = QFile::exists(at(QStringLiteral("card/") + name))
            && lumi::test::readFile(folder + QLatin1Char('/') + name) == photo;
        QTest::qVerify(isWhole, "is whole", qPrintable(name), __FILE__, __LINE__);
    }
    if (!folder.isEmpty()) {
        QDir(folder).removeRecursively();
    }
    return names.size() < kFiles;
}

void TestQuitting::anImportCanEndAtAnyMoment()
{
    const QByteArray photo = noise();
    makeCard(photo);
    int cut = 0;
    for (int moment = 0; moment < kMoments; ++moment) {
        cut += endImportAt(moment, photo) ? 1 : 0;
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("moment %1").arg(moment)));
        }
    }
    QVERIFY2(cut > kMoments / 2, "most imports came to their own end");
    const Outcome next = run(QStringLiteral("close"));
    QCOMPARE(next.windows, QStringList{QStringLiteral("window: Lumi Vault")});
    QCOMPARE(ownWarnings(next), QByteArrayList());
}

LUMI_TEST(TestQuitting)
#include "TestQuitting.moc"
