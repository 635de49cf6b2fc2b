// SPDX-License-Identifier: MIT
//
// Runs the benchmarks of one program and prints ratios.
//
// Benchmarks are named "workload/contender". All contenders of a workload run in turns, several
// times, and the least CPU time of each counts. The last column compares with the fastest
// contender that is not called "quorix": below 1 this library is faster.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Best {
  std::string contender;
  double seconds;
};

class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context & /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run> &runs) override {
    for (const Run &run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const std::string name = run.run_name.function_name;
      const size_t slash = name.find('/');
      note(name.substr(0, slash), name.substr(slash + 1),
           run.cpu_accumulated_time / static_cast<double>(run.iterations));
    }
  }

  void Finalize() override {
    std::printf("%-40s %-16s %12s %8s\n", "workload", "contender", "CPU ms", "x");
    for (auto &[workload, all] : best_) {
      std::sort(all.begin(), all.end(),
                [](const Best &a, const Best &b) { return a.seconds < b.seconds; });
      print(workload, all);
    }
  }

 private:
  void note(const std::string &workload, const std::string &contender, double seconds) {
    std::vector<Best> &all = best_[workload];
    const auto known = std::find_if(all.begin(), all.end(),
                                    [&](const Best &b) { return b.contender == contender; });
    if (known == all.end()) {
      all.push_back({contender, seconds});
    } else {
      known->seconds = std::min(known->seconds, seconds);
    }
  }

  static void print(const std::string &workload, const std::vector<Best> &all) {
    double fastest = 0.0;
    for (const Best &b : all) {
      const bool peer = b.contender.compare(0, 6, "quorix") != 0;
      if (peer && (fastest == 0.0 || b.seconds < fastest)) fastest = b.seconds;
    }
    for (const Best &b : all) {
      std::printf("%-40s %-16s %12.4f", workload.c_str(), b.contender.c_str(), b.seconds * 1e3);
      if (fastest > 0.0) std::printf(" %8.2f", b.seconds / fastest);
      std::printf("\n");
    }
  }

  std::map<std::string, std::vector<Best>> best_;
};

}  // namespace

int main(int argc, char **argv) {
  std::vector<char *> arguments(argv, argv + argc);
  char turns[] = "--benchmark_enable_random_interleaving=true";
  char repetitions[] = "--benchmark_repetitions=7";
  char least_time[] = "--benchmark_min_time=0.05";
  // In front, so that what the user says comes later and wins.
  arguments.insert(arguments.begin() + 1, {turns, repetitions, least_time});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return 0;
}
