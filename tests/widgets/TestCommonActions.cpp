// SPDX-License-Identifier: MIT
// The boxes and dialogs that are opened by one call and answered by the user.
#include "tests/support/TestMain.h"
#include "widgets/HkAboutDialog.h"
#include "widgets/askBox.h"
#include "widgets/commonActions.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

class TestCommonActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void askAnswers_data();
    void askAnswers();
    void askLooks();
    void askParentMayGo();
    void versionTexts();

private:
    /// Calls the visitor with the modal window that comes up next.
    void whenModal(const std::function<void(QWidget *)> &visitor);

    int m_visits = 0;
};

void TestCommonActions::whenModal(const std::function<void(QWidget *)> &visitor)
{
    m_visits = 0;
    QTimer::singleShot(0, this, [this, visitor] {
        if (QWidget *window = QApplication::activeModalWidget()) {
            ++m_visits;
            visitor(window);
        }
    });
}

void TestCommonActions::askAnswers_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("answer");
    QTest::newRow("the first button is 0") << QStringLiteral("Yes") << 0;
    QTest::newRow("the second button is 1") << QStringLiteral("No") << 1;
    QTest::newRow("Return takes the first") << QStringLiteral("return") << 0;
    QTest::newRow("Escape takes the second") << QStringLiteral("escape") << 1;
    QTest::newRow("closing the box takes the second") << QStringLiteral("close") << 1;
}

void TestCommonActions::askAnswers()
{
    QFETCH(QString, way);
    QFETCH(int, answer);
    whenModal([&way](QWidget *window) {
        const auto buttons = window->findChildren<QPushButton *>();
        for (QPushButton *button : buttons) {
            if (button->text() == way) {
                button->click();
                return;
            }
        }
        if (way == QLatin1String("close")) {
            window->close();
        } else {
            QTest::keyClick(window,
                            way == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Escape);
        }
    });
    QCOMPARE(askBox(nullptr, QStringLiteral("Caption"), QStringLiteral("Sure?"),
                    QStringLiteral("Yes"), QStringLiteral("No")),
             answer);
    QCOMPARE(m_visits, 1);
}

void TestCommonActions::askLooks()
{
    whenModal([](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        QVERIFY(box != nullptr);
        QCOMPARE(box->icon(), QMessageBox::NoIcon);
        QCOMPARE(box->windowTitle(), QStringLiteral("Caption"));
        QCOMPARE(box->text(), QStringLiteral("<b>x</b>.jpg"));
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QCOMPARE(box->buttons().size(), qsizetype(2));
        box->reject();
    });
    QCOMPARE(askBox(nullptr, QStringLiteral("Caption"), QStringLiteral("<b>x</b>.jpg"),
                    QStringLiteral("Save & Exit"), QStringLiteral("Exit")),
             1);
    QCOMPARE(m_visits, 1);
}

void TestCommonActions::askParentMayGo()
{
    auto parent = std::make_unique<QWidget>();
    whenModal([&parent](QWidget *) {
        parent.reset();
    });
    QCOMPARE(askBox(parent.get(), QStringLiteral("Caption"), QStringLiteral("Sure?"),
                    QStringLiteral("Yes"), QStringLiteral("No")),
             1);
    QCOMPARE(m_visits, 1);
}

void TestCommonActions::versionTexts()
{
    QWidget parent;
    whenModal([&parent](QWidget *window) {
        auto *dialog = qobject_cast<HkAboutDialog *>(window);
        QVERIFY(dialog != nullptr);
        QCOMPARE(dialog->parentWidget(), &parent);
        const auto text = [dialog](const char *name) {
            return dialog->findChild<QLabel *>(QLatin1String(name))->text();
        };
        QCOMPARE(text("appName"), QStringLiteral("Lumi Vault"));
        QCOMPARE(text("version"), QStringLiteral("Ver " LUMI_VERSION));
        QVERIFY(text("copyright").contains(QStringLiteral("Lumi Vault contributors")));
        QCOMPARE(text("buildInfo"), QStringLiteral("Jan 31 2005 12:42:36"));
        dialog->reject();
    });
    showVersion(&parent);
    QCOMPARE(m_visits, 1);
    QVERIFY(parent.findChildren<QDialog *>().isEmpty());
    QCOMPARE(QWidget::keyboardGrabber(), nullptr);
}

LUMI_TEST(TestCommonActions)
#include "TestCommonActions.moc"
