// SPDX-License-Identifier: MIT
#include "items/openPhoto.h"

#include "app/common/memory.h"
#include "items/photoScale.h"

#include <QFile>

namespace {

using lumi::DecodeError;
using lumi::DecodeFor;
using lumi::JpegSession;
using SessionPtr = std::unique_ptr<JpegSession>;

SessionPtr refuseForMemory(DecodeError *error)
{
    *error = DecodeError::OutOfMemory;
    return nullptr;
}

/// The estimate for progressive photos, which goes by the pixels alone.
bool isEstimateFree(const JpegSession &session)
{
    if (!session.isProgressive()
        || lumi::progressiveNeedKB(session.imageSize()) <= freeMemoryKB()) {
        return true;
    }
    qWarning("FPVItemJpeg Error (%d)", static_cast<int>(DecodeError::OutOfMemory));
    return false;
}

/// Whether there is memory for what the decoder is going to hold.
bool mayBeHeld(JpegSession &session, DecodeFor purpose)
{
    const qint64 heldKB = session.heldKB();
    return heldKB == 0
        || (heldKB <= freeMemoryKB()
            && (purpose != DecodeFor::Thumbnail || heldKB <= lumi::kMostThumbnailKB));
}

SessionPtr openHeader(const QString &path, DecodeError *error)
{
    *error = DecodeError::None;
    if (!QFile::exists(path)) {
        return nullptr;
    }
    SessionPtr session = JpegSession::open(path);
    if (!session) {
        qWarning("Memory Allocation Error(FPVItemJpeg::InitJpegLib)");
        return nullptr;
    }
    if (!session->readHeader()) {
        return nullptr;
    }
    return isEstimateFree(*session) ? std::move(session) : refuseForMemory(error);
}

bool start(JpegSession &session, int denominator, DecodeFor purpose, DecodeError *error)
{
    if (!session.start(denominator, purpose)) {
        *error = session.outOfMemory() ? DecodeError::OutOfMemory : DecodeError::None;
        return false;
    }
    const int components = session.components();
    if (components != 1 && components != 3 && components != 4) {
        *error = DecodeError::Undecodable;
        return false;
    }
    return true;
}

} // namespace

SessionPtr lumi::openPhoto(const QString &path, const QSize *wanted, DecodeFor purpose,
                           DecodeError *error)
{
    SessionPtr session = openHeader(path, error);
    if (!session) {
        return nullptr;
    }
    const QSize photo = session->imageSize();
    const int denominator
        = wanted != nullptr ? coveringDenominator(photo, *wanted) : screenDenominator(photo);
    if (denominator == 0 || !mayBeHeld(*session, purpose)) {
        return refuseForMemory(error);
    }
    return start(*session, denominator, purpose, error) ? std::move(session) : nullptr;
}

QSize lumi::readPhotoSize(const QString &path, DecodeError *error)
{
    const SessionPtr session = openHeader(path, error);
    if (!session
        || (!session->hasSeveralScans() && !start(*session, 1, DecodeFor::Screen, error))) {
        return {-1, -1};
    }
    return session->imageSize();
}
