// SPDX-License-Identifier: MIT
// Tests of objects that cannot be shown: the program ends with a message and exit code 20.
#include "support/fixed_texts.h"
#include "support/model_builder.h"
#include "support/program_run.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

namespace {

/// Runs the program for one pass on a file of these bytes. There are settings, so no display is open while
/// the object is read, and only the message is printed.
ProgramRun run_on(const std::string &bytes) {
    const TemporaryFiles files;
    files.write("Zelvo.vars", "");
    offscreen::Setup setup = viewer_setup("cube");
    setup.command_line = {files.write("object.lwo", bytes)};
    setup.volumes = {{"ENV", files.folder()}};
    return run_program(setup);
}

void expect_refused(const ProgramRun &run, const std::string &message) {
    EXPECT_EQ(run.output, message);
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.held, std::vector<std::string>{});
    EXPECT_EQ(run.errors, "");
}

const std::string some_points = chunk("PNTS", std::string(36, '\1'));
const std::string some_polygons = chunk("POLS", std::string(10, '\0'));

} // namespace

TEST(RefusedObjects, ProperObjectIsNotRefused) {
    const ProgramRun run = run_on(object_file({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {3, 0, 1, 2, 1}));
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    EXPECT_NE(run.output.find("number of frames: 1\n"), std::string::npos);
}

TEST(RefusedObjects, FormOfAnotherTypeIsRefused) {
    expect_refused(run_on(form("LWO2", some_points + some_polygons)), no_object_text);
    expect_refused(run_on(form("ILBM", "")), no_object_text);
    expect_refused(run_on(form("lwob", some_points + some_polygons)), no_object_text);
}

TEST(RefusedObjects, FileThatIsNotAFormIsRefused) {
    std::string bytes = object_file({{1, 2, 3}}, {3, 0, 0, 0, 1});
    bytes.replace(0, 4, "LIST");
    expect_refused(run_on(bytes), no_object_text);
    expect_refused(run_on("LWOB" + bytes), no_object_text);
}

TEST(RefusedObjects, FormHeaderCutShortIsRefused) {
    const std::string header = form("LWOB", "");
    for (const std::size_t length : {0, 1, 3, 4, 7, 8, 11}) {
        SCOPED_TRACE(length);
        expect_refused(run_on(header.substr(0, length)), no_object_text);
    }
    expect_refused(run_on(header), no_polygons_text);
}

TEST(RefusedObjects, ObjectWithoutPolygonsIsRefused) {
    expect_refused(run_on(form("LWOB", some_points)), no_polygons_text);
    expect_refused(run_on(form("LWOB", some_points + chunk("POLS", ""))), no_polygons_text);
    expect_refused(run_on(form("LWOB", some_points + some_polygons + chunk("POLS", ""))), no_polygons_text);
}

TEST(RefusedObjects, ObjectWithoutPointsIsRefused) {
    expect_refused(run_on(form("LWOB", some_polygons)), no_polygons_text);
    expect_refused(run_on(form("LWOB", chunk("PNTS", "") + some_polygons)), no_polygons_text);
}

TEST(RefusedObjects, PointsAfter101OtherChunksAreIgnored) {
    expect_refused(run_on(form("LWOB", skipped_chunks(101) + some_points + some_polygons)), no_polygons_text);
    expect_refused(run_on(form("LWOB", some_polygons + skipped_chunks(100) + some_points)), no_polygons_text);
    expect_refused(run_on(form("LWOB", some_points + skipped_chunks(100) + some_polygons)), no_polygons_text);
}

TEST(RefusedObjects, NothingIsReadAfterPointsThatAreCutShort) {
    expect_refused(run_on(form("LWOB", "PNTS" + big_endian_32(1000) + some_polygons)), no_polygons_text);
}

TEST(RefusedObjects, NothingIsReadAfterAnotherChunkOfNegativeSize) {
    expect_refused(run_on(form("LWOB", some_points + "SURF" + big_endian_32(0x80000000) + some_polygons)),
                   no_polygons_text);
}

TEST(RefusedObjects, PointsOfNegativeSizeCannotBeAllocated) {
    const std::string message = "Couldn't allocate PNTS chunk memory\n";
    expect_refused(run_on(form("LWOB", "PNTS" + big_endian_32(0x80000000))), message);
    expect_refused(run_on(form("LWOB", some_polygons + "PNTS" + big_endian_32(0xFFFFFFFF) + "....")),
                   message);
}

TEST(RefusedObjects, PolygonsOfNegativeSizeCannotBeAllocated) {
    const std::string message = "Couldn't allocate POLS chunk memory\n";
    expect_refused(run_on(form("LWOB", "POLS" + big_endian_32(0x80000000))), message);
    expect_refused(run_on(form("LWOB", some_points + "POLS" + big_endian_32(0xFFFFFFFE) + "....")), message);
}

TEST(RefusedObjects, ObjectOfLessThanAPointShowsEmptyFrames) {
    const ProgramRun run = run_on(form("LWOB", chunk("PNTS", "12345") + some_polygons));
    EXPECT_EQ(run.exit_code, 0) << run.errors;
    EXPECT_NE(run.output.find("number of frames: 1\n"), std::string::npos);
}

TEST(RefusedObjects, WithADisplayOpenTheMessageComesAfterItsClosing) {
    // Without settings the screen-mode requester opens the display before the object is read.
    const TemporaryFiles files;
    offscreen::Setup setup = viewer_setup("cube");
    setup.command_line = {files.write("object.lwo", "FORM")};
    const ProgramRun run = run_program(setup);
    EXPECT_EQ(run.output, std::string(default_display_line) + display_closed_line + no_object_text);
    EXPECT_EQ(run.exit_code, 20);
    EXPECT_EQ(run.held, std::vector<std::string>{});
}
