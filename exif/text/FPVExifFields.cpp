// SPDX-License-Identifier: MIT
#include "exif/text/FPVExifFields.h"

#include "exif/tag/FPVExifTagBytes.h"
#include "exif/text/valueText.h"

namespace {

const ExifFieldGroup *groupAt(int number)
{
    const auto groups = lumi::exifFieldGroups();
    if (number < 0 || number >= static_cast<int>(groups.size())) {
        return nullptr;
    }
    return &groups[static_cast<std::size_t>(number)];
}

} // namespace

FPVExifFields::FPVExifFields(const QString &path)
    : FPVExifDocument(path)
{ }

QString FPVExifFields::groupTitle(int group)
{
    const ExifFieldGroup *found = groupAt(group);
    return found ? found->title : QString();
}

int FPVExifFields::rowCount() const
{
    const ExifFieldGroup *group = groupAt(m_group);
    return group ? group->rowCount : 0;
}

QString FPVExifFields::rowLabel(int row) const
{
    const ExifFieldRow *found = rowAt(row);
    return found ? found->label : QString();
}

bool FPVExifFields::rowReadOnly(int row) const
{
    const ExifFieldRow *found = rowAt(row);
    return found ? found->readOnly : true;
}

int FPVExifFields::rowType(int row) const
{
    const ExifFieldRow *found = rowAt(row);
    const FPVExifTag *tag = found ? find(found->tag, found->list) : nullptr;
    return tag ? tag->type() : 0;
}

QString FPVExifFields::valueText(int row, bool withUnit) const
{
    const ExifFieldRow *found = rowAt(row);
    const auto *tag
        = dynamic_cast<const FPVExifTagBytes *>(found ? find(found->tag, found->list) : nullptr);
    return tag ? lumi::valueText({*tag, *found, *this, withUnit}) : QString();
}

const ExifFieldRow *FPVExifFields::rowAt(int row) const
{
    const ExifFieldGroup *group = groupAt(m_group);
    if (!group || row < 0 || row >= group->rowCount) {
        return nullptr;
    }
    return group->rows + row;
}
