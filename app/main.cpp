// SPDX-License-Identifier: MIT
#include "app/runProgram.h"
#include "platform/QPEApplication.h"
#include "platform/screen/scaleCap.h"

int main(int argc, char **argv)
{
    lumi::prepareProcess();
    QPEApplication application(argc, argv, QPEApplication::GuiClient);
    lumi::capScale(argv);
    return lumi::runProgram(application);
}
