// How long the steps of a comparison take, by the number of settings in a file.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <map>
#include <memory>
#include <random>
#include <stdexcept>

#include "SampleFiles.h"
#include "compare/ChangeComparison.h"
#include "conf/ConfReader.h"
#include "conf/ConfWriter.h"

namespace quenmar {

namespace {

/// The sample files are in order: the only message is that a file was saved.
class NoQuestions final : public MessageBoxes {
 public:
  Button Show(const String& /*text*/, int style) override {
    if (style != message_style::kInformation) throw std::logic_error("unexpected message");
    return Button::kOk;
  }
};

/// A pair of sample files on the disk, and what reading makes of them.
class Sample {
 public:
  explicit Sample(int settings) {
    std::filesystem::create_directories(folder_);
    const SampleFiles files = MakeSampleFiles(settings);
    WriteInPlace(Distribution(), files.distribution);
    WriteInPlace(Server(), files.server);
    Read(Distribution(), documents_.distribution, documents_.distributionSeries);
    Read(Server(), documents_.server, documents_.serverSeries);
  }
  Sample(const Sample&) = delete;
  Sample& operator=(const Sample&) = delete;
  ~Sample() {
    std::error_code ignored;  // a leftover in the folder for temporary files spoils no measurement
    std::filesystem::remove_all(folder_, ignored);
  }

  /// @return the sample that all benchmarks of one size share.
  static Sample& OfSize(const benchmark::State& state) {
    static std::map<int, Sample> samples;
    const int settings = static_cast<int>(state.range(0));
    return samples.try_emplace(settings, settings).first->second;
  }

  void Read(const Path& path, std::shared_ptr<Document>& settings,
            std::shared_ptr<Document>& series) {
    if (!ConfReader(options_, language_, messages_).LoadConfFile(path, settings, series)) {
      throw std::logic_error("unreadable sample");
    }
  }

  void Write() {
    const SeriesGroups groups(*documents_.serverSeries);
    const ConfWriter writer(options_, language_, messages_);
    // Bytes that are there already would not be written.
    documents_.server->Fields().Field(0)->SetValue(ToText(++writes_));
    if (!writer.SaveConfFile(folder_ / "written.conf", *documents_.server, groups)) {
      throw std::logic_error("sample not written");
    }
  }

  [[nodiscard]] Path Distribution() const { return folder_ / "dist.conf"; }
  [[nodiscard]] Path Server() const { return folder_ / "server.conf"; }
  [[nodiscard]] const ConfDocuments& Documents() const { return documents_; }

 private:
  Path folder_ = std::filesystem::temp_directory_path() /
                 ("quenmar-bench-" + std::to_string(std::random_device()()));
  Options options_;
  Language language_;
  NoQuestions messages_;
  ConfDocuments documents_;
  int writes_ = 0;
};

void Read(benchmark::State& state) {
  Sample& sample = Sample::OfSize(state);
  for ([[maybe_unused]] auto iteration : state) {
    std::shared_ptr<Document> settings;
    std::shared_ptr<Document> series;
    sample.Read(sample.Server(), settings, series);
  }
}

void Compare(benchmark::State& state) {
  const Sample& sample = Sample::OfSize(state);
  for ([[maybe_unused]] auto iteration : state) {
    ChangeComparison comparison(sample.Documents(), false);
    comparison.FillNewFields();
    comparison.FillActualFields();
    comparison.FillDeletedFields();
    benchmark::DoNotOptimize(comparison.HasListChanges());
  }
}

/// Sorts the server's settings, with `duplicates` names that occur twice.
void SortSettings(benchmark::State& state, int duplicates) {
  const Fields& fields = Sample::OfSize(state).Documents().server->Fields();
  for ([[maybe_unused]] auto iteration : state) {
    state.PauseTiming();
    auto unsorted = std::make_unique<Fields>();
    for (const Field& field : fields) unsorted->AddField(field.Name(), {});
    for (int i = 0; i < duplicates; ++i) unsorted->AddField(fields.Field(i)->Name(), {});
    state.ResumeTiming();
    unsorted->Sort(true);
    state.PauseTiming();
    unsorted.reset();
    state.ResumeTiming();
  }
}
void Sort(benchmark::State& state) { SortSettings(state, 0); }
void SortWithDuplicate(benchmark::State& state) { SortSettings(state, 1); }

/// The whole save: copy of the old file, encoding, and both files flushed to the disk.
void Write(benchmark::State& state) {
  Sample& sample = Sample::OfSize(state);
  for ([[maybe_unused]] auto iteration : state) sample.Write();
}

void Export(benchmark::State& state) {
  Document& settings = *Sample::OfSize(state).Documents().server;
  for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(settings.XMLExport());
}

void Sizes(benchmark::internal::Benchmark* steps) {
  steps->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(Read)->Apply(Sizes);
BENCHMARK(Compare)->Apply(Sizes);
BENCHMARK(Sort)->Apply(Sizes);
BENCHMARK(SortWithDuplicate)->Apply(Sizes);
BENCHMARK(Write)->Apply(Sizes)->UseRealTime();
BENCHMARK(Export)->Apply(Sizes);

}  // namespace

}  // namespace quenmar

BENCHMARK_MAIN();
