// SPDX-License-Identifier: MIT
// The info panel of the browser form, and the editor that it opens.
#include "exif/ui/FormExif.h"
#include "exif/ui/MyImageWidget.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "tests/files/FormFixture.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"
#include "viewer/FPVPictureScrollView.h"
#include "views/FPVPictureView.h"
#include "widgets/MyDialogWait.h"

#include <QApplication>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QThread>
#include <QTimer>

#include <functional>

using lumi::test::ExifBuilder;
using lumi::test::FormFixture;

namespace {

/// Longer than it takes to fill a new page with thumbnails.
constexpr int kLongestTimerMs = 200;

/// Calls a function whenever a window of that class appears.
template <class Window> class Visitor : public QObject
{
public:
    explicit Visitor(std::function<void(Window *)> visit)
        : m_visit(std::move(visit))
    {
        qApp->installEventFilter(this);
    }

    int visits = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *window = qobject_cast<Window *>(watched);
        if (event->type() == QEvent::Show && window != nullptr) {
            ++visits;
            m_visit(window);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void(Window *)> m_visit;
};

/// Runs the steps when the editor's own loop runs, not already in its constructor.
void whenRunning(FormExif *editor, const std::function<void()> &steps)
{
    QTimer::singleShot(10, editor, [editor, steps] {
        if (QThread::currentThread()->loopLevel() > 0) {
            steps();
        } else {
            whenRunning(editor, steps);
        }
    });
}

} // namespace

class TestFormFilePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void cleanup() { m_form.reset(); }

    void isHiddenInTheOtherModes();
    void itShowsTheItemAtTheCursor();
    void itFollowsTheCursor();
    void aFolderIsNoItem();
    void withoutACursorThereIsNoItem();
    void theOtherModesForgetTheItem();
    void theFormIsBusyWhileAPhotoIsRead();
    void aPhotoIsReadOnce_data();
    void aPhotoIsReadOnce();
    void aTapOnThePictureOpensIt();
    void theButtonOpensTheEditor();
    void afterASaveThePanelReadsThePhotoAnew();
    void theEditorMayOutliveTheItem();
    void withoutACursorNoEditorOpens();

private:
    void startInInfoMode(int cells);
    [[nodiscard]] QString shown() const;

    [[nodiscard]] QString panelText() const
    {
        return m_panel->findChild<QTextBrowser *>()->toPlainText();
    }

    std::unique_ptr<FormFixture> m_form;
    MyImageWidget *m_panel = nullptr;
};

void TestFormFilePanel::init()
{
    m_form = std::make_unique<FormFixture>();
    m_form->world.makeFolder(QStringLiteral("dir"));
    for (const char *name : {"a.jpg", "b.jpg"}) {
        ExifBuilder photo;
        photo.ascii(ExifListKind::Ifd0, 0x010F, QByteArray("Maker of ") + name)
            .photo(ExifBuilder::jpeg(80, 60, 0x4080C0));
        QVERIFY(photo.write(m_form->world.path(QLatin1String(name))));
    }
}

void TestFormFilePanel::startInInfoMode(int cells)
{
    m_form->start();
    m_panel = m_form->form->findChild<MyImageWidget *>();
    QVERIFY(m_form->waitForCells(cells));
    m_form->form->menu_disp_DispDetail();
    QVERIFY(m_form->waitForCells(cells));
}

/// The name of the photo in the panel.
QString TestFormFilePanel::shown() const
{
    const FPVItemImage *item = m_panel->picture()->item();
    return item != nullptr ? item->fileName() : QString();
}

void TestFormFilePanel::isHiddenInTheOtherModes()
{
    m_form->start();
    m_panel = m_form->form->findChild<MyImageWidget *>();
    QVERIFY(!m_panel->isVisible());
    m_form->form->menu_disp_DispDetail();
    QVERIFY(m_panel->isVisible());
    m_form->form->menu_disp_ThumbnailSmall();
    QVERIFY(!m_panel->isVisible());
}

void TestFormFilePanel::itShowsTheItemAtTheCursor()
{
    m_form->start();
    QVERIFY(m_form->waitForCells(3));
    m_form->tap(QStringLiteral("b.jpg"));
    m_form->form->menu_disp_DispDetail();
    m_panel = m_form->form->findChild<MyImageWidget *>();
    QCOMPARE(shown(), QStringLiteral("b.jpg"));
    QVERIFY(m_panel->findChild<QPushButton *>()->isEnabled());
}

