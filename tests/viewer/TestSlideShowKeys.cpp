// SPDX-License-Identifier: MIT
// The keys of the show, and keys that it does not accept.
#include "platform/keys/deviceKey.h"
#include "tests/support/TestMain.h"
#include "tests/viewer/ShowFixture.h"
#include "viewer/SlideMenu.h"

#include <QKeyEvent>
#include <QTest>
#include <QTimer>

using lumi::test::kLong;
using lumi::test::ShowFixture;

namespace {

bool isAccepted(QWidget *target, QEvent::Type type, int key)
{
    QKeyEvent event(type, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
    return event.isAccepted();
}

} // namespace

class TestSlideShowKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_show = std::make_unique<ShowFixture>(); }

    void cleanup() { m_show.reset(); }

    void keys_data();
    void keys();
    void upAndDown_data();
    void upAndDown();
    void otherKeysAreNotAccepted_data();
    void otherKeysAreNotAccepted();
    void keysThatEndTheShow_data();
    void keysThatEndTheShow();
    void keysDuringADrawAreIgnored_data();
    void keysDuringADrawAreIgnored();

private:
    [[nodiscard]] bool stepsTo(const QString &name) const;

    std::unique_ptr<ShowFixture> m_show;
};

/// Whether a key has begun the decode of this picture alone. "a" was shown before.
bool TestSlideShowKeys::stepsTo(const QString &name) const
{
    for (const char *other : {"b", "c"}) {
        const bool isWanted = name == QLatin1String(other);
        if (m_show->picture(other)->starts != (isWanted ? 1 : 0)) {
            return false;
        }
    }
    return name == QLatin1String("a") || m_show->sees(qPrintable(name));
}

void TestSlideShowKeys::keys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("shown");
    QTest::newRow("Right") << int(Qt::Key_Right) << "b";
    QTest::newRow("Return") << int(Qt::Key_Return) << "b";
    QTest::newRow("Left") << int(Qt::Key_Left) << "c";
    QTest::newRow("Enter") << int(Qt::Key_Enter) << "a";
    QTest::newRow("a letter") << int(Qt::Key_N) << "a";
}

void TestSlideShowKeys::keys()
{
    QFETCH(int, key);
    QFETCH(QString, shown);
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([&] {
        m_show->key(key);
        QVERIFY(stepsTo(shown));
        QVERIFY(m_show->show->isVisible());
    });
}

void TestSlideShowKeys::upAndDown_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("keyboard");
    QTest::addColumn<int>("hinge");
    QTest::addColumn<QString>("shown");
    const int up = Qt::Key_Up;
    const int down = Qt::Key_Down;
    QTest::newRow("Up on an ordinary keyboard") << up << 0 << 0 << "a";
    QTest::newRow("Down on an ordinary keyboard") << down << 0 << 0 << "a";
    QTest::newRow("Up there, hinge turned") << up << 0 << 1 << "a";
    QTest::newRow("Down there, hinge turned") << down << 0 << 1 << "a";
    QTest::newRow("Up on the own keyboard") << up << 1 << 0 << "b";
    QTest::newRow("Down on the own keyboard") << down << 1 << 0 << "c";
    QTest::newRow("Up, hinge turned") << up << 1 << 256 << "c";
    QTest::newRow("Down, hinge turned") << down << 1 << 256 << "b";
    QTest::newRow("Up, no hinge program") << up << 1 << 32512 << "c";
    QTest::newRow("another keyboard") << up << 2 << 0 << "a";
}

void TestSlideShowKeys::upAndDown()
{
    QFETCH(int, key);
    QFETCH(int, keyboard);
    QFETCH(int, hinge);
    QFETCH(QString, shown);
    m_show->machine->keyboard = keyboard;
    m_show->machine->hingeResult = hinge;
    m_show->addPictures(3);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([&] {
        m_show->key(key);
        QVERIFY(stepsTo(shown));
    });
}

