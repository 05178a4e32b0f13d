// SPDX-License-Identifier: MIT
// The window in which the Exif texts and the position of one photo are edited. It is modal and not
// a form: the browser opens it and waits until it ends. Nothing is written before Save. Save reads
// the block again and writes all fields back, edited or not; see exifWriteBack.h. Other tags keep
// the values that the file has then. A save is refused if the photo is protected, if the card was
// exchanged, or if the block could not be read when the window opened, because the empty fields
// would remove texts that the user never saw. After a failed save the window stays open.
// Owns: its widgets, menu bar and tool bars.
#pragma once

#include "app/common/ChosenFile.h"
#include "exif/ui/exifEditRules.h"

#include <QMainWindow>
#include <QPointer>

#include <array>

class MyMultiLineEdit;
class QAction;
class QEventLoop;
class QTabWidget;

namespace lumi {
enum class SaveResult : int;
} // namespace lumi

class FormExif : public QMainWindow
{
    Q_OBJECT

public:
    /// Reads the photo's Exif block and shows the window.
    FormExif(QWidget *parent, const QString &path);
    ~FormExif() override;

    /// Returns when the window has ended: 1 after a save, else 0.
    [[nodiscard]] int exec();

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    /// The same as menu_edit_save(). Every window has a slot of this name.
    void accept();
    /// These four act on the field with the focus, or on the one that had it before the menu bar.
    void menu_edit_undo();
    void menu_edit_cut();
    void menu_edit_copy();
    void menu_edit_paste();
    void menu_edit_save();
    /// False when the user chose to stay.
    bool menu_edit_editCancel();
    void menu_option_Help();
    void menu_option_Version();
    void lineedit_copyAvailable(bool available);
    void lineedit_pasteAvailable(bool available);
    /// If text is a whole position, sets both fields and clears text.
    void lineedit_paste(QString *text);
    // NOLINTEND(readability-identifier-naming)

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void buildBars();
    void buildPages();
    void connectEdit(MyMultiLineEdit *edit);
    void noteFocus(QWidget *now);
    void sendControlKey(int key);
    [[nodiscard]] bool isEdited() const;
    [[nodiscard]] lumi::EditTexts texts() const;
    [[nodiscard]] lumi::SaveResult save();
    void tellFailure(lumi::SaveResult result);
    void end(int result);

    QString m_path;
    lumi::ChosenFile m_photo; // what was at the path when the window opened
    int m_result = 0;
    QTabWidget *m_tabs = nullptr;
    QAction *m_cutAction = nullptr;
    QAction *m_copyAction = nullptr;
    QAction *m_pasteAction = nullptr;
    std::array<MyMultiLineEdit *, lumi::EditFieldCount> m_edits{};
    QPointer<MyMultiLineEdit> m_lastEdit;
    QEventLoop *m_loop = nullptr; // while exec() runs
    bool m_blockWasRead = false;  // when the window opened
};
