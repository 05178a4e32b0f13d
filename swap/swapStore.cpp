// SPDX-License-Identifier: MIT
#include "swap/swapStore.h"

#include "swap/SwapSystem.h"

namespace {

SwapSystem *&handle()
{
    static SwapSystem *stored = nullptr;
    return stored;
}

/// The store, with the control of the path's folder current, and the file's name. Null without a
/// store or for a path without a folder.
SwapSystem *storeFor(const QString &path, QString &name)
{
    SwapSystem *store = handle();
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (store == nullptr || slash <= 0) {
        return nullptr;
    }
    name = path.mid(slash + 1);
    store->SetCurrent(path.left(slash), -1);
    return store;
}

} // namespace

SwapSystem *swapSystem(SwapSystem *set)
{
    if (set != nullptr) {
        handle() = set;
    }
    return handle();
}

void lumi::releaseSwapSystem(const SwapSystem *gone)
{
    if (handle() == gone) {
        handle() = nullptr;
    }
}

// NOLINTBEGIN(performance-unnecessary-value-param): parts of the interface

bool SwapLoad(QString path, QImage *image, int param, char kind)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bLoad(name, image, param, kind);
}

bool SwapLoad(QString path, unsigned char *buf, int *size, int param)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bLoad(name, buf, size, param);
}

bool SwapAppend(QString path, QImage *image, int param, char kind)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bAppend(name, image, param, kind);
}

bool SwapAppend(QString path, unsigned char *buf, int size, int param)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bAppend(name, buf, size, param);
}

bool SwapGetSize(QString path, QSize *size)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bGetSize(name, size);
}

bool SwapSetSize(QString path, const QSize *size)
{
    QString name;
    SwapSystem *store = storeFor(path, name);
    return store != nullptr && store->bSetSize(name, size);
}

// NOLINTEND(performance-unnecessary-value-param)
