// SPDX-License-Identifier: MIT
#include "import/importReport.h"

#include "app/common/messages.h"

#include <QFileInfo>

namespace {

/// With all its blanks: rich text shows one for many, and none at the beginning of a line.
QString asRichText(const QString &name)
{
    QString text = name.toHtmlEscaped();
    text.replace(QLatin1String("  "), QLatin1String(" &nbsp;"));
    if (text.startsWith(QLatin1Char(' '))) {
        text.replace(0, 1, QLatin1String("&nbsp;"));
    }
    return text;
}

} // namespace

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

void lumi::appendErrorBlock(QString *report, const QString &path, ImportKind kind)
{
    if (!report->isEmpty()) {
        *report += QLatin1String("<hr>");
    }
    *report += asRichText(QFileInfo(path).fileName());
    *report += QLatin1String("<br>&nbsp;&nbsp;");
    *report += msg(MsgCopy) + msg(MsgError); // one word
    *report += QLatin1String("&nbsp;:&nbsp;");
    *report += failureWord(kind);
    *report += QLatin1String("<br>");
}
