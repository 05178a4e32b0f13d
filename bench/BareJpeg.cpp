// SPDX-License-Identifier: MIT
#include "bench/BareJpeg.h"

#include <cstdio>
#include <memory>
#include <vector>

#include <jpeglib.h>

namespace {

constexpr std::size_t kWindow = 8132;

struct Source
{
    jpeg_source_mgr manager;
    FILE *file;
    JOCTET window[kWindow];
};

boolean fill(j_decompress_ptr info)
{
    auto *source = reinterpret_cast<Source *>(info->src);
    source->manager.bytes_in_buffer = std::fread(source->window, 1, kWindow, source->file);
    source->manager.next_input_byte = source->window;
    return TRUE;
}

void skip(j_decompress_ptr info, long count)
{
    jpeg_source_mgr *manager = info->src;
    while (count > static_cast<long>(manager->bytes_in_buffer)) {
        count -= static_cast<long>(manager->bytes_in_buffer);
        fill(info);
    }
    manager->next_input_byte += count;
    manager->bytes_in_buffer -= static_cast<std::size_t>(count);
}

} // namespace

QSize lumi::bench::bareDecode(const QByteArray &path, unsigned denominator)
{
    const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen(path.constData(), "rb"),
                                                      std::fclose);
    if (!file) {
        return {0, 0};
    }
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    Source source{};
    source.file = file.get();
    source.manager.init_source = [](j_decompress_ptr) {};
    source.manager.term_source = [](j_decompress_ptr) {};
    source.manager.fill_input_buffer = fill;
    source.manager.skip_input_data = skip;
    source.manager.resync_to_restart = jpeg_resync_to_restart;
    info.src = &source.manager;
    jpeg_read_header(&info, TRUE);
    info.scale_num = 1;
    info.scale_denom = denominator;
    info.dct_method = JDCT_IFAST;
    jpeg_start_decompress(&info);
    std::vector<JSAMPLE> line(std::size_t(info.output_width)
                              * static_cast<std::size_t>(info.output_components));
    JSAMPROW row = line.data();
    while (info.output_scanline < info.output_height) {
        jpeg_read_scanlines(&info, &row, 1);
    }
    const QSize size(static_cast<int>(info.output_width), static_cast<int>(info.output_height));
    jpeg_destroy_decompress(&info);
    return size;
}
