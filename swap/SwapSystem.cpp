// SPDX-License-Identifier: MIT
#include "swap/SwapSystem.h"

#include "app/common/messages.h"
#include "platform/Machine.h"
#include "platform/debugLog.h"
#include "platform/files/NewFile.h"
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"
#include "swap/swapStore.h"
#include "swap/swapTime.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QSize>

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

namespace {

/// More folders than a store has blocks after a restart.
constexpr int kMostControls = 4096;

/// The id of a control if there is no memory for the search for a free one.
constexpr int kIdOfLastResort = 9999;

struct KindLimit
{
    char kind;
    int limit;
    int target;
};

constexpr KindLimit kKindLimits[] = {
    {'l', 200, 100},
    {'s', 400, 200},
    {'d', 400, 200},
};

/// The limit of a kind outside the table is 0.
KindLimit limitOf(char kind)
{
    const auto *found = std::find_if(std::begin(kKindLimits), std::end(kKindLimits),
                                     [kind](const KindLimit &row) {
                                         return row.kind == kind;
                                     });
    return found == std::end(kKindLimits) ? KindLimit{kind, 0, 0} : *found;
}

} // namespace

SwapSystem::SwapSystem(const QByteArray &folder, const QString &extension)
    : m_extension(extension)
    , m_swapFolder(QFile::decodeName(folder))
{
    enterFolder();
    m_controls.setAutoDelete(true);
    InitRead();
}

SwapSystem::~SwapSystem()
{
    lumi::releaseSwapSystem(this);
    InitWrite();
    m_current = nullptr;
    m_controls.clear();
}

void SwapSystem::enterFolder()
{
    if (QFileInfo(m_swapFolder).isSymLink()) {
        qWarning("SwapSystem: removing the link %s", qUtf8Printable(m_swapFolder));
        QFile::remove(m_swapFolder);
    }
    if (QDir::setCurrent(m_swapFolder)) {
        return;
    }
    if (mkpath(m_swapFolder) && QDir::setCurrent(m_swapFolder)) {
        debugLog("Create SwapSystem Directory(%s)", qUtf8Printable(m_swapFolder));
    } else {
        qWarning("Error SwapSystem(%s)", qUtf8Printable(m_swapFolder));
    }
}

QString SwapSystem::indexPath() const
{
    return m_swapFolder + QStringLiteral("/.SwapMng.bin");
}

QString SwapSystem::markerPath() const
{
    return m_swapFolder + QStringLiteral("/.SwapMng.chk");
}

QString SwapSystem::uprightPath() const
{
    return m_swapFolder + QStringLiteral("/.SwapMng.upright");
}

/// Stores of earlier versions have no file that says "upright". The file is changed last, so that the
/// next start repeats an interrupted one.
void SwapSystem::emptyIfTurnedOtherwise()
{
    const bool isUpright = Machine::instance().showsUpright();
    if (QFile::exists(uprightPath()) == isUpright) {
        return;
    }
    Clear();
    QFile::remove(indexPath());
    if (isUpright) {
        QFile(uprightPath()).open(QIODevice::ReadWrite | QIODevice::NewOnly);
    } else {
        QFile::remove(uprightPath());
    }
}

void SwapSystem::InitRead()
{
    emptyIfTurnedOtherwise();
    if (QFile::exists(markerPath())) {
        QMessageBox::critical(nullptr, msg(lumi::MsgError), msg(lumi::MsgTemporaryFilesCorrupted),
                              QMessageBox::Ok);
        Clear();
        QFile::remove(indexPath());
        return;
    }
    QFile(markerPath()).open(QIODevice::ReadWrite | QIODevice::NewOnly);
    QFile file(indexPath());
    if (!lumi::isRegular(indexPath()) || !file.open(QIODevice::ReadOnly)) {
        qWarning("SwapSystem::InitRead Not Initialze File"); // sic
        return;
    }
    lumi::IndexReader index(lumi::IndexReader::bytesOf(file));
    lumi::IndexHeader header;
    bool more = index.readHeader(header);
    const int count = std::min(header.controlCount, kMostControls);
    for (int i = 0; more && i < count; ++i) {
        more = readControl(index);
    }
}

