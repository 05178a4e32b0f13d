// SPDX-License-Identifier: MIT
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

struct Row
{
    int index = 0;
    QPoint position;
    const char *pictures[4] = {}; // normal, pressed, on, on and pressed
    void (MyLeftWidget::*slot)() = nullptr;
};

constexpr Row kRows[] = {
    {0,
     {7, 10},
     {"look_a", "look_a_push", "look_a_on", "look_a_push_on"},
     &MyLeftWidget::btn_thumbnailLarge_clicked},
    {1,
     {7, 75},
     {"look_b", "look_b_push", "look_b_on", "look_b_push_on"},
     &MyLeftWidget::btn_thumbnailSmall_clicked},
    {2,
     {7, 140},
     {"look_c", "look_c_push", "look_c_on", "look_c_push_on"},
     &MyLeftWidget::btn_detail_clicked},
    {3,
     {7, 205},
     {"look_d", "look_d_push", "look_d", "look_d_push"},
     &MyLeftWidget::btn_slideshow_clicked},
    {4,
     {7, 307},
     {"goto_top", "goto_top_push", "goto_top", "goto_top_push"},
     &MyLeftWidget::btn_top_clicked},
};

constexpr QSize kButtonSize(58, 58);
constexpr QSize kColumnSize(72, 400);

/// Each picture name has a colour of its own.
QColor colorOf(const char *name)
{
    const auto hash = qHash(QByteArray(name), 1);
    return QColor::fromRgb(static_cast<QRgb>(hash & 0xFFFFFF));
}

} // namespace

class TestMyLeftWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void sizeIsFixed();
    void backgroundIsPainted();
    void buttonsStandInTheirPlaces();
    void picturesByState();
    void clickSendsTheIndex();
    void slotSendsTheIndex();
    void operationsReachOneOrAll_data();
    void operationsReachOneOrAll();
    void unknownIndexDoesNothing();
    void focusFrameIsTheSmallOne();
    void picturesAreLoadedOnce();
    void hiddenButtonsNeedNoPictures();

private:
    QColor colorAt(int index) const;

    std::unique_ptr<MyLeftWidget> m_column;
    lumi::test::FakeMachine *m_machine = nullptr;
};

void TestMyLeftWidget::initTestCase()
{
    m_machine = lumi::test::FakeMachine::install();
    const QDir folder(m_machine->folder.path());
    m_machine->resources = folder.path();
    QVERIFY(folder.mkpath(QStringLiteral("pixmaps/lumivault")));
    const auto save = [&folder](const char *name, const QSize &size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colorOf(name));
        return image.save(
            folder.filePath(QStringLiteral("pixmaps/lumivault/%1.png").arg(QLatin1String(name))));
    };
    QVERIFY(save("bg_left", kColumnSize * 2));
    for (const Row &row : kRows) {
        for (const char *name : row.pictures) {
            QVERIFY(save(name, kButtonSize));
        }
    }
}

void TestMyLeftWidget::cleanupTestCase()
{
    Machine::install(nullptr);
}

void TestMyLeftWidget::init()
{
    m_column = std::make_unique<MyLeftWidget>(nullptr);
    m_column->show();
}

void TestMyLeftWidget::cleanup()
{
    m_column.reset();
}

QColor TestMyLeftWidget::colorAt(int index) const
{
    return m_column->button(index)->grab().toImage().pixelColor(29, 29);
}

void TestMyLeftWidget::sizeIsFixed()
{
    QCOMPARE(m_column->minimumSize(), kColumnSize);
    QCOMPARE(m_column->maximumSize(), kColumnSize);
}

void TestMyLeftWidget::backgroundIsPainted()
{
    const QImage shown = m_column->grab().toImage();
    QCOMPARE(shown.pixelColor(0, 0), colorOf("bg_left"));
    QCOMPARE(shown.pixelColor(71, 399), colorOf("bg_left"));
}

void TestMyLeftWidget::buttonsStandInTheirPlaces()
{
    for (const Row &row : kRows) {
        QCOMPARE(m_column->button(row.index)->geometry(), QRect(row.position, kButtonSize));
    }
}

