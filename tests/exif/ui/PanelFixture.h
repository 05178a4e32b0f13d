// SPDX-License-Identifier: MIT
// An info panel in its own window, and photos for it.
#pragma once

#include "exif/ui/MyImageWidget.h"
#include "items/FPVItemJpeg.h"
#include "tests/exif/PhotoFolder.h"

#include <QComboBox>
#include <QObject>
#include <QPushButton>
#include <QStringList>
#include <QTextBrowser>
#include <QWidget>

#include <functional>
#include <memory>

namespace lumi::test {

/// Counts wait dialogs and calls a function when one is shown.
class WaitVisitor : public QObject
{
public:
    WaitVisitor();

    std::function<void()> visit = [] {};
    QStringList texts;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// A photo of 80 x 60 pixels with values in some groups.
[[nodiscard]] ExifBuilder describedPhoto();

class PanelFixture
{
public:
    PanelFixture();
    ~PanelFixture();

    [[nodiscard]] std::unique_ptr<FPVItemJpeg> put(const ExifBuilder &builder, const QString &name);
    /// Creates a new panel, which reads the settings.
    void makePanel();
    /// The non-empty lines of the text, with plain blanks for non-breaking ones.
    [[nodiscard]] QStringList lines() const;

    PhotoFolder folder;
    std::unique_ptr<QWidget> window;
    MyImageWidget *panel = nullptr;
    QComboBox *combo = nullptr;
    QPushButton *button = nullptr;
    QTextBrowser *browser = nullptr;
    std::unique_ptr<FPVItemJpeg> item; ///< of describedPhoto(), "a.jpg"
};

} // namespace lumi::test