bool SwapSystem::readControl(lumi::IndexReader &index)
{
    lumi::ControlRecord record;
    if (!index.readControl(record)) {
        return false;
    }
    SetCurrent(record.folder, record.id);
    if (m_current == nullptr) {
        return false;
    }
    for (int i = 0; !index.failed() && i < record.blockCount; ++i) {
        auto block = std::make_unique<SwapBlock>(index, record.folder, place());
        if (block->isValid()) {
            m_current->append(block.release());
        }
    }
    if (m_current->isEmpty()) {
        removeControl(m_current);
    }
    return !index.failed();
}

void SwapSystem::InitWrite()
{
    QFile::remove(markerPath());
    lumi::IndexWriter index;
    index.writeHeader({lumi::swapSeconds(QDateTime::currentDateTime()), m_controls.count()});
    for (const SwapControl *control : m_controls) {
        index.writeControl({control->id(), control->count(), control->folder()});
        for (const SwapBlock *block : *control) {
            index.writeBlock(block->record());
        }
    }
    if (!replaceIndex(index.bytes())) {
        qWarning("SwapSystem::InitWrite Not Initialze File"); // sic
    }
}

/// If the disk is full, the old index stays.
bool SwapSystem::replaceIndex(const QByteArray &bytes) const
{
    lumi::NewFile file(indexPath());
    if (!file.open() || file.write(bytes.constData(), bytes.size()) != bytes.size()) {
        return false;
    }
    QFile::remove(indexPath());
    return file.commit();
}

void SwapSystem::SetCurrent(const QString &folder, int id)
{
    m_current = nullptr;
    if (folder.isEmpty()) {
        qWarning("SwapSystem::SetCurrent / String Empty");
        return;
    }
    const auto found
        = std::find_if(m_controls.begin(), m_controls.end(), [&folder](const SwapControl *control) {
              return control->folder() == folder;
          });
    if (found != m_controls.end()) {
        debugLog("SwapSystem::SetCurrent / Match");
        m_current = *found;
        return;
    }
    m_current = new SwapControl(folder, id == -1 ? lowestFreeId() : id);
    m_controls.append(m_current);
    debugLog("SwapSystem::SetCurrent / Append(%s)", qUtf8Printable(folder));
}

int SwapSystem::lowestFreeId() const
{
    const std::size_t places = static_cast<std::size_t>(m_controls.count()) + 1;
    const std::unique_ptr<bool[]> used(new (std::nothrow) bool[places]);
    if (used == nullptr) {
        return kIdOfLastResort;
    }
    std::fill_n(used.get(), places, false);
    for (const SwapControl *control : m_controls) {
        if (control->id() >= 0 && control->id() <= m_controls.count()) {
            used[static_cast<std::size_t>(control->id())] = true;
        }
    }
    return static_cast<int>(std::find(used.get(), used.get() + places, false) - used.get());
}

int SwapSystem::currentPosition() const
{
    const auto found = std::find(m_controls.begin(), m_controls.end(), m_current);
    return static_cast<int>(found - m_controls.begin());
}

bool SwapSystem::needCurrent(const char *caller)
{
    if (m_current == nullptr) {
        SetCurrent(QDir::currentPath(), -1);
    }
    if (m_current == nullptr) {
        qWarning("SwapSystem::%s / SwapControl Empty", caller);
    }
    return m_current != nullptr;
}

int SwapSystem::countKind(signed char kind)
{
    std::ptrdiff_t blocks = 0;
    for (const SwapControl *control = m_controls.first(); control != nullptr;
         control = m_controls.next()) {
        blocks += std::count_if(control->begin(), control->end(), [kind](const SwapBlock *block) {
            return block->kind() == kind;
        });
    }
    return static_cast<int>(blocks);
}

void SwapSystem::trim(signed char kind, int target)
{
    m_current = m_controls.first();
    while (m_current != nullptr) {
        trimCurrent(kind);
        m_current = m_controls.next();
        // countKind() moves the same cursor to the end, so the next call of next() returns null:
        // at most two controls are trimmed. This is required.
        if (countKind(kind) <= target) {
            break;
        }
    }
    m_current = nullptr;
}

void SwapSystem::trimCurrent(signed char kind)
{
    for (SwapBlock *block : *m_current) {
        if (block->isValid() && block->kind() == kind) {
            place().removeFile(block->swapPath());
        }
        block->invalidate();
    }
}

