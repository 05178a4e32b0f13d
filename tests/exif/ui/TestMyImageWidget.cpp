// SPDX-License-Identifier: MIT
// What the panel shows of a photo, and its keys.
#include "app/common/Settings.h"
#include "exif/ui/MyImageWidget.h"
#include "items/FPVItemFolder.h"
#include "items/FPVItemJpeg.h"
#include "platform/keys/deviceKey.h"
#include "tests/exif/ui/PanelFixture.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "views/FPVPictureView.h"

#include <QFileInfo>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

using namespace lumi::test;

class TestMyImageWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_info = std::make_unique<PanelFixture>(); }

    void cleanup() { m_info.reset(); }

    void hasItsNames();
    void isLaidOut();
    void theFontIsTheStoredOne_data();
    void theFontIsTheStoredOne();
    void aPhotoIsShown();
    void everyGroupIsShown_data();
    void everyGroupIsShown();
    void theGroupStaysForTheNextPhoto();
    void noItem_data();
    void noItem();
    void aPhotoWithoutExif();
    void aPhotoThatCannotBeDecoded();
    void theButtonEmitsItsSignal();
    void theComboShowsItsGroup();
    void keysChangeTheFont_data();
    void keysChangeTheFont();
    void theFontStopsAtBothEnds_data();
    void theFontStopsAtBothEnds();
    void hiddenKeysDoNothing();

private:
    std::unique_ptr<PanelFixture> m_info;
};

void TestMyImageWidget::hasItsNames()
{
    const QMetaObject &meta = MyImageWidget::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.append(meta.method(i).methodSignature());
    }
    QCOMPARE(names, (QList<QByteArray>{"btn_edit_clicked()", "combo_exifinfo_activated(int)"}));
}

void TestMyImageWidget::isLaidOut()
{
    QCOMPARE(m_info->panel->height(), 185);
    QCOMPARE(m_info->panel->minimumHeight(), 185);
    QCOMPARE(m_info->panel->maximumHeight(), 185);
    const QWidget *picture = m_info->panel->picture();
    QCOMPARE(picture->geometry(), QRect(0, 0, 245, 185));
    QCOMPARE(picture->minimumSize(), picture->maximumSize());
    QStringList titles;
    for (int i = 0; i < m_info->combo->count(); ++i) {
        titles.append(m_info->combo->itemText(i));
    }
    QCOMPARE(titles,
             (QStringList{QStringLiteral("Basic"), QStringLiteral("User Data"),
                          QStringLiteral("Details 1"), QStringLiteral("Details 2"),
                          QStringLiteral("Details 3"), QStringLiteral("GPS")}));
    QCOMPARE(m_info->button->text(), QStringLiteral("Edit"));
    QCOMPARE(m_info->combo->x(), 245);
    QCOMPARE(m_info->combo->y(), 0);
    QVERIFY(m_info->combo->height() >= 40 && m_info->button->height() >= 40);
    QCOMPARE(m_info->button->geometry().right(), m_info->panel->width() - 1);
    QCOMPARE(m_info->browser->geometry(),
             QRect(245, m_info->combo->height(), m_info->panel->width() - 245,
                   185 - m_info->combo->height()));
}

void TestMyImageWidget::theFontIsTheStoredOne_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the smallest") << 0 << 12;
    QTest::newRow("the second") << 1 << 16;
    QTest::newRow("the default") << 2 << 20;
    QTest::newRow("the fourth") << 3 << 24;
    QTest::newRow("the largest") << 4 << 36;
    QTest::newRow("a number too large means the default") << 5 << 20;
    QTest::newRow("a number too small means the default") << -1 << 20;
}

void TestMyImageWidget::theFontIsTheStoredOne()
{
    const auto [index, points] = lumi::test::row<int, int>();
    lumi::Settings::setFontSize(index);
    m_info->makePanel();
    QCOMPARE(m_info->browser->font().pointSize(), points);
}