void TestFormFilePanel::itFollowsTheCursor()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    QCOMPARE(shown(), QStringLiteral("a.jpg"));
    QVERIFY(panelText().contains(QStringLiteral("Maker\u00A0of\u00A0a.jpg"))
            || panelText().contains(QStringLiteral("Maker of a.jpg")));
    m_form->view->setFocus();
    QTest::keyClick(m_form->view, Qt::Key_Right);
    QCOMPARE(shown(), QStringLiteral("b.jpg"));
    QCOMPARE(m_form->status->text(), QStringLiteral("b"));
}

void TestFormFilePanel::aFolderIsNoItem()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    m_form->view->setFocus();
    QTest::keyClick(m_form->view, Qt::Key_Left);
    QCOMPARE(m_form->status->text(), QStringLiteral("dir"));
    QCOMPARE(shown(), QString());
    QVERIFY(panelText().isEmpty());
}

void TestFormFilePanel::withoutACursorThereIsNoItem()
{
    startInInfoMode(3);
    QCOMPARE(m_form->view->currentIndex(), -1);
    QCOMPARE(shown(), QString());
    QVERIFY(!m_panel->findChild<QPushButton *>()->isEnabled());
    QVERIFY(!m_panel->findChild<QComboBox *>()->isEnabled());
}

void TestFormFilePanel::theOtherModesForgetTheItem()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    m_form->form->menu_disp_ThumbnailLarge();
    QCOMPARE(shown(), QString());
    QVERIFY(m_form->waitForCells(3));
    m_form->tap(QStringLiteral("b.jpg"));
    QCOMPARE(shown(), QString());
}

void TestFormFilePanel::theFormIsBusyWhileAPhotoIsRead()
{
    startInInfoMode(3);
    bool wasBusy = false;
    const Visitor<MyDialogWait> waits([this, &wasBusy](MyDialogWait *dialog) {
        wasBusy = m_form->form->isBusy();
        QCOMPARE(dialog->parentWidget(), &m_form->window);
    });
    m_form->tap(QStringLiteral("a.jpg"));
    QCOMPARE(waits.visits, 1);
    QVERIFY(wasBusy);
    QVERIFY(!m_form->form->isBusy());
}

void TestFormFilePanel::aPhotoIsReadOnce_data()
{
    QTest::addColumn<QByteArray>("picture");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("a photo") << ExifBuilder::jpeg(80, 60, 0x4080C0) << true;
    QTest::newRow("no picture after the Exif data") << QByteArray("\xFF\xD8rubbish", 9) << false;
}

/// The view and the form both pass the current item to the panel. Each reading of a photo shows a
/// wait dialog.
void TestFormFilePanel::aPhotoIsReadOnce()
{
    QFETCH(QByteArray, picture);
    QFETCH(bool, isShown);
    for (const char *name : {"a.jpg", "b.jpg"}) {
        ExifBuilder photo;
        photo.ascii(ExifListKind::Ifd0, 0x010F, QByteArray("Maker of ") + name).photo(picture);
        QVERIFY(photo.write(m_form->world.path(QLatin1String(name))));
    }
    m_form->start();
    m_panel = m_form->form->findChild<MyImageWidget *>();
    QVERIFY(m_form->waitForCells(3));
    m_form->tap(QStringLiteral("a.jpg"));
    const auto settle = [this] {
        QVERIFY(m_form->waitForCells(3));
        QTest::qWait(kLongestTimerMs);
    };
    settle();
    Visitor<MyDialogWait> waits([](MyDialogWait *) {});
    m_form->form->menu_disp_DispDetail();
    settle();
    QCOMPARE(waits.visits, 1);
    QVERIFY(panelText().contains(QStringLiteral("a.jpg")));
    QCOMPARE(shown(), isShown ? QStringLiteral("a.jpg") : QString());
    m_form->view->setFocus();
    QTest::keyClick(m_form->view, Qt::Key_Right);
    settle();
    QCOMPARE(waits.visits, 2);
    QVERIFY(panelText().contains(QStringLiteral("b.jpg")));
    const Visitor<FormExif> editors([](FormExif *editor) {
        whenRunning(editor, [editor] {
            editor->close();
        });
    });
    m_form->form->btn_edit_clicked();
    settle();
    QCOMPARE(editors.visits, 1);
    QCOMPARE(waits.visits, 3);
    QVERIFY(panelText().contains(QStringLiteral("b.jpg")));
}

