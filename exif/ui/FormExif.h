// SPDX-License-Identifier: MIT
// The window in which the Exif texts and the position of one photo are edited. It is modal and
// not a form: the browser opens it and goes on when it ends. Nothing is written before Save;
// then the block is read again, and all fields are written back, edited or not: see
// exifWriteBack.h. What has no field here stays as the file has it by then. A save is refused if
// the photo is protected, if it is the photo of another card by then, or if its block could not
// be read at opening: empty fields would remove texts that nobody was shown.
// A save that fails leaves the window open with its texts.
// Owns: its widgets, its own menu bar and tool bars.
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
    /// The same as menu_edit_save(), by the name that every window has for it.
    void accept();
    /// These four act on the field with the focus, or the one that had it before the menu bar.
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
    /// Takes a whole position for both fields and leaves the text empty then.
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
    bool m_inLoop = false;
    QTabWidget *m_tabs = nullptr;
    QAction *m_cutAction = nullptr;
    QAction *m_copyAction = nullptr;
    QAction *m_pasteAction = nullptr;
    std::array<MyMultiLineEdit *, lumi::EditFieldCount> m_edits{};
    QPointer<MyMultiLineEdit> m_lastEdit;
    QEventLoop *m_loop = nullptr; // of exec(), lent
    bool m_blockWasRead = false;  // for the fields
};
