// Listing, copying and deleting a tree of small files, against std::filesystem on the same disk (TMPDIR).
//
//   everything  the paths of all files in the tree, hidden ones too
//   names       those that are neither hidden nor system files; the peer does not know these, which takes a
//               question to the system for each, as in the row "asked"
//   details     the same with size and date of each, as a list that finds files by path
//   copy        the whole tree, with attributes and dates
//   delete      the whole tree
#include <sys/xattr.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unordered_map>
#include <vector>

#include "Measure.h"
#include "files/zelFileList.h"
#include "files/zelFiles.h"
#include "platform/Files.h"

namespace zelBenchmarks {
namespace {

namespace fs = std::filesystem;
using namespace zelUtilities;

constexpr int filesInFolder = 200;
constexpr auto recursively = ZEL_CopyFlags_Recurse;

// A folder for this program, gone with it.
class Scratch {
 public:
  Scratch() : path_(fs::temp_directory_path() / ("zel-bench-" + std::to_string(getpid()))) {
    fs::create_directories(path_);
  }
  ~Scratch() {
    std::error_code failure;
    fs::remove_all(path_, failure);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

const fs::path& scratch() {
  static const Scratch folder;
  return folder.path();
}

// Two levels of folders with files of some 20 bytes, made once.
const fs::path& tree(std::int64_t count) {
  static std::unordered_map<std::int64_t, fs::path> made;
  fs::path& top = made[count];
  if (!top.empty()) return top;
  top = scratch() / ("tree" + std::to_string(count));
  for (std::int64_t i = 0; i < count; ++i) {
    const std::int64_t number = i / filesInFolder;
    const fs::path folder =
        top / ("group" + std::to_string(number / 20)) / ("folder" + std::to_string(number));
    if (i % filesInFolder == 0) fs::create_directories(folder);
    std::ofstream(folder / ("file" + std::to_string(i) + ".txt")) << "contents of " << i;
  }
  return top;
}

String windows(const fs::path& path) {
  String text = u"Z:" + fromUtf8(path.native());
  for (char16_t& unit : text)
    if (unit == u'/') unit = u'\\';
  return text;
}

template <class Receiver>
void eachFile(const String& top, std::uint32_t attributes, const Receiver& receive) {
  std::vector<String> folders{top};
  while (!folders.empty()) {
    const String folder = std::move(folders.back()) + u"\\";
    folders.pop_back();
    for (const FileEntry& entry : files().findAll(folder + u"*", attributes)) {
      if (entry.isFolder) {
        folders.push_back(folder + entry.name);
      } else {
        receive(folder + entry.name);
      }
    }
  }
}

constexpr std::uint32_t visible = FileAttribute::Folder;
constexpr std::uint32_t everything = visible | FileAttribute::Hidden | FileAttribute::System;

void namesByZel(benchmark::State& state, std::uint32_t attributes) {
  const String top = windows(tree(state.range(0)));
  for (auto _ : state) {
    std::vector<String> names;
    eachFile(top, attributes, [&](String path) { names.push_back(std::move(path)); });
    require(names.size() == static_cast<std::size_t>(state.range(0)), "names");
  }
  countItems(state, state.range(0));
}
BENCHMARK_CAPTURE(namesByZel, everything, everything)->Name("everything/tree/zel")->Arg(10000)->Arg(100000);
BENCHMARK_CAPTURE(namesByZel, visible, visible)->Name("names/tree/zel")->Arg(10000)->Arg(100000);

void namesByStd(benchmark::State& state) {
  const fs::path& top = tree(state.range(0));
  for (auto _ : state) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(top))
      if (!entry.is_directory()) names.push_back(entry.path().native());
    require(names.size() == static_cast<std::size_t>(state.range(0)), "names");
  }
  countItems(state, state.range(0));
}
BENCHMARK(namesByStd)->Name("everything/tree/std")->Arg(10000)->Arg(100000);
BENCHMARK(namesByStd)->Name("names/tree/std")->Arg(10000)->Arg(100000);

// The least that such a question costs: no more than whether the file has any extended attributes.
void namesAsked(benchmark::State& state) {
  const fs::path& top = tree(state.range(0));
  for (auto _ : state) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(top))
      if (!entry.is_directory() && listxattr(entry.path().c_str(), nullptr, 0) == 0)
        names.push_back(entry.path().native());
    require(names.size() == static_cast<std::size_t>(state.range(0)), "names");
  }
  countItems(state, state.range(0));
}
BENCHMARK(namesAsked)->Name("names/tree/asked")->Arg(10000)->Arg(100000);

