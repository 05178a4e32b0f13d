// SPDX-License-Identifier: MIT
// The editor's window, its actions, leaving it and saving.
#include "platform/QPEMenuBar.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"
#include "widgets/MyDialogWait.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMetaMethod>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::ExifBuilder;

namespace {

constexpr EditField kAllFields[] = {
    AuthorField,  CompilationField, OwnerField,     TitleField,    RelatedAudioField,
    CommentField, LatitudeField,    LongitudeField, AltitudeField,
};

/// Of a folder: also for those who share the owner's group.
constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup
    | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

/// The bytes of the field's tag in the file, where author and compilation share one.
void addLongTexts()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("end");
    const QByteArray nul(1, '\0');
    const QByteArray text = "0" + QByteArray(300, 't') + "9";
    QTest::newRow("author") << int(AuthorField) << QByteArray() << text << nul + "Trip" + nul;
    QTest::newRow("compilation") << int(CompilationField) << "Ann" + nul << text << nul;
    QTest::newRow("owner") << int(OwnerField) << QByteArray() << text << nul;
    QTest::newRow("title") << int(TitleField) << QByteArray() << text << nul;
    QTest::newRow("comment") << int(CommentField) << "UNICODE" + nul << text << QByteArray();
}

ExifBuilder photoWith(EditField field, const QByteArray &bytes)
{
    const EditRule &rule = kEditRules.at(field);
    const quint16 type = field == CommentField ? 7 : 2;
    ExifBuilder photo;
    photo.value(rule.list, rule.tag, type, static_cast<quint32>(bytes.size()), bytes);
    return photo;
}

QByteArray unicode(const QString &text)
{
    return QByteArray("UNICODE\0", 8) + text.toUtf8();
}

} // namespace

class TestFormExif : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user.reset(new EditorFixture); }

    void cleanup() { m_user.reset(); }

    void hasItsNames();
    void isModalAndNamedAfterThePhoto();
    void itsMenusAreInOrder();
    void theActionsHaveTheirIcons();
    void theHintStandsAboveThePages();
    void thePagesShowTheFields();
    void nothingIsCutOff();
    void fieldsTakeWhatTheirTagsHold();
    void longTextsOfTheFileAreNotCut_data();
    void longTextsOfTheFileAreNotCut();
    void aLongTextKeepsItsRestAfterOneDeletion_data();
    void aLongTextKeepsItsRestAfterOneDeletion();
    void aPositionInHundredthsShowsEmpty();
    void actionsFollowTheMarkedText();
    void pasteFollowsTheClipboard_data();
    void pasteFollowsTheClipboard();
    void actionsReachTheFieldWithTheFocus();
    void actionsReachTheFieldBeforeTheMenu();
    void theOpenedMenuReachesTheField();
    void theMenuReachesNoFieldThatWasLeft();
    void actionsElsewhereDoNothing();
    void aPastedPositionFillsBothFields_data();
    void aPastedPositionFillsBothFields();
    void whatIsNoPositionIsPastedAsUsual();
    void otherFieldsTakeAPositionAsText();
    void theHeightTakesAPositionAsText();
    void leavingUneditedAsksNothing();
    void leavingAsksAfterEveryEdit_data();
    void leavingAsksAfterEveryEdit();
    void typingAndDeletingStillAsks();
    void onlyYesLeaves_data();
    void onlyYesLeaves();
    void closingTheWindowIsLeaving();
    void theEndOfTheProgramEndsIt();
    void aMinimisedWindowIsNotAtItsEnd();
    void itMayGoWhileItRuns();
    void savingEndsWithOne();
    void acceptingSaves();
    void savingUneditedRewritesThePhoto();
    void everyFieldIsSaved();
    void foreignLettersAreLostOutsideTheComment();
    void aCommentInKanjiComesBack();
    void kanjiCannotComeIntoTheTitle();
    void blanksTakeTheOwnerAway();
    void aPositionInHundredthsGoesAway();
    void anEmptyHeightStays();
    void whatIsNotEditedComesFromTheFile();
    void aBadPositionIsNamed_data();
    void aBadPositionIsNamed();
    void failuresAreTold_data();
    void failuresAreTold();
    void aFolderThatCannotBeWrittenKeepsThePhoto();
    void aWaitDialogIsUpWhileSaving();
    void helpAndVersionOpen();

