// SPDX-License-Identifier: MIT
#include "exif/ui/exifWriteBack.h"

#include "exif/gps/Altitude.h"
#include "exif/gps/LatLongPair.h"
#include "exif/tag/exifFormat.h"
#include "exif/write/FPVExifWriter.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

using lumi::EditField;
using lumi::EditTexts;
using lumi::SaveResult;
using lumi::TagOperation;
using lumi::TagOperations;

using lumi::TiffType;

constexpr int kAudioBytes = 13;
constexpr char kUnicodeMark[8] = "UNICODE";
constexpr uchar kGpsVersion[] = {2, 2, 0, 0};

const lumi::EditRule &ruleOf(EditField field)
{
    return lumi::kEditRules[static_cast<std::size_t>(field)];
}

QString textOf(const EditTexts &texts, EditField field)
{
    return texts[static_cast<std::size_t>(field)].trimmed();
}

void removeTag(TagOperations *operations, quint16 tag, ExifListKind list)
{
    TagOperation operation;
    operation.tag = tag;
    operation.list = list;
    operations->push_back(std::move(operation));
}

struct Target
{
    quint16 tag;
    ExifListKind list;
    TiffType type;
};

bool setTag(TagOperations *operations, const Target &target, const void *values, int count)
{
    const std::size_t size
        = static_cast<std::size_t>(count) * static_cast<std::size_t>(typeSize(target.type));
    TagOperation operation;
    operation.value.reset(new (std::nothrow) uchar[size]);
    if (!operation.value) {
        qWarning("new uchar[%zu] memory arrocate err", size); // sic
        return false;
    }
    std::memcpy(operation.value.get(), values, size);
    operation.tag = target.tag;
    operation.list = target.list;
    operation.type = target.type;
    operation.count = static_cast<quint32>(count);
    operations->push_back(std::move(operation));
    return true;
}

/// Sets the tag of a field, or removes it if bytes is empty.
bool setField(TagOperations *operations, EditField field, TiffType type, const QByteArray &bytes)
{
    const lumi::EditRule &rule = ruleOf(field);
    if (bytes.isEmpty()) {
        removeTag(operations, rule.tag, rule.list);
        return true;
    }
    return setTag(operations, {rule.tag, rule.list, type}, bytes.constData(),
                  static_cast<int>(bytes.size()));
}

QByteArray closedText(const QString &text)
{
    return text.isEmpty() ? QByteArray() : text.toLatin1().append('\0');
}

QByteArray audioName(const QString &text)
{
    if (text.isEmpty()) {
        return {};
    }
    // The photo may have a longer name than fits.
    QByteArray name = text.toLatin1().left(kAudioBytes - 1);
    name.append(kAudioBytes - name.size(), '\0');
    return name;
}

QByteArray commentBytes(const QString &text)
{
    return text.isEmpty() ? QByteArray()
                          : QByteArray(kUnicodeMark, sizeof kUnicodeMark) + text.toUtf8();
}

bool appendCoordinate(TagOperations *operations, EditField field, quint16 referenceTag,
                      const LatLong &value)
{
    const quint16 tag = ruleOf(field).tag;
    const lumi::Rational *rationals = value.rationals();
    if (rationals == nullptr) {
        removeTag(operations, referenceTag, ExifListKind::Gps);
        removeTag(operations, tag, ExifListKind::Gps);
        return true;
    }
    const char reference[] = {value.text().front().toLatin1(), '\0'};
    return setTag(operations, {referenceTag, ExifListKind::Gps, lumi::TiffAscii}, reference,
                  sizeof reference)
        && setTag(operations, {tag, ExifListKind::Gps, lumi::TiffRational}, rationals, 3);
}

bool appendAltitude(TagOperations *operations, const QString &text)
{
    Altitude altitude;
    if (!altitude.setText(text)) {
        return true;
    }
    const uchar reference = altitude.aboveSeaLevel() ? 0 : 1;
    return setTag(operations, {lumi::kTagAltitudeReference, ExifListKind::Gps, lumi::TiffByte},
                  &reference, 1)
        && setTag(operations,
                  {ruleOf(lumi::AltitudeField).tag, ExifListKind::Gps, lumi::TiffRational},
                  altitude.rational(), 1);
}

