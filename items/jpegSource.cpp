// SPDX-License-Identifier: MIT
#include "items/jpegSource.h"

#include <cerrno>

#include <unistd.h>

namespace {

void doNothing(j_decompress_ptr /*cinfo*/) { }

boolean fillInputBuffer(j_decompress_ptr cinfo)
{
    auto *source = reinterpret_cast<my_jpeg_source_mgr *>(cinfo->src);
    ssize_t count = 0;
    do {
        count = ::read(source->file, source->buffer, kJpegWindowBytes);
    } while (count < 0 && errno == EINTR);
    if (count <= 0) {
        source->buffer[0] = 0xFF;
        source->buffer[1] = JPEG_EOI;
        count = 2;
    }
    source->manager.next_input_byte = source->buffer;
    source->manager.bytes_in_buffer = static_cast<std::size_t>(count);
    return TRUE;
}

void skipInputData(j_decompress_ptr cinfo, long count)
{
    if (count < 1) {
        return;
    }
    jpeg_source_mgr *manager = cinfo->src;
    auto left = static_cast<std::size_t>(count);
    while (left > manager->bytes_in_buffer) {
        left -= manager->bytes_in_buffer;
        fillInputBuffer(cinfo);
    }
    manager->next_input_byte += left;
    manager->bytes_in_buffer -= left;
}

} // namespace

void lumi::attachJpegSource(jpeg_decompress_struct *cinfo, my_jpeg_source_mgr *source, int file)
{
    source->manager.init_source = doNothing;
    source->manager.fill_input_buffer = fillInputBuffer;
    source->manager.skip_input_data = skipInputData;
    source->manager.resync_to_restart = jpeg_resync_to_restart;
    source->manager.term_source = doNothing;
    source->manager.bytes_in_buffer = 0;
    source->manager.next_input_byte = source->buffer;
    source->file = file;
    cinfo->src = &source->manager;
}
