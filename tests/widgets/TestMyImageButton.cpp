// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyImageButton.h"
#include "widgets/focusPainters.h"

#include <QDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(MyImageButton::FocusPainter)

namespace {

constexpr QSize kSize(40, 30);

QPixmap filled(Qt::GlobalColor color, const QSize &size = kSize)
{
    QPixmap pixmap(size);
    pixmap.fill(color);
    return pixmap;
}

/// Sends events to the button directly, without the checks of its base class.
class OpenButton : public MyImageButton
{
public:
    using MyImageButton::keyPressEvent;
    using MyImageButton::keyReleaseEvent;
    using MyImageButton::mousePressEvent;
    using MyImageButton::mouseReleaseEvent;
    using MyImageButton::MyImageButton;
};

/// Counts the keys that its child did not accept.
class KeyParent : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }

    void keyReleaseEvent(QKeyEvent *event) override { keys.append(-event->key()); }
};

QMouseEvent mouseEvent(QEvent::Type type, const QPoint &position)
{
    return QMouseEvent(type, position, position, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
}

void drawFrame(QImage *image, const QRect &rectangle, int lineWidth, QRgb color)
{
    const QRect inner = rectangle.adjusted(lineWidth, lineWidth, -lineWidth, -lineWidth);
    for (int y = rectangle.top(); y <= rectangle.bottom(); ++y) {
        for (int x = rectangle.left(); x <= rectangle.right(); ++x) {
            if (!inner.contains(x, y)) {
                image->setPixel(x, y, color);
            }
        }
    }
}

} // namespace

class TestMyImageButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stateChoosesThePicture_data();
    void stateChoosesThePicture();
    void normalPictureReplacesMissingOnes();
    void normalPictureLeavesOthers();
    void sizeIsThatOfTheNormalPicture();
    void denseScreenPictureCountsInLogicalPixels();
    void clickWithThePen();
    void dragOffCancels();
    void dragOffAndBackClicks();
    void edgesOfTheButton_data();
    void edgesOfTheButton();
    void withoutPicturesThePenDoesNothing_data();
    void withoutPicturesThePenDoesNothing();
    void disabledButtonGetsNoInput();
    void pressDoesNotAskForEnabled();
    void returnDoesNotAskForEnabled();
    void spaceClicksAtTheRelease();
    void repeatedSpaceIsNoClick();
    void returnClicksAtThePress_data();
    void returnClicksAtThePress();
    void arrowsMoveTheFocus_data();
    void arrowsMoveTheFocus();
    void otherKeysGoToTheParent();
    void losingTheFocusReleases();
    void focusPolicyIsTab();
    void focusFrame_data();
    void focusFrame();
    void noFrameWithoutFocus();
    void disabledPictureIsNotGrayed();
    void screenReadersSeeAButton();
    void aReadersPressObeysTheWindow_data();
    void aReadersPressObeysTheWindow();

private:
    OpenButton *addButton(MyImageButton::FocusPainter painter = nullptr);
    QColor shownColor() const;

    std::unique_ptr<KeyParent> m_parent;
    OpenButton *m_button = nullptr;
};

OpenButton *TestMyImageButton::addButton(MyImageButton::FocusPainter painter)
{
    auto *button = new OpenButton(m_parent.get(), painter);
    button->setNormalPixmap(filled(Qt::red));
    button->setPressedPixmap(filled(Qt::green));
    button->setOnPixmap(filled(Qt::blue));
    button->setOnPressedPixmap(filled(Qt::cyan));
    button->setDisabledPixmap(filled(Qt::gray));
    return button;
}

void TestMyImageButton::init()
{
    m_parent = std::make_unique<KeyParent>();
    m_parent->resize(200, 100);
    m_button = addButton();
    m_parent->show();
    m_parent->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_parent.get()));
}

void TestMyImageButton::cleanup()
{
    m_parent.reset();
}

QColor TestMyImageButton::shownColor() const
{
    return m_button->grab().toImage().pixelColor(kSize.width() / 2, kSize.height() / 2);
}

