// SPDX-License-Identifier: MIT
// The second half of an import: the folder's name, the copy with its progress, the report.
#include "app/common/getText.h"
#include "app/common/messages.h"
#include "files/engine/copyFile.h"
#include "import/FormImport.h"
#include "import/ImportRun.h"
#include "import/importBoxes.h"
#include "import/importReport.h"
#include "import/importTexts.h"
#include "widgets/MyDialogProgressBar.h"
#include "widgets/askBox.h"

#include <QDate>

using lumi::ImportKind;

namespace {

constexpr int kNameLength = 30;
/// Steps of the bar beside those of the files. One of them is never made.
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
    // Before the dialog comes up: a Cancel counts from its first moment on.
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
        return cardPresent();
    };
    callbacks.fileFailed = [this](const QString &path, ImportKind kind) {
        addErrorLine(path, kind);
    };
    lumi::ImportRun run({FPVFileTree::rootPrefix(), m_fileTree.folders(), m_fileTree.allFiles(),
                         FPVFileTree::leftOut()},
                        callbacks);
    ImportKind kind = run.run(m_folderName);
    if (run.copiedCount() > 0) {
        dialog.show(); // a Cancel of the copy has hidden it, and the wait has a Cancel too
        kind = run.waitForDisk(kind);
    }
    m_folderName = run.folderName();
    m_copiedCount = run.copiedCount();
    return kind;
}

void FormImport::addErrorLine(const QString &path, ImportKind kind)
{
    lumi::appendErrorBlock(&m_errorReport, path, kind);
}

bool FormImport::copyAndReport()
{
    const ImportKind kind = copyFiles();
    if (kind == ImportKind::Done) {
        lumi::tellBox(this, QMessageBox::NoIcon, msg(lumi::MsgDone),
                      lumi::copiedText(m_folderName, FPVFileTree::fileCount()));
        return true;
    }
    tellFailure(kind);
    if (m_copiedCount < 1) {
        return false;
    }
    offerReport();
    return true;
}

void FormImport::tellFailure(ImportKind kind)
{
    for (const FailureRow &row : kFailures) {
        if (row.kind == kind) {
            lumi::tellBox(this, row.icon, msg(row.caption), msg(row.text));
            return;
        }
    }
    // With copied files the box of the report says it.
    if (m_copiedCount < 1) {
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError),
                      msg(lumi::MsgErrorProcessingStopped));
    }
}

void FormImport::offerReport()
{
    const QString text = lumi::partlyCopiedText(m_folderName, m_copiedCount);
    while (askBox(this, msg(lumi::MsgDone), text, msg(lumi::MsgErrorDetails), msg(lumi::MsgExit))
           == 0) {
        lumi::showReport(this, msg(lumi::MsgErrorDetails), m_errorReport);
    }
}
