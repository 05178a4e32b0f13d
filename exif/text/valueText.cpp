// SPDX-License-Identifier: MIT
#include "exif/text/valueText.h"

#include "exif/tag/tagNumbers.h"
#include "exif/text/userComment.h"

#include <algorithm>

namespace {

/// Types 6, 8 and 9 have no text.
enum StoredType : quint16 {
    TypeByte = 1,
    TypeAscii = 2,
    TypeShort = 3,
    TypeLong = 4,
    TypeRational = 5,
    TypeUndefined = 7,
    TypeSignedRational = 10,
};

QString undefinedValueText(const lumi::ShownValue &value)
{
    const FPVExifTagBytes &tag = value.tag;
    switch (value.row.tag) {
    case lumi::kTagExifVersion: {
        const char *end = std::find(tag.data(), tag.data() + tag.size(), '\0');
        return QString::fromLatin1(tag.data(), end - tag.data());
    }
    case lumi::kTagUserComment:
        return lumi::userCommentText(QByteArray::fromRawData(tag.data(), tag.size()));
    default:
        return {};
    }
}

} // namespace

QString lumi::valueText(const ShownValue &value)
{
    switch (value.tag.type()) {
    case TypeByte:
    case TypeShort:
    case TypeLong:
        return numberValueText(value);
    case TypeAscii:
        return asciiValueText(value);
    case TypeRational:
        return rationalValueText(value);
    case TypeUndefined:
        return undefinedValueText(value);
    case TypeSignedRational:
        return signedRationalValueText(value);
    default:
        return {};
    }
}
