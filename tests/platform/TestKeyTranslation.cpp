// SPDX-License-Identifier: MIT
#include "platform/QPEApplication.h"
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace {

/// Records the keys that arrive.
class Recorder : public QWidget
{
public:
    explicit Recorder(QWidget *parent = nullptr)
        : QWidget(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    QList<int> pressed;
    QList<int> released;
    QString text;
    bool repeated = false;
    bool ignores = false;

protected:
    void keyPressEvent(QKeyEvent *event) override { note(event, &pressed); }

    void keyReleaseEvent(QKeyEvent *event) override { note(event, &released); }

private:
    void note(QKeyEvent *event, QList<int> *list)
    {
        if (event->key() == Qt::Key_Control) {
            return;
        }
        list->append(event->key());
        text += event->text();
        repeated = event->isAutoRepeat();
        event->setAccepted(!ignores);
    }
};

/// A main window with the slot that the key "Yes" calls.
class Acceptor : public QWidget
{
    Q_OBJECT

public:
    int accepted = 0;

public Q_SLOTS:

    void accept() { ++accepted; }
};

} // namespace

class TestKeyTranslation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keyArrivesAsADeviceKey();
    void otherKeysStayAsTheyAre();
    void deviceKeysOfTheHandheldStayAsTheyAre();
    void repeatsStayRepeats();
    void anIgnoredDeviceKeyGoesToTheParentOnce();
    void textFieldsGetTheirCharacters_data();
    void textFieldsGetTheirCharacters();
    void anAcceleratorOnADeviceKeyFires();
    void anInactiveAcceleratorDoesNotFire_data();
    void anInactiveAcceleratorDoesNotFire();
    void aTextFieldKeepsTheAcceleratorsKey();
    void theAcceptingKeyCallsTheMainWindow();
    void aWidgetCanTakeTheAcceptingKey();
    void theAcceptingKeyOfAnotherWindowIsIgnored();
    void aMainWindowWithoutTheSlotIsLeftAlone();
};

// TestMachineProfile has the table of keys.
void TestKeyTranslation::keyArrivesAsADeviceKey()
{
    Recorder recorder;
    QTest::keyClick(&recorder, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(recorder.pressed, QList<int>({kKeyMail}));
    QCOMPARE(recorder.released, QList<int>({kKeyMail}));
    QVERIFY2(recorder.text.isEmpty(), "a device key types nothing");
}

void TestKeyTranslation::otherKeysStayAsTheyAre()
{
    Recorder recorder;
    QTest::keyClick(&recorder, Qt::Key_Left);
    QTest::keyClick(&recorder, Qt::Key_Escape);
    QTest::keyClick(&recorder, Qt::Key_M);
    QTest::keyClick(&recorder, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(recorder.pressed, QList<int>({Qt::Key_Left, Qt::Key_Escape, Qt::Key_M, Qt::Key_C}));
}

void TestKeyTranslation::deviceKeysOfTheHandheldStayAsTheyAre()
{
    Recorder recorder;
    for (const int code : {kKeyZoomIn, kKeyZoomOut, kKeyFit, kKeyMenu, kKeyMail, kKeyStop}) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(&recorder, &event);
        QCOMPARE(recorder.pressed.last(), code);
    }
    QCOMPARE(recorder.pressed.size(), 6);
}

void TestKeyTranslation::repeatsStayRepeats()
{
    Recorder recorder;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Plus, Qt::NoModifier, QStringLiteral("+"), true);
    QCoreApplication::sendEvent(&recorder, &event);
    QCOMPARE(recorder.pressed, QList<int>({0x2010}));
    QVERIFY(recorder.repeated);
}

void TestKeyTranslation::anIgnoredDeviceKeyGoesToTheParentOnce()
{
    Recorder outer;
    auto *inner = new Recorder(&outer);
    inner->ignores = true;
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Plus, Qt::NoModifier);
    QCoreApplication::sendEvent(inner, &event);
    QCOMPARE(inner->pressed, QList<int>({0x2010}));
    QCOMPARE(outer.pressed, QList<int>({0x2010}));
    QVERIFY(event.isAccepted());
    outer.ignores = true;
    QCoreApplication::sendEvent(inner, &event);
    QVERIFY(!event.isAccepted());
}

void TestKeyTranslation::textFieldsGetTheirCharacters_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a line") << QStringLiteral("line");
    QTest::newRow("a text") << QStringLiteral("text");
    QTest::newRow("a box to type in") << QStringLiteral("box");
}

