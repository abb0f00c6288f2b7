// SPDX-License-Identifier: MIT
// A display on the offscreen host for tests that need no whole run.
#pragma once

#include "display/screen.h"
#include "platform/offscreen/state.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

/// Tests on a fresh host, whose display is closed at the end if it is open. What the program prints is kept.
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

    /// What was printed since the last time.
    static std::string printed() {
        std::string text = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        return text;
    }

    /// The calls since the last time.
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
