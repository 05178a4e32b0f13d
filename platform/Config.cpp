// SPDX-License-Identifier: MIT
#include "platform/Config.h"

#include "platform/IniText.h"
#include "platform/Machine.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {

bool save(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

} // namespace

Config::Config(const QString &name, Domain /*domain*/)
    : m_fileName(Machine::instance().settingsFile(name))
{ }

void Config::setGroup(const QString &group)
{
    m_group = group;
}

int Config::readNumEntry(const QString &key, int def) const
{
    const lumi::IniText text(lumi::IniText::readFile(m_fileName).value_or(QByteArray()));
    bool isNumber = false;
    const int number = text.value(m_group, key).value_or(QString()).toInt(&isNumber);
    return isNumber ? number : def;
}

void Config::writeEntry(const QString &key, int value)
{
    const std::optional<QByteArray> old = lumi::IniText::readFile(m_fileName);
    // What can't be read must not be replaced by a file with a single key.
    const bool mayReplace = old.has_value() || !QFileInfo::exists(m_fileName);
    lumi::IniText text(old.value_or(QByteArray()));
    text.setValue(m_group, key, QString::number(value));
    if (!mayReplace || !save(m_fileName, text.toText())) {
        qWarning("Settings can't be written: %s", qPrintable(m_fileName));
    }
}
