// SPDX-License-Identifier: MIT
#include "app/runProgram.h"
#include "platform/QPEApplication.h"

int main(int argc, char **argv)
{
    lumi::prepareProcess();
    QPEApplication application(argc, argv, QPEApplication::GuiClient);
    return lumi::runProgram(application);
}
