// SPDX-License-Identifier: MIT
// Accessors for tags and lists of tags in tests.
#pragma once

#include "exif/tag/ExifTagList.h"
#include "exif/tag/FPVExifTagBytes.h"

#include <QByteArray>
#include <QList>

namespace lumi::test {

/// The bytes of a document's tag, or a text that no test expects.
[[nodiscard]] inline QByteArray bytesOf(const FPVExifTag *tag)
{
    const auto *bytes = dynamic_cast<const FPVExifTagBytes *>(tag);
    return bytes ? QByteArray(bytes->data(), bytes->size()) : QByteArray("no such tag");
}

[[nodiscard]] inline QList<int> numbersOf(const ExifTagList &list)
{
    QList<int> numbers;
    for (const FPVExifTag *tag : list) {
        numbers.append(tag->tag());
    }
    return numbers;
}

} // namespace lumi::test
