// SPDX-License-Identifier: MIT
// One entry of a listed folder: its path, its check mark and the cell that shows it.
// Thousands of items may exist at once, so an item has only strings and a few integers. Derived
// classes make thumbnails, sizes and pixels on demand.
// Owns: nothing. The item itself belongs to its FPVItemList.
#pragma once

#include <QList>
#include <QObject>
#include <QString>

class FPVItemList;
class FPVThumbnailItem;
class QPixmap;

namespace lumi {

/// One paragraph about an item: a heading and lines that each end with a line feed.
struct InfoRecord
{
    QString title;
    QString text;
};

/// The low byte of FPVItemObject::itemKind().
enum class ItemKind : int { Picture = 1, Folder = 2 };

} // namespace lumi

class FPVItemObject : public QObject
{
    Q_OBJECT

public:
    FPVItemObject() = default;
    FPVItemObject(const QString &path, const QString &displayName, bool checked);

    /// The low byte is a lumi::ItemKind. Higher bits stand for the format.
    [[nodiscard]] virtual int itemKind() const = 0;
    [[nodiscard]] virtual int kindFlag1() const = 0;
    [[nodiscard]] virtual int kindFlag2() const = 0;
    virtual void setPath(const QString &path);
    /// Absolute path of the entry.
    [[nodiscard]] virtual QString path() const;
    [[nodiscard]] virtual QString fileName() const;
    /// The file name up to its first dot.
    [[nodiscard]] virtual QString baseName() const;
    virtual void setDisplayName(const QString &displayName);
    /// The display name, or the file name if none was given.
    [[nodiscard]] virtual QString displayName() const;
    virtual void setChecked(bool checked);
    [[nodiscard]] virtual bool isChecked() const;
    /// A new pixmap that fits w x h, owned by the caller, or null.
    [[nodiscard]] virtual QPixmap *thumbnail(int w, int h);
    /// New records in a new list, owned by the caller; never null.
    [[nodiscard]] virtual QList<lumi::InfoRecord> *infoList();
    /// If false, the next startDecode() decodes the whole picture before it returns.
    virtual void setIncremental(bool incremental);

    void setOwnerList(FPVItemList *list) { m_ownerList = list; }

    [[nodiscard]] FPVItemList *ownerList() const { return m_ownerList; }

    void setThumbnailItem(FPVThumbnailItem *thumbnailItem) { m_thumbnailItem = thumbnailItem; }

    /// The cell that shows the item now, or null.
    [[nodiscard]] FPVThumbnailItem *thumbnailItem() const { return m_thumbnailItem; }

    /// True for every picture format.
    [[nodiscard]] bool isPicture() const;
    [[nodiscard]] bool isFolder() const;

private:
    QString m_path;
    QString m_displayName;
    bool m_checked = false;
    FPVItemList *m_ownerList = nullptr;
    FPVThumbnailItem *m_thumbnailItem = nullptr;
};
