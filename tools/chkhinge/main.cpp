// SPDX-License-Identifier: MIT
// chkhinge: its exit status is the position of a convertible's screen: 1 if it is folded back
// (tablet mode), otherwise 0. It is also 0 without such a switch or without the permission to read
// it. From the status the program knows the meaning of the "up" key.
#include <array>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr const char *kInputFolder = "/dev/input";

using Switches = std::array<unsigned char, SW_MAX / 8 + 1>;

bool isSet(const Switches &switches, unsigned bit)
{
    return ((static_cast<unsigned>(switches[bit / 8U]) >> (bit % 8U)) & 1U) != 0;
}

/// False for anything that is not an input device.
bool inTabletMode(const std::string &device)
{
    const int fd = open(device.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    Switches present{};
    Switches states{};
    const bool on = ioctl(fd, EVIOCGBIT(EV_SW, present.size()), present.data()) >= 0
        && isSet(present, SW_TABLET_MODE) && ioctl(fd, EVIOCGSW(states.size()), states.data()) >= 0
        && isSet(states, SW_TABLET_MODE);
    close(fd);
    return on;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string folder = std::string(argc > 1 ? argv[1] : kInputFolder) + '/';
    DIR *const devices = opendir(folder.c_str());
    if (devices == nullptr) {
        return 0;
    }
    bool tablet = false;
    while (const dirent *entry = readdir(devices)) {
        const std::string name = entry->d_name;
        tablet = tablet
            || (name.rfind("event", 0) == 0 && inTabletMode(std::string(folder).append(name)));
    }
    closedir(devices);
    return tablet ? 1 : 0;
}