void TestMyImageButton::stateChoosesThePicture_data()
{
    lumi::test::columns<bool, bool, bool, QColor>();
    QTest::newRow("normal") << true << false << false << QColor(Qt::red);
    QTest::newRow("pressed") << true << false << true << QColor(Qt::green);
    QTest::newRow("on") << true << true << false << QColor(Qt::blue);
    QTest::newRow("on and pressed") << true << true << true << QColor(Qt::cyan);
    QTest::newRow("disabled") << false << false << false << QColor(Qt::gray);
    QTest::newRow("disabled and on") << false << true << false << QColor(Qt::gray);
    QTest::newRow("disabled and pressed") << false << false << true << QColor(Qt::gray);
    QTest::newRow("disabled, on and pressed") << false << true << true << QColor(Qt::gray);
}

void TestMyImageButton::stateChoosesThePicture()
{
    const auto [enabled, on, pressed, color] = lumi::test::row<bool, bool, bool, QColor>();
    m_button->setOn(on);
    m_button->setEnabled(enabled);
    if (pressed) {
        auto press = mouseEvent(QEvent::MouseButtonPress, QPoint(5, 5));
        m_button->mousePressEvent(&press);
    }
    QCOMPARE(m_button->isPressed(), pressed);
    QCOMPARE(m_button->isOn(), on);
    QCOMPARE(shownColor(), color);
}

void TestMyImageButton::normalPictureReplacesMissingOnes()
{
    delete m_button;
    m_button = new OpenButton(m_parent.get());
    m_button->setNormalPixmap(filled(Qt::red));
    m_button->show();
    QCOMPARE(shownColor(), QColor(Qt::red));
    m_button->setOn(true);
    QCOMPARE(shownColor(), QColor(Qt::red));
    QTest::mousePress(m_button, Qt::LeftButton);
    QCOMPARE(shownColor(), QColor(Qt::red));
    m_button->setOn(false);
    QCOMPARE(shownColor(), QColor(Qt::red));
    m_button->setEnabled(false);
    QCOMPARE(shownColor(), QColor(Qt::red));
}

void TestMyImageButton::normalPictureLeavesOthers()
{
    m_button->setNormalPixmap(filled(Qt::yellow));
    QCOMPARE(shownColor(), QColor(Qt::yellow));
    m_button->setOn(true);
    QCOMPARE(shownColor(), QColor(Qt::blue));
}

void TestMyImageButton::sizeIsThatOfTheNormalPicture()
{
    QCOMPARE(m_button->minimumSize(), kSize);
    QCOMPARE(m_button->maximumSize(), kSize);
    QCOMPARE(m_button->size(), kSize);
    m_button->setPressedPixmap(filled(Qt::green, QSize(99, 99)));
    QCOMPARE(m_button->size(), kSize);
    m_button->setNormalPixmap(filled(Qt::red, QSize(50, 60)));
    QCOMPARE(m_button->size(), QSize(50, 60));
}

void TestMyImageButton::denseScreenPictureCountsInLogicalPixels()
{
    QPixmap dense = filled(Qt::red, kSize * 2);
    dense.setDevicePixelRatio(2);
    m_button->setNormalPixmap(dense);
    QCOMPARE(m_button->size(), kSize);
}

void TestMyImageButton::clickWithThePen()
{
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(m_button->isPressed());
    QCOMPARE(spy.size(), 0);
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
    QVERIFY(!m_button->isPressed());
    QCOMPARE(shownColor(), QColor(Qt::red));
}

void TestMyImageButton::dragOffCancels()
{
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::mousePress(m_button, Qt::LeftButton);
    auto move = mouseEvent(QEvent::MouseMove, QPoint(60, 10));
    QCoreApplication::sendEvent(m_button, &move);
    QVERIFY(!m_button->isPressed());
    QCOMPARE(shownColor(), QColor(Qt::red));
    QTest::mouseRelease(m_button, Qt::LeftButton, Qt::NoModifier, QPoint(60, 10));
    QCOMPARE(spy.size(), 0);
}

