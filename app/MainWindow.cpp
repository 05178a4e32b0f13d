// SPDX-License-Identifier: MIT
#include "app/MainWindow.h"

#include "app/FormTop.h"
#include "app/common/FormEvent.h"
#include "app/common/FormId.h"
#include "app/common/shutDownFlag.h"
#include "files/FormFile.h"
#include "import/FormImport.h"
#include "platform/QPEApplication.h"
#include "platform/screen/panel.h"
#include "platform/touch/DragScroll.h"
#include "platform/windows/QPEToolBar.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QScrollArea>

#include <utility>

namespace {

struct FormRow
{
    int id;
    FormBase *(*make)(QWidget *window, QPEToolBar *toolBar);
};

template <typename Form> FormBase *makeA(QWidget *window, QPEToolBar *toolBar)
{
    return new Form(window, toolBar);
}

constexpr FormRow kForms[] = {
    {lumi::TopForm, makeA<FormTop>},
    {lumi::FileForm, makeA<FormFile>},
    {lumi::ImportForm, makeA<FormImport>},
};

auto makerOf(int id) -> decltype(FormRow::make)
{
    for (const FormRow &row : kForms) {
        if (row.id == id) {
            return row.make;
        }
    }
    return nullptr;
}

} // namespace

MainWindow::MainWindow(QWidget *parent, const char *name, Qt::WindowFlags flags)
    : QMainWindow(parent, flags)
    , m_toolBar(new QPEToolBar(this))
    , m_area(new QScrollArea(this))
{
    setObjectName(QString::fromUtf8(name));
    resize(lumi::kPanelSize);
    m_toolBar->setMovable(false);
    m_toolBar->setHorizontalStretchable(true);
    m_toolBar->installEventFilter(this);
    m_area->setWidgetResizable(true);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setFocusPolicy(Qt::NoFocus);
    new lumi::DragScroll(m_area);
    setCentralWidget(m_area);
    changeForm(lumi::TopForm, QString());
}

MainWindow::~MainWindow()
{
    // The form's destructor still needs the tool bar.
    m_area->takeWidget();
    delete std::exchange(m_form, nullptr);
}

void MainWindow::accept()
{
    if (m_form != nullptr) {
        m_form->acceptForm();
    }
}

void MainWindow::changeForm(int id, const QString & /*text*/)
{
    const FormMaker make = makerOf(id);
    if (make == nullptr) {
        qWarning("MainWindow::changeForm: no form has the id %d", id);
        return;
    }
    replaceForm(make);
}

void MainWindow::replaceForm(FormMaker make)
{
    // The window is a local variable of runProgram().
    setAttribute(Qt::WA_DeleteOnClose, false);
    FormBase *old = m_form;
    int oldId = -1;
    setWindowTitle(QString());
    m_changing = true;
    m_form = make(this, m_toolBar);
    m_form->installEventFilter(this);
    connect(m_form, &FormBase::busyReleased, this, &MainWindow::runWaiting, Qt::QueuedConnection);
    // The old form is taken out first, because setWidget() would delete it.
    m_area->takeWidget();
    m_area->setWidget(m_form);
    m_form->hide(); // until it is started
    if (old != nullptr) {
        oldId = old->formId();
        removeEventFilter(old);
        delete old;
    }
    m_changing = false;
    if (m_form->previousForm() < 0) {
        m_form->setPreviousForm(oldId);
    }
    QCoreApplication::postEvent(m_form, new FormStartEvent);
    if (!m_waiting.empty()) {
        QMetaObject::invokeMethod(this, &MainWindow::runWaiting, Qt::QueuedConnection);
    }
}

bool MainWindow::mustWait() const
{
    return m_changing || (m_form != nullptr && m_form->isBusy());
}

void MainWindow::handleRequest(const ChangeFormEvent &event)
{
    if (mustWait() || !m_waiting.empty()) {
        m_waiting.push_back({event.formId(), event.text()});
    } else {
        changeForm(event.formId(), event.text());
    }
}

void MainWindow::runWaiting()
{
    while (!m_waiting.empty() && !mustWait()) {
        const Request next = m_waiting.front();
        m_waiting.pop_front();
        changeForm(next.formId, next.text);
    }
}

void MainWindow::closeIfIdle()
{
    if (!mustWait()) {
        close();
    }
}

bool MainWindow::event(QEvent *event)
{
    if (event->type() == FormEvent::kType) {
        const auto *request = dynamic_cast<const ChangeFormEvent *>(event);
        if (request != nullptr) {
            handleRequest(*request);
        }
    }
    return QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (m_form == nullptr || m_form->canClose()) {
        lumi::setShutDownFlag(true);
        event->accept();
    } else {
        event->ignore();
    }
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    return lumi::shutDownFlag() || QMainWindow::eventFilter(watched, event);
}
