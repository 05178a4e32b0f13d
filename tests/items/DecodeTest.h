// SPDX-License-Identifier: MIT
// The base of tests of screen decodes: one photo in a private folder, a machine with adjustable
// free memory, and helpers.
#pragma once

#include "items/FPVItemJpeg.h"
#include "tests/items/JpegMaker.h"
#include "tests/support/FakeMachine.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

namespace lumi::test {

inline constexpr int kKeptBackKB = 2048; // never counted as free

/// An item with its signals watched.
struct Watched
{
    explicit Watched(const QString &path);
    [[nodiscard]] bool waitForTheEnd() const;

    std::unique_ptr<FPVItemJpeg> item;
    QSignalSpy updates;
    QSignalSpy completes;
};

bool start(FPVItemJpeg *item, QSize *request = nullptr, int depth = 32);

/// Decodes all slices and pieces without the pauses between them.
void decodeOn(FPVItemJpeg *item);

/// Long enough for several slices.
void waitForSlices();

/// Makes the folder and the machine for each test, and checks that no decompressor is left.
class DecodeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

protected:
    QString photo(const JpegKind &kind) const;
    [[nodiscard]] QString file(const QByteArray &bytes) const;

    [[nodiscard]] FakeMachine *machine() const { return m_machine; }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    FakeMachine *m_machine = nullptr;
};

} // namespace lumi::test