void TestMyImageButton::dragOffAndBackClicks()
{
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::mousePress(m_button, Qt::LeftButton);
    auto off = mouseEvent(QEvent::MouseMove, QPoint(60, 10));
    QCoreApplication::sendEvent(m_button, &off);
    auto back = mouseEvent(QEvent::MouseMove, QPoint(10, 10));
    QCoreApplication::sendEvent(m_button, &back);
    QVERIFY(m_button->isPressed());
    QTest::mouseRelease(m_button, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::edgesOfTheButton_data()
{
    lumi::test::columns<QPoint, bool>();
    QTest::newRow("the leftmost column is outside") << QPoint(0, 10) << false;
    QTest::newRow("the topmost row is outside") << QPoint(10, 0) << false;
    QTest::newRow("the second column and row are inside") << QPoint(1, 1) << true;
    QTest::newRow("the last column and row are inside") << QPoint(39, 29) << true;
    QTest::newRow("one column behind is outside") << QPoint(40, 10) << false;
    QTest::newRow("one row below is outside") << QPoint(10, 30) << false;
    QTest::newRow("left of it is outside") << QPoint(-1, 10) << false;
}

void TestMyImageButton::edgesOfTheButton()
{
    const auto [position, inside] = lumi::test::row<QPoint, bool>();
    QTest::mousePress(m_button, Qt::LeftButton);
    auto move = mouseEvent(QEvent::MouseMove, position);
    QCoreApplication::sendEvent(m_button, &move);
    QCOMPARE(m_button->isPressed(), inside);
}

void TestMyImageButton::withoutPicturesThePenDoesNothing_data()
{
    QTest::addColumn<bool>("normal");
    QTest::newRow("no normal picture") << true;
    QTest::newRow("no pressed picture") << false;
}

void TestMyImageButton::withoutPicturesThePenDoesNothing()
{
    QFETCH(bool, normal);
    if (normal) {
        m_button->setNormalPixmap(QPixmap());
    } else {
        m_button->setPressedPixmap(QPixmap());
    }
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    auto press = mouseEvent(QEvent::MouseButtonPress, QPoint(5, 5));
    auto move = mouseEvent(QEvent::MouseMove, QPoint(6, 6));
    auto release = mouseEvent(QEvent::MouseButtonRelease, QPoint(6, 6));
    QCoreApplication::sendEvent(m_button, &press);
    QVERIFY(!m_button->isPressed());
    QCoreApplication::sendEvent(m_button, &move);
    QVERIFY(!m_button->isPressed());
    QCoreApplication::sendEvent(m_button, &release);
    QCOMPARE(spy.size(), 0);
}

void TestMyImageButton::disabledButtonGetsNoInput()
{
    m_button->setFocus();
    m_button->setEnabled(false);
    QVERIFY(!m_button->hasFocus());
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QTest::keyClick(m_parent.get(), Qt::Key_Return);
    QCOMPARE(spy.size(), 0);
    QCOMPARE(shownColor(), QColor(Qt::gray));
    m_button->setEnabled(true);
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::pressDoesNotAskForEnabled()
{
    m_button->setEnabled(false);
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    auto press = mouseEvent(QEvent::MouseButtonPress, QPoint(5, 5));
    m_button->mousePressEvent(&press);
    QVERIFY(m_button->isPressed());
    auto release = mouseEvent(QEvent::MouseButtonRelease, QPoint(5, 5));
    m_button->mouseReleaseEvent(&release);
    QVERIFY(m_button->isPressed()); // the release does check it
    QCOMPARE(spy.size(), 0);
}

void TestMyImageButton::returnDoesNotAskForEnabled()
{
    m_button->setEnabled(false);
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    m_button->keyPressEvent(&press);
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::spaceClicksAtTheRelease()
{
    m_button->setFocus();
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::keyPress(m_button, Qt::Key_Space);
    QVERIFY(m_button->isPressed());
    QCOMPARE(shownColor(), QColor(Qt::green));
    QCOMPARE(spy.size(), 0);
    QTest::keyRelease(m_button, Qt::Key_Space);
    QVERIFY(!m_button->isPressed());
    QCOMPARE(spy.size(), 1);
    QTest::keyRelease(m_button, Qt::Key_Space); // not pressed any more
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::repeatedSpaceIsNoClick()
{
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QKeyEvent repeatPress(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QString(), true);
    QKeyEvent repeatRelease(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QString(), true);
    m_button->keyPressEvent(&repeatPress);
    QVERIFY(!m_button->isPressed());
    QTest::keyPress(m_button, Qt::Key_Space);
    for (int i = 0; i < 3; ++i) {
        m_button->keyReleaseEvent(&repeatRelease);
        m_button->keyPressEvent(&repeatPress);
    }
    QVERIFY(m_button->isPressed());
    QCOMPARE(spy.size(), 0);
    QTest::keyRelease(m_button, Qt::Key_Space);
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::returnClicksAtThePress_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void TestMyImageButton::returnClicksAtThePress()
{
    QFETCH(Qt::Key, key);
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    QTest::keyPress(m_button, key);
    QCOMPARE(spy.size(), 1);
    QVERIFY(!m_button->isPressed());
    QTest::keyRelease(m_button, key);
    QCOMPARE(spy.size(), 1);
}

void TestMyImageButton::arrowsMoveTheFocus_data()
{
    lumi::test::columns<Qt::Key, int>();
    QTest::newRow("Left goes to the one before") << Qt::Key_Left << 0;
    QTest::newRow("Up goes to the one before") << Qt::Key_Up << 0;
    QTest::newRow("Right goes to the next one") << Qt::Key_Right << 2;
    QTest::newRow("Down goes to the next one") << Qt::Key_Down << 2;
}

void TestMyImageButton::arrowsMoveTheFocus()
{
    const auto [key, target] = lumi::test::row<Qt::Key, int>();
    MyImageButton *buttons[] = {m_button, addButton(), addButton()};
    buttons[1]->show();
    buttons[2]->show();
    const QSignalSpy spy(buttons[1], &MyImageButton::clicked);
    buttons[1]->setFocus();
    QVERIFY(buttons[1]->hasFocus());
    QTest::keyClick(buttons[1], key);
    QVERIFY(buttons[target]->hasFocus());
    QCOMPARE(spy.size(), 0);
}

void TestMyImageButton::otherKeysGoToTheParent()
{
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_A);
    QTest::keyClick(m_button, Qt::Key_Escape);
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(m_parent->keys, (QList<int>{Qt::Key_A, -Qt::Key_A, Qt::Key_Escape, -Qt::Key_Escape}));
}

void TestMyImageButton::losingTheFocusReleases()
{
    const QSignalSpy spy(m_button, &MyImageButton::clicked);
    m_button->setFocus();
    QTest::keyPress(m_button, Qt::Key_Space);
    m_button->clearFocus();
    QVERIFY(!m_button->isPressed());
    QCOMPARE(shownColor(), QColor(Qt::red));
    QTest::keyRelease(m_button, Qt::Key_Space);
    QCOMPARE(spy.size(), 0);
}

void TestMyImageButton::focusPolicyIsTab()
{
    QCOMPARE(m_button->focusPolicy(), Qt::TabFocus);
}

void TestMyImageButton::focusFrame_data()
{
    lumi::test::columns<MyImageButton::FocusPainter, int, QList<QRect>>();
    const int w = kSize.width();
    const int h = kSize.height();
    const QList<QRect> five{{0, 0, w, h},
                            {2, 2, w - 4, h - 2},
                            {4, 4, w - 8, h - 6},
                            {6, 6, w - 12, h - 10},
                            {8, 8, w - 16, h - 14}};
    QTest::newRow("three rectangles, the lower lines nearer")
        << MyImageButton::FocusPainter(lumi::paintThreeRectangles) << 1 << five.first(3);
    QTest::newRow("five rectangles, the lower lines nearer")
        << MyImageButton::FocusPainter(lumi::paintFiveRectangles) << 1 << five;
    QTest::newRow("without a painter one thick rectangle")
        << MyImageButton::FocusPainter(nullptr) << 3 << five.first(1);
}

void TestMyImageButton::focusFrame()
{
    const auto [painter, lineWidth, rectangles]
        = lumi::test::row<MyImageButton::FocusPainter, int, QList<QRect>>();
    delete m_button;
    m_button = addButton(painter);
    m_button->show();
    m_button->setFocus();
    QVERIFY(m_button->hasFocus());

    QImage expected = filled(Qt::red).toImage().convertToFormat(QImage::Format_RGB32);
    for (const QRect &rectangle : rectangles) {
        const QRect shade = rectangle.adjusted(lineWidth, lineWidth, -lineWidth, -lineWidth);
        drawFrame(&expected, shade, 1, qRgb(32, 32, 32));
        drawFrame(&expected, rectangle, lineWidth, qRgb(255, 255, 0));
    }
    const QImage shown = m_button->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(shown, expected);
}

void TestMyImageButton::noFrameWithoutFocus()
{
    m_button->clearFocus();
    const QImage shown = m_button->grab().toImage().convertToFormat(QImage::Format_RGB32);
    QCOMPARE(shown, filled(Qt::red).toImage().convertToFormat(QImage::Format_RGB32));
}

void TestMyImageButton::disabledPictureIsNotGrayed()
{
    m_button->setDisabledPixmap(filled(Qt::magenta));
    m_button->setEnabled(false);
    QCOMPARE(shownColor(), QColor(Qt::magenta));
}

void TestMyImageButton::screenReadersSeeAButton()
{
    m_button->setAccessibleName(QStringLiteral("Large"));
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(m_button);
    QCOMPARE(seen->role(), QAccessible::Button);
    QCOMPARE(seen->text(QAccessible::Name), QStringLiteral("Large"));
    QCOMPARE(seen->rect(), QRect(m_button->mapToGlobal(QPoint()), m_button->size()));
    QVERIFY(seen->state().focusable);
    QVERIFY(!seen->state().pressed && !seen->state().checked && !seen->state().disabled);
    QTest::mousePress(m_button, Qt::LeftButton);
    QVERIFY(seen->state().pressed);
    m_button->setOn(true);
    QVERIFY(seen->state().checked && seen->state().checkable);
    m_button->setEnabled(false);
    QVERIFY(seen->state().disabled);
}

void TestMyImageButton::aReadersPressObeysTheWindow_data()
{
    lumi::test::columns<QString, int>();
    QTest::newRow("a free button") << QString() << 1;
    QTest::newRow("a disabled button") << QStringLiteral("disabled") << 0;
    QTest::newRow("a hidden button") << QStringLiteral("hidden") << 0;
    QTest::newRow("a button below a modal window") << QStringLiteral("blocked") << 0;
    QTest::newRow("a button that was deleted") << QStringLiteral("deleted") << 0;
}

void TestMyImageButton::aReadersPressObeysTheWindow()
{
    const auto [state, clicks] = lumi::test::row<QString, int>();
    int count = 0;
    connect(m_button, &MyImageButton::clicked, this, [&count] {
        ++count;
    });
    QDialog box(m_parent.get());
    box.setModal(true);
    QAccessible::queryAccessibleInterface(m_button)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    QCOMPARE(count, 0);
    if (state == QLatin1String("disabled")) {
        m_button->setEnabled(false);
    } else if (state == QLatin1String("hidden")) {
        m_button->hide();
    } else if (state == QLatin1String("blocked")) {
        box.show();
    } else if (state == QLatin1String("deleted")) {
        delete m_button;
    }
    QCoreApplication::processEvents();
    QCOMPARE(count, clicks);
}

LUMI_TEST(TestMyImageButton)
#include "TestMyImageButton.moc"
