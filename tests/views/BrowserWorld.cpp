// SPDX-License-Identifier: MIT
#include "tests/views/BrowserWorld.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPixmap>
#include <QTest>

namespace {

// Red stands for set and kind, green for the focus: see frameColour().
constexpr const char *kFrames[] = {
    "frame_pic_l",     "frame_pic_l_on",     "frame_folder_l",      "frame_folder_l_on",
    "frame_folder_pl", "frame_folder_pl_on", "frame_folder_l_back", "frame_folder_l_back_on",
    "frame_pic_s",     "frame_pic_s_on",     "frame_folder_s",      "frame_folder_s_on",
    "frame_folder_ps", "frame_folder_ps_on", "frame_folder_s_back", "frame_folder_s_back_on",
};

void mustWork(bool ok, const QString &what)
{
    if (!ok) {
        qFatal("cannot make %s", qPrintable(what));
    }
}

} // namespace

lumi::test::BrowserWorld::BrowserWorld()
    : machine(FakeMachine::install())
    , store(QDir::homePath() + QStringLiteral("/Documents/Photo_Files"))
{
    QDir(store).removeRecursively();
    makeFolder(store);
    makePixmaps();
    machine->resources = m_resources.path();
}

lumi::test::BrowserWorld::~BrowserWorld()
{
    QDir(store).removeRecursively();
    Machine::install(nullptr);
}

QString lumi::test::BrowserWorld::path(const QString &name) const
{
    return name.startsWith(QLatin1Char('/')) ? name : QString(store + QLatin1Char('/') + name);
}

QString lumi::test::BrowserWorld::makeFolder(const QString &name)
{
    mustWork(QDir().mkpath(path(name)), name);
    return path(name);
}

QString lumi::test::BrowserWorld::makePhoto(const QString &name, QSize size, QColor colour)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    makeFolder(QFileInfo(path(name)).path());
    mustWork(image.save(path(name), "JPEG"), name);
    return path(name);
}

void lumi::test::BrowserWorld::makePhotos(int count, const QString &folder)
{
    for (int i = 0; i < count; ++i) {
        const QString name = QString::asprintf("a%02d.jpg", i);
        makePhoto(folder.isEmpty() ? name : QString(folder + QLatin1Char('/') + name));
    }
}

QString lumi::test::BrowserWorld::makeFile(const QString &name, const QByteArray &content)
{
    makeFolder(QFileInfo(path(name)).path());
    QFile file(path(name));
    mustWork(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), name);
    return path(name);
}

QColor lumi::test::BrowserWorld::frameColour(const QString &name)
{
    for (int i = 0; i < static_cast<int>(std::size(kFrames)); ++i) {
        if (name == QLatin1String(kFrames[i])) {
            return QColor(10 + 12 * i, 200, 40);
        }
    }
    return {};
}

QColor lumi::test::BrowserWorld::cardButtonColour(const QString &name)
{
    const int blue = name.contains(QLatin1String("_cf")) ? 60 : 120;
    if (name.endsWith(QLatin1String("_gray"))) {
        return {90, 90, blue};
    }
    return name.endsWith(QLatin1String("_push")) ? QColor(0, 90, blue) : QColor(0, 180, blue);
}

void lumi::test::BrowserWorld::makePixmaps()
{
    const QString folder = m_resources.path() + QStringLiteral("/pixmaps/lumivault/");
    makeFolder(folder);
    const auto save = [&folder](const QString &name, QSize size, const QColor &colour) {
        QPixmap pixmap(size);
        pixmap.fill(colour);
        mustWork(pixmap.save(QString(folder + name + QStringLiteral(".png"))), name);
    };
    for (const char *name : kFrames) {
        save(QLatin1String(name), QSize(30, 20), frameColour(QLatin1String(name)));
    }
    save(QStringLiteral("check_l"), QSize(24, 24), Qt::white);
    save(QStringLiteral("check_l_on"), QSize(24, 24), Qt::red);
    save(QStringLiteral("check_s"), QSize(16, 16), Qt::white);
    save(QStringLiteral("check_s_on"), QSize(16, 16), Qt::red);
    save(QStringLiteral("bg_left"), QSize(72, 400), Qt::gray);
    save(QStringLiteral("bg_right"), QSize(16, 16), QColor(0xCC, 0xCC, 0xCC));
    save(QStringLiteral("to_top"), QSize(28, 28), Qt::yellow);
    for (const char *name :
         {"copy_cf", "copy_cf_push", "copy_cf_gray", "copy_sd", "copy_sd_push", "copy_sd_gray"}) {
        save(QLatin1String(name), QSize(244, 112), cardButtonColour(QLatin1String(name)));
    }
    save(QStringLiteral("bg_right_copy"), QSize(16, 16), QColor(0xCC, 0xCC, 0xCC));
    for (const char *name : {"top_copy", "top_copy_push", "top_look", "top_look_push"}) {
        save(QLatin1String(name), QSize(236, 236), Qt::darkBlue);
    }
    for (const char *name : {"look_a", "look_b", "look_c", "look_d", "goto_top"}) {
        for (const char *state : {"", "_push", "_on", "_push_on"}) {
            save(QString(QLatin1String(name) + QLatin1String(state)), QSize(58, 58), Qt::blue);
        }
    }
}

QPixmap *lumi::test::NotingImage::thumbnail(int w, int h)
{
    asked.append(QSize(w, h));
    askedAt = QDeadlineTimer::current().deadline();
    if (fails) {
        return nullptr;
    }
    auto *pixmap = new QPixmap(answer);
    pixmap->fill(Qt::green);
    return pixmap;
}
