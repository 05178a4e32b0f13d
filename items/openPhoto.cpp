// SPDX-License-Identifier: MIT
#include "items/openPhoto.h"

#include "app/common/memory.h"
#include "items/photoScale.h"

#include <QFile>

namespace {

using lumi::DecodeError;
using lumi::DecodeFor;
using lumi::JpegSession;
using lumi::OpenedPhoto;

OpenedPhoto failure(DecodeError error)
{
    return {nullptr, error, {}};
}

/// The estimate for progressive photos. It depends only on the number of pixels.
bool isEstimateFree(const JpegSession &session)
{
    if (!session.isProgressive()
        || lumi::progressiveNeedKB(session.imageSize()) <= freeMemoryKB()) {
        return true;
    }
    qWarning("FPVItemJpeg Error (%d)", static_cast<int>(DecodeError::OutOfMemory));
    return false;
}

/// Whether there is enough memory for what the decoder will hold.
bool mayBeHeld(JpegSession &session, DecodeFor purpose)
{
    const qint64 heldKB = session.heldKB();
    return heldKB == 0
        || (heldKB <= freeMemoryKB()
            && (purpose != DecodeFor::Thumbnail || heldKB <= lumi::kMostThumbnailKB));
}

OpenedPhoto openHeader(const QString &path)
{
    if (!QFile::exists(path)) {
        return {};
    }
    std::unique_ptr<JpegSession> session = JpegSession::open(path);
    if (!session) {
        qWarning("Memory Allocation Error(FPVItemJpeg::InitJpegLib)");
        return {};
    }
    if (!session->readHeader()) {
        return {};
    }
    if (!isEstimateFree(*session)) {
        return failure(DecodeError::OutOfMemory);
    }
    return {std::move(session), DecodeError::None, lumi::Orientation::of(path)};
}

OpenedPhoto start(OpenedPhoto photo, int denominator, DecodeFor purpose)
{
    JpegSession &session = *photo.session;
    if (!session.start(denominator, purpose)) {
        return failure(session.outOfMemory() ? DecodeError::OutOfMemory : DecodeError::None);
    }
    const int components = session.components();
    if (components != 1 && components != 3 && components != 4) {
        return failure(DecodeError::Undecodable);
    }
    return photo;
}

} // namespace

OpenedPhoto lumi::openPhoto(const QString &path, const QSize *wanted, DecodeFor purpose)
{
    OpenedPhoto photo = openHeader(path);
    if (!photo.session) {
        return photo;
    }
    const QSize size = photo.session->imageSize();
    const int denominator = wanted != nullptr
        ? coveringDenominator(size, photo.orientation.turned(*wanted))
        : screenDenominator(size);
    if (denominator == 0 || !mayBeHeld(*photo.session, purpose)) {
        return failure(DecodeError::OutOfMemory);
    }
    return start(std::move(photo), denominator, purpose);
}

lumi::PhotoSize lumi::readPhotoSize(const QString &path)
{
    OpenedPhoto photo = openHeader(path);
    if (photo.session && !photo.session->hasSeveralScans()) {
        photo = start(std::move(photo), 1, DecodeFor::Screen);
    }
    return {photo.session ? photo.orientation.turned(photo.session->imageSize()) : QSize(-1, -1),
            photo.error};
}
