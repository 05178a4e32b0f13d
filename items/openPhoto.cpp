// SPDX-License-Identifier: MIT
#include "items/openPhoto.h"

#include "app/common/memory.h"
#include "items/photoScale.h"

#include <QFile>

namespace {

using lumi::DecodeError;
using lumi::JpegSession;
using SessionPtr = std::unique_ptr<JpegSession>;

SessionPtr refuseForMemory(DecodeError *error)
{
    *error = DecodeError::OutOfMemory;
    return nullptr;
}

/// A photo of several scans is held whole while it is decoded. Progressive ones are refused by
/// an estimate, the rarer sequential ones when the decoder asks for more than there is.
bool limitMemory(JpegSession &session)
{
    if (!session.hasSeveralScans()) {
        return true;
    }
    const int freeKB = freeMemoryKB();
    session.limitMemory(freeKB);
    if (!session.isProgressive() || lumi::progressiveNeedKB(session.imageSize()) <= freeKB) {
        return true;
    }
    qWarning("FPVItemJpeg Error (%d)", static_cast<int>(DecodeError::OutOfMemory));
    return false;
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
    return limitMemory(*session) ? std::move(session) : refuseForMemory(error);
}

bool start(JpegSession &session, int denominator, JpegSession::Reading reading, DecodeError *error)
{
    if (!session.start(denominator, reading)) {
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

SessionPtr lumi::openPhoto(const QString &path, const QSize *wanted, DecodeError *error,
                           JpegSession::Reading reading)
{
    SessionPtr session = openHeader(path, error);
    if (!session) {
        return nullptr;
    }
    const QSize photo = session->imageSize();
    const int denominator
        = wanted != nullptr ? coveringDenominator(photo, *wanted) : screenDenominator(photo);
    if (denominator == 0) {
        return refuseForMemory(error);
    }
    return start(*session, denominator, reading, error) ? std::move(session) : nullptr;
}

QSize lumi::readPhotoSize(const QString &path, DecodeError *error)
{
    const SessionPtr session = openHeader(path, error);
    constexpr auto kAtOnce = JpegSession::Reading::AtOnce;
    if (!session || (!session->hasSeveralScans() && !start(*session, 1, kAtOnce, error))) {
        return {-1, -1};
    }
    return session->imageSize();
}
