// Measures the store by benchmarks, in a directory of its own. "store_benchmark write 100" makes a
// file of 100 records below the working directory; "store_benchmark delete" then deletes the last.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "config/evseccfg.h"
#include "platform/hlv_nodename.h"

static int allocations = 0;  // calls of malloc, also from the C library itself
extern "C" void* __libc_malloc(std::size_t size);  // NOLINT: the name that the C library gives it
extern "C" void* malloc(std::size_t size) noexcept { return ++allocations, __libc_malloc(size); }

static WLNSRec last{.nodemask = "last.site.net", .usermask = "root", .mode = 'W', .next = {}};

using Operation = int (*)();  // returns 0 when it worked

static int WriteRecords(long count) {
  const std::filesystem::path directory = std::string("opr/config/") + hlv_nodename();
  std::filesystem::create_directories(directory);
  std::ofstream file(directory / "actnode.prf");
  for (long i = 1; i < count; ++i) file << "-n=web" << i / 5 << ".site.net,user" << i % 5 << ",E\n";
  return file << "-n=" << last.nodemask << ',' << last.usermask << ",E" << std::endl ? 0 : 1;
}

static void Measure(benchmark::State& state, Operation operation, Operation undo) {
  WriteRecords(state.range());
  while (state.KeepRunning()) {
    if (operation() != 0) state.SkipWithError("failed; only root may change the file");
    state.PauseTiming();
    if (undo() != 0) state.SkipWithError("cannot be undone");
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range());
}

int main(int argc, char** argv) {
  const Operation update = [] { return WLNSUpdateRec(&last); };
  const std::map<std::string, Operation> operations{
      {"load", [] { return RecordList(WLNSGetAllRecs()).head != nullptr ? 0 : 1; }},
      {"lookup", [] { return WLNSGetRec(&last); }},
      {"update", update},
      {"delete", [] { return WLNSDeleteRec(&last); }},
      {"list-nodes", [] { return RecordList(WLNSListNodeMasks("")).head != nullptr ? 0 : 1; }},
      {"list-users", [] { return RecordList(WLNSListUserMasks("")).head != nullptr ? 0 : 1; }}};
  setenv("HLVHOME0000", ".", 1);
  if (argc == 3 && argv[1] == std::string("write")) return WriteRecords(std::stol(argv[2]));
  if (argc == 2 && operations.contains(argv[1])) {
    allocations = 0;
    const int result = operations.at(argv[1])();
    std::printf("%d allocations\n", allocations);
    return result;
  }
  for (const auto& [name, run] : operations) {
    benchmark::RegisterBenchmark(name.c_str(), Measure, run,
                                 name != "delete" ? [] { return 0; } : update)
        ->ArgsProduct({{100, 10000, 100000}})
        ->Complexity(benchmark::oN);
  }
  benchmark::Initialize(&argc, argv);
  std::filesystem::current_path(mkdtemp(std::string("/tmp/store_benchmark.XXXXXX").data()));
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(std::filesystem::current_path());
}