private:
    /// Opens the menu Edit by a tap and taps one of its entries.
    void tapEntry(const QString &text);

    std::unique_ptr<EditorFixture> m_user;
};

void TestFormExif::tapEntry(const QString &text)
{
    auto *bar = m_user->form->findChild<QPEMenuBar *>();
    QAction *title = bar->actions().first();
    const QPoint at = bar->mapTo(m_user->form.get(), bar->actionGeometry(title).center());
    QTest::mouseClick(m_user->form->windowHandle(), Qt::LeftButton, {}, at);
    QMenu *menu = title->menu();
    QTRY_VERIFY(menu->isVisible());
    QAction *action = m_user->entry(text);
    QVERIFY2(action->isEnabled(), qPrintable(text));
    QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {},
                      menu->actionGeometry(action).center());
    QTRY_VERIFY(!menu->isVisible());
}

void TestFormExif::hasItsNames()
{
    const QMetaObject &meta = FormExif::staticMetaObject;
    QCOMPARE(meta.superClass(), &QMainWindow::staticMetaObject);
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.append(meta.method(i).methodSignature());
    }
    QCOMPARE(names,
             (QList<QByteArray>{"accept()", "menu_edit_undo()", "menu_edit_cut()",
                                "menu_edit_copy()", "menu_edit_paste()", "menu_edit_save()",
                                "menu_edit_editCancel()", "menu_option_Help()",
                                "menu_option_Version()", "lineedit_copyAvailable(bool)",
                                "lineedit_pasteAvailable(bool)", "lineedit_paste(QString*)"}));
}

void TestFormExif::isModalAndNamedAfterThePhoto()
{
    m_user->open(test::editablePhoto(), QStringLiteral("a.b.jpg"));
    QVERIFY(m_user->form->isModal());
    QVERIFY(m_user->form->isWindow());
    QVERIFY(m_user->form->isMaximized());
    QCOMPARE(m_user->form->windowTitle(), QStringLiteral("a"));
    const QString longName(120, QLatin1Char('X'));
    m_user->open(test::editablePhoto(), longName + QStringLiteral(".jpg"));
    QVERIFY(m_user->form->windowTitle().endsWith(QLatin1String("X...")));
    QVERIFY(m_user->form->windowTitle().size() <= 50);
}

void TestFormExif::itsMenusAreInOrder()
{
    m_user->open();
    QStringList texts;
    const auto menus = m_user->form->findChild<QPEMenuBar *>()->actions();
    for (const QAction *menu : menus) {
        texts.append(menu->text());
        const auto entries = menu->menu()->actions();
        for (const QAction *entry : entries) {
            texts.append(entry->isSeparator() ? QStringLiteral("-") : test::shownText(entry));
        }
    }
    QCOMPARE(
        texts,
        (QStringList{QStringLiteral("Edit"), QStringLiteral("Cut"), QStringLiteral("Copy"),
                     QStringLiteral("Paste"), QStringLiteral("-"), QStringLiteral("Save & Exit"),
                     QStringLiteral("-"), QStringLiteral("Exit"), QStringLiteral("About"),
                     QStringLiteral("Help"), QStringLiteral("Version")}));
    // The second bar has the three actions as buttons.
    const auto bars = m_user->form->findChildren<QToolBar *>();
    QCOMPARE(bars.size(), 2);
    for (const QToolBar *bar : bars) {
        QVERIFY(!bar->isMovable());
    }
    for (const char *name : {"Cut", "Copy", "Paste"}) {
        QAction *action = m_user->entry(QLatin1String(name));
        const QWidget *button = bars.last()->widgetForAction(action);
        QVERIFY(button != nullptr && button->isVisible());
        QVERIFY(button->width() >= 40 && button->height() >= 38);
        QVERIFY(bars.first()->widgetForAction(action) == nullptr);
    }
    QCOMPARE(m_user->form->contextMenuPolicy(), Qt::NoContextMenu);
}

