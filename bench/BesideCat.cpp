#include "bench/BesideCat.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace tessary {

namespace {

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

/// A line of /proc/self/status: VmRSS is what is resident now, VmHWM the most since ForgetPeak.
double Kilobytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double value = 0;
    if (word == name + ":" && status >> value) return value;
  }
  return 0;
}

void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

}  // namespace

void BesideCat(
    benchmark::State& state, const std::function<void(const std::filesystem::path& file)>& write,
    const std::function<void(const std::filesystem::path& from, const std::filesystem::path& to)>& work) {
  std::string name = (std::filesystem::temp_directory_path() / "tessary-bench-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(name.data());
  const auto job = folder / "job.ps", copy = folder / "copy.ps";
  write(job);
  std::vector<double> cat, ours;
  double memory = 0;
  for (auto _ : state) {
    std::filesystem::remove(copy);
    cat.push_back(Milliseconds([&] {
      if (std::system(("cat '" + job.string() + "' > '" + copy.string() + "'").c_str()) != 0) std::abort();
    }));
    std::filesystem::remove(copy);
    ForgetPeak();
    const double idle = Kilobytes("VmRSS");
    ours.push_back(Milliseconds([&] { work(job, copy); }));
    memory = std::max(memory, Kilobytes("VmHWM") - idle);
    state.SetIterationTime(ours.back() / 1000);
  }
  std::filesystem::remove_all(folder);
  state.counters["cat_ms"] = Median(cat);
  state.counters["ours_ms"] = Median(ours);
  state.counters["of_cats_speed"] = Median(cat) / Median(ours);
  state.counters["memory_kB"] = memory;
}

std::string TextPage(const std::string& lineEnd) {
  std::string page;
  for (int line = 0; line < 2000; ++line)
    page += std::to_string(line % 600) + " " + std::to_string(line % 800) +
            " moveto (The quick brown fox jumps over the lazy dog) show" + lineEnd;
  return page;
}

}  // namespace tessary
