// SPDX-License-Identifier: MIT
// Visits to the Info mode and its editor, by taps and keys on the real windows.
#include "exif/text/FPVExifFields.h"
#include "exif/ui/FormExif.h"
#include "exif/ui/MyImageWidget.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "files/FormFile.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QThread>
#include <QTimer>
#include <QToolBar>

#include <functional>

using lumi::test::clicking;
using lumi::test::DialogAnswer;
using lumi::test::DialogDriver;
using lumi::test::ExifBuilder;
using lumi::test::OrdinaryUser;
using lumi::test::Traveller;

namespace {

constexpr int kPatienceMs = 30000;
constexpr int kPollMs = 20;
/// Of the menu Edit; separators count.
constexpr int kSaveEntry = 4;
constexpr int kExitEntry = 6;

/// Of a folder: also for those who share the owner's group.
constexpr QFile::Permissions kReadOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup
    | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;

/// Ends one window that keeps the editor from ending, or the editor itself.
void endOneWindow()
{
    QWidget *window = QApplication::activePopupWidget();
    if (window == nullptr) {
        window = QApplication::activeModalWidget();
    }
    if (auto *editor = qobject_cast<FormExif *>(window)) {
        editor->hide();
    } else if (window != nullptr) {
        window->close();
    }
}

} // namespace

class TestExifEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_user.reset(); }

    void textsAreWrittenAndShown();
    void aPositionIsPastedAndSaved();
    void aWrongPositionIsSentBack_data();
    void aWrongPositionIsSentBack();
    void otherLettersDoNotComeIntoTheTitle();
    void changesAreDiscarded();
    void leavingWithoutAChangeAsksNothing();
    void aFolderThatCannotBeWrittenIsTold();

private:
    using Step = std::function<void()>;

    /// Opens the editor by a tap and takes the steps in it; they must end it. Message boxes
    /// get the answers in their order, those without an answer are closed; m_boxes tells them.
    void edit(const Step &steps, const QList<DialogAnswer> &answers = {});
    [[nodiscard]] FormExif *editor() const;
    [[nodiscard]] MyMultiLineEdit *field(int page, int row) const;
    void turnTo(int page);
    /// Types wherever the focus is.
    void type(const QString &text);
    /// Taps into the field, and types in place of what is there.
    void write(int page, int row, const QString &text);
    /// The third button beside the menus.
    void tapPasteButton();
    /// Opens a menu of the editor and takes an entry.
    void choose(int menu, int entry);
    [[nodiscard]] QString panelText() const;
    /// What the photo's file says now, by the group and the label of the field.
    [[nodiscard]] QString saved(int group, const char *label) const;
    [[nodiscard]] QByteArray bytes() const;

    std::unique_ptr<Traveller> m_user;
    QStringList m_boxes;
};

void TestExifEditing::init()
{
    m_user.reset(new Traveller);
    m_boxes.clear();
    ExifBuilder photo;
    photo.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works")
        .photo(ExifBuilder::jpeg(80, 60, 0x4080C0));
    QVERIFY(photo.write(m_user->world.path(QStringLiteral("p.jpg"))));
    m_user->startProgram();
    m_user->openBrowser();
    QVERIFY(m_user->seesPage({QStringLiteral("p.jpg")}));
    m_user->tapColumn(2);
    QVERIFY(m_user->seesPage({QStringLiteral("p.jpg")}));
    m_user->tapItem(QStringLiteral("p.jpg"));
    QVERIFY(panelText().contains(QStringLiteral("Manufacturer")));
}

QString TestExifEditing::panelText() const
{
    return m_user->browser()->findChild<QTextBrowser *>()->toPlainText();
}

FormExif *TestExifEditing::editor() const
{
    return m_user->browser()->findChild<FormExif *>();
}

QString TestExifEditing::saved(int group, const char *label) const
{
    FPVExifFields fields(m_user->world.path(QStringLiteral("p.jpg")));
    fields.setGroup(group);
    for (int row = 0; row < fields.rowCount(); ++row) {
        if (fields.rowLabel(row).trimmed() == QLatin1String(label)) {
            return fields.valueText(row, true);
        }
    }
    return QStringLiteral("no such field");
}

