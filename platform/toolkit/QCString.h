// SPDX-License-Identifier: MIT
// The type of channel names and messages in the signatures of the inter-process channels.
#pragma once

#include <QByteArray>

using QCString = QByteArray;
