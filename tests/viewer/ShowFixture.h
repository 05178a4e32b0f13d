// SPDX-License-Identifier: MIT
// A slideshow of pictures whose decodes take as long as a test wants, and functions that watch it
// and answer its menu and its boxes.
#pragma once

#include "items/FPVItemImage.h"
#include "items/FPVItemList.h"
#include "tests/support/FakeMachine.h"
#include "viewer/SlideShow.h"

#include <QColor>
#include <QList>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace lumi {
class SlideMenu;
}

namespace lumi::test {

/// A picture of one colour with a file that is not decoded.
class SlowPicture : public FPVItemImage
{
public:
    SlowPicture(const QString &path, const QColor &colour);

    void setIncremental(bool incremental) override { m_incremental = incremental; }

    bool startDecode(int depth, QSize *outSize, QSize *request) override;
    uchar *decodedRaster(int depth, QSize *outSize, QSize *request) override;

    uchar *rasterBits() override { return m_raster.get(); }

    void releaseDecode() override;

    DecodeError errorCode() const override { return m_error; }

    bool inDecodeComplete() const override { return m_inDecodeComplete; }

    void setInDecodeComplete(bool on) override { m_inDecodeComplete = on; }

    std::unique_ptr<uchar[]> takeRaster() override { return std::move(m_raster); }

    /// Ends a running decode, with success or failure.
    void finish();

    [[nodiscard]] bool isDecoding() const { return m_run != 0; }

    int decodeMs = 0;                     ///< negative: until finish()
    std::optional<DecodeError> refuses;   ///< the start fails
    std::optional<DecodeError> breaksOff; ///< the decode fails in its middle
    std::function<void()> onStart;
    int starts = 0;
    int startsInOnePiece = 0;
    int completes = 0;
    QSize lastRequest;

private:
    QColor m_colour;
    bool m_incremental = true;
    int m_depth = 0;
    int m_run = 0; ///< number of the running decode, 0 for none
    std::unique_ptr<uchar[]> m_raster;
    DecodeError m_error = DecodeError::None;
    bool m_inDecodeComplete = false;
};

/// A delay that ends only if the test ends it.
inline constexpr int kLong = 600000;
/// How long a test waits before it fails.
inline constexpr int kPatienceMs = 20000;

struct ShowOptions
{
    bool autoMode = true;
    bool inOrder = true;
    int delay = kLong;
    int loops = 0;
    int start = 0;
};

class ShowFixture
{
public:
    ShowFixture();
    ~ShowFixture();

    SlowPicture *add(const QString &name, const QColor &colour = Qt::green);
    /// Pictures "a", "b" and so on, each of another colour.
    void addPictures(int count);
    void addFolder(const QString &name);
    [[nodiscard]] SlowPicture *picture(const char *name) const;
    [[nodiscard]] QString path(const char *name) const;
    bool removeFile(const char *name) const;

    SlideShow *make(const ShowOptions &options);
    /// Runs the show. Calls story when the first picture is on the screen, then closes the show if
    /// it still runs. The story may delete the show.
    int run(const std::function<void()> &story = {});
    /// Name of the picture on the screen, empty for none.
    [[nodiscard]] QString shown() const;
    [[nodiscard]] bool sees(const char *name);

    /// Names in the order in which they were shown, without immediate repetitions.
    [[nodiscard]] QStringList seen() const { return m_seen; }

    /// Waits until this many have been seen.
    [[nodiscard]] bool seesCount(int count) const;
    /// One of the show's timers, by its name.
    [[nodiscard]] QTimer *timer(const char *name) const;
    /// Lets the present delay end with the next events.
    void endDelay() const;
    /// Ends delays of kLong until these pictures, one letter each, were shown in this order.
    [[nodiscard]] bool playsOn(const char *names);
    /// The same until the show is over.
    [[nodiscard]] bool playsToItsEnd();
    [[nodiscard]] bool isOver() const;
    /// Waits for it.
    [[nodiscard]] bool ends() const;
    [[nodiscard]] QImage screen() const;

    [[nodiscard]] SlideMenu *menu() const;
    /// Opens the menu and does something there, which closes it.
    void inMenu(const std::function<void()> &act) const;
    /// Opens the menu and chooses.
    void choose(int entry) const;
    [[nodiscard]] static QMessageBox *box();
    /// Calls open, which opens a box before it returns, and act while the box is open.
    static void inBox(const std::function<void()> &open, const std::function<void()> &act);
    /// The same for anything that runs an event loop.
    static void inLoop(const std::function<bool()> &isOpen, const std::function<void()> &act,
                       const std::function<void()> &open);
    void key(int key) const;
    /// Any key code, also those that QTest cannot send.
    static void press(QWidget *target, int key);
    static void release(QWidget *target, int key);
    /// Delivers a message on the channel QPE/System.
    static void tell(const char *message);

    FakeMachine *machine; ///< lent
    FPVItemList source;
    QWidget parent;
    std::unique_ptr<SlideShow> show;
    bool hurriesFirst = true; ///< the first picture of run() comes without a wait

private:
    void watch();
    void hurryFirst() const;
    void hurry() const;

    QTemporaryDir m_folder;
    QStringList m_seen;
};

/// Records at the end of each delay of an automatic show which picture is shown, which is the next
/// one unless it is late, and the length of the following delay.
class DelayLog : public QObject
{
public:
    explicit DelayLog(const ShowFixture &show);

    QStringList shown;
    QList<int> lengths;
};

} // namespace lumi::test
