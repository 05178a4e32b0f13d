// SPDX-License-Identifier: MIT
// The fields of the Exif editor: page, tag, maximum length and accepted characters. They are in the
// order of the editable rows of their groups.
#pragma once

#include "exif/tag/ExifListKind.h"
#include "exif/tag/tagNumbers.h"
#include "exif/ui/characterFilter.h"

#include <QString>

#include <array>
#include <span>

namespace lumi {

enum EditField : int {
    AuthorField,
    CompilationField,
    OwnerField,
    TitleField,
    RelatedAudioField,
    CommentField,
    LatitudeField,
    LongitudeField,
    AltitudeField,
    EditFieldCount,
};

struct EditRule
{
    EditField field;
    quint16 tag;
    ExifListKind list;
    int maxLength;
    int charMask;
};

struct EditPage
{
    int group; ///< index into exifFieldGroups()
    std::span<const EditRule> rules;
};

// Author and compilation are two texts in one tag.
inline constexpr std::array<EditRule, EditFieldCount> kEditRules = {{
    {AuthorField, kTagCopyright, ExifListKind::Ifd0, 50, kPlainCharacters},
    {CompilationField, kTagCopyright, ExifListKind::Ifd0, 50, kPlainCharacters},
    {OwnerField, kTagOwner, ExifListKind::Ifd0, 50, kPlainCharacters},
    {TitleField, kTagTitle, ExifListKind::Ifd0, 50, kPlainCharacters},
    {RelatedAudioField, kTagRelatedAudio, ExifListKind::Exif, 12, kPlainCharacters},
    {CommentField, kTagUserComment, ExifListKind::Exif, 256, kAnyCharacters},
    {LatitudeField, kTagLatitude, ExifListKind::Gps, 13, kPlainCharacters},
    {LongitudeField, kTagLongitude, ExifListKind::Gps, 14, kPlainCharacters},
    {AltitudeField, kTagAltitude, ExifListKind::Gps, 9, kPlainCharacters},
}};

inline constexpr std::array<EditPage, 3> kEditPages = {{
    {0, std::span(kEditRules).subspan(AuthorField, 2)},
    {1, std::span(kEditRules).subspan(OwnerField, 4)},
    {5, std::span(kEditRules).subspan(LatitudeField, 3)},
}};

/// The index in kEditPages of the page with the position.
inline constexpr int kPositionPage = 2;

/// The texts of all fields, indexed by EditField.
using EditTexts = std::array<QString, EditFieldCount>;

} // namespace lumi
