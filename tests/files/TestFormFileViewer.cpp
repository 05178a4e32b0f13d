// SPDX-License-Identifier: MIT
// The full view opened by the form.
#include "items/FPVItemObject.h"
#include "tests/files/FormFixture.h"
#include "tests/support/TestMain.h"
#include "viewer/FPVPictureScrollView.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <functional>

using lumi::test::FormFixture;

namespace {

/// Calls a function when the viewer is shown, then closes it.
class Guest : public QObject
{
public:
    explicit Guest(std::function<void()> visit)
        : m_visit(std::move(visit))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            look();
        });
        m_timer.start(5);
    }

    int visits = 0;

private:
    void look()
    {
        auto *viewer = qobject_cast<FPVPictureScrollView *>(QApplication::activeModalWidget());
        // The title is set with the picture, after the window is shown.
        if (viewer != nullptr && !viewer->windowTitle().isEmpty()) {
            ++visits;
            m_visit();
            viewer->hide();
        }
    }

    QTimer m_timer;
    std::function<void()> m_visit;
};

} // namespace

class TestFormFileViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { m_form = std::make_unique<FormFixture>(); }

    void cleanup() { m_form.reset(); }

    void opensOnAPhotoOnly();
    void aSecondTapOpensIt();
    void theMenuOpensIt();
    void theCursorsCellGoesMeanwhile();
    void theFormIsBusyMeanwhile();
    void theCursorFollowsTheViewer();

private:
    void start();

    std::unique_ptr<FormFixture> m_form;
};

void TestFormFileViewer::start()
{
    m_form->world.makeFolder(QStringLiteral("folder"));
    m_form->world.makePhotos(8);
    m_form->start();
    QVERIFY(m_form->waitForCells(6));
}

void TestFormFileViewer::opensOnAPhotoOnly()
{
    Guest guest([] {});
    start();
    // No cursor yet.
    m_form->form->menu_disp_DispAll();
    m_form->view->showPage(0, 0, true);
    QTRY_VERIFY(m_form->view->currentObject() != nullptr);
    QVERIFY(m_form->view->currentObject()->isFolder());
    m_form->form->menu_disp_DispAll();
    QTest::qWait(50);
    QCOMPARE(guest.visits, 0);
}

void TestFormFileViewer::aSecondTapOpensIt()
{
    Guest guest([] {});
    start();
    m_form->tap(QStringLiteral("a01.jpg"));
    QTest::qWait(30);
    QCOMPARE(guest.visits, 0);
    // No release: the cell is destroyed while the viewer is open.
    QTest::mousePress(m_form->cell(QStringLiteral("a01.jpg")), Qt::LeftButton, {}, QPoint(1, 1));
    QCOMPARE(guest.visits, 1);
    QVERIFY(m_form->waitForCells(6));
    QCOMPARE(m_form->status->text(), QStringLiteral("a01"));
}

void TestFormFileViewer::theMenuOpensIt()
{
    Guest guest([] {});
    start();
    m_form->tap(QStringLiteral("a01.jpg"));
    m_form->grayOut();
    QVERIFY(m_form->entry(19)->isEnabled());
    m_form->entry(19)->trigger();
    QCOMPARE(guest.visits, 1);
}

void TestFormFileViewer::theCursorsCellGoesMeanwhile()
{
    QStringList names;
    Guest guest([this, &names] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        names = m_form->names();
    });
    start();
    m_form->tap(QStringLiteral("a01.jpg"));
    const QStringList before = m_form->names();
    m_form->form->menu_disp_DispAll();
    QCOMPARE(guest.visits, 1);
    QStringList left = before;
    left.removeAll(QStringLiteral("a01.jpg"));
    QCOMPARE(names, left);
    // The page is built again afterwards.
    QTRY_COMPARE(m_form->names(), before);
}

void TestFormFileViewer::theFormIsBusyMeanwhile()
{
    bool isBusy = false;
    QStringList media;
    Guest guest([this, &isBusy, &media] {
        isBusy = m_form->form->isBusy();
        m_form->world.machine->insertCard(Slot::CF);
        m_form->tellCardChange();
        media = m_form->media();
    });
    start();
    m_form->tap(QStringLiteral("a01.jpg"));
    m_form->form->menu_disp_DispAll();
    QVERIFY(isBusy);
    QCOMPARE(media.size(), 1);
    QVERIFY(!m_form->form->isBusy());
    QTRY_COMPARE(m_form->media().size(), 2);
}

void TestFormFileViewer::theCursorFollowsTheViewer()
{
    Guest guest([this] {
        for (int i = 0; i < 6; ++i) {
            m_form->view->nextPicture();
        }
    });
    start();
    m_form->tap(QStringLiteral("a01.jpg"));
    m_form->form->menu_disp_DispAll();
    // The photo is not on the page, so another page is shown.
    QTRY_COMPARE(m_form->status->text(), QStringLiteral("a07"));
    QVERIFY(m_form->names().contains(QStringLiteral("a07.jpg")));
    QCOMPARE(m_form->view->currentObject()->fileName(), QStringLiteral("a07.jpg"));
}

LUMI_TEST(TestFormFileViewer)
#include "TestFormFileViewer.moc"
