// SPDX-License-Identifier: MIT
#include "tests/import/ImportFixture.h"

#include "files/engine/FPVFileTree.h"
#include "files/engine/copyFile.h"
#include "platform/cards/CardSlots.h"
#include "platform/session/QCopChannel.h"
#include "widgets/MyImageButton.h"

#include <QApplication>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QTest>

#include <unistd.h>

lumi::test::ImportFixture::ImportFixture()
    : toolBar(&window)
{
    window.resize(640, 480);
    FPVFileTree::resetState();
    setCopyCancelled(false);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        look();
    });
}

lumi::test::ImportFixture::~ImportFixture()
{
    form.reset();
}

void lumi::test::ImportFixture::start()
{
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window)) {
        qFatal("the window can't have the focus");
    }
    form = std::make_unique<FormImport>(&window, &toolBar);
    window.setCentralWidget(form.get());
    const auto buttons = form->findChildren<MyImageButton *>();
    for (MyImageButton *button : buttons) {
        if (button->pos() == QPoint(26, 117)) {
            cf = button;
        } else if (button->pos() == QPoint(284, 117)) {
            sd = button;
        }
    }
    const auto labels = cf->parentWidget()->findChildren<QLabel *>();
    for (QLabel *label : labels) {
        if (label->pos() == QPoint(34, 238)) {
            memory = label;
        } else if (label->pos() == QPoint(32, 286)) {
            capacity = label;
        }
    }
    form->formStarted();
    QCoreApplication::processEvents();
}

void lumi::test::ImportFixture::insertCard(Slot slot, const QStringList &files, qsizetype size)
{
    world.machine->insertCard(slot);
    for (const QString &name : files) {
        writeBytes(card(slot) + QLatin1Char('/') + name, size);
    }
}

void lumi::test::ImportFixture::when(std::function<bool()> isTime, std::function<void()> doIt)
{
    m_deeds.append({std::move(isTime), std::move(doIt)});
    m_timer.start(0);
}

void lumi::test::ImportFixture::whenInFile(const QString &name, std::function<void()> doIt)
{
    when(
        [name] {
            const int source = openFile(QLatin1Char('/') + name);
            return source >= 0 && ::lseek(source, 0, SEEK_CUR) > 0;
        },
        std::move(doIt));
}

void lumi::test::ImportFixture::look()
{
    if (m_deeds.isEmpty() || !m_deeds.constFirst().isTime()) {
        return;
    }
    const Deed deed = m_deeds.takeFirst();
    if (m_deeds.isEmpty()) {
        m_timer.stop();
    }
    deed.doIt();
}

void lumi::test::ImportFixture::setFreeKB(qint64 kb) const
{
    world.machine->diskAt = [kb](const QByteArray &) {
        return DiskFigures{2048, kb, kb / 2, true};
    };
}

void lumi::test::ImportFixture::tellCardChange() const
{
    lumi::CardSlots::look(); // as MountWatcher does before it sends the message
    QCopChannel::send("QPE/Card", "mtabChanged()");
    QCoreApplication::processEvents();
}

QString lumi::test::ImportFixture::target(const QString &name) const
{
    return world.store + QLatin1Char('/') + name;
}

QStringList lumi::test::ImportFixture::folders() const
{
    return QDir(world.store).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
}

bool lumi::test::ImportFixture::pressNow(const QString &button)
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    return dialog != nullptr && DialogDriver::pressButton(dialog, button);
}

QString lumi::test::todaysFolder()
{
    return QDate::currentDate().toString(QStringLiteral("yyyyMMdd_"));
}
