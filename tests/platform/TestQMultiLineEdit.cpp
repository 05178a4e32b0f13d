// SPDX-License-Identifier: MIT
#include "platform/screen/panel.h"
#include "platform/toolkit/QMultiLineEdit.h"
#include "tests/support/TestMain.h"

#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace {

/// Gives tests access to protected members.
class OpenEdit : public QMultiLineEdit
{
public:
    using QMultiLineEdit::insertFromMimeData;

    void send(Qt::Key key, const QString &text = QString(), Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(this, &event);
    }

    void compose(const QString &preedit, const QString &commit)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit);
        QCoreApplication::sendEvent(this, &event);
    }
};

} // namespace

class TestQMultiLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesBackWhatItWasGiven_data();
    void givesBackWhatItWasGiven();
    void anEditedTextKeepsItsBlanksAndLines();
    void everyChangeIsAnEdit_data();
    void everyChangeIsAnEdit();
    void anEditIsNotForgotten();
    void theCompositionAloneIsNoEdit();
    void replacedTextComesBackByUndo();
    void setTextCannotBeUndone();
    void theLimitCutsInsertedText_data();
    void theLimitCutsInsertedText();
    void theLimitNeverCutsExistingText();
    void aFullFieldCanBeShortened();
    void markedTextMakesRoom();
    void aCharacterIsNeverInsertedByHalf();
    void withoutALimitNothingIsCut();
    void returnMakesALine();
    void tabMovesTheFocus();
    void nothingCanBeDropped();
    void isAsHighAsItsLines();
};

void TestQMultiLineEdit::givesBackWhatItWasGiven_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << QStringLiteral("  a  ");
    QTest::newRow("a blank that does not break") << QStringLiteral("a\u00A0b");
    QTest::newRow("lines of all kinds") << QStringLiteral("a\r\nb\rc\nd\u2028e\u2029f");
    QTest::newRow("controls") << QStringLiteral("a\tb\x01") + QChar(0) + QLatin1Char('c');
    QTest::newRow("longer than the limit") << QString(100, QLatin1Char('x'));
}

void TestQMultiLineEdit::givesBackWhatItWasGiven()
{
    QFETCH(QString, text);
    QMultiLineEdit edit;
    edit.setMaxLength(5);
    edit.setText(text);
    QCOMPARE(edit.text(), text);
}

void TestQMultiLineEdit::anEditedTextKeepsItsBlanksAndLines()
{
    OpenEdit edit;
    edit.setText(QStringLiteral("a\u00A0b\r\nc"));
    edit.moveCursor(QTextCursor::End);
    edit.send(Qt::Key_D, QStringLiteral("d"));
    QCOMPARE(edit.text(), QStringLiteral("a\u00A0b\ncd"));
}

void TestQMultiLineEdit::everyChangeIsAnEdit_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("a key") << 0;
    QTest::newRow("deleting") << 1;
    QTest::newRow("an insertion") << 2;
    QTest::newRow("another text") << 3;
    QTest::newRow("a replaced text") << 4;
    QTest::newRow("an input method") << 5;
}

void TestQMultiLineEdit::everyChangeIsAnEdit()
{
    QFETCH(int, way);
    OpenEdit edit;
    edit.setText(QStringLiteral("abc"));
    edit.setEdited(false);
    const std::function<void()> ways[] = {
        [&edit] {
            edit.send(Qt::Key_D, QStringLiteral("d"));
        },
        [&edit] {
            edit.send(Qt::Key_Delete);
        },
        [&edit] {
            edit.insert(QStringLiteral("x"));
        },
        [&edit] {
            edit.setText(QStringLiteral("abc"));
        },
        [&edit] {
            edit.replaceText(QStringLiteral("abc"));
        },
        [&edit] {
            edit.compose(QString(), QStringLiteral("x"));
        },
    };
    QVERIFY(!edit.edited());
    ways[way]();
    QVERIFY(edit.edited());
}

void TestQMultiLineEdit::anEditIsNotForgotten()
{
    OpenEdit edit;
    edit.setText(QStringLiteral("abc"));
    edit.setEdited(false);
    edit.send(Qt::Key_D, QStringLiteral("d"));
    edit.send(Qt::Key_Backspace);
    QCOMPARE(edit.text(), QStringLiteral("abc"));
    QVERIFY(edit.edited());
    edit.undo();
    QVERIFY(edit.edited());
}

void TestQMultiLineEdit::theCompositionAloneIsNoEdit()
{
    OpenEdit edit;
    edit.setText(QStringLiteral("abc"));
    edit.setEdited(false);
    edit.compose(QStringLiteral("しゃ"), QString());
    QVERIFY(!edit.edited());
    QCOMPARE(edit.text(), QStringLiteral("abc"));
    edit.compose(QString(), QString());
    QVERIFY(!edit.edited());
}

void TestQMultiLineEdit::replacedTextComesBackByUndo()
{
    QMultiLineEdit edit;
    edit.setText(QStringLiteral("old"));
    edit.replaceText(QStringLiteral("new"));
    QCOMPARE(edit.text(), QStringLiteral("new"));
    edit.undo();
    QCOMPARE(edit.text(), QStringLiteral("old"));
}

void TestQMultiLineEdit::setTextCannotBeUndone()
{
    QMultiLineEdit edit;
    edit.setText(QStringLiteral("old"));
    edit.setText(QStringLiteral("new"));
    edit.undo();
    QCOMPARE(edit.text(), QStringLiteral("new"));
}

