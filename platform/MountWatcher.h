// SPDX-License-Identifier: MIT
// Tells the program that a card came or went, by "mtabChanged()" on "QPE/Card". Watches the
// mount table and, for slots that are plain folders, the folders and the marker in them. The
// kernel reports every mount of the machine, in bursts, so a message goes out only if
// something about the two slots is different once the burst is over.
#pragma once

#include <QByteArrayList>
#include <QFile>
#include <QFileSystemWatcher>
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

    /// The lines of a mount table (in the form of /proc/self/mountinfo) whose mount point is
    /// one of these folders or holds one of them.
    [[nodiscard]] static QByteArrayList relevantMounts(const QByteArray &table,
                                                       const QStringList &folders);

private:
    void startLook();
    void look();
    void watchFolders();
    [[nodiscard]] QByteArray state() const;

    QStringList m_mountPoints;
    QFile m_table;
    QFileSystemWatcher m_folders;
    QTimer m_settle;
    QByteArray m_state;
};

} // namespace lumi
