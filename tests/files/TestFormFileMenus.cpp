// SPDX-License-Identifier: MIT
#include "app/common/FormEvent.h"
#include "files/fileKeys.h"
#include "platform/windows/QPEMenuBar.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QApplication>
#include <QDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using lumi::test::FormFixture;

namespace {

constexpr int kAnyId = -1;
constexpr int kSeparator = -2;

struct Row
{
    int id;
    const char *text;
};

const QList<Row> kFile = {{0, "New Folder"}, {1, "Change Name"},     {kSeparator, ""},
                          {2, "Delete"},     {3, "Delete Selected"}, {4, "Delete Empty Folder"}};
const QList<Row> kEdit
    = {{6, "Cut"},   {5, "Copy"},      {8, "Cut Selected"}, {7, "Copy Selected"},
       {9, "Paste"}, {kSeparator, ""}, {10, "Select All"},  {11, "Deselect All"}};
const QList<Row> kView = {{kSeparator, ""}, {13, "Large"},     {14, "Small"},
                          {15, "Info"},     {16, "Slideshow"}, {19, "Full View"}};
const QList<Row> kSlideshow = {{17, "Run"}, {18, "Options"}};
const QList<Row> kAbout = {{kAnyId, "Help"}, {kAnyId, "Version"}};

QStringList rowTexts(const QList<Row> &rows)
{
    QStringList result;
    for (const Row &row : rows) {
        const QString id = row.id == kAnyId ? QStringLiteral("any") : QString::number(row.id);
        result.append(row.id == kSeparator
                          ? QStringLiteral("---")
                          : QString(id + QLatin1Char(' ') + QLatin1String(row.text)));
    }
    return result;
}

QStringList menuTexts(const QMenu *menu)
{
    QStringList result;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        const int number = action->data().toInt();
        const QString id = number < 0 ? QStringLiteral("any") : QString::number(number);
        result.append(action->isSeparator() ? QStringLiteral("---")
                                            : QString(id + QLatin1Char(' ') + action->text()));
    }
    return result;
}

/// Closes the next dialog and records its title.
void takeTitleOfNextDialog(QTimer *timer, QString *title)
{
    QObject::connect(timer, &QTimer::timeout, timer, [timer, title] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            *title = dialog->windowTitle();
            timer->stop();
            dialog->close();
        }
    });
    timer->start(20);
}

} // namespace

class TestFormFileMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void menusHaveTheirEntries();
    void theViewMenuShowsItsFirstSeparator();
    void entriesHaveNoShortcuts();
    void entriesShowTheirKeys();
    void theMenuBarComesAndGoesWithTheForm();
    void everyMenuGraysOut();
    void entriesFollowTheItem_data();
    void entriesFollowTheItem();
    void selectionEntriesFollowTheChecks();
    void pasteFollowsTheClipboard();
    void theModeIsChecked();
    void someEntriesAreNeverGray();
    void modesAreReachedByMenu();
    void versionOpensOverABusyForm();
    void helpOpensOverABusyForm();
    void keysStandForEntries_data();
    void keysStandForEntries();
    void slotsHaveTheirNames();

private:
    /// Triggers the entry, and closes the dialog that must have this title.
    void opensOverABusyForm(QAction *entry, const QString &wanted);

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileMenus::menusHaveTheirEntries()
{
    m_form->start();
    const QList<QPopupMenu *> menus = m_form->menus();
    const QStringList titles{QStringLiteral("File"), QStringLiteral("Edit"), QStringLiteral("View"),
                             QStringLiteral("About")};
    const QList<QList<Row>> rows{kFile, kEdit, kView, kAbout};
    QCOMPARE(menus.size(), titles.size());
    for (int i = 0; i < menus.size(); ++i) {
        QCOMPARE(menus.at(i)->title(), titles.at(i));
        QCOMPARE(menuTexts(menus.at(i)), rowTexts(rows.at(i)));
    }
    QCOMPARE(menuTexts(m_form->entry(16)->menu()), rowTexts(kSlideshow));
    QVERIFY(m_form->entry(12) == nullptr);
}

