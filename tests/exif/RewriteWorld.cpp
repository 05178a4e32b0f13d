// SPDX-License-Identifier: MIT
#include "tests/exif/RewriteWorld.h"

#include <QTest>

namespace lumi::test {

namespace {

QByteArray makeOldPhoto()
{
    ExifBuilder photo(ExifBuilder::Order::Big);
    photo.ascii(ExifListKind::Ifd0, 0x010F, "Anvil Works")
        .rationals(ExifListKind::Exif, 0x829A, {{1, 60}})
        .thumbnail(QByteArray(501, 't'));
    const QByteArray file = photo.file();
    return file + QByteArray(RewriteWorld::kPhotoSize - file.size(), 'i');
}

QByteArray makeNewPhoto()
{
    PhotoFolder other;
    const QString path = other.put(RewriteWorld::oldPhoto());
    FPVExifWriter writer(path);
    return RewriteWorld::save(&writer) == 0 ? contentOf(path) : QByteArray();
}

} // namespace

RewriteWorld::RewriteWorld()
{
    static_cast<void>(newPhoto()); // created before any error is injected
    path = folder.put(oldPhoto());
    place = QFileInfo(path).absolutePath();
    temporary = folder.path(QStringLiteral("photo_tmp_0.jpg"));
}

const QStringList &RewriteWorld::steps()
{
    static const QStringList kSteps = {
        QStringLiteral("open unnamed"),
        QStringLiteral("chmod unnamed"),
        QStringLiteral("write unnamed"), // everything before the thumbnail
        QStringLiteral("read photo.jpg"),
        QStringLiteral("write unnamed"),
        QStringLiteral("write unnamed"), // the zero byte
        QStringLiteral("read photo.jpg"),
        QStringLiteral("write unnamed"),
        QStringLiteral("read photo.jpg"),
        QStringLiteral("write unnamed"),
        QStringLiteral("read photo.jpg"),
        QStringLiteral("write unnamed"),
        QStringLiteral("sync unnamed"),
        QStringLiteral("close unnamed"), // of a second descriptor, for its error
        QStringLiteral("link photo_tmp_0.jpg"),
        QStringLiteral("close unnamed"),
        QStringLiteral("open ."),
        QStringLiteral("sync ."),
        QStringLiteral("close ."),
        QStringLiteral("close photo.jpg"),
        QStringLiteral("remove photo.jpg"),
        QStringLiteral("rename photo_tmp_0.jpg"),
        QStringLiteral("open ."),
        QStringLiteral("sync ."),
        QStringLiteral("close ."),
    };
    return kSteps;
}

int RewriteWorld::stepOf(const char *step)
{
    return int(steps().indexOf(QLatin1String(step)));
}

const QByteArray &RewriteWorld::oldPhoto()
{
    static const QByteArray kPhoto = makeOldPhoto();
    return kPhoto;
}

const QByteArray &RewriteWorld::newPhoto()
{
    static const QByteArray kPhoto = makeNewPhoto();
    return kPhoto;
}

int RewriteWorld::save(FPVExifWriter *writer)
{
    writer->setTag(0x013B, 2, 6, "Smith", ExifListKind::Ifd0);
    return writer->rewrite();
}

} // namespace lumi::test
