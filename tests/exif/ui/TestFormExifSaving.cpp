// SPDX-License-Identifier: MIT
// What the editor saves.
#include "tests/exif/ui/Composition.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/TestMain.h"
#include "widgets/MyDialogWait.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QTest>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::ExifBuilder;
using lumi::test::kAllFields;

namespace {

QByteArray unicode(const QString &text)
{
    return QByteArray("UNICODE\0", 8) + text.toUtf8();
}

} // namespace

class TestFormExifSaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<EditorFixture>(); }

    void cleanup() { m_user.reset(); }

    void savingEndsWithOne();
    void acceptingSaves();
    void savingUneditedRewritesThePhoto();
    void everyFieldIsSaved();
    void foreignLettersAreLostOutsideTheComment();
    void aCommentInKanjiComesBack();
    void aCommentInTwoByteLettersIsReplaced();
    void composedTextIsSaved_data();
    void composedTextIsSaved();
    void kanjiCannotComeIntoTheTitle();
    void aPositionInHundredthsGoesAway();
    void otherTagsComeFromTheFile();
    void aWaitDialogIsUpWhileSaving();

private:
    std::unique_ptr<EditorFixture> m_user;
};

void TestFormExifSaving::savingEndsWithOne()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        m_user->entry(QStringLiteral("Save & Exit"))->trigger();
    }),
             1);
    QVERIFY(m_user->boxes.boxes.isEmpty());
    QVERIFY(!m_user->form->isVisible());
    QCOMPARE(m_user->value(0x013B, ExifListKind::Ifd0), QByteArray("Jo\0", 3));
}

void TestFormExifSaving::acceptingSaves()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->form->accept();
    }),
             1);
}

void TestFormExifSaving::savingUneditedRewritesThePhoto()
{
    m_user->open();
    QFile file(m_user->path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime old(QDate(2004, 5, 6), QTime(7, 8));
    QVERIFY(file.setFileTime(old, QFileDevice::FileModificationTime));
    file.close();
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QVERIFY(QFileInfo(m_user->path).lastModified() > old);
    QCOMPARE(m_user->value(0x013B, ExifListKind::Ifd0), QByteArray("Jane Doe\0", 9));
    QCOMPARE(m_user->value(0x010F, ExifListKind::Ifd0), QByteArray("Anvil Works\0", 12));
}

void TestFormExifSaving::everyFieldIsSaved()
{
    const QString texts[] = {
        QStringLiteral("Bob"),           QStringLiteral("Tour"),           QStringLiteral("Mary"),
        QStringLiteral("Sea"),           QStringLiteral("S1.WAV"),         QStringLiteral("windy"),
        QStringLiteral("N35.40.20.000"), QStringLiteral("E139.45.30.500"), QStringLiteral("-7"),
    };
    m_user->open();
    QCOMPARE(m_user->run([&] {
        for (const EditField field : kAllFields) {
            m_user->type(field, texts[field]);
        }
        m_user->form->menu_edit_save();
    }),
             1);
    m_user->reopen();
    QStringList shown;
    for (const EditField field : kAllFields) {
        shown.append(m_user->edit(field)->text());
    }
    QStringList expected(std::begin(texts), std::end(texts));
    expected.last() = QStringLiteral("-7.0");
    QCOMPARE(shown, expected);
    QCOMPARE(m_user->value(0xA004, ExifListKind::Exif).size(), 13);
    QCOMPARE(m_user->value(0x8298, ExifListKind::Ifd0), QByteArray("Bob\0Tour\0", 9));
    QVERIFY(m_user->document()->hasThumbnail());
}

/// The title is read as UTF-8 but written as Latin-1, so the second reading shows a replacement
/// character.
void TestFormExifSaving::foreignLettersAreLostOutsideTheComment()
{
    const QString texts[] = {QStringLiteral("café 海"), QStringLiteral("caf\uFFFD ?")};
    const QByteArray bytes[] = {QByteArray("caf\xE9 ?\0", 7), QByteArray("caf? ?\0", 7)};
    ExifBuilder photo;
    photo.ascii(ExifListKind::Ifd0, 0x010E, QStringLiteral("café 海").toUtf8());
    m_user->open(photo);
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        QCOMPARE(m_user->edit(TitleField)->text(), texts[i]);
        QCOMPARE(m_user->run([this] {
            m_user->form->menu_edit_save();
        }),
                 1);
        QCOMPARE(m_user->value(0x010E, ExifListKind::Ifd0), bytes[i]);
        m_user->reopen();
    }
}

