// SPDX-License-Identifier: MIT
#include "platform/session/QuitRequest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/messageBoxes.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>

namespace {

const QString kCaption = QStringLiteral("Caption");
const QString kText = QStringLiteral("<b>x</b>.jpg");
/// Wider than half the screen.
const QString kLongLine = QString(QStringLiteral("word ")).repeated(10);

struct Seen
{
    QString caption;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    Qt::TextFormat format = Qt::AutoText;
    QStringList buttons;
    QString fallback; ///< the default button
    QString escape;
    QWidget *parent = nullptr;
    int textWidth = 0;
    int textLines = 0;
};

QString plainText(const QAbstractButton *button)
{
    return button != nullptr ? button->text().remove(QLatin1Char('&')) : QString();
}

Seen recordOf(const QMessageBox &box)
{
    Seen seen{box.windowTitle(), box.text(), box.icon(), box.textFormat(), {}, {}, {}, nullptr};
    const auto buttons = box.buttons();
    for (const QAbstractButton *button : buttons) {
        seen.buttons.append(plainText(button));
    }
    seen.buttons.sort();
    seen.fallback = plainText(box.defaultButton());
    seen.escape = plainText(box.escapeButton());
    seen.parent = box.parentWidget();
    const auto *label = box.findChild<QLabel *>(QStringLiteral("qt_msgbox_label"));
    seen.textWidth = label->width();
    seen.textLines = label->height() / label->fontMetrics().lineSpacing();
    return seen;
}

/// Closes the box as the word says: a button's text, "return", "escape" or "close".
void answer(QMessageBox *box, const QString &way)
{
    const auto buttons = box->buttons();
    for (QAbstractButton *button : buttons) {
        if (plainText(button) == way) {
            button->click();
            return;
        }
    }
    if (way == QLatin1String("close")) {
        box->close();
    } else {
        QTest::keyClick(box, way == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Escape);
    }
}

using AskFunction = bool (*)();

bool runConfirm()
{
    return lumi::confirm(nullptr, kCaption, kText);
}

bool runAsk()
{
    return lumi::ask(nullptr, kCaption, kText);
}

bool runAskWithTexts()
{
    return lumi::ask(nullptr, kCaption, kText, QStringLiteral("Save & Exit"),
                     QStringLiteral("Exit"));
}

class BoxCounter : public QObject
{
public:
    BoxCounter() { qApp->installEventFilter(this); }

    int shown = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox *>(watched) != nullptr) {
            ++shown;
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

Q_DECLARE_METATYPE(AskFunction)

class TestMessageBoxes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMessageHasOneButton();
    void anErrorHasItsCaption();
    void questions_data();
    void questions();
    void answers_data();
    void answers();
    void linesAreWrappedOrWhole();
    void workRunsUnderTheWaitDialog();
    void noBoxOpensWhenTheProgramIsAskedToEnd();

private:
    /// Runs the function and records the box that it shows.
    [[nodiscard]] Seen boxOf(const std::function<void()> &function, const QString &way = {});
};

Seen TestMessageBoxes::boxOf(const std::function<void()> &function, const QString &way)
{
    Seen seen;
    QTimer::singleShot(0, this, [&seen, &way] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        seen = recordOf(*box);
        answer(box, way);
    });
    function();
    return seen;
}

void TestMessageBoxes::aMessageHasOneButton()
{
    QWidget parent;
    const Seen seen = boxOf([&parent] {
        lumi::tell(&parent, QMessageBox::Information, kCaption, kText);
    });
    QCOMPARE(seen.caption, kCaption);
    QCOMPARE(seen.text, kText);
    QCOMPARE(seen.icon, QMessageBox::Information);
    QCOMPARE(seen.format, Qt::PlainText);
    QCOMPARE(seen.buttons, QStringList{QStringLiteral("OK")});
    QCOMPARE(seen.fallback, QStringLiteral("OK"));
    QCOMPARE(seen.escape, QStringLiteral("OK"));
    QCOMPARE(seen.parent, &parent);
    QVERIFY(parent.children().isEmpty());
}

void TestMessageBoxes::anErrorHasItsCaption()
{
    const Seen seen = boxOf([] {
        lumi::tellError(nullptr, kText);
    });
    QCOMPARE(seen.caption, QStringLiteral("Error"));
    QCOMPARE(seen.text, kText);
    QCOMPARE(seen.icon, QMessageBox::Critical);
    QCOMPARE(seen.parent, nullptr);
}

void TestMessageBoxes::questions_data()
{
    lumi::test::columns<AskFunction, QMessageBox::Icon, QStringList, QString, QString>();
    const QStringList yesNo{QStringLiteral("No"), QStringLiteral("Yes")};
    QTest::newRow("a warning") << AskFunction(runConfirm) << QMessageBox::Warning << yesNo << "No"
                               << "No";
    QTest::newRow("a question") << AskFunction(runAsk) << QMessageBox::NoIcon << yesNo << "Yes"
                                << "No";
    QTest::newRow("a question with other buttons")
        << AskFunction(runAskWithTexts) << QMessageBox::NoIcon
        << QStringList{QStringLiteral("Exit"), QStringLiteral("Save  Exit")} << "Save  Exit"
        << "Exit";
}