bool SwapSystem::bAppend(const QString &name, QImage *image, int param, char kind)
{
    const KindLimit row = limitOf(kind);
    const auto swapKind = static_cast<signed char>(kind);
    if (countKind(swapKind) > row.limit) {
        trim(swapKind, row.target);
    }
    if (!needCurrent("bAppend")) {
        return false;
    }
    stSwap swap{image, nullptr, 0, param, swapKind};
    return append(name, place().imagePath(currentPosition(), kind, param, name), swap);
}

bool SwapSystem::bAppend(const QString &name, unsigned char *buf, int size, int param)
{
    if (!needCurrent("bAppend")) {
        return false;
    }
    stSwap swap{nullptr, buf, size, param, 0};
    return append(name, place().bufferPath(currentPosition(), param, name), swap);
}

bool SwapSystem::append(const QString &name, const QString &swapPath, stSwap &swap)
{
    auto *block = new SwapBlock(name, swapPath, swap.param, swap.kind);
    m_current->append(block);
    return block->bWrite(swap, QFileInfo(m_current->sourcePath(name)).lastModified());
}

bool SwapSystem::bLoad(const QString &name, QImage *image, int param, char kind)
{
    stSwap swap{image, nullptr, 0, param, static_cast<signed char>(kind)};
    return load(name, swap);
}

bool SwapSystem::bLoad(const QString &name, unsigned char *buf, int *size, int param)
{
    stSwap swap{nullptr, buf, *size, param, 0};
    const bool loaded = load(name, swap);
    if (loaded) {
        *size = swap.size;
    }
    return loaded;
}

bool SwapSystem::load(const QString &name, stSwap &swap)
{
    if (!needCurrent("bLoad")) {
        return false;
    }
    SwapBlock *block = m_current->findKey(name, swap.param, swap.kind);
    return block != nullptr
        && block->bRead(swap, QFileInfo(m_current->sourcePath(name)).lastModified());
}

bool SwapSystem::bGetSize(const QString &name, QSize *size)
{
    if (!needCurrent("bGetSize")) {
        return false;
    }
    const SwapBlock *block = m_current->findName(name);
    if (block != nullptr) {
        *size = QSize(block->width(), block->height());
    }
    return block != nullptr;
}

bool SwapSystem::bSetSize(const QString &name, const QSize *size)
{
    if (!needCurrent("bSetSize")) {
        return false;
    }
    SwapBlock *block = m_current->findName(name);
    if (block != nullptr) {
        block->setSize(size->width(), size->height());
    }
    return block != nullptr;
}

bool SwapSystem::bRemoveControl(const QString &folder)
{
    SetCurrent(folder, -1);
    if (m_current == nullptr) {
        return false;
    }
    // Deleted last, because `folder` may be the string of this control.
    m_controls.findRef(m_current);
    const std::unique_ptr<SwapControl> control(m_controls.take());
    m_current = nullptr;
    return remove(folder);
}

void SwapSystem::removeControl(const SwapControl *control)
{
    if (control == m_current) {
        m_current = nullptr;
    }
    m_controls.remove(control);
}

void SwapSystem::Clear()
{
    clearFiles();
    // A copy, because the control is deleted.
    const QString folder = m_current != nullptr ? m_current->folder() : QString();
    m_current = nullptr;
    m_controls.clear();
    if (!folder.isEmpty()) {
        SetCurrent(folder, -1);
    }
}

void SwapSystem::clearFiles()
{
    const bool entered = QDir::setCurrent(m_swapFolder);
    debugLog("SwapSystem::Clear / [%s]", qUtf8Printable(QDir::currentPath()));
    if (!entered) {
        return;
    }
    // The full path makes sure that only files of the store are removed.
    QDir folder(m_swapFolder);
    const QStringList names
        = folder.entryList({QLatin1Char('*') + m_extension},
                           QDir::Files | QDir::NoSymLinks | QDir::Readable | QDir::Writable);
    debugLog("SwapSystem::Clear / RemoveCount(%d files)", static_cast<int>(names.size()));
    for (const QString &name : names) {
        debugLog("SwapSystem::Clear / remove [%s]", qUtf8Printable(name));
        folder.remove(name);
    }
}
