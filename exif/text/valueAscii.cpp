// SPDX-License-Identifier: MIT
// Values of type ASCII. Most are shown as they are.
#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "exif/tag/tagNumbers.h"
#include "exif/text/valueText.h"

#include <algorithm>

namespace {

/// 2004:05:06 07:08:09 becomes 2004/05/06 07:08:09.
QString dateText(QString date)
{
    constexpr int kSeparators = 2;
    qsizetype place = -1;
    for (int i = 0; i < kSeparators; ++i) {
        place = date.indexOf(QLatin1Char(':'), place + 1);
        if (place < 0) {
            break;
        }
        date[place] = QLatin1Char('/');
    }
    return date;
}

/// The value holds two texts: author and compilation. A missing author is stored as a blank.
QString copyrightText(const FPVExifTagBytes &tag, bool ofAuthor)
{
    const char *begin = tag.data();
    const char *end = begin + tag.size();
    const char *firstEnd = std::find(begin, end, '\0');
    if (ofAuthor) {
        return begin != end && *begin == ' ' ? QString()
                                             : QString::fromUtf8(begin, firstEnd - begin);
    }
    if (firstEnd == end || firstEnd - begin + 1 == static_cast<qint64>(tag.count())) {
        return {};
    }
    const char *second = firstEnd + 1;
    return QString::fromUtf8(second, std::find(second, end, '\0') - second);
}

} // namespace

QString lumi::asciiValueText(const ShownValue &value)
{
    switch (value.row.tag) {
    case kTagDateTime:
    case kTagDateTimeOriginal:
    case kTagDateTimeDigitized:
        return dateText(value.tag.text());
    case kTagCopyright:
        // Two rows show this tag. They differ in their labels only.
        return copyrightText(value.tag, value.row.label == msg(MsgAuthor));
    default:
        return value.tag.text();
    }
}
