// SPDX-License-Identifier: MIT
// A paste of cut photos with each call disturbed. Each photo is whole in its old or in its new
// place. No place has a part of a photo.
#include "files/engine/FPVClipboard.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

using lumi::test::Ending;
using lumi::test::Tree;

class TestFaultyCut : public FaultTest
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

    Tree m_source; ///< before the paste
    Tree m_target; ///< after it
};

void TestFaultyCut::prepare()
{
    QDir(from()).removeRecursively();
    QDir(to()).removeRecursively();
    lumi::test::writeBytes(from() + QStringLiteral("/a.jpg"), 20000);
    lumi::test::writeBytes(from() + QStringLiteral("/b.jpg"), 9000);
    make(QStringLiteral("to/a.jpg"), "mine");
    m_source = lumi::test::treeOf(from());
    m_target = {{QStringLiteral("a.jpg"), "filemine"},
                {QStringLiteral("a-1.jpg"), m_source.value(QStringLiteral("a.jpg"))},
                {QStringLiteral("b.jpg"), m_source.value(QStringLiteral("b.jpg"))}};
}

int TestFaultyCut::job()
{
    FPVClipboard clipboard;
    clipboard.take({from() + QStringLiteral("/a.jpg"), from() + QStringLiteral("/b.jpg")}, true);
    return static_cast<int>(clipboard.paste(to(), nullptr));
}

QString TestFaultyCut::judge(const Ending &ending)
{
    const Tree left = newTree(from());
    const Tree made = newTree(to());
    for (auto it = left.begin(); it != left.end(); ++it) {
        if (it.value() != m_source.value(it.key())) {
            return QStringLiteral("the source %1 is not whole").arg(it.key());
        }
    }
    for (auto it = made.begin(); it != made.end(); ++it) {
        if (it.value() != m_target.value(it.key())) {
            return it.key() + QStringLiteral(" is not whole");
        }
    }
    if (!made.contains(QStringLiteral("a.jpg"))) {
        return QStringLiteral("the file that was there is gone");
    }
    for (const char *name : {"a.jpg", "b.jpg"}) {
        const QString source = QLatin1String(name);
        const QString target
            = source == QLatin1String("a.jpg") ? QStringLiteral("a-1.jpg") : source;
        if (!left.contains(source) && !made.contains(target)) {
            return source + QStringLiteral(" is lost");
        }
    }
    const bool isDone = !ending.isKilled && ending.result == 0;
    return isDone && (!left.isEmpty() || made != m_target)
        ? QStringLiteral("reported as moved, but not all of it was")
        : QString();
}

LUMI_TEST(TestFaultyCut)
#include "TestFaultyCut.moc"
