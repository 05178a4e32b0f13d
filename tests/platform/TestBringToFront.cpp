// SPDX-License-Identifier: MIT
#include "platform/windows/bringToFront.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

namespace {

/// Notes the token that Qt would find while the window changes.
class Window : public QWidget
{
public:
    QByteArray token;

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::WindowStateChange && !isMinimized()) {
            token = qgetenv("XDG_ACTIVATION_TOKEN");
        }
        QWidget::changeEvent(event);
    }
};

} // namespace

class TestBringToFront : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowGetsTheFocus();
    void aMinimisedWindowIsShown();
    void anOpenDialogGetsTheFocus();
};

void TestBringToFront::theWindowGetsTheFocus()
{
    QWidget window;
    window.show();
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &other);
    lumi::bringToFront(&window, {});
    QTRY_COMPARE(QApplication::activeWindow(), &window);
}

void TestBringToFront::aMinimisedWindowIsShown()
{
    Window window;
    window.showMaximized();
    window.setWindowState(window.windowState() | Qt::WindowMinimized);
    QTRY_VERIFY(window.isMinimized());
    lumi::bringToFront(&window, "a token");
    QTRY_VERIFY(!window.isMinimized());
    QVERIFY(window.isMaximized());
    QCOMPARE(window.token, QByteArray("a token"));
    QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}

void TestBringToFront::anOpenDialogGetsTheFocus()
{
    QWidget window;
    window.show();
    QDialog dialog(&window);
    dialog.setModal(true);
    dialog.show();
    QWidget other;
    other.show();
    other.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &other);
    lumi::bringToFront(&window, {});
    QTRY_COMPARE(QApplication::activeWindow(), &dialog);
}

LUMI_TEST(TestBringToFront)
#include "TestBringToFront.moc"
