// SPDX-License-Identifier: MIT
// The data of a block operation. With an image it is the image form, otherwise the buffer form.
#pragma once

class QImage;

// NOLINTNEXTLINE(readability-identifier-naming): part of the interface
struct stSwap
{
    QImage *image = nullptr;      ///< lent; source of a write, destination of a read
    unsigned char *buf = nullptr; ///< lent; used only if image is null
    int size = 0;                 ///< bytes of buf; after a read the number of bytes read
    int param
        = 0; ///< the caller's discriminator, part of a block's key (the width of the thumbnail)
    signed char kind = 0; ///< 'l', 's' or 'd'; 0 in the buffer form
};
