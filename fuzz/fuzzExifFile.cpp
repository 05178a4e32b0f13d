// SPDX-License-Identifier: MIT
// The walking reader on arbitrary bytes. It must end, even if the caller goes on after a null tag.
#include "exif/read/FPVExifFile.h"
#include "fuzz/FuzzInput.h"

#include <cstdlib>
#include <memory>

int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    lumi::fuzz::begin();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr int kMostEntries = 5 * 65535;
    FPVExifFile file(lumi::fuzz::inputFile(data, size, "photo.jpg"));
    int entries = 0;
    while (file.isOpen()) {
        const std::unique_ptr<FPVExifTag> tag(file.nextTag());
        if (++entries > kMostEntries) {
            std::abort();
        }
        if (tag) {
            static_cast<void>(tag->intValue());
            static_cast<void>(tag->text());
            static_cast<void>(tag->description());
            static_cast<void>(tag->data());
        }
    }
    return 0;
}
