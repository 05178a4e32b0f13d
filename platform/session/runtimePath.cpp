// SPDX-License-Identifier: MIT
#include "platform/session/runtimePath.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QString lumi::runtimePath(const QString &home)
{
    constexpr int kDigits = 16;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) {
        return {};
    }
    const QString canonical = QFileInfo(home).canonicalFilePath();
    const QByteArray path = QFile::encodeName(canonical.isEmpty() ? home : canonical);
    const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha1);
    return folder + QLatin1String("/lumivault-") + QString::fromLatin1(hash.toHex().left(kDigits));
}
