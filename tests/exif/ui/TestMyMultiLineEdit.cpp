// SPDX-License-Identifier: MIT
#include "exif/ui/MyMultiLineEdit.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMetaMethod>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <utility>

namespace {

class OpenEdit : public MyMultiLineEdit
{
public:
    using MyMultiLineEdit::insertFromMimeData;
    using MyMultiLineEdit::MyMultiLineEdit;

    bool send(Qt::Key key, const QString &text = QString(), Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
        QCoreApplication::sendEvent(this, &event);
        return event.isAccepted();
    }

    /// corrected: how many characters before the cursor the commit replaces.
    void compose(const QString &preedit, const QString &commit, int corrected = 0)
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(commit, -corrected, corrected);
        QCoreApplication::sendEvent(this, &event);
    }
};

void fillClipboard(const QString &text)
{
    QApplication::clipboard()->setText(text);
}

} // namespace

class TestMyMultiLineEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void hasItsSignals();
    void keysAreFiltered_data();
    void keysAreFiltered();
    void aTabByCtrlAltIDoesNothing();
    void typedControlCharactersAreRemoved();
    void otherInsertionsAreFiltered_data();
    void otherInsertionsAreFiltered();
    void aRefusedCompositionKeepsTheText_data();
    void aRefusedCompositionKeepsTheText();
    void aCompositionReplacesTheSelection();
    void committedLettersReplaceTheSelection();
    void returnAndEnterDoNothing_data();
    void returnAndEnterDoNothing();
    void commandKeysInsertNothing();
    void theReceiverCanHandleThePaste_data();
    void theReceiverCanHandleThePaste();
    void aPasteInsideAPasteEmitsNothing();
    void copyAndCutEmitPasteAvailable_data();
    void copyAndCutEmitPasteAvailable();
    void undoRestoresTheText();
    void focusInEmitsCopyAvailable();
    void losingTheFocusClearsTheSelection_data();
    void losingTheFocusClearsTheSelection();
    void theMenuKeepsTheSelection();
    void tabLeavesTheField();

private:
    std::unique_ptr<QWidget> m_window;
    OpenEdit *m_edit = nullptr;
    OpenEdit *m_other = nullptr;
    QLineEdit *m_stranger = nullptr;
};

void TestMyMultiLineEdit::init()
{
    m_window = std::make_unique<QWidget>();
    m_edit = new OpenEdit(m_window.get());
    m_other = new OpenEdit(m_window.get());
    m_stranger = new QLineEdit(m_window.get());
    auto *column = new QVBoxLayout(m_window.get());
    for (QWidget *widget : {static_cast<QWidget *>(m_edit), static_cast<QWidget *>(m_other),
                            static_cast<QWidget *>(m_stranger)}) {
        column->addWidget(widget);
    }
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_edit->setFocus();
    m_edit->setCharMask(lumi::kPlainCharacters);
    fillClipboard(QString());
}

void TestMyMultiLineEdit::cleanup()
{
    m_window.reset();
}

void TestMyMultiLineEdit::hasItsSignals()
{
    const QMetaObject &meta = MyMultiLineEdit::staticMetaObject;
    QCOMPARE(meta.superClass(), &QMultiLineEdit::staticMetaObject);
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.append(meta.method(i).methodSignature());
    }
    QCOMPARE(names, (QList<QByteArray>{"pasteAvailable(bool)", "signalPaste(QString*)"}));
    const MyMultiLineEdit edit;
    QCOMPARE(edit.charMask(), 0xFF);
}

void TestMyMultiLineEdit::keysAreFiltered_data()
{
    lumi::test::columns<int, QString, QString>();
    QTest::newRow("letters, digits and signs are accepted")
        << 0xE2 << QStringLiteral("aZ09 ~!") << QStringLiteral("aZ09 ~!");
    QTest::newRow("kanji are refused") << 0xE2 << QStringLiteral("a写b") << QStringLiteral("ab");
    QTest::newRow("accents are refused") << 0xE2 << QStringLiteral("é") << QString();
    QTest::newRow("everything is accepted")
        << 0xFF << QStringLiteral("aé写") << QStringLiteral("aé写");
    QTest::newRow("a tab is refused, whatever key sends it")
        << 0xFF << QStringLiteral("a\tb") << QStringLiteral("ab");
    QTest::newRow("a tab in a field for plain characters")
        << 0xE2 << QStringLiteral("\ta") << QStringLiteral("a");
}

