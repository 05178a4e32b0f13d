// SPDX-License-Identifier: MIT
// The search of a card before anything is copied: its files, and whether there is room for them.
#include "app/common/diskSpace.h"
#include "app/common/messages.h"
#include "import/FormImport.h"
#include "import/ImportRun.h"
#include "import/importTexts.h"
#include "platform/session/NoticeAgent.h"
#include "widgets/messageBoxes.h"

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
    m_fileTree.walk(m_sourcePath, false, nullptr);
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
    // Without the card the result is meaningless.
    if (!m_sourceCard.isThere()) {
        lumi::NoticeAgent::post(msg(lumi::MsgAccessErrors));
        tellError(lumi::MsgAccessErrors);
        return false;
    }
    const int photos = lumi::photoCount(m_fileTree.allFiles());
    switch (result) {
    case Found:
    case NoRoom:
        return askWhetherToCopy(lumi::foundText(name, photos, FPVFileTree::byteCount()),
                                result == Found);
    case NoFile: {
        const QString text = msg(lumi::MsgInspectionNotPerformed).arg(name);
        lumi::NoticeAgent::post(text);
        lumi::tell(this, QMessageBox::Information, msg(lumi::MsgSearchResult), text,
                   lumi::BoxLines::Whole);
        break;
    }
    case SearchCancelled:
        tellStopped();
        break;
    }
    return false;
}

bool FormImport::askWhetherToCopy(const QString &found, bool fits)
{
    const QString question = msg(fits ? lumi::MsgCopyToPhotoFiles : lumi::MsgMayNotFit);
    if (lumi::ask(this, msg(lumi::MsgSearchResult), found + QLatin1Char('\n') + question)) {
        return true;
    }
    tellStopped();
    return false;
}
