// SPDX-License-Identifier: MIT
// One page of the Exif editor: a line for every row of its group that can be edited, the
// label and the field with what the file holds.
#pragma once

#include "exif/ui/exifEditRules.h"

#include <QWidget>

#include <vector>

class FPVExifFields;
class MyMultiLineEdit;

namespace lumi {

class ExifEditPage : public QWidget
{
    Q_OBJECT

public:
    /// fields: lent for the time of the call; its group is changed.
    ExifEditPage(QWidget *parent, const EditPage &page, FPVExifFields *fields);

    /// In the order of the page's rules.
    [[nodiscard]] const std::vector<MyMultiLineEdit *> &edits() const { return m_edits; }

private:
    [[nodiscard]] MyMultiLineEdit *makeEdit(const EditRule &rule, const QString &text);

    std::vector<MyMultiLineEdit *> m_edits;
};

} // namespace lumi
