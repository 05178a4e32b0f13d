// SPDX-License-Identifier: MIT
#include "app/common/Settings.h"
#include "exif/ui/MyImageWidget.h"
#include "items/FPVItemFolder.h"
#include "items/FPVItemJpeg.h"
#include "platform/deviceKey.h"
#include "tests/exif/PhotoFolder.h"
#include "tests/exif/ui/CallCounter.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/TestMain.h"
#include "views/FPVPictureView.h"
#include "widgets/MyDialogWait.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <memory>

using namespace lumi::test;

namespace {

/// Does something while a wait dialog comes up, and counts wait dialogs.
class WaitVisitor : public QObject
{
public:
    WaitVisitor() { qApp->installEventFilter(this); }

    std::function<void()> visit = [] {};
    QStringList texts;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<MyDialogWait *>(watched);
        if (event->type() == QEvent::Show && dialog != nullptr) {
            texts.append(dialog->findChild<QLabel *>()->text());
            visit();
        }
        return QObject::eventFilter(watched, event);
    }
};

ExifBuilder photo()
{
    using enum ExifListKind;
    ExifBuilder builder;
    builder.photo(ExifBuilder::jpeg(80, 60, 0x4080C0))
        .ascii(Ifd0, 0x010F, "Anvil <Works> Ltd")
        .ascii(Ifd0, 0x8298, "Ann")
        .shorts(Exif, 0x9209, {0x19})
        .value(Gps, 0x0005, 1, 1, QByteArray(1, '\0'))
        .rationals(Gps, 0x0006, {{1050, 100}});
    return builder;
}

/// Whether this process holds the file open.
bool isOpen(const QString &path)
{
    const QDir files(QStringLiteral("/proc/self/fd"));
    const auto names = files.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
    return std::any_of(names.begin(), names.end(), [&files, &path](const QString &name) {
        return QFile::symLinkTarget(files.filePath(name)) == path;
    });
}

} // namespace

class TestMyImageWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void hasItsNames();
    void isLaidOut();
    void theFontIsTheStoredOne_data();
    void theFontIsTheStoredOne();
    void aPhotoIsShown();
    void everyGroupIsShown_data();
    void everyGroupIsShown();
    void aValueMayTakeManyLines();
    void bracketsOfAValueAreShown();
    void theGroupStaysForTheNextPhoto();
    void noItem_data();
    void noItem();
    void aPhotoWithoutExif();
    void aPhotoThatCannotBeDecoded();
    void theBlockIsReadOnce();
    void theSameItemAgainIsNothing_data();
    void theSameItemAgainIsNothing();
    void afterNoItemTheFileIsReadAnew();
    void aClosedPhotoIsNotHeldOpen();
    void hiddenItTakesNothing();
    void hidingForgetsTheItem();
    void theLastItemDuringTheWaitCounts_data();
    void theLastItemDuringTheWaitCounts();
    void aDeadItemIsNone();
    void theButtonTells();
    void theComboLeadsToItsGroup();
    void keysChangeTheFont_data();
    void keysChangeTheFont();
    void theFontStopsAtBothEnds_data();
    void theFontStopsAtBothEnds();
    void hiddenKeysDoNothing();

private:
    std::unique_ptr<FPVItemJpeg> put(const ExifBuilder &builder, const QString &name)
    {
        return std::make_unique<FPVItemJpeg>(m_folder->put(builder, name), QString(), false);
    }

    /// Makes a panel that reads the settings anew.
    void makePanel();
    [[nodiscard]] QStringList lines() const;

    std::unique_ptr<PhotoFolder> m_folder;
    std::unique_ptr<QWidget> m_window;
    MyImageWidget *m_panel = nullptr;
    QComboBox *m_combo = nullptr;
    QPushButton *m_button = nullptr;
    QTextBrowser *m_browser = nullptr;
    std::unique_ptr<FPVItemJpeg> m_item;
};

