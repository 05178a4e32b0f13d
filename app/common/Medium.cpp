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

bool isOnMissingCard(const QString &path)
{
    const Machine &machine = Machine::instance();
    return std::any_of(kSlots.begin(), kSlots.end(), [&machine, &path](Slot slot) {
        // A mount point that has gone is served by a stand-in, and is still this slot's path.
        return (isWithin(path, machine.configuredMountPoint(slot))
                || isWithin(path, machine.mountPoint(slot)))
            && !lumi::isCardInSlot(slot);
    });
}

} // namespace

bool lumi::isCardInSlot(Slot slot)
{
    return !QFile::exists(Machine::instance().mountPoint(slot) + QLatin1String("/NotAvailable"));
}

lumi::Medium::Medium(const QString &folder)
    : m_folder(folder)
    , m_device(device())
{ }

bool lumi::Medium::isThere() const
{
    return !isOnMissingCard(m_folder) && (!m_device || device() == m_device);
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
