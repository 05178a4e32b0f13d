// SPDX-License-Identifier: MIT
// The base of tests of copyFile(): a private folder, a photo of several blocks, and a callback that
// stops the copy after a given number of blocks.
#pragma once

#include "tests/files/engine/FileFixture.h"

#include <QObject>

#include <memory>

class CopyTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int kBlock = 16384;
    static constexpr int kBlocks = 5;

    [[nodiscard]] int copy(const QString &from, const QString &to, bool failIfExists = true) const;
    /// A callback of copyFile(): false from call number s_stopAfter on.
    static bool stopLater();

    static int s_askedTimes;
    static int s_stopAfter;
    std::unique_ptr<lumi::test::FileFixture> m_files;
    QByteArray m_photo;

private Q_SLOTS:
    void init();
    void cleanup();
};
