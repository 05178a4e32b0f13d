// SPDX-License-Identifier: MIT
// What was copied or cut in the browser: absolute paths in the order of taking, and whether
// the sources go away after a paste. It is the program's own and not the system's clipboard.
// A paste copies photos as they are, and of a folder the photos that lie directly in it. It
// never overwrites anything, and what was cut goes only when its copy is whole. What has come to
// a path with another card was not taken, and counts as missing.
// Owns: its list, and a buffer for the time of a paste.
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
    [[nodiscard]] const QStringList &paths() const { return m_paths; }

    [[nodiscard]] bool isCut() const { return m_cut; }

    void take(const QStringList &paths, bool cut);

    /// Pastes into a folder, one path after the other up to the first that fails; what went
    /// well before stays. A list, if there is one, gets an item for each new entry. What was
    /// cut is off the clipboard after it, however it ended. Events run while a folder is
    /// pasted: the list may go then, which ends the paste, but the clipboard must not. The name
    /// patterns of all later walks are those of photos after it.
    [[nodiscard]] lumi::PasteResult paste(const QString &folder, FPVItemList *list);

private:
    [[nodiscard]] lumi::PasteResult pastePath(const lumi::ChosenFile &source, const QString &folder,
                                              FPVItemList *list) const;
    [[nodiscard]] lumi::PasteResult pasteFile(const lumi::ChosenFile &chosen, const QString &wanted,
                                              FPVItemList *list) const;

    QStringList m_paths;
    QList<lumi::ChosenFile> m_files; ///< what was at the paths as they were taken
    bool m_cut = false;
    std::unique_ptr<char[]> m_buffer;
    int m_bufferSize = kBufferSize;

    static constexpr int kBufferSize = 8132;
};
