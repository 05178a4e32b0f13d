// SPDX-License-Identifier: MIT
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "views/folderRoots.h"

#include <QTest>

using lumi::test::FakeMachine;

/// The folders in which Backspace does nothing.
class TestFolderRoots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rootsAreComparedExactly();
};

void TestFolderRoots::rootsAreComparedExactly()
{
    const FakeMachine *machine = FakeMachine::install();
    const QStringList roots{lumi::photoStorePath(), machine->mountPoint(Slot::CF),
                            machine->mountPoint(Slot::SD)};
    for (const QString &root : roots) {
        QVERIFY(!root.isEmpty());
        QVERIFY2(lumi::isFolderRoot(root), qPrintable(root));
        for (const char *end : {"/", "/.", "/dcim", "/dcim/..", "x"}) {
            const QString path = root + QLatin1String(end);
            QVERIFY2(!lumi::isFolderRoot(path), qPrintable(path));
        }
        QVERIFY(!lumi::isFolderRoot(root.chopped(1)));
    }
    QVERIFY(!lumi::isFolderRoot(QString()));
    QVERIFY(!lumi::isFolderRoot(QStringLiteral("/")));
    Machine::install(nullptr);
}

LUMI_TEST(TestFolderRoots)
#include "TestFolderRoots.moc"
