// SPDX-License-Identifier: MIT
#include "exif/text/flashText.h"

#include "app/common/messages.h"

#include <QStringList>

namespace {

constexpr int kFired = 0x01;
constexpr int kNoFunction = 0x20;

/// A line that is shown if the masked bits equal bits.
struct Line
{
    int mask;
    int bits;
    lumi::MessageId message;
};

constexpr Line kFurtherLines[] = {
    {0x06, 0x04, lumi::MsgFlashReturnNotDetected},
    {0x06, 0x06, lumi::MsgFlashReturnDetected},
    {0x18, 0x08, lumi::MsgFlashManual},
    {0x18, 0x10, lumi::MsgFlashManualNon},
    {0x18, 0x18, lumi::MsgFlashAuto},
    {0x40, 0x40, lumi::MsgFlashRedEye},
};

/// A camera without a flash did not fire one, whatever the other bits say.
lumi::MessageId firstLine(int bits)
{
    if ((bits & kNoFunction) != 0) {
        return lumi::MsgFlashNoFunction;
    }
    return (bits & kFired) != 0 ? lumi::MsgFlashFired : lumi::MsgFlashNone;
}

} // namespace

std::vector<lumi::MessageId> lumi::flashMessages(int bits)
{
    std::vector<MessageId> messages = {firstLine(bits)};
    for (const Line &line : kFurtherLines) {
        if ((bits & line.mask) == line.bits) {
            messages.push_back(line.message);
        }
    }
    return messages;
}

QString lumi::flashText(int bits)
{
    QStringList lines;
    for (const MessageId message : flashMessages(bits)) {
        lines.append(msg(message));
    }
    return lines.join(QLatin1Char('\n'));
}
