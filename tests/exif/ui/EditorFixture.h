// SPDX-License-Identifier: MIT
// The Exif editor on a photo of its own, and a user of it.
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

/// A photo with a text in every field of the editor, and tags that it has no field for.
[[nodiscard]] ExifBuilder editablePhoto();

/// What fills up a segment.
enum class Filling { Thumbnail, MakerNote };

/// A photo whose segment says that length, an even one. The thumbnail gets bytes behind it where
/// it is the filling; an empty one is none.
[[nodiscard]] ExifBuilder crampedPhoto(int length, Filling filling, const QByteArray &thumbnail);

/// What a menu shows of an entry: one ampersand for two, none for one.
[[nodiscard]] QString shownText(const QAction *action);

class EditorFixture
{
public:
    EditorFixture();
    ~EditorFixture();

    /// Opens the editor on the photo and waits until it has the focus.
    void open(const ExifBuilder &photo = editablePhoto(),
              const QString &name = QStringLiteral("photo.jpg"));
    /// The same for the photo as it is now.
    void reopen();
    /// Runs the editor; the steps are taken in its event loop and must end it.
    [[nodiscard]] int run(const std::function<void()> &steps);
    [[nodiscard]] MyMultiLineEdit *edit(EditField field) const;
    /// Turns to the field's page and puts the cursor into it.
    void enter(EditField field);
    /// Types in place of all there is.
    void type(EditField field, const QString &text);
    /// Sends Ctrl and the key to the field.
    void control(EditField field, Qt::Key key);
    void fillClipboard(const QString &text);
    [[nodiscard]] QAction *entry(const QString &text) const; ///< of the menus
    /// What the file holds now.
    [[nodiscard]] std::unique_ptr<FPVExifDocument> document() const;
    /// The bytes of a tag of the file, null when there is none.
    [[nodiscard]] QByteArray value(int tag, ExifListKind list) const;
    [[nodiscard]] QByteArray fileBytes() const;

    FakeMachine *machine; ///< lent
    PhotoFolder folder;
    BoxKeeper boxes;
    QString path;
    QWidget browser; ///< stands for the form that opens the editor
    std::unique_ptr<FormExif> form;
    QTabWidget *tabs = nullptr;
};

} // namespace lumi::test
