// SPDX-License-Identifier: MIT
// Each window as a screen reader describes it.
#include "files/FormFile.h"
#include "import/FormImport.h"
#include "import/importReport.h"
#include "tests/journeys/AccessibleTree.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "views/FPVThumbnailView.h"
#include "widgets/HkAboutDialog.h"
#include "widgets/MyDialogWait.h"
#include "widgets/MyLeftWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>

using namespace lumi::test;

namespace {

constexpr int kPatienceMs = 10000;
constexpr int kPollMs = 20;

/// The modal window on the screen, unless it shows that the program works.
QWidget *readyWindow()
{
    QWidget *window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible()
        || qobject_cast<MyDialogWait *>(window) != nullptr) {
        return nullptr;
    }
    const auto *bar = window->findChild<QProgressBar *>();
    return bar != nullptr && bar->isVisible() ? nullptr : window;
}

/// Calls `open`, which returns when the modal window that it opens is closed. Reads that window
/// with `read` and closes it.
void whileOpen(const std::function<void()> &open, const std::function<void(QWidget *)> &read)
{
    QElapsedTimer clock;
    clock.start();
    bool isRead = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        QWidget *window = readyWindow();
        if (window != nullptr && !isRead) {
            isRead = true;
            read(window);
            window->close();
        } else if (clock.elapsed() > kPatienceMs && QApplication::activeModalWidget() != nullptr) {
            QApplication::activeModalWidget()->close();
        }
    });
    poll.start(kPollMs);
    open();
    QVERIFY(QTest::qWaitFor(
        [&isRead] {
            return isRead && QApplication::activeModalWidget() == nullptr;
        },
        kPatienceMs));
}

/// The elements to be tapped that are smaller than a finger. The pictures of the check boxes and the
/// size of the version dialog are fixed.
QString tooSmall(QWidget *window)
{
    QStringList small = smallTargets(window);
    small.removeIf([window](const QString &line) {
        return line.startsWith(QStringLiteral("CheckBox 'Mark "))
            || qobject_cast<HkAboutDialog *>(window) != nullptr;
    });
    return small.join(QLatin1String("; "));
}

/// The window and everything in it that takes input has a name, and all texts and pictures have enough
/// contrast. wanted: entries separated by "; ". Each must be the beginning of some element's line.
void check(QWidget *window, const char *wanted)
{
    const QAccessibleInterface *root = QAccessible::queryAccessibleInterface(window);
    const bool isMenu = root->role() == QAccessible::PopupMenu; // its title has the name
    QVERIFY2(isMenu || !root->text(QAccessible::Name).isEmpty(), window->metaObject()->className());
    const QStringList lines = inputElements(window);
    const QByteArray all = lines.join(QLatin1String("; ")).toUtf8();
    QVERIFY2(lines.filter(QStringLiteral("''")).isEmpty(), all.constData());
    QCOMPARE(tooSmall(window), QString());
    QCOMPARE(faintElements(window).join(QLatin1String("; ")), QString());
    const QStringList beginnings
        = QString::fromUtf8(wanted).split(QStringLiteral("; "), Qt::SkipEmptyParts);
    for (const QString &beginning : beginnings) {
        const bool isThere
            = std::any_of(lines.begin(), lines.end(), [&beginning](const QString &line) {
                  return line == beginning || line.startsWith(beginning + QLatin1Char(' '));
              });
        QVERIFY2(isThere, QByteArray(beginning.toUtf8() + " is not in " + all).constData());
    }
}

struct WindowRow
{
    const char *name;
    void (FormFile::*open)();
    QAccessible::Role role;
    const char *wanted;
};

constexpr WindowRow kWindows[] = {
    {"full view", &FormFile::menu_disp_DispAll, QAccessible::Dialog,
     "Button 'Larger'; Button 'Smaller'; Button 'Whole photo'; Button 'Previous photo'; "
     "Button 'Next photo'; Graphic 'Photo'"},
    {"slideshow", &FormFile::menu_disp_Slideshow_Execution, QAccessible::Window, ""},
    {"slideshow options", &FormFile::menu_disp_Slideshow_Setting, QAccessible::Dialog,
     "ComboBox 'Transition'; ComboBox 'Order'; ComboBox 'Delay'; ComboBox 'Loop Count'; "
     "Button 'OK'; Button 'Cancel'"},
    {"help", &FormFile::menu_option_Help, QAccessible::Dialog, "StaticText 'Help'; Button 'Close'"},
    {"version", &FormFile::menu_option_Version, QAccessible::Dialog, "Button 'OK'"},
    {"name of a folder", &FormFile::menu_file_NewFolder, QAccessible::Dialog,
     "EditableText 'Enter the folder name:'"},
    {"question", &FormFile::menu_file_Delete, QAccessible::AlertMessage,
     "Button 'Yes'; Button 'No'"},
};

} // namespace

class TestScreenReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_user.reset(); }

    void theTopMenu();
    void theBrowser_data();
    void theBrowser();
    void theInfoPanel();
    void anOpenMenu();
    void theWindowsOfTheBrowser_data();
    void theWindowsOfTheBrowser();
    void theEditor();
    void theImport();
    void theReportOfAnImport();
    void aReaderAloneFindsItsWay();

private:
    std::unique_ptr<Traveller> m_user;
};

/// A folder "trip" with two photos, and a photo with an Exif block.
void TestScreenReader::init()
{
    m_user = std::make_unique<Traveller>();
    ExifBuilder photo;
    photo.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works")
        .photo(ExifBuilder::jpeg(80, 60, 0x4080C0));
    QVERIFY(photo.write(m_user->world.path(QStringLiteral("p.jpg"))));
    m_user->world.makePhotos(2, QStringLiteral("trip"));
    // The contrast of the real pictures is measured, not that of stand-ins.
    m_user->world.machine->resources = QStringLiteral(LUMI_RESOURCES);
    m_user->startProgram();
}

void TestScreenReader::theTopMenu()
{
    QTRY_VERIFY(m_user->window->currentForm()->isVisible());
    check(m_user->window.get(), "MenuItem 'About'; Button 'Import'; Button 'View'");
}

void TestScreenReader::theBrowser_data()
{
    lumi::test::columns<int, QByteArray>();
    const QByteArray same = "MenuItem 'File'; MenuItem 'Edit'; MenuItem 'View'; MenuItem 'About'; "
                            "Button 'Slideshow'; Button 'Top menu'; ComboBox 'Place'; "
                            "Button 'Folder up' disabled; Pane 'Photos'; ScrollBar 'Scroll bar'; ";
    QTest::newRow("large thumbnails")
        << int(MyLeftWidget::ThumbnailLarge)
        << QByteArray(same
                      + "Button 'Large' checked; Button 'Small'; Button 'Info'; "
                        "ListItem 'trip'; ListItem 'p' checkable; CheckBox 'Mark p'");
    QTest::newRow("small thumbnails")
        << int(MyLeftWidget::ThumbnailSmall)
        << QByteArray(same
                      + "Button 'Large'; Button 'Small' checked; Button 'Info'; "
                        "ListItem 'trip'; ListItem 'p' checkable; CheckBox 'Mark p'");
    QTest::newRow("info") << int(MyLeftWidget::Detail)
                          << QByteArray(
                                 same
                                 + "Button 'Large'; Button 'Small'; Button 'Info' checked; "
                                   "ListItem 'trip'; ListItem 'p'; Button 'Photo' disabled; "
                                   "ComboBox 'Group of data' disabled; Button 'Edit' disabled");
}

void TestScreenReader::theBrowser()
{
    const auto [button, wanted] = lumi::test::row<int, QByteArray>();
    m_user->openBrowser();
    m_user->tapColumn(button);
    QVERIFY(m_user->seesThumbnails());
    check(m_user->window.get(), wanted.constData());
}

void TestScreenReader::theInfoPanel()
{
    m_user->openBrowser();
    m_user->tapColumn(MyLeftWidget::Detail);
    QVERIFY(m_user->seesThumbnails());
    m_user->tapItem(QStringLiteral("p.jpg"));
    check(m_user->window.get(),
          "ListItem 'p' selected; Button 'Photo'; ComboBox 'Group of data'; "
          "Button 'Edit'; StaticText 'Photo data'");
    QAccessibleInterface *info = elementNamed(m_user->window.get(), QStringLiteral("Photo data"));
    QVERIFY(info != nullptr);
    QAccessibleTextInterface *text = info->textInterface();
    QVERIFY(text->text(0, text->characterCount()).contains(QLatin1String("Anvil")));
}

void TestScreenReader::anOpenMenu()
{
    m_user->openBrowser();
    QTest::keyClick(m_user->window.get(), Qt::Key_F10);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu != nullptr);
    check(menu, "MenuItem 'New Folder'; MenuItem 'Delete' disabled");
    menu->close();
}

