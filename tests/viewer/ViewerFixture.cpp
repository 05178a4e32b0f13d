// SPDX-License-Identifier: MIT
#include "tests/viewer/ViewerFixture.h"

#include "tests/platform/paintedPixels.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

namespace {

constexpr int kPatienceMs = 10000;

} // namespace

bool lumi::test::isNear(QRgb one, QRgb other)
{
    constexpr int kNear = 16;
    return qAbs(qRed(one) - qRed(other)) < kNear && qAbs(qGreen(one) - qGreen(other)) < kNear
        && qAbs(qBlue(one) - qBlue(other)) < kNear;
}

lumi::test::Silence::Silence()
    : previous(
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {}))
{ }

lumi::test::Silence::~Silence()
{
    qInstallMessageHandler(previous);
}

lumi::test::BoxReader::BoxReader()
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        read();
    });
    m_timer.start(1);
}

void lumi::test::BoxReader::read()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box == nullptr || qobject_cast<DialogBase *>(box) != nullptr) {
        return;
    }
    QStringList buttons;
    const auto all = box->buttons();
    for (const QAbstractButton *button : all) {
        buttons.append(button->text().remove(QLatin1Char('&')));
    }
    texts.append(box->windowTitle() + QStringLiteral(": ") + box->text() + QStringLiteral(" (")
                 + buttons.join(QLatin1Char(' ')) + QLatin1Char(')'));
    if (box->parent() != nullptr || box->icon() != QMessageBox::Critical) {
        texts.append(QStringLiteral("the box is of the wrong kind"));
    }
    whileOpen();
    box->accept();
}

lumi::test::ViewerFixture::ViewerFixture()
    : view(std::make_unique<FPVThumbnailView>(nullptr, &items))
{ }

lumi::test::ViewerFixture::~ViewerFixture()
{
    viewer.reset();
    view.reset();
}

lumi::test::ScriptedImage *lumi::test::ViewerFixture::add(const QString &name, QSize size,
                                                          int denominator)
{
    auto *image = new ScriptedImage(name, size);
    image->denominator = denominator;
    items.append(image);
    return image;
}

FPVPictureScrollView *lumi::test::ViewerFixture::open(FPVItemImage *item)
{
    view->setCurrentObjectQuiet(item);
    viewer = std::make_unique<FPVPictureScrollView>(nullptr, view.get(), item);
    return viewer.get();
}

bool lumi::test::ViewerFixture::run(int ms)
{
    bool isLate = false;
    QTimer late;
    late.setSingleShot(true);
    QObject::connect(&late, &QTimer::timeout, viewer.get(), [this, &isLate] {
        isLate = true;
        viewer->hide();
    });
    late.start(ms);
    viewer->exec();
    return !isLate;
}

bool lumi::test::ViewerFixture::waitForLook()
{
    return QTest::qWaitFor(
        [this] {
            return !isDecoding();
        },
        kPatienceMs);
}

bool lumi::test::ViewerFixture::waitForButtons() const
{
    const int interval = timer()->interval();
    timer()->setInterval(0);
    const bool isEnabled = QTest::qWaitFor(
        [this] {
            return button(2)->isEnabled();
        },
        kPatienceMs);
    timer()->setInterval(interval);
    return isEnabled;
}

void lumi::test::ViewerFixture::close()
{
    viewer.reset();
}

QToolButton *lumi::test::ViewerFixture::button(int index) const
{
    auto buttons = viewer->findChildren<QToolButton *>();
    std::sort(buttons.begin(), buttons.end(), [this](const auto *one, const auto *other) {
        const QLayout *row = viewer->layout()->itemAt(0)->layout();
        return row->indexOf(one) < row->indexOf(other);
    });
    return buttons.at(index);
}

QLabel *lumi::test::ViewerFixture::percent() const
{
    const QLayout *row = viewer->layout()->itemAt(0)->layout();
    return qobject_cast<QLabel *>(row->itemAt(3)->widget());
}

QLabel *lumi::test::ViewerFixture::sizeLabel() const
{
    const QLayout *row = viewer->layout()->itemAt(0)->layout();
    return qobject_cast<QLabel *>(row->itemAt(row->indexOf(bar()) + 1)->widget());
}

QProgressBar *lumi::test::ViewerFixture::bar() const
{
    return viewer->findChild<QProgressBar *>();
}

QTimer *lumi::test::ViewerFixture::timer() const
{
    return viewer->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
}

PictureScrollView *lumi::test::ViewerFixture::scroll() const
{
    return viewer->findChild<PictureScrollView *>();
}

QSize lumi::test::ViewerFixture::room() const
{
    return scroll()->viewport()->size();
}

bool lumi::test::ViewerFixture::isDecoding() const
{
    return bar()->isVisibleTo(viewer.get());
}

QImage lumi::test::ViewerFixture::shot() const
{
    return shotOf(scroll()->viewport());
}

QRgb lumi::test::ViewerFixture::middle() const
{
    const QImage image = shot();
    return image.pixel(image.rect().center());
}

int lumi::test::ViewerFixture::count(QRgb colour) const
{
    const QImage image = shot();
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            found += isNear(image.pixel(x, y), colour) ? 1 : 0;
        }
    }
    return found;
}

void lumi::test::ViewerFixture::key(int key) const
{
    // QTest does not support device keys.
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(scroll(), &event);
    }
}