void TestFormExif::theActionsHaveTheirIcons()
{
    const QTemporaryDir resources;
    const QDir pixmaps(resources.filePath(QStringLiteral("pixmaps/lumivault")));
    QVERIFY(QDir().mkpath(pixmaps.path()));
    const std::pair<const char *, QColor> rows[]
        = {{"Cut", Qt::red}, {"Copy", Qt::green}, {"Paste", Qt::blue}};
    for (const auto &[name, colour] : rows) {
        QImage image(24, 24, QImage::Format_RGB32);
        image.fill(colour);
        const QString file = QString::fromLatin1(name).toLower() + QLatin1String(".png");
        QVERIFY(image.save(pixmaps.filePath(file)));
    }
    m_user->machine->resources = resources.path();
    m_user->open();
    for (const auto &[name, colour] : rows) {
        const QImage image = m_user->entry(QLatin1String(name))->icon().pixmap(24).toImage();
        QVERIFY2(!image.isNull(), name);
        QCOMPARE(image.pixelColor(12, 12), colour);
    }
}

void TestFormExif::theHintStandsAboveThePages()
{
    m_user->open();
    const auto labels = m_user->form->centralWidget()->findChildren<QLabel *>(
        QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(labels.size(), 1);
    const QLabel *hint = labels.first();
    QCOMPARE(hint->text(),
             QStringLiteral("Alphanumeric characters only, except in the user comment."));
    QCOMPARE(hint->indent(), 10);
    QCOMPARE(hint->font().pointSize(), 16);
    QCOMPARE(hint->font().weight(), QFont::Bold);
    QCOMPARE(hint->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    QCOMPARE(hint->y(), 0);
    QCOMPARE(m_user->tabs->y(), hint->height());
}

void TestFormExif::thePagesShowTheFields()
{
    m_user->open();
    QStringList shown;
    for (int page = 0; page < m_user->tabs->count(); ++page) {
        shown.append(m_user->tabs->tabText(page));
        const auto *grid = qobject_cast<QGridLayout *>(m_user->tabs->widget(page)->layout());
        QCOMPARE(grid->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(grid->spacing(), 4);
        for (int row = 0; grid->itemAtPosition(row, 0) != nullptr; ++row) {
            shown.append(qobject_cast<QLabel *>(grid->itemAtPosition(row, 0)->widget())->text());
            shown.append(
                qobject_cast<MyMultiLineEdit *>(grid->itemAtPosition(row, 1)->widget())->text());
            QCOMPARE(grid->itemAtPosition(row, 0)->alignment(), Qt::AlignVCenter);
            QCOMPARE(grid->itemAtPosition(row, 1)->alignment(), Qt::AlignVCenter);
        }
    }
    QCOMPARE(shown, (QStringList{QStringLiteral("Basic"),
                                 QStringLiteral("Author "),
                                 QStringLiteral("Ann"),
                                 QStringLiteral("Compilation "),
                                 QStringLiteral("Trip"),
                                 QStringLiteral("User Data"),
                                 QStringLiteral("Owner"),
                                 QStringLiteral("Jane Doe"),
                                 QStringLiteral("Title"),
                                 QStringLiteral("Harbour"),
                                 QStringLiteral("Related Audio"),
                                 QStringLiteral("DSC00001.WAV"),
                                 QStringLiteral("Comment"),
                                 QStringLiteral("at noon"),
                                 QStringLiteral("GPS"),
                                 QStringLiteral("Lat."),
                                 QStringLiteral("S12.34.56.789"),
                                 QStringLiteral("Long."),
                                 QStringLiteral("W077.02.03.000"),
                                 QStringLiteral("Alt."),
                                 QStringLiteral("10.50")}));
}

void TestFormExif::nothingIsCutOff()
{
    m_user->open();
    QVERIFY(m_user->form->width() <= 640 && m_user->form->height() <= 480);
    for (int page = 0; page < m_user->tabs->count(); ++page) {
        m_user->tabs->setCurrentIndex(page);
        QCoreApplication::processEvents();
        const QWidget *widget = m_user->tabs->widget(page);
        const auto labels = widget->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            QVERIFY(widget->rect().contains(label->geometry()));
            QVERIFY(label->width() >= label->sizeHint().width());
        }
        const auto edits = widget->findChildren<MyMultiLineEdit *>();
        for (const MyMultiLineEdit *edit : edits) {
            QVERIFY(widget->rect().contains(edit->geometry()));
            QVERIFY(edit->height() >= 40);
            QVERIFY(edit->width() > 400);
        }
        QVERIFY(m_user->tabs->tabBar()->tabRect(page).height() >= 40);
    }
    const auto *hint = m_user->form->centralWidget()->findChild<QLabel *>();
    QVERIFY(hint->height() >= hint->heightForWidth(hint->width()));
}

void TestFormExif::fieldsTakeWhatTheirTagsHold()
{
    m_user->open();
    for (const EditField field : kAllFields) {
        const EditRule &rule = kEditRules.at(field);
        const MyMultiLineEdit *edit = m_user->edit(field);
        QCOMPARE(edit->charMask(), rule.charMask);
        QCOMPARE(edit->maxLength(), rule.maxLength);
        QCOMPARE(edit->focusPolicy(), Qt::StrongFocus);
        QCOMPARE(edit->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(edit->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QVERIFY(!edit->edited());
        m_user->type(field, QString(rule.maxLength + 5, QLatin1Char('7')));
        QCOMPARE(edit->text(), QString(rule.maxLength, QLatin1Char('7')));
        QVERIFY(edit->edited());
    }
}

void TestFormExif::longTextsOfTheFileAreNotCut_data()
{
    addLongTexts();
}

void TestFormExif::longTextsOfTheFileAreNotCut()
{
    QFETCH(int, field);
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, end);
    QFETCH(QByteArray, text);
    m_user->open(photoWith(EditField(field), begin + text + end));
    QCOMPARE(m_user->edit(EditField(field))->text().toLatin1(), text);
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    const EditRule &rule = kEditRules.at(std::size_t(field));
    QCOMPARE(m_user->value(rule.tag, rule.list), begin + text + end);
}

void TestFormExif::aLongTextKeepsItsRestAfterOneDeletion_data()
{
    addLongTexts();
}

void TestFormExif::aLongTextKeepsItsRestAfterOneDeletion()
{
    QFETCH(int, field);
    QFETCH(QByteArray, begin);
    QFETCH(QByteArray, end);
    QFETCH(QByteArray, text);
    m_user->open(photoWith(EditField(field), begin + text + end));
    QCOMPARE(m_user->run([this, field] {
        m_user->enter(EditField(field));
        m_user->edit(EditField(field))->moveCursor(QTextCursor::Start);
        QTest::keyClick(m_user->edit(EditField(field)), Qt::Key_Delete);
        // There is still no room for more.
        QTest::keyClick(m_user->edit(EditField(field)), Qt::Key_X);
        m_user->form->menu_edit_save();
    }),
             1);
    const EditRule &rule = kEditRules.at(std::size_t(field));
    QCOMPARE(m_user->value(rule.tag, rule.list), begin + text.mid(1) + end);
}

void TestFormExif::aPositionInHundredthsShowsEmpty()
{
    ExifBuilder photo;
    photo.ascii(ExifListKind::Gps, 1, "N")
        .rationals(ExifListKind::Gps, 2, {{35, 1}, {4050, 100}, {0, 1}});
    m_user->open(photo);
    QCOMPARE(m_user->edit(LatitudeField)->text(), QString());
}

void TestFormExif::actionsFollowTheMarkedText()
{
    m_user->open();
    const QAction *cut = m_user->entry(QStringLiteral("Cut"));
    const QAction *copy = m_user->entry(QStringLiteral("Copy"));
    QVERIFY(!cut->isEnabled() && !copy->isEnabled());
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    QVERIFY(cut->isEnabled() && copy->isEnabled());
    m_user->enter(TitleField);
    QVERIFY(!cut->isEnabled() && !copy->isEnabled());
    m_user->edit(TitleField)->selectAll();
    QVERIFY(cut->isEnabled() && copy->isEnabled());
    m_user->tabs->tabBar()->setFocus();
    QVERIFY(!cut->isEnabled() && !copy->isEnabled());
}

void TestFormExif::pasteFollowsTheClipboard_data()
{
    QTest::addColumn<QString>("clipboard");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("a text") << QStringLiteral("x") << true;
}

void TestFormExif::pasteFollowsTheClipboard()
{
    QFETCH(QString, clipboard);
    m_user->fillClipboard(clipboard);
    m_user->open();
    const QAction *paste = m_user->entry(QStringLiteral("Paste"));
    QTEST(paste->isEnabled(), "enabled");
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    m_user->control(OwnerField, Qt::Key_C);
    QVERIFY(paste->isEnabled());
}

void TestFormExif::actionsReachTheFieldWithTheFocus()
{
    m_user->open();
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    m_user->entry(QStringLiteral("Copy"))->trigger();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Jane Doe"));
    QVERIFY(!m_user->edit(OwnerField)->edited());
    m_user->enter(TitleField);
    m_user->edit(TitleField)->selectAll();
    m_user->entry(QStringLiteral("Paste"))->trigger();
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("Jane Doe"));
    m_user->form->menu_edit_undo();
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("Harbour"));
    m_user->edit(TitleField)->selectAll();
    m_user->entry(QStringLiteral("Cut"))->trigger();
    QCOMPARE(m_user->edit(TitleField)->text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Harbour"));
    // Undo has no entry.
    QVERIFY(m_user->entry(QStringLiteral("Undo")) == nullptr);
}

void TestFormExif::actionsReachTheFieldBeforeTheMenu()
{
    m_user->open();
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    m_user->form->findChild<QPEMenuBar *>()->setFocus(Qt::MenuBarFocusReason);
    QVERIFY(!m_user->edit(OwnerField)->hasFocus());
    QVERIFY(m_user->entry(QStringLiteral("Cut"))->isEnabled());
    m_user->entry(QStringLiteral("Cut"))->trigger();
    QCOMPARE(m_user->edit(OwnerField)->text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Jane Doe"));
}

void TestFormExif::theOpenedMenuReachesTheField()
{
    m_user->open();
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    tapEntry(QStringLiteral("Copy"));
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Jane Doe"));
    QVERIFY(m_user->edit(OwnerField)->hasMarkedText());
    m_user->fillClipboard(QString());
    tapEntry(QStringLiteral("Cut"));
    QCOMPARE(m_user->edit(OwnerField)->text(), QString());
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Jane Doe"));
    m_user->enter(TitleField);
    m_user->edit(TitleField)->selectAll();
    tapEntry(QStringLiteral("Paste"));
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("Jane Doe"));
    QVERIFY(m_user->edit(TitleField)->hasFocus());
}

void TestFormExif::theMenuReachesNoFieldThatWasLeft()
{
    m_user->fillClipboard(QStringLiteral("x"));
    m_user->open();
    m_user->enter(OwnerField);
    m_user->tabs->tabBar()->setFocus();
    m_user->form->findChild<QPEMenuBar *>()->setFocus(Qt::MenuBarFocusReason);
    m_user->entry(QStringLiteral("Paste"))->trigger();
    for (const EditField field : kAllFields) {
        QVERIFY(!m_user->edit(field)->edited());
    }
    // The one with the focus before the menu it is again.
    m_user->enter(TitleField);
    m_user->form->findChild<QPEMenuBar *>()->setFocus(Qt::MenuBarFocusReason);
    m_user->entry(QStringLiteral("Paste"))->trigger();
    QVERIFY(m_user->edit(TitleField)->edited());
    QVERIFY(!m_user->edit(OwnerField)->edited());
}

void TestFormExif::actionsElsewhereDoNothing()
{
    m_user->fillClipboard(QStringLiteral("x"));
    m_user->open();
    m_user->enter(OwnerField);
    m_user->tabs->tabBar()->setFocus();
    m_user->form->menu_edit_paste();
    m_user->form->menu_edit_cut();
    for (const EditField field : kAllFields) {
        QVERIFY(!m_user->edit(field)->edited());
    }
}

void TestFormExif::aPastedPositionFillsBothFields_data()
{
    QTest::addColumn<int>("field");
    QTest::newRow("into the latitude") << int(LatitudeField);
    QTest::newRow("into the longitude") << int(LongitudeField);
}

void TestFormExif::aPastedPositionFillsBothFields()
{
    QFETCH(int, field);
    m_user->fillClipboard(QStringLiteral("N35.40.20.000E139.45.30.000"));
    m_user->open();
    m_user->enter(EditField(field));
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(LatitudeField)->text(), QStringLiteral("N35.40.20.000"));
    QCOMPARE(m_user->edit(LongitudeField)->text(), QStringLiteral("E139.45.30.000"));
    QVERIFY(m_user->edit(LatitudeField)->edited());
    QVERIFY(m_user->edit(LongitudeField)->edited());
    QVERIFY(!m_user->edit(AltitudeField)->edited());
    // A slip of the pen can be taken back.
    m_user->form->menu_edit_undo();
    QVERIFY(m_user->edit(EditField(field))
                ->text()
                .startsWith(QLatin1Char(field == LatitudeField ? 'S' : 'W')));
}

void TestFormExif::whatIsNoPositionIsPastedAsUsual()
{
    m_user->fillClipboard(QStringLiteral("N35.40"));
    m_user->open();
    m_user->enter(LatitudeField);
    m_user->edit(LatitudeField)->selectAll();
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(LatitudeField)->text(), QStringLiteral("N35.40"));
    QCOMPARE(m_user->edit(LongitudeField)->text(), QStringLiteral("W077.02.03.000"));
}

