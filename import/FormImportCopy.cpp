// SPDX-License-Identifier: MIT
// The second half of an import: the folder's name, the copy with its progress, the report.
#include "app/common/getText.h"
#include "app/common/messages.h"
#include "files/engine/copyFile.h"
#include "import/FormImport.h"
#include "import/ImportRun.h"
#include "import/importReport.h"
#include "import/importTexts.h"
#include "platform/session/NoticeAgent.h"
#include "platform/session/QuitRequest.h"
#include "widgets/MyDialogProgressBar.h"
#include "widgets/messageBoxes.h"

#include <QDate>

#include <algorithm>

using lumi::ImportKind;

namespace {

constexpr int kNameLength = 30;
/// Steps of the progress bar in addition to one per file. The last step is never reached.
constexpr int kExtraSteps = 2;

struct FailureRow
{
    ImportKind kind;
    QMessageBox::Icon icon;
    lumi::MessageId caption;
    lumi::MessageId text;
};

constexpr FailureRow kFailures[] = {
    {ImportKind::Cancelled, QMessageBox::Information, lumi::MsgStop, lumi::MsgProcessingCancelled},
    {ImportKind::MemoryFull, QMessageBox::Warning, lumi::MsgError, lumi::MsgOutOfSpace},
    {ImportKind::CardAccess, QMessageBox::Critical, lumi::MsgError, lumi::MsgAccessErrors},
};

/// Null for other kinds.
const FailureRow *failureOf(ImportKind kind)
{
    const auto *found
        = std::find_if(std::begin(kFailures), std::end(kFailures), [kind](const FailureRow &row) {
              return row.kind == kind;
          });
    return found != std::end(kFailures) ? found : nullptr;
}

} // namespace

bool FormImport::askFolderName()
{
    m_folderName = getText(this, msg(lumi::MsgNewFolder), msg(lumi::MsgInputFolderName),
                           lumi::defaultFolderName(QDate::currentDate()), kNameLength);
    return !m_folderName.isNull();
}

void FormImport::copyCancel()
{
    setCopyCancelled(true);
}

ImportKind FormImport::copyFiles()
{
    // Before the dialog is shown, so that an immediate Cancel is not lost.
    setCopyCancelled(false);
    MyDialogProgressBar dialog(this, msg(lumi::MsgCopying), msg(lumi::MsgDoNotRemoveCard));
    connect(&dialog, &MyDialogProgressBar::btn_cancel_clicked, this, &FormImport::copyCancel);
    dialog.setWindowTitle(msg(lumi::MsgLumiVault));
    dialog.start(FPVFileTree::fileCount() + kExtraSteps);
    dialog.progress(0);
    lumi::ImportCallbacks callbacks;
    callbacks.progress = [&dialog](int step) {
        dialog.progress(step);
    };
    callbacks.isCardPresent = [this] {
        return m_sourceCard.isThere();
    };
    callbacks.fileFailed = [this](const QString &path, ImportKind kind) {
        lumi::appendErrorBlock(&m_errorReport, path, kind);
    };
    lumi::ImportRun run({FPVFileTree::rootPrefix(), m_fileTree.folders(), m_fileTree.allFiles(),
                         FPVFileTree::leftOut()},
                        callbacks);
    ImportKind kind = run.run(m_folderName);
    if (run.copiedCount() > 0 && !lumi::QuitRequest::isPending()) {
        dialog.show(); // Cancel hides it, and the wait can be cancelled, too
        kind = run.waitForDisk(kind);
    }
    m_folderName = run.folderName();
    m_copiedCount = run.copiedCount();
    return kind;
}

void FormImport::copyAndReport()
{
    const ImportKind kind = copyFiles();
    if (kind == ImportKind::Done) {
        const QString text = lumi::copiedText(m_folderName, FPVFileTree::fileCount());
        lumi::NoticeAgent::post(text);
        lumi::tell(this, QMessageBox::NoIcon, msg(lumi::MsgDone), text, lumi::BoxLines::Whole);
        return;
    }
    const FailureRow *row = failureOf(kind);
    lumi::NoticeAgent::post(
        m_copiedCount > 0 ? lumi::partlyCopiedText(m_folderName, m_copiedCount)
                          : msg(row != nullptr ? row->text : lumi::MsgErrorProcessingStopped));
    tellFailure(kind);
    if (m_copiedCount > 0) {
        offerReport();
    }
}

void FormImport::tellFailure(ImportKind kind)
{
    if (const FailureRow *row = failureOf(kind)) {
        lumi::tell(this, row->icon, msg(row->caption), msg(row->text), lumi::BoxLines::Whole);
        return;
    }
    // If files were copied, the box of the report says it.
    if (m_copiedCount < 1) {
        tellError(lumi::MsgErrorProcessingStopped);
    }
}

void FormImport::offerReport()
{
    const QString text = lumi::partlyCopiedText(m_folderName, m_copiedCount);
    while (
        lumi::ask(this, msg(lumi::MsgDone), text, msg(lumi::MsgErrorDetails), msg(lumi::MsgExit))) {
        lumi::showReport(this, m_errorReport);
    }
}