void TestMyMultiLineEdit::keysAreFiltered()
{
    const auto [mask, typed, text] = lumi::test::row<int, QString, QString>();
    m_edit->setCharMask(mask);
    for (const QChar character : std::as_const(typed)) {
        // A refused character is not passed to another widget.
        QVERIFY(m_edit->send(Qt::Key_unknown, QString(character)));
    }
    QCOMPARE(m_edit->text(), text);
}

void TestMyMultiLineEdit::aTabByCtrlAltIDoesNothing()
{
    m_edit->setCharMask(lumi::kAnyCharacters);
    m_edit->setText(QStringLiteral("ab"));
    m_edit->setEdited(false);
    m_edit->send(Qt::Key_I, QStringLiteral("\t"), Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(m_edit->text(), QStringLiteral("ab"));
    QVERIFY(!m_edit->edited());
    QVERIFY(m_edit->hasFocus());
}

/// A line end would make a second line, which is not visible.
void TestMyMultiLineEdit::typedControlCharactersAreRemoved()
{
    m_edit->setCharMask(lumi::kAnyCharacters);
    m_edit->send(Qt::Key_unknown, QStringLiteral("a\tb\n写"));
    QCOMPARE(m_edit->text(), QStringLiteral("ab写"));
    m_edit->compose(QString(), QStringLiteral("c\t\u0085d\n"));
    QCOMPARE(m_edit->text(), QStringLiteral("ab写cd"));
}

void TestMyMultiLineEdit::otherInsertionsAreFiltered_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("Ctrl+V") << 0;
    QTest::newRow("Shift+Insert") << 1;
    QTest::newRow("what a menu or a drop would insert") << 2;
    QTest::newRow("an input method") << 3;
    QTest::newRow("Ctrl+Shift+V") << 4;
    QTest::newRow("the slot") << 5;
}

void TestMyMultiLineEdit::otherInsertionsAreFiltered()
{
    QFETCH(int, way);
    const QString text = QStringLiteral("a写\nb真c");
    fillClipboard(text);
    QMimeData data;
    data.setText(text);
    QInputMethodEvent composed;
    composed.setCommitString(text);
    const std::function<void()> ways[] = {
        [this] {
            m_edit->send(Qt::Key_V, QStringLiteral("\x16"), Qt::ControlModifier);
        },
        [this] {
            m_edit->send(Qt::Key_Insert, QString(), Qt::ShiftModifier);
        },
        [this, &data] {
            m_edit->insertFromMimeData(&data);
        },
        [this, &composed] {
            QCoreApplication::sendEvent(m_edit, &composed);
        },
        [this] {
            m_edit->send(Qt::Key_V, QStringLiteral("\x16"),
                         Qt::ControlModifier | Qt::ShiftModifier);
        },
        [this] {
            m_edit->paste();
        },
    };
    ways[way]();
    QCOMPARE(m_edit->text(), QStringLiteral("abc"));
}

void TestMyMultiLineEdit::aRefusedCompositionKeepsTheText_data()
{
    QTest::addColumn<QStringList>("composed"); // before it is committed, one after the other
    QTest::addColumn<QString>("commit");
    QTest::addColumn<int>("corrected"); // characters before the cursor
    const QStringList kana{QStringLiteral("しゃ"), QStringLiteral("写真")};
    const QString kanji = QStringLiteral("写真");
    QTest::newRow("composed and committed") << kana << kanji << 0;
    QTest::newRow("composed and cancelled") << kana << QString() << 0;
    QTest::newRow("composed in plain letters and committed as kanji")
        << QStringList{QStringLiteral("n"), QStringLiteral("nihao")} << QStringLiteral("你好") << 0;
    QTest::newRow("started with a plain letter and committed as kanji")
        << (QStringList{QStringLiteral("s")} + kana) << kanji << 0;
    QTest::newRow("composed in plain letters and cancelled")
        << QStringList{QStringLiteral("nihao")} << QString() << 0;
    QTest::newRow("committed at once") << QStringList() << kanji << 0;
    QTest::newRow("a correction of what is there") << QStringList() << kanji << 2;
}

void TestMyMultiLineEdit::aRefusedCompositionKeepsTheText()
{
    QFETCH(QStringList, composed);
    QFETCH(QString, commit);
    QFETCH(int, corrected);
    m_edit->setText(QStringLiteral("abc"));
    m_edit->setEdited(false);
    if (corrected > 0) {
        m_edit->moveCursor(QTextCursor::End);
    } else {
        m_edit->selectAll();
    }
    for (const QString &letters : std::as_const(composed)) {
        m_edit->compose(letters, QString());
    }
    m_edit->compose(QString(), commit, corrected);
    QCOMPARE(m_edit->text(), QStringLiteral("abc"));
    QVERIFY(!m_edit->edited());
    QCOMPARE(m_edit->hasMarkedText(), corrected == 0);
    // Accepted characters are still inserted.
    m_edit->compose(QStringLiteral("x"), QString());
    m_edit->compose(QString(), QStringLiteral("xyz"), corrected);
    QCOMPARE(m_edit->text(), corrected == 0 ? QStringLiteral("xyz") : QStringLiteral("axyz"));
}

