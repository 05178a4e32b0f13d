// SPDX-License-Identifier: MIT
#include "platform/windows/QPEDecoration.h"

#include "platform/Machine.h"
#include "platform/QPEApplication.h"
#include "platform/touch/DragScroll.h"
#include "platform/windows/dialogButtons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr QSize kHelpSize(560, 420);
constexpr int kMargin = 4;

void showFirstPage(QTextBrowser *browser)
{
    const QString page = Machine::instance().resourceDir() + QLatin1String("/help/index.html");
    if (QFileInfo(page).isFile()) {
        browser->setSource(QUrl::fromLocalFile(page));
    } else {
        browser->setPlainText(QStringLiteral("The help pages are not installed."));
    }
}

} // namespace

void QPEDecoration::help(QWidget *widget)
{
    QDialog dialog(widget);
    dialog.setWindowTitle(QStringLiteral("Help"));
    auto *browser = new QTextBrowser(&dialog);
    browser->setAccessibleName(dialog.windowTitle());
    showFirstPage(browser);
    new lumi::DragScroll(browser);
    auto *column = new QVBoxLayout(&dialog);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(browser);
    column->addWidget(lumi::makeCloseRow(&dialog));
    dialog.resize(kHelpSize.boundedTo(QPEApplication::desktopSize()));
    dialog.exec();
}
