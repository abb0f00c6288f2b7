// SPDX-License-Identifier: MIT
// zelvo-convert: turns models of many formats into LightWave objects.
#include "cache.h"
#include "conversion.h"
#include "messages.h"
#include "object_info.h"
#include "options.h"
#include "output.h"
#include "platform/posix/object_form.h"
#include "platform/posix/standard_streams.h"
#include "shared/child_process.h"
#include "shared/progress_bar.h"
#include "shared/tool_files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

using namespace convert;

/// What the process that read a file said about it.
struct Answer {
    std::string summary;
    std::vector<std::string> notes;
    std::string object;
    /// Other files that belong to the model.
    std::set<std::string> other_files;
    /// Why the input failed; empty if it did not.
    std::string failure;
};

Answer answer_about(const std::string &input, const Options &options) {
    Answer answer;
    answer.failure = unreadable(input);
    if (!answer.failure.empty()) {
        return answer;
    }
    const bool is_object = options.only_describes && host::is_object_file(input);
    ProgressBar progress(100, std::filesystem::path(input).filename().string() + ", percent");
    constexpr std::size_t bytes_per_mebibyte = std::size_t{1} << 20;
    const ChildEnd end = run_in_child(
        {options.mebibytes * bytes_per_mebibyte, options.seconds, 2 * options.seconds},
        [&] {
            if (is_object) {
                describe_object(input);
            } else {
                convert_model(input, options.wishes);
            }
        },
        [&](char kind, std::string &&bytes) {
            switch (kind) {
            case progress_message:
                progress.advance_to(static_cast<unsigned char>(bytes.empty() ? 0 : bytes[0]));
                break;
            case summary_message:
                answer.summary = std::move(bytes);
                break;
            case note_message:
                answer.notes.push_back(std::move(bytes));
                break;
            case failure_message:
                answer.failure = std::move(bytes);
                break;
            case other_file_message:
                answer.other_files.insert(std::move(bytes));
                break;
            default:
                answer.object = std::move(bytes);
            }
        });
    progress.clear();
    if (!end.is_good() && answer.failure.empty()) {
        answer.failure = reason_of(
            end,
            "reading it takes longer than " + counted(static_cast<std::size_t>(options.seconds), "second") +
                " (--timeout)",
            "reading it takes more than " + std::to_string(options.mebibytes) + " MiB of memory (--memory)");
    }
    return answer;
}

bool report(const std::string &input, const std::string &failure) {
    if (!failure.empty()) {
        std::fprintf(stderr, "zelvo-convert: %s: %s\n", one_line(input).c_str(), one_line(failure).c_str());
    }
    return failure.empty();
}

/// Prints the object, or its path in the cache. False if that failed.
bool print_object(const std::string &input, const Options &options) {
    const bool prints_path = !options.output;
    const std::optional<CacheEntry> entry =
        options.uses_cache ? cache_entry(input, options.wishes) : std::nullopt;
    std::string object;
    if (entry && is_cached(*entry)) {
        std::ifstream file(entry->object, std::ios::binary);
        object = prints_path ? "" : std::string(std::istreambuf_iterator<char>(file), {});
    } else {
        Answer answer = answer_about(input, options);
        if (!report(input, answer.failure)) {
            return false;
        }
        object = std::move(answer.object);
        const std::string failure =
            entry ? store(*entry, object, answer.other_files) : "there is no folder for a cache";
        if (prints_path && !report(input, failure)) {
            return false;
        }
    }
    object = prints_path ? entry->object + "\n" : object;
    const bool is_printed = std::fwrite(object.data(), 1, object.size(), stdout) == object.size();
    return std::fflush(stdout) == 0 && is_printed ? true : report(input, std::strerror(errno));
}

/// Prints the answer, and writes the object to the path unless that is empty. False if the input failed.
bool deliver(const std::string &input, const Answer &answer, const std::string &output, bool has_notes) {
    std::string failure = answer.failure;
    if (failure.empty() && !output.empty()) {
        failure = save(output, answer.object);
    }
    if (failure.empty() || has_notes) {
        if (!answer.summary.empty()) {
            std::printf("%s: %s\n", one_line(output.empty() ? input : output).c_str(),
                        one_line(answer.summary).c_str());
        }
        for (const std::string &note : answer.notes) {
            std::printf("  %s\n", one_line(note).c_str());
        }
    }
    std::fflush(stdout);
    return report(input, failure);
}

} // namespace

int main(int argc, char **argv) {
    host::open_missing_standard_streams();
    // A file that may not grow is reported when it is written.
    std::signal(SIGXFSZ, SIG_IGN);
    const Options options = parse_options(argc, argv);
    Outputs outputs(options);
    bool is_good = true;
    for (const std::string &input : options.inputs) {
        if (options.uses_cache || options.output == "-") {
            is_good = print_object(input, options) && is_good;
            continue;
        }
        const std::string output = outputs.path_for(input);
        Answer answer;
        if (!options.only_describes) {
            answer.failure = outputs.take(output);
        }
        if (answer.failure.empty()) {
            answer = answer_about(input, options);
        }
        is_good = deliver(input, answer, output, options.only_describes) && is_good;
    }
    if (options.opens_viewer && is_good) {
        is_good = outputs.view();
    }
    return is_good ? EXIT_SUCCESS : exit_failure;
}