void TestFormFilePanel::aTapOnThePictureOpensIt()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    QStringList opened;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&opened] {
        QWidget *window = QApplication::activeModalWidget();
        const auto *viewer = qobject_cast<FPVPictureScrollView *>(window);
        // The title is set with the picture, after the window is shown.
        if (viewer != nullptr && !viewer->windowTitle().isEmpty()) {
            opened.append(viewer->windowTitle());
            window->close();
        }
    });
    closer.start(50);
    QTest::mouseClick(m_panel->picture(), Qt::LeftButton);
    QCOMPARE(opened.size(), 1);
    QVERIFY2(opened.first().contains(QLatin1String("a")), qPrintable(opened.first()));
}

void TestFormFilePanel::theButtonOpensTheEditor()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("b.jpg"));
    const QPointer<FPVThumbnailItem> cell = m_form->cell(QStringLiteral("b.jpg"));
    const QWidget *parent = nullptr;
    QString title;
    bool wasBusy = false;
    bool wasInUse = true;
    const Visitor<FormExif> editors([&](FormExif *editor) {
        parent = editor->parentWidget();
        title = editor->windowTitle();
        wasBusy = m_form->form->isBusy();
        whenRunning(editor, [&, editor] {
            wasInUse = !shown().isEmpty() || (cell && cell->isVisible());
            editor->close();
        });
    });
    QTest::mouseClick(m_panel->findChild<QPushButton *>(), Qt::LeftButton);
    QCOMPARE(editors.visits, 1);
    QCOMPARE(parent, m_form->form.get());
    QCOMPARE(title, QStringLiteral("b"));
    QVERIFY(wasBusy);
    // The panel does not use the photo while the editor is open.
    QVERIFY(!wasInUse);
    QVERIFY(!m_form->form->isBusy());
    QCOMPARE(shown(), QStringLiteral("b.jpg"));
    QVERIFY(m_form->waitForCells(3));
    QVERIFY(m_form->cell(QStringLiteral("b.jpg"))->isVisible());
    QCOMPARE(m_form->view->currentIndex(), 2);
}

void TestFormFilePanel::afterASaveThePanelReadsThePhotoAnew()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    QVERIFY(!panelText().contains(QStringLiteral("Jo")));
    const Visitor<FormExif> editors([](FormExif *editor) {
        whenRunning(editor, [editor] {
            const QWidget *page = editor->findChild<QTabWidget *>()->widget(0);
            page->findChild<MyMultiLineEdit *>()->setText(QStringLiteral("Jo"));
            editor->menu_edit_save();
        });
    });
    m_form->form->btn_edit_clicked();
    QCOMPARE(editors.visits, 1);
    QVERIFY(panelText().contains(QStringLiteral("Jo")));
    QCOMPARE(shown(), QStringLiteral("a.jpg"));
}

void TestFormFilePanel::theEditorMayOutliveTheItem()
{
    startInInfoMode(3);
    m_form->tap(QStringLiteral("a.jpg"));
    const Visitor<FormExif> editors([this](FormExif *editor) {
        whenRunning(editor, [this, editor] {
            m_form->view->reload(m_form->world.path(QStringLiteral("dir")));
            editor->close();
        });
    });
    m_form->form->btn_edit_clicked();
    QCOMPARE(editors.visits, 1);
    QCOMPARE(shown(), QString());
    QVERIFY(m_form->waitForCells(0));
}

void TestFormFilePanel::withoutACursorNoEditorOpens()
{
    startInInfoMode(3);
    const Visitor<FormExif> editors([](FormExif *editor) {
        editor->close();
    });
    m_form->form->btn_edit_clicked();
    QCOMPARE(editors.visits, 0);
}

LUMI_TEST(TestFormFilePanel)
#include "TestFormFilePanel.moc"
