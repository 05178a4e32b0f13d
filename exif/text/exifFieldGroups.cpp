// SPDX-License-Identifier: MIT
#include "exif/text/exifFieldGroups.h"

#include "app/common/messageIds.h"
#include "app/common/messages.h"

#include <array>
#include <vector>

namespace {

using enum ExifListKind;

struct RowSource
{
    int label; // message id
    int tag;
    bool readOnly;
    ExifListKind list;
};

struct GroupSource
{
    int title; // message id
    std::span<const RowSource> rows;
};

constexpr RowSource kBasicRows[] = {
    {lumi::MsgManufacturer, 0x010F, true, Ifd0},
    {lumi::MsgModelName, 0x0110, true, Ifd0},
    {lumi::MsgDateTaken, 0x9003, true, Exif},
    // Author and compilation are two texts in one tag.
    {lumi::MsgAuthor, 0x8298, false, Ifd0},
    {lumi::MsgCompilation, 0x8298, false, Ifd0},
    {lumi::MsgColorSpace, 0xA001, true, Exif},
    {lumi::MsgCompressionMode, 0x9102, true, Exif},
    {lumi::MsgFirmware, 0x0131, true, Ifd0},
    {lumi::MsgUniqueID, 0xA420, true, Exif},
    {lumi::MsgExifVersion, 0x9000, true, Exif},
};

constexpr RowSource kUserDataRows[] = {
    {lumi::MsgOwner, 0x013B, false, Ifd0},        {lumi::MsgTitle, 0x010E, false, Ifd0},
    {lumi::MsgCreatedDate, 0x9004, true, Exif},   {lumi::MsgModifiedDate, 0x0132, true, Ifd0},
    {lumi::MsgRelatedAudio, 0xA004, false, Exif}, {lumi::MsgComment, 0x9286, false, Exif},
};

constexpr RowSource kDetails1Rows[] = {
    {lumi::MsgExposureTime, 0x829A, true, Exif},    {lumi::MsgFNumber, 0x829D, true, Exif},
    {lumi::MsgExposureProgram, 0x8822, true, Exif}, {lumi::MsgIso, 0x8827, true, Exif},
    {lumi::MsgShutterSpeed, 0x9201, true, Exif},    {lumi::MsgAperture, 0x9202, true, Exif},
    {lumi::MsgBrightness, 0x9203, true, Exif},      {lumi::MsgExposureBias, 0x9204, true, Exif},
    {lumi::MsgMaxAperture, 0x9205, true, Exif},     {lumi::MsgSubjectDistance, 0x9206, true, Exif},
};

// "Focal Pl. Unit" shows the subject area and "Exposure Index" the exposure mode. Both are
// intended.
constexpr RowSource kDetails2Rows[] = {
    {lumi::MsgMeteringMode, 0x9207, true, Exif},  {lumi::MsgLight, 0x9208, true, Exif},
    {lumi::MsgFlash, 0x9209, true, Exif},         {lumi::MsgFocalLength, 0x920A, true, Exif},
    {lumi::MsgFlashStrength, 0xA20B, true, Exif}, {lumi::MsgFocalPlaneX, 0xA20E, true, Exif},
    {lumi::MsgFocalPlaneY, 0xA20F, true, Exif},   {lumi::MsgFocalPlaneUnit, 0x9214, true, Exif},
    {lumi::MsgSensingMethod, 0xA217, true, Exif}, {lumi::MsgExposureIndex, 0xA402, true, Exif},
};

constexpr RowSource kDetails3Rows[] = {
    {lumi::MsgWhiteBalance, 0xA403, true, Exif},    {lumi::MsgDigitalZoomRatio, 0xA404, true, Exif},
    {lumi::MsgFocalLength35mm, 0xA405, true, Exif}, {lumi::MsgSceneType, 0xA406, true, Exif},
    {lumi::MsgNoise, 0xA407, true, Exif},           {lumi::MsgContrast, 0xA408, true, Exif},
    {lumi::MsgChroma, 0xA409, true, Exif},          {lumi::MsgSharpness, 0xA40A, true, Exif},
    {lumi::MsgDistanceRatio, 0xA40C, true, Exif},
};

// No camera writes 0x0029, so the date row is usually empty.
constexpr RowSource kGpsRows[] = {
    {lumi::MsgGps, 0x0000, true, Gps},        {lumi::MsgLatitude, 0x0002, false, Gps},
    {lumi::MsgLongitude, 0x0004, false, Gps}, {lumi::MsgAltitude, 0x0006, false, Gps},
    {lumi::MsgGpsTime, 0x0007, true, Gps},    {lumi::MsgGpsDate, 0x0029, true, Gps},
};

constexpr GroupSource kGroups[] = {
    {lumi::MsgPageBasic, kBasicRows},       {lumi::MsgPageUserData, kUserDataRows},
    {lumi::MsgPageDetails1, kDetails1Rows}, {lumi::MsgPageDetails2, kDetails2Rows},
    {lumi::MsgPageDetails3, kDetails3Rows}, {lumi::MsgPageGps, kGpsRows},
};

constexpr std::size_t kGroupCount = std::size(kGroups);

struct GroupTable
{
    std::array<std::vector<ExifFieldRow>, kGroupCount> rows;
    std::array<ExifFieldGroup, kGroupCount> groups;
};

GroupTable buildGroups()
{
    GroupTable table;
    for (std::size_t i = 0; i < kGroupCount; ++i) {
        for (const RowSource &row : kGroups[i].rows) {
            table.rows[i].push_back({msg(row.label), row.tag, row.readOnly, row.list});
        }
        table.groups[i]
            = {msg(kGroups[i].title), table.rows[i].data(), static_cast<int>(table.rows[i].size())};
    }
    return table;
}

} // namespace

std::span<const ExifFieldGroup> lumi::exifFieldGroups()
{
    static const GroupTable table = buildGroups();
    return table.groups;
}
