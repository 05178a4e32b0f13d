// SPDX-License-Identifier: MIT
#include "app/common/Medium.h"

#include <QFile>

#include <algorithm>
#include <array>

#include <sys/stat.h>

namespace {

constexpr std::array<Slot, 2> kSlots{Slot::CF, Slot::SD};

bool isWithin(const QString &path, const QString &folder)
{
    return !folder.isEmpty() && (path == folder || path.startsWith(folder + QLatin1Char('/')));
}

bool isOnCard(const QString &path, Slot slot)
{
    const Machine &machine = Machine::instance();
    // A mount point that has gone is served by a stand-in, and is still this slot's path.
    return isWithin(path, machine.configuredMountPoint(slot))
        || isWithin(path, machine.mountPoint(slot));
}

bool isOnMissingCard(const QString &path)
{
    return std::any_of(kSlots.begin(), kSlots.end(), [&path](Slot slot) {
        return isOnCard(path, slot) && !lumi::isCardInSlot(slot);
    });
}

/// How often each slot was found empty.
std::array<unsigned, kSlots.size()> &timesEmpty()
{
    static std::array<unsigned, kSlots.size()> times{};
    return times;
}

/// How often the card that a folder lies on was not there; 0 for one that lies on none.
unsigned timesMissed(const QString &folder)
{
    unsigned times = 0;
    for (std::size_t i = 0; i < kSlots.size(); ++i) {
        times += isOnCard(folder, kSlots.at(i)) ? timesEmpty().at(i) : 0U;
    }
    return times;
}

} // namespace

bool lumi::isCardInSlot(Slot slot)
{
    return !QFile::exists(Machine::instance().mountPoint(slot) + QLatin1String("/NotAvailable"));
}

void lumi::noteEmptySlots()
{
    for (std::size_t i = 0; i < kSlots.size(); ++i) {
        timesEmpty().at(i) += isCardInSlot(kSlots.at(i)) ? 0U : 1U;
    }
}

lumi::Medium::Medium(const QString &folder)
    : m_folder(folder)
    , m_device(device())
    , m_timesMissed(timesMissed(folder))
{ }

bool lumi::Medium::isThere() const
{
    return !isOnMissingCard(m_folder) && timesMissed(m_folder) == m_timesMissed
        && (!m_device || device() == m_device);
}

std::optional<dev_t> lumi::Medium::device() const
{
    struct stat figures = {};
    const QByteArray folder = QFile::encodeName(m_folder);
    // From inside first, so that one that is mounted when somebody enters it is entered. Not
    // everybody may enter every folder.
    const bool isKnown = ::stat(QByteArray(folder + "/.").constData(), &figures) == 0
        || ::stat(folder.constData(), &figures) == 0;
    return isKnown ? std::make_optional(figures.st_dev) : std::nullopt;
}
