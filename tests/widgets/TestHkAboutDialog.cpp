// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"
#include "tests/support/TestMain.h"
#include "widgets/HkAboutDialog.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class TestHkAboutDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void baseFormHasItsNames();
    void textsAndCaption();
    void sizeFollowsTheDesktop();
    void everythingHasItsRoom();
    void keyboardIsHeldWhileItIsUp();
    void keyboardIsGivenBackOnDeletion();
    void shiftAndDownShowTheBuild();
    void downAloneDoesNothing();
    void okAccepts();
    void escapeRejects();

private:
    template <typename Widget = QLabel> Widget *child(const char *name) const
    {
        return m_dialog->findChild<Widget *>(QLatin1String(name));
    }

    std::unique_ptr<HkAboutDialog> m_dialog;
};

void TestHkAboutDialog::init()
{
    m_dialog = std::make_unique<HkAboutDialog>(
        QStringLiteral("Lumi Vault"), QStringLiteral("Ver 2"), QStringLiteral("Copyright us"),
        QStringLiteral("Jan 31 2005 12:42:36"), nullptr);
}

void TestHkAboutDialog::cleanup()
{
    m_dialog.reset();
}

void TestHkAboutDialog::baseFormHasItsNames()
{
    const HkAboutDialogBase base;
    QCOMPARE(base.windowTitle(), QStringLiteral("Version information"));
    for (const char *name : {"appName", "version", "copyright", "buildInfo"}) {
        QVERIFY(base.findChild<QLabel *>(QLatin1String(name)) != nullptr);
    }
    auto *button = base.findChild<QPushButton *>(QStringLiteral("okBtn"));
    QVERIFY(button != nullptr);
    QCOMPARE(button->text(), QStringLiteral("  OK  "));
}

void TestHkAboutDialog::textsAndCaption()
{
    QVERIFY(m_dialog->isModal());
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Version"));
    QCOMPARE(child("appName")->text(), QStringLiteral("Lumi Vault"));
    QCOMPARE(child("version")->text(), QStringLiteral("Ver 2"));
    QCOMPARE(child("copyright")->text(), QStringLiteral("Copyright us"));
    QCOMPARE(child("buildInfo")->text(), QStringLiteral("Jan 31 2005 12:42:36"));
    m_dialog->show();
    QVERIFY(child("copyright")->isVisible());
    QVERIFY(!child("buildInfo")->isVisible());
}

void TestHkAboutDialog::sizeFollowsTheDesktop()
{
    m_dialog->show();
    const QSize desktop = QPEApplication::desktopSize();
    QCOMPARE(m_dialog->width(), desktop.width() / 2);
    const int height = child<QPushButton>("okBtn")->height() + 4 * m_dialog->fontMetrics().height();
    QCOMPARE(m_dialog->height(), qMin(height, desktop.height() / 2));
}

void TestHkAboutDialog::everythingHasItsRoom()
{
    m_dialog->show();
    const QSize needed = m_dialog->layout()->minimumSize();
    QVERIFY(m_dialog->width() >= needed.width());
    QVERIFY(m_dialog->height() >= needed.height());
}

void TestHkAboutDialog::keyboardIsHeldWhileItIsUp()
{
    QCOMPARE(QWidget::keyboardGrabber(), m_dialog.get());
    m_dialog->show();
    QCOMPARE(QWidget::keyboardGrabber(), m_dialog.get());
    m_dialog->hide();
    QCOMPARE(QWidget::keyboardGrabber(), nullptr);
}

void TestHkAboutDialog::keyboardIsGivenBackOnDeletion()
{
    m_dialog.reset();
    QCOMPARE(QWidget::keyboardGrabber(), nullptr);
}

void TestHkAboutDialog::shiftAndDownShowTheBuild()
{
    m_dialog->show();
    const int before = m_dialog->height();
    QTest::keyClick(m_dialog.get(), Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(child("buildInfo")->isVisible());
    QVERIFY(m_dialog->isVisible());
    QTRY_VERIFY(m_dialog->height() > before);
    QVERIFY(child("buildInfo")->height() >= child("buildInfo")->sizeHint().height());
}

void TestHkAboutDialog::downAloneDoesNothing()
{
    m_dialog->show();
    QTest::keyClick(m_dialog.get(), Qt::Key_Down);
    QTest::keyClick(m_dialog.get(), Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(m_dialog.get(), Qt::Key_Up, Qt::ShiftModifier);
    QVERIFY(!child("buildInfo")->isVisible());
    QVERIFY(m_dialog->isVisible());
}

void TestHkAboutDialog::okAccepts()
{
    m_dialog->show();
    const QSignalSpy accepted(m_dialog.get(), &QDialog::accepted);
    QTest::mouseClick(child<QPushButton>("okBtn"), Qt::LeftButton);
    QCOMPARE(accepted.size(), 1);
    m_dialog->show();
    QTest::keyClick(m_dialog.get(), Qt::Key_Return);
    QCOMPARE(accepted.size(), 2);
    m_dialog->show();
    m_dialog->slotDone();
    QCOMPARE(accepted.size(), 3);
}

void TestHkAboutDialog::escapeRejects()
{
    m_dialog->show();
    const QSignalSpy rejected(m_dialog.get(), &QDialog::rejected);
    QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    QCOMPARE(rejected.size(), 1);
}

LUMI_TEST(TestHkAboutDialog)
#include "TestHkAboutDialog.moc"
