// SPDX-License-Identifier: MIT
// The card or other file system that a folder was on when this object was made. When a card is
// unmounted, its folder remains as an empty folder of the device's own disk. Nothing may be written
// there: the next card hides it.
#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

namespace lumi {

class Medium
{
public:
    /// Belongs to no folder; always there.
    Medium() = default;
    explicit Medium(const QString &folder);

    /// False once the folder is on another file system or is gone, and once its card was taken out
    /// or exchanged. A folder elsewhere that never existed counts as there.
    [[nodiscard]] bool isThere() const;

private:
    [[nodiscard]] bool isCardThere() const;
    [[nodiscard]] std::optional<dev_t> device() const;

    QString m_folder;
    std::optional<dev_t> m_device;
    unsigned m_generation = 0; ///< of the folder's slot, 0 if it is on none
};

} // namespace lumi