void TestFormFileMenus::theViewMenuShowsItsFirstSeparator()
{
    m_form->start();
    const QPopupMenu *view = m_form->menus().at(2);
    QVERIFY(view->actions().first()->isSeparator());
    QVERIFY(!view->separatorsCollapsible());
}

void TestFormFileMenus::entriesHaveNoShortcuts()
{
    m_form->start();
    for (int id = 0; id <= 19; ++id) {
        const QAction *action = m_form->entry(id);
        QVERIFY(action == nullptr || action->shortcut().isEmpty());
    }
}

/// A shown key is one that the form, or the view, handles.
void TestFormFileMenus::entriesShowTheirKeys()
{
    using lumi::FileKey;

    const struct
    {
        int id;
        FileKey key;
    } rows[] = {{2, FileKey::Delete}, {5, FileKey::Copy}, {6, FileKey::Cut}, {9, FileKey::Paste}};

    const auto shownKey = [this](int id) {
        return m_form->entry(id)->property("shownKey").toString();
    };
    m_form->start();
    for (const auto &row : rows) {
        const QKeyCombination key = QKeySequence(shownKey(row.id))[0];
        QCOMPARE(lumi::fileKey(key.key(), key.keyboardModifiers()), row.key);
    }
    QCOMPARE(shownKey(19), QStringLiteral("Return"));
    for (const int id : {0, 1, 3, 4, 7, 8, 10, 11, 13, 14, 15, 16, 17, 18}) {
        QCOMPARE(shownKey(id), QString());
    }
}

void TestFormFileMenus::theMenuBarComesAndGoesWithTheForm()
{
    m_form->form = std::make_unique<FormFile>(&m_form->window, &m_form->toolBar);
    const QPointer<QPEMenuBar> bar = m_form->toolBar.findChild<QPEMenuBar *>();
    m_form->window.show();
    QVERIFY(!bar->isVisible());
    QVERIFY(!m_form->form->isVisible());
    m_form->form->formStarted();
    QVERIFY(bar->isVisible());
    QVERIFY(m_form->form->isVisible());
    m_form->form.reset();
    QVERIFY(bar.isNull());
}

void TestFormFileMenus::everyMenuGraysOut()
{
    m_form->start();
    for (QPopupMenu *menu : m_form->menus()) {
        QAction *const rename = m_form->entry(1);
        rename->setEnabled(true);
        Q_EMIT menu->aboutToShow();
        QVERIFY(!rename->isEnabled());
    }
}

void TestFormFileMenus::entriesFollowTheItem_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QList<int>>("enabled"); // of 1, 2, 5, 6, 19
    QTest::newRow("nothing at the cursor") << QString() << QList<int>{};
    QTest::newRow("a photo") << QStringLiteral("a.jpg") << QList<int>{1, 2, 5, 6, 19};
    QTest::newRow("a folder") << QStringLiteral("dir") << QList<int>{1, 5};
}

void TestFormFileMenus::entriesFollowTheItem()
{
    QFETCH(QString, item);
    m_form->world.makeFolder(QStringLiteral("dir"));
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->start();
    QVERIFY(m_form->waitForCells(2));
    if (!item.isEmpty()) {
        QTest::mousePress(m_form->cell(item), Qt::LeftButton, {}, QPoint(1, 1));
    }
    m_form->grayOut();
    QList<int> enabled;
    for (const int id : {1, 2, 5, 6, 19}) {
        if (m_form->entry(id)->isEnabled()) {
            enabled.append(id);
        }
    }
    QTEST(enabled, "enabled");
}