QByteArray TestExifEditing::bytes() const
{
    QFile file(m_user->world.path(QStringLiteral("p.jpg")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestExifEditing::edit(const Step &steps, const QList<DialogAnswer> &answers)
{
    DialogDriver driver;
    driver.answerInOrder(answers);
    bool done = false;
    QElapsedTimer clock;
    clock.start();
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        const bool isRunning = QThread::currentThread()->loopLevel() > 0;
        if (isRunning && editor() != nullptr && editor()->isActiveWindow() && !done) {
            done = true;
            steps();
            if (editor() != nullptr && editor()->isVisible()) {
                QTest::qFail("the steps leave the editor open", __FILE__, __LINE__);
                editor()->hide();
            }
        }
        if (clock.elapsed() > kPatienceMs) {
            endOneWindow();
        }
    });
    poll.start(kPollMs);
    m_user->tapMiddle(m_user->browser()->findChild<MyImageWidget *>()->findChild<QPushButton *>());
    QVERIFY(QTest::qWaitFor(
        [&] {
            return done && editor() == nullptr;
        },
        kPatienceMs));
    QVERIFY2(clock.elapsed() < kPatienceMs, "the editor stayed open");
    m_boxes = driver.lines().filter(QRegularExpression(QStringLiteral("^(?!wait )")));
}

MyMultiLineEdit *TestExifEditing::field(int page, int row) const
{
    const QWidget *tab = editor()->findChild<QTabWidget *>()->widget(page);
    return tab->findChildren<MyMultiLineEdit *>().at(row);
}

void TestExifEditing::turnTo(int page)
{
    QTabBar *bar = editor()->findChild<QTabWidget *>()->tabBar();
    m_user->tap(bar, bar->tabRect(page).center());
    QCoreApplication::processEvents();
    QVERIFY(field(page, 0)->isVisible());
}

void TestExifEditing::type(const QString &text)
{
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, editor()->windowHandle(), Qt::Key_unknown,
                            QString(character), {});
    }
}

void TestExifEditing::tapPasteButton()
{
    auto *bar = editor()->findChildren<QToolBar *>().last();
    m_user->tapMiddle(bar->widgetForAction(bar->actions().last()));
}

void TestExifEditing::write(int page, int row, const QString &text)
{
    turnTo(page);
    m_user->tapMiddle(field(page, row)->viewport());
    QVERIFY(field(page, row)->hasFocus());
    QTest::keyClick(editor()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor()->windowHandle(), Qt::Key_Delete);
    type(text);
    QCOMPARE(field(page, row)->text(), text);
}

void TestExifEditing::choose(int menu, int entry)
{
    auto *bar = editor()->findChild<QMenuBar *>();
    QAction *title = bar->actions().at(menu);
    m_user->tap(bar, bar->actionGeometry(title).center());
    QMenu *popup = title->menu();
    QVERIFY(QTest::qWaitFor([popup] {
        return popup->isVisible();
    }));
    const QPoint at = popup->actionGeometry(popup->actions().at(entry)).center();
    QTest::mouseClick(popup->windowHandle(), Qt::LeftButton, {}, at);
}

void TestExifEditing::textsAreWrittenAndShown()
{
    edit([this] {
        write(0, 0, QStringLiteral("Ann <3"));
        write(0, 1, QStringLiteral("Trip"));
        write(1, 0, QStringLiteral("Jane Doe"));
        write(1, 1, QStringLiteral("Harbour"));
        write(1, 2, QStringLiteral("S1.WAV"));
        write(1, 3, QStringLiteral("海 at noon"));
        choose(0, kSaveEntry);
    });
    QCOMPARE(m_boxes, QStringList());
    QString text = panelText();
    QVERIFY(text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).contains(QLatin1String("Ann <3")));
    QVERIFY(text.contains(QLatin1String("Trip")));
    auto *combo = m_user->browser()->findChild<MyImageWidget *>()->findChild<QComboBox *>();
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    for (const char *shown : {"noon", "Harbour", "S1.WAV"}) {
        QVERIFY2(panelText().contains(QLatin1String(shown)), shown);
    }
    QCOMPARE(saved(0, "Author"), QStringLiteral("Ann <3"));
    QCOMPARE(saved(0, "Compilation"), QStringLiteral("Trip"));
    QCOMPARE(saved(1, "Owner"), QStringLiteral("Jane Doe"));
    QCOMPARE(saved(1, "Title"), QStringLiteral("Harbour"));
    QCOMPARE(saved(1, "Related Audio"), QStringLiteral("S1.WAV"));
    QCOMPARE(saved(1, "Comment"), QStringLiteral("海 at noon"));
    QCOMPARE(saved(0, "Manufacturer"), QStringLiteral("Anvil Works"));
}

void TestExifEditing::aPositionIsPastedAndSaved()
{
    QApplication::clipboard()->setText(QStringLiteral("N35.40.20.000E139.45.30.000"));
    edit([this] {
        turnTo(2);
        m_user->tapMiddle(field(2, 0)->viewport());
        tapPasteButton();
        QCOMPARE(field(2, 0)->text(), QStringLiteral("N35.40.20.000"));
        QCOMPARE(field(2, 1)->text(), QStringLiteral("E139.45.30.000"));
        write(2, 2, QStringLiteral("12.5"));
        choose(0, kSaveEntry);
    });
    QCOMPARE(m_boxes, QStringList());
    QCOMPARE(saved(5, "GPS"), QStringLiteral("Ver 2.2.0.0"));
    QCOMPARE(saved(5, "Lat."), QStringLiteral("N35.40.20.000"));
    QCOMPARE(saved(5, "Long."), QStringLiteral("E139.45.30.000"));
    QCOMPARE(saved(5, "Alt."), QStringLiteral("12.5m"));
}

