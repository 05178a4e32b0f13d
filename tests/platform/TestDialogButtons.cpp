// SPDX-License-Identifier: MIT
#include "platform/windows/dialogButtons.h"
#include "tests/support/TestMain.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

class TestDialogButtons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void okAccepts();
    void cancelRejects();
    void closeRejects();
};

void TestDialogButtons::okAccepts()
{
    QDialog dialog;
    const QDialogButtonBox *row = lumi::makeAcceptRow(&dialog);
    QCOMPARE(row->parent(), &dialog);
    dialog.show();
    row->button(QDialogButtonBox::Ok)->click();
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(!dialog.isVisible());
}

void TestDialogButtons::cancelRejects()
{
    QDialog dialog;
    const QDialogButtonBox *row = lumi::makeAcceptRow(&dialog);
    dialog.setResult(QDialog::Accepted);
    dialog.show();
    row->button(QDialogButtonBox::Cancel)->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!dialog.isVisible());
}

void TestDialogButtons::closeRejects()
{
    QDialog dialog;
    const QDialogButtonBox *row = lumi::makeCloseRow(&dialog);
    QCOMPARE(row->buttons().size(), 1);
    dialog.setResult(QDialog::Accepted);
    dialog.show();
    row->button(QDialogButtonBox::Close)->click();
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!dialog.isVisible());
}

LUMI_TEST(TestDialogButtons)
#include "TestDialogButtons.moc"
