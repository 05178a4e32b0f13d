// SPDX-License-Identifier: MIT
#include "app/runProgram.h"

#include "app/MainWindow.h"
#include "platform/QPEApplication.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "views/folderRoots.h"

#include <QDir>
#include <QFile>

int lumi::runProgram(QPEApplication &application)
{
    // The order of these objects is the order of the end, read backwards: the window and its
    // form go first, then the swap store writes its index.
    const QString storePath = lumi::photoStorePath();
    const QDir store(storePath);
    if (!store.exists() && !store.mkpath(storePath)) {
        qDebug("Photo_Files mkdir err");
    }
    const QString extension = QStringLiteral(".swp");
    const QString swapFolder = storePath + QStringLiteral("/.photo_swp");
    SwapSystem swap(QFile::encodeName(swapFolder), extension);
    swapSystem(&swap);
    MainWindow window;
    application.showMainWidget(&window, false);
    return QApplication::exec();
}
