// SPDX-License-Identifier: MIT
// The info panel of the browser: the picture of the current item on the left, what its Exif
// block says on the right, a group at a time, and a button that asks for the editor.
// A photo's block is read once, when it becomes the current item; another group only formats
// what was read. While the wait dialog of a new item comes up, other items may become current:
// the last one counts.
// Owns: the block of the photo on show. The item is the list's and may die at any time: then
// there is none.
#pragma once

#include <QPointer>
#include <QSize>
#include <QWidget>

#include <memory>

class FPVExifFields;
class FPVItemImage;
class FPVItemObject;
class FPVPictureView;
class QComboBox;
class QHBoxLayout;
class QPushButton;
class QTextBrowser;

class MyImageWidget : public QWidget
{
    Q_OBJECT

public:
    explicit MyImageWidget(QWidget *parent);
    ~MyImageWidget() override;

    /// Shows the item; null, or what is no photo, means none. Nothing happens while the panel
    /// is hidden. Events run meanwhile.
    void setItem(FPVItemObject *item);

    [[nodiscard]] FPVPictureView *picture() const { return m_picture; }

    /// Forgets the item when hiding.
    void setVisible(bool visible) override;

Q_SIGNALS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_edit_clicked();

public Q_SLOTS:
    /// group: of the field groups, as the combo lists them.
    void combo_exifinfo_activated(int group);
    // NOLINTEND(readability-identifier-naming)

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QHBoxLayout *buildTopRow();
    void load();
    void showNothing();
    void forgetDead();
    void showGroup(int group);
    [[nodiscard]] QString photoRows() const;
    [[nodiscard]] QString fieldRows() const;
    void setText(const QString &html);
    void layOut();
    void setFontIndex(int index);

    QPushButton *m_editButton = nullptr;
    QComboBox *m_infoCombo = nullptr;
    QTextBrowser *m_browser = nullptr;
    FPVPictureView *m_picture = nullptr;
    std::unique_ptr<FPVExifFields> m_fields;
    int m_fontIndex = 2;
    QPointer<FPVItemImage> m_wanted; // on show, once it is loaded
    QPointer<FPVItemImage> m_loaded; // whose block m_fields is
    bool m_loading = false;
    QSize m_photoSize;
    qint64 m_fileBytes = 0;
    QString m_html;
};