void TestMyImageWidget::init()
{
    FakeMachine::install();
    lumi::Settings::setFontSize(2);
    m_folder = std::make_unique<PhotoFolder>();
    m_item = put(photo(), QStringLiteral("a.jpg"));
    makePanel();
}

void TestMyImageWidget::cleanup()
{
    m_window.reset();
    m_item.reset();
    Machine::install(nullptr);
}

void TestMyImageWidget::makePanel()
{
    m_window = std::make_unique<QWidget>();
    m_window->resize(548, 300);
    m_panel = new MyImageWidget(m_window.get());
    auto *column = new QVBoxLayout(m_window.get());
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_panel);
    column->addStretch();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_combo = m_panel->findChild<QComboBox *>();
    m_button = m_panel->findChild<QPushButton *>();
    m_browser = m_panel->findChild<QTextBrowser *>();
}

/// Of the browser's text, without empty ones; blanks that don't break are plain ones.
QStringList TestMyImageWidget::lines() const
{
    QStringList result;
    const auto all = m_browser->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : all) {
        result.append(line.trimmed());
    }
    result.removeAll(QString());
    return result;
}

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
    QCOMPARE(m_panel->height(), 185);
    QCOMPARE(m_panel->minimumHeight(), 185);
    QCOMPARE(m_panel->maximumHeight(), 185);
    const QWidget *picture = m_panel->picture();
    QCOMPARE(picture->geometry(), QRect(0, 0, 245, 185));
    QCOMPARE(picture->minimumSize(), picture->maximumSize());
    QStringList titles;
    for (int i = 0; i < m_combo->count(); ++i) {
        titles.append(m_combo->itemText(i));
    }
    QCOMPARE(titles,
             (QStringList{QStringLiteral("Basic"), QStringLiteral("User Data"),
                          QStringLiteral("Details 1"), QStringLiteral("Details 2"),
                          QStringLiteral("Details 3"), QStringLiteral("GPS")}));
    QCOMPARE(m_button->text(), QStringLiteral("Edit"));
    QCOMPARE(m_combo->x(), 245);
    QCOMPARE(m_combo->y(), 0);
    QVERIFY(m_combo->height() >= 40 && m_button->height() >= 40);
    QCOMPARE(m_button->geometry().right(), m_panel->width() - 1);
    QCOMPARE(m_browser->geometry(),
             QRect(245, m_combo->height(), m_panel->width() - 245, 185 - m_combo->height()));
}

void TestMyImageWidget::theFontIsTheStoredOne_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("points");
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
    QFETCH(int, index);
    lumi::Settings::setFontSize(index);
    makePanel();
    QTEST(m_browser->font().pointSize(), "points");
}

