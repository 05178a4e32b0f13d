// SPDX-License-Identifier: MIT
#include "tests/items/LibraryFaults.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <dirent.h>
#include <dlfcn.h>
#include <jerror.h>
#include <jpeglib.h>

namespace {

constexpr int kNever = -1;

int failingLine = kNever;
bool closedirFails = false;
bool createFails = false;
int decompressors = 0;
int headers = 0;
int finishes = 0;
JSAMPROW firstLine = nullptr;
JSAMPROW lastLine = nullptr;

template <class Function> Function *original(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

/// Whether the source is one of this program, not one of the toolkit's image reader.
bool isOwnCode(void *function)
{
    Dl_info theirs{};
    Dl_info ours{};
    return ::dladdr(function, &theirs) != 0 && ::dladdr(&headers, &ours) != 0
        && theirs.dli_fbase == ours.dli_fbase;
}

} // namespace

extern "C" {

int jpeg_read_header(j_decompress_ptr cinfo, boolean requireImage)
{
    headers += isOwnCode(reinterpret_cast<void *>(cinfo->src->fill_input_buffer)) ? 1 : 0;
    static auto *kReal = original<decltype(jpeg_read_header)>("jpeg_read_header");
    return kReal(cinfo, requireImage);
}

JDIMENSION jpeg_read_scanlines(j_decompress_ptr cinfo, JSAMPARRAY lines, JDIMENSION count)
{
    if (failingLine != kNever && cinfo->output_scanline >= static_cast<JDIMENSION>(failingLine)) {
        cinfo->err->msg_code = JERR_INPUT_EOF;
        cinfo->err->error_exit(reinterpret_cast<j_common_ptr>(cinfo));
    }
    firstLine = cinfo->output_scanline == 0 ? lines[0] : std::min(firstLine, lines[0]);
    lastLine = cinfo->output_scanline == 0 ? lines[0] : std::max(lastLine, lines[0]);
    static auto *kReal = original<decltype(jpeg_read_scanlines)>("jpeg_read_scanlines");
    return kReal(cinfo, lines, count);
}

void jpeg_CreateDecompress(j_decompress_ptr cinfo, int version, size_t size)
{
    ++decompressors;
    if (createFails) {
        cinfo->err->msg_code = JERR_OUT_OF_MEMORY;
        cinfo->err->error_exit(reinterpret_cast<j_common_ptr>(cinfo));
    }
    static auto *kReal = original<decltype(jpeg_CreateDecompress)>("jpeg_CreateDecompress");
    kReal(cinfo, version, size);
}

void jpeg_destroy_decompress(j_decompress_ptr cinfo)
{
    static auto *kReal = original<decltype(jpeg_destroy_decompress)>("jpeg_destroy_decompress");
    kReal(cinfo);
    --decompressors;
}

boolean jpeg_finish_decompress(j_decompress_ptr cinfo)
{
    static auto *kReal = original<decltype(jpeg_finish_decompress)>("jpeg_finish_decompress");
    ++finishes;
    return kReal(cinfo);
}

int closedir(DIR *directory)
{
    static auto *kReal = original<decltype(closedir)>("closedir");
    const int result = kReal(directory);
    if (closedirFails) {
        errno = EIO;
        return -1;
    }
    return result;
}
}

namespace lumi::test {

LibraryFaults::~LibraryFaults()
{
    failingLine = kNever;
    closedirFails = false;
    createFails = false;
}

void LibraryFaults::failJpegFromLine(int line)
{
    failingLine = line;
}

void LibraryFaults::failClosedir()
{
    closedirFails = true;
}

void LibraryFaults::failJpegCreate()
{
    createFails = true;
}

int liveDecompressors()
{
    return decompressors;
}

int photosOpened()
{
    return headers;
}

int finishedDecodes()
{
    return finishes;
}

std::ptrdiff_t lineReach()
{
    return lastLine - firstLine;
}

} // namespace lumi::test