void TestQMultiLineEdit::theLimitCutsInsertedText_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("keys") << 0;
    QTest::newRow("an insertion") << 1;
    QTest::newRow("the clipboard") << 2;
    QTest::newRow("an input method") << 3;
}

void TestQMultiLineEdit::theLimitCutsInsertedText()
{
    QFETCH(int, way);
    OpenEdit edit;
    edit.setMaxLength(5);
    edit.setText(QStringLiteral("abc"));
    edit.moveCursor(QTextCursor::End);
    const QString more = QStringLiteral("defg");
    QMimeData data;
    data.setText(more);
    const std::function<void()> ways[] = {
        [&edit, &more] {
            edit.send(Qt::Key_unknown, more);
        },
        [&edit, &more] {
            edit.insert(more);
        },
        [&edit, &data] {
            edit.insertFromMimeData(&data);
        },
        [&edit, &more] {
            edit.compose(QString(), more);
        },
    };
    ways[way]();
    QCOMPARE(edit.text(), QStringLiteral("abcde"));
    ways[way]();
    QCOMPARE(edit.text(), QStringLiteral("abcde"));
}

void TestQMultiLineEdit::theLimitNeverCutsExistingText()
{
    OpenEdit edit;
    edit.setText(QStringLiteral("abcdefgh"));
    edit.setMaxLength(5);
    QCOMPARE(edit.text(), QStringLiteral("abcdefgh"));
    edit.send(Qt::Key_X, QStringLiteral("x"));
    QCOMPARE(edit.text(), QStringLiteral("abcdefgh"));
    // Marked text stays if its replacement doesn't fit.
    edit.moveCursor(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    edit.send(Qt::Key_X, QStringLiteral("x"));
    edit.insert(QStringLiteral("xyz"));
    edit.compose(QStringLiteral("xy"), QString());
    edit.compose(QString(), QStringLiteral("xyz"));
    QCOMPARE(edit.text(), QStringLiteral("abcdefgh"));
}

void TestQMultiLineEdit::aFullFieldCanBeShortened()
{
    OpenEdit edit;
    edit.setMaxLength(3);
    edit.setText(QStringLiteral("abc"));
    edit.moveCursor(QTextCursor::End);
    edit.send(Qt::Key_Backspace, QStringLiteral("\b"));
    QCOMPARE(edit.text(), QStringLiteral("ab"));
    edit.moveCursor(QTextCursor::Start);
    edit.send(Qt::Key_Delete, QStringLiteral("\x7f"));
    QCOMPARE(edit.text(), QStringLiteral("b"));
}

void TestQMultiLineEdit::markedTextMakesRoom()
{
    OpenEdit edit;
    edit.setMaxLength(4);
    edit.setText(QStringLiteral("abcd"));
    edit.moveCursor(QTextCursor::Start);
    edit.moveCursor(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    edit.moveCursor(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QVERIFY(edit.hasMarkedText());
    edit.insert(QStringLiteral("xyz"));
    QCOMPARE(edit.text(), QStringLiteral("xycd"));
}

void TestQMultiLineEdit::aCharacterIsNeverInsertedByHalf()
{
    QMultiLineEdit edit;
    edit.setMaxLength(4);
    edit.insert(QString::fromUtf8("abc\xF0\x9F\x93\xB7"));
    QCOMPARE(edit.text(), QStringLiteral("abc"));
}

void TestQMultiLineEdit::withoutALimitNothingIsCut()
{
    QMultiLineEdit edit;
    QCOMPARE(edit.maxLength(), -1);
    edit.insert(QString(1000, QLatin1Char('x')));
    QCOMPARE(edit.text().size(), 1000);
}

void TestQMultiLineEdit::returnMakesALine()
{
    OpenEdit edit;
    edit.send(Qt::Key_Return, QStringLiteral("\r"));
    edit.send(Qt::Key_Enter, QStringLiteral("\r"));
    QCOMPARE(edit.text(), QStringLiteral("\n\n"));
}

void TestQMultiLineEdit::tabMovesTheFocus()
{
    OpenEdit edit;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Tab, {}, QStringLiteral("\t"));
    QCoreApplication::sendEvent(&edit, &event);
    QCOMPARE(edit.text(), QString());
    edit.send(Qt::Key_unknown, QStringLiteral("\t"));
    edit.send(Qt::Key_I, QStringLiteral("\t"), Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(edit.text(), QString());
}

void TestQMultiLineEdit::nothingCanBeDropped()
{
    QMultiLineEdit edit;
    edit.show();
    QVERIFY(!edit.acceptDrops());
    QVERIFY(!edit.viewport()->acceptDrops());
    QCOMPARE(edit.contextMenuPolicy(), Qt::PreventContextMenu);
}

void TestQMultiLineEdit::isAsHighAsItsLines()
{
    QMultiLineEdit edit;
    edit.setFixedVisibleLines(1);
    QCOMPARE(edit.height(), lumi::kFingerSize);
    edit.setFixedVisibleLines(8);
    QVERIFY(edit.height() > 8 * edit.fontMetrics().lineSpacing());
    QVERIFY(edit.height() < 9 * edit.fontMetrics().lineSpacing() + 2);
    // A larger font needs more room.
    edit.setFixedVisibleLines(1);
    QFont font = edit.font();
    font.setPointSize(40);
    edit.setFont(font);
    QVERIFY(edit.height() > edit.fontMetrics().lineSpacing());
}

LUMI_TEST(TestQMultiLineEdit)
#include "TestQMultiLineEdit.moc"