void TestMyImageWidget::aPhotoIsShown()
{
    const WaitVisitor waits;
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(waits.texts, QStringList{QStringLiteral("Working...")});
    QVERIFY(m_info->combo->isEnabled());
    QVERIFY(m_info->button->isEnabled());
    QCOMPARE(m_info->panel->picture()->item(), m_info->item.get());
    QVERIFY(!m_info->panel->picture()->pixmap().isNull());
    const qint64 bytes = QFileInfo(m_info->item->path()).size();
    QCOMPARE(m_info->lines(),
             (QStringList{QStringLiteral("Picture Size"),
                          QStringLiteral("80 x 60"),
                          QStringLiteral("File Size"),
                          QString(QString::number(bytes / 1024) + QStringLiteral("KB")),
                          QStringLiteral("Manufacturer"),
                          QStringLiteral("Anvil <Works> Ltd"),
                          QStringLiteral("Model Name"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Date Taken"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Author"),
                          QStringLiteral("Ann"),
                          QStringLiteral("Compilation"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Color Space"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Compression Mode"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Firmware"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Unique ID"),
                          QStringLiteral("(None)"),
                          QStringLiteral("Exif version"),
                          QStringLiteral("(None)")}));
    // The rule below the photo's own rows, the label in bold.
    QVERIFY(m_info->browser->toHtml().contains(QLatin1String("<hr")));
    QVERIFY(m_info->browser->find(QStringLiteral("Model Name")));
    QVERIFY(m_info->browser->currentFont().bold());
    QVERIFY(m_info->browser->find(QStringLiteral("(None)")));
    QVERIFY(!m_info->browser->currentFont().bold());
}

void TestMyImageWidget::everyGroupIsShown_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<QString>("first");
    QTest::addColumn<int>("rows");
    QTest::newRow("user data") << 1 << QStringLiteral("Owner") << 6;
    QTest::newRow("details 1") << 2 << QStringLiteral("Exposure Time") << 10;
    QTest::newRow("details 2") << 3 << QStringLiteral("Metering Mode") << 10;
    QTest::newRow("details 3") << 4 << QStringLiteral("White Balance") << 9;
    QTest::newRow("position") << 5 << QStringLiteral("GPS") << 6;
}

void TestMyImageWidget::everyGroupIsShown()
{
    QFETCH(int, group);
    m_info->panel->setItem(m_info->item.get());
    m_info->panel->combo_exifinfo_activated(group);
    QTEST(m_info->lines().first(), "first");
    // Each row has two lines. The flash has three.
    QFETCH(int, rows);
    QCOMPARE(m_info->lines().size(), 2 * rows + (group == 3 ? 1 : 0));
    QVERIFY(!m_info->lines().contains(QStringLiteral("Picture Size")));
    QVERIFY(!m_info->browser->toHtml().contains(QLatin1String("<hr")));
    // The altitude has its unit here.
    QCOMPARE(m_info->lines().contains(QStringLiteral("10.50m")), group == 5);
}

void TestMyImageWidget::theGroupStaysForTheNextPhoto()
{
    m_info->panel->setItem(m_info->item.get());
    m_info->combo->setCurrentIndex(5);
    const auto other = m_info->put(describedPhoto(), QStringLiteral("b.jpg"));
    m_info->panel->setItem(other.get());
    QCOMPARE(m_info->lines().first(), QStringLiteral("GPS"));
}

void TestMyImageWidget::noItem_data()
{
    QTest::addColumn<bool>("folder");
    QTest::newRow("null") << false;
    QTest::newRow("a folder") << true;
}

void TestMyImageWidget::noItem()
{
    QFETCH(bool, folder);
    FPVItemFolder item(m_info->folder.path(QString()), QString(), false);
    m_info->panel->setItem(m_info->item.get());
    const WaitVisitor waits;
    m_info->panel->setItem(folder ? &item : nullptr);
    QVERIFY(!m_info->combo->isEnabled());
    QVERIFY(!m_info->button->isEnabled());
    QVERIFY(m_info->browser->toPlainText().isEmpty());
    QCOMPARE(m_info->panel->picture()->item(), nullptr);
    QVERIFY(m_info->panel->picture()->pixmap().isNull());
    QVERIFY(waits.texts.isEmpty());
    m_info->panel->combo_exifinfo_activated(1);
    QVERIFY(m_info->browser->toPlainText().isEmpty());
}

void TestMyImageWidget::aPhotoWithoutExif()
{
    FPVItemJpeg item(m_info->folder.put(ExifBuilder::jpeg(40, 30, 0), QStringLiteral("n.jpg")),
                     QString(), false);
    m_info->panel->setItem(&item);
    QVERIFY(m_info->combo->isEnabled());
    QVERIFY(!m_info->button->isEnabled());
    QCOMPARE(m_info->lines(),
             (QStringList{QStringLiteral("Picture Size"), QStringLiteral("40 x 30"),
                          QStringLiteral("File Size"), QStringLiteral("0KB"),
                          QStringLiteral("No Exif Data")}));
    QVERIFY(m_info->browser->toHtml().contains(QLatin1String("<hr")));
    for (int group = 1; group < 6; ++group) {
        m_info->panel->combo_exifinfo_activated(group);
        QCOMPARE(m_info->lines(), QStringList{QStringLiteral("No Exif Data")});
    }
}