void TestSlideShowKeys::otherKeysAreNotAccepted_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("taken");
    QTest::newRow("Tab") << int(Qt::Key_Tab) << false;
    QTest::newRow("a letter") << int(Qt::Key_X) << false;
    QTest::newRow("the menu key, which acts when it is released") << kKeyMenu << false;
    QTest::newRow("zoom") << kKeyZoomIn << false;
    QTest::newRow("Right") << int(Qt::Key_Right) << true;
    QTest::newRow("Up, though it does nothing") << int(Qt::Key_Up) << true;
}

void TestSlideShowKeys::otherKeysAreNotAccepted()
{
    QFETCH(int, key);
    m_show->addPictures(2);
    m_show->make({false, true, kLong, 0, 0});
    m_show->run([&] {
        QTEST(isAccepted(m_show->show.get(), QEvent::KeyPress, key), "taken");
        QVERIFY(m_show->menu() == nullptr);
    });
}

void TestSlideShowKeys::keysThatEndTheShow_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("key");
    QTest::newRow("Escape") << int(QEvent::KeyPress) << int(Qt::Key_Escape);
    QTest::newRow("the device's key") << int(QEvent::KeyPress) << kKeyStop;
    QTest::newRow("the device's key, released") << int(QEvent::KeyRelease) << kKeyStop;
    QTest::newRow("Cancel") << int(QEvent::KeyPress) << int(Qt::Key_Cancel);
    QTest::newRow("Cancel, released") << int(QEvent::KeyRelease) << int(Qt::Key_Cancel);
    QTest::newRow("Back") << int(QEvent::KeyPress) << int(Qt::Key_Back);
}

void TestSlideShowKeys::keysThatEndTheShow()
{
    QFETCH(int, type);
    QFETCH(int, key);
    m_show->addPictures(2);
    m_show->make({});
    bool ended = false;
    bool accepted = false;
    QCOMPARE(m_show->run([&] {
        accepted = isAccepted(m_show->show.get(), QEvent::Type(type), key);
        ended = !m_show->show->isVisible();
    }),
             0);
    QVERIFY(ended);
    QVERIFY(accepted);
}

void TestSlideShowKeys::keysDuringADrawAreIgnored_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("key");
    QTest::newRow("Escape") << int(QEvent::KeyPress) << int(Qt::Key_Escape);
    QTest::newRow("Right") << int(QEvent::KeyPress) << int(Qt::Key_Right);
    QTest::newRow("the device's ending key, released") << int(QEvent::KeyRelease) << kKeyStop;
    QTest::newRow("the menu key, released") << int(QEvent::KeyRelease) << kKeyMenu;
}

void TestSlideShowKeys::keysDuringADrawAreIgnored()
{
    QFETCH(int, type);
    QFETCH(int, key);
    m_show->addPictures(3);
    SlideShow *show = m_show->make({});
    bool sent = false;
    bool stays = false;
    bool opens = false;
    // An open menu would keep the test from ending.
    const auto closeMenu = [this, &opens] {
        if (m_show->menu() != nullptr) {
            opens = true;
            m_show->menu()->close();
        }
    };
    // The decode of the next picture starts while this one is drawn.
    m_show->picture("c")->onStart = [&] {
        if (!sent) {
            sent = true;
            QTimer::singleShot(0, show, closeMenu);
            QKeyEvent event(QEvent::Type(type), key, Qt::NoModifier);
            QCoreApplication::sendEvent(show, &event);
            stays = show->isVisible();
        }
    };
    m_show->run([this] {
        QVERIFY(m_show->playsOn("bc"));
    });
    QVERIFY(sent);
    QVERIFY(stays);
    QVERIFY(!opens);
    QCOMPARE(m_show->seen().join(QString()), QStringLiteral("abc"));
}

LUMI_TEST(TestSlideShowKeys)
#include "TestSlideShowKeys.moc"
