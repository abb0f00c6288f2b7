// SPDX-License-Identifier: MIT
// Measures frames, stages and loading, and other rasterisers on the same frames, all in one process.
#include "peers/peer.h"
#include "scene.h"
#include "span_lengths.h"
#include "table.h"

#include "core/forms.h"
#include "display/frame_buffers.h"
#include "main_68k/viewer_state.h"
#include "pipeline/clearing.h"
#include "pipeline/dots_effect.h"
#include "pipeline/lighting.h"
#include "pipeline/preparation.h"
#include "pipeline/render_frame.h"
#include "pipeline/rotation.h"
#include "platform/shared/bitmap.h"
#include "raster/dots.h"
#include "raster/face_loops.h"
#include "raster/simd/bands.h"
#include "support/instruction_sets.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <malloc.h>
#include <map>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Size {
    const char *name;
    int width;
    int height;
};
constexpr std::array<Size, 4> sizes{
    {{"320x256", 320, 256}, {"640x480", 640, 480}, {"1920x1080", 1920, 1080}, {"3840x2160", 3840, 2160}}};
constexpr std::size_t largest_size = sizes.size() - 1;

/// The spheres of 20,480 and of 81,920 triangles. The stages are measured on the former, the largest frames
/// on both.
constexpr std::size_t middle_sphere = 2;
constexpr std::size_t fine_sphere = 3;

/// The objects, the current object, and the size of its frame.
std::vector<Mesh> meshes;
std::size_t current_mesh = SIZE_MAX;
std::size_t current_size = SIZE_MAX;

/// Peers whose buffers have the current size.
std::vector<const Peer *> opened;

/// How many of the 360 steps of a turn are measured, at equal distances. The largest frames are measured in a
/// fifth of them.
int measured_steps = 30;

int steps_of(std::size_t size) {
    return size == largest_size ? std::max(measured_steps / 5, 1) : measured_steps;
}

void use_scene(std::size_t mesh, std::size_t size) {
    if (current_size != size) {
        open_frame(sizes[size].width, sizes[size].height);
        opened.clear();
    }
    if (current_mesh != mesh) {
        show_mesh(meshes[mesh]);
    }
    current_mesh = mesh;
    current_size = size;
    reset_scene();
    draws_fast = true;
}

void turn() {
    for (int i = 0; i < steps_per_turn / steps_of(current_size); ++i) {
        next_step();
    }
}

/// How the viewer draws: by its fast forms, by them but never in bands, or by the plain forms.
enum class Form { fast, fast_without_bands, plain };

void measure_frame(benchmark::State &state, std::size_t mesh, std::size_t size, int mode, Form form) {
    use_scene(mesh, size);
    viewer.obj_style = mode;
    draws_fast = form != Form::plain;
    const fast::BandSizes band_sizes = fast::band_sizes;
    if (form == Form::fast_without_bands) {
        fast::band_sizes.frame_pixels = frame_pixels();
    }
    // Modes without triangles do not set the count.
    triangles_drawn = 0;
    render_frame();
    for (auto _ : state) {
        turn();
        render_frame();
    }
    fast::band_sizes = band_sizes;
    state.counters["triangles"] = triangles_drawn;
    state.counters["pixels"] =
        static_cast<double>(frame_pixels()) -
        static_cast<double>(std::count(chunkybuf1.get(), chunkybuf1.get() + frame_pixels(), 0));
    // Counted once, because counting takes long and all modes that draw triangles have the same spans.
    static std::map<std::pair<std::size_t, std::size_t>, double> span_lengths;
    if (triangles_drawn > 0) {
        const auto [known, is_new] = span_lengths.try_emplace({mesh, size});
        if (is_new) {
            known->second = mean_span_length();
        }
        state.counters["span"] = known->second;
    }
}

/// A peer gets the viewer's projected points and normals and its reset colours. It clears, lights and draws
/// by itself.
void measure_peer(benchmark::State &state, const Peer &peer, std::size_t mesh, std::size_t size, int mode) {
    use_scene(mesh, size);
    if (std::find(opened.begin(), opened.end(), &peer) == opened.end()) {
        peer.open(sizes[size].width, sizes[size].height);
        opened.push_back(&peer);
    }
    const auto frame = [&peer, mode] {
        turn();
        transform_and_project();
        if (mode == mode_envmap || mode == mode_gouraud) {
            rotate_normals();
        }
        reset_vertex_colours();
        peer.draw(mode);
    };
    frame();
    if (peer.drawn_pixels() == 0) {
        std::fprintf(stderr, "%s draws nothing\n", peer.name);
        std::exit(1);
    }
    for (auto _ : state) {
        frame();
    }
}

