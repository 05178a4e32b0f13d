// SPDX-License-Identifier: MIT
// The info panel of the browser: the picture of the current item on the left, one group of its Exif
// fields on the right, and a button for the editor. The Exif block is read once, when the item
// becomes current. Other items can become current while the wait dialog appears; the last one
// counts.
// Owns: the Exif block of the shown photo. The item belongs to the list and may be destroyed at any
// time; then the panel is empty.
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

    /// Shows the item, or nothing if it is null or not a photo. Does nothing while the panel is
    /// hidden. Runs events.
    void setItem(FPVItemObject *item);

    [[nodiscard]] FPVPictureView *picture() const { return m_picture; }

    /// Releases the item when the panel is hidden.
    void setVisible(bool visible) override;

Q_SIGNALS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void btn_edit_clicked();

public Q_SLOTS:
    /// group: index into lumi::exifFieldGroups().
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
    QPointer<FPVItemImage> m_wanted; // the item to show
    QPointer<FPVItemImage> m_loaded; // the item of m_fields
    bool m_loading = false;
    QSize m_photoSize;
    qint64 m_fileBytes = 0;
    QString m_html;
};
