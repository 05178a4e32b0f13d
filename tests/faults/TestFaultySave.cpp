// SPDX-License-Identifier: MIT
// Saving changed Exif data with each call disturbed. The old or the new photo is whole under its
// name, or the new one under the temporary name. No other file is left.
#include "exif/write/FPVExifWriter.h"
#include "tests/faults/FaultTest.h"
#include "tests/support/ExifBuilder.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QTest>

using lumi::test::Ending;
using lumi::test::ExifBuilder;
using lumi::test::Tree;

namespace {

constexpr int kPhotoSize = 30000;
const QString kPhoto = QStringLiteral("photo.jpg");
const QString kTemporary = QStringLiteral("photo_tmp_0.jpg");

/// A photo with a thumbnail of an odd size, so that the writer adds a byte, and with several blocks
/// of image data.
QByteArray oldPhoto()
{
    ExifBuilder builder(ExifBuilder::Order::Big);
    builder.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .thumbnail(QByteArray(501, 't'));
    const QByteArray file = builder.file();
    return file + QByteArray(kPhotoSize - file.size(), 'i');
}

} // namespace

class TestFaultySave : public FaultTest
{
    Q_OBJECT

protected:
    void prepare() override;

    QStringList watched() const override { return {folder()}; }

    int job() override;
    QString judge(const Ending &ending) override;

    bool comparesSizes() const override { return true; }

    int leastCalls() const override { return 30; }

private:
    [[nodiscard]] QString folder() const { return path(QStringLiteral("photos")); }

    QByteArray m_old;
    QByteArray m_new;
};

void TestFaultySave::prepare()
{
    if (m_old.isEmpty()) {
        make(QStringLiteral("photos/photo.jpg"), oldPhoto());
        QCOMPARE(job(), 0);
        m_old = "file" + oldPhoto();
        m_new = lumi::test::treeOf(folder()).value(kPhoto);
        QVERIFY(m_new.size() > m_old.size());
    }
    QDir(folder()).removeRecursively();
    make(QStringLiteral("photos/photo.jpg"), oldPhoto());
}

int TestFaultySave::job()
{
    FPVExifWriter writer(folder() + u'/' + kPhoto);
    writer.setTag(0x013B, 2, 6, "Smith", ExifListKind::Ifd0);
    return writer.rewrite();
}

QString TestFaultySave::judge(const Ending &ending)
{
    Tree made = newTree(folder());
    const QByteArray photo = made.take(kPhoto);
    const QByteArray temporary = made.take(kTemporary);
    if (!made.isEmpty()) {
        return made.firstKey() + QStringLiteral(" should not be there");
    }
    if (photo.isEmpty() && temporary.isEmpty()) {
        return QStringLiteral("the photo is lost");
    }
    if (!photo.isEmpty() && photo != m_old && photo != m_new) {
        return QStringLiteral("the photo is not whole");
    }
    if (!temporary.isEmpty() && temporary != m_new) {
        return QStringLiteral("the temporary file is not whole");
    }
    // A failed write counts as a success if there is free space. A failed change of the mode does
    // not matter. But if every later call fails too, the write after it fails.
    const bool isWriting = ending.call.startsWith("write ")
        || (trouble().act == lumi::faults::Act::FailFrom && ending.call.startsWith("fchmod "));
    const bool isDone = !ending.isKilled && ending.result == 0 && !isWriting;
    return isDone && (photo != m_new || !temporary.isEmpty())
        ? QStringLiteral("reported as saved, but was not")
        : QString();
}

LUMI_TEST(TestFaultySave)
#include "TestFaultySave.moc"
