// SPDX-License-Identifier: MIT
// One page of the Exif editor: label and field for each row of its group that is not read-only.
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
    /// fields: the values of the photo; its group is changed.
    ExifEditPage(QWidget *parent, const EditPage &page, FPVExifFields *fields);

    /// In the order of the page's rules.
    [[nodiscard]] const std::vector<MyMultiLineEdit *> &edits() const { return m_edits; }

private:
    [[nodiscard]] MyMultiLineEdit *makeEdit(const EditRule &rule, const QString &text);

    std::vector<MyMultiLineEdit *> m_edits;
};

} // namespace lumi
