// SPDX-License-Identifier: MIT
// The base of tests of a paste: a private folder with an empty folder "to", enough free space, and a
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
    /// @param names to copy or cut, separated by blanks
    [[nodiscard]] lumi::PasteResult paste(const char *names, bool cut, const char *folder = "to");

    std::unique_ptr<lumi::test::FileFixture> m_files;
    lumi::test::FakeMachine *m_machine = nullptr;
    FPVClipboard m_clipboard;

private Q_SLOTS:
    void init();
    void cleanup();
};
