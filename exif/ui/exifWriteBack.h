// SPDX-License-Identifier: MIT
// How the texts of the editor's fields become tags. All fields are written back, edited or
// not; blanks round a text do not count, and an empty text takes its tag away.
// Format: texts are Latin-1 with a closing NUL, the audio file's name a field of 13 bytes. The
// comment is "UNICODE", NUL and UTF-8 without a closing NUL. Author and compilation share a
// tag: author, NUL, compilation, NUL, with a blank for a missing author.
#pragma once

#include "exif/ui/exifEditRules.h"

#include <memory>
#include <vector>

class FPVExifWriter;

namespace lumi {

/// A tag to be set, or to be removed where value is null.
struct TagOperation
{
    quint16 tag = 0;
    ExifListKind list = ExifListKind::Ifd0;
    quint16 type = 0;
    quint32 count = 0;
    std::unique_ptr<uchar[]> value; ///< count values of that type, numbers in host order
};

using TagOperations = std::vector<TagOperation>;

/// The first three are the numbers of FPVExifWriter::rewrite().
enum class SaveResult : int {
    Saved = 0,
    NoRoom = 1,
    Failed = 2,
    Unknown,
    BadLatitude,
    BadLongitude,
    BadAltitude,
};

/// These three append what their page comes to; false, with a warning, without memory.
[[nodiscard]] bool appendBasic(const EditTexts &texts, TagOperations *operations);
[[nodiscard]] bool appendUserData(const EditTexts &texts, TagOperations *operations);
/// The texts must have passed checkPosition(). An empty altitude leaves the file's own.
[[nodiscard]] bool appendPosition(const EditTexts &texts, TagOperations *operations);

/// Saved, or which text is the first that is no coordinate and no height.
[[nodiscard]] SaveResult checkPosition(const EditTexts &texts);

/// Writes all pages and replaces the photo. The photo is not touched if a text is refused or
/// the new block would not fit a segment.
[[nodiscard]] SaveResult saveTexts(const EditTexts &texts, FPVExifWriter *writer);

} // namespace lumi
