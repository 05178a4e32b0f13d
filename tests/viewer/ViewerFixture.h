// SPDX-License-Identifier: MIT
// The full-screen viewer over a list of pictures, opened the way the browser does it.
#pragma once

#include "items/FPVItemList.h"
#include "tests/viewer/ScriptedImage.h"
#include "tests/views/BrowserWorld.h"
#include "viewer/FPVPictureScrollView.h"
#include "viewer/PictureScrollView.h"
#include "views/FPVThumbnailView.h"

#include <QElapsedTimer>
#include <QImage>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class QLabel;
class QProgressBar;
class QToolButton;

namespace lumi::test {

/// Whether the colours agree within the losses of JPEG and of 16-bit pixels.
[[nodiscard]] bool isNear(QRgb one, QRgb other);

/// Suppresses the messages of libjpeg about broken files.
struct Silence
{
    Silence();
    ~Silence();
    Silence(const Silence &) = delete;
    Silence &operator=(const Silence &) = delete;

    QtMessageHandler previous;
};

/// Closes the message boxes that open over a viewer, and records their texts.
class BoxReader
{
public:
    BoxReader();

    QStringList texts; ///< "Title: text (buttons)"
    std::function<void()> whileOpen = [] {};

private:
    void read();

    QTimer m_timer;
};

class ViewerFixture
{
public:
    ViewerFixture();
    ~ViewerFixture();

    /// Appends a picture to the list.
    ScriptedImage *add(const QString &name, QSize size, int denominator = 1);
    /// Puts the cursor on the item and opens the viewer on it.
    FPVPictureScrollView *open(FPVItemImage *item);
    /// Runs it until it closes. False if it doesn't close on its own in time.
    [[nodiscard]] bool run(int ms = 3000);
    /// Waits until the picture is drawn and the viewing look is back. False if that takes too long.
    [[nodiscard]] bool waitForLook();
    /// After waitForLook(): shortens the second after which the zoom buttons are enabled.
    [[nodiscard]] bool waitForButtons() const;
    void close();

    [[nodiscard]] QToolButton *button(int index) const; ///< in the order of their row
    [[nodiscard]] QLabel *percent() const;
    [[nodiscard]] QLabel *sizeLabel() const;
    [[nodiscard]] QProgressBar *bar() const;
    [[nodiscard]] QTimer *timer() const; ///< of the viewer's steps
    [[nodiscard]] PictureScrollView *scroll() const;
    [[nodiscard]] QSize room() const;      ///< of the picture
    [[nodiscard]] bool isDecoding() const; ///< by its look
    [[nodiscard]] QImage shot() const;     ///< of the picture's place on the screen
    [[nodiscard]] QRgb middle() const;     ///< of that
    /// How many pixels of it have about this colour.
    [[nodiscard]] int count(QRgb colour) const;
    void key(int key) const;

    BrowserWorld world;
    FPVItemList items;
    std::unique_ptr<FPVThumbnailView> view;
    std::unique_ptr<FPVPictureScrollView> viewer;
    BoxReader boxes;
};

} // namespace lumi::test