void TestMessageBoxes::questions()
{
    const auto [function, icon, buttons, fallback, escape]
        = lumi::test::row<AskFunction, QMessageBox::Icon, QStringList, QString, QString>();
    const Seen seen = boxOf(function);
    QCOMPARE(seen.caption, kCaption);
    QCOMPARE(seen.text, kText);
    QCOMPARE(seen.format, Qt::PlainText);
    QCOMPARE(seen.icon, icon);
    QCOMPARE(seen.buttons, buttons);
    QCOMPARE(seen.fallback, fallback);
    QCOMPARE(seen.escape, escape);
}

void TestMessageBoxes::answers_data()
{
    QTest::addColumn<AskFunction>("function");
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("isYes");
    QTest::newRow("a warning, Yes") << AskFunction(runConfirm) << "Yes" << true;
    QTest::newRow("a warning, No") << AskFunction(runConfirm) << "No" << false;
    QTest::newRow("a warning, Return") << AskFunction(runConfirm) << "return" << false;
    QTest::newRow("a warning, Escape") << AskFunction(runConfirm) << "escape" << false;
    QTest::newRow("a warning, closed") << AskFunction(runConfirm) << "close" << false;
    QTest::newRow("a question, Yes") << AskFunction(runAsk) << "Yes" << true;
    QTest::newRow("a question, No") << AskFunction(runAsk) << "No" << false;
    QTest::newRow("a question, Return") << AskFunction(runAsk) << "return" << true;
    QTest::newRow("a question, Escape") << AskFunction(runAsk) << "escape" << false;
    QTest::newRow("a question, closed") << AskFunction(runAsk) << "close" << false;
    QTest::newRow("own texts, the first") << AskFunction(runAskWithTexts) << "Save  Exit" << true;
    QTest::newRow("own texts, the second") << AskFunction(runAskWithTexts) << "Exit" << false;
    QTest::newRow("own texts, Return") << AskFunction(runAskWithTexts) << "return" << true;
    QTest::newRow("own texts, Escape") << AskFunction(runAskWithTexts) << "escape" << false;
    QTest::newRow("own texts, closed") << AskFunction(runAskWithTexts) << "close" << false;
}

void TestMessageBoxes::answers()
{
    QFETCH(AskFunction, function);
    QFETCH(QString, way);
    QFETCH(bool, isYes);
    bool result = !isYes;
    const Seen seen = boxOf(
        [&result, function] {
            result = function();
        },
        way);
    QCOMPARE(seen.caption, kCaption);
    QCOMPARE(result, isYes);
}

void TestMessageBoxes::linesAreWrappedOrWhole()
{
    const auto seenWith = [this](lumi::BoxLines lines) {
        return boxOf([lines] {
            lumi::tell(nullptr, QMessageBox::Warning, kCaption, kLongLine, lines);
        });
    };
    const Seen wrapped = seenWith(lumi::BoxLines::Wrapped);
    const Seen whole = seenWith(lumi::BoxLines::Whole);
    QVERIFY(wrapped.textLines > 1);
    QCOMPARE(whole.textLines, 1);
    QVERIFY(whole.textWidth > wrapped.textWidth && whole.textWidth <= 460);
}

void TestMessageBoxes::workRunsUnderTheWaitDialog()
{
    QWidget parent;
    parent.show();
    const int result = lumi::underWait(&parent, [&parent] {
        const auto *wait = parent.findChild<MyDialogWait *>();
        const bool isShown = wait != nullptr && wait->isVisible();
        return isShown && wait->findChild<QLabel *>()->text() == QLatin1String("Working...") ? 7
                                                                                             : 0;
    });
    QCOMPARE(result, 7);
    QVERIFY(parent.findChildren<MyDialogWait *>().isEmpty());
}

void TestMessageBoxes::noBoxOpensWhenTheProgramIsAskedToEnd()
{
    BoxCounter boxes;
    const lumi::QuitRequest request;
    ::raise(SIGTERM);
    lumi::tell(nullptr, QMessageBox::Information, kCaption, kText);
    lumi::tellError(nullptr, kText);
    QVERIFY(!runConfirm());
    QVERIFY(!runAsk());
    QVERIFY(!runAskWithTexts());
    const auto box = lumi::makeBox(nullptr, QMessageBox::Warning, kCaption, kText,
                                   QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(lumi::execBox(box.get()), int(QMessageBox::No));
    QCOMPARE(boxes.shown, 0);
}

LUMI_TEST(TestMessageBoxes)
#include "TestMessageBoxes.moc"
