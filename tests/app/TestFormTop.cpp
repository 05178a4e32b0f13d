// SPDX-License-Identifier: MIT
#include "app/FormTop.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEMenuBar.h"
#include "platform/windows/QPEToolBar.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/support/FakeMachine.h"
#include "tests/support/RequestLog.h"
#include "tests/support/TestMain.h"
#include "tests/support/rows.h"
#include "widgets/HkAboutDialog.h"
#include "widgets/MyDialogWait.h"
#include "widgets/MyImageButton.h"
#include "widgets/MyLeftWidget.h"

#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>

#include <functional>
#include <memory>

namespace {

constexpr QSize kButtonSize(236, 236);
constexpr QSize kColumnSize(72, 430);

/// Records the wait dialogs that appear, and the contents of the swap folder at that moment.
class WaitRecorder : public QObject
{
public:
    explicit WaitRecorder(std::function<bool()> look)
        : m_look(std::move(look))
    {
        qApp->installEventFilter(this);
    }

    QStringList texts;
    QList<QWidget *> parents;
    QList<bool> looks;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog = qobject_cast<MyDialogWait *>(watched);
        if (event->type() == QEvent::Show && dialog != nullptr) {
            texts.append(dialog->findChild<QLabel *>()->text());
            parents.append(dialog->parentWidget());
            looks.append(m_look());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<bool()> m_look;
};

void savePicture(const QDir &folder, const char *name, const QSize &size, Qt::GlobalColor color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    QVERIFY(image.save(
        folder.filePath(QStringLiteral("pixmaps/lumivault/%1.png").arg(QLatin1String(name)))));
}

} // namespace

class TestFormTop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();
    void columnShowsNoButton();
    void layoutLeavesNoGap();
    void bigButtons_data();
    void bigButtons();
    void importButtonHasTheFocus();
    void arrowsWalkBetweenTheButtons();
    void buttonsAskForTheirForms_data();
    void buttonsAskForTheirForms();
    void slotsAskForTheirForms();
    void menuBarIsHiddenUntilTheStart();
    void menuHasThreeEntries();
    void menuBarGoesWithTheForm();
    void cacheQuestion();
    void cacheStays_data();
    void cacheStays();
    void cacheIsEmptied();
    void cacheWithoutAStore();
    void formIsBusyWhileABoxIsUp();
    void helpAndVersion();

private:
    MyImageButton *bigButton(int index) const;
    void whenModal(const std::function<void(QWidget *)> &visitor);
    void trigger(int menuIndex) const;

    lumi::test::FakeMachine *m_machine = nullptr;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<lumi::test::RequestLog> m_requests;
    QPEToolBar *m_toolBar = nullptr;
    FormTop *m_form = nullptr;
    int m_visits = 0;
};

void TestFormTop::initTestCase()
{
    m_machine = lumi::test::FakeMachine::install();
    const QDir folder(m_machine->folder.path());
    m_machine->resources = folder.path();
    QVERIFY(folder.mkpath(QStringLiteral("pixmaps/lumivault")));
    savePicture(folder, "bg_left", kColumnSize, Qt::darkGray);
    savePicture(folder, "bg_right_top", QSize(10, 10), Qt::lightGray);
    savePicture(folder, "top_copy", kButtonSize, Qt::red);
    savePicture(folder, "top_copy_push", kButtonSize, Qt::darkRed);
    savePicture(folder, "top_look", kButtonSize, Qt::green);
    savePicture(folder, "top_look_push", kButtonSize, Qt::darkGreen);
    for (const char *name : {"look_a", "look_b", "look_c", "look_d", "goto_top"}) {
        savePicture(folder, name, QSize(58, 58), Qt::blue);
    }
}

void TestFormTop::cleanupTestCase()
{
    Machine::install(nullptr);
}

