// SPDX-License-Identifier: MIT
// A run of the swap store with each call disturbed: open, store a thumbnail, close. Swap files and
// index are whole or missing, and the next run never loads a wrong picture.
#include "swap/IndexReader.h"
#include "swap/IndexWriter.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

using lumi::test::Ending;
using lumi::test::Tree;

namespace {

constexpr int kWidth = 80;
constexpr char kKind = 'l';
const QString kIndex = QStringLiteral(".SwapMng.bin");
const QString kMarker = QStringLiteral(".SwapMng.chk");
const QString kUpright = QStringLiteral(".SwapMng.upright");

/// A picture of one colour, so that compression does not change its pixels.
QImage thumbnail(Qt::GlobalColor colour)
{
    QImage image(kWidth, kWidth, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

/// Whether the index can be read to its end and has nothing behind it.
bool isWholeIndex(const QByteArray &bytes)
{
    lumi::IndexReader reader(bytes);
    lumi::IndexWriter writer;
    lumi::IndexHeader header;
    bool isGood = reader.readHeader(header);
    writer.writeHeader(header);
    for (int i = 0; isGood && i < header.controlCount; ++i) {
        lumi::ControlRecord control;
        isGood = reader.readControl(control);
        writer.writeControl(control);
        for (int j = 0; isGood && j < control.blockCount; ++j) {
            lumi::BlockRecord block;
            isGood = reader.readBlock(block);
            writer.writeBlock(block);
        }
    }
    return isGood && writer.bytes() == bytes;
}

/// Whether the stored picture of the photo, if there is one, is the right one.
bool isMissOrRight(const QString &photo, Qt::GlobalColor colour)
{
    QImage loaded;
    if (!SwapLoad(photo, &loaded, kWidth, kKind)) {
        return true;
    }
    lumi::test::note(photo);
    return loaded.size() == QSize(kWidth, kWidth)
        && qAbs(qRed(loaded.pixel(0, 0)) - QColor(colour).red()) < 3;
}

} // namespace

class TestFaultySwap : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {folder()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return false; }

    int leastCalls() const override { return 15; }

private:
    [[nodiscard]] QString folder() const { return path(QStringLiteral(".photo_swp")); }

    [[nodiscard]] QString photo(const char *name) const { return path(QLatin1String(name)); }

    [[nodiscard]] int run(const char *name, Qt::GlobalColor colour) const;
    [[nodiscard]] QString judgeNextRun(const Ending &ending) const;

    Tree m_whole; ///< the folder after the job
};

int TestFaultySwap::run(const char *name, Qt::GlobalColor colour) const
{
    SwapSystem store(QFile::encodeName(folder()), QStringLiteral(".swp"));
    swapSystem(&store);
    QImage image = thumbnail(colour);
    return SwapAppend(photo(name), &image, kWidth, kKind) ? 0 : 1;
}

void TestFaultySwap::prepare()
{
    const auto earlierRun = [this] {
        return run("a.jpg", Qt::red);
    };
    if (m_whole.isEmpty()) {
        make(QStringLiteral("a.jpg"), "a photo");
        make(QStringLiteral("b.jpg"), "another photo");
        QCOMPARE(lumi::test::runInChild({}, {}, earlierRun).result, 0);
        QCOMPARE(lumi::test::runInChild({}, {},
                                        [this] {
                                            return job();
                                        })
                     .result,
                 0);
        m_whole = lumi::test::treeOf(folder());
        QCOMPARE(m_whole.size(), qsizetype(4));
    }
    QDir(folder()).removeRecursively();
    QCOMPARE(lumi::test::runInChild({}, {}, earlierRun).result, 0);
}

int TestFaultySwap::job()
{
    return run("b.jpg", Qt::blue);
}

QString TestFaultySwap::judge(const Ending &ending)
{
    Tree made = newTree(folder(), {kIndex, kMarker, kUpright});
    made.remove(kUpright);
    const QByteArray index = made.take(kIndex);
    const bool hasMarker = !made.take(kMarker).isNull();
    if (!index.isNull() && !isWholeIndex(index.mid(4))) {
        return QStringLiteral("the index is not whole");
    }
    for (auto it = made.begin(); it != made.end(); ++it) {
        if (it.value() != m_whole.value(it.key())) {
            return it.key() + QStringLiteral(" is not whole");
        }
    }
    // A start that can't see how the thumbnails are turned empties the store.
    const bool isDone = !ending.isKilled && ending.result == 0;
    if (isDone && made.keys().filter(QStringLiteral("b.jpg")).size() != 1) {
        return QStringLiteral("reported as stored, but was not");
    }
    // After a run that did not end, the next run reports it in a box and empties the store.
    return hasMarker ? QString() : judgeNextRun(ending);
}

QString TestFaultySwap::judgeNextRun(const Ending &ending) const
{
    const Ending next = lumi::test::runInChild({}, {}, [this] {
        SwapSystem store(QFile::encodeName(folder()), QStringLiteral(".swp"));
        swapSystem(&store);
        const bool isRight
            = isMissOrRight(photo("a.jpg"), Qt::red) && isMissOrRight(photo("b.jpg"), Qt::blue);
        return isRight ? 0 : 1;
    });
    if (next.result != 0) {
        return QStringLiteral("the next run finds a wrong picture");
    }
    return !ending.isDisturbed && next.notes.size() != 2
        ? QStringLiteral("the next run does not find both pictures")
        : QString();
}

LUMI_TEST(TestFaultySwap)
#include "TestFaultySwap.moc"
