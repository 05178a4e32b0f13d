// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "widgets/RadioButtonDialog.h"

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

class TestRadioButtonDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void looks();
    void defaultIsChecked();
    void result_data();
    void result();
    void slotKeepsTheIndex();

private:
    QRadioButton *radio(int index) const
    {
        return m_dialog->findChildren<QRadioButton *>().at(index);
    }

    std::unique_ptr<RadioButtonDialog> m_dialog;
};

void TestRadioButtonDialog::init()
{
    m_dialog = std::make_unique<RadioButtonDialog>(
        nullptr, QStringLiteral("Copy method"), QStringLiteral("Please select copy method."),
        QStringList{QStringLiteral("Only copy"), QStringLiteral("Copy and check"),
                    QStringLiteral("Third")},
        1);
}

void TestRadioButtonDialog::cleanup()
{
    m_dialog.reset();
}

void TestRadioButtonDialog::looks()
{
    QVERIFY(m_dialog->isModal());
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Copy method"));
    QCOMPARE(m_dialog->layout()->contentsMargins(), QMargins(10, 10, 10, 10));
    QCOMPARE(m_dialog->layout()->spacing(), 7);
    auto *group = m_dialog->findChild<QGroupBox *>();
    QVERIFY(group != nullptr);
    QCOMPARE(group->layout()->contentsMargins(), QMargins(4, 4, 4, 4));
    QCOMPARE(group->layout()->spacing(), 4);
    auto *label = m_dialog->findChild<QLabel *>();
    QCOMPARE(label->text(), QStringLiteral("Please select copy method."));
    m_dialog->show();
    QVERIFY(label->geometry().bottom() < group->geometry().top());
    QCOMPARE(radio(0)->text(), QStringLiteral("Only copy"));
    QCOMPARE(radio(2)->text(), QStringLiteral("Third"));
}

void TestRadioButtonDialog::defaultIsChecked()
{
    QVERIFY(!radio(0)->isChecked());
    QVERIFY(radio(1)->isChecked());
    QVERIFY(!radio(2)->isChecked());
}

void TestRadioButtonDialog::result_data()
{
    QTest::addColumn<int>("clicked"); // -1: none
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("expected");
    QTest::newRow("Return gives the default") << -1 << Qt::Key_Return << 1;
    QTest::newRow("Enter gives the default") << -1 << Qt::Key_Enter << 1;
    QTest::newRow("Return gives the clicked one") << 2 << Qt::Key_Return << 2;
    QTest::newRow("the first one is 0") << 0 << Qt::Key_Return << 0;
    QTest::newRow("Escape gives none") << 2 << Qt::Key_Escape << -1;
}

void TestRadioButtonDialog::result()
{
    QFETCH(int, clicked);
    QFETCH(Qt::Key, key);
    QFETCH(int, expected);
    QTimer::singleShot(0, m_dialog.get(), [this, clicked, key] {
        if (clicked >= 0) {
            radio(clicked)->click();
        }
        QTest::keyClick(radio(1), key);
    });
    QCOMPARE(m_dialog->exec(), expected);
}

void TestRadioButtonDialog::slotKeepsTheIndex()
{
    m_dialog->btn_clicked(7);
    QTimer::singleShot(0, m_dialog.get(), &QDialog::accept);
    QCOMPARE(m_dialog->exec(), 7);
}

LUMI_TEST(TestRadioButtonDialog)
#include "TestRadioButtonDialog.moc"