void TestMyMultiLineEdit::aCompositionReplacesTheSelection()
{
    m_edit->setCharMask(lumi::kAnyCharacters);
    m_edit->setText(QStringLiteral("abc"));
    m_edit->selectAll();
    m_edit->compose(QStringLiteral("しゃ"), QString());
    QCOMPARE(m_edit->text(), QString());
    m_edit->compose(QString(), QStringLiteral("写真"));
    QCOMPARE(m_edit->text(), QStringLiteral("写真"));
}

void TestMyMultiLineEdit::committedLettersReplaceTheSelection()
{
    m_edit->setText(QStringLiteral("abc"));
    m_edit->selectAll();
    m_edit->compose(QStringLiteral("x"), QString());
    QCOMPARE(m_edit->text(), QStringLiteral("abc"));
    QVERIFY(m_edit->hasMarkedText());
    // Further composed text replaces nothing and is visible.
    m_edit->compose(QStringLiteral("z"), QStringLiteral("xy"));
    QCOMPARE(m_edit->text(), QStringLiteral("xy"));
    QCOMPARE(m_edit->textCursor().block().layout()->preeditAreaText(), QStringLiteral("z"));
    m_edit->compose(QString(), QStringLiteral("z"));
    QCOMPARE(m_edit->text(), QStringLiteral("xyz"));
}

void TestMyMultiLineEdit::returnAndEnterDoNothing_data()
{
    lumi::test::columns<int, int>();
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Enter)}) {
        QTest::addRow("%x", key) << key << 0;
        QTest::addRow("%x with Shift", key) << key << int(Qt::ShiftModifier);
        QTest::addRow("%x with Ctrl", key) << key << int(Qt::ControlModifier);
    }
}

void TestMyMultiLineEdit::returnAndEnterDoNothing()
{
    const auto [key, modifiers] = lumi::test::row<int, int>();
    m_edit->setCharMask(lumi::kAnyCharacters);
    m_edit->setText(QStringLiteral("ab"));
    m_edit->setEdited(false);
    m_edit->send(Qt::Key(key), QStringLiteral("\r"), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(m_edit->text(), QStringLiteral("ab"));
    QVERIFY(!m_edit->edited());
}

void TestMyMultiLineEdit::commandKeysInsertNothing()
{
    m_edit->setText(QStringLiteral("abc"));
    m_edit->send(Qt::Key_A, QStringLiteral("\x01"), Qt::ControlModifier);
    QVERIFY(m_edit->hasMarkedText());
    m_edit->send(Qt::Key_Backspace, QStringLiteral("\b"));
    QCOMPARE(m_edit->text(), QString());
    m_edit->setText(QStringLiteral("abc"));
    m_edit->send(Qt::Key_Delete, QStringLiteral("\x7f"));
    QCOMPARE(m_edit->text(), QStringLiteral("bc"));
}

void TestMyMultiLineEdit::theReceiverCanHandleThePaste_data()
{
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole, and nothing is inserted") << QString() << QStringLiteral("[]");
    QTest::newRow("a part") << QStringLiteral("x") << QStringLiteral("[x]");
}

void TestMyMultiLineEdit::theReceiverCanHandleThePaste()
{
    QFETCH(QString, left);
    m_edit->setText(QStringLiteral("[]"));
    m_edit->moveCursor(QTextCursor::NextCharacter);
    QStringList seen;
    connect(m_edit, &MyMultiLineEdit::signalPaste, this, [&seen, &left](QString *text) {
        seen.append(*text);
        *text = left;
    });
    fillClipboard(QStringLiteral("N写1"));
    m_edit->send(Qt::Key_V, QString(), Qt::ControlModifier);
    QCOMPARE(seen, QStringList{QStringLiteral("N1")});
    QTEST(m_edit->text(), "text");
}

void TestMyMultiLineEdit::aPasteInsideAPasteEmitsNothing()
{
    int told = 0;
    connect(m_edit, &MyMultiLineEdit::signalPaste, this, [this, &told](QString *text) {
        ++told;
        text->clear();
        m_edit->send(Qt::Key_V, QString(), Qt::ControlModifier);
    });
    fillClipboard(QStringLiteral("a"));
    m_edit->send(Qt::Key_V, QString(), Qt::ControlModifier);
    QCOMPARE(told, 1);
    QCOMPARE(m_edit->text(), QStringLiteral("a"));
}

void TestMyMultiLineEdit::copyAndCutEmitPasteAvailable_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QList<bool>>("told");
    QTest::newRow("copy") << int(Qt::Key_C) << QStringLiteral("ab") << QList<bool>{true};
    QTest::newRow("cut") << int(Qt::Key_X) << QStringLiteral("ab") << QList<bool>{true};
    QTest::newRow("copy of nothing") << int(Qt::Key_C) << QString() << QList<bool>{false};
    QTest::newRow("any other key") << int(Qt::Key_A) << QStringLiteral("ab") << QList<bool>();
}

