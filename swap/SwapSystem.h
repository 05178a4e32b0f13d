// SPDX-License-Identifier: MIT
// The swap store: a cache of thumbnails on disk that survives between runs. It owns the swap folder
// and one control per photo folder, and loads and saves the index. A run marker exists in the
// folder from the start to a clean end. If the store finds a marker at its start, it empties
// itself, because its files can't be trusted. Another file says that the thumbnails are upright; a
// store made with the other setting of the machine is emptied, too. Failures are not shown to the
// user: the thumbnail is made again.
// Construction and Clear() change the working directory, whose control is used when no control is
// current.
// Owns: the controls and, through them, the blocks.
#pragma once

#include "platform/toolkit/PtrList.h"
#include "swap/SwapControl.h"
#include "swap/SwapPlace.h"

#include <QByteArray>
#include <QDir>
#include <QString>

class QImage;
class QSize;

class SwapSystem : public QDir
{
public:
    /// folder: an absolute path in the encoding of the file system; created if it is missing.
    /// May show a message box.
    SwapSystem(const QByteArray &folder, const QString &extension);

    /// Writes the index.
    ~SwapSystem();

    SwapSystem(const SwapSystem &) = delete;
    SwapSystem &operator=(const SwapSystem &) = delete;

    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    void InitRead();
    void InitWrite();

    /// Makes the control of this folder current. If it is new, it gets this id, or the lowest free
    /// one for -1. An empty folder makes no control current.
    void SetCurrent(const QString &folder, int id);

    /// Deletes the swap files and all blocks; a current folder stays current. Index and run
    /// marker stay.
    void Clear();
    // NOLINTEND(readability-identifier-naming)

    /// All of these work on the current control, and on that of the working directory if there
    /// is none. The name is that of the source file, without folder.
    [[nodiscard]] bool bAppend(const QString &name, QImage *image, int param, char kind);
    [[nodiscard]] bool bAppend(const QString &name, unsigned char *buf, int size, int param);
    [[nodiscard]] bool bLoad(const QString &name, QImage *image, int param, char kind);

    /// size: in, the size of the buffer; out, the number of bytes read.
    [[nodiscard]] bool bLoad(const QString &name, unsigned char *buf, int *size, int param);
    [[nodiscard]] bool bGetSize(const QString &name, QSize *size);
    [[nodiscard]] bool bSetSize(const QString &name, const QSize *size);

    /// Removes the folder's control, then a file (not a folder) of the folder's name. Returns
    /// whether the file was removed.
    [[nodiscard]] bool bRemoveControl(const QString &folder);

    /// Null when none is current.
    [[nodiscard]] const SwapControl *current() const { return m_current; }

    /// For looking at the store without moving its cursor.
    [[nodiscard]] const PtrList<SwapControl> &controls() const { return m_controls; }

private:
    [[nodiscard]] lumi::SwapPlace place() const { return {m_swapFolder, m_extension}; }

    [[nodiscard]] QString indexPath() const;
    [[nodiscard]] QString markerPath() const;
    [[nodiscard]] QString uprightPath() const;
    [[nodiscard]] int lowestFreeId() const;
    [[nodiscard]] int currentPosition() const;
    [[nodiscard]] int countKind(signed char kind);

    void enterFolder();
    void emptyIfTurnedOtherwise();
    bool readControl(lumi::IndexReader &index);
    [[nodiscard]] bool replaceIndex(const QByteArray &bytes) const;
    void removeControl(const SwapControl *control);
    void clearFiles();
    void trim(signed char kind, int target);
    void trimCurrent(signed char kind);
    bool needCurrent(const char *caller);
    bool append(const QString &name, const QString &swapPath, stSwap &swap);
    bool load(const QString &name, stSwap &swap);

    static constexpr int kWorkAreaBytes = 131072;

    QString m_extension;
    QString m_swapFolder;
    [[maybe_unused]] char m_workArea[kWorkAreaBytes] = {};
    PtrList<SwapControl> m_controls;
    SwapControl *m_current = nullptr;
};
