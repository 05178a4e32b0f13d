// SPDX-License-Identifier: MIT
// When the panel reads a photo and when it releases it.
#include "items/FPVItemJpeg.h"
#include "tests/exif/ui/CallCounter.h"
#include "tests/exif/ui/PanelFixture.h"
#include "tests/support/TestMain.h"
#include "views/FPVPictureView.h"

#include <QApplication>
#include <QTest>

#include <functional>
#include <memory>

using namespace lumi::test;

class TestMyImageWidgetReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_info = std::make_unique<PanelFixture>(); }

    void cleanup() { m_info.reset(); }

    void theBlockIsReadOnce();
    void theSameItemIsNotReadAgain_data();
    void theSameItemIsNotReadAgain();
    void theFileIsReadAgainAfterNoItem();
    void aClosedPhotoIsNotHeldOpen();
    void aHiddenPanelIgnoresItems();
    void hidingReleasesTheItem();
    void theLastItemDuringTheWaitCounts_data();
    void theLastItemDuringTheWaitCounts();
    void aDeletedItemIsReleased();

private:
    std::unique_ptr<PanelFixture> m_info;
};

void TestMyImageWidgetReading::theBlockIsReadOnce()
{
    const CallCounter calls(m_info->item->path());
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(calls.opens(), 1);
    const int reads = calls.reads();
    QVERIFY(reads > 0);
    for (int group = 5; group >= 0; --group) {
        m_info->panel->combo_exifinfo_activated(group);
        QVERIFY(!m_info->lines().isEmpty());
    }
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(calls.reads(), reads);
}

void TestMyImageWidgetReading::theSameItemIsNotReadAgain_data()
{
    QTest::addColumn<QByteArray>("picture");
    QTest::newRow("a photo") << ExifBuilder::jpeg(80, 60, 0x4080C0);
    QTest::newRow("one without a size") << QByteArray("\xFF\xD8rubbish", 9);
}

void TestMyImageWidgetReading::theSameItemIsNotReadAgain()
{
    QFETCH(QByteArray, picture);
    const auto item = m_info->put(describedPhoto().photo(picture), QStringLiteral("p.jpg"));
    m_info->panel->setItem(item.get());
    const QStringList before = m_info->lines();
    QVERIFY(!before.isEmpty());
    const WaitVisitor waits;
    const CallCounter calls(item->path());
    m_info->panel->setItem(item.get());
    QVERIFY(waits.texts.isEmpty());
    QCOMPARE(calls.opens(), 0);
    QCOMPARE(m_info->lines(), before);
    m_info->panel->setItem(nullptr);
    m_info->panel->setItem(item.get());
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(m_info->lines(), before);
}

void TestMyImageWidgetReading::theFileIsReadAgainAfterNoItem()
{
    m_info->panel->setItem(m_info->item.get());
    ExifBuilder changed = describedPhoto();
    changed.ascii(ExifListKind::Ifd0, 0x0110, "A2");
    m_info->folder.put(changed, QStringLiteral("a.jpg"));
    m_info->panel->setItem(nullptr);
    m_info->panel->setItem(m_info->item.get());
    QVERIFY(m_info->lines().contains(QStringLiteral("A2")));
}

void TestMyImageWidgetReading::aClosedPhotoIsNotHeldOpen()
{
    m_info->panel->setItem(m_info->item.get());
    QVERIFY(isHeldOpen(m_info->item->path()));
    m_info->panel->setItem(nullptr);
    QVERIFY(!isHeldOpen(m_info->item->path()));
}

void TestMyImageWidgetReading::aHiddenPanelIgnoresItems()
{
    m_info->panel->hide();
    const CallCounter calls(m_info->item->path());
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(calls.opens(), 0);
    QCOMPARE(m_info->panel->picture()->item(), nullptr);
}

void TestMyImageWidgetReading::hidingReleasesTheItem()
{
    m_info->panel->setItem(m_info->item.get());
    m_info->panel->hide();
    QCOMPARE(m_info->panel->picture()->item(), nullptr);
    QVERIFY(m_info->browser->toPlainText().isEmpty());
    QVERIFY(!m_info->combo->isEnabled());
    m_info->panel->show();
    const CallCounter calls(m_info->item->path());
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(calls.opens(), 1);
}

void TestMyImageWidgetReading::theLastItemDuringTheWaitCounts_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<QString>("shown");
    QTest::newRow("another photo") << 0 << QStringLiteral("b.jpg");
    QTest::newRow("no item") << 1 << QString();
    QTest::newRow("the panel is hidden") << 2 << QString();
    QTest::newRow("the item dies") << 3 << QString();
}

void TestMyImageWidgetReading::theLastItemDuringTheWaitCounts()
{
    QFETCH(int, event);
    QFETCH(QString, shown);
    const auto other = m_info->put(describedPhoto(), QStringLiteral("b.jpg"));
    const QString path = m_info->item->path();
    const std::function<void()> events[] = {
        [this, &other] {
            m_info->panel->setItem(other.get());
        },
        [this] {
            m_info->panel->setItem(nullptr);
        },
        [this] {
            m_info->panel->hide();
        },
        [this] {
            m_info->item.reset();
        },
    };
    WaitVisitor waits;
    waits.visit = events[event];
    const CallCounter calls(path);
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(waits.texts.size(), 1);
    QCOMPARE(calls.opens(), 0);
    const FPVItemImage *item = m_info->panel->picture()->item();
    QCOMPARE(item != nullptr ? item->fileName() : QString(), shown);
    QCOMPARE(m_info->button->isEnabled(), !shown.isEmpty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestMyImageWidgetReading::aDeletedItemIsReleased()
{
    m_info->panel->setItem(m_info->item.get());
    const QString path = m_info->item->path();
    m_info->item.reset();
    QVERIFY(m_info->browser->toPlainText().isEmpty());
    QVERIFY(!m_info->combo->isEnabled() && !m_info->button->isEnabled());
    QVERIFY(m_info->panel->picture()->pixmap().isNull());
    QVERIFY(!isHeldOpen(path));
    // Another item can get the address of the old one.
    m_info->item = std::make_unique<FPVItemJpeg>(path, QString(), false);
    const CallCounter calls(path);
    m_info->panel->setItem(m_info->item.get());
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(m_info->panel->picture()->item(), m_info->item.get());
    // Deleting an item that is no longer shown changes nothing.
    const auto other = m_info->put(describedPhoto(), QStringLiteral("b.jpg"));
    m_info->panel->setItem(other.get());
    m_info->item.reset();
    QCOMPARE(m_info->panel->picture()->item(), other.get());
    QVERIFY(m_info->button->isEnabled());
}

LUMI_TEST(TestMyImageWidgetReading)
#include "TestMyImageWidgetReading.moc"
