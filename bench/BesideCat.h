// Work on a whole file against `cat FILE > OTHER`, in turn on the same file.
#pragma once

#include <benchmark/benchmark.h>
#include <filesystem>
#include <functional>

namespace tessary {

/// Lets `write` make a file, and `work` make another one of it beside cat, as often as the benchmark runs. The
/// counters give the medians of both in milliseconds, the speed of the work as a part of cat's, and the most
/// memory that the work took, in kilobytes.
void BesideCat(
    benchmark::State& state, const std::function<void(const std::filesystem::path& file)>& write,
    const std::function<void(const std::filesystem::path& from, const std::filesystem::path& to)>& work);

/// A page of 2000 ordinary lines of text, which end in `lineEnd`.
std::string TextPage(const std::string& lineEnd);

}  // namespace tessary
