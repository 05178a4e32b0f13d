// SPDX-License-Identifier: MIT
#include "platform/cards/CardSlots.h"

#include <QFile>

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// STATX_MNT_ID_UNIQUE of newer headers. Older kernels ignore it and give the number of mountinfo,
/// which they reuse after an unmount.
constexpr unsigned kUniqueMountId = 0x4000;

/// The properties by which two cards in a slot differ.
struct Look
{
    bool operator==(const Look &other) const = default;

    bool isPresent = false;
    quint64 mount = 0;
    quint64 device = 0;
    quint64 inode = 0; // of the folder
};

struct State
{
    std::optional<Look> last;
    unsigned generation = 0;
};

Look lookAt(const QString &folder)
{
    Look look;
    struct statx figures = {};
    const QByteArray path = QFile::encodeName(folder);
    // A slot's folder may be a link. The figures are those of the folder behind it.
    if (::statx(AT_FDCWD, path.constData(), 0, STATX_BASIC_STATS | STATX_MNT_ID | kUniqueMountId,
                &figures)
        == 0) {
        look.isPresent = !QFile::exists(folder + QLatin1String("/NotAvailable"));
        look.mount = figures.stx_mnt_id;
        look.device = (quint64(figures.stx_dev_major) << 32) + figures.stx_dev_minor;
        look.inode = figures.stx_ino;
    }
    return look;
}

State &lookedAt(Slot slot)
{
    static std::array<State, lumi::CardSlots::kAll.size()> states;
    State &state = states.at(static_cast<std::size_t>(slot));
    const Look now = lookAt(lumi::CardSlots::mountPoint(slot));
    if (state.last != now) {
        ++state.generation;
    }
    state.last = now;
    return state;
}

bool isWithin(const QString &path, const QString &folder)
{
    return !folder.isEmpty() && (path == folder || path.startsWith(folder + QLatin1Char('/')));
}

} // namespace

QString lumi::CardSlots::mountPoint(Slot slot)
{
    return Machine::instance().mountPoint(slot);
}

bool lumi::CardSlots::isPresent(Slot slot)
{
    return lookedAt(slot).last->isPresent;
}

std::optional<Slot> lumi::CardSlots::slotOf(const QString &path)
{
    const auto *found = std::find_if(kAll.begin(), kAll.end(), [&path](Slot slot) {
        return isWithin(path, mountPoint(slot));
    });
    return found != kAll.end() ? std::optional(*found) : std::nullopt;
}

unsigned lumi::CardSlots::generation(Slot slot)
{
    return lookedAt(slot).generation;
}

void lumi::CardSlots::look()
{
    for (const Slot slot : kAll) {
        (void)lookedAt(slot);
    }
}