void TestMyMultiLineEdit::copyAndCutEmitPasteAvailable()
{
    QFETCH(int, key);
    QFETCH(QString, marked);
    m_edit->setText(marked);
    m_edit->selectAll();
    QList<bool> told;
    connect(m_edit, &MyMultiLineEdit::pasteAvailable, this, [&told](bool available) {
        told.append(available);
    });
    m_edit->send(Qt::Key(key), QString(), Qt::ControlModifier);
    QTEST(told, "told");
    if (key != Qt::Key_A) {
        QCOMPARE(QApplication::clipboard()->text(), marked);
    }
    QCOMPARE(m_edit->text(), key == Qt::Key_X ? QString() : marked);
}

void TestMyMultiLineEdit::undoRestoresTheText()
{
    m_edit->setText(QStringLiteral("abc"));
    m_edit->send(Qt::Key_X, QStringLiteral("x"));
    QCOMPARE(m_edit->text(), QStringLiteral("xabc"));
    m_edit->send(Qt::Key_Z, QString(), Qt::ControlModifier);
    QCOMPARE(m_edit->text(), QStringLiteral("abc"));
}

void TestMyMultiLineEdit::focusInEmitsCopyAvailable()
{
    m_other->setText(QStringLiteral("abc"));
    QList<bool> told;
    connect(m_other, &MyMultiLineEdit::copyAvailable, this, [&told](bool available) {
        told.append(available);
    });
    m_other->setFocus();
    QCOMPARE(told, QList<bool>{false});
    m_edit->setFocus();
    m_other->selectAll();
    told.clear();
    m_other->setFocus();
    QCOMPARE(told, QList<bool>{true});
}

void TestMyMultiLineEdit::losingTheFocusClearsTheSelection_data()
{
    QTest::addColumn<int>("next");
    QTest::addColumn<bool>("marked");
    QTest::addColumn<bool>("told"); // that nothing can be copied any more
    QTest::newRow("to another field") << 0 << false << false;
    QTest::newRow("to another widget") << 1 << false << true;
    QTest::newRow("to nowhere") << 2 << true << false;
}

void TestMyMultiLineEdit::losingTheFocusClearsTheSelection()
{
    QFETCH(int, next);
    m_edit->setText(QStringLiteral("abc"));
    m_edit->moveCursor(QTextCursor::Start);
    m_edit->moveCursor(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    int afterMark = 0;
    connect(m_edit, &MyMultiLineEdit::copyAvailable, this, [this, &afterMark](bool available) {
        afterMark += !available && !m_edit->hasMarkedText() ? 1 : 0;
    });
    if (next == 2) {
        m_edit->clearFocus();
    } else {
        (next == 0 ? static_cast<QWidget *>(m_other) : m_stranger)->setFocus();
    }
    QVERIFY(!m_edit->hasFocus());
    QTEST(m_edit->hasMarkedText(), "marked");
    QCOMPARE(m_edit->textCursor().position(), 1);
    // Clearing the selection emits one signal.
    QFETCH(bool, told);
    QFETCH(bool, marked);
    QCOMPARE(afterMark, (marked ? 0 : 1) + (told ? 1 : 0));
}

void TestMyMultiLineEdit::theMenuKeepsTheSelection()
{
    m_edit->setText(QStringLiteral("abc"));
    m_edit->selectAll();
    m_stranger->setFocus(Qt::MenuBarFocusReason);
    QVERIFY(!m_edit->hasFocus());
    QVERIFY(m_edit->hasMarkedText());
}

void TestMyMultiLineEdit::tabLeavesTheField()
{
    QTest::keyClick(m_edit, Qt::Key_Tab);
    QVERIFY(m_other->hasFocus());
    QTest::keyClick(m_other, Qt::Key_Backtab);
    QVERIFY(m_edit->hasFocus());
    QCOMPARE(m_edit->text(), QString());
}

LUMI_TEST(TestMyMultiLineEdit)
#include "TestMyMultiLineEdit.moc"
