// SPDX-License-Identifier: MIT
#include "app/runProgram.h"

#include "app/MainWindow.h"
#include "platform/QPEApplication.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "views/folderRoots.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

void lumi::prepareProcess()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // The next file that is opened gets the number of a closed stream. Log lines would then be
    // written into that file, for example into a photo.
    int descriptor = -1;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

int lumi::runProgram(QPEApplication &application)
{
    // These objects are destroyed in reverse order: the window and its form first, then the swap
    // store, which writes its index.
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
