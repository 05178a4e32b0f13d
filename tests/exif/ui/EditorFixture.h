// SPDX-License-Identifier: MIT
// An Exif editor with a photo, and functions that act as its user.
#pragma once

#include "exif/text/FPVExifFields.h"
#include "exif/ui/FormExif.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "exif/ui/exifEditRules.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/ui/BoxKeeper.h"
#include "tests/support/FakeMachine.h"

#include <QTabWidget>

#include <functional>
#include <memory>

namespace lumi::test {

inline constexpr EditField kAllFields[] = {
    AuthorField,  CompilationField, OwnerField,     TitleField,    RelatedAudioField,
    CommentField, LatitudeField,    LongitudeField, AltitudeField,
};

/// A photo with a text for every field of the editor, and other tags.
[[nodiscard]] ExifBuilder editablePhoto();

/// The value that fills the segment.
enum class Filling { Thumbnail, MakerNote };

/// A photo whose segment has that length, which must be even. If the thumbnail is the filling, it
/// is padded. An empty thumbnail means none.
[[nodiscard]] ExifBuilder crampedPhoto(int length, Filling filling, const QByteArray &thumbnail);

/// The text of a menu entry as shown: one ampersand for two, none for one.
[[nodiscard]] QString shownText(const QAction *action);

class EditorFixture
{
public:
    EditorFixture();
    ~EditorFixture();

    /// Opens the editor on the photo and waits until it has the focus.
    void open(const ExifBuilder &photo = editablePhoto(),
              const QString &name = QStringLiteral("photo.jpg"));
    /// Opens the editor again on the same photo.
    void reopen();
    /// Runs the editor and calls steps in its event loop. steps must end the editor.
    [[nodiscard]] int run(const std::function<void()> &steps);
    [[nodiscard]] MyMultiLineEdit *edit(EditField field) const;
    /// Shows the page of the field and focuses the field.
    void enter(EditField field);
    /// Replaces the text of the field by typing.
    void type(EditField field, const QString &text);
    /// Presses Ctrl and the key in the field.
    void control(EditField field, Qt::Key key);
    void fillClipboard(const QString &text);
    [[nodiscard]] QAction *entry(const QString &text) const; ///< of a menu
    /// The current Exif block of the file.
    [[nodiscard]] std::unique_ptr<FPVExifDocument> document() const;
    /// The bytes of a tag in the file; null if there is none.
    [[nodiscard]] QByteArray value(int tag, ExifListKind list) const;
    [[nodiscard]] QByteArray fileBytes() const;

    FakeMachine *machine; ///< lent
    PhotoFolder folder;
    BoxKeeper boxes;
    QString path;
    QWidget browser; ///< the parent of the editor
    std::unique_ptr<FormExif> form;
    QTabWidget *tabs = nullptr;
};

} // namespace lumi::test
