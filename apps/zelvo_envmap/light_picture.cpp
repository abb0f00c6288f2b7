// SPDX-License-Identifier: MIT
// Reads with OpenImageIO.
#include "light_picture.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>
#include <algorithm>
#include <cmath>

namespace envmap {

namespace {

/// The weights of red, green and blue in luminance (Rec. 709).
constexpr float red_weight = 0.2126F;
constexpr float green_weight = 0.7152F;
constexpr float blue_weight = 0.0722F;

bool is_linear(const OIIO::ImageSpec &spec) {
    const std::string space = spec.get_string_attribute("oiio:ColorSpace");
    return spec.format.is_floating_point() || space == "Linear" || space == "scene_linear";
}

/// Light without NaN and infinity, which would spread into every texel whose sum has one.
float sound(float light) {
    constexpr float brightest = 1e6F;
    return light > 0.0F ? std::min(light, brightest) : 0.0F;
}

} // namespace

float light_of(float level) {
    return level <= 0.04045F ? level / 12.92F : std::pow((level + 0.055F) / 1.055F, 2.4F);
}

float level_of(float light) {
    return light <= 0.0031308F ? light * 12.92F : 1.055F * std::pow(light, 1.0F / 2.4F) - 0.055F;
}

LightPicture read_picture(const std::string &path, std::string &why) {
    OIIO::attribute("threads", 1);
    OIIO::ImageBuf file(path);
    if (!file.read(0, 0, true, OIIO::TypeDesc::FLOAT)) {
        why = file.geterror();
        return {};
    }
    const bool is_light = is_linear(file.nativespec());
    // A photograph may be stored on its side, with a tag that says so.
    const OIIO::ImageBuf upright = OIIO::ImageBufAlgo::reorient(file);
    const OIIO::ImageBuf &picture = upright.initialized() ? upright : file;
    const OIIO::ROI area = picture.roi();
    const auto channels = static_cast<std::size_t>(picture.nchannels());
    std::vector<float> values(static_cast<std::size_t>(area.npixels()) * channels);
    if (values.empty() || !picture.get_pixels(area, OIIO::TypeDesc::FLOAT, values.data())) {
        why = values.empty() ? "it has no pixels" : picture.geterror();
        return {};
    }
    LightPicture result{area.width(), area.height(), {}};
    result.light.reserve(values.size() / channels);
    const auto light = [&](std::size_t i) { return sound(is_light ? values[i] : light_of(values[i])); };
    for (std::size_t i = 0; i < values.size(); i += channels) {
        result.light.push_back(channels < 3 ? light(i)
                                            : red_weight * light(i) + green_weight * light(i + 1) +
                                                  blue_weight * light(i + 2));
    }
    return result;
}

} // namespace envmap
