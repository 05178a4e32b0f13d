// SPDX-License-Identifier: MIT
#include "items/FPVItemObject.h"

#include <QDateTime>
#include <QFileInfo>

namespace {

constexpr int kKindMask = 0xFF;

bool isOfKind(const FPVItemObject &item, lumi::ItemKind kind)
{
    return (item.itemKind() & kKindMask) == static_cast<int>(kind);
}

} // namespace

FPVItemObject::FPVItemObject(const QString &path, const QString &displayName, bool checked)
    : m_path(path)
    , m_displayName(displayName)
    , m_checked(checked)
{ }

void FPVItemObject::setPath(const QString &path)
{
    m_path = path;
}

QString FPVItemObject::path() const
{
    return m_path;
}

QString FPVItemObject::fileName() const
{
    return QFileInfo(m_path).fileName();
}

QString FPVItemObject::baseName() const
{
    return QFileInfo(m_path).baseName();
}

void FPVItemObject::setDisplayName(const QString &displayName)
{
    m_displayName = displayName;
}

QString FPVItemObject::displayName() const
{
    return m_displayName.isEmpty() ? fileName() : m_displayName;
}

void FPVItemObject::setChecked(bool checked)
{
    m_checked = checked;
}

bool FPVItemObject::isChecked() const
{
    return m_checked;
}

QPixmap *FPVItemObject::thumbnail(int /*w*/, int /*h*/)
{
    return nullptr;
}

QList<lumi::InfoRecord> *FPVItemObject::infoList()
{
    const QFileInfo info(m_path);
    const QString text = QStringLiteral("Modified : ") + info.lastModified().toString()
        + QStringLiteral("\nOwner : ") + info.owner() + QStringLiteral("\nGroup : ") + info.group()
        + QLatin1Char('\n');
    return new QList<lumi::InfoRecord>{{QStringLiteral("Basic Information"), text}};
}

void FPVItemObject::setIncremental(bool /*incremental*/) { }

bool FPVItemObject::isPicture() const
{
    return isOfKind(*this, lumi::ItemKind::Picture);
}

bool FPVItemObject::isFolder() const
{
    return isOfKind(*this, lumi::ItemKind::Folder);
}
