// SPDX-License-Identifier: MIT
#include "import/importReport.h"

#include "app/common/messages.h"

#include <QFileInfo>

QString lumi::failureWord(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Done:
        break;
    case ImportKind::Cancelled:
        return msg(MsgUserCancellation);
    case ImportKind::MemoryFull:
        return msg(MsgMemoryFull);
    case ImportKind::CardAccess:
    case ImportKind::AccessFailure:
        return msg(MsgAccessError);
    case ImportKind::Mismatch:
        return msg(MsgFileMismatch);
    }
    return {};
}

QString lumi::withErrorBlock(const QString &report, const QString &path, ImportKind kind)
{
    QString block = report;
    if (!block.isEmpty()) {
        block += QLatin1String("<hr>");
    }
    block += QFileInfo(path).fileName().toHtmlEscaped();
    block += QLatin1String("<br>&nbsp;&nbsp;");
    block += msg(MsgCopy) + msg(MsgError); // one word
    block += QLatin1String("&nbsp;:&nbsp;");
    block += failureWord(kind);
    block += QLatin1String("<br>");
    return block;
}
