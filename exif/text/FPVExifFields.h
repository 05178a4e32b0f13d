// SPDX-License-Identifier: MIT
// The Exif block of a photo as the rows that the user sees, one group at a time. Row numbers count
// all rows of the group, including the read-only ones.
#pragma once

#include "exif/read/FPVExifDocument.h"
#include "exif/text/exifFieldGroups.h"

class FPVExifFields : public FPVExifDocument
{
public:
    explicit FPVExifFields(const QString &path);

    /// A group that does not exist has a null title and no rows.
    void setGroup(int group) { m_group = group; }

    [[nodiscard]] QString groupTitle() const { return groupTitle(m_group); }

    [[nodiscard]] static QString groupTitle(int group);

    [[nodiscard]] int rowCount() const;

    /// A null string for a row that does not exist.
    [[nodiscard]] QString rowLabel(int row) const;

    /// True for a row that does not exist.
    [[nodiscard]] bool rowReadOnly(int row) const;

    /// The stored type of the row's tag; 0 if the photo has no such tag.
    [[nodiscard]] int rowType(int row) const;

    /// The value of the row as the user sees it. withUnit: whether an altitude has its unit, which
    /// the editor doesn't show. Empty if there is no value, if its type does not suit its tag, or
    /// if there is no word for it.
    [[nodiscard]] QString valueText(int row, bool withUnit) const;

private:
    [[nodiscard]] const ExifFieldRow *rowAt(int row) const;

    int m_group = 0;
};