void TestFormFileMenus::selectionEntriesFollowTheChecks()
{
    m_form->world.makePhoto(QStringLiteral("a.jpg"));
    m_form->start();
    QVERIFY(m_form->waitForCells(1));
    const auto areEnabled = [this](std::initializer_list<int> ids) {
        m_form->grayOut();
        int enabled = 0;
        for (const int id : ids) {
            enabled += m_form->entry(id)->isEnabled() ? 1 : 0;
        }
        return enabled;
    };
    const auto onChecked = {3, 7, 8, 11};
    QCOMPARE(areEnabled(onChecked), 0);
    QCOMPARE(areEnabled({10}), 1);
    m_form->cell(QStringLiteral("a.jpg"))->toggleItemCheck(true);
    QCOMPARE(areEnabled(onChecked), 4);
    m_form->form->menu_disp_ThumbnailSmall();
    QCOMPARE(areEnabled(onChecked), 4);
    m_form->form->menu_disp_DispDetail();
    QCOMPARE(areEnabled(onChecked), 0);
    QCOMPARE(areEnabled({10}), 0);
    // The marks are kept.
    QVERIFY(m_form->view->anyChecked());
    m_form->form->menu_disp_ThumbnailLarge();
    QCOMPARE(areEnabled(onChecked), 4);
    QCOMPARE(areEnabled({10}), 1);
}

void TestFormFileMenus::pasteFollowsTheClipboard()
{
    m_form->start();
    m_form->grayOut();
    QVERIFY(!m_form->entry(9)->isEnabled());
    m_form->view->clipboard().take({QStringLiteral("/a.jpg")}, false);
    m_form->grayOut();
    QVERIFY(m_form->entry(9)->isEnabled());
}

void TestFormFileMenus::theModeIsChecked()
{
    m_form->start();
    const auto checked = [this] {
        m_form->grayOut();
        QList<int> result;
        for (const int id : {13, 14, 15}) {
            if (m_form->entry(id)->isChecked()) {
                result.append(id);
            }
        }
        return result;
    };
    QCOMPARE(checked(), QList<int>{13});
    m_form->entry(14)->trigger();
    QCOMPARE(checked(), QList<int>{14});
    m_form->entry(15)->trigger();
    QCOMPARE(checked(), QList<int>{15});
    // Choosing the current mode again clears its check mark until the menu opens.
    m_form->entry(15)->trigger();
    QCOMPARE(checked(), QList<int>{15});
}

void TestFormFileMenus::someEntriesAreNeverGray()
{
    m_form->start();
    m_form->form->menu_disp_DispDetail();
    m_form->grayOut();
    for (const int id : {0, 4, 13, 14, 15, 16, 17, 18}) {
        QVERIFY2(m_form->entry(id)->isEnabled(), qPrintable(QString::number(id)));
    }
    for (const QAction *action : m_form->menus().last()->actions()) {
        QVERIFY(action->isEnabled());
    }
}

void TestFormFileMenus::modesAreReachedByMenu()
{
    m_form->world.makePhotos(8);
    m_form->start();
    QVERIFY(m_form->waitForCells(6));
    m_form->entry(14)->trigger();
    QVERIFY(m_form->waitForCells(8));
    m_form->entry(15)->trigger();
    QVERIFY(m_form->waitForCells(7));
    m_form->entry(13)->trigger();
    QVERIFY(m_form->waitForCells(6));
}

void TestFormFileMenus::opensOverABusyForm(QAction *entry, const QString &wanted)
{
    QTimer timer;
    QString title;
    bool wasBusy = false;
    connect(&timer, &QTimer::timeout, this, [this, &wasBusy] {
        wasBusy = wasBusy || m_form->form->isBusy();
    });
    takeTitleOfNextDialog(&timer, &title);
    entry->trigger();
    QCOMPARE(title, wanted);
    QVERIFY(wasBusy);
    QVERIFY(!m_form->form->isBusy());
}

