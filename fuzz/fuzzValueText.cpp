// SPDX-License-Identifier: MIT
// A value of any type and length under the tag of every row: its text must end, and must not be
// longer than the bytes allow. The photo also has the tags that a position and an altitude need
// besides their fractions.
// Format: two bytes of type, two of count, then the value.
#include "exif/text/FPVExifFields.h"
#include "exif/text/valueText.h"
#include "fuzz/FuzzInput.h"
#include "tests/support/ExifBuilder.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

QString referencePhoto()
{
    using enum ExifListKind;
    lumi::test::ExifBuilder photo;
    photo.ascii(Gps, 0x0001, "N").ascii(Gps, 0x0003, "E");
    photo.value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'));
    const QByteArray bytes = photo.file();
    return lumi::fuzz::inputFile(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                 static_cast<std::size_t>(bytes.size()), "photo.jpg");
}

/// Whether any fraction gets a text. Otherwise the harness would test nothing.
bool showsFractions(const FPVExifFields &photo)
{
    constexpr quint32 kFractions[] = {35, 1, 40, 1, 20, 1};
    int shown = 0;
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        for (int i = 0; i < group.rowCount; ++i) {
            const bool isGps = group.rows[i].list == ExifListKind::Gps;
            const FPVExifTagBytes tag(
                static_cast<quint16>(group.rows[i].tag), 5, 3,
                {reinterpret_cast<const char *>(kFractions), sizeof kFractions});
            const bool hasText = !lumi::valueText({tag, group.rows[i], photo, true}).isEmpty();
            shown += isGps && hasText ? 1 : 0;
        }
    }
    return shown == 3;
}

void checkLength(const ExifFieldRow &row, const FPVExifTagBytes &tag, const FPVExifFields &photo)
{
    constexpr qsizetype kLongestNumber = 64;
    constexpr qsizetype kLongestPerByte = 4; // "-32768," for two
    const QString text = lumi::valueText({tag, row, photo, true});
    if (text.size() > kLongestNumber + kLongestPerByte * tag.size()) {
        std::abort();
    }
}

} // namespace

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t kHead = 4;
    if (size < kHead) {
        return 0;
    }
    quint16 head[2] = {};
    std::memcpy(head, data, kHead);
    const std::span<const char> value(reinterpret_cast<const char *>(data) + kHead, size - kHead);
    static const FPVExifFields kPhoto(referencePhoto());
    static const bool kShowsFractions = showsFractions(kPhoto);
    if (!kShowsFractions) {
        std::abort();
    }
    for (const ExifFieldGroup &group : lumi::exifFieldGroups()) {
        for (int i = 0; i < group.rowCount; ++i) {
            const ExifFieldRow &row = group.rows[i];
            const FPVExifTagBytes tag(static_cast<quint16>(row.tag), head[0], head[1], value);
            checkLength(row, tag, kPhoto);
        }
    }
    return 0;
}
