// SPDX-License-Identifier: MIT
// Other code connects to these slots and signals by name, so their names and order are fixed, odd
// ones included.
#include "tests/support/TestMain.h"
#include "tests/support/methodNames.h"
#include "tests/support/rows.h"
#include "widgets/DialogBase.h"
#include "widgets/HkAboutDialog.h"
#include "widgets/MyDialogProgressBar.h"
#include "widgets/MyDialogWait.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyImageCheckBox.h"
#include "widgets/MyLeftWidget.h"
#include "widgets/RadioButtonDialog.h"

#include <QTest>

Q_DECLARE_METATYPE(const QMetaObject *)

using Names = QList<QByteArray>;

class TestInterfaceNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
};

void TestInterfaceNames::names_data()
{
    lumi::test::columns<const QMetaObject *, QByteArray, Names, Names>();
    QTest::newRow("image button") << &MyImageButton::staticMetaObject << QByteArray("QLabel")
                                  << Names{"clicked()"} << Names();
    QTest::newRow("left column") << &MyLeftWidget::staticMetaObject << QByteArray("QWidget")
                                 << Names{"btn_clicked(int)"}
                                 << Names{"btn_top_clicked()", "btn_thumbnailLarge_clicked()",
                                          "btn_thumbnailSmall_clicked()", "btn_detail_clicked()",
                                          "btn_slideshow_clicked()"};
    QTest::newRow("image check box")
        << &MyImageCheckBox::staticMetaObject << QByteArray("QCheckBox") << Names() << Names();
    QTest::newRow("dialog base") << &DialogBase::staticMetaObject << QByteArray("QMessageBox")
                                 << Names() << Names();
    QTest::newRow("wait dialog") << &MyDialogWait::staticMetaObject << QByteArray("QDialog")
                                 << Names{"btn_clicked()"} << Names{"slot_timeout()"};
    QTest::newRow("progress dialog")
        << &MyDialogProgressBar::staticMetaObject << QByteArray("QDialog")
        << Names{"btn_cancel_clicked()"} << Names{"reject()"};
    QTest::newRow("radio button dialog")
        << &RadioButtonDialog::staticMetaObject << QByteArray("QDialog") << Names()
        << Names{"btn_clicked(int)"};
    QTest::newRow("version dialog")
        << &HkAboutDialog::staticMetaObject << QByteArray("HkAboutDialogBase") << Names()
        << Names{"slotDone()"};
}

void TestInterfaceNames::names()
{
    const auto [meta, base, signalNames, slotNames]
        = lumi::test::row<const QMetaObject *, QByteArray, Names, Names>();
    QCOMPARE(QByteArray(meta->superClass()->className()), base);
    QCOMPARE(lumi::test::methodNames(*meta, QMetaMethod::Signal), signalNames);
    QCOMPARE(lumi::test::methodNames(*meta, QMetaMethod::Slot), slotNames);
}

LUMI_TEST(TestInterfaceNames)
#include "TestInterfaceNames.moc"
