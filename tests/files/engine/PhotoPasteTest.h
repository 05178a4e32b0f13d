// SPDX-License-Identifier: MIT
// The base of tests of failing pastes: a photo of several blocks, an empty folder "to" with its list,
// and enough free space.
#pragma once

#include "files/engine/FPVClipboard.h"
#include "items/FPVItemList.h"
#include "tests/files/engine/FileFixture.h"

#include <QByteArray>
#include <QObject>

#include <memory>

class PhotoPasteTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int kBlock = 8192;
    static constexpr int kBlocks = 4;

    /// Pastes a.jpg into "to".
    [[nodiscard]] lumi::PasteResult paste(bool cut);
    void isUntouched() const;

    std::unique_ptr<lumi::test::FileFixture> m_files;
    QByteArray m_photo;
    FPVClipboard m_clipboard;
    std::unique_ptr<FPVItemList> m_items;

private Q_SLOTS:
    void init();
    void cleanup();
};
