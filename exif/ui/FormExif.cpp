// SPDX-License-Identifier: MIT
#include "exif/ui/FormExif.h"

#include "app/common/labels.h"
#include "app/common/loadPixmap.h"
#include "app/common/messages.h"
#include "app/common/paths.h"
#include "exif/gps/LatLongPair.h"
#include "exif/text/FPVExifFields.h"
#include "exif/ui/ExifEditPage.h"
#include "exif/ui/MyMultiLineEdit.h"
#include "exif/ui/exifWriteBack.h"
#include "exif/write/FPVExifWriter.h"
#include "platform/QPEApplication.h"
#include "platform/Resource.h"
#include "platform/screen/panel.h"
#include "platform/session/QuitRequest.h"
#include "platform/toolkit/QPopupMenu.h"
#include "platform/windows/QPEMenuBar.h"
#include "platform/windows/QPEToolBar.h"
#include "widgets/commonActions.h"
#include "widgets/messageBoxes.h"

#include <QAction>
#include <QClipboard>
#include <QCloseEvent>
#include <QEventLoop>
#include <QFileInfo>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

using lumi::SaveResult;

namespace {

constexpr int kCaptionWidth = 50; // in characters
constexpr int kHintIndent = 10;
constexpr int kHintPoints = 16;
constexpr int kPagePoints = 12;
constexpr int kSavedResult = 1;

struct FailureRow
{
    SaveResult result;
    lumi::MessageId text;
    int field; ///< gets the focus; -1 for none
};

constexpr FailureRow kFailures[] = {
    {SaveResult::NoRoom, lumi::MsgFreeSomeMemory, -1},
    {SaveResult::Failed, lumi::MsgCompilingExifFailed, -1},
    {SaveResult::BadLatitude, lumi::MsgInvalidLatitude, lumi::LatitudeField},
    {SaveResult::BadLongitude, lumi::MsgInvalidLongitude, lumi::LongitudeField},
    {SaveResult::BadAltitude, lumi::MsgInvalidAltitude, lumi::AltitudeField},
};

QAction *makeAction(QObject *parent, lumi::MessageId text, const char *icon)
{
    return new QAction(lumi::loadPixmap(icon), msg(text), parent);
}

/// A single ampersand would mark a shortcut.
QString shownAsItIs(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

bool clipboardHasText()
{
    return !QGuiApplication::clipboard()->text().isEmpty();
}

/// The user sees composed text in the field, so it has to be part of the text.
void commitComposition()
{
    QGuiApplication::inputMethod()->commit();
}

bool isMenu(const QWidget *widget)
{
    return qobject_cast<const QMenuBar *>(widget) != nullptr
        || qobject_cast<const QMenu *>(widget) != nullptr;
}

QLabel *makeHint(QWidget *parent)
{
    auto *hint = new QLabel(msg(lumi::MsgAlphanumericOnly), parent);
    hint->setIndent(kHintIndent);
    hint->setWordWrap(true); // a small screen has no room for it in one line
    setFontSize(hint, kHintPoints);
    QFont font = hint->font();
    font.setBold(true);
    hint->setFont(font);
    QPalette palette = hint->palette();
    palette.setColor(QPalette::WindowText, Qt::red);
    hint->setPalette(palette);
    return hint;
}

} // namespace

FormExif::FormExif(QWidget *parent, const QString &path)
    : QMainWindow(parent)
    , m_path(path)
    , m_photo(path)
{
    setWindowModality(Qt::ApplicationModal);
    // With the default menu the user could hide the bars and not get them back.
    setContextMenuPolicy(Qt::NoContextMenu);
    setWindowTitle(elideToChars(this, QFileInfo(path).baseName(), kCaptionWidth));
    buildBars();
    buildPages();
    lineedit_copyAvailable(false);
    lineedit_pasteAvailable(clipboardHasText());
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget * /*old*/, QWidget *now) {
        noteFocus(now);
    });
    QPEApplication::showMaximizedNow(this);
}

FormExif::~FormExif()
{
    // The fields lose the focus while they are destroyed, when noteFocus() must not run any more.
    disconnect(qApp, nullptr, this, nullptr);
}

