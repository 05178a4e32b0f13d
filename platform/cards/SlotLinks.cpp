// SPDX-License-Identifier: MIT
#include "platform/cards/SlotLinks.h"

#include "platform/cards/CardSlots.h"
#include "platform/session/runtimePath.h"

#include <QDir>
#include <QFile>

#include <cstdio>

#include <unistd.h>

namespace {

/// The folder of the links; empty without a runtime folder.
QString linksFolder()
{
    const QString path = lumi::runtimePath(QDir::homePath());
    return path.isEmpty() ? QString() : path + QLatin1String("-cards");
}

} // namespace

lumi::SlotLinks::SlotLinks()
    : m_empty(linksFolder() + QLatin1String("/empty"))
    , m_marker(m_empty + QLatin1String("/NotAvailable"))
{
    for (const Slot slot : CardSlots::kAll) {
        lead(slot, QString());
    }
}

QString lumi::SlotLinks::path(Slot slot)
{
    const QString folder = linksFolder();
    return folder.isEmpty() ? QString()
                            : folder + QLatin1String(slot == Slot::CF ? "/cf" : "/card");
}

bool lumi::SlotLinks::makeEmptySlot() const
{
    QFile marker(m_marker);
    return QDir().mkpath(m_empty) && (marker.exists() || marker.open(QIODevice::WriteOnly));
}

void lumi::SlotLinks::lead(Slot slot, const QString &folder)
{
    const QString link = path(slot);
    const QString target = folder.isEmpty() ? m_empty : folder;
    const QByteArray fresh = QFile::encodeName(link + QLatin1String(".new"));
    // A rename replaces the old link at once, so that no reader finds the path missing.
    const bool isDone = makeEmptySlot()
        && (QFile::symLinkTarget(link) == target
            || (::symlink(QFile::encodeName(target).constData(), fresh.constData()) == 0
                && std::rename(fresh.constData(), QFile::encodeName(link).constData()) == 0));
    if (!isDone) {
        qWarning("The card slot has no link: %s", qPrintable(link));
        ::unlink(fresh.constData());
    }
}
