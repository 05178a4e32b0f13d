// SPDX-License-Identifier: MIT
// The dialog of Version.
#include "tests/support/TestMain.h"
#include "widgets/HkAboutDialog.h"
#include "widgets/commonActions.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>

#include <functional>

class TestCommonActions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void versionTexts();

private:
    /// Calls the visitor with the next modal window.
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
