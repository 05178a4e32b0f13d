// SPDX-License-Identifier: MIT
// The blocks of one folder of photos, oldest first.
// Owns: its blocks.
#pragma once

#include "platform/toolkit/PtrList.h"
#include "swap/SwapBlock.h"

#include <QString>

class SwapControl : public PtrList<SwapBlock>
{
public:
    /// The folder is absolute, without trailing slash.
    SwapControl(const QString &folder, int id);

    [[nodiscard]] const QString &folder() const { return m_folder; }

    /// Unique within the list of controls; only serves to find the next free number.
    [[nodiscard]] int id() const { return m_id; }

    /// The full path of a source file of this folder.
    [[nodiscard]] QString sourcePath(const QString &name) const;

    /// The oldest block of this key, null without one. Later ones are never tried.
    [[nodiscard]] SwapBlock *findKey(const QString &name, int param, signed char kind) const;

    /// The oldest block of this name, whatever its param and kind; null without one.
    [[nodiscard]] SwapBlock *findName(const QString &name) const;

private:
    QString m_folder;
    int m_id;
};
