// SPDX-License-Identifier: MIT
// Finds the program's pictures by name.
// Format: PNG files <resource folder>/pixmaps/<name>.png, on dense screens <name>@2x.png.
#pragma once

#include <QPixmap>
#include <QString>

struct Resource
{
    /// The picture of a name such as "lumivault/look_a", or a null pixmap. On a dense screen it
    /// may have a device pixel ratio of 2: lay out with deviceIndependentSize(), not size().
    static QPixmap loadPixmap(const QString &name);
    /// Whether there is a folder of pictures.
    static bool areInstalled();
    /// Path of the picture's file, or an empty string.
    static QString findPixmap(const QString &name);
};
