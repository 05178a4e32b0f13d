// SPDX-License-Identifier: MIT
// The info panel in a window of its own, and photos for it.
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

/// Does something while a wait dialog comes up, and counts wait dialogs.
class WaitVisitor : public QObject
{
public:
    WaitVisitor();

    std::function<void()> visit = [] {};
    QStringList texts;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// A photo of 80 x 60 with values in some of the groups.
[[nodiscard]] ExifBuilder describedPhoto();

class PanelFixture
{
public:
    PanelFixture();
    ~PanelFixture();

    [[nodiscard]] std::unique_ptr<FPVItemJpeg> put(const ExifBuilder &builder, const QString &name);
    /// Makes a panel that reads the settings anew.
    void makePanel();
    /// Of the browser's text, without empty ones; blanks that don't break are plain ones.
    [[nodiscard]] QStringList lines() const;

    PhotoFolder folder;
    std::unique_ptr<QWidget> window;
    MyImageWidget *panel = nullptr;
    QComboBox *combo = nullptr;
    QPushButton *button = nullptr;
    QTextBrowser *browser = nullptr;
    std::unique_ptr<FPVItemJpeg> item; ///< a described photo, "a.jpg"
};

} // namespace lumi::test
