// SPDX-License-Identifier: MIT
// Tests that the fast preparation gives points and vertex normals with the bits of the plain one.
#include "bits.h"
#include "object/model.h"
#include "pipeline/preparation.h"
#include "random_scene.h"
#include "support/instruction_sets.h"
#include "support/model_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>

namespace {

struct Prepared {
    std::vector<std::uint32_t> read;
    std::vector<std::uint32_t> points;
    std::vector<std::uint32_t> normals;
    bool operator==(const Prepared &) const = default;
};

/// The current object's arrays after one of the two forms.
Prepared prepared(bool is_fast) {
    const auto count = static_cast<std::size_t>(point_count());
    const std::vector<Vec3> as_read(point_chunk.get(), point_chunk.get() + count);
    is_fast ? fast::fit_object() : plain::fit_object();
    is_fast ? fast::build_vertex_normals() : plain::build_vertex_normals();
    Prepared result{bits_of(point_chunk, count), bits_of(lwopoints2, count), bits_of(lwonormals2, count)};
    std::copy(as_read.begin(), as_read.end(), point_chunk.get());
    return result;
}

/// The coordinates of one object: all of one kind, or each axis of another kind.
enum class Coordinates { ordinary, whole, signed_zeros, wild };

float coordinate(Coordinates kind, Random &random) {
    switch (kind) {
    case Coordinates::ordinary:
        return random.between(-200.0F, 300.0F);
    case Coordinates::whole:
        return static_cast<float>(random.below(5) - 2);
    case Coordinates::signed_zeros:
        return random.once_in(2) ? 0.0F : -0.0F;
    case Coordinates::wild:
        break;
    }
    return random.once_in(3) ? random.wild_number() : random.between(-1.0F, 1.0F);
}

Coordinates random_kind(Random &random) {
    return random.once_in(6) ? static_cast<Coordinates>(random.below(4)) : Coordinates::ordinary;
}

} // namespace

TEST(FastPreparation, HasTheBitsOfThePlainOne) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(31);
    std::size_t compared = 0;
    for (std::size_t scene = 0; compared < points_wanted; ++scene) {
        make_random_object(Shapes::any, random.once_in(3) ? 8 : 3000, random);
        const auto count = static_cast<std::size_t>(point_count());
        const Coordinates x = random_kind(random);
        const Coordinates y = random_kind(random);
        const Coordinates z = random_kind(random);
        for (Vec3 &p : std::span(point_chunk.get(), count)) {
            p = {coordinate(x, random), coordinate(y, random), coordinate(z, random)};
        }
        const std::int64_t set = sets[scene % sets.size()];
        use_instruction_set(set);
        const Prepared plain_one = prepared(false);
        const Prepared fast_one = prepared(true);
        ASSERT_EQ(plain_one.read, fast_one.read) << "scene " << scene << ", " << instruction_set_name(set);
        ASSERT_EQ(plain_one.points, fast_one.points)
            << "scene " << scene << ", " << instruction_set_name(set);
        ASSERT_EQ(plain_one.normals, fast_one.normals)
            << "scene " << scene << ", " << instruction_set_name(set);
        compared += count;
    }
    use_instruction_set(0);
}

TEST(FastPreparation, GivesAFlatObjectTheBitsOfThePlainOne) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(33);
    for (int scene = 0; scene < 600; ++scene) {
        const auto count = static_cast<std::size_t>(3 + random.below(60));
        std::vector<Vec3> points(count);
        for (Vec3 &p : points) {
            const float flat = coordinate(Coordinates::signed_zeros, random);
            const float one = random.between(-5.0F, 5.0F);
            const float other = random.once_in(20) ? random.wild_number() : random.between(-9.0F, 2.0F);
            p = scene % 3 == 0   ? Vec3{flat, one, other}
                : scene % 3 == 1 ? Vec3{one, flat, other}
                                 : Vec3{one, other, flat};
        }
        set_model(points, {3, 0, 1, 2, 1});
        const std::int64_t set = sets[static_cast<std::size_t>(scene) % sets.size()];
        use_instruction_set(set);
        ASSERT_EQ(prepared(false), prepared(true)) << "scene " << scene << ", " << instruction_set_name(set);
    }
    use_instruction_set(0);
}

TEST(FastPreparation, GivesAnyNumberOfPointsTheBitsOfThePlainOne) {
    const std::vector<std::int64_t> sets = instruction_sets();
    Random random(32);
    for (std::size_t count = 1; count < 70; ++count) {
        for (const std::int64_t set : sets) {
            std::vector<Vec3> points(count);
            for (Vec3 &p : points) {
                p = {coordinate(Coordinates::whole, random), coordinate(Coordinates::whole, random),
                     coordinate(Coordinates::whole, random)};
            }
            const auto last = static_cast<std::uint16_t>(count - 1);
            set_model(points, {3, 0, last, 0, 1, 4, 0, 0, last, last, 1, 2, 0, last, 3});
            use_instruction_set(set);
            ASSERT_EQ(prepared(false), prepared(true)) << count << " points, " << instruction_set_name(set);
        }
    }
    use_instruction_set(0);
}