struct CheckRow
{
    EditField field;
    bool (*isValid)(const QString &);
    SaveResult otherwise;
};

constexpr CheckRow kChecks[] = {
    {lumi::LatitudeField, latitudeValid, SaveResult::BadLatitude},
    {lumi::LongitudeField, longitudeValid, SaveResult::BadLongitude},
    {lumi::AltitudeField, altitudeValid, SaveResult::BadAltitude},
};

void carryOut(const TagOperations &operations, FPVExifWriter *writer)
{
    for (const TagOperation &operation : operations) {
        if (operation.value) {
            writer->setTag(operation.tag, operation.type, operation.count, operation.value.get(),
                           operation.list);
        } else {
            writer->removeTag(operation.tag, operation.list);
        }
    }
}

} // namespace

bool lumi::appendBasic(const EditTexts &texts, TagOperations *operations)
{
    const QString author = textOf(texts, AuthorField);
    const QByteArray compilation = closedText(textOf(texts, CompilationField));
    QByteArray bytes = closedText(author);
    if (author.isEmpty() && !compilation.isEmpty()) {
        bytes = closedText(QStringLiteral(" "));
    }
    return setField(operations, AuthorField, TiffAscii, bytes + compilation);
}

bool lumi::appendUserData(const EditTexts &texts, TagOperations *operations)
{
    return setField(operations, OwnerField, TiffAscii, closedText(textOf(texts, OwnerField)))
        && setField(operations, TitleField, TiffAscii, closedText(textOf(texts, TitleField)))
        && setField(operations, RelatedAudioField, TiffAscii,
                    audioName(textOf(texts, RelatedAudioField)))
        && setField(operations, CommentField, TiffUndefined,
                    commentBytes(textOf(texts, CommentField)));
}

bool lumi::appendPosition(const EditTexts &texts, TagOperations *operations)
{
    const QString latitudeText = textOf(texts, LatitudeField);
    const QString longitudeText = textOf(texts, LongitudeField);
    const QString altitudeText = textOf(texts, AltitudeField);
    Latitude latitude;
    Longitude longitude;
    // An empty text makes an empty value, which removes the tags.
    static_cast<void>(latitude.setText(latitudeText));
    static_cast<void>(longitude.setText(longitudeText));
    if (!appendCoordinate(operations, LatitudeField, kTagLatitudeReference, latitude)
        || !appendCoordinate(operations, LongitudeField, kTagLongitudeReference, longitude)
        || !appendAltitude(operations, altitudeText)) {
        return false;
    }
    if (latitudeText.isEmpty() && longitudeText.isEmpty() && altitudeText.isEmpty()) {
        removeTag(operations, kTagGpsVersion, ExifListKind::Gps);
        return true;
    }
    return setTag(operations, {kTagGpsVersion, ExifListKind::Gps, TiffByte}, kGpsVersion,
                  sizeof kGpsVersion);
}

SaveResult lumi::checkPosition(const EditTexts &texts)
{
    const auto *bad
        = std::find_if(std::begin(kChecks), std::end(kChecks), [&texts](const CheckRow &row) {
              const QString text = textOf(texts, row.field);
              return !text.isEmpty() && !row.isValid(text);
          });
    return bad == std::end(kChecks) ? SaveResult::Saved : bad->otherwise;
}

SaveResult lumi::saveTexts(const EditTexts &texts, FPVExifWriter *writer)
{
    TagOperations operations;
    if (!appendBasic(texts, &operations) || !appendUserData(texts, &operations)) {
        return SaveResult::Failed;
    }
    const SaveResult position = checkPosition(texts);
    if (position != SaveResult::Saved) {
        return position;
    }
    if (!appendPosition(texts, &operations)) {
        return SaveResult::Failed;
    }
    carryOut(operations, writer);
    if (writer->segmentLength() > kLongestSegment) {
        return SaveResult::Failed;
    }
    return static_cast<SaveResult>(writer->rewrite());
}
