// SPDX-License-Identifier: MIT
#include "tests/swap/SwapFixture.h"

#include "swap/swapStore.h"

#include <QApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTimer>

#include <algorithm>

namespace lumi::test {

namespace {

MessageLog *currentLog = nullptr;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // The offscreen platform logs this for every window.
    const bool offscreen = text.startsWith(QLatin1String("This plugin does not support"));
    if (type == QtWarningMsg && !offscreen) {
        currentLog->warnings.append(text);
    } else if (qstrcmp(context.category, "lumivault.trace") == 0) {
        currentLog->trace.append(text);
    }
}

} // namespace

MessageLog::MessageLog()
{
    currentLog = this;
    QLoggingCategory::setFilterRules(QStringLiteral("lumivault.trace.debug=true"));
    m_previous = qInstallMessageHandler(collect);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(m_previous);
    QLoggingCategory::setFilterRules(QString());
}

BoxCloser::BoxCloser()
    : m_timer(std::make_unique<QTimer>())
{
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] {
        closeBox();
    });
    m_timer->start(0);
}

BoxCloser::~BoxCloser() = default;

void BoxCloser::closeBox()
{
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box == nullptr) {
        return;
    }
    const QWidgetList windows = QApplication::topLevelWidgets();
    const bool other = std::any_of(windows.begin(), windows.end(), [box](const QWidget *window) {
        return window != box && window->isVisible();
    });
    boxes.append({box->windowTitle(), box->text(), static_cast<int>(box->icon()),
                  static_cast<int>(box->standardButtons()), box->parent() != nullptr, other});
    box->accept();
}

IndexBytes &IndexBytes::number(std::int32_t value)
{
    const auto bits = static_cast<std::uint32_t>(value);
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes.append(static_cast<char>(static_cast<unsigned char>(bits >> shift)));
    }
    return *this;
}

IndexBytes &IndexBytes::text(const QByteArray &characters)
{
    number(static_cast<std::int32_t>(characters.size()));
    const qsizetype field = (characters.size() + 4) / 4 * 4;
    bytes.append(characters.leftJustified(field, '\0'));
    return *this;
}

SwapFixture::SwapFixture()
    : machine(FakeMachine::install())
{
    machine->upright = false;
    setFreeKB(1000000);
}

SwapFixture::~SwapFixture()
{
    store.reset();
    QDir::setCurrent(QDir::rootPath());
    Machine::install(nullptr);
}

void SwapFixture::setFreeKB(int kilobytes) const
{
    // With blocks of one to two KB the figure is not rounded.
    machine->diskAt = [kilobytes](const QByteArray &) {
        return DiskFigures{1536, kilobytes, kilobytes, true};
    };
}

SwapSystem &SwapFixture::start()
{
    store = std::make_unique<SwapSystem>(QFile::encodeName(swapFolder()), QStringLiteral(".swp"));
    swapSystem(store.get());
    return *store;
}

void SwapFixture::stop()
{
    store.reset();
}

SwapSystem &SwapFixture::restart()
{
    stop();
    return start();
}

QString SwapFixture::path(const QString &relative) const
{
    return root.path() + QLatin1Char('/') + relative;
}

QString SwapFixture::indexPath() const
{
    return swapFolder() + QStringLiteral("/.SwapMng.bin");
}

QString SwapFixture::markerPath() const
{
    return swapFolder() + QStringLiteral("/.SwapMng.chk");
}

QString SwapFixture::swapFile(const QString &name) const
{
    return swapFolder() + QLatin1Char('/') + name;
}

QString SwapFixture::addPhoto(const QString &relative) const
{
    QString file = path(relative);
    QDir().mkpath(QFileInfo(file).path());
    writeFile(file, "photo");
    setFileTime(file, kTime * 1000);
    return file;
}

QStringList SwapFixture::swapFiles() const
{
    return QDir(swapFolder())
        .entryList({QStringLiteral("*.swp")}, QDir::AllEntries | QDir::Hidden | QDir::System,
                   QDir::Name);
}

void setFileTime(const QString &path, qint64 milliseconds)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)
        || !file.setFileTime(QDateTime::fromMSecsSinceEpoch(milliseconds),
                             QFileDevice::FileModificationTime)) {
        qFatal("can't date %s", qUtf8Printable(path));
    }
}

QMap<QString, QString> snapshot(const QString &folder)
{
    QMap<QString, QString> found;
    QDirIterator files(folder,
                       QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        const QFileInfo info = files.fileInfo();
        found.insert(info.filePath(),
                     QStringLiteral("%1 bytes, %2")
                         .arg(info.size())
                         .arg(info.lastModified().toMSecsSinceEpoch()));
    }
    return found;
}

QImage picture(int width, int height, int seed)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            image.setPixel(x, y, qRgb((x * 5 + seed) & 255, (y * 7 + seed * 3) & 255, seed & 255));
        }
    }
    return image;
}

int blockCount(const SwapSystem &store)
{
    int blocks = 0;
    for (const SwapControl *control : store.controls()) {
        blocks += control->count();
    }
    return blocks;
}

const SwapControl *controlOf(const SwapSystem &store, const QString &folder)
{
    const auto found = std::find_if(store.controls().begin(), store.controls().end(),
                                    [&folder](const SwapControl *control) {
                                        return control->folder() == folder;
                                    });
    return found == store.controls().end() ? nullptr : *found;
}

} // namespace lumi::test
