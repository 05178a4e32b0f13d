// SPDX-License-Identifier: MIT
// The dialog of the slideshow's four settings. They are stored as row numbers of its lists. The
// caller that starts a slideshow turns them into values.
#pragma once

#include <QDialog>

class QComboBox;
class QGridLayout;

class DialogSlideshow : public QDialog
{
    Q_OBJECT

public:
    explicit DialogSlideshow(QWidget *parent = nullptr, const char *name = nullptr);

public Q_SLOTS:
    // NOLINTBEGIN(readability-identifier-naming): parts of the interface
    /// Order, delay and loops are enabled for the row "Auto" only.
    void combo_operation_activated(int row);
    void combo_activated(int row);
    // NOLINTEND(readability-identifier-naming)
    /// Stores all four rows, also those of disabled lists.
    void accept() override;
    /// If a list was used, asks first.
    void reject() override;

private:
    struct Choice;

    void addChoice(const Choice &choice, QGridLayout *grid, int line);

    QComboBox *m_comboOperation = nullptr;
    QComboBox *m_comboOrder = nullptr;
    QComboBox *m_comboDelay = nullptr;
    QComboBox *m_comboLoop = nullptr;
    bool m_changed = false;
};