void TestMyImageWidget::aPhotoIsShown()
{
    const WaitVisitor waits;
    m_panel->setItem(m_item.get());
    QCOMPARE(waits.texts, QStringList{QStringLiteral("Working...")});
    QVERIFY(m_combo->isEnabled());
    QVERIFY(m_button->isEnabled());
    QCOMPARE(m_panel->picture()->item(), m_item.get());
    QVERIFY(!m_panel->picture()->pixmap(Qt::ReturnByValue).isNull());
    const qint64 bytes = QFileInfo(m_item->path()).size();
    QCOMPARE(lines(), (QStringList{QStringLiteral("Picture Size"),
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
    QVERIFY(m_browser->toHtml().contains(QLatin1String("<hr")));
    QVERIFY(m_browser->find(QStringLiteral("Model Name")));
    QVERIFY(m_browser->currentFont().bold());
    QVERIFY(m_browser->find(QStringLiteral("(None)")));
    QVERIFY(!m_browser->currentFont().bold());
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
    m_panel->setItem(m_item.get());
    m_panel->combo_exifinfo_activated(group);
    QTEST(lines().first(), "first");
    // Two lines a row; the flash has a second one.
    QFETCH(int, rows);
    QCOMPARE(lines().size(), 2 * rows + (group == 3 ? 1 : 0));
    QVERIFY(!lines().contains(QStringLiteral("Picture Size")));
    QVERIFY(!m_browser->toHtml().contains(QLatin1String("<hr")));
    // The height has its unit here.
    QCOMPARE(lines().contains(QStringLiteral("10.50m")), group == 5);
}

void TestMyImageWidget::aValueMayTakeManyLines()
{
    m_panel->setItem(m_item.get());
    m_panel->combo_exifinfo_activated(3);
    const int at = int(lines().indexOf(QStringLiteral("Flash")));
    QCOMPARE(lines().mid(at, 3),
             (QStringList{QStringLiteral("Flash"), QStringLiteral("Flash"),
                          QStringLiteral("Auto flash")}));
}

void TestMyImageWidget::bracketsOfAValueAreShown()
{
    ExifBuilder builder;
    builder.ascii(ExifListKind::Ifd0, 0x010F, "<b>x</b> &lt;y&amp;");
    const auto item = put(builder, QStringLiteral("b.jpg"));
    m_panel->setItem(item.get());
    // An entity in a file is an entity here.
    QVERIFY(lines().contains(QStringLiteral("<b>x</b> <y&")));
}

void TestMyImageWidget::theGroupStaysForTheNextPhoto()
{
    m_panel->setItem(m_item.get());
    m_combo->setCurrentIndex(5);
    const auto other = put(photo(), QStringLiteral("b.jpg"));
    m_panel->setItem(other.get());
    QCOMPARE(lines().first(), QStringLiteral("GPS"));
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
    FPVItemFolder item(m_folder->path(QString()), QString(), false);
    m_panel->setItem(m_item.get());
    const WaitVisitor waits;
    m_panel->setItem(folder ? &item : nullptr);
    QVERIFY(!m_combo->isEnabled());
    QVERIFY(!m_button->isEnabled());
    QVERIFY(m_browser->toPlainText().isEmpty());
    QCOMPARE(m_panel->picture()->item(), nullptr);
    QVERIFY(m_panel->picture()->pixmap(Qt::ReturnByValue).isNull());
    QVERIFY(waits.texts.isEmpty());
    m_panel->combo_exifinfo_activated(1);
    QVERIFY(m_browser->toPlainText().isEmpty());
}

void TestMyImageWidget::aPhotoWithoutExif()
{
    FPVItemJpeg item(m_folder->put(ExifBuilder::jpeg(40, 30, 0), QStringLiteral("n.jpg")),
                     QString(), false);
    m_panel->setItem(&item);
    QVERIFY(m_combo->isEnabled());
    QVERIFY(!m_button->isEnabled());
    QCOMPARE(lines(),
             (QStringList{QStringLiteral("Picture Size"), QStringLiteral("40 x 30"),
                          QStringLiteral("File Size"), QStringLiteral("0KB"),
                          QStringLiteral("No Exif Data")}));
    QVERIFY(m_browser->toHtml().contains(QLatin1String("<hr")));
    for (int group = 1; group < 6; ++group) {
        m_panel->combo_exifinfo_activated(group);
        QCOMPARE(lines(), QStringList{QStringLiteral("No Exif Data")});
    }
}

void TestMyImageWidget::aPhotoThatCannotBeDecoded()
{
    const auto item = put(photo().photo(QByteArray("\xFF\xD8rubbish", 9)), QStringLiteral("r.jpg"));
    m_panel->setItem(item.get());
    QCOMPARE(m_panel->picture()->item(), nullptr);
    QVERIFY(m_button->isEnabled());
    QCOMPARE(lines().first(), QStringLiteral("Manufacturer"));
}

void TestMyImageWidget::theBlockIsReadOnce()
{
    const CallCounter calls(m_item->path());
    m_panel->setItem(m_item.get());
    QCOMPARE(calls.opens(), 1);
    const int reads = calls.reads();
    QVERIFY(reads > 0);
    for (int group = 5; group >= 0; --group) {
        m_panel->combo_exifinfo_activated(group);
        QVERIFY(!lines().isEmpty());
    }
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(calls.reads(), reads);
}

void TestMyImageWidget::theSameItemAgainIsNothing_data()
{
    QTest::addColumn<QByteArray>("picture");
    QTest::newRow("a photo") << ExifBuilder::jpeg(80, 60, 0x4080C0);
    QTest::newRow("one without a size") << QByteArray("\xFF\xD8rubbish", 9);
}

void TestMyImageWidget::theSameItemAgainIsNothing()
{
    QFETCH(QByteArray, picture);
    const auto item = put(photo().photo(picture), QStringLiteral("p.jpg"));
    m_panel->setItem(item.get());
    const QStringList before = lines();
    QVERIFY(!before.isEmpty());
    const WaitVisitor waits;
    const CallCounter calls(item->path());
    m_panel->setItem(item.get());
    QVERIFY(waits.texts.isEmpty());
    QCOMPARE(calls.opens(), 0);
    QCOMPARE(lines(), before);
    m_panel->setItem(nullptr);
    m_panel->setItem(item.get());
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(lines(), before);
}

void TestMyImageWidget::afterNoItemTheFileIsReadAnew()
{
    m_panel->setItem(m_item.get());
    ExifBuilder changed = photo();
    changed.ascii(ExifListKind::Ifd0, 0x0110, "A2");
    m_folder->put(changed, QStringLiteral("a.jpg"));
    m_panel->setItem(nullptr);
    m_panel->setItem(m_item.get());
    QVERIFY(lines().contains(QStringLiteral("A2")));
}

void TestMyImageWidget::aClosedPhotoIsNotHeldOpen()
{
    m_panel->setItem(m_item.get());
    QVERIFY(isOpen(m_item->path()));
    m_panel->setItem(nullptr);
    QVERIFY(!isOpen(m_item->path()));
}

void TestMyImageWidget::hiddenItTakesNothing()
{
    m_panel->hide();
    const CallCounter calls(m_item->path());
    m_panel->setItem(m_item.get());
    QCOMPARE(calls.opens(), 0);
    QCOMPARE(m_panel->picture()->item(), nullptr);
}

void TestMyImageWidget::hidingForgetsTheItem()
{
    m_panel->setItem(m_item.get());
    m_panel->hide();
    QCOMPARE(m_panel->picture()->item(), nullptr);
    QVERIFY(m_browser->toPlainText().isEmpty());
    QVERIFY(!m_combo->isEnabled());
    m_panel->show();
    const CallCounter calls(m_item->path());
    m_panel->setItem(m_item.get());
    QCOMPARE(calls.opens(), 1);
}

void TestMyImageWidget::theLastItemDuringTheWaitCounts_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<QString>("shown");
    QTest::newRow("another photo") << 0 << QStringLiteral("b.jpg");
    QTest::newRow("no item") << 1 << QString();
    QTest::newRow("the panel is hidden") << 2 << QString();
    QTest::newRow("the item dies") << 3 << QString();
}

void TestMyImageWidget::theLastItemDuringTheWaitCounts()
{
    QFETCH(int, event);
    QFETCH(QString, shown);
    const auto other = put(photo(), QStringLiteral("b.jpg"));
    const QString path = m_item->path();
    const std::function<void()> events[] = {
        [this, &other] {
            m_panel->setItem(other.get());
        },
        [this] {
            m_panel->setItem(nullptr);
        },
        [this] {
            m_panel->hide();
        },
        [this] {
            m_item.reset();
        },
    };
    WaitVisitor waits;
    waits.visit = events[event];
    const CallCounter calls(path);
    m_panel->setItem(m_item.get());
    QCOMPARE(waits.texts.size(), 1);
    QCOMPARE(calls.opens(), 0);
    const FPVItemImage *item = m_panel->picture()->item();
    QCOMPARE(item != nullptr ? item->fileName() : QString(), shown);
    QCOMPARE(m_button->isEnabled(), !shown.isEmpty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void TestMyImageWidget::aDeadItemIsNone()
{
    m_panel->setItem(m_item.get());
    const QString path = m_item->path();
    m_item.reset();
    QVERIFY(m_browser->toPlainText().isEmpty());
    QVERIFY(!m_combo->isEnabled() && !m_button->isEnabled());
    QVERIFY(m_panel->picture()->pixmap(Qt::ReturnByValue).isNull());
    QVERIFY(!isOpen(path));
    // Another item may well get the address of the old one.
    m_item = std::make_unique<FPVItemJpeg>(path, QString(), false);
    const CallCounter calls(path);
    m_panel->setItem(m_item.get());
    QCOMPARE(calls.opens(), 1);
    QCOMPARE(m_panel->picture()->item(), m_item.get());
    // One that was shown before may die unnoticed.
    const auto other = put(photo(), QStringLiteral("b.jpg"));
    m_panel->setItem(other.get());
    m_item.reset();
    QCOMPARE(m_panel->picture()->item(), other.get());
    QVERIFY(m_button->isEnabled());
}

void TestMyImageWidget::theButtonTells()
{
    const QSignalSpy told(m_panel, &MyImageWidget::btn_edit_clicked);
    m_panel->setItem(m_item.get());
    QTest::mouseClick(m_button, Qt::LeftButton);
    QCOMPARE(told.size(), 1);
}

void TestMyImageWidget::theComboLeadsToItsGroup()
{
    m_panel->setItem(m_item.get());
    m_combo->setFocus();
    QTest::keyClick(m_combo, Qt::Key_Down);
    QCOMPARE(lines().first(), QStringLiteral("Owner"));
}

void TestMyImageWidget::keysChangeTheFont_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("inBrowser");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("points");
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
    QFETCH(int, key);
    QFETCH(bool, inBrowser);
    QFETCH(int, index);
    m_panel->setItem(m_item.get());
    const QStringList before = lines();
    QWidget *target = inBrowser ? static_cast<QWidget *>(m_browser) : m_combo;
    target->setFocus();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
    // The panel passes every key on.
    QVERIFY(!event.isAccepted());
    QTEST(m_browser->font().pointSize(), "points");
    QCOMPARE(lumi::Settings::fontSize(), index);
    QCOMPARE(lines(), before);
    QVERIFY(m_browser->find(QStringLiteral("Model Name")));
    QTEST(m_browser->currentFont().pointSize(), "points");
}

void TestMyImageWidget::theFontStopsAtBothEnds_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("points");
    QTest::newRow("the smallest") << 0 << kKeyZoomOut << 12;
    QTest::newRow("the largest") << 4 << kKeyZoomIn << 36;
}

void TestMyImageWidget::theFontStopsAtBothEnds()
{
    QFETCH(int, index);
    QFETCH(int, key);
    lumi::Settings::setFontSize(index);
    makePanel();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(m_panel, &event);
    QTEST(m_browser->font().pointSize(), "points");
    QCOMPARE(lumi::Settings::fontSize(), index);
}

void TestMyImageWidget::hiddenKeysDoNothing()
{
    m_panel->hide();
    QKeyEvent event(QEvent::KeyPress, kKeyZoomIn, Qt::NoModifier);
    QCoreApplication::sendEvent(m_panel, &event);
    QCOMPARE(lumi::Settings::fontSize(), 2);
    QCOMPARE(m_browser->font().pointSize(), 20);
    QVERIFY(!event.isAccepted());
}

LUMI_TEST(TestMyImageWidget)
#include "TestMyImageWidget.moc"
