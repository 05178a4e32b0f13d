// SPDX-License-Identifier: MIT
// A directory in a listed folder. It has no thumbnail. The views draw it as a folder, with another
// frame if it contains photos.
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

    /// Whether the folder itself contains a photo, hidden ones included. Each call reads the
    /// directory up to the first photo.
    [[nodiscard]] bool hasPictures() const;
};
