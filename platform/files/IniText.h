// SPDX-License-Identifier: MIT
// The lines of an INI file, for reading and for changing a single value without touching the
// rest: comments, order and lines that make no sense stay byte for byte.
// Format: "[group]" headings, "key=value" lines, comments from ";" or "#" at the line's
// start, UTF-8, line feeds with or without carriage return. Of equal keys the first counts.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>

namespace lumi {

class IniText
{
public:
    IniText() = default;
    explicit IniText(const QByteArray &text);

    /// Value without blanks around it.
    [[nodiscard]] std::optional<QString> value(const QString &group, const QString &key) const;
    /// Replaces the value or adds it at the end of its group. Neither text may hold a line
    /// break.
    void setValue(const QString &group, const QString &key, const QString &value);
    [[nodiscard]] QByteArray toText() const;

private:
    struct Place
    {
        qsizetype line = -1;     ///< of the key, -1 if it is missing
        qsizetype insertAt = -1; ///< behind the last line of the group, -1 without a group
    };

    [[nodiscard]] Place find(const QByteArray &group, const QByteArray &key) const;

    QByteArrayList m_lines;
};

} // namespace lumi
