// SPDX-License-Identifier: MIT
// The four settings of the slideshow. They are kept as the rows of the lists; what a row means
// is the business of whoever starts a slideshow.
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
    /// Order, delay and loops mean nothing to a user who steps by hand.
    void combo_operation_activated(int row);
    void combo_activated(int row);
    // NOLINTEND(readability-identifier-naming)
    /// Stores all four rows, also those of disabled lists.
    void accept() override;
    /// Asks first if a list was used.
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
