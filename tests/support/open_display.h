// SPDX-License-Identifier: MIT
// A display on the offscreen host for tests that do not run the whole program.
#pragma once

#include "display/screen.h"
#include "platform/offscreen/state.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

/// Tests on a fresh host. Captures what the program prints, and closes the display at the end if it is open.
class DisplayTest : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStdout();
        reset_program_state();
        display_context = RastPort{};
        shown_buffers = {};
        offscreen::Setup setup;
        setup.records_calls = true;
        offscreen::set_up(std::move(setup));
    }

    void TearDown() override {
        close_display();
        reset_program_state();
        (void)testing::internal::GetCapturedStdout();
    }

    /// What was printed since the last call.
    static std::string printed() {
        std::string text = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return text;
    }

    /// The host's calls since the last call of this function.
    std::vector<std::string> new_calls() {
        const std::vector<std::string> &all = offscreen::calls();
        std::vector<std::string> calls(all.begin() + calls_seen, all.end());
        calls_seen = std::ssize(all);
        return calls;
    }

    /// The palette of the open screen.
    static const host::Palette &palette() { return myscreen->ViewPort.ColorMap->colours; }

private:
    std::ptrdiff_t calls_seen = 0;
};
