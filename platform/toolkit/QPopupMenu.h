// SPDX-License-Identifier: MIT
// A popup menu whose entries are known by number. Forms keep the numbers in their tables and use
// them to gray out and check entries, also those of submenus; exec() returns the number of the
// chosen entry. The number is stored in the data of the QAction.
// Separators stay where they were put, also at the top and in pairs.
#pragma once

#include <QMenu>

class QPopupMenu : public QMenu
{
    Q_OBJECT

public:
    explicit QPopupMenu(QWidget *parent = nullptr);

    /// Appends an entry that calls the slot when chosen. accel is a key code with modifiers,
    /// 0 for none. With id -1 the entry gets a negative number that no other entry has.
    /// Returns the number.
    template <typename Receiver, typename Slot>
    int insertItem(const QString &text, const Receiver *receiver, Slot slot, int accel = 0,
                   int id = -1)
    {
        QAction *action = addAction(text);
        connect(action, &QAction::triggered, receiver, slot);
        return identify(action, accel, id);
    }

    /// Appends an entry without a slot; exec() returns its number.
    int insertItem(const QString &text, int id = -1);

    /// Appends a submenu, which keeps its parent.
    int insertItem(const QString &text, QPopupMenu *popup, int id = -1);

    void insertSeparator() { addSeparator(); }

    /// The three setters also search the submenus. They ignore an unknown number.
    void setItemEnabled(int id, bool enable);
    /// The first call makes the entry checkable. Choosing a checkable entry toggles its mark before
    /// the slot runs, so set all marks at aboutToShow().
    void setItemChecked(int id, bool check);
    void setItemVisible(int id, bool visible);

    /// Shows the name of a key beside the text of the entry. It is no shortcut: the form handles
    /// the key. Null for none.
    static void showKey(QAction *action, const char *key);

    /// Null if neither this menu nor one of its submenus has such an entry.
    [[nodiscard]] QAction *findItem(int id) const;

    /// Runs the menu at a place of the screen. Returns the number of the chosen entry, or -1 if
    /// none was chosen.
    int exec(const QPoint &position);

protected:
    void initStyleOption(QStyleOptionMenuItem *option, const QAction *action) const override;

private:
    static int identify(QAction *action, int accel, int id);
};
