// Patching a job of 1 GB, without anything to insert, with a stamp under each page, and as a single line.
#include <array>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/BesideCat.h"
#include "host/posix/PosixMachine.h"
#include "postscript/modPostScript.h"

namespace tessary {

namespace {

constexpr std::size_t kJobBytes = 1'000'000'000;
constexpr int kRounds = 9;

void WriteJob(const std::filesystem::path& file, const std::string& lineEnd) {
  const std::string page = TextPage(lineEnd) + "showpage" + lineEnd;
  std::ofstream out(file, std::ios::binary);
  out << "%!PS-Adobe-3.0" << lineEnd << "%%Title: (a job)" << lineEnd << "%%EndComments" << lineEnd;
  for (int number = 1; static_cast<std::size_t>(out.tellp()) < kJobBytes; ++number)
    out << "%%Page: " << number << " " << number << lineEnd << page;
}

void PatchJob(benchmark::State& state, const std::string& stamp, const std::string& lineEnd) {
  const std::array<const char*, 1> arguments{"patch_bench"};
  PosixMachine machine(1, arguments.data());
  Run run(machine.host());
  Dictionary settings;
  settings.Set("watermarktext", stamp);
  settings.Set("watermarklayer", "bottom");
  BesideCat(
      state, [&lineEnd](const auto& file) { WriteJob(file, lineEnd); },
      [&](const auto& from, const auto& to) {
        run.log.fileName = from.string() + ".log";
        PatchPostScriptFile(run, settings, "", to.string(), from.string());
      });
}

void PatchPlain(benchmark::State& state) { PatchJob(state, "", "\r\n"); }
BENCHMARK(PatchPlain)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void PatchStampBelow(benchmark::State& state) { PatchJob(state, "DRAFT", "\r\n"); }
BENCHMARK(PatchStampBelow)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

void PatchOneLine(benchmark::State& state) { PatchJob(state, "", "\n"); }
BENCHMARK(PatchOneLine)->Iterations(kRounds)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace tessary
