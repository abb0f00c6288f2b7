// SPDX-License-Identifier: MIT
// Turns bytes into files and a user's actions.
#include "program_input.h"

#include "main_68k/viewer_state.h"
#include "settings/environment_map.h"
#include "support/model_builder.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace fuzz {

namespace {

constexpr std::size_t length_bytes = 2;
constexpr std::size_t step_bytes = 4;
constexpr offscreen::ModeAnswer default_size{0, 53, 41};

/// Long enough for trails of all kinds, and short enough for many runs.
constexpr int last_pass = 8;

std::size_t length_at(const std::string &bytes, std::size_t at) {
    if (bytes.size() < at + length_bytes) {
        return 0;
    }
    return static_cast<std::size_t>(static_cast<unsigned char>(bytes[at]) << 8 |
                                    static_cast<unsigned char>(bytes[at + 1]));
}

std::string piece(const std::string &bytes, std::size_t at, std::size_t length) {
    return at < bytes.size() ? bytes.substr(at, length) : std::string();
}

offscreen::ModeAnswer mode_answer(std::uint8_t a, std::uint8_t b) {
    constexpr std::array<ULONG, 4> odd_sizes{0, 0xFFFFFFFF, 16385, 65536};
    if (a == 255) {
        return {b, odd_sizes[b % 4], odd_sizes[b / 4 % 4]};
    }
    return {0, a % 128U, b % 96U};
}

offscreen::FileAnswer file_answer(std::uint8_t a) {
    constexpr std::array<const char *, 4> names{default_envmap_filename, "short", "missing", "object.lwo"};
    constexpr std::array<const char *, 4> drawers{"", "ENV:", "drawer/", "drawer"};
    return {drawers[a / 4 % 4], names[a % 4]};
}

/// The host's set-up after the steps so far.
class Builder {
public:
    void take(std::uint8_t kind, std::uint8_t later, std::uint8_t a, std::uint8_t b) {
        pass = std::min(pass + later % 3, last_pass);
        switch (static_cast<Step>(kind % static_cast<std::uint8_t>(Step::count))) {
        case Step::key:
            add_event(IDCMP_VANILLAKEY, a);
            break;
        case Step::cursor_key:
            add_event(IDCMP_RAWKEY, static_cast<UWORD>(0x4C + a % 4));
            break;
        case Step::move:
            add_movement(static_cast<WORD>(a << 8 | b), b % 2 == 0);
            break;
        case Step::right_button:
            add_event(IDCMP_MOUSEBUTTONS, MENUDOWN);
            break;
        case Step::left_button:
            add_event(IDCMP_MOUSEBUTTONS, SELECTDOWN);
            break;
        case Step::answer_mode:
            setup.answers.push_back({{}, mode_answer(a, b)});
            break;
        case Step::answer_file:
            setup.answers.push_back({file_answer(a), {}});
            break;
        case Step::cancel:
            setup.answers.push_back({});
            break;
        default:
            setup.refused_point = a << 8 | b;
            break;
        }
    }

    offscreen::Setup finish() {
        setup.last_pass = std::min(pass + 1, last_pass);
        return std::move(setup);
    }

private:
    void add_event(ULONG event_class, UWORD code) {
        offscreen::Event event;
        event.pass = pass;
        event.message.Class = event_class;
        event.message.Code = code;
        setup.events.push_back(event);
    }

    void add_movement(WORD distance, bool is_sideways) {
        add_event(IDCMP_MOUSEMOVE, 0);
        IntuiMessage &message = setup.events.back().message;
        (is_sideways ? message.MouseX : message.MouseY) = distance;
    }

    offscreen::Setup setup;
    int pass = 1;
};

} // namespace

ProgramInput unpack(const std::string &bytes) {
    ProgramInput input;
    std::size_t at = 2 * length_bytes;
    input.object = piece(bytes, at, length_at(bytes, 0));
    at += input.object.size();
    input.settings = piece(bytes, at, length_at(bytes, length_bytes));
    at += input.settings.size();
    input.steps = piece(bytes, at, std::string::npos);
    return input;
}

std::string pack(const ProgramInput &input) {
    return big_endian_16(static_cast<std::uint16_t>(input.object.size())) +
           big_endian_16(static_cast<std::uint16_t>(input.settings.size())) + input.object + input.settings +
           input.steps;
}

std::string step(Step kind, int passes_later, int a, int b) {
    return {static_cast<char>(kind), static_cast<char>(passes_later), static_cast<char>(a),
            static_cast<char>(b)};
}

offscreen::Setup setup_for(const std::string &steps) {
    Builder builder;
    for (std::size_t at = 0; at + step_bytes <= steps.size(); at += step_bytes) {
        const auto byte = [&steps, at](std::size_t i) { return static_cast<std::uint8_t>(steps[at + i]); };
        builder.take(byte(0), byte(1), byte(2), byte(3));
    }
    offscreen::Setup setup = builder.finish();
    setup.default_mode = default_size;
    return setup;
}

} // namespace fuzz
