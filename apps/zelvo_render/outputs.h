// SPDX-License-Identifier: MIT
// Everything that a run writes.
#pragma once

#include "animation.h"
#include "contact_sheet.h"
#include "coverage.h"
#include "options.h"
#include "shared/progress_bar.h"
#include "video.h"

#include <optional>

/// Writes frames and pictures to the files that the options ask for.
class Outputs {
public:
    explicit Outputs(const Options &chosen);

    /// Takes the frame that a pass writes to the screen.
    void take_frame(const offscreen::Picture &frame);

    /// Takes the picture that the screen shows at the end of a pass.
    void take_picture(const offscreen::Picture &picture);

    /// Finishes all files.
    void complete();

private:
    void write(const offscreen::Picture &picture);

    Options options;
    std::optional<ProgressBar> progress;
    /// For transparent backgrounds.
    std::optional<Coverage> coverage;
    std::optional<Animation> animation;
    std::optional<ContactSheet> sheet;
    std::optional<Video> video;
};
