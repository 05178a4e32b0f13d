// SPDX-License-Identifier: MIT
// What was copied or cut in the browser: absolute paths in the given order, and whether a paste
// removes the sources. It is independent of the system's clipboard.
// A paste copies photos unchanged, and of a folder the photos that lie directly in it. It never
// overwrites anything. The source of a cut is removed only when its copy is complete. A file that
// another card has brought to a path counts as missing.
#pragma once

#include "app/common/ChosenFile.h"
#include "files/engine/PasteResult.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class FPVItemList;

class FPVClipboard
{
public:
    [[nodiscard]] QStringList paths() const;

    [[nodiscard]] bool isCut() const { return m_cut; }

    void take(const QStringList &paths, bool cut);

    /// Pastes the paths into a folder in order and stops at the first failure, or after the file in
    /// hand if the program is asked to end, which is no failure. Copies made before it stay. A cut
    /// clipboard is empty afterwards, even after a failure. Events run while a
    /// folder is pasted. All later walks use the name patterns of photos.
    /// @param list gets an item for each new entry; may be null
    [[nodiscard]] lumi::PasteResult paste(const QString &folder, FPVItemList *list);

private:
    [[nodiscard]] lumi::PasteResult pastePath(const lumi::ChosenFile &source, const QString &folder,
                                              FPVItemList *list) const;
    [[nodiscard]] lumi::PasteResult pasteFile(const lumi::ChosenFile &chosen, const QString &wanted,
                                              FPVItemList *list) const;

    QList<lumi::ChosenFile> m_files; ///< as they were when take() was called
    bool m_cut = false;
    std::unique_ptr<char[]> m_buffer; ///< needed for every paste, though it is not used

    static constexpr std::size_t kBufferSize = 8132;
};