void TestFormExif::otherFieldsTakeAPositionAsText()
{
    const QString position = QStringLiteral("N35.40.20.000E139.45.30.000");
    m_user->fillClipboard(position);
    m_user->open();
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(OwnerField)->text(), position);
    QVERIFY(!m_user->edit(LatitudeField)->edited());
}

void TestFormExif::theHeightTakesAPositionAsText()
{
    m_user->fillClipboard(QStringLiteral("N35.40.20.000E139.45.30.000"));
    m_user->open();
    m_user->enter(AltitudeField);
    m_user->edit(AltitudeField)->selectAll();
    m_user->form->menu_edit_paste();
    // As much of it as there is room for.
    QCOMPARE(m_user->edit(AltitudeField)->text(), QStringLiteral("N35.40.20"));
    QVERIFY(!m_user->edit(LatitudeField)->edited());
    QVERIFY(!m_user->edit(LongitudeField)->edited());
}

void TestFormExif::leavingUneditedAsksNothing()
{
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([this] {
        m_user->entry(QStringLiteral("Exit"))->trigger();
    }),
             0);
    QVERIFY(m_user->boxes.boxes.isEmpty());
    QVERIFY(!m_user->form->isVisible());
    QCOMPARE(m_user->fileBytes(), before);
}

void TestFormExif::leavingAsksAfterEveryEdit_data()
{
    QTest::addColumn<int>("field");
    for (const EditField field : kAllFields) {
        QTest::addRow("field %d", int(field)) << int(field);
    }
}

