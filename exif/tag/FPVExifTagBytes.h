// SPDX-License-Identifier: MIT
// A tag with its value kept as raw bytes, all values of it. Numbers among them are in host
// order, whatever the order of the file they came from.
// Owns: a copy of the bytes.
#pragma once

#include "exif/tag/FPVExifTag.h"

#include <memory>
#include <span>

class FPVExifTagBytes : public FPVExifTag
{
public:
    /// Copies value. It is count times typeSize(type) bytes long, or shorter where a reader
    /// takes only the beginning of a large value.
    FPVExifTagBytes(quint16 tag, quint16 type, quint32 count, std::span<const char> value);

    /// The first four bytes over a zeroed number; with fewer bytes, those.
    [[nodiscard]] int intValue() const override;
    /// The bytes up to the first NUL as UTF-8.
    [[nodiscard]] QString text() const override;
    /// size() bytes without a closing NUL; never null.
    [[nodiscard]] const char *data() const override;

    /// How many bytes data() has. Trust this, not count().
    [[nodiscard]] qsizetype size() const { return m_size; }

private:
    std::unique_ptr<char[]> m_bytes;
    qsizetype m_size;
};
