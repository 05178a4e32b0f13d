// SPDX-License-Identifier: MIT
// If the editor cannot save, the photo is unchanged and the user is told why.
#include "platform/cards/CardSlots.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/FullDisk.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "tests/support/fileAge.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <optional>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::ExifBuilder;
using lumi::test::kAllFields;

namespace {

/// Permissions of a folder that nobody can write.
constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup
    | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

/// The time of the photo on the first card.
constexpr std::time_t kLongAgo = 1'000'000'000;

/// The block does not follow the start of image directly, so it does not count.
ExifBuilder photoWithoutBlock()
{
    return test::editablePhoto().segmentsBefore(QByteArray("\xFF\xFE\0\2", 4));
}

} // namespace

class TestFormExifFailing : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<EditorFixture>(); }

    void cleanup() { m_user.reset(); }

    void aBadPositionIsNamed_data();
    void aBadPositionIsNamed();
    void failuresAreReported_data();
    void failuresAreReported();
    void aBlockThatWasNotReadKeepsItsTexts_data();
    void aBlockThatWasNotReadKeepsItsTexts();
    void aBadPositionIsNamedWithoutABlock();
    void aTooLongBlockIsReported();
    void aFolderThatCannotBeWrittenKeepsThePhoto();
    void aProtectedPhotoIsLeftAlone();
    void aPhotoOfAnotherCardIsLeftAlone();
    void theSameCardMayBeRemovedMeanwhile();

private:
    /// Opens the editor on a photo of the SD card.
    void openOnCard();
    /// Removes the card and inserts one. CardSlots notices both.
    void missTheCard();

    std::unique_ptr<EditorFixture> m_user;
};

void TestFormExifFailing::aBadPositionIsNamed_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::newRow("latitude") << int(LatitudeField) << QStringLiteral("N91.00.00.000")
                              << QStringLiteral(
                                     "The GPS latitude is invalid.\n(Please use the form "
                                     "N00.00.00.000S00.00.00.000)");
    QTest::newRow("longitude") << int(LongitudeField) << QStringLiteral("E139.45")
                               << QStringLiteral(
                                      "The GPS longitude is invalid.\n(Please use the form "
                                      "W000.00.00.000E000.00.00.000)");
    QTest::newRow("height") << int(AltitudeField) << QStringLiteral("0")
                            << QStringLiteral("The GPS altitude is invalid.\nPlease use a number "
                                              "with at most two decimal places.\n(See help.)");
}

void TestFormExifFailing::aBadPositionIsNamed()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([&] {
        m_user->type(EditField(field), text);
        m_user->type(OwnerField, QStringLiteral("Jo"));
        QCOMPARE(m_user->tabs->currentIndex(), 1);
        m_user->form->menu_edit_save();
        QVERIFY(m_user->form->isVisible());
        QCOMPARE(m_user->tabs->currentIndex(), 2);
        // The field gets the focus when the window is active again.
        QTRY_VERIFY(m_user->edit(EditField(field))->hasFocus());
        QCOMPARE(m_user->edit(EditField(field))->text(), text);
        QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("Jo"));
        m_user->form->hide();
    }),
             0);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    const auto &box = m_user->boxes.boxes.first();
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.title, QStringLiteral("Error"));
    QTEST(box.text, "message");
    QVERIFY(!box.duringWait);
    QCOMPARE(m_user->fileBytes(), before);
}

void TestFormExifFailing::failuresAreReported_data()
{
    QTest::addColumn<QString>("failure");
    QTest::addColumn<QString>("message");
    const QString kFailed = QStringLiteral("Compiling Exif information failed. Retry.");
    QTest::newRow("no room") << QStringLiteral("no room")
                             << QStringLiteral("Free some memory and try again");
    QTest::newRow("the photo is gone") << QStringLiteral("no photo") << kFailed;
}

void TestFormExifFailing::failuresAreReported()
{
    QFETCH(QString, failure);
    m_user->open(test::editablePhoto().photo(ExifBuilder::jpeg(400, 300, 0)));
    QVERIFY(QFileInfo(m_user->path).size() >= 1024);
    QCOMPARE(m_user->run([this, failure] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        std::optional<test::FileSizeLimit> limit;
        m_user->machine->setFreeDiskKB(0);
        if (failure == QLatin1String("no photo")) {
            QVERIFY(QFile::remove(m_user->path));
        } else {
            limit.emplace(100);
        }
        m_user->form->menu_edit_save();
        limit.reset();
        QVERIFY(m_user->form->isVisible());
        QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("Jo"));
        m_user->form->hide();
    }),
             0);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().icon, QMessageBox::Critical);
    QCOMPARE(m_user->boxes.boxes.first().title, QStringLiteral("Error"));
    QTEST(m_user->boxes.boxes.first().text, "message");
    QVERIFY(!m_user->boxes.boxes.first().duringWait);
}

void TestFormExifFailing::aBlockThatWasNotReadKeepsItsTexts_data()
{
    QTest::addColumn<bool>("isReadable");
    QTest::newRow("the photo could not be read") << false;
    QTest::newRow("the photo had none then") << true;
}

void TestFormExifFailing::aBlockThatWasNotReadKeepsItsTexts()
{
    QFETCH(bool, isReadable);
    m_user->open(isReadable ? photoWithoutBlock() : test::editablePhoto());
    QFile photo(m_user->path);
    const auto permissions = photo.permissions();
    if (!isReadable) {
        QVERIFY(photo.setPermissions({}));
        const test::OrdinaryUser user;
        m_user->reopen();
    }
    for (const EditField field : kAllFields) {
        QCOMPARE(m_user->edit(field)->text(), QString());
    }
    QVERIFY(photo.setPermissions(permissions));
    m_user->folder.put(test::editablePhoto());
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([this] {
        m_user->type(CommentField, QStringLiteral("windy"));
        m_user->form->menu_edit_save();
        QVERIFY(m_user->form->isVisible());
        QCOMPARE(m_user->edit(CommentField)->text(), QStringLiteral("windy"));
        m_user->form->hide();
    }),
             0);
    QCOMPARE(m_user->fileBytes(), before);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().icon, QMessageBox::Critical);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
    m_user->reopen();
    QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("Jane Doe"));
}

