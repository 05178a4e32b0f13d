// SPDX-License-Identifier: MIT
// A tag with all its values as raw bytes. Numbers are in host order.
// Owns: a copy of the bytes.
#pragma once

#include "exif/tag/FPVExifTag.h"

#include <memory>
#include <span>

class FPVExifTagBytes : public FPVExifTag
{
public:
    /// Copies value: count times typeSize(type) bytes, or fewer if the reader cut a large value.
    FPVExifTagBytes(quint16 tag, quint16 type, quint32 count, std::span<const char> value);

    /// The first four bytes as a number. Missing bytes are 0.
    [[nodiscard]] int intValue() const override;
    /// The bytes up to the first NUL as UTF-8.
    [[nodiscard]] QString text() const override;
    /// size() bytes without a closing NUL; never null.
    [[nodiscard]] const char *data() const override;

    /// The number of bytes in data(). count() comes from the file and can be larger.
    [[nodiscard]] qsizetype size() const { return m_size; }

private:
    std::unique_ptr<char[]> m_bytes;
    qsizetype m_size;
};
