// SPDX-License-Identifier: MIT
// The actions in the editor's menus and tool bar.
#include "platform/windows/QPEMenuBar.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QTabBar>
#include <QTest>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::kAllFields;

class TestFormExifActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<EditorFixture>(); }

    void cleanup() { m_user.reset(); }

    void actionsFollowTheSelection();
    void pasteFollowsTheClipboard_data();
    void pasteFollowsTheClipboard();
    void actionsActOnTheFocusedField();
    void menuEntriesActOnTheFocusedField();
    void actionsIgnoreAFieldThatLostTheFocus();
    void actionsElsewhereDoNothing();
    void aPastedPositionFillsBothFields_data();
    void aPastedPositionFillsBothFields();
    void otherTextsArePasted();
    void aPositionInOtherFieldsIsText();

private:
    /// Taps the menu Edit and one of its entries.
    void tapEntry(const QString &text);

    std::unique_ptr<EditorFixture> m_user;
};

void TestFormExifActions::tapEntry(const QString &text)
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

void TestFormExifActions::actionsFollowTheSelection()
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

void TestFormExifActions::pasteFollowsTheClipboard_data()
{
    lumi::test::columns<QString, bool>();
    QTest::newRow("nothing") << QString() << false;
    QTest::newRow("a text") << QStringLiteral("x") << true;
}

void TestFormExifActions::pasteFollowsTheClipboard()
{
    const auto [clipboard, enabled] = lumi::test::row<QString, bool>();
    m_user->fillClipboard(clipboard);
    m_user->open();
    const QAction *paste = m_user->entry(QStringLiteral("Paste"));
    QCOMPARE(paste->isEnabled(), enabled);
    m_user->enter(OwnerField);
    m_user->edit(OwnerField)->selectAll();
    m_user->control(OwnerField, Qt::Key_C);
    QVERIFY(paste->isEnabled());
}

void TestFormExifActions::actionsActOnTheFocusedField()
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
    // Undo has no menu entry.
    QVERIFY(m_user->entry(QStringLiteral("Undo")) == nullptr);
}

void TestFormExifActions::menuEntriesActOnTheFocusedField()
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

void TestFormExifActions::actionsIgnoreAFieldThatLostTheFocus()
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
    // A field that had the focus before the menu gets the text.
    m_user->enter(TitleField);
    m_user->form->findChild<QPEMenuBar *>()->setFocus(Qt::MenuBarFocusReason);
    m_user->entry(QStringLiteral("Paste"))->trigger();
    QVERIFY(m_user->edit(TitleField)->edited());
    QVERIFY(!m_user->edit(OwnerField)->edited());
}

void TestFormExifActions::actionsElsewhereDoNothing()
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

void TestFormExifActions::aPastedPositionFillsBothFields_data()
{
    QTest::addColumn<int>("field");
    QTest::newRow("into the latitude") << int(LatitudeField);
    QTest::newRow("into the longitude") << int(LongitudeField);
}

void TestFormExifActions::aPastedPositionFillsBothFields()
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
    // The paste can be undone.
    m_user->form->menu_edit_undo();
    QVERIFY(m_user->edit(EditField(field))
                ->text()
                .startsWith(QLatin1Char(field == LatitudeField ? 'S' : 'W')));
}

void TestFormExifActions::otherTextsArePasted()
{
    m_user->fillClipboard(QStringLiteral("N35.40"));
    m_user->open();
    m_user->enter(LatitudeField);
    m_user->edit(LatitudeField)->selectAll();
    m_user->form->menu_edit_paste();
    QCOMPARE(m_user->edit(LatitudeField)->text(), QStringLiteral("N35.40"));
    QCOMPARE(m_user->edit(LongitudeField)->text(), QStringLiteral("W077.02.03.000"));
}

void TestFormExifActions::aPositionInOtherFieldsIsText()
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

LUMI_TEST(TestFormExifActions)
#include "TestFormExifActions.moc"
