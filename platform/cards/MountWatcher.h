// SPDX-License-Identifier: MIT
// Tells the program that a card was inserted or removed, by "mtabChanged()" on "QPE/Card". Watches
// the mount table and, for slots that are plain folders, the folders and the marker in them.
// The kernel reports every mount of the machine, in bursts. A message is sent when a burst is over
// and CardSlots has noticed a change.
#pragma once

#include "platform/files/fileCalls.h"

#include <QFileSystemWatcher>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QTimer>

namespace lumi {

class MountWatcher : public QObject
{
    Q_OBJECT

public:
    /// Watches the slots of the machine that is installed now.
    explicit MountWatcher(QObject *parent = nullptr);

private:
    void startLook();
    void look();
    void watchFolders();

    QStringList m_mountPoints;
    Descriptor m_table; ///< open while changes of it are reported
    QFileSystemWatcher m_folders;
    QTimer m_settle;
    QList<unsigned> m_told; ///< the generations of the last message
};

} // namespace lumi
