// SPDX-License-Identifier: MIT
#include "platform/Config.h"

#include "platform/Machine.h"
#include "platform/files/IniText.h"
#include "platform/files/fileCalls.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cstring>

namespace {

/// Null after a success, otherwise the reason. After a failure the old file is unchanged.
QString save(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QSaveFile file(path);
    // If open() of Qt 6.4 can't read the permissions of the old file, the new file gets none. commit()
    // ignores a failed flush or sync. A flush that writes only a part sets no error. The second flush
    // writes the rest or sets the error.
    if (!file.open(QIODevice::WriteOnly) || !file.permissions().testFlag(QFile::ReadOwner)
        || file.write(text) != text.size() || !(file.flush() || file.flush())) {
        return file.errorString();
    }
    if (const int error = lumi::syncFile(file.handle()); error != 0) {
        return QString::fromLocal8Bit(std::strerror(error));
    }
    return file.commit() ? QString() : file.errorString();
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
    const lumi::IniText text(lumi::readSmallFile(m_fileName).value_or(QByteArray()));
    bool isNumber = false;
    const int number = text.value(m_group, key).value_or(QString()).toInt(&isNumber);
    return isNumber ? number : def;
}

void Config::writeEntry(const QString &key, int value)
{
    const std::optional<QByteArray> old = lumi::readSmallFile(m_fileName);
    // Otherwise an unreadable file would be replaced by one with a single key.
    const bool mayReplace = old.has_value() || !QFileInfo::exists(m_fileName);
    lumi::IniText text(old.value_or(QByteArray()));
    text.setValue(m_group, key, QString::number(value));
    const QString fault = mayReplace ? save(m_fileName, text.toText())
                                     : QStringLiteral("the present file can't be read");
    if (!fault.isNull()) {
        qWarning("Settings can't be written: %s: %s", qPrintable(m_fileName), qPrintable(fault));
    }
}