void TestKeyTranslation::textFieldsGetTheirCharacters()
{
    QFETCH(QString, kind);
    QWidget window;
    QLineEdit line(&window);
    QPlainTextEdit text(&window);
    QComboBox box(&window);
    box.setEditable(true);
    window.show();
    QWidget *field = &box;
    if (kind != QLatin1String("box")) {
        field = kind == QLatin1String("line") ? static_cast<QWidget *>(&line) : &text;
    }
    field->setFocus();
    QTest::keyClicks(field, QStringLiteral("+=-0*"));
    QCOMPARE(QString(line.text() + text.toPlainText() + box.currentText()),
             QStringLiteral("+=-0*"));
}

void TestKeyTranslation::anAcceleratorOnADeviceKeyFires()
{
    Recorder window;
    auto *inner = new Recorder(&window);
    QShortcut accelerator(QKeySequence(kKeyMail), &window);
    const QSignalSpy spy(&accelerator, &QShortcut::activated);
    window.show();
    QTest::keyPress(inner, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    QTest::keyRelease(inner, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    QVERIFY2(inner->pressed.isEmpty(), "the accelerator has used the key up");
    QTest::keyClick(inner, Qt::Key_Plus);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(inner->pressed, QList<int>({0x2010}));
}

void TestKeyTranslation::anInactiveAcceleratorDoesNotFire_data()
{
    QTest::addColumn<QString>("why");
    for (const char *why :
         {"disabled", "hidden owner", "disabled owner", "focus elsewhere", "another window"}) {
        QTest::newRow(why) << QString::fromLatin1(why);
    }
}

void TestKeyTranslation::anInactiveAcceleratorDoesNotFire()
{
    QFETCH(QString, why);
    QWidget window;
    auto *owner = new QWidget(&window);
    auto *receiver = new Recorder(&window);
    Recorder other;
    QShortcut accelerator(QKeySequence(kKeyMail), owner);
    const QSignalSpy spy(&accelerator, &QShortcut::activated);
    window.show();
    QTest::keyClick(receiver, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    if (why == QLatin1String("disabled")) {
        accelerator.setEnabled(false);
    } else if (why == QLatin1String("hidden owner")) {
        owner->hide();
    } else if (why == QLatin1String("disabled owner")) {
        owner->setEnabled(false);
    } else if (why == QLatin1String("focus elsewhere")) {
        accelerator.setContext(Qt::WidgetWithChildrenShortcut);
    } else {
        receiver = &other;
    }
    QTest::keyClick(receiver, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(receiver->pressed, QList<int>({kKeyMail}));
}

void TestKeyTranslation::aTextFieldKeepsTheAcceleratorsKey()
{
    QWidget window;
    auto *line = new QLineEdit(&window);
    QShortcut accelerator(QKeySequence(kKeyMail), &window);
    const QSignalSpy spy(&accelerator, &QShortcut::activated);
    window.show();
    QTest::keyClick(line, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(spy.count(), 0);
}

void TestKeyTranslation::theAcceptingKeyCallsTheMainWindow()
{
    Acceptor window;
    auto *inner = new QWidget(&window);
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QTest::keyClick(inner, Qt::Key_Yes);
    QCOMPARE(window.accepted, 1);
    QTest::keyClick(inner, Qt::Key_No);
    QTest::keyClick(inner, Qt::Key_Return);
    QCOMPARE(window.accepted, 1);
}

void TestKeyTranslation::aWidgetCanTakeTheAcceptingKey()
{
    Acceptor window;
    auto *inner = new Recorder(&window);
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QTest::keyClick(inner, Qt::Key_Yes);
    QCOMPARE(window.accepted, 0);
    QCOMPARE(inner->pressed, QList<int>({Qt::Key_Yes}));
}

void TestKeyTranslation::theAcceptingKeyOfAnotherWindowIsIgnored()
{
    Acceptor window;
    QWidget dialog;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QTest::keyClick(&dialog, Qt::Key_Yes);
    QCOMPARE(window.accepted, 0);
}

void TestKeyTranslation::aMainWindowWithoutTheSlotIsLeftAlone()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    QWidget window;
    qobject_cast<QPEApplication *>(qApp)->showMainWidget(&window, true);
    QTest::keyClick(&window, Qt::Key_Yes);
    QVERIFY(window.isVisible());
}

LUMI_TEST(TestKeyTranslation)
#include "TestKeyTranslation.moc"
