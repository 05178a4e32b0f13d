// SPDX-License-Identifier: MIT
// Makes tags of the texts in the editor's fields. All fields are written back, edited or not. Texts
// are trimmed, and an empty text removes its tag.
// Format: texts are Latin-1 with a closing NUL; the name of the audio file fills 13 bytes. The
// comment is "UNICODE", NUL and UTF-8 without a closing NUL. Author and compilation share a tag:
// author, NUL, compilation, NUL, with a blank for a missing author.
#pragma once

#include "exif/ui/exifEditRules.h"

#include <memory>
#include <vector>

class FPVExifWriter;

namespace lumi {

/// A tag to be set, or to be removed if value is null.
struct TagOperation
{
    quint16 tag = 0;
    ExifListKind list = ExifListKind::Ifd0;
    quint16 type = 0;
    quint32 count = 0;
    std::unique_ptr<uchar[]> value; ///< count values of that type, numbers in host order
};

using TagOperations = std::vector<TagOperation>;

/// The first three are the results of FPVExifWriter::rewrite().
enum class SaveResult : int {
    Saved = 0,
    NoRoom = 1,
    Failed = 2,
    BadLatitude,
    BadLongitude,
    BadAltitude,
};

/// These three append the operations of their page. If there is no memory, they log a warning and
/// return false.
[[nodiscard]] bool appendBasic(const EditTexts &texts, TagOperations *operations);
[[nodiscard]] bool appendUserData(const EditTexts &texts, TagOperations *operations);
/// The texts must have passed checkPosition(). An empty altitude leaves the tag of the file.
[[nodiscard]] bool appendPosition(const EditTexts &texts, TagOperations *operations);

/// Saved, or the error of the first text that is not valid.
[[nodiscard]] SaveResult checkPosition(const EditTexts &texts);

/// Writes all pages and replaces the photo. The photo is not touched if a text is not valid or if
/// the new block does not fit a segment.
[[nodiscard]] SaveResult saveTexts(const EditTexts &texts, FPVExifWriter *writer);

} // namespace lumi
