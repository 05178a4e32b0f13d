// SPDX-License-Identifier: MIT
#include "app/common/getText.h"
#include "platform/session/QuitRequest.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <csignal>
#include <functional>

using Visitor = std::function<void(QDialog *, QLineEdit *)>;

class TestGetText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void returnGivesTheLine();
    void acceptedEmptyLineIsNotNull();
    void cancelIsNull_data();
    void cancelIsNull();
    void initialTextIsSelected();
    void maximumLength_data();
    void maximumLength();
    void looks();
    void isNotShownWhenTheProgramIsAskedToEnd();

private:
    /// Runs the visitor on the dialog once it is up; it must end the dialog.
    QString ask(const Visitor &visitor, const QString &initial = QString(), int maxLength = 0,
                QWidget *parent = nullptr);

    int m_visits = 0;
};

QString TestGetText::ask(const Visitor &visitor, const QString &initial, int maxLength,
                         QWidget *parent)
{
    const int before = m_visits;
    QTimer::singleShot(0, this, [this, &visitor] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        auto *line = dialog != nullptr ? dialog->findChild<QLineEdit *>() : nullptr;
        if (line != nullptr) {
            ++m_visits;
            visitor(dialog, line);
        }
    });
    const QString text
        = getText(parent, QStringLiteral("Caption"), QStringLiteral("Enter:"), initial, maxLength);
    return m_visits == before + 1 ? text : QStringLiteral("no dialog was seen");
}

void TestGetText::returnGivesTheLine()
{
    const QString text = ask([](QDialog *, QLineEdit *line) {
        QTest::keyClicks(line, QStringLiteral("Holiday 2004"));
        QTest::keyClick(line, Qt::Key_Return);
    });
    QCOMPARE(text, QStringLiteral("Holiday 2004"));
}

void TestGetText::acceptedEmptyLineIsNotNull()
{
    const QString text = ask([](QDialog *, QLineEdit *line) {
        QTest::keyClick(line, Qt::Key_Return);
    });
    QVERIFY(text.isEmpty());
    QVERIFY(!text.isNull());
}

void TestGetText::cancelIsNull_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("the window manager closes the dialog") << false;
}

void TestGetText::cancelIsNull()
{
    QFETCH(bool, byKey);
    const QString text = ask(
        [byKey](QDialog *dialog, QLineEdit *line) {
            if (byKey) {
                QTest::keyClick(line, Qt::Key_Escape);
            } else {
                dialog->close();
            }
        },
        QStringLiteral("typed"));
    QVERIFY(text.isNull());
}

void TestGetText::initialTextIsSelected()
{
    const QString text = ask(
        [](QDialog *dialog, QLineEdit *line) {
            QCOMPARE(line->selectedText(), QStringLiteral("old name"));
            QTest::keyClicks(line, QStringLiteral("new"));
            dialog->accept();
        },
        QStringLiteral("old name"));
    QCOMPARE(text, QStringLiteral("new"));
}

void TestGetText::maximumLength_data()
{
    lumi::test::columns<int, QString>();
    QTest::newRow("a maximum cuts what is typed") << 4 << QStringLiteral("abcd");
    QTest::newRow("0 is no maximum") << 0 << QStringLiteral("abcdefgh");
    QTest::newRow("a negative number is no maximum") << -1 << QStringLiteral("abcdefgh");
}

void TestGetText::maximumLength()
{
    const auto [maxLength, expected] = lumi::test::row<int, QString>();
    const QString text = ask(
        [](QDialog *, QLineEdit *line) {
            QTest::keyClicks(line, QStringLiteral("abcdefgh"));
            QTest::keyClick(line, Qt::Key_Enter);
        },
        QString(), maxLength);
    QCOMPARE(text, expected);
}

void TestGetText::looks()
{
    const QString text = ask([](QDialog *dialog, QLineEdit *line) {
        QVERIFY(dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Caption"));
        QVERIFY(line->width() >= 400);
        QVERIFY(line->height() >= 40); // large enough for a finger
        QCOMPARE(dialog->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(dialog->layout()->spacing(), 4);
        const auto *row = dialog->findChild<QDialogButtonBox *>();
        QVERIFY(row != nullptr);
        QCOMPARE(row->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QCOMPARE(dialog->findChildren<QAbstractButton *>().size(), 2);
        auto *label = dialog->findChild<QLabel *>();
        QVERIFY(label != nullptr);
        QCOMPARE(label->text(), QStringLiteral("Enter:"));
        QVERIFY(label->geometry().bottom() < line->geometry().top());
        QVERIFY(line->hasFocus() || dialog->focusWidget() == line);
        dialog->reject();
    });
    QVERIFY(text.isNull());
}

void TestGetText::isNotShownWhenTheProgramIsAskedToEnd()
{
    const lumi::QuitRequest request;
    ::raise(SIGTERM);
    const QString text = ask([](QDialog *dialog, QLineEdit *) {
        dialog->reject();
    });
    QCOMPARE(text, QStringLiteral("no dialog was seen"));
    QVERIFY(getText(nullptr, {}, {}, QStringLiteral("text"), 0).isNull());
}

LUMI_TEST(TestGetText)
#include "TestGetText.moc"
