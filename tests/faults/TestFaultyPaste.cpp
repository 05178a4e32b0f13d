// SPDX-License-Identifier: MIT
// A paste of copied photos with each call disturbed. The sources and existing files are unchanged.
// Under the name of a copy there is a whole copy or nothing.
#include "files/engine/FPVClipboard.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

using lumi::test::Ending;
using lumi::test::Tree;

class TestFaultyPaste : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {from(), to()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return true; }

    int leastCalls() const override { return 50; }

private:
    [[nodiscard]] QString from() const { return path(QStringLiteral("from")); }

    [[nodiscard]] QString to() const { return path(QStringLiteral("to")); }

    Tree m_before; ///< the sources
    Tree m_whole;  ///< the target after a paste
};

void TestFaultyPaste::prepare()
{
    if (m_before.isEmpty()) {
        lumi::test::writeBytes(from() + QStringLiteral("/a.jpg"), 20000);
        lumi::test::writeBytes(from() + QStringLiteral("/b.jpg"), 0);
        lumi::test::writeBytes(from() + QStringLiteral("/trip/c.jpg"), 9000);
        m_before = lumi::test::stateOf(from());
        const Tree source = lumi::test::treeOf(from());
        m_whole = source;
        m_whole[QStringLiteral("a-1.jpg")] = source.value(QStringLiteral("a.jpg"));
        m_whole[QStringLiteral("a.jpg")] = "filemine";
    }
    QDir(to()).removeRecursively();
    make(QStringLiteral("to/a.jpg"), "mine");
}

int TestFaultyPaste::job()
{
    FPVClipboard clipboard;
    clipboard.take({from() + QStringLiteral("/a.jpg"), from() + QStringLiteral("/b.jpg"),
                    from() + QStringLiteral("/trip")},
                   false);
    return static_cast<int>(clipboard.paste(to(), nullptr));
}

QString TestFaultyPaste::judge(const Ending &ending)
{
    if (lumi::test::stateOf(from()) != m_before) {
        return QStringLiteral("the sources have changed");
    }
    const Tree made = newTree(to());
    for (auto it = made.begin(); it != made.end(); ++it) {
        if (it.value() != m_whole.value(it.key())) {
            return it.key() + QStringLiteral(" is not whole");
        }
    }
    if (!made.contains(QStringLiteral("a.jpg"))) {
        return QStringLiteral("the file that was there is gone");
    }
    // Entries of a folder that can't be listed are only logged.
    const bool isListing = ending.call.startsWith("opendir ") || ending.call.startsWith("readdir ")
        || ending.call.startsWith("lstat") || ending.call.startsWith("access ");
    const bool isDone = !ending.isKilled && ending.result == 0 && !isListing;
    return isDone && made != m_whole ? QStringLiteral("reported as copied, but not all of it was")
                                     : QString();
}

LUMI_TEST(TestFaultyPaste)
#include "TestFaultyPaste.moc"