void detailsByZel(benchmark::State& state) {
  const String top = windows(tree(state.range(0)));
  for (auto _ : state) {
    const auto list = make<zelFileList>();
    eachFile(top, visible, [&](const String& path) { list->Create(path); });
    require(list->Count() == state.range(0) && list->Item(std::int32_t{1})->Size() > 0, "details");
  }
  countItems(state, state.range(0));
}
BENCHMARK(detailsByZel)->Name("details/tree/zel")->Arg(10000)->Arg(100000);

void detailsByStd(benchmark::State& state) {
  struct Details {
    std::uintmax_t size;
    fs::file_time_type date;
  };
  const fs::path& top = tree(state.range(0));
  for (auto _ : state) {
    std::unordered_map<std::string, Details> list;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(top))
      if (!entry.is_directory())
        list.emplace(entry.path().native(), Details{entry.file_size(), entry.last_write_time()});
    require(list.size() == static_cast<std::size_t>(state.range(0)), "details");
  }
  countItems(state, state.range(0));
}
BENCHMARK(detailsByStd)->Name("details/tree/std")->Arg(10000)->Arg(100000);

void requireCopied(const fs::path& copy, std::int64_t count) {
  std::int64_t copied = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(copy))
    copied += !entry.is_directory();
  require(copied == count, "copies");
}

void copyByZel(benchmark::State& state) {
  const fs::path& top = tree(state.range(0));
  const fs::path copy = scratch() / "copy";
  for (auto _ : state) {
    require(zel_FilesCopy(windows(top), windows(copy), recursively) == ZEL_CopyErrors_Success, "copy");
    untimed(state, [&] {
      requireCopied(copy, state.range(0));
      fs::remove_all(copy);
    });
  }
  countItems(state, state.range(0));
}
BENCHMARK(copyByZel)->Name("copy/tree/zel")->Arg(10000)->Arg(100000);

void copyByStd(benchmark::State& state) {
  const fs::path& top = tree(state.range(0));
  const fs::path copy = scratch() / "copy";
  for (auto _ : state) {
    fs::copy(top, copy, fs::copy_options::recursive);
    untimed(state, [&] {
      requireCopied(copy, state.range(0));
      fs::remove_all(copy);
    });
  }
  countItems(state, state.range(0));
}
BENCHMARK(copyByStd)->Name("copy/tree/std")->Arg(10000)->Arg(100000);

template <class Delete>
void deleting(benchmark::State& state, const Delete& remove) {
  const fs::path copy = scratch() / "gone";
  for (auto _ : state) {
    untimed(state, [&] { fs::copy(tree(state.range(0)), copy, fs::copy_options::recursive); });
    remove(copy);
    untimed(state, [&] { require(!fs::exists(copy), "delete"); });
  }
  countItems(state, state.range(0));
}

void deleteByZel(benchmark::State& state) {
  deleting(state, [](const fs::path& copy) { zel_FileDelete(windows(copy)); });
}
BENCHMARK(deleteByZel)->Name("delete/tree/zel")->Arg(10000)->Arg(100000);

void deleteByStd(benchmark::State& state) {
  deleting(state, [](const fs::path& copy) { fs::remove_all(copy); });
}
BENCHMARK(deleteByStd)->Name("delete/tree/std")->Arg(10000)->Arg(100000);

}  // namespace
}  // namespace zelBenchmarks
