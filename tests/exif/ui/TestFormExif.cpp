// SPDX-License-Identifier: MIT
// The editor's window, and what its fields show and accept.
#include "app/common/labels.h"
#include "platform/windows/QPEMenuBar.h"
#include "tests/exif/ui/CallCounter.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::ExifBuilder;
using lumi::test::kAllFields;

namespace {

ExifBuilder photoWith(EditField field, const QByteArray &bytes)
{
    const EditRule &rule = kEditRules.at(std::size_t(field));
    const quint16 type = field == CommentField ? 7 : 2;
    ExifBuilder photo;
    photo.value(rule.list, rule.tag, type, static_cast<quint32>(bytes.size()), bytes);
    return photo;
}

} // namespace

class TestFormExif : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<EditorFixture>(); }

    void cleanup() { m_user.reset(); }

    void hasItsNames();
    void isModalAndNamedAfterThePhoto();
    void itsMenusAreInOrder();
    void theActionsHaveTheirIcons();
    void theHintStandsAboveThePages();
    void thePagesShowTheFields();
    void nothingIsCutOff();
    void fieldsTakeWhatTheirTagsHold();
    void aLongTextKeepsItsRestAfterOneDeletion_data();
    void aLongTextKeepsItsRestAfterOneDeletion();
    void anOpenEditorDoesNotHoldThePhotoOpen();
    void helpAndVersionOpen();

private:
    std::unique_ptr<EditorFixture> m_user;
};

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
    const QString title = m_user->form->windowTitle();
    QCOMPARE(title, elideToChars(m_user->form.get(), longName, 50));
    QVERIFY(title.endsWith(QLatin1String("X...")));
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
        const bool isShown = button != nullptr && button->isVisible();
        const QSize size = isShown ? button->size() : QSize();
        QVERIFY(size.width() >= 40 && size.height() >= 38);
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
        const EditRule &rule = kEditRules.at(std::size_t(field));
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

/// A text is stored between begin and end: author and compilation share a tag.
void TestFormExif::aLongTextKeepsItsRestAfterOneDeletion_data()
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
        // The text is still too long for another character.
        QTest::keyClick(m_user->edit(EditField(field)), Qt::Key_X);
        m_user->form->menu_edit_save();
    }),
             1);
    const EditRule &rule = kEditRules.at(std::size_t(field));
    QCOMPARE(m_user->value(rule.tag, rule.list), begin + text.mid(1) + end);
}

/// The user can remove the card while the editor is open.
void TestFormExif::anOpenEditorDoesNotHoldThePhotoOpen()
{
    m_user->open();
    QVERIFY(!lumi::test::isHeldOpen(m_user->path));
    m_user->type(LatitudeField, QStringLiteral("N91.00.00.000"));
    m_user->form->menu_edit_save();
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QVERIFY(m_user->form->isVisible());
    QVERIFY(!lumi::test::isHeldOpen(m_user->path));
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
    QCOMPARE(titles, QStringList{QStringLiteral("Help")});
    m_user->entry(QStringLiteral("Version"))->trigger();
    QCOMPARE(titles, (QStringList{QStringLiteral("Help"), QStringLiteral("Version")}));
}

LUMI_TEST(TestFormExif)
#include "TestFormExif.moc"
