// SPDX-License-Identifier: MIT
// One tag of an Exif block: its number, its stored type and count, and what its value looks
// like as number, text and bytes. The root class holds no value; each concrete class holds
// one in the shape that suits its type.
#pragma once

#include <QString>

class FPVExifTag
{
public:
    FPVExifTag(quint16 tag, quint16 type, quint32 count);
    FPVExifTag(const FPVExifTag &) = delete;
    FPVExifTag &operator=(const FPVExifTag &) = delete;
    virtual ~FPVExifTag();

    /// The value as a number; 0 without one.
    [[nodiscard]] virtual int intValue() const;

    /// The value as a text; a null string without one.
    [[nodiscard]] virtual QString text() const;

    /// The value's bytes, lent for the life of the tag; null without one.
    [[nodiscard]] virtual const char *data() const;

    /// The dictionary's name of the tag number, a null string when it has none.
    [[nodiscard]] virtual QString name() const;

    /// The value by the dictionary's format for the tag, or by the format of the class.
    [[nodiscard]] virtual QString description() const;

    [[nodiscard]] quint16 tag() const { return m_tag; }

    /// The TIFF field type as it was read, known or not.
    [[nodiscard]] quint16 type() const { return m_type; }

    /// The value count as it was read; it can be far more than what the tag holds.
    [[nodiscard]] quint32 count() const { return m_count; }

private:
    quint16 m_tag;
    quint16 m_type;
    quint32 m_count;
};