void TestScreenReader::theWindowsOfTheBrowser_data()
{
    QTest::addColumn<int>("row");
    int number = 0;
    for (const WindowRow &row : kWindows) {
        QTest::newRow(row.name) << number++;
    }
}

void TestScreenReader::theWindowsOfTheBrowser()
{
    QFETCH(int, row);
    const WindowRow &tried = kWindows[row];
    m_user->openBrowser();
    QVERIFY(m_user->seesThumbnails());
    m_user->tapItem(QStringLiteral("p.jpg"));
    whileOpen(
        [&] {
            (m_user->browser()->*tried.open)();
        },
        [&](QWidget *window) {
            check(window, tried.wanted);
            QCOMPARE(QAccessible::queryAccessibleInterface(window)->role(), tried.role);
        });
}

void TestScreenReader::theEditor()
{
    m_user->openBrowser();
    QVERIFY(m_user->seesThumbnails());
    m_user->tapItem(QStringLiteral("p.jpg"));
    const char *const pages[]
        = {"EditableText 'Author'; EditableText 'Compilation'",
           ("EditableText 'Owner'; EditableText 'Title'; EditableText 'Related Audio'; "
            "EditableText 'Comment'"),
           "EditableText 'Lat.'; EditableText 'Long.'; EditableText 'Alt.'"};
    const auto read = [&](QWidget *window) {
        check(window,
              "MenuItem 'Edit'; Button 'Cut' disabled; Button 'Copy' disabled; "
              "Button 'Paste'; Client 'Pages'; PageTab 'Basic'; PageTab 'User Data'; "
              "PageTab 'GPS'");
        for (int page = 0; page < 3; ++page) {
            window->findChild<QTabWidget *>()->setCurrentIndex(page);
            check(window, pages[page]);
        }
    };
    whileOpen(
        [this] {
            m_user->browser()->btn_edit_clicked();
        },
        read);
}

void TestScreenReader::theImport()
{
    m_user->world.machine->insertCard(Slot::SD);
    QTRY_VERIFY(m_user->window->currentForm()->isVisible());
    QVERIFY(pressElement(m_user->window.get(), QStringLiteral("Import")));
    QTRY_VERIFY(qobject_cast<FormImport *>(m_user->window->currentForm()) != nullptr);
    QTRY_VERIFY(m_user->window->currentForm()->isVisible());
    check(m_user->window.get(),
          "MenuItem 'About'; Button 'CF Card' disabled; Button 'SD Card'; Button 'Top menu'");
}

void TestScreenReader::theReportOfAnImport()
{
    whileOpen(
        [this] {
            lumi::showReport(m_user->window.get(), QStringLiteral("a.jpg"));
        },
        [](QWidget *window) {
            check(window, "StaticText 'Error Details'; Button 'Close'");
        });
}

/// The user does every step by the Press action of an element, which is found by its name.
void TestScreenReader::aReaderAloneFindsItsWay()
{
    const auto press = [this](const char *name) {
        return pressElement(m_user->window.get(), QString::fromUtf8(name));
    };
    QTRY_VERIFY(m_user->window->currentForm()->isVisible());
    QVERIFY(press("View"));
    QTRY_VERIFY(m_user->browser() != nullptr);
    QVERIFY(m_user->seesPage({QStringLiteral("trip"), QStringLiteral("p.jpg")}));
    QVERIFY(press("trip"));
    QVERIFY(m_user->seesPage({QStringLiteral("a00.jpg"), QStringLiteral("a01.jpg")}));
    QVERIFY(press("Folder up"));
    QVERIFY(m_user->seesPage({QStringLiteral("trip"), QStringLiteral("p.jpg")}));
    QVERIFY(m_user->seesThumbnails());
    QVERIFY(press("Mark p"));
    QTRY_VERIFY(m_user->view()->anyChecked());
    QVERIFY(press("p"));
    QTRY_COMPARE(m_user->status(), QStringLiteral("p"));
    QString shown;
    whileOpen(
        [&press] {
            QVERIFY(press("p"));
        },
        [&shown](QWidget *window) {
            shown = window->windowTitle();
        });
    QCOMPARE(shown, QStringLiteral("p.jpg"));
}

LUMI_TEST(TestScreenReader)
#include "TestScreenReader.moc"
