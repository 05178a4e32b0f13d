// SPDX-License-Identifier: MIT
#include "exif/text/valueText.h"

#include "exif/tag/exifFormat.h"
#include "exif/tag/tagNumbers.h"
#include "exif/text/userComment.h"

#include <algorithm>

namespace {

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
    case TiffByte:
    case TiffShort:
    case TiffLong:
        return numberValueText(value);
    case TiffAscii:
        return asciiValueText(value);
    case TiffRational:
        return rationalValueText(value);
    case TiffUndefined:
        return undefinedValueText(value);
    case TiffSignedRational:
        return signedRationalValueText(value);
    default:
        return {};
    }
}