void TestFormFileMenus::versionOpensOverABusyForm()
{
    m_form->start();
    opensOverABusyForm(m_form->menus().last()->actions().last(), QStringLiteral("Version"));
}

void TestFormFileMenus::helpOpensOverABusyForm()
{
    m_form->start();
    opensOverABusyForm(m_form->menus().last()->actions().first(), QStringLiteral("Help"));
}

Q_DECLARE_METATYPE(lumi::FileKey)

void TestFormFileMenus::keysStandForEntries_data()
{
    using lumi::FileKey;
    lumi::test::columns<int, int, FileKey, bool>();
    const int control = Qt::ControlModifier;
    QTest::newRow("Ctrl+C") << int(Qt::Key_C) << control << FileKey::Copy << false;
    QTest::newRow("Ctrl+X") << int(Qt::Key_X) << control << FileKey::Cut << true;
    QTest::newRow("Ctrl+V") << int(Qt::Key_V) << control << FileKey::Paste << false;
    QTest::newRow("Delete") << int(Qt::Key_Delete) << 0 << FileKey::Delete << true;
    QTest::newRow("plain C") << int(Qt::Key_C) << 0 << FileKey::None << false;
    QTest::newRow("plain X") << int(Qt::Key_X) << 0 << FileKey::None << false;
    QTest::newRow("plain V") << int(Qt::Key_V) << 0 << FileKey::None << false;
    QTest::newRow("Ctrl+Z") << int(Qt::Key_Z) << control << FileKey::None << false;
    // 0x1007 is a letter, not the Delete key.
    QTest::newRow("0x1007") << 0x1007 << 0 << FileKey::None << false;
}

void TestFormFileMenus::keysStandForEntries()
{
    const auto [key, modifiers, expected, needsPhoto]
        = lumi::test::row<int, int, lumi::FileKey, bool>();
    const lumi::FileKey found
        = lumi::fileKey(key, Qt::KeyboardModifiers::fromInt(static_cast<unsigned>(modifiers)));
    QCOMPARE(found, expected);
    QCOMPARE(lumi::needsPhoto(found), needsPhoto);
}

void TestFormFileMenus::slotsHaveTheirNames()
{
    const char *const names[] = {"menu_file_NewFolder()",
                                 "menu_file_Rename()",
                                 "menu_file_Delete()",
                                 "menu_file_DeleteCheckItem()",
                                 "menu_file_DeleteEmptyFolder()",
                                 "menu_edit_Cut()",
                                 "menu_edit_Copy()",
                                 "menu_edit_CutCheckItem()",
                                 "menu_edit_CopyCheckItem()",
                                 "menu_edit_Paste()",
                                 "menu_edit_CheckAll()",
                                 "menu_edit_ReleaseCheck()",
                                 "menu_disp_ThumbnailLarge()",
                                 "menu_disp_ThumbnailSmall()",
                                 "menu_disp_DispDetail()",
                                 "menu_disp_Slideshow_Execution()",
                                 "menu_disp_Slideshow_Setting()",
                                 "menu_disp_DispAll()",
                                 "menu_option_Help()",
                                 "menu_option_Version()",
                                 "menu_disp_Top()",
                                 "accel_appendToMail()",
                                 "combo_device_activated(QString)",
                                 "btn_leftWidget_clicked(int)",
                                 "btn_edit_clicked()",
                                 "filelist_selected(FPVItemObject*)",
                                 "filelist_decided(FPVItemObject*)",
                                 "menuGrayout()",
                                 "btn_root_cliced()"};
    const QMetaObject &form = FormFile::staticMetaObject;
    int method = form.methodOffset();
    for (const char *name : names) {
        QCOMPARE(form.method(method).methodSignature(), QByteArray(name));
        QCOMPARE(form.method(method).methodType(), QMetaMethod::Slot);
        ++method;
    }
    QCOMPARE(method, form.methodCount());
}

LUMI_TEST(TestFormFileMenus)
#include "TestFormFileMenus.moc"
