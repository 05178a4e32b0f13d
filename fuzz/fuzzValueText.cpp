// SPDX-License-Identifier: MIT
// A value of any type and length under the tag of every row: its text must end, and must not be
// longer than so many bytes can make it.
// Format: two bytes of type, two of count, then the value.
#include "exif/FPVExifFields.h"
#include "exif/valueText.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t kHead = 4;
    constexpr qsizetype kLongestNumber = 64;
    constexpr qsizetype kLongestPerByte = 4; // "-32768," for two
    if (size < kHead) {
        return 0;
    }
    quint16 head[2] = {};
    std::memcpy(head, data, kHead);
    const std::span<const char> value(reinterpret_cast<const char *>(data) + kHead, size - kHead);
    static const FPVExifFields kNoPhoto((QString()));
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        for (int i = 0; i < group.rowCount; ++i) {
            const ExifFieldRow &row = group.rows[i];
            const FPVExifTagBytes tag(static_cast<quint16>(row.tag), head[0], head[1], value);
            const QString text = lumi::valueText({tag, row, kNoPhoto, true});
            if (text.size() > kLongestNumber + kLongestPerByte * tag.size()) {
                std::abort();
            }
        }
    }
    return 0;
}
