// SPDX-License-Identifier: MIT
// The folder and the names of swap files. The index may be damaged and name any path, so a path from
// it is checked here before a file is deleted.
#pragma once

#include <QString>

namespace lumi {

class SwapPlace
{
public:
    SwapPlace(const QString &folder, const QString &extension)
        : m_folder(folder)
        , m_extension(extension)
    { }

    /// The file of the image form: "0002s_100_a.jpg.swp" in the swap folder. The position is
    /// that of the control in the list, not its id.
    [[nodiscard]] QString imagePath(int position, char kind, int param, const QString &name) const;

    /// The file of the buffer form: as imagePath() without the kind.
    [[nodiscard]] QString bufferPath(int position, int param, const QString &name) const;

    /// True if the path lies directly in the swap folder and ends in the extension.
    [[nodiscard]] bool holds(const QString &path) const;

    /// Deletes the swap file, unless holds() is false for the path.
    void removeFile(const QString &path) const;

private:
    QString m_folder;
    QString m_extension;
};

} // namespace lumi