void TestFormTop::init()
{
    m_window = std::make_unique<QMainWindow>();
    m_requests = std::make_unique<lumi::test::RequestLog>(m_window.get());
    m_window->resize(640, 480);
    m_toolBar = new QPEToolBar(m_window.get());
    m_form = new FormTop(m_window.get(), m_toolBar);
    m_window->setCentralWidget(m_form);
    m_window->show();
    m_form->formStarted();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TestFormTop::cleanup()
{
    if (m_window) {
        delete m_window->takeCentralWidget();
    }
    m_window.reset();
}

/// 0 is the import button, 1 the view button.
MyImageButton *TestFormTop::bigButton(int index) const
{
    const auto buttons = m_form->findChildren<MyImageButton *>();
    for (MyImageButton *button : buttons) {
        if (qobject_cast<MyLeftWidget *>(button->parentWidget()) == nullptr
            && button->x() == (index == 0 ? 34 : 290)) {
            return button;
        }
    }
    return nullptr;
}

void TestFormTop::whenModal(const std::function<void(QWidget *)> &visitor)
{
    m_visits = 0;
    QTimer::singleShot(0, this, [this, visitor] {
        if (QWidget *window = QApplication::activeModalWidget()) {
            ++m_visits;
            visitor(window);
        }
    });
}

void TestFormTop::trigger(int menuIndex) const
{
    auto *menuBar = m_toolBar->findChild<QPEMenuBar *>();
    menuBar->actions().constFirst()->menu()->actions().at(menuIndex)->trigger();
}

void TestFormTop::columnShowsNoButton()
{
    auto *column = m_form->findChild<MyLeftWidget *>();
    QVERIFY(column->isVisible());
    for (int i = 0; i < 5; ++i) {
        QVERIFY(!column->button(i)->isVisible());
    }
}

void TestFormTop::layoutLeavesNoGap()
{
    auto *column = m_form->findChild<MyLeftWidget *>();
    QCOMPARE(column->x(), 0);
    QCOMPARE(column->width(), kColumnSize.width());
    const QWidget *area = bigButton(0)->parentWidget();
    QCOMPARE(
        area->geometry(),
        QRect(kColumnSize.width(), 0, m_form->width() - kColumnSize.width(), m_form->height()));
}

void TestFormTop::bigButtons_data()
{
    lumi::test::columns<int, QPoint, QColor, QColor>();
    QTest::newRow("import") << 0 << QPoint(34, 85) << QColor(Qt::red) << QColor(Qt::darkRed);
    QTest::newRow("view") << 1 << QPoint(290, 85) << QColor(Qt::green) << QColor(Qt::darkGreen);
}

void TestFormTop::bigButtons()
{
    const auto [index, position, normal, pressed] = lumi::test::row<int, QPoint, QColor, QColor>();
    MyImageButton *button = bigButton(index);
    QVERIFY(button != nullptr);
    QCOMPARE(button->geometry(), QRect(position, kButtonSize));
    QVERIFY(button->parentWidget()->rect().contains(button->geometry()));
    QVERIFY(button->isVisible());
    const QPoint middle(118, 118);
    QCOMPARE(button->grab().toImage().pixelColor(middle), normal);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(button->grab().toImage().pixelColor(middle), pressed);
    // The focus frame has five rectangles.
    button->setFocus();
    const QImage shown = button->grab().toImage();
    const QColor yellow(255, 255, 0);
    for (int x = 0; x < 12; ++x) {
        QCOMPARE(shown.pixelColor(x, 118) == yellow, x < 10 && x % 2 == 0);
    }
}

void TestFormTop::importButtonHasTheFocus()
{
    QVERIFY(bigButton(0)->hasFocus());
}

void TestFormTop::arrowsWalkBetweenTheButtons()
{
    QTest::keyClick(bigButton(0), Qt::Key_Right);
    QVERIFY(bigButton(1)->hasFocus());
    QTest::keyClick(bigButton(1), Qt::Key_Left);
    QVERIFY(bigButton(0)->hasFocus());
}

void TestFormTop::buttonsAskForTheirForms_data()
{
    lumi::test::columns<int, int>();
    QTest::newRow("the import button leads to form 3") << 0 << 3;
    QTest::newRow("the view button leads to form 2") << 1 << 2;
}

void TestFormTop::buttonsAskForTheirForms()
{
    const auto [index, form] = lumi::test::row<int, int>();
    QTest::mouseClick(bigButton(index), Qt::LeftButton);
    QVERIFY(m_requests->forms.isEmpty()); // posted, not sent
    QCoreApplication::processEvents();
    QCOMPARE(m_requests->forms, QList<int>{form});
    QCOMPARE(m_requests->nullTexts, QList<bool>{true});
}

void TestFormTop::slotsAskForTheirForms()
{
    m_form->menu_disp_takein();
    m_form->menu_disp_look();
    m_form->btn_takein_clicked();
    m_form->btn_look_clicked();
    QCoreApplication::processEvents();
    QCOMPARE(m_requests->forms, (QList<int>{3, 2, 3, 2}));
}

void TestFormTop::menuBarIsHiddenUntilTheStart()
{
    QMainWindow window;
    auto *toolBar = new QPEToolBar(&window);
    auto *form = new FormTop(&window, toolBar);
    window.setCentralWidget(form);
    window.show();
    auto *menuBar = toolBar->findChild<QPEMenuBar *>();
    QVERIFY(menuBar->isHidden());
    QVERIFY(form->isHidden());
    QCOMPARE(window.windowTitle(), QStringLiteral("Lumi Vault"));
    form->formStarted();
    QVERIFY(menuBar->isVisible());
    QVERIFY(form->isVisible());
    delete window.takeCentralWidget();
}

void TestFormTop::menuHasThreeEntries()
{
    auto *menuBar = m_toolBar->findChild<QPEMenuBar *>();
    QCOMPARE(menuBar->actions().size(), qsizetype(1));
    auto *menu = qobject_cast<QPopupMenu *>(menuBar->actions().constFirst()->menu());
    QVERIFY(menu != nullptr);
    QCOMPARE(menu->title(), QStringLiteral("About"));
    QStringList texts;
    const auto actions = menu->actions();
    for (const QAction *action : actions) {
        texts.append(action->text());
    }
    QCOMPARE(texts,
             (QStringList{QStringLiteral("Delete Cache"), QStringLiteral("Help"),
                          QStringLiteral("Version")}));
}

void TestFormTop::menuBarGoesWithTheForm()
{
    delete m_window->takeCentralWidget();
    QVERIFY(m_toolBar->findChildren<QPEMenuBar *>().isEmpty());
    QVERIFY(m_toolBar->findChildren<QPopupMenu *>().isEmpty());
}

void TestFormTop::cacheQuestion()
{
    whenModal([this](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        QVERIFY(box != nullptr);
        QCOMPARE(box->parentWidget(), m_form);
        QCOMPARE(box->icon(), QMessageBox::Warning);
        QCOMPARE(box->windowTitle(), QStringLiteral("Delete Cache"));
        QCOMPARE(box->text(),
                 QStringLiteral("The program's temporary files will be deleted.\n"
                                "(It will free some memory, but will\n"
                                "temporarily slow down the program.)\nContinue?"));
        QCOMPARE(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(box->standardButton(box->defaultButton()), QMessageBox::No);
        box->reject();
    });
    trigger(0);
    QCOMPARE(m_visits, 1);
}

void TestFormTop::cacheStays_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("No") << QStringLiteral("No");
    QTest::newRow("Return, since No is the default") << QStringLiteral("return");
    QTest::newRow("Escape") << QStringLiteral("escape");
    QTest::newRow("the box is closed") << QStringLiteral("close");
}

void TestFormTop::cacheStays()
{
    QFETCH(QString, way);
    const QTemporaryDir swapFolder;
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    SwapSystem swap(QFile::encodeName(swapFolder.path()), QStringLiteral(".swp"));
    swapSystem(&swap);
    QFile file(swapFolder.filePath(QStringLiteral("0000s_100_a.jpg.swp")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const WaitRecorder waits([] {
        return true;
    });
    whenModal([&way](QWidget *window) {
        auto *box = qobject_cast<QMessageBox *>(window);
        if (way == QLatin1String("No")) {
            box->button(QMessageBox::No)->click();
        } else if (way == QLatin1String("close")) {
            box->close();
        } else {
            QTest::keyClick(box, way == QLatin1String("return") ? Qt::Key_Return : Qt::Key_Escape);
        }
    });
    m_form->menu_option_deleteTempFile();
    QCOMPARE(m_visits, 1);
    QVERIFY(file.exists());
    QVERIFY(waits.texts.isEmpty());
    QDir::setCurrent(QDir::rootPath());
}

void TestFormTop::cacheIsEmptied()
{
    const QTemporaryDir swapFolder;
    QTest::ignoreMessage(QtWarningMsg, "SwapSystem::InitRead Not Initialze File");
    SwapSystem swap(QFile::encodeName(swapFolder.path()), QStringLiteral(".swp"));
    swapSystem(&swap);
    QFile file(swapFolder.filePath(QStringLiteral("0000s_100_a.jpg.swp")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const WaitRecorder waits([&file] {
        return file.exists();
    });
    whenModal([](QWidget *window) {
        qobject_cast<QMessageBox *>(window)->button(QMessageBox::Yes)->click();
    });
    m_form->menu_option_deleteTempFile();
    QCOMPARE(m_visits, 1);
    QVERIFY(!file.exists());
    QCOMPARE(waits.texts, QStringList{QStringLiteral("Working...")});
    QCOMPARE(waits.parents, QList<QWidget *>{m_window.get()});
    QCOMPARE(waits.looks, QList<bool>{true}); // shown before the work, closed after it
    QVERIFY(m_window->findChildren<MyDialogWait *>().isEmpty());
    QDir::setCurrent(QDir::rootPath());
}

void TestFormTop::cacheWithoutAStore()
{
    QCOMPARE(swapSystem(), nullptr);
    whenModal([](QWidget *window) {
        qobject_cast<QMessageBox *>(window)->button(QMessageBox::Yes)->click();
    });
    m_form->menu_option_deleteTempFile();
    QCOMPARE(m_visits, 1);
}

void TestFormTop::formIsBusyWhileABoxIsUp()
{
    for (int entry = 0; entry < 3; ++entry) {
        whenModal([this](QWidget *window) {
            QVERIFY(m_form->isBusy());
            window->close();
        });
        trigger(entry);
        QCOMPARE(m_visits, 1);
        QVERIFY(!m_form->isBusy());
    }
}

void TestFormTop::helpAndVersion()
{
    whenModal([](QWidget *window) {
        QVERIFY(window->findChild<QTextBrowser *>() != nullptr);
        window->close();
    });
    trigger(1);
    QCOMPARE(m_visits, 1);
    whenModal([this](QWidget *window) {
        QVERIFY(qobject_cast<HkAboutDialog *>(window) != nullptr);
        QCOMPARE(window->parentWidget(), m_form);
        window->close();
    });
    trigger(2);
    QCOMPARE(m_visits, 1);
}

LUMI_TEST(TestFormTop)
#include "TestFormTop.moc"