void FormExif::buildBars()
{
    m_cutAction = makeAction(this, lumi::MsgCut, "cut");
    m_copyAction = makeAction(this, lumi::MsgCopy, "copy");
    m_pasteAction = makeAction(this, lumi::MsgPaste, "paste");
    connect(m_cutAction, &QAction::triggered, this, &FormExif::menu_edit_cut);
    connect(m_copyAction, &QAction::triggered, this, &FormExif::menu_edit_copy);
    connect(m_pasteAction, &QAction::triggered, this, &FormExif::menu_edit_paste);
    const QList<QAction *> actions{m_cutAction, m_copyAction, m_pasteAction};

    auto *bar = new QPEToolBar(this);
    bar->setHorizontalStretchable(true);
    auto *menuBar = new QPEMenuBar(bar);
    auto *edit = new QPopupMenu(menuBar);
    edit->setTitle(msg(lumi::MsgEdit));
    edit->addActions(actions);
    QPopupMenu::showKey(m_cutAction, "Ctrl+X");
    QPopupMenu::showKey(m_copyAction, "Ctrl+C");
    QPopupMenu::showKey(m_pasteAction, "Ctrl+V");
    edit->insertSeparator();
    edit->insertItem(shownAsItIs(msg(lumi::MsgSaveAndExit)), this, &FormExif::menu_edit_save);
    edit->insertSeparator();
    edit->insertItem(msg(lumi::MsgExit), this, &FormExif::menu_edit_editCancel);
    menuBar->addMenu(edit);
    auto *about = new QPopupMenu(menuBar);
    about->setTitle(msg(lumi::MsgAbout));
    about->insertItem(msg(lumi::MsgHelp), this, &FormExif::menu_option_Help);
    about->insertItem(msg(lumi::MsgVersion), this, &FormExif::menu_option_Version);
    menuBar->addMenu(about);

    auto *buttons = new QPEToolBar(this);
    buttons->addActions(actions);
    for (QAction *action : actions) {
        buttons->widgetForAction(action)->setMinimumSize(lumi::kFingerSize, lumi::kFingerSize);
    }
}

void FormExif::buildPages()
{
    auto *centre = new QWidget(this);
    auto *column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_tabs = new QTabWidget(centre);
    setFontSize(m_tabs, kPagePoints);
    m_tabs->setAccessibleName(QStringLiteral("Pages"));
    column->addWidget(makeHint(centre));
    column->addWidget(m_tabs, 1);
    FPVExifFields fields(m_path);
    m_blockWasRead = fields.isValid();
    for (const lumi::EditPage &page : lumi::kEditPages) {
        auto *tab = new lumi::ExifEditPage(m_tabs, page, &fields);
        m_tabs->addTab(tab, FPVExifFields::groupTitle(page.group));
        for (std::size_t i = 0; i < tab->edits().size(); ++i) {
            m_edits.at(static_cast<std::size_t>(page.rules[i].field)) = tab->edits()[i];
            connectEdit(tab->edits()[i]);
        }
    }
    for (const lumi::EditField field : {lumi::LatitudeField, lumi::LongitudeField}) {
        connect(m_edits.at(static_cast<std::size_t>(field)), &MyMultiLineEdit::signalPaste, this,
                &FormExif::lineedit_paste);
    }
    setCentralWidget(centre);
}

void FormExif::connectEdit(MyMultiLineEdit *edit)
{
    connect(edit, &MyMultiLineEdit::copyAvailable, this, &FormExif::lineedit_copyAvailable);
    connect(edit, &MyMultiLineEdit::pasteAvailable, this, &FormExif::lineedit_pasteAvailable);
}

int FormExif::exec()
{
    QEventLoop loop;
    m_loop = &loop;
    show();
    loop.exec();
    m_loop = nullptr;
    return m_result;
}

void FormExif::hideEvent(QHideEvent *event)
{
    QMainWindow::hideEvent(event);
    // Minimising is spontaneous and does not end the window.
    if (m_loop != nullptr && !event->spontaneous()) {
        m_loop->quit();
    }
}

