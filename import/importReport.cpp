// SPDX-License-Identifier: MIT
#include "import/importReport.h"

#include "app/common/messages.h"
#include "platform/windows/dialogButtons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

constexpr int kMargin = 4;
constexpr QSize kReportSize(380, 240);

/// Rich text collapses blanks and drops leading ones, so they are replaced.
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
    *report += msg(MsgCopy) + msg(MsgError); // without a blank in between
    *report += QLatin1String("&nbsp;:&nbsp;");
    *report += failureWord(kind);
    *report += QLatin1String("<br>");
}

void lumi::showReport(QWidget *parent, const QString &report)
{
    QDialog dialog(parent);
    dialog.setModal(true);
    dialog.setWindowTitle(msg(MsgErrorDetails));
    auto *layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin);
    auto *browser = new QTextBrowser(&dialog);
    browser->setAccessibleName(dialog.windowTitle());
    browser->setMinimumSize(kReportSize);
    browser->setOpenLinks(false);
    browser->setHtml(report);
    layout->addWidget(browser);
    layout->addWidget(makeCloseRow(&dialog));
    dialog.exec();
}