void add(const std::string &name, int iterations, std::function<void(benchmark::State &)> measure) {
    benchmark::RegisterBenchmark(name.c_str(), std::move(measure))
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(iterations);
}

bool is_in_bands(const Size &size) {
    return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) >
           fast::band_sizes.frame_pixels;
}

void add_frames() {
    const std::array<const Peer *, 3> peers{&allegro_peer, &sdl_peer, &osmesa_peer};
    for (std::size_t mesh = 0; mesh < meshes.size(); ++mesh) {
        for (std::size_t size = 0; size < sizes.size(); ++size) {
            for (int mode = mode_effect; mode <= mode_dots; ++mode) {
                const std::string at =
                    meshes[mesh].name + "/" + sizes[size].name + "/" + std::to_string(mode);
                if ((mode == mode_effect && mesh > 0) ||
                    (size == largest_size && mesh != middle_sphere && mesh != fine_sphere)) {
                    continue;
                }
                const auto add_form = [&](const std::string &name, Form form) {
                    add("frame/" + name + "/" + at, steps_of(size),
                        [mesh, size, mode, form](benchmark::State &state) {
                            measure_frame(state, mesh, size, mode, form);
                        });
                };
                add_form("plain", Form::plain);
                add_form("zelvo", Form::fast);
                if (is_in_bands(sizes[size])) {
                    add_form("no bands", Form::fast_without_bands);
                }
                if (mode < mode_envmap || mode > mode_gouraud) {
                    continue;
                }
                for (const Peer *peer : peers) {
                    add(std::string("frame/") + peer->name + "/" + at, steps_of(size),
                        [peer, mesh, size, mode](benchmark::State &state) {
                            measure_peer(state, *peer, mesh, size, mode);
                        });
                }
            }
        }
    }
}

struct Stage {
    const char *name;
    std::function<void()> run;
};

/// Random faces, as many as the sphere has on which the stages are measured.
struct FaceArrays {
    static constexpr std::size_t faces = 20480;
    std::array<std::vector<float>, 9> values;

    FaceArrays() {
        for (std::size_t i = 0; i < values.size(); ++i) {
            for (std::size_t face = 0; face < faces; ++face) {
                values[i].push_back(static_cast<float>(face * (i + 3) % 257));
            }
        }
    }

    FaceCorners corners() const {
        FaceCorners corners;
        for (std::size_t c = 0; c < 3; ++c) {
            corners.x[c] = values[3 * c].data();
            corners.y[c] = values[3 * c + 1].data();
            corners.depth[c] = values[3 * c + 2].data();
        }
        return corners;
    }
};

std::vector<Stage> all_stages() {
    const auto clear = [](int style) {
        return [style] {
            viewer.clear_style = style;
            clear_frame();
        };
    };
    // A face loop needs cleared depths, or it draws nothing. Clearing is included in the figure.
    const auto loop = [](std::function<void()> draw) {
        return [draw = std::move(draw)] {
            clear_depths_for_faces();
            draw();
        };
    };
    return {
        {"clear", clear(0)},
        {"fade", clear(1)},
        {"blur", clear(2)},
        {"rising blur", clear(3)},
        {"z clear", clear_zbuffer},
        {"transform", transform_and_project},
        {"normals", static_cast<void (*)()>(rotate_normals)},
        {"light of points",
         [] {
             static const std::vector<std::uint32_t> points = [] {
                 std::vector<std::uint32_t> all(static_cast<std::size_t>(point_count()));
                 std::iota(all.begin(), all.end(), 0U);
                 return all;
             }();
             vertex_lights(points.data(), points.size());
         }},
        {"light of faces",
         [] {
             static const FaceArrays faces;
             static std::vector<float> colours(FaceArrays::faces);
             face_lights(faces.corners(), FaceArrays::faces, colours.data());
         }},
        {"face loop envmap", loop(static_cast<void (*)()>(face_loop_envmap))},
        {"face loop texture", loop([] { face_loop_texturemap(face_lights); })},
        {"face loop flat", loop([] { face_loop_lightsourced(face_lights); })},
        {"face loop gouraud", loop([] {
             reset_vertex_colours();
             face_loop_gouraud(vertex_lights);
         })},
        {"face loop zlight", loop(static_cast<void (*)()>(face_loop_zlight))},
        {"dots overlay", draw_dots_overlay},
        {"dots effect", draw_dots_effect},
    };
}

