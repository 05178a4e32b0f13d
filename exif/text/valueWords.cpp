// SPDX-License-Identifier: MIT
#include "exif/text/valueWords.h"

#include "app/common/messageIds.h"
#include "app/common/messages.h"
#include "exif/tag/tagNumbers.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace {

using Word = lumi::ValueWord;

constexpr Word fixed(const char *text)
{
    return {-1, text};
}

constexpr Word kNoWord = {};

constexpr Word kPrograms[] = {
    {lumi::MsgUnknownInBrackets},
    {lumi::MsgProgramManual},
    {lumi::MsgProgramNormal},
    {lumi::MsgProgramAperturePriority},
    {lumi::MsgProgramShutterPriority},
    fixed("creative"),
    fixed("action"),
    {lumi::MsgProgramPortrait},
    {lumi::MsgProgramLandscape},
};

constexpr Word kMeteringModes[] = {
    {lumi::MsgMeteringUnknown}, {lumi::MsgMeteringAverage},   {lumi::MsgMeteringCenter},
    {lumi::MsgMeteringSpot},    {lumi::MsgMeteringMultiSpot}, {lumi::MsgMeteringMultiSegment},
    {lumi::MsgMeteringPartial},
};

constexpr Word kLightSources[] = {
    {lumi::MsgUnknownInBrackets},
    {lumi::MsgLightDay},
    {lumi::MsgLightFluorescent},
    {lumi::MsgLightTungsten},
    {lumi::MsgFlashFired},
    kNoWord,
    kNoWord,
    kNoWord,
    kNoWord,
    {lumi::MsgLightFair},
    {lumi::MsgLightCloudy},
    {lumi::MsgLightShade},
    {lumi::MsgLightDaylightFluorescent},
    {lumi::MsgLightNoonFluorescent},
    {lumi::MsgLightWhiteFluorescent},
    {lumi::MsgLightWarmWhiteFluorescent},
    kNoWord,
    {lumi::MsgLightStandardA},
    {lumi::MsgLightStandardB},
    {lumi::MsgLightStandardC},
    fixed("D55"),
    fixed("D65"),
    fixed("D75"),
    fixed("D50"),
    fixed("ISO studio tungsten"),
};

constexpr Word kSensors[] = {
    {lumi::MsgUnknownInBrackets},
    {lumi::MsgSensorVeneer},
    {lumi::MsgSensorTwoBoard},
    {lumi::MsgSensorThreeBoard},
    {lumi::MsgSensorColorConsecutive},
    {lumi::MsgSensorThreeLine},
    {lumi::MsgSensorColorConsecutiveLinear},
};

constexpr Word kExposureModes[] = {
    {lumi::MsgExposureAutomatic},
    {lumi::MsgExposureManual},
    {lumi::MsgExposureAutomaticBracket},
};

constexpr Word kWhiteBalances[] = {
    {lumi::MsgWhiteBalanceAutomatic},
    {lumi::MsgWhiteBalanceManual},
};

constexpr Word kScenes[] = {
    {lumi::MsgSceneNormal},
    {lumi::MsgSceneScenery},
    {lumi::MsgScenePerson},
    {lumi::MsgSceneNight},
};

constexpr Word kGains[] = {
    {lumi::MsgNone},           {lumi::MsgGainWeak},         {lumi::MsgGainStrong},
    {lumi::MsgGainWeakDesens}, {lumi::MsgGainStrongDesens},
};

constexpr Word kContrasts[] = {
    {lumi::MsgContrastNormal},
    {lumi::MsgContrastWeak},
    {lumi::MsgContrastStrong},
};

constexpr Word kSaturations[] = {
    {lumi::MsgChromaNormal},
    {lumi::MsgChromaLow},
    {lumi::MsgChromaHigh},
};

constexpr Word kSharpnesses[] = {
    {lumi::MsgSharpnessNormal},
    {lumi::MsgSharpnessWeak},
    {lumi::MsgSharpnessStrong},
};

constexpr Word kDistanceRanges[] = {
    {lumi::MsgUnknownInBrackets},
    {lumi::MsgDistanceMacro},
    {lumi::MsgDistanceForeground},
    {lumi::MsgDistanceFar},
};

struct Choice
{
    int tag;
    int first; // the value of the first word
    std::span<const Word> words;
    bool hasOther; // kOther means a choice that is not in the list
};

constexpr int kOther = 255;

constexpr Choice kChoices[] = {
    {lumi::kTagExposureProgram, 0, kPrograms, false},
    {lumi::kTagMeteringMode, 0, kMeteringModes, true},
    {lumi::kTagLightSource, 0, kLightSources, true},
    // Off by one: the list has a word for 0, but cameras count from 1.
    {lumi::kTagSensingMethod, 1, kSensors, false},
    {lumi::kTagExposureMode, 0, kExposureModes, false},
    {lumi::kTagWhiteBalance, 0, kWhiteBalances, false},
    {lumi::kTagSceneType, 0, kScenes, false},
    {lumi::kTagGainControl, 0, kGains, false},
    {lumi::kTagContrast, 0, kContrasts, false},
    {lumi::kTagSaturation, 0, kSaturations, false},
    {lumi::kTagSharpness, 0, kSharpnesses, false},
    {lumi::kTagSubjectDistanceRange, 0, kDistanceRanges, false},
};

Word wordOf(const Choice &choice, int value)
{
    if (choice.hasOther && value == kOther) {
        return {lumi::MsgMeteringOther};
    }
    const qint64 index = qint64(value) - choice.first;
    const bool isListed = index >= 0 && index < static_cast<qint64>(choice.words.size());
    return isListed ? choice.words[static_cast<std::size_t>(index)] : kNoWord;
}

} // namespace

std::optional<lumi::ValueWord> lumi::wordForValue(int tag, int value)
{
    const auto *const found
        = std::find_if(std::begin(kChoices), std::end(kChoices), [tag](const Choice &choice) {
              return choice.tag == tag;
          });
    return found == std::end(kChoices) ? std::nullopt : std::optional(wordOf(*found, value));
}

std::optional<QString> lumi::valueWord(int tag, int value)
{
    const std::optional<ValueWord> word = wordForValue(tag, value);
    if (!word) {
        return std::nullopt;
    }
    return word->message >= 0 ? msg(word->message) : QString::fromLatin1(word->text);
}
