// SPDX-License-Identifier: MIT
#include "items/exifRecords.h"

#include "exif/text/exifInfoGroups.h"

#include <algorithm>

namespace {

QString tagLines(const lumi::ExifTagList &tags, const ExifInfoGroup &group)
{
    QString text;
    std::for_each_n(group.tags, group.count, [&tags, &text](int number) {
        const FPVExifTag *tag = tags.findNumber(number);
        if (tag != nullptr) {
            text += tag->name() + QStringLiteral(" : ") + tag->description() + QLatin1Char('\n');
        }
    });
    return text;
}

} // namespace

void lumi::appendExifRecords(const ExifTagList &tags, QList<InfoRecord> *records)
{
    std::for_each(std::next(kExifInfoGroups.begin()), kExifInfoGroups.end(),
                  [&tags, records](const ExifInfoGroup &group) {
                      const QString text = tagLines(tags, group);
                      if (!text.isEmpty()) {
                          records->append({QLatin1String(group.title), text});
                      }
                  });
}