void TestFormExif::leavingAsksAfterEveryEdit()
{
    QFETCH(int, field);
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    m_user->boxes.answer = QMessageBox::Yes;
    QCOMPARE(m_user->run([this, field] {
        m_user->type(EditField(field), QStringLiteral("1"));
        QVERIFY(m_user->form->menu_edit_editCancel());
    }),
             0);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    const auto &box = m_user->boxes.boxes.first();
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.title, QStringLiteral("Edit cancelled"));
    QCOMPARE(box.text,
             QStringLiteral("Exif information has been changed.\nIt will be discarded. Continue?"));
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.parent, m_user->form.get());
    QCOMPARE(m_user->fileBytes(), before);
}

void TestFormExif::typingAndDeletingStillAsks()
{
    m_user->open();
    m_user->boxes.answer = QMessageBox::Yes;
    QCOMPARE(m_user->run([this] {
        m_user->enter(OwnerField);
        QTest::keyClick(m_user->edit(OwnerField), Qt::Key_X);
        QTest::keyClick(m_user->edit(OwnerField), Qt::Key_Backspace);
        QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("Jane Doe"));
        m_user->form->close();
    }),
             0);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
}

void TestFormExif::onlyYesLeaves_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("key");
    QTest::newRow("No") << int(QMessageBox::No) << 0;
    QTest::newRow("Escape") << int(QMessageBox::NoButton) << int(Qt::Key_Escape);
    QTest::newRow("Return, since No is the default")
        << int(QMessageBox::NoButton) << int(Qt::Key_Return);
    QTest::newRow("the box is closed") << int(QMessageBox::NoButton) << 0;
}

