// SPDX-License-Identifier: MIT
#include "platform/Global.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

class TestGlobal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFieldBeingEditedKeepsItsTextAndFocus();
};

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
