// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"
#include "app/common/shutDownFlag.h"
#include "app/runProgram.h"
#include "platform/QPEApplication.h"
#include "swap/swapStore.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <functional>
#include <memory>

class TestRunProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void lifeOfTheProcess();
    void orderOfTheEnd();
    void aReadOnlyStoreDoesNotStopTheStart();
    void windowStandsOnThePanel();

private:
    static MainWindow *window();

    QString swapFile(const char *name) const
    {
        return m_home->filePath(QStringLiteral("Documents/Photo_Files/.photo_swp/")
                                + QLatin1String(name));
    }

    /// Runs the program. Its event loop calls the visitor and then ends with status 3.
    int run(const std::function<void(MainWindow *)> &visitor);

    std::unique_ptr<QTemporaryDir> m_home;
    QByteArray m_oldHome;
};

void TestRunProgram::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    QVERIFY(m_home->isValid());
    m_oldHome = qgetenv("HOME");
    qputenv("HOME", m_home->path().toLocal8Bit());
    lumi::test::FakeMachine::install();
}

void TestRunProgram::cleanup()
{
    qputenv("HOME", m_oldHome);
    Machine::install(nullptr);
    QDir::setCurrent(QDir::rootPath());
    lumi::setShutDownFlag(false);
    m_home.reset();
}

MainWindow *TestRunProgram::window()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *found = qobject_cast<MainWindow *>(widget)) {
            return found;
        }
    }
    return nullptr;
}

int TestRunProgram::run(const std::function<void(MainWindow *)> &visitor)
{
    bool visited = false;
    QTimer poll;
    poll.callOnTimeout([&] {
        MainWindow *found = window();
        const bool inTheLoop = QThread::currentThread()->loopLevel() > 0;
        if (!visited && inTheLoop && found != nullptr && found->isVisible()) {
            visited = true;
            visitor(found);
            QCoreApplication::exit(3);
        }
    });
    poll.start(5);
    const int status = lumi::runProgram(*qobject_cast<QPEApplication *>(qApp));
    return visited ? status : -1;
}

void TestRunProgram::lifeOfTheProcess()
{
    QCOMPARE(swapSystem(), nullptr);
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    const int status = run([this](MainWindow *shown) {
        QVERIFY(swapSystem() != nullptr);
        QVERIFY(QFile::exists(swapFile(".SwapMng.chk")));
        QVERIFY(!QFile::exists(swapFile(".SwapMng.bin")));
        QVERIFY(shown->currentForm() != nullptr);
        QCOMPARE(shown->currentForm()->formId(), 0);
        QVERIFY(shown->currentForm()->isVisible());
    });
    QCOMPARE(status, 3);
    QCOMPARE(swapSystem(), nullptr);
    QVERIFY(window() == nullptr);
    QVERIFY(!QFile::exists(swapFile(".SwapMng.chk")));
    QVERIFY(QFile::exists(swapFile(".SwapMng.bin")));
}

void TestRunProgram::orderOfTheEnd()
{
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    bool markerAtFormsEnd = false;
    bool storeAtFormsEnd = false;
    const int status = run([&](MainWindow *shown) {
        connect(shown->currentForm(), &QObject::destroyed, this, [&] {
            markerAtFormsEnd = QFile::exists(swapFile(".SwapMng.chk"));
            storeAtFormsEnd = swapSystem() != nullptr;
        });
    });
    QCOMPARE(status, 3);
    QVERIFY(markerAtFormsEnd);
    QVERIFY(storeAtFormsEnd);
}

/// The photo store can be read, but nothing can be made in it.
void TestRunProgram::aReadOnlyStoreDoesNotStopTheStart()
{
    const QString store = m_home->filePath(QStringLiteral("Documents/Photo_Files"));
    QVERIFY(QDir().mkpath(store));
    constexpr auto kReadOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup
        | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(store, kReadOnly));
    QVERIFY(QFile::setPermissions(m_home->path(), kReadOnly | QFile::WriteOwner));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^Error SwapSystem\\(")));
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitWrite Not Initialze File");
    bool shown = false;
    {
        const lumi::test::OrdinaryUser user;
        QCOMPARE(run([&shown](MainWindow *found) {
                     shown = found->currentForm()->isVisible();
                 }),
                 3);
    }
    QVERIFY(shown);
    QVERIFY(QDir(store).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

void TestRunProgram::windowStandsOnThePanel()
{
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    QCOMPARE(run([](MainWindow *found) {
                 QTRY_COMPARE(found->frameGeometry().size(), QSize(640, 480));
             }),
             3);
}

LUMI_TEST(TestRunProgram)
#include "TestRunProgram.moc"
