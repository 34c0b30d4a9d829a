// Spooling, of a job of text and of one of pictures.
#include <array>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "bench/BesideCat.h"
#include "host/posix/PosixMachine.h"
#include "monitor/Spooler.h"

namespace tessary {

namespace {

constexpr std::size_t kJobBytes = 300'000'000;
constexpr int kRounds = 9;

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
  if (!input.ok() || !output.ok()) std::abort();
  std::int32_t pages = 0;
  if (!SpoolDocument(*input.value, FindDocument(*input.value), *output.value, 1, pages).empty()) std::abort();
}

void SpoolPages(benchmark::State& state, const std::string& page) {
  BesideCat(
      state, [&page](const auto& file) { WriteJob(file, page); }, Spool);
}

void SpoolText(benchmark::State& state) { SpoolPages(state, TextPage("\n")); }
BENCHMARK(SpoolText)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void SpoolBinary(benchmark::State& state) { SpoolPages(state, BinaryPage()); }
BENCHMARK(SpoolBinary)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tessary
