// SPDX-License-Identifier: MIT
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/MyImageCheckBox.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace {

QPixmap filled(Qt::GlobalColor color)
{
    QPixmap pixmap(24, 20);
    pixmap.fill(color);
    return pixmap;
}

} // namespace

class TestMyImageCheckBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureByState_data();
    void pictureByState();
    void hasTheSizeOfItsPicture();
    void takesNoFocus();
    void screenReadersSeeItsRealPlace();
    void everyCornerCanBeTapped_data();
    void everyCornerCanBeTapped();
};

void TestMyImageCheckBox::pictureByState_data()
{
    lumi::test::columns<Qt::CheckState, QColor>();
    QTest::newRow("checked") << Qt::Checked << QColor(Qt::red);
    QTest::newRow("unchecked") << Qt::Unchecked << QColor(Qt::blue);
    QTest::newRow("half checked looks checked") << Qt::PartiallyChecked << QColor(Qt::red);
}

void TestMyImageCheckBox::pictureByState()
{
    const auto [state, color] = lumi::test::row<Qt::CheckState, QColor>();
    MyImageCheckBox box(filled(Qt::red), filled(Qt::blue), nullptr);
    box.setTristate(true);
    box.setCheckState(state);
    const QImage shown = box.grab().toImage();
    QCOMPARE(shown.pixelColor(0, 0), color);
    QCOMPARE(shown.pixelColor(23, 19), color);
}

void TestMyImageCheckBox::hasTheSizeOfItsPicture()
{
    const MyImageCheckBox box(filled(Qt::red), filled(Qt::blue), nullptr);
    QCOMPARE(box.minimumSize(), QSize(24, 20));
    QCOMPARE(box.maximumSize(), QSize(24, 20));
    QCOMPARE(box.sizeHint(), QSize(24, 20));
}

void TestMyImageCheckBox::takesNoFocus()
{
    const MyImageCheckBox box(filled(Qt::red), filled(Qt::blue), nullptr);
    QCOMPARE(box.focusPolicy(), Qt::NoFocus);
}

void TestMyImageCheckBox::screenReadersSeeItsRealPlace()
{
    QWidget window;
    window.resize(100, 100);
    MyImageCheckBox box(filled(Qt::red), filled(Qt::blue), &window);
    box.move(30, 40);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&box);
    QCOMPARE(seen->role(), QAccessible::CheckBox);
    QCOMPARE(seen->rect(), QRect(window.mapToGlobal(QPoint(30, 40)), QSize(24, 20)));
    QVERIFY(seen->state().checkable && !seen->state().checked);
    seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!box.isChecked()); // the screen reader does not wait for it
    QTRY_VERIFY(box.isChecked());
    QVERIFY(seen->state().checked);
}

void TestMyImageCheckBox::everyCornerCanBeTapped_data()
{
    QTest::addColumn<QPoint>("corner");
    QTest::newRow("top left") << QPoint(0, 0);
    QTest::newRow("top right") << QPoint(23, 0);
    QTest::newRow("bottom left") << QPoint(0, 19);
    QTest::newRow("bottom right") << QPoint(23, 19);
}

void TestMyImageCheckBox::everyCornerCanBeTapped()
{
    QFETCH(QPoint, corner);
    MyImageCheckBox box(filled(Qt::red), filled(Qt::blue), nullptr);
    box.show();
    const QSignalSpy spy(&box, &QCheckBox::toggled);
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, corner);
    QVERIFY(box.isChecked());
    QTest::mouseClick(&box, Qt::LeftButton, Qt::NoModifier, corner);
    QVERIFY(!box.isChecked());
    QCOMPARE(spy.size(), 2);
}

LUMI_TEST(TestMyImageCheckBox)
#include "TestMyImageCheckBox.moc"
