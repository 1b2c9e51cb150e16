// What strings and property lists cost, without a screen.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <cstring>

#include "app/Sequence.h"
#include "core/App.h"
#include "core/FileTypes1.h"
#include "platform/PropertyLists.h"
#include "platform/runtime/Plugins.h"
#include "ui/WAbout.h"
#include "ui/WPerm.h"
#include "ui/Window1.h"

namespace {

using namespace zelto;

struct List {
  String Bytes;
  std::vector<Property> Declared;
  Ref<EventSource> Object;  // what it is applied to
};

template <class W>
void AddLists(std::vector<List>& lists) {
  const auto window = RuntimeNewObject<W>();
  window->Raise("CreateControls");
  lists.push_back({W::List(), WindowList::Schema(), window});
  for (const auto& row : W::Controls()) {
    const auto control = ControlNamed<EventSource>(*window, row.Name);
    lists.push_back({row.List, control->ClassOf().Properties(), control});
  }
}

const std::vector<List>& WindowLists() {
  static const auto& lists = *[] {
    auto* made = new std::vector<List>;  // windows cannot go after their toolkit
    AddLists<class Window1>(*made);
    AddLists<class WPerm>(*made);
    AddLists<class WAbout>(*made);
    return made;
  }();
  return lists;
}

void CountBytes(benchmark::State& state) {
  std::int64_t bytes = 0;
  for (const auto& list : WindowLists()) bytes += LenB(list.Bytes);
  state.SetBytesProcessed(bytes * state.iterations());
  state.counters["bytes"] = static_cast<double>(bytes);
}

void DecodeLists(benchmark::State& state) {
  for (auto _ : state) {
    for (const auto& list : WindowLists()) {
      benchmark::DoNotOptimize(DecodePropertyList(list.Bytes, list.Declared));
    }
  }
  CountBytes(state);
}
BENCHMARK(DecodeLists)->Unit(benchmark::kMicrosecond);

void DecodeAndApplyLists(benchmark::State& state) {
  for (auto _ : state) {
    for (const auto& list : WindowLists()) RuntimeMassPropertySetter(*list.Object, list.Bytes);
  }
  CountBytes(state);
}
BENCHMARK(DecodeAndApplyLists)->Unit(benchmark::kMicrosecond);

// As many lists of one kind in a row.
void DecodeLongList(benchmark::State& state) {
  std::string bytes;
  for (int i = 0; i < state.range(0); ++i) bytes += String(EditFieldList{.Name = "passwd"}).Bytes();
  const String list = bytes;
  const auto declared = EditFieldList::Schema();
  for (auto _ : state) benchmark::DoNotOptimize(DecodePropertyList(list, declared));
  state.SetBytesProcessed(LenB(list) * state.iterations());
}
BENCHMARK(DecodeLongList)->Arg(1)->Arg(100)->Arg(10'000)->Unit(benchmark::kMicrosecond);

// 10 MB of what `tar` prints, a member a line.
const String& Listing() {
  static const String text = [] {
    std::string lines;
    for (int i = 0; lines.size() < 10'000'000; ++i) {
      lines += "/usr/share/sample-tools/data/" + std::to_string(i / 1000) + "/file-" +
               std::to_string(i) + ".bin\n";
    }
    return String(std::move(lines));
  }();
  return text;
}

void MemchrListing(benchmark::State& state) {
  for (auto _ : state) {
    const auto text = Listing().Bytes();
    std::size_t lines = 0;
    for (const char *at = text.data(), *end = at + text.size(); at; ++lines) {
      at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
      if (at) ++at;
    }
    benchmark::DoNotOptimize(lines);
  }
}
BENCHMARK(MemchrListing)->Unit(benchmark::kMillisecond);

void SplitListing(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(Split(Listing(), "\n"));
}
BENCHMARK(SplitListing)->Unit(benchmark::kMillisecond);

void NthFieldListing(benchmark::State& state) {
  const auto last = static_cast<Int32>(Split(Listing(), "\n").size());
  for (auto _ : state) benchmark::DoNotOptimize(NthField(Listing(), "\n", last));
}
BENCHMARK(NthFieldListing)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  benchmark::Initialize(&argc, argv);
  RuntimeInit();
  initialize();
  InitPluginEntrypoints();
  FileTypes1::Initialize();
  RuntimeRegisterAppObject(RuntimeNewObject<class App>());
  benchmark::RunSpecifiedBenchmarks();
  _exit(0);
}
