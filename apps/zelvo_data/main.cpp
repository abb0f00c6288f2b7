// SPDX-License-Identifier: MIT
// Generates the objects and the environment map that come with the viewer.
#include "atomic_file.h"
#include "environment_map.h"
#include "objects.h"
#include "platform/posix/standard_streams.h"

#include <exception>
#include <filesystem>
#include <iostream>

namespace {

using namespace zelvo_data;

void make_all(const std::filesystem::path &folder) {
    std::filesystem::create_directories(folder);
    write_file(folder / "torus_knot.lwo", encode_lwob(to_object(build_torus_knot())));
    write_file(folder / "cut_gem.lwo", encode_lwob(to_object(build_cut_gem())));
    LwobObject pawn = to_object(build_chess_pawn());
    add_chess_pawn_notes(pawn);
    write_file(folder / "chess_pawn.lwo", encode_lwob(pawn));
    write_file(folder / "sphere.lwo", encode_lwob(to_object(build_sphere())));
    write_file(folder / "letters.lwo", encode_lwob(to_object(build_letters())));
    write_file(folder / "cogwheel.lwo", encode_lwob(to_object(build_cogwheel())));
    write_file(folder / "Zelvo_envmap.chunky", build_environment_map());
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    if (argc != 2) {
        std::cerr << "usage: zelvo-data OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        make_all(argv[1]);
    } catch (const std::exception &error) {
        std::cerr << "zelvo-data: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
