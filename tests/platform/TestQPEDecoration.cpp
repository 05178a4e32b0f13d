// SPDX-License-Identifier: MIT
#include "platform/windows/QPEDecoration.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "tests/support/testFiles.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <functional>

using lumi::test::writeFile;

class TestQPEDecoration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { Machine::install(nullptr); }

    void showsTheFirstPageAndFollowsLinks();
    void endsByItsCloseButton();
    void missingPagesAreReported();

private:
    /// Opens the help and runs `visit` while it is open.
    void help(const std::function<void(QDialog *, QTextBrowser *)> &visit);

    QString m_pages;
};

void TestQPEDecoration::init()
{
    auto *machine = lumi::test::FakeMachine::install();
    machine->resources = machine->folder.filePath(QStringLiteral("share"));
    m_pages = machine->resources + QStringLiteral("/help/");
}

void TestQPEDecoration::help(const std::function<void(QDialog *, QTextBrowser *)> &visit)
{
    bool visited = false;
    QTimer::singleShot(0, this, [&] {
        QPointer<QDialog> dialog(qobject_cast<QDialog *>(QApplication::activeModalWidget()));
        QVERIFY(dialog);
        visit(dialog, dialog->findChild<QTextBrowser *>());
        visited = true;
        if (dialog) {
            dialog->close();
        }
    });
    QWidget form;
    QPEDecoration().help(&form);
    QVERIFY(visited);
}

void TestQPEDecoration::showsTheFirstPageAndFollowsLinks()
{
    QVERIFY(writeFile(m_pages + QStringLiteral("index.html"),
                      "<h1>Start</h1><a href=\"more.html\">more</a>"));
    QVERIFY(writeFile(m_pages + QStringLiteral("more.html"), "<p>The second page</p>"));
    help([](QDialog *dialog, QTextBrowser *browser) {
        QVERIFY(browser != nullptr);
        QVERIFY(dialog->isVisible() && browser->isVisible());
        QVERIFY(browser->toPlainText().startsWith(QStringLiteral("Start")));
        // The first link takes the focus, Return follows it.
        browser->setFocus();
        QTest::keyClick(browser, Qt::Key_Tab);
        QTest::keyClick(browser, Qt::Key_Return);
        QCOMPARE(browser->toPlainText(), QStringLiteral("The second page"));
    });
}

void TestQPEDecoration::endsByItsCloseButton()
{
    QVERIFY(writeFile(m_pages + QStringLiteral("index.html"), "x"));
    help([](QDialog *dialog, QTextBrowser *) {
        auto *buttons = dialog->findChild<QDialogButtonBox *>();
        QVERIFY(buttons != nullptr);
        QPushButton *close = buttons->button(QDialogButtonBox::Close);
        QVERIFY(close != nullptr);
        close->click();
        QVERIFY(!dialog->isVisible());
    });
}

void TestQPEDecoration::missingPagesAreReported()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("QTextBrowser")));
    help([](QDialog *, QTextBrowser *browser) {
        QCOMPARE(browser->toPlainText(), QStringLiteral("The help pages are not installed."));
    });
}

LUMI_TEST(TestQPEDecoration)
#include "TestQPEDecoration.moc"
