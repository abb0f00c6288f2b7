// SPDX-License-Identifier: MIT
// Collects the results of Google Benchmark and prints them as tables of medians.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// The result of one benchmark over its repetitions.
struct Measurement {
    std::vector<double> microseconds;
    std::map<std::string, double> counters;

    double median() const;
};

/// Stores every repetition's time by the benchmark's name, and shows which benchmark is running.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;

    /// The measurement with this name; null if it did not run.
    const Measurement *find(const std::string &name) const;

private:
    std::map<std::string, Measurement> measurements_;
};

/// Prints the frames of every mesh, size and mode: the viewer's time, its cost per triangle and per pixel,
/// and each peer's time as a multiple of the viewer's.
void print_frames(const Collector &collector, const std::vector<std::string> &meshes,
                  const std::vector<std::string> &sizes);

/// Prints the stages in both forms, and the limits of memory bandwidth.
void print_stages(const Collector &collector, const std::vector<std::string> &sizes);

/// Prints how long an object takes to become ready.
void print_loading(const Collector &collector);
