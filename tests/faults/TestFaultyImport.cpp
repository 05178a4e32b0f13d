// SPDX-License-Identifier: MIT
// An import with each call disturbed. The card is unchanged. Under the name of a photo there is a
// whole photo or nothing.
#include "files/engine/FPVFileTree.h"
#include "import/ImportRun.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"
#include "views/folderRoots.h"

#include <QDir>
#include <QTest>

#include <algorithm>

using lumi::ImportKind;
using lumi::test::Ending;
using lumi::test::Tree;

class TestFaultyImport : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {m_card, store()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return true; }

    int leastCalls() const override { return 60; }

private:
    [[nodiscard]] static QString store() { return lumi::photoStorePath(); }

    void makeCard();
    [[nodiscard]] QString judgeReport(const Ending &ending, const Tree &made) const;

    QString m_card;
    lumi::ImportTree m_tree;
    Tree m_before; ///< the card
    Tree m_source; ///< the files that an import copies
};

void TestFaultyImport::makeCard()
{
    m_card = path(QStringLiteral("card"));
    for (const char *name : {"/dcim/a.jpg", "/dcim/sub/b.mov"}) {
        lumi::test::writeBytes(m_card + QLatin1String(name), 40000);
    }
    lumi::test::writeBytes(m_card + QStringLiteral("/empty.jpg"), 0);
    QDir().mkpath(m_card + QStringLiteral("/folder"));
    FPVFileTree tree;
    FPVFileTree::setDirFilter(0x313);
    tree.walk(m_card, false, nullptr);
    m_tree = {FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles()};
    m_before = lumi::test::stateOf(m_card);
    m_source = lumi::test::importableTree(m_card);
}

void TestFaultyImport::prepare()
{
    if (m_card.isEmpty()) {
        makeCard();
    }
    QDir(store()).removeRecursively();
    QDir().mkpath(store());
}

int TestFaultyImport::job()
{
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [](int) {};
    callbacks.isCardPresent = [] {
        return true;
    };
    callbacks.fileFailed = [](const QString &file, ImportKind /*kind*/) {
        lumi::test::note(file);
    };
    lumi::ImportRun run(m_tree, callbacks);
    return static_cast<int>(run.run(QStringLiteral("new")));
}

QString TestFaultyImport::judge(const Ending &ending)
{
    if (lumi::test::stateOf(m_card) != m_before) {
        return QStringLiteral("the card has changed");
    }
    const Tree made = newTree(store() + QStringLiteral("/new"));
    for (auto it = made.begin(); it != made.end(); ++it) {
        if (it.value() != m_source.value(it.key())) {
            return it.key() + QStringLiteral(" is not whole");
        }
    }
    const auto isFolder = [](const QByteArray &entry) {
        return entry == "folder";
    };
    const auto folders = std::count_if(made.begin(), made.end(), isFolder);
    if (folders < made.size()
        && folders != std::count_if(m_source.begin(), m_source.end(), isFolder)) {
        return QStringLiteral("a file came before the last folder");
    }
    return ending.isKilled ? QString() : judgeReport(ending, made);
}

QString TestFaultyImport::judgeReport(const Ending &ending, const Tree &made) const
{
    // If even the removal of a partial copy fails, the report may say anything.
    const bool isDead = trouble().act == lumi::faults::Act::FailFrom;
    for (const QString &file : ending.notes) {
        if (!isDead && made.contains(file.mid(m_card.size() + 1))) {
            return file + QStringLiteral(" is there but was reported as failed");
        }
    }
    if (ending.result == 0 && made != m_source) {
        return QStringLiteral("reported as copied, but not all of it was");
    }
    return {};
}

LUMI_TEST(TestFaultyImport)
#include "TestFaultyImport.moc"
