// Spooling against `cat FILE > OTHER`, in turn on the same file; the counters give the medians of both in
// milliseconds and the speed of spooling as a part of cat's.
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "host/posix/PosixMachine.h"
#include "monitor/Spooler.h"

namespace tessary {

namespace {

constexpr std::size_t kJobBytes = 300'000'000;
constexpr int kRounds = 9;

std::string TextPage() {
  std::string page;
  for (int line = 0; line < 2000; ++line)
    page += std::to_string(line % 600) + " " + std::to_string(line % 800) +
            " moveto (The quick brown fox jumps over the lazy dog) show\n";
  return page;
}

std::string BinaryPage() {
  std::mt19937 random(85);
  std::string page = "1000 4000 8 [1000 0 0 4000 0 0] {currentfile row readstring pop} image\n";
  for (int byte = 0; byte < 4'000'000; ++byte) page += static_cast<char>(random());
  return page + "\n";
}

void WriteJob(const std::filesystem::path& file, const std::string& page) {
  std::ofstream out(file, std::ios::binary);
  out << "%!PS-Adobe-3.0\n%%EndComments\n";
  for (int number = 1; static_cast<std::size_t>(out.tellp()) < kJobBytes; ++number)
    out << "%%Page: " << number << " " << number << "\n" << page << "showpage\n";
}

void Spool(const std::filesystem::path& from, const std::filesystem::path& to) {
  const std::array<const char*, 1> arguments{"spool_bench"};
  PosixMachine machine(1, arguments.data());
  Files& files = machine.host().files;
  const auto input = files.Open(from.string(), OpenMode::Read);
  const auto output = files.Open(to.string(), OpenMode::Create);
  if (!input.ok() || !output.ok() || !SpoolDocument(*input.value, *output.value).empty()) std::abort();
}

template <class Action>
double Milliseconds(Action action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}

void SpoolAndCat(benchmark::State& state, const std::string& page) {
  std::string name = (std::filesystem::temp_directory_path() / "spool-bench-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(name.data());
  const auto job = folder / "job.ps", copy = folder / "copy.ps";
  WriteJob(job, page);
  std::vector<double> spool, cat;
  for (auto _ : state) {
    std::filesystem::remove(copy);
    cat.push_back(Milliseconds([&] {
      if (std::system(("cat '" + job.string() + "' > '" + copy.string() + "'").c_str()) != 0) std::abort();
    }));
    std::filesystem::remove(copy);
    spool.push_back(Milliseconds([&] { Spool(job, copy); }));
    state.SetIterationTime(spool.back() / 1000);
  }
  std::filesystem::remove_all(folder);
  state.counters["cat_ms"] = Median(cat);
  state.counters["spool_ms"] = Median(spool);
  state.counters["of_cats_speed"] = Median(cat) / Median(spool);
}

void SpoolText(benchmark::State& state) { SpoolAndCat(state, TextPage()); }
BENCHMARK(SpoolText)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void SpoolBinary(benchmark::State& state) { SpoolAndCat(state, BinaryPage()); }
BENCHMARK(SpoolBinary)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tessary
