// SPDX-License-Identifier: MIT
#include "platform/files/IniText.h"

namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr qsizetype kMarkBytes = sizeof kByteOrderMark - 1;

bool isComment(const QByteArray &line)
{
    return line.startsWith(';') || line.startsWith('#');
}

/// The name in a heading, null if the line is none.
QByteArray heading(const QByteArray &line)
{
    return line.size() > 1 && line.startsWith('[') && line.endsWith(']')
        ? line.mid(1, line.size() - 2).trimmed()
        : QByteArray();
}

/// The key of a line, null if it has none.
QByteArray keyOf(const QByteArray &line)
{
    const qsizetype equals = line.indexOf('=');
    return equals > 0 && !isComment(line) ? line.left(equals).trimmed() : QByteArray();
}

} // namespace

lumi::IniText::IniText(const QByteArray &text)
    : m_lines((text.startsWith(kByteOrderMark) ? text.mid(kMarkBytes) : text).split('\n'))
{
    if (m_lines.last().isEmpty()) {
        m_lines.removeLast();
    }
}

lumi::IniText::Place lumi::IniText::find(const QByteArray &group, const QByteArray &key) const
{
    Place place;
    bool inGroup = group.isEmpty();
    place.insertAt = inGroup ? 0 : -1;
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const QByteArray line = m_lines.at(i).trimmed();
        const QByteArray name = heading(line);
        if (!name.isNull()) {
            inGroup = name == group;
        }
        if (!inGroup) {
            continue;
        }
        if (keyOf(line) == key) {
            place.line = i;
            return place;
        }
        if (!line.isEmpty()) {
            place.insertAt = i + 1;
        }
    }
    return place;
}

std::optional<QString> lumi::IniText::value(const QString &group, const QString &key) const
{
    const Place place = find(group.toUtf8(), key.toUtf8());
    if (place.line < 0) {
        return std::nullopt;
    }
    const QByteArray &line = m_lines.at(place.line);
    return QString::fromUtf8(line.mid(line.indexOf('=') + 1)).trimmed();
}

void lumi::IniText::setValue(const QString &group, const QString &key, const QString &value)
{
    const QByteArray line = key.toUtf8() + '=' + value.toUtf8();
    const Place place = find(group.toUtf8(), key.toUtf8());
    if (place.line >= 0) {
        const bool carriageReturn = m_lines.at(place.line).endsWith('\r');
        m_lines[place.line] = carriageReturn ? QByteArray(line + '\r') : line;
    } else if (place.insertAt >= 0) {
        m_lines.insert(place.insertAt, line);
    } else {
        m_lines << '[' + group.toUtf8() + ']' << line;
    }
}

QByteArray lumi::IniText::toText() const
{
    return m_lines.isEmpty() ? QByteArray() : QByteArray(m_lines.join('\n') + '\n');
}
