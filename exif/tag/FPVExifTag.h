// SPDX-License-Identifier: MIT
// One tag of an Exif block: its number, its stored type and count, and its value as number, text
// and bytes. The root class holds no value; each subclass holds one of its own type.
#pragma once

#include <QString>

class FPVExifTag
{
public:
    FPVExifTag(quint16 tag, quint16 type, quint32 count);
    FPVExifTag(const FPVExifTag &) = delete;
    FPVExifTag &operator=(const FPVExifTag &) = delete;
    virtual ~FPVExifTag();

    /// The value as a number; 0 if there is none.
    [[nodiscard]] virtual int intValue() const;

    /// The value as a text; a null string if there is none.
    [[nodiscard]] virtual QString text() const;

    /// The bytes of the value, valid as long as the tag; null if there is none.
    [[nodiscard]] virtual const char *data() const;

    /// The name of the tag number in the dictionary; a null string if it has none.
    [[nodiscard]] virtual QString name() const;

    /// The value in the format of the dictionary, or in the default format of the class.
    [[nodiscard]] virtual QString description() const;

    [[nodiscard]] quint16 tag() const { return m_tag; }

    /// The TIFF field type as it was read, known or not.
    [[nodiscard]] quint16 type() const { return m_type; }

    /// The value count as it was read; it can be far more than the tag holds.
    [[nodiscard]] quint32 count() const { return m_count; }

private:
    quint16 m_tag;
    quint16 m_type;
    quint32 m_count;
};
