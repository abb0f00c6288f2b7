// SPDX-License-Identifier: MIT
// Computes medians and prints the tables in Markdown.
#include "table.h"

#include "peers/peer.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr std::array<const char *, 7> mode_names{"effect",  "envmap", "texture", "flat",
                                                 "gouraud", "zlight", "dots"};

} // namespace

double Measurement::median() const {
    std::vector<double> sorted = microseconds;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2.0;
}

bool Collector::ReportContext(const Context &) {
    return true;
}

void Collector::ReportRuns(const std::vector<Run> &runs) {
    for (const Run &run : runs) {
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        Measurement &measurement = measurements_[run.run_name.function_name];
        // Processor time, so that other programs on the same core do not count.
        measurement.microseconds.push_back(run.GetAdjustedCPUTime());
        for (const auto &[name, counter] : run.counters) {
            measurement.counters[name] = counter.value;
        }
        std::fprintf(stderr, "\r%-76.76s", run.run_name.function_name.c_str());
    }
}

const Measurement *Collector::find(const std::string &name) const {
    const auto found = measurements_.find(name);
    return found != measurements_.end() ? &found->second : nullptr;
}

void print_frames(const Collector &collector, const std::vector<std::string> &meshes,
                  const std::vector<std::string> &sizes) {
    std::printf(
        "\nFrames: median microseconds of the viewer (the dots effect knows no object), nanoseconds a "
        "drawn triangle and a covered pixel,\nand what the plain forms, the fast ones without bands and the "
        "peers take as a multiple of the viewer's time\n\n");
    std::printf("| object | size | mode | triangles | pixels | pixels/span | us | ns/triangle | ns/pixel | "
                "plain | no bands |");
    const std::array<const Peer *, 3> peers{&allegro_peer, &sdl_peer, &osmesa_peer};
    for (const Peer *peer : peers) {
        std::printf(" %s |", peer->name);
    }
    std::printf("\n|---|---|---|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    for (const std::string &mesh : meshes) {
        for (const std::string &size : sizes) {
            for (std::size_t mode = 0; mode < mode_names.size(); ++mode) {
                const std::string at = mesh + "/" + size + "/" + std::to_string(mode);
                const Measurement *own = collector.find("frame/zelvo/" + at);
                if (own == nullptr) {
                    continue;
                }
                const double us = own->median();
                const double triangles = own->counters.at("triangles");
                const double pixels = own->counters.at("pixels");
                std::printf("| %s | %s | %s | %.0f | %.0f |", mesh.c_str(), size.c_str(), mode_names[mode],
                            triangles, pixels);
                std::printf(triangles > 0 ? " %.1f |" : " - |",
                            triangles > 0 ? own->counters.at("span") : 0.0);
                std::printf(" %.1f |", us);
                std::printf(triangles > 0 ? " %.1f |" : " - |", 1000.0 * us / triangles);
                std::printf(" %.2f |", 1000.0 * us / pixels);
                for (const std::string form : {"plain", "no bands"}) {
                    const Measurement *other = collector.find("frame/" + form + "/" + at);
                    std::printf(other != nullptr ? " %.2f |" : " - |",
                                other != nullptr ? other->median() / us : 0.0);
                }
                for (const Peer *peer : peers) {
                    const Measurement *other = collector.find(std::string("frame/") + peer->name + "/" + at);
                    std::printf(other != nullptr ? " %.2f |" : " - |",
                                other != nullptr ? other->median() / us : 0.0);
                }
                std::printf("\n");
            }
        }
    }
    std::printf("\nWhat the peers do differently:");
    for (const Peer *peer : peers) {
        std::printf(" %s: %s.", peer->name, peer->difference);
    }
    std::printf("\n");
}

void print_stages(const Collector &collector, const std::vector<std::string> &sizes) {
    constexpr std::array<const char *, 22> stages{"clear",
                                                  "fade",
                                                  "blur",
                                                  "rising blur",
                                                  "z clear",
                                                  "transform",
                                                  "normals",
                                                  "light of points",
                                                  "light of faces",
                                                  "face loop envmap",
                                                  "face loop texture",
                                                  "face loop flat",
                                                  "face loop gouraud",
                                                  "face loop zlight",
                                                  "dots overlay",
                                                  "dots effect",
                                                  "presentation",
                                                  "grey palette",
                                                  "coloured palette",
                                                  "memcpy true colour",
                                                  "memset frame",
                                                  "memcpy frame"};
    std::printf(
        "\nStages on the sphere of 20480 triangles: median microseconds, and the plain form as a multiple\n\n"
        "| stage |");
    for (const std::string &size : sizes) {
        std::printf(" %s | plain |", size.c_str());
    }
    std::printf("\n|---|");
    for (std::size_t i = 0; i < 2 * sizes.size(); ++i) {
        std::printf("--:|");
    }
    std::printf("\n");
    for (const char *stage : stages) {
        std::printf("| %s |", stage);
        for (const std::string &size : sizes) {
            const Measurement *own = collector.find("stage/fast/" + size + "/" + stage);
            const Measurement *plain = collector.find("stage/plain/" + size + "/" + stage);
            std::printf(own != nullptr ? " %.2f |" : " - |", own != nullptr ? own->median() : 0.0);
            std::printf(own != nullptr && plain != nullptr ? " %.1f |" : " - |",
                        own != nullptr && plain != nullptr ? plain->median() / own->median() : 0.0);
        }
        std::printf("\n");
    }
}

void print_loading(const Collector &collector) {
    if (collector.find("load/fresh/read and copy") == nullptr) {
        return;
    }
    std::printf("\nThe largest sphere: median microseconds, and as a multiple of reading its file and "
                "copying it once, "
                "in fresh pages of the\nsystem and in memory that the heap has kept\n\n"
                "| step | fresh | multiple | kept | multiple |\n|---|--:|--:|--:|--:|\n");
    for (const char *step : {"read and copy", "read and prepare", "read", "prepare"}) {
        std::printf("| %s |", step);
        for (const std::string memory : {"load/fresh/", "load/kept/"}) {
            const Measurement *copy = collector.find(memory + "read and copy");
            const Measurement *own = collector.find(memory + step);
            if (copy == nullptr || own == nullptr) {
                std::printf(" - | - |");
            } else {
                std::printf(" %.0f | %.2f |", own->median(), own->median() / copy->median());
            }
        }
        std::printf("\n");
    }
}
