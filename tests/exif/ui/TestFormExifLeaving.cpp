// SPDX-License-Identifier: MIT
// Leaving the editor, with and without a question.
#include "platform/session/QuitRequest.h"
#include "tests/exif/ui/Composition.h"
#include "tests/exif/ui/EditorFixture.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <csignal>

using namespace lumi;
using lumi::test::EditorFixture;
using lumi::test::kAllFields;

class TestFormExifLeaving : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_user = std::make_unique<EditorFixture>(); }

    void cleanup() { m_user.reset(); }

    void leavingUneditedAsksNothing();
    void leavingAsksAfterEveryEdit_data();
    void leavingAsksAfterEveryEdit();
    void typingAndDeletingStillAsks();
    void composedTextCountsAsAnEdit();
    void onlyYesLeaves_data();
    void onlyYesLeaves();
    void closingTheWindowAsksToo();
    void exitEndsTheEditor();
    void minimisingDoesNotEndTheEditor();
    void theEndOfTheProgramDiscardsEdits();

private:
    std::unique_ptr<EditorFixture> m_user;
};

void TestFormExifLeaving::leavingUneditedAsksNothing()
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

void TestFormExifLeaving::leavingAsksAfterEveryEdit_data()
{
    QTest::addColumn<int>("field");
    for (const EditField field : kAllFields) {
        QTest::addRow("field %d", int(field)) << int(field);
    }
}

void TestFormExifLeaving::leavingAsksAfterEveryEdit()
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

void TestFormExifLeaving::typingAndDeletingStillAsks()
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

void TestFormExifLeaving::composedTextCountsAsAnEdit()
{
    m_user->open();
    bool left = true;
    QCOMPARE(m_user->run([this, &left] {
        m_user->enter(CommentField);
        const test::Composition composition(QStringLiteral("写真"));
        QVERIFY(!m_user->edit(CommentField)->edited());
        m_user->boxes.answer = QMessageBox::No;
        left = m_user->form->menu_edit_editCancel();
        m_user->form->hide();
    }),
             0);
    QVERIFY(!left);
    QCOMPARE(m_user->boxes.boxes.size(), 1);
    QCOMPARE(m_user->edit(CommentField)->text(), QStringLiteral("写真at noon"));
}

void TestFormExifLeaving::onlyYesLeaves_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<int>("key");
    QTest::newRow("No") << int(QMessageBox::No) << 0;
    QTest::newRow("Escape") << int(QMessageBox::NoButton) << int(Qt::Key_Escape);
    QTest::newRow("Return, since No is the default")
        << int(QMessageBox::NoButton) << int(Qt::Key_Return);
    QTest::newRow("the box is closed") << int(QMessageBox::NoButton) << 0;
}

void TestFormExifLeaving::onlyYesLeaves()
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

void TestFormExifLeaving::closingTheWindowAsksToo()
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

void TestFormExifLeaving::exitEndsTheEditor()
{
    m_user->open();
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("x"));
        QCoreApplication::exit(0);
    }),
             0);
    // exit() ended only the nested loop, so the main loop needs a request of its own.
    QTimer::singleShot(0, qApp, [] {
        QCoreApplication::exit(0);
    });
    QCoreApplication::exec();
}

void TestFormExifLeaving::minimisingDoesNotEndTheEditor()
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

void TestFormExifLeaving::theEndOfTheProgramDiscardsEdits()
{
    m_user->open();
    const QByteArray before = m_user->fileBytes();
    const QuitRequest request;
    QCOMPARE(m_user->run([this] {
        m_user->type(OwnerField, QStringLiteral("x"));
        ::raise(SIGTERM);
    }),
             0);
    QVERIFY(m_user->boxes.boxes.isEmpty());
    QVERIFY(!m_user->form->isVisible());
    QCOMPARE(m_user->fileBytes(), before);
}

LUMI_TEST(TestFormExifLeaving)
#include "TestFormExifLeaving.moc"
