// SPDX-License-Identifier: MIT
// Names that sort by object and time.
#include "platform/sdl/saved_picture_name.h"

#include <array>
#include <filesystem>

namespace fs = std::filesystem;

namespace host {

std::string saved_picture_path(const std::string &folder, const std::string &object, std::time_t time) {
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "_%Y-%m-%d_%H-%M-%S", std::localtime(&time));
    const std::string name = fs::path(object).stem().string() + text.data();
    fs::path path = fs::path(folder) / (name + ".png");
    std::error_code error;
    for (int number = 2; fs::exists(path, error); ++number) {
        path = fs::path(folder) / (name + "-" + std::to_string(number) + ".png");
    }
    return path.string();
}

} // namespace host