void TestFormExifSaving::aCommentInKanjiComesBack()
{
    const QString comment = QStringLiteral("写真と海");
    m_user->open();
    QCOMPARE(m_user->run([&] {
        m_user->type(CommentField, comment);
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(m_user->value(0x9286, ExifListKind::Exif), unicode(comment));
    FPVExifFields fields(m_user->path);
    fields.setGroup(1);
    QCOMPARE(fields.valueText(5, false), comment);
}

void TestFormExifSaving::aCommentInTwoByteLettersIsReplaced()
{
    ExifBuilder photo;
    photo.undefined(ExifListKind::Exif, 0x9286, QByteArray("UNICODE\0h\0i\0", 12));
    m_user->open(photo);
    QCOMPARE(m_user->edit(CommentField)->text(), QStringLiteral("h"));
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(m_user->value(0x9286, ExifListKind::Exif), unicode(QStringLiteral("h")));
}

void TestFormExifSaving::composedTextIsSaved_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<QString>("composed");
    QTest::addColumn<QByteArray>("saved");
    QTest::newRow("before the comment") << int(CommentField) << false << QStringLiteral("写真")
                                        << unicode(QStringLiteral("写真at noon"));
    QTest::newRow("in place of the title")
        << int(TitleField) << true << QStringLiteral("Sea") << QByteArray("Sea\0", 4);
}

void TestFormExifSaving::composedTextIsSaved()
{
    QFETCH(int, field);
    QFETCH(bool, marked);
    QFETCH(QString, composed);
    m_user->open();
    QCOMPARE(m_user->run([&] {
        m_user->enter(EditField(field));
        if (marked) {
            m_user->edit(EditField(field))->selectAll();
        }
        const test::Composition composition(composed);
        m_user->form->menu_edit_save();
    }),
             1);
    const EditRule &rule = kEditRules.at(std::size_t(field));
    QTEST(m_user->value(rule.tag, rule.list), "saved");
}

void TestFormExifSaving::kanjiCannotComeIntoTheTitle()
{
    m_user->fillClipboard(QStringLiteral("写真2"));
    m_user->open();
    m_user->type(TitleField, QStringLiteral("写1"));
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("1"));
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("12"));
}

void TestFormExifSaving::aPositionInHundredthsGoesAway()
{
    ExifBuilder photo;
    photo.ascii(ExifListKind::Gps, 1, "N")
        .rationals(ExifListKind::Gps, 2, {{35, 1}, {4050, 100}, {0, 1}})
        .ascii(ExifListKind::Gps, 0x12, "WGS-84");
    m_user->open(photo);
    QCOMPARE(m_user->edit(LatitudeField)->text(), QString());
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QVERIFY(m_user->value(1, ExifListKind::Gps).isNull());
    QVERIFY(m_user->value(2, ExifListKind::Gps).isNull());
    QVERIFY(!m_user->value(0x12, ExifListKind::Gps).isNull());
}

void TestFormExifSaving::otherTagsComeFromTheFile()
{
    m_user->open();
    ExifBuilder changed = test::editablePhoto();
    changed.ascii(ExifListKind::Ifd0, 0x0131, "2.0");
    m_user->folder.put(changed);
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(m_user->value(0x0131, ExifListKind::Ifd0), QByteArray("2.0\0", 4));
}

void TestFormExifSaving::aWaitDialogIsUpWhileSaving()
{
    struct WaitWatch : QObject
    {
        const EditorFixture *user = nullptr;
        QStringList texts;
        QList<const QWidget *> parents;
        QByteArrayList shownWith;
        QByteArrayList hiddenWith;

        bool eventFilter(QObject *watched, QEvent *event) override
        {
            const auto *dialog = qobject_cast<MyDialogWait *>(watched);
            if (event->type() == QEvent::Show && dialog != nullptr) {
                texts.append(dialog->findChild<QLabel *>()->text());
                parents.append(dialog->parentWidget());
                shownWith.append(user->fileBytes());
            } else if (event->type() == QEvent::Hide && dialog != nullptr) {
                hiddenWith.append(user->fileBytes());
            }
            return false;
        }
    } watch;

    m_user->open();
    const QByteArray before = m_user->fileBytes();
    watch.user = m_user.get();
    qApp->installEventFilter(&watch);
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(watch.texts, QStringList{QStringLiteral("Working...")});
    QCOMPARE(watch.parents, QList<const QWidget *>{m_user->form.get()});
    QVERIFY(m_user->form->findChildren<MyDialogWait *>().isEmpty());
    // The photo was replaced while the dialog was visible.
    const QByteArray after = m_user->fileBytes();
    QVERIFY(after != before);
    QVERIFY(watch.shownWith == QByteArrayList{before});
    QVERIFY(watch.hiddenWith == QByteArrayList{after});
}

LUMI_TEST(TestFormExifSaving)
#include "TestFormExifSaving.moc"
