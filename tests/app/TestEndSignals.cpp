// SPDX-License-Identifier: MIT
// What a system's wish that the program go does to an import: nothing half done is left.
#include "app/MainWindow.h"
#include "app/runProgram.h"
#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "import/FormImport.h"
#include "platform/QPEApplication.h"
#include "swap/swapStore.h"
#include "tests/import/cardTree.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <csignal>
#include <functional>
#include <memory>

using lumi::test::DialogDriver;
using lumi::test::Tree;

namespace {

constexpr int kLookMs = 5;
constexpr qsizetype kFileBytes = 60000;

} // namespace

class TestEndSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void underADialogOfAnImport_data();
    void underADialogOfAnImport();
    void inTheMiddleOfAFile_data();
    void inTheMiddleOfAFile();

private:
    int runAnImport();
    /// Once, as soon as a part of b.jpg is there.
    void whileBIsCopied(const std::function<void()> &deed);

    QString store() const { return m_home->filePath(QStringLiteral("Documents/Photo_Files")); }

    QString target() const { return store() + QStringLiteral("/trip"); }

    std::unique_ptr<QTemporaryDir> m_home;
    QByteArray m_oldHome;
    lumi::test::FakeMachine *m_machine = nullptr;
    std::unique_ptr<DialogDriver> m_driver;
    Tree m_card;
};

void TestEndSignals::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_oldHome = qgetenv("HOME");
    qputenv("HOME", m_home->path().toLocal8Bit());
    m_machine = lumi::test::FakeMachine::install();
    m_machine->insertCard(Slot::SD);
    for (const char *name : {"/a.jpg", "/b.jpg", "/c.jpg"}) {
        lumi::test::writeBytes(m_machine->sd + QLatin1String(name), kFileBytes);
    }
    m_card = lumi::test::stateOf(m_machine->sd);
    m_driver = std::make_unique<DialogDriver>();
    // Whoever runs the tests in the background may have taught them to ignore these.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGHUP, SIG_DFL);
}

void TestEndSignals::cleanup()
{
    QCOMPARE(m_driver->unused(), 0);
    QCOMPARE(lumi::test::stateOf(m_machine->sd), m_card);
    QVERIFY(swapSystem() == nullptr);
    // It was an end like any other.
    QVERIFY(!QFile::exists(store() + QStringLiteral("/.photo_swp/.SwapMng.chk")));
    QVERIFY(QFile::exists(store() + QStringLiteral("/.photo_swp/.SwapMng.bin")));
    m_driver.reset();
    Machine::install(nullptr);
    FPVFileTree::resetState();
    setCopyCancelled(false);
    qputenv("HOME", m_oldHome);
    QDir::setCurrent(QDir::rootPath());
    m_home.reset();
}

/// Gives the status of the program, or -1 if the import was never begun.
int TestEndSignals::runAnImport()
{
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    bool begun = false;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [this, &poll, &begun] {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            auto *window = qobject_cast<MainWindow *>(widget);
            if (window == nullptr || !window->isVisible()
                || QThread::currentThread()->loopLevel() == 0) {
                continue;
            }
            poll.stop();
            begun = true;
            window->changeForm(FormImport::kFormId, QString());
            qobject_cast<FormImport *>(window->currentForm())->startImport(m_machine->sd);
            return;
        }
    });
    poll.start(kLookMs);
    const int status = lumi::runProgram(*qobject_cast<QPEApplication *>(qApp));
    return begun ? status : -1;
}

void TestEndSignals::whileBIsCopied(const std::function<void()> &deed)
{
    auto *timer = new QTimer(m_driver.get());
    connect(timer, &QTimer::timeout, this, [this, timer, deed] {
        if (QFileInfo(target() + QStringLiteral("/b.jpg")).size() > 0) {
            timer->stop();
            deed();
        }
    });
    timer->start(0);
}

void TestEndSignals::underADialogOfAnImport_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<bool>("made");
    QTest::newRow("in the search") << QStringLiteral("MyDialogWait") << false;
    QTest::newRow("at the question") << QStringLiteral("Search Result") << false;
    QTest::newRow("at the name") << QStringLiteral("New Folder") << false;
    QTest::newRow("at the last box") << QStringLiteral("Done") << true;
}

void TestEndSignals::underADialogOfAnImport()
{
    QFETCH(QString, dialog);
    QFETCH(bool, made);
    m_driver->expect(dialog, [](QDialog *) {
        std::raise(SIGTERM);
    });
    QCOMPARE(runAnImport(), 0);
    const QStringList folders = QDir(store()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    QCOMPARE(folders.size(), qsizetype(made ? 1 : 0));
    if (made) {
        QCOMPARE(lumi::test::treeOf(store() + QLatin1Char('/') + folders.constFirst()),
                 lumi::test::importableTree(m_machine->sd));
    }
}

void TestEndSignals::inTheMiddleOfAFile_data()
{
    QTest::addColumn<QList<int>>("signals");
    QTest::newRow("SIGTERM") << QList<int>{SIGTERM};
    QTest::newRow("SIGINT") << QList<int>{SIGINT};
    QTest::newRow("SIGHUP") << QList<int>{SIGHUP};
    QTest::newRow("all at once") << QList<int>{SIGHUP, SIGTERM, SIGTERM, SIGINT};
}

void TestEndSignals::inTheMiddleOfAFile()
{
    QFETCH(QList<int>, signals);
    m_driver->expect(QStringLiteral("New Folder"), [](QDialog *dialog) {
        dialog->findChild<QLineEdit *>()->setText(QStringLiteral("trip"));
        dialog->accept();
    });
    whileBIsCopied([signals] {
        for (const int signal : signals) {
            std::raise(signal);
        }
    });
    QCOMPARE(runAnImport(), 0);
    Tree expected = lumi::test::importableTree(m_machine->sd);
    expected.remove(QStringLiteral("b.jpg"));
    expected.remove(QStringLiteral("c.jpg"));
    QCOMPARE(lumi::test::treeOf(target()), expected);
}

LUMI_TEST(TestEndSignals)
#include "TestEndSignals.moc"