void TestExifEditing::aWrongPositionIsSentBack_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("wrong");
    QTest::addColumn<QString>("right");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QString>("shown");
    QTest::newRow("latitude") << 0 << QStringLiteral("N91.00.00.000")
                              << QStringLiteral("N89.00.00.000")
                              << QStringLiteral("critical Error: The GPS latitude is invalid.")
                              << QByteArray("Lat.") << QStringLiteral("N89.00.00.000");
    QTest::newRow("longitude") << 1 << QStringLiteral("E181.00.00.000")
                               << QStringLiteral("E179.00.00.000")
                               << QStringLiteral("critical Error: The GPS longitude is invalid.")
                               << QByteArray("Long.") << QStringLiteral("E179.00.00.000");
    QTest::newRow("altitude") << 2 << QStringLiteral("12,5") << QStringLiteral("12.5")
                              << QStringLiteral("critical Error: The GPS altitude is invalid.")
                              << QByteArray("Alt.") << QStringLiteral("12.5m");
}

void TestExifEditing::aWrongPositionIsSentBack()
{
    QFETCH(int, row);
    QFETCH(QString, wrong);
    QFETCH(QString, right);
    const QByteArray before = bytes();
    edit(
        [&] {
            write(2, row, wrong);
            turnTo(0);
            choose(0, kSaveEntry);
            QCOMPARE(bytes(), before);
            QVERIFY(field(2, row)->isVisible());
            QTRY_VERIFY(field(2, row)->hasFocus());
            QCOMPARE(field(2, row)->text(), wrong);
            write(2, row, right);
            choose(0, kSaveEntry);
        },
        {clicking(QMessageBox::Ok)});
    QCOMPARE(m_boxes.size(), 1);
    QFETCH(QString, told);
    QVERIFY2(m_boxes.first().startsWith(told), qPrintable(m_boxes.first()));
    QFETCH(QByteArray, label);
    QTEST(saved(5, label.constData()), "shown");
}

void TestExifEditing::otherLettersDoNotComeIntoTheTitle()
{
    QApplication::clipboard()->setText(QStringLiteral("海 2"));
    edit([this] {
        write(1, 1, QStringLiteral("Sea"));
        type(QStringLiteral("海é"));
        QCOMPARE(field(1, 1)->text(), QStringLiteral("Sea"));
        tapPasteButton();
        QCOMPARE(field(1, 1)->text(), QStringLiteral("Sea 2"));
        choose(0, kSaveEntry);
    });
    QCOMPARE(saved(1, "Title"), QStringLiteral("Sea 2"));
}

void TestExifEditing::changesAreDiscarded()
{
    const QByteArray before = bytes();
    edit(
        [this] {
            write(1, 1, QStringLiteral("Sea"));
            choose(0, kExitEntry);
            QVERIFY(editor()->isVisible());
            QCOMPARE(field(1, 1)->text(), QStringLiteral("Sea"));
            choose(0, kExitEntry);
        },
        {clicking(QMessageBox::No), clicking(QMessageBox::Yes)});
    const QString question
        = QStringLiteral("warning Edit cancelled: Exif information has been changed.\n"
                         "It will be discarded. Continue? Yes/No");
    QCOMPARE(m_boxes.size(), 2);
    QVERIFY(m_boxes.first().startsWith(question) && m_boxes.last().startsWith(question));
    QCOMPARE(bytes(), before);
}

void TestExifEditing::leavingWithoutAChangeAsksNothing()
{
    const QByteArray before = bytes();
    edit([this] {
        turnTo(2);
        turnTo(1);
        m_user->tapMiddle(field(1, 0)->viewport());
        choose(0, kExitEntry);
    });
    QCOMPARE(m_boxes, QStringList());
    QCOMPARE(bytes(), before);
    QVERIFY(panelText().contains(QStringLiteral("Manufacturer")));
}

void TestExifEditing::aFolderThatCannotBeWrittenIsTold()
{
    const QByteArray before = bytes();
    edit(
        [&] {
            write(0, 0, QStringLiteral("Ann"));
            QFile home(QDir::homePath());
            QFile folder(m_user->world.store);
            const auto homePermissions = home.permissions();
            const auto folderPermissions = folder.permissions();
            QVERIFY(home.setPermissions(kReadOnly) && folder.setPermissions(kReadOnly));
            {
                const OrdinaryUser user;
                QCOMPARE(bytes(), before);
                choose(0, kSaveEntry);
            }
            QVERIFY(home.setPermissions(homePermissions));
            QVERIFY(folder.setPermissions(folderPermissions));
            QCOMPARE(bytes(), before);
            QVERIFY(editor()->isVisible());
            QCOMPARE(field(0, 0)->text(), QStringLiteral("Ann"));
            // With the folder in order again the next try goes through.
            choose(0, kSaveEntry);
        },
        {clicking(QMessageBox::Ok)});
    QCOMPARE(m_boxes.size(), 1);
    QVERIFY(m_boxes.first().startsWith(
        QLatin1String("critical Error: Compiling Exif information failed. Retry. OK")));
    QCOMPARE(saved(0, "Author"), QStringLiteral("Ann"));
    QVERIFY(m_user->seesPage({QStringLiteral("p.jpg")}));
}

LUMI_TEST(TestExifEditing)
#include "TestExifEditing.moc"
