// SPDX-License-Identifier: MIT
// A directory in a listed folder. It has no thumbnail of its own: the views draw it as a
// folder, in another way when it holds photos.
#pragma once

#include "items/FPVItemObject.h"

class FPVItemFolder : public FPVItemObject
{
    Q_OBJECT

public:
    FPVItemFolder() = default;
    FPVItemFolder(const QString &path, const QString &displayName, bool checked);

    [[nodiscard]] int itemKind() const override;
    [[nodiscard]] int kindFlag1() const override;
    [[nodiscard]] int kindFlag2() const override;

    /// Whether the folder directly holds a photo, hidden ones included. Reads the directory
    /// up to the first photo, on every call.
    [[nodiscard]] bool hasPictures() const;
};
