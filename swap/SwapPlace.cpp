// SPDX-License-Identifier: MIT
#include "swap/SwapPlace.h"

#include <QFile>

QString lumi::SwapPlace::imagePath(int position, char kind, int param, const QString &name) const
{
    return QString::asprintf("%s/%04d%c_%d_%s%s", qUtf8Printable(m_folder), position, kind, param,
                             qUtf8Printable(name), qUtf8Printable(m_extension));
}

QString lumi::SwapPlace::bufferPath(int position, int param, const QString &name) const
{
    return QString::asprintf("%s/%04d_%d_%s%s", qUtf8Printable(m_folder), position, param,
                             qUtf8Printable(name), qUtf8Printable(m_extension));
}

bool lumi::SwapPlace::holds(const QString &path) const
{
    return path.lastIndexOf(QLatin1Char('/')) == m_folder.size() && path.startsWith(m_folder)
        && path.endsWith(m_extension);
}

void lumi::SwapPlace::removeFile(const QString &path) const
{
    if (holds(path)) {
        QFile::remove(path);
    }
}