void FormExif::end(int result)
{
    m_result = result;
    hide();
}

void FormExif::closeEvent(QCloseEvent *event)
{
    event->setAccepted(menu_edit_editCancel());
}

void FormExif::accept()
{
    menu_edit_save();
}

void FormExif::noteFocus(QWidget *now)
{
    auto *edit = qobject_cast<MyMultiLineEdit *>(now);
    if (edit != nullptr && edit->window() == this) {
        m_lastEdit = edit;
    } else if (now != nullptr && !isMenu(now)) {
        m_lastEdit = nullptr;
    }
}

void FormExif::sendControlKey(int key)
{
    QWidget *target = QApplication::focusWidget();
    if (qobject_cast<QMenuBar *>(target) != nullptr) {
        target = m_lastEdit;
    }
    if (qobject_cast<QMultiLineEdit *>(target) != nullptr) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        QCoreApplication::sendEvent(target, &event);
    }
}

void FormExif::menu_edit_undo()
{
    sendControlKey(Qt::Key_Z);
}

void FormExif::menu_edit_cut()
{
    sendControlKey(Qt::Key_X);
}

void FormExif::menu_edit_copy()
{
    sendControlKey(Qt::Key_C);
}

void FormExif::menu_edit_paste()
{
    sendControlKey(Qt::Key_V);
}

void FormExif::lineedit_copyAvailable(bool available)
{
    m_cutAction->setEnabled(available);
    m_copyAction->setEnabled(available);
}

void FormExif::lineedit_pasteAvailable(bool available)
{
    m_pasteAction->setEnabled(available);
}

void FormExif::lineedit_paste(QString *text)
{
    LatLongPair position;
    if (position.fromText(*text)) {
        m_edits[lumi::LatitudeField]->replaceText(position.latitude().text());
        m_edits[lumi::LongitudeField]->replaceText(position.longitude().text());
        text->clear();
    }
}

void FormExif::menu_option_Help()
{
    showHelp(this);
}

void FormExif::menu_option_Version()
{
    showVersion(this);
}

bool FormExif::isEdited() const
{
    return std::any_of(m_edits.begin(), m_edits.end(), [](const MyMultiLineEdit *edit) {
        return edit->edited();
    });
}

bool FormExif::menu_edit_editCancel()
{
    commitComposition();
    if (isEdited()
        && !lumi::confirmDiscard(this, msg(lumi::MsgEditCancelled),
                                 msg(lumi::MsgExifChangedDiscard))) {
        return false;
    }
    end(0);
    return true;
}

lumi::EditTexts FormExif::texts() const
{
    lumi::EditTexts texts;
    std::transform(m_edits.begin(), m_edits.end(), texts.begin(), [](const MyMultiLineEdit *edit) {
        return edit->text();
    });
    return texts;
}

void FormExif::menu_edit_save()
{
    commitComposition();
    const SaveResult result = save();
    if (result == SaveResult::Saved) {
        end(kSavedResult);
    } else {
        tellFailure(result);
    }
}

SaveResult FormExif::save()
{
    FPVExifWriter writer(m_path);
    MyDialogWait wait(this, msg(lumi::MsgWorking));
    wait.start(0);
    // Events ran during start(): the card may have been exchanged.
    if (!m_photo.isStillIt() || (writer.isValid() && !m_blockWasRead)
        || lumi::isProtected(m_path)) {
        return SaveResult::Failed;
    }
    return lumi::saveTexts(texts(), &writer);
}

void FormExif::tellFailure(SaveResult result)
{
    const auto *row
        = std::find_if(std::begin(kFailures), std::end(kFailures), [result](const FailureRow &r) {
              return r.result == result;
          });
    lumi::tellError(this, msg(row->text));
    if (row->field >= 0) {
        m_tabs->setCurrentIndex(lumi::kPositionPage);
        // Without a window manager the window would not get its focus back.
        activateWindow();
        m_edits.at(static_cast<std::size_t>(row->field))->setFocus();
    }
}
