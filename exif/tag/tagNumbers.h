// SPDX-License-Identifier: MIT
// The tags that the program knows by their numbers.
#pragma once

namespace lumi {

// Pointers: the offset or the length of another part of the block. The writer sets them again.
inline constexpr int kTagExifPointer = 0x8769;             // in the first directory
inline constexpr int kTagGpsPointer = 0x8825;              // in the first directory
inline constexpr int kTagInteroperabilityPointer = 0xA005; // in the Exif directory
inline constexpr int kTagThumbnailOffset = 0x0201;         // in the second directory
inline constexpr int kTagThumbnailLength = 0x0202;         // in the second directory

// Values.
inline constexpr int kTagGpsVersion = 0x0000;
inline constexpr int kTagLatitudeReference = 0x0001;
inline constexpr int kTagLatitude = 0x0002;
inline constexpr int kTagLongitudeReference = 0x0003;
inline constexpr int kTagLongitude = 0x0004;
inline constexpr int kTagAltitudeReference = 0x0005;
inline constexpr int kTagAltitude = 0x0006;
inline constexpr int kTagTitle = 0x010E;
inline constexpr int kTagOrientation = 0x0112;
inline constexpr int kTagDateTime = 0x0132;
inline constexpr int kTagOwner = 0x013B;
inline constexpr int kTagCopyright = 0x8298;
inline constexpr int kTagExposureTime = 0x829A;
inline constexpr int kTagFNumber = 0x829D;
inline constexpr int kTagExposureProgram = 0x8822;
inline constexpr int kTagIsoSpeed = 0x8827;
inline constexpr int kTagExifVersion = 0x9000;
inline constexpr int kTagDateTimeOriginal = 0x9003;
inline constexpr int kTagDateTimeDigitized = 0x9004;
inline constexpr int kTagCompressedBitsPerPixel = 0x9102;
inline constexpr int kTagShutterSpeed = 0x9201;
inline constexpr int kTagAperture = 0x9202;
inline constexpr int kTagBrightness = 0x9203;
inline constexpr int kTagExposureBias = 0x9204;
inline constexpr int kTagLargestAperture = 0x9205;
inline constexpr int kTagSubjectDistance = 0x9206;
inline constexpr int kTagMeteringMode = 0x9207;
inline constexpr int kTagLightSource = 0x9208;
inline constexpr int kTagFlash = 0x9209;
inline constexpr int kTagFocalLength = 0x920A;
inline constexpr int kTagSubjectArea = 0x9214;
inline constexpr int kTagUserComment = 0x9286;
inline constexpr int kTagColorSpace = 0xA001;
inline constexpr int kTagRelatedAudio = 0xA004;
inline constexpr int kTagFlashEnergy = 0xA20B;
inline constexpr int kTagFocalPlaneX = 0xA20E;
inline constexpr int kTagFocalPlaneY = 0xA20F;
inline constexpr int kTagSensingMethod = 0xA217;
inline constexpr int kTagExposureMode = 0xA402;
inline constexpr int kTagWhiteBalance = 0xA403;
inline constexpr int kTagDigitalZoomRatio = 0xA404;
inline constexpr int kTagFocalLength35mm = 0xA405;
inline constexpr int kTagSceneType = 0xA406;
inline constexpr int kTagGainControl = 0xA407;
inline constexpr int kTagContrast = 0xA408;
inline constexpr int kTagSaturation = 0xA409;
inline constexpr int kTagSharpness = 0xA40A;
inline constexpr int kTagSubjectDistanceRange = 0xA40C;

} // namespace lumi
