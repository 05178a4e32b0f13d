// SPDX-License-Identifier: MIT
// A settings file with groups of keys. Nothing is cached: each access reads the file, and a write
// is on disk when it returns. So two programs or an editor may share the file.
// Format: INI, UTF-8; lines that are not understood are kept unchanged.
#pragma once

#include <QString>

class Config
{
public:
    enum Domain { User };

    explicit Config(const QString &name, Domain domain = User);

    void setGroup(const QString &group);
    /// The default if the key is missing or is not a number.
    [[nodiscard]] int readNumEntry(const QString &key, int def) const;
    /// Replaces the file as a whole or not at all; a failure is logged only.
    void writeEntry(const QString &key, int value);

private:
    QString m_fileName;
    QString m_group;
};
