// SPDX-License-Identifier: MIT
// The base of tests of a paste: a private folder with an empty "to", a machine with room, and a
// clipboard.
#pragma once

#include "files/engine/FPVClipboard.h"
#include "tests/files/engine/FileFixture.h"
#include "tests/support/FakeMachine.h"

#include <QObject>

#include <memory>

class PasteTest : public QObject
{
    Q_OBJECT

protected:
    /// Names of what is copied or cut, with blanks between them.
    [[nodiscard]] lumi::PasteResult paste(const char *names, bool cut, const char *folder = "to");

    std::unique_ptr<lumi::test::FileFixture> m_files;
    lumi::test::FakeMachine *m_machine = nullptr;
    FPVClipboard m_clipboard;

private Q_SLOTS:
    void init();
    void cleanup();
};