void TestMyLeftWidget::picturesByState()
{
    for (const Row &row : kRows) {
        MyImageButton *button = m_column->button(row.index);
        QCOMPARE(colorAt(row.index), colorOf(row.pictures[0]));
        QTest::mousePress(button, Qt::LeftButton);
        QCOMPARE(colorAt(row.index), colorOf(row.pictures[1]));
        button->setOn(true);
        QCOMPARE(colorAt(row.index), colorOf(row.pictures[3]));
        QTest::mouseRelease(button, Qt::LeftButton);
        QCOMPARE(colorAt(row.index), colorOf(row.pictures[2]));
    }
}

void TestMyLeftWidget::clickSendsTheIndex()
{
    for (const Row &row : kRows) {
        const QSignalSpy spy(m_column.get(), &MyLeftWidget::btn_clicked);
        QTest::mouseClick(m_column->button(row.index), Qt::LeftButton);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().first().toInt(), row.index);
    }
}

void TestMyLeftWidget::slotSendsTheIndex()
{
    for (const Row &row : kRows) {
        const QSignalSpy spy(m_column.get(), &MyLeftWidget::btn_clicked);
        (m_column.get()->*row.slot)();
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.first().first().toInt(), row.index);
    }
}

void TestMyLeftWidget::operationsReachOneOrAll_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("one button") << 2;
    QTest::newRow("the first button") << 0;
    QTest::newRow("the last button") << 4;
    QTest::newRow("all buttons") << 5;
}

void TestMyLeftWidget::operationsReachOneOrAll()
{
    QFETCH(int, index);
    const auto meant = [index](int i) {
        return index == 5 || index == i;
    };
    m_column->hideButton(index);
    m_column->setButtonOn(index, true);
    m_column->setButtonEnabled(index, false);
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(m_column->button(i)->isHidden(), meant(i));
        QCOMPARE(m_column->button(i)->isOn(), meant(i));
        QCOMPARE(m_column->button(i)->isEnabled(), !meant(i));
    }
    m_column->showButton(index);
    m_column->setButtonOn(index, false);
    m_column->setButtonEnabled(index, true);
    for (int i = 0; i < 5; ++i) {
        QVERIFY(m_column->button(i)->isVisible());
        QVERIFY(!m_column->button(i)->isOn());
        QVERIFY(m_column->button(i)->isEnabled());
    }
}

void TestMyLeftWidget::unknownIndexDoesNothing()
{
    for (const int index : {-1, 6, 1000}) {
        m_column->hideButton(index);
        m_column->setButtonOn(index, true);
        m_column->setButtonEnabled(index, false);
        QCOMPARE(m_column->button(index), nullptr);
    }
    QCOMPARE(m_column->button(5), nullptr);
    for (int i = 0; i < 5; ++i) {
        QVERIFY(!m_column->button(i)->isHidden());
        QVERIFY(!m_column->button(i)->isOn());
        QVERIFY(m_column->button(i)->isEnabled());
    }
}

void TestMyLeftWidget::focusFrameIsTheSmallOne()
{
    m_column->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_column.get()));
    m_column->button(0)->setFocus();
    const QImage shown = m_column->button(0)->grab().toImage();
    const QColor yellow(255, 255, 0);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(shown.pixelColor(i, 29) == yellow, i == 0 || i == 2 || i == 4);
    }
}

void TestMyLeftWidget::picturesAreLoadedOnce()
{
    m_machine->resources = QStringLiteral("/nowhere");
    MyLeftWidget second(nullptr);
    second.show();
    QCOMPARE(second.minimumSize(), kColumnSize);
    QCOMPARE(second.button(0)->size(), kButtonSize);
    QCOMPARE(second.button(0)->pixmap().cacheKey(), m_column->button(0)->pixmap().cacheKey());
    m_machine->resources = m_machine->folder.path();
}

void TestMyLeftWidget::hiddenButtonsNeedNoPictures()
{
    MyLeftWidget second(nullptr);
    second.hideButton(MyLeftWidget::AllButtons);
    second.show();
    QVERIFY(second.button(0)->pixmap().isNull());
    second.showButton(0);
    QCOMPARE(second.button(0)->size(), kButtonSize);
    QCOMPARE(second.button(0)->pixmap().cacheKey(), m_column->button(0)->pixmap().cacheKey());
}

LUMI_TEST(TestMyLeftWidget)
#include "TestMyLeftWidget.moc"
