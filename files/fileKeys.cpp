// SPDX-License-Identifier: MIT
#include "files/fileKeys.h"

lumi::FileKey lumi::fileKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Delete) {
        return FileKey::Delete;
    }
    if (!modifiers.testFlag(Qt::ControlModifier)) {
        return FileKey::None;
    }
    switch (key) {
    case Qt::Key_C:
        return FileKey::Copy;
    case Qt::Key_X:
        return FileKey::Cut;
    case Qt::Key_V:
        return FileKey::Paste;
    default:
        return FileKey::None;
    }
}