void TestMyImageWidget::aPhotoThatCannotBeDecoded()
{
    const auto item = m_info->put(describedPhoto().photo(QByteArray("\xFF\xD8rubbish", 9)),
                                  QStringLiteral("r.jpg"));
    m_info->panel->setItem(item.get());
    QCOMPARE(m_info->panel->picture()->item(), nullptr);
    QVERIFY(m_info->button->isEnabled());
    QCOMPARE(m_info->lines().first(), QStringLiteral("Manufacturer"));
}

void TestMyImageWidget::theButtonEmitsItsSignal()
{
    const QSignalSpy told(m_info->panel, &MyImageWidget::btn_edit_clicked);
    m_info->panel->setItem(m_info->item.get());
    QTest::mouseClick(m_info->button, Qt::LeftButton);
    QCOMPARE(told.size(), 1);
}

void TestMyImageWidget::theComboShowsItsGroup()
{
    m_info->panel->setItem(m_info->item.get());
    m_info->combo->setFocus();
    QTest::keyClick(m_info->combo, Qt::Key_Down);
    QCOMPARE(m_info->lines().first(), QStringLiteral("Owner"));
}

void TestMyImageWidget::keysChangeTheFont_data()
{
    lumi::test::columns<int, bool, int, int>();
    QTest::newRow("the device's larger key") << kKeyZoomIn << true << 3 << 24;
    QTest::newRow("the device's smaller key") << kKeyZoomOut << true << 1 << 16;
    QTest::newRow("a keyboard's zoom keys") << int(Qt::Key_ZoomIn) << true << 3 << 24;
    QTest::newRow("plus on a keyboard") << int(Qt::Key_Plus) << true << 3 << 24;
    QTest::newRow("minus on a keyboard") << int(Qt::Key_Minus) << true << 1 << 16;
    QTest::newRow("from the combo") << int(Qt::Key_Plus) << false << 3 << 24;
    QTest::newRow("any other key") << int(Qt::Key_F5) << true << 2 << 20;
}

void TestMyImageWidget::keysChangeTheFont()
{
    const auto [key, inBrowser, index, points] = lumi::test::row<int, bool, int, int>();
    m_info->panel->setItem(m_info->item.get());
    const QStringList before = m_info->lines();
    QWidget *target = inBrowser ? static_cast<QWidget *>(m_info->browser) : m_info->combo;
    target->setFocus();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
    // The panel does not consume keys.
    QVERIFY(!event.isAccepted());
    QCOMPARE(m_info->browser->font().pointSize(), points);
    QCOMPARE(lumi::Settings::fontSize(), index);
    QCOMPARE(m_info->lines(), before);
    QVERIFY(m_info->browser->find(QStringLiteral("Model Name")));
    QCOMPARE(m_info->browser->currentFont().pointSize(), points);
}

void TestMyImageWidget::theFontStopsAtBothEnds_data()
{
    lumi::test::columns<int, int, int>();
    QTest::newRow("the smallest") << 0 << kKeyZoomOut << 12;
    QTest::newRow("the largest") << 4 << kKeyZoomIn << 36;
}

void TestMyImageWidget::theFontStopsAtBothEnds()
{
    const auto [index, key, points] = lumi::test::row<int, int, int>();
    lumi::Settings::setFontSize(index);
    m_info->makePanel();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(m_info->panel, &event);
    QCOMPARE(m_info->browser->font().pointSize(), points);
    QCOMPARE(lumi::Settings::fontSize(), index);
}

void TestMyImageWidget::hiddenKeysDoNothing()
{
    m_info->panel->hide();
    QKeyEvent event(QEvent::KeyPress, kKeyZoomIn, Qt::NoModifier);
    QCoreApplication::sendEvent(m_info->panel, &event);
    QCOMPARE(lumi::Settings::fontSize(), 2);
    QCOMPARE(m_info->browser->font().pointSize(), 20);
    QVERIFY(!event.isAccepted());
}

LUMI_TEST(TestMyImageWidget)
#include "TestMyImageWidget.moc"
