// SPDX-License-Identifier: MIT
// Visits to the Info mode and its editor, by taps and keys on the real windows.
#include "exif/FPVExifFields.h"
#include "exif/ui/FormExif.h"
#include "exif/ui/MyImageWidget.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "files/FormFile.h"
#include "tests/journeys/Traveller.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QThread>
#include <QTimer>
#include <QToolBar>

#include <functional>

using lumi::test::ExifBuilder;
using lumi::test::Traveller;

namespace {

constexpr int kPatienceMs = 10000;

} // namespace

class TestExifEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_user.reset(); }

    void aNameIsWrittenAndShown();
    void aPositionIsPastedAndSaved();
    void aWrongPositionIsSentBack();
    void changesAreDiscarded();

private:
    using Step = std::function<void()>;

    /// Opens the editor by a tap and takes the steps in it; they must end it.
    void edit(const Step &steps);
    [[nodiscard]] FormExif *editor() const;
    [[nodiscard]] MyMultiLineEdit *field(int page, int row) const;
    void turnTo(int page);
    /// Taps into the field, and types in place of what is there.
    void write(int page, int row, const QString &text);
    /// Opens a menu of the editor and takes an entry.
    void choose(int menu, int entry);
    /// Taps a button of the next message box, and notes what the box said.
    void answerNextBox(QMessageBox::StandardButton button);
    [[nodiscard]] QString panelText() const;

    std::unique_ptr<Traveller> m_user;
    QString m_boxText;
};

void TestExifEditing::init()
{
    m_user.reset(new Traveller);
    m_boxText.clear();
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

void TestExifEditing::edit(const Step &steps)
{
    bool done = false;
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        const bool isRunning = QThread::currentThread()->loopLevel() > 0;
        if (isRunning && editor() != nullptr && editor()->isActiveWindow() && !done) {
            done = true;
            steps();
        }
    });
    poll.start(20);
    QTimer::singleShot(kPatienceMs, &poll, [this] {
        QTest::qFail("the editor stays open", __FILE__, __LINE__);
        QTimer::singleShot(0, editor(), &QWidget::hide);
    });
    m_user->tapMiddle(m_user->browser()->findChild<MyImageWidget *>()->findChild<QPushButton *>());
    QVERIFY(QTest::qWaitFor(
        [&] {
            return done && editor() == nullptr;
        },
        kPatienceMs));
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

void TestExifEditing::write(int page, int row, const QString &text)
{
    turnTo(page);
    m_user->tapMiddle(field(page, row)->viewport());
    QVERIFY(field(page, row)->hasFocus());
    QTest::keyClick(editor()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor()->windowHandle(), Qt::Key_Delete);
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, editor()->windowHandle(), Qt::Key_unknown,
                            QString(character), {});
    }
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

void TestExifEditing::answerNextBox(QMessageBox::StandardButton button)
{
    QTimer::singleShot(50, this, [this, button] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        m_boxText = box->text();
        m_user->tapMiddle(box->button(button));
    });
}

void TestExifEditing::aNameIsWrittenAndShown()
{
    edit([this] {
        write(0, 0, QStringLiteral("Ann <3"));
        write(1, 0, QStringLiteral("Jane Doe"));
        write(1, 3, QStringLiteral("海 at noon"));
        choose(0, 4);
    });
    QVERIFY(m_boxText.isEmpty());
    QString text = panelText();
    QVERIFY(text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).contains(QLatin1String("Ann <3")));
    auto *combo = m_user->browser()->findChild<MyImageWidget *>()->findChild<QComboBox *>();
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    QVERIFY(panelText().contains(QStringLiteral("noon")));
    FPVExifFields fields(m_user->world.path(QStringLiteral("p.jpg")));
    fields.setGroup(1);
    QCOMPARE(fields.valueText(0, false), QStringLiteral("Jane Doe"));
    QCOMPARE(fields.valueText(5, false), QStringLiteral("海 at noon"));
    fields.setGroup(0);
    QCOMPARE(fields.valueText(0, false), QStringLiteral("Anvil Works"));
}

void TestExifEditing::aPositionIsPastedAndSaved()
{
    QApplication::clipboard()->setText(QStringLiteral("N35.40.20.000E139.45.30.000"));
    edit([this] {
        turnTo(2);
        m_user->tapMiddle(field(2, 0)->viewport());
        // The third button beside the menus.
        auto *bar = editor()->findChildren<QToolBar *>().last();
        m_user->tapMiddle(bar->widgetForAction(bar->actions().last()));
        QCOMPARE(field(2, 0)->text(), QStringLiteral("N35.40.20.000"));
        QCOMPARE(field(2, 1)->text(), QStringLiteral("E139.45.30.000"));
        write(2, 2, QStringLiteral("12.5"));
        choose(0, 4);
    });
    FPVExifFields fields(m_user->world.path(QStringLiteral("p.jpg")));
    fields.setGroup(5);
    QStringList texts;
    for (int row = 0; row < 4; ++row) {
        texts.append(fields.valueText(row, true));
    }
    QCOMPARE(texts,
             (QStringList{QStringLiteral("Ver 2.2.0.0"), QStringLiteral("N35.40.20.000"),
                          QStringLiteral("E139.45.30.000"), QStringLiteral("12.5m")}));
}

void TestExifEditing::aWrongPositionIsSentBack()
{
    edit([this] {
        write(2, 1, QStringLiteral("E181.00.00.000"));
        turnTo(0);
        answerNextBox(QMessageBox::Ok);
        choose(0, 4);
        QVERIFY(m_boxText.startsWith(QLatin1String("The GPS longitude is invalid.")));
        QVERIFY(field(2, 1)->isVisible());
        QTRY_VERIFY(field(2, 1)->hasFocus());
        write(2, 1, QStringLiteral("E179.00.00.000"));
        choose(0, 4);
    });
    FPVExifFields fields(m_user->world.path(QStringLiteral("p.jpg")));
    fields.setGroup(5);
    QCOMPARE(fields.valueText(2, true), QStringLiteral("E179.00.00.000"));
}

void TestExifEditing::changesAreDiscarded()
{
    QFile file(m_user->world.path(QStringLiteral("p.jpg")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    edit([this] {
        write(1, 1, QStringLiteral("Sea"));
        answerNextBox(QMessageBox::No);
        choose(0, 6);
        QVERIFY(editor()->isVisible());
        QCOMPARE(field(1, 1)->text(), QStringLiteral("Sea"));
        m_boxText.clear();
        answerNextBox(QMessageBox::Yes);
        choose(0, 6);
    });
    QVERIFY(m_boxText.startsWith(QLatin1String("Exif information has been changed.")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), before);
}

LUMI_TEST(TestExifEditing)
#include "TestExifEditing.moc"