/// Expands a shaded frame of the object.
void measure_expansion(benchmark::State &state, std::size_t mesh, std::size_t size, bool is_grey,
                       bool is_fast) {
    use_scene(mesh, size);
    viewer.obj_style = mode_gouraud;
    render_frame();
    host::Palette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i].fill(static_cast<std::uint8_t>(i));
        palette[i][0] = static_cast<std::uint8_t>(is_grey ? i : i / 2);
    }
    std::vector<std::uint32_t> pixels(frame_pixels());
    for (auto _ : state) {
        const host::TrueColours colours = host::true_colours(palette);
        (is_fast ? host::fast::expand_pixels : host::plain::expand_pixels)(chunkybuf1.get(), pixels.data(),
                                                                           pixels.size(), colours);
        benchmark::ClobberMemory();
    }
}

void add_stages(std::size_t mesh) {
    for (std::size_t size = 0; size < sizes.size(); ++size) {
        for (const Stage &stage : all_stages()) {
            for (const bool is_fast : {false, true}) {
                const std::string name = std::string(is_fast ? "stage/fast/" : "stage/plain/") +
                                         sizes[size].name + "/" + stage.name;
                add(name, 100, [mesh, size, stage, is_fast](benchmark::State &state) {
                    use_scene(mesh, size);
                    draws_fast = is_fast;
                    transform_and_project();
                    rotate_normals();
                    for (auto _ : state) {
                        stage.run();
                    }
                });
            }
        }
        const std::string at = std::string("stage/fast/") + sizes[size].name + "/";
        add(at + "presentation", 100, [mesh, size](benchmark::State &state) {
            use_scene(mesh, size);
            BitMap bitmap(frame_width, frame_height);
            RastPort context{};
            host::initialise_context(context);
            context.BitMap = &bitmap;
            for (auto _ : state) {
                host::write_pixels(context, 0, 0, static_cast<ULONG>(frame_width - 1),
                                   static_cast<ULONG>(frame_height - 1), chunkybuf2.get(), frame_width);
                benchmark::ClobberMemory();
            }
        });
        for (const bool is_grey : {true, false}) {
            for (const bool is_fast : {false, true}) {
                add(std::string(is_fast ? "stage/fast/" : "stage/plain/") + sizes[size].name +
                        (is_grey ? "/grey palette" : "/coloured palette"),
                    100, [mesh, size, is_grey, is_fast](benchmark::State &state) {
                        measure_expansion(state, mesh, size, is_grey, is_fast);
                    });
            }
        }
        add(at + "memcpy true colour", 100, [mesh, size](benchmark::State &state) {
            use_scene(mesh, size);
            const std::vector<std::uint32_t> from(frame_pixels(), 1);
            std::vector<std::uint32_t> to(frame_pixels());
            for (auto _ : state) {
                std::copy(from.begin(), from.end(), to.begin());
                benchmark::ClobberMemory();
            }
        });
        add(at + "memset frame", 100, [mesh, size](benchmark::State &state) {
            use_scene(mesh, size);
            for (auto _ : state) {
                std::memset(chunkybuf1.get(), 0, frame_pixels());
                benchmark::ClobberMemory();
            }
        });
        add(at + "memcpy frame", 100, [mesh, size](benchmark::State &state) {
            use_scene(mesh, size);
            for (auto _ : state) {
                std::memcpy(chunkybuf1.get(), chunkybuf2.get(), frame_pixels());
                benchmark::ClobberMemory();
            }
        });
    }
}

/// A file in memory, as if in the system's cache, so that the disk is not measured.
class ObjectFile {
public:
    explicit ObjectFile(const Mesh &mesh) : bytes_(file_bytes(mesh)) {
        path_ = std::string(P_tmpdir) + "/zelvo-bench-object.lwo";
        std::FILE *file = std::fopen(path_.c_str(), "wb");
        if (file == nullptr || std::fwrite(bytes_.data(), 1, bytes_.size(), file) != bytes_.size()) {
            std::perror(path_.c_str());
            std::exit(1);
        }
        std::fclose(file);
    }
    ~ObjectFile() { std::remove(path_.c_str()); }
    ObjectFile(const ObjectFile &) = delete;
    ObjectFile &operator=(const ObjectFile &) = delete;