void TestFormExif::onlyYesLeaves()
{
    QFETCH(int, answer);
    QFETCH(int, key);
    m_user->open();
    bool stayed = false;
    QCOMPARE(m_user->run([&] {
        m_user->type(OwnerField, QStringLiteral("x"));
        m_user->boxes.answer = QMessageBox::StandardButton(answer);
        m_user->boxes.key = key;
        const bool left = m_user->form->menu_edit_editCancel();
        stayed = !left && m_user->form->isVisible();
        QCOMPARE(m_user->edit(OwnerField)->text(), QStringLiteral("x"));
        m_user->boxes.key = 0;
        m_user->boxes.answer = QMessageBox::Yes;
        QVERIFY(m_user->form->menu_edit_editCancel());
    }),
             0);
    QVERIFY(stayed);
    QCOMPARE(m_user->boxes.boxes.size(), 2);
}

void TestFormExif::closingTheWindowIsLeaving()
{
    m_user->open();
    bool closed = true;
    QCOMPARE(m_user->run([this, &closed] {
        m_user->type(OwnerField, QStringLiteral("x"));
        m_user->boxes.answer = QMessageBox::No;
        closed = m_user->form->close();
        QVERIFY(m_user->form->isVisible());
        m_user->boxes.answer = QMessageBox::Yes;
        QVERIFY(m_user->form->close());
    }),
             0);
    QVERIFY(!closed);
    QVERIFY(!m_user->form->isVisible());
}

