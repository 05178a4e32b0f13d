// SPDX-License-Identifier: MIT
// Editing Exif texts from the Info mode by taps and keys on the real windows.
#include "exif/text/FPVExifFields.h"
#include "exif/ui/FormExif.h"
#include "exif/ui/MyImageWidget.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "files/FormFile.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
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

using lumi::test::DialogAnswer;
using lumi::test::DialogDriver;
using lumi::test::ExifBuilder;
using lumi::test::Traveller;

namespace {

constexpr int kPatienceMs = 30000;
constexpr int kPollMs = 20;
/// Of the menu Edit; separators count.
constexpr int kSaveEntry = 4;

/// Closes one window over the editor, else the editor itself.
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

private:
    using Step = std::function<void()>;

    /// Opens the editor by a tap and runs the steps, which must end it. Message boxes are answered
    /// in order; those without an answer are closed. m_boxes records their lines.
    void edit(const Step &steps, const QList<DialogAnswer> &answers = {});
    [[nodiscard]] FormExif *editor() const;
    [[nodiscard]] MyMultiLineEdit *field(int page, int row) const;
    void turnTo(int page);
    /// Types into the focus widget.
    void type(const QString &text);
    /// Taps into the field and replaces its text.
    void write(int page, int row, const QString &text);
    /// The third button beside the menus.
    void tapPasteButton();
    /// Chooses an entry of a menu of the editor.
    void choose(int menu, int entry);
    [[nodiscard]] QString panelText() const;
    /// The value in the photo's file, by the group and the label of the field.
    [[nodiscard]] QString saved(int group, const char *label) const;
    [[nodiscard]] QByteArray bytes() const;

    std::unique_ptr<Traveller> m_user;
    QStringList m_boxes;
};

void TestExifEditing::init()
{
    m_user = std::make_unique<Traveller>();
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

LUMI_TEST(TestExifEditing)
#include "TestExifEditing.moc"
