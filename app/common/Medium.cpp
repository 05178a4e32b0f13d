// SPDX-License-Identifier: MIT
#include "app/common/Medium.h"

#include "platform/cards/CardSlots.h"

#include <QFile>

#include <sys/stat.h>

namespace {

unsigned generationOf(const QString &folder)
{
    const std::optional<Slot> slot = lumi::CardSlots::slotOf(folder);
    return slot ? lumi::CardSlots::generation(*slot) : 0;
}

} // namespace

lumi::Medium::Medium(const QString &folder)
    : m_folder(folder)
    , m_device(device())
    , m_generation(generationOf(folder))
{ }

bool lumi::Medium::isThere() const
{
    return isCardThere() && (!m_device || device() == m_device);
}

bool lumi::Medium::isCardThere() const
{
    const std::optional<Slot> slot = CardSlots::slotOf(m_folder);
    return !slot || (CardSlots::isPresent(*slot) && CardSlots::generation(*slot) == m_generation);
}

std::optional<dev_t> lumi::Medium::device() const
{
    struct stat figures = {};
    const QByteArray folder = QFile::encodeName(m_folder);
    // "/." enters the folder, which makes an automounter mount it. Without the right to enter, the
    // folder itself is looked at.
    const bool isKnown = ::stat(QByteArray(folder + "/.").constData(), &figures) == 0
        || ::stat(folder.constData(), &figures) == 0;
    return isKnown ? std::make_optional(figures.st_dev) : std::nullopt;
}