void TestFormExif::theEndOfTheProgramEndsIt()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("x"));
        QCoreApplication::exit(0);
    }),
             0);
    // The program's own loop forgets the request.
    QTimer::singleShot(0, qApp, [] {
        QCoreApplication::exit(0);
    });
    QCoreApplication::exec();
}

void TestFormExif::aMinimisedWindowIsNotAtItsEnd()
{
    struct HideWatch : QObject
    {
        int hides = 0;

        bool eventFilter(QObject * /*watched*/, QEvent *event) override
        {
            hides += event->type() == QEvent::Hide && event->spontaneous() ? 1 : 0;
            return false;
        }
    } watch;

    m_user->open();
    m_user->form->installEventFilter(&watch);
    bool wasRunning = false;
    QCOMPARE(m_user->run([&] {
        m_user->form->showMinimized();
        QTimer::singleShot(50, m_user->form.get(), [&] {
            wasRunning = true;
            m_user->form->menu_edit_save();
        });
    }),
             1);
    QCOMPARE(watch.hides, 1);
    QVERIFY(wasRunning);
}

void TestFormExif::itMayGoWhileItRuns()
{
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("x"));
        m_user->form.reset();
    }),
             0);
    QVERIFY(m_user->boxes.boxes.isEmpty());
    QCOMPARE(m_user->fileBytes(), before);
}

void TestFormExif::savingEndsWithOne()
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

void TestFormExif::acceptingSaves()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->form->accept();
    }),
             1);
}

void TestFormExif::savingUneditedRewritesThePhoto()
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

void TestFormExif::everyFieldIsSaved()
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
    m_user->form = std::make_unique<FormExif>(&m_user->browser, m_user->path);
    m_user->tabs = m_user->form->findChild<QTabWidget *>();
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

/// Other programs write UTF-8 there. It is read as such, but written in Latin-1, which is no
/// UTF-8 when it is read again.
void TestFormExif::foreignLettersAreLostOutsideTheComment()
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
        m_user->form = std::make_unique<FormExif>(&m_user->browser, m_user->path);
        m_user->tabs = m_user->form->findChild<QTabWidget *>();
    }
}

void TestFormExif::aCommentInKanjiComesBack()
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

void TestFormExif::kanjiCannotComeIntoTheTitle()
{
    m_user->fillClipboard(QStringLiteral("写真2"));
    m_user->open();
    m_user->type(TitleField, QStringLiteral("写1"));
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("1"));
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(TitleField)->text(), QStringLiteral("12"));
}

void TestFormExif::blanksTakeTheOwnerAway()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QString(50, QLatin1Char(' ')));
        QCOMPARE(m_user->edit(OwnerField)->text().size(), 50);
        m_user->form->menu_edit_save();
    }),
             1);
    QVERIFY(m_user->value(0x013B, ExifListKind::Ifd0).isNull());
    QVERIFY(!m_user->value(0x010E, ExifListKind::Ifd0).isNull());
}

void TestFormExif::aPositionInHundredthsGoesAway()
{
    ExifBuilder photo;
    photo.ascii(ExifListKind::Gps, 1, "N")
        .rationals(ExifListKind::Gps, 2, {{35, 1}, {4050, 100}, {0, 1}})
        .ascii(ExifListKind::Gps, 0x12, "WGS-84");
    m_user->open(photo);
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QVERIFY(m_user->value(1, ExifListKind::Gps).isNull());
    QVERIFY(m_user->value(2, ExifListKind::Gps).isNull());
    QVERIFY(!m_user->value(0x12, ExifListKind::Gps).isNull());
}

