// SPDX-License-Identifier: MIT
#include "tests/files/engine/PasteTest.h"

#include "files/engine/FPVFileTree.h"
#include "tests/support/nameList.h"

using lumi::test::FakeMachine;
using lumi::test::FileFixture;

void PasteTest::init()
{
    m_files = std::make_unique<FileFixture>();
    m_files->makeFolder(QStringLiteral("to"));
    m_machine = FakeMachine::install();
    m_clipboard = FPVClipboard();
    FPVFileTree::resetState();
}

void PasteTest::cleanup()
{
    Machine::install(nullptr);
    m_files.reset();
    FPVFileTree::resetState();
}

lumi::PasteResult PasteTest::paste(const char *names, bool cut, const char *folder)
{
    QStringList paths;
    for (const QString &name : lumi::test::list(names)) {
        paths.append(m_files->path(name));
    }
    m_clipboard.take(paths, cut);
    return m_clipboard.paste(m_files->path(QLatin1String(folder)), nullptr);
}
