// SPDX-License-Identifier: MIT
#include "app/runProgram.h"

#include "app/MainWindow.h"
#include "platform/QPEApplication.h"
#include "platform/session/QuitRequest.h"
#include "platform/session/SingleInstance.h"
#include "platform/windows/bringToFront.h"
#include "swap/SwapSystem.h"
#include "swap/swapStore.h"
#include "views/folderRoots.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <cstdlib>

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

namespace {

/// Qt calls exit() if the X server ends before the program, as it does at the end of many sessions.
/// The destructors of runProgram() don't run then.
void closeStoreAtExit()
{
    std::atexit([] {
        if (SwapSystem *store = swapSystem()) {
            store->InitWrite();
        }
    });
}

} // namespace

int lumi::runProgram(QPEApplication &application)
{
    // These objects are destroyed in reverse order: the window and its form first, then the swap
    // store, which writes its index. Until then no other start may open the store, and no signal may
    // end the process.
    const SingleInstance instance(QDir::homePath());
    if (!instance.isFirst()) {
        return 0;
    }
    const QuitRequest quitRequest;
    const QString storePath = lumi::photoStorePath();
    const QDir store(storePath);
    if (!store.exists() && !store.mkpath(storePath)) {
        qDebug("Photo_Files mkdir err");
    }
    const QString extension = QStringLiteral(".swp");
    const QString swapFolder = storePath + QStringLiteral("/.photo_swp");
    SwapSystem swap(QFile::encodeName(swapFolder), extension);
    swapSystem(&swap);
    closeStoreAtExit();
    MainWindow window;
    QObject::connect(&instance, &SingleInstance::startedAgain, &window,
                     [&window](const QByteArray &token) {
                         bringToFront(&window, token);
                     });
    QObject::connect(&quitRequest, &QuitRequest::idle, &window, &MainWindow::closeIfIdle);
    application.showMainWidget(&window, false);
    return QApplication::exec();
}