void TestFormExif::anEmptyHeightStays()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        for (const EditField field : {LatitudeField, LongitudeField, AltitudeField}) {
            m_user->type(field, QString());
        }
        m_user->form->menu_edit_save();
    }),
             1);
    for (const int tag : {0, 1, 2, 3, 4}) {
        QVERIFY(m_user->value(tag, ExifListKind::Gps).isNull());
    }
    QVERIFY(!m_user->value(5, ExifListKind::Gps).isNull());
    QVERIFY(!m_user->value(6, ExifListKind::Gps).isNull());
}

void TestFormExif::whatIsNotEditedComesFromTheFile()
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

void TestFormExif::aBadPositionIsNamed_data()
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

void TestFormExif::aBadPositionIsNamed()
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
        // As soon as the window is active again.
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

void TestFormExif::failuresAreTold_data()
{
    QTest::addColumn<int>("freeKB");
    QTest::addColumn<QString>("message");
    QTest::newRow("no room") << 0 << QStringLiteral("Free some memory and try again");
    QTest::newRow("the photo is gone")
        << -1 << QStringLiteral("Compiling Exif information failed. Retry.");
}

void TestFormExif::failuresAreTold()
{
    QFETCH(int, freeKB);
    // Larger than the free room, and the temporary file cannot be made.
    m_user->open(test::editablePhoto().photo(ExifBuilder::jpeg(400, 300, 0)));
    QVERIFY(QFileInfo(m_user->path).size() >= 1024);
    QCOMPARE(m_user->run([this, freeKB] {
        m_user->type(OwnerField, QStringLiteral("Jo"));
        const QFileInfo photo(m_user->path);
        QFile folder(photo.path());
        const auto permissions = folder.permissions();
        if (freeKB < 0) {
            QVERIFY(QFile::remove(m_user->path));
        } else {
            m_user->machine->setFreeDiskKB(freeKB);
            QVERIFY(folder.setPermissions(kReadOnly));
        }
        {
            const test::OrdinaryUser user;
            m_user->form->menu_edit_save();
        }
        QVERIFY(folder.setPermissions(permissions));
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

void TestFormExif::aFolderThatCannotBeWrittenKeepsThePhoto()
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
    // Told once; the second try, with the folder writable again, went through.
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->boxes.boxes.first().text,
             QStringLiteral("Compiling Exif information failed. Retry."));
    const QDir folder(QFileInfo(m_user->path).path());
    QCOMPARE(folder.entryList(QDir::Files), QStringList{QStringLiteral("photo.jpg")});
}

void TestFormExif::aWaitDialogIsUpWhileSaving()
{
    struct WaitWatch : QObject
    {
        QStringList texts;
        QList<const QWidget *> parents;

        bool eventFilter(QObject *watched, QEvent *event) override
        {
            const auto *dialog = qobject_cast<MyDialogWait *>(watched);
            if (event->type() == QEvent::Show && dialog != nullptr) {
                texts.append(dialog->findChild<QLabel *>()->text());
                parents.append(dialog->parentWidget());
            }
            return false;
        }
    } watch;

    m_user->open();
    qApp->installEventFilter(&watch);
    QCOMPARE(m_user->run([this] {
        m_user->form->menu_edit_save();
    }),
             1);
    QCOMPARE(watch.texts, QStringList{QStringLiteral("Working...")});
    QCOMPARE(watch.parents, QList<const QWidget *>{m_user->form.get()});
    QVERIFY(m_user->form->findChildren<MyDialogWait *>().isEmpty());
}

void TestFormExif::helpAndVersionOpen()
{
    m_user->open();
    QStringList titles;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&titles] {
        QWidget *window = QApplication::activeModalWidget();
        if (window != nullptr && qobject_cast<FormExif *>(window) == nullptr) {
            titles.append(window->windowTitle());
            window->close();
        }
    });
    timer.start(20);
    m_user->entry(QStringLiteral("Help"))->trigger();
    QCOMPARE(titles.size(), 1);
    m_user->entry(QStringLiteral("Version"))->trigger();
    QCOMPARE(titles.size(), 2);
    QCOMPARE(titles.last(), QStringLiteral("Version"));
}

LUMI_TEST(TestFormExif)
#include "TestFormExif.moc"
