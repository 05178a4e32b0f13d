// SPDX-License-Identifier: MIT
// The Exif block of a photo as the rows that the user sees, one group at a time. Row numbers
// run over all rows of the group, the read-only ones included.
#pragma once

#include "exif/read/FPVExifDocument.h"
#include "exif/text/exifFieldGroups.h"

class FPVExifFields : public FPVExifDocument
{
public:
    explicit FPVExifFields(const QString &path);
    ~FPVExifFields() override;

    /// A group that does not exist has a null title and no rows.
    void setGroup(int group) { m_group = group; }

    [[nodiscard]] QString groupTitle() const { return groupTitle(m_group); }

    [[nodiscard]] static QString groupTitle(int group);

    [[nodiscard]] int rowCount() const;

    /// A null string for a row that does not exist.
    [[nodiscard]] QString rowLabel(int row) const;

    /// True for a row that does not exist.
    [[nodiscard]] bool rowReadOnly(int row) const;

    /// The stored type of the tag that the row finds, 0 when it finds none.
    [[nodiscard]] int rowType(int row) const;

    /// The value that the row finds, as a text for the user. withUnit: with the unit of an
    /// altitude, for reading and not for editing. Empty when there is none, when its type does
    /// not suit its tag and when a choice has no word for it.
    [[nodiscard]] QString valueText(int row, bool withUnit) const;

private:
    [[nodiscard]] const ExifFieldRow *rowAt(int row) const;

    int m_group = 0;
};
