// SPDX-License-Identifier: MIT
// Encodes with libpng, and saves as the settings are saved: whole or not at all.
#include "platform/sdl/saved_picture.h"

#include "platform/posix/replacing_file.h"
#include "platform/sdl/gtk_words.h"
#include "platform/sdl/notice.h"
#include "platform/sdl/saved_picture_name.h"
#include "platform/sdl/sdl_window.h"
#include "platform/window/windowed_host.h"

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <glib.h>
#include <png.h>

namespace fs = std::filesystem;

namespace host {

namespace {

/// The desktop's folder of pictures, or the user's home where there is none.
fs::path pictures_folder() {
    const char *pictures = g_get_user_special_dir(G_USER_DIRECTORY_PICTURES);
    return pictures != nullptr ? pictures : g_get_home_dir();
}

/// Writes the file; the system's error number, 0 if it was saved.
int save(const fs::path &path, const std::vector<unsigned char> &bytes) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    int reason = 0;
    std::FILE *file = open_for_saving(path.string(), [&reason](int failure) { reason = failure; });
    if (file == nullptr) {
        return error ? error.value() : reason;
    }
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    return reason;
}

} // namespace

std::vector<unsigned char> png_of(const BitMap &bitmap, const Palette &palette) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(bitmap.width);
    image.height = static_cast<png_uint_32>(bitmap.height);
    image.format = PNG_FORMAT_RGB_COLORMAP;
    image.colormap_entries = static_cast<png_uint_32>(palette.size());
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<unsigned char> bytes(size);
    png_image_write_to_memory(&image, bytes.data(), &size, 0, bitmap.pixels.data(), bitmap.width,
                              palette.data());
    bytes.resize(size);
    return bytes;
}

void save_picture(const MemoryScreen &screen) {
    const std::vector<unsigned char> bytes = png_of(*screen.shown, screen.colours.colours);
    const std::string path =
        saved_picture_path(pictures_folder().string(), object_path,
                           std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
    const int error = save(path, bytes);
    if (error == 0) {
        show_brief_message("Zelvo: picture saved as " + path_words(path));
        return;
    }
    show_notice_over_viewer("Zelvo: picture not saved", report_failed_save("The picture", path, error));
}

} // namespace host