void TestFormExifFailing::aBadPositionIsNamedWithoutABlock()
{
    m_user->open(photoWithoutBlock());
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([this] {
        m_user->type(AltitudeField, QStringLiteral("0"));
        m_user->form->menu_edit_save();
        QTRY_VERIFY(m_user->edit(AltitudeField)->hasFocus());
        m_user->type(AltitudeField, QStringLiteral("7"));
        m_user->form->menu_edit_save();
        QVERIFY(m_user->form->isVisible());
        m_user->form->hide();
    }),
             0);
    QCOMPARE(m_user->fileBytes(), before);
    QCOMPARE(m_user->boxes.boxes.size(), 2);
    QVERIFY(
        m_user->boxes.boxes.first().text.startsWith(QLatin1String("The GPS altitude is invalid.")));
    QCOMPARE(m_user->boxes.boxes.last().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
}

void TestFormExifFailing::aTooLongBlockIsReported()
{
    m_user->open(test::crampedPhoto(65500, test::Filling::MakerNote, {}));
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([&] {
        m_user->type(CommentField, QString(200, QLatin1Char('c')));
        m_user->form->menu_edit_save();
        QVERIFY(m_user->form->isVisible());
        QVERIFY(m_user->fileBytes() == before);
        m_user->form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_user->form.get()));
        m_user->type(CommentField, QStringLiteral("c"));
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
}

void TestFormExifFailing::aFolderThatCannotBeWrittenKeepsThePhoto()
{
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([&] {
        QFile folder(QFileInfo(m_user->path).path());
        const auto permissions = folder.permissions();
        QVERIFY(folder.setPermissions(kReadOnly));
        {
            const test::OrdinaryUser user;
            QVERIFY(m_user->document()->isValid());
            m_user->form->menu_edit_save();
        }
        QCOMPARE(m_user->fileBytes(), before);
        QVERIFY(folder.setPermissions(permissions));
        QVERIFY(m_user->form->isVisible());
        m_user->form->menu_edit_save();
    }),
             1);
    // Only the first attempt failed.
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
    const QDir folder(QFileInfo(m_user->path).path());
    QCOMPARE(folder.entryList(QDir::Files), QStringList{QStringLiteral("photo.jpg")});
}

/// The test may run as root, who could write it.
void TestFormExifFailing::aProtectedPhotoIsLeftAlone()
{
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    QFile photo(m_user->path);
    const QDir folder(QFileInfo(m_user->path).path());
    const auto permissions = photo.permissions();
    QCOMPARE(m_user->run([&] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        QVERIFY(photo.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        const QDateTime folderChanged = QFileInfo(folder.path()).lastModified();
        m_user->form->menu_edit_save();
        QCOMPARE(QFileInfo(folder.path()).lastModified(), folderChanged);
        QCOMPARE(m_user->fileBytes(), before);
        QVERIFY(m_user->form->isVisible());
        QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("Jo"));
        // Without the protection the photo can be saved.
        QVERIFY(photo.setPermissions(permissions));
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().icon, QMessageBox::Critical);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
    QVERIFY(!m_user->boxes.boxes.first().duringWait);
    QCOMPARE(m_user->value(0x013B, ExifListKind::Ifd0), QByteArray("Jo\0", 3));
}

void TestFormExifFailing::openOnCard()
{
    m_user->machine->sd = m_user->folder.path(QString());
    m_user->machine->insertCard(Slot::SD);
    m_user->open();
    test::setChangedAt(m_user->path, kLongAgo);
    m_user->reopen();
}

void TestFormExifFailing::missTheCard()
{
    m_user->machine->removeCard(Slot::SD);
    lumi::CardSlots::look();
    m_user->machine->insertCard(Slot::SD);
    lumi::CardSlots::look();
}

/// A photo of the same name with other texts.
void TestFormExifFailing::aPhotoOfAnotherCardIsLeftAlone()
{
    openOnCard();
    ExifBuilder other = test::editablePhoto();
    other.ascii(ExifListKind::Ifd0, 0x013B, "Mary Roe");
    QByteArray before;
    QCOMPARE(m_user->run([&] {
        m_user->type(CommentField, QStringLiteral("windy"));
        missTheCard();
        m_user->folder.put(other);
        before = m_user->fileBytes();
        m_user->form->menu_edit_save();
        QVERIFY(m_user->form->isVisible());
        QCOMPARE(m_user->edit(CommentField)->text(), QStringLiteral("windy"));
        m_user->form->hide();
    }),
             0);
    QVERIFY(!before.isEmpty());
    QCOMPARE(m_user->fileBytes(), before);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().icon, QMessageBox::Critical);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
    QVERIFY(!m_user->boxes.boxes.first().duringWait);
}

void TestFormExifFailing::theSameCardMayBeRemovedMeanwhile()
{
    openOnCard();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        missTheCard();
        m_user->form->menu_edit_save();
    }),
             1);
    QVERIFY(m_user->boxes.boxes.isEmpty());
    QCOMPARE(m_user->value(0x013B, ExifListKind::Ifd0), QByteArray("Jo\0", 3));
}

LUMI_TEST(TestFormExifFailing)
#include "TestFormExifFailing.moc"
