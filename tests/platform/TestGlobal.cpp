// SPDX-License-Identifier: MIT
#include "platform/Global.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QInputMethod>
#include <QLineEdit>
#include <QTest>

namespace {

int hides = 0;

} // namespace

/// Replaces the toolkit's function, because no on-screen keyboard exists here.
void QInputMethod::hide()
{
    ++hides;
}

class TestGlobal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theOnScreenKeyboardIsHidden();
    void aFieldBeingEditedKeepsItsTextAndFocus();
};

void TestGlobal::theOnScreenKeyboardIsHidden()
{
    hides = 0;
    Global::hideInputMethod();
    QCOMPARE(hides, 1);
}

void TestGlobal::aFieldBeingEditedKeepsItsTextAndFocus()
{
    Global::hideInputMethod();
    QLineEdit line;
    line.show();
    line.activateWindow();
    line.setFocus();
    QTest::keyClicks(&line, QStringLiteral("half a na"));
    const QWidget *focus = QApplication::focusWidget();
    Global::hideInputMethod();
    QCOMPARE(line.text(), QStringLiteral("half a na"));
    QCOMPARE(QApplication::focusWidget(), focus);
    QVERIFY(line.isVisible());
}

LUMI_TEST(TestGlobal)
#include "TestGlobal.moc"
