// SPDX-License-Identifier: MIT
// Replaces the C library's ioctl in tests of chkhinge. $FAKE_SWITCH gives the answer of the device:
// "none" has no switches, "lid" has another switch than that of the screen, "laptop" and "tablet"
// have it, off and on.
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

#include <linux/input.h>
#include <sys/ioctl.h>

namespace {

unsigned char bitOf(unsigned bit, bool set)
{
    return set ? static_cast<unsigned char>(1U << (bit % 8U)) : static_cast<unsigned char>(0);
}

} // namespace

extern "C" int ioctl(int fd, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    auto *bits = va_arg(arguments, unsigned char *);
    va_end(arguments);
    const char *answer = std::getenv("FAKE_SWITCH");
    const std::string kind = answer != nullptr ? answer : "none";
    if (fd < 0 || kind == "none") {
        return -1;
    }
    const bool state = _IOC_NR(request) == _IOC_NR(EVIOCGSW(0));
    const bool other = kind == "lid";
    const unsigned bit = other ? SW_LID : SW_TABLET_MODE;
    std::memset(bits, 0, _IOC_SIZE(request));
    bits[bit / 8U] = bitOf(bit, !state || other || kind == "tablet");
    return 0;
}