    const std::string &path() const { return path_; }
    std::size_t size() const { return bytes_.size(); }

private:
    std::vector<unsigned char> bytes_;
    std::string path_;
};

/// Frees the object's arrays and returns all unused memory to the system. The next object is then allocated
/// on fresh pages, as in a run of the viewer.
void give_memory_back() {
    point_chunk.reset();
    polygon_chunk.reset();
    lwopoints2.reset();
    lwopoints3.reset();
    lwonormals2.reset();
    lwonormals3.reset();
    lwofis.reset();
    malloc_trim(0);
}

void read_and_copy(const ObjectFile &object) {
    std::FILE *file = std::fopen(object.path().c_str(), "rb");
    void *read = std::malloc(object.size());
    void *copy = std::malloc(object.size());
    if (file == nullptr || std::fread(read, 1, object.size(), file) != object.size()) {
        std::exit(1);
    }
    std::memcpy(copy, read, object.size());
    benchmark::DoNotOptimize(copy);
    benchmark::ClobberMemory();
    std::free(copy);
    std::free(read);
    std::fclose(file);
}

/// Loading replaces the object, and uses the fast forms whatever was measured before.
void prepare_for_loading() {
    current_mesh = SIZE_MAX;
    draws_fast = true;
}

void add_loading(const ObjectFile &object) {
    const auto read = [&object] { read_object_file(object.path()); };
    const auto read_and_prepare = [read] {
        read();
        prepare_object();
    };
    const auto copy = [&object] { read_and_copy(object); };
    for (const auto &[step, run] : std::array<std::pair<std::string, std::function<void()>>, 2>{
             {{"read and copy", copy}, {"read and prepare", read_and_prepare}}}) {
        add("load/fresh/" + step, 20, [run = run](benchmark::State &state) {
            prepare_for_loading();
            for (auto _ : state) {
                state.PauseTiming();
                give_memory_back();
                state.ResumeTiming();
                run();
            }
        });
    }
    for (const auto &[step, run] :
         std::array<std::pair<std::string, std::function<void()>>, 4>{{{"read and copy", copy},
                                                                       {"read and prepare", read_and_prepare},
                                                                       {"read", read},
                                                                       {"prepare", prepare_object}}}) {
        add("load/kept/" + step, 20, [read, run = run](benchmark::State &state) {
            prepare_for_loading();
            read();
            for (auto _ : state) {
                run();
            }
        });
    }
}

/// Makes the heap keep freed memory until give_memory_back returns it.
void keep_freed_memory() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

/// Makes the fast forms use this instruction set; false if it is not available here.
bool choose_instruction_set(const std::string &name) {
    for (const std::int64_t set : instruction_sets()) {
        if (instruction_set_name(set) == name) {
            use_instruction_set(set);
            return true;
        }
    }
    std::fprintf(stderr, "zelvo-bench: no instruction set %s here\n", name.c_str());
    return false;
}

/// Removes "--steps=N" and "--instruction-set=NAME" from the arguments; false if an instruction set is
/// unknown.
bool take_options(int &argc, char **argv) {
    const std::string set_option = "--instruction-set=";
    int kept = 1;
    bool is_known = true;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.starts_with(set_option)) {
            is_known = choose_instruction_set(word.substr(set_option.size())) && is_known;
        } else if (std::sscanf(argv[i], "--steps=%d", &measured_steps) != 1) {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    measured_steps = std::clamp(measured_steps, 1, steps_per_turn);
    return is_known;
}

} // namespace

int main(int argc, char **argv) {
    keep_freed_memory();
    if (!take_options(argc, argv)) {
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    meshes = {make_cube(),         make_sphere(4),
              make_sphere(5),      make_sphere(6),
              make_torus(160, 64), mesh_of_file("torus knot", ZELVO_DATA_FOLDER "/torus_knot.lwo")};
    open_frame(sizes[0].width, sizes[0].height);
    const ObjectFile largest(make_largest_sphere());
    add_frames();
    add_stages(middle_sphere);
    add_loading(largest);
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    std::fprintf(stderr, "\r%-76s\r", "");

    std::vector<std::string> mesh_names;
    for (const Mesh &mesh : meshes) {
        mesh_names.push_back(mesh.name);
    }
    std::vector<std::string> size_names;
    for (const Size &size : sizes) {
        size_names.emplace_back(size.name);
    }
    print_frames(collector, mesh_names, size_names);
    print_stages(collector, size_names);
    print_loading(collector);
    return 0;
}
