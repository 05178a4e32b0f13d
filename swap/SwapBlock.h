// SPDX-License-Identifier: MIT
// One cached image or buffer: a file in the swap folder and its record. A block is used only while
// source file and swap file have their recorded times. Its key within its control is source name,
// param and kind. The destructor keeps the swap file.
// Format: the swap file is a plain JPEG in the image form, the raw bytes in the buffer form.
#pragma once

#include "swap/indexRecords.h"
#include "swap/stSwap.h"

#include <QDateTime>
#include <QString>

namespace lumi {
class IndexReader;
class SwapPlace;
} // namespace lumi

class SwapBlock
{
public:
    /// A new, still invalid block, to be filled by bWrite().
    SwapBlock(const QString &sourceName, const QString &swapPath, int param, signed char kind);

    /// Reads a block record. The block is valid if the source file, in the folder of its
    /// control, and the swap file both exist. The swap file of a vanished source is removed.
    /// A swap file outside the place is neither read nor removed. If the record can't be read,
    /// the index is in the failed state and the block invalid.
    SwapBlock(lumi::IndexReader &index, const QString &folder, const lumi::SwapPlace &place);

    /// Called once, right after construction. False, with the block invalid, if there is too
    /// little room on the disk or the file can't be written; a broken file is removed.
    [[nodiscard]] bool bWrite(stSwap &swap, QDateTime sourceTime);

    /// The time is the present one of the source file. False on a miss.
    [[nodiscard]] bool bRead(stSwap &swap, QDateTime sourceTime);

    /// What the index stores; validity is not stored.
    [[nodiscard]] lumi::BlockRecord record() const;

    [[nodiscard]] bool hasKey(const QString &name, int param, signed char kind) const
    {
        return m_param == param && m_kind == kind && m_sourceName == name;
    }

    [[nodiscard]] const QString &sourceName() const { return m_sourceName; }

    [[nodiscard]] const QString &swapPath() const { return m_swapPath; }

    /// The size that bSetSize() attached, -1 before.
    [[nodiscard]] int width() const { return m_width; }

    [[nodiscard]] int height() const { return m_height; }

    void setSize(int width, int height);

    [[nodiscard]] bool isValid() const { return m_valid; }

    void invalidate() { m_valid = false; }

    [[nodiscard]] signed char kind() const { return m_kind; }

private:
    bool writeImage(const QImage &image);
    bool writeBuffer(const stSwap &swap);
    bool readImage(QImage &image) const;
    bool readBuffer(stSwap &swap) const;

    QString m_sourceName;
    QString m_swapPath;
    int m_width = -1;
    int m_height = -1;
    QDateTime m_sourceTime;
    QDateTime m_swapTime;
    bool m_valid = false;
    int m_param = 0;
    signed char m_kind = 0;
};
