// SPDX-License-Identifier: MIT
#include "tests/import/RunTest.h"

#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"

using lumi::ImportKind;

void RunTest::initTestCase()
{
    FPVFileTree::setDirFilter(0x313);
}

void RunTest::init()
{
    m_world = std::make_unique<lumi::test::BrowserWorld>();
    m_card = m_world->machine->sd;
    m_world->machine->insertCard(Slot::SD);
    m_isCardPresent = true;
    m_atStep = [](int) {};
    setCopyCancelled(false);
}

void RunTest::cleanup()
{
    m_world.reset();
}

ImportKind RunTest::importCard(const QString &name)
{
    m_steps.clear();
    m_failures.clear();
    FPVFileTree tree;
    tree.walk(m_card, false, nullptr);
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [this](int step) {
        m_steps.append(step);
        m_atStep(step);
    };
    callbacks.isCardPresent = [this] {
        return m_isCardPresent;
    };
    callbacks.fileFailed = [this](const QString &path, ImportKind kind) {
        m_failures.append({path, kind});
    };
    lumi::ImportRun run(
        {FPVFileTree::rootPrefix(), tree.folders(), tree.allFiles(), FPVFileTree::leftOut()},
        callbacks);
    const ImportKind kind = run.run(name);
    m_folderName = run.folderName();
    m_copied = run.copiedCount();
    return kind;
}
