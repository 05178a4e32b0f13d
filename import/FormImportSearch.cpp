// SPDX-License-Identifier: MIT
// The search of a card before anything is copied: what is there, and will it fit.
#include "app/common/diskSpace.h"
#include "app/common/messages.h"
#include "import/FormImport.h"
#include "import/ImportRun.h"
#include "import/importBoxes.h"
#include "import/importTexts.h"
#include "widgets/MyDialogWait.h"

void FormImport::searchCancel()
{
    FPVFileTree::setWalkCancelled(true);
}

FormImport::SearchResult FormImport::runSearch()
{
    MyDialogWait wait(this, msg(lumi::MsgSearchingPleaseWait), msg(lumi::MsgCancel));
    connect(&wait, &MyDialogWait::btn_clicked, this, &FormImport::searchCancel);
    wait.setWindowTitle(msg(lumi::MsgLumiVault));
    wait.start(0);
    if (!m_fileTree.walk(m_sourcePath, false, nullptr)) {
        return Failed;
    }
    if (FPVFileTree::walkCancelled()) {
        return SearchCancelled;
    }
    if (FPVFileTree::fileCount() < 1) {
        return NoFile;
    }
    return lumi::mayNotFit(FPVFileTree::byteCount(), lumi::freeDocumentsKB()) ? NoRoom : Found;
}

bool FormImport::searchCard()
{
    const QString name = lumi::sourceName(m_sourcePath);
    const SearchResult result = runSearch();
    // Before the result: without its card it means nothing.
    if (!cardPresent()) {
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError), msg(lumi::MsgAccessErrors));
        return false;
    }
    const int photos = lumi::photoCount(m_fileTree.allFiles());
    switch (result) {
    case Found:
    case NoRoom:
        return askWhetherToCopy(lumi::foundText(name, photos, FPVFileTree::byteCount()),
                                result == Found);
    case NoFile:
        lumi::tellBox(this, QMessageBox::Information, msg(lumi::MsgSearchResult),
                      msg(lumi::MsgInspectionNotPerformed).arg(name));
        return false;
    case Failed:
        lumi::tellBox(this, QMessageBox::Critical, msg(lumi::MsgError),
                      msg(lumi::MsgErrorProcessingStopped));
        return false;
    case SearchCancelled:
        break;
    }
    lumi::tellBox(this, QMessageBox::Information, msg(lumi::MsgStop),
                  msg(lumi::MsgProcessingStopped));
    return false;
}

bool FormImport::askWhetherToCopy(const QString &found, bool fits)
{
    const QString question = msg(fits ? lumi::MsgCopyToPhotoFiles : lumi::MsgMayNotFit);
    if (lumi::askYesNo(this, msg(lumi::MsgSearchResult), found + QLatin1Char('\n') + question)) {
        return true;
    }
    lumi::tellBox(this, QMessageBox::Information, msg(lumi::MsgStop),
                  msg(lumi::MsgProcessingStopped));
    return false;
}
