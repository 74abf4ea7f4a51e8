// What does an INI file cost, per setting: to load 5 and 50 MB, in memory, to read the value of a random
// name, and to save it? A load is the first one of its process, as in a client that starts, and "again" one
// of a loop. The node list keeps every line, comments and blank lines too, as a node.
//
// The file has 50 settings in a section, a comment before every twenty-fifth and a blank line behind each
// section. Comments begin with "#", which all peers take; lines end in CR LF. Saving writes to a
// temporary folder, which is removed again.
#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "FreshProcess.h"
#include "Measure.h"
#include "Rows.h"
#include "datalist/zelNodeList.h"

#if HAVE_GLIB
#include <glib.h>
#endif
#if HAVE_BOOST
#include <boost/property_tree/ini_parser.hpp>
#endif
#if HAVE_QT5
#include <QSettings>
#endif

namespace {

using namespace zelBenchmarks;
namespace fs = std::filesystem;

// A folder of this process, removed at the end.
struct TemporaryFolder {
  fs::path path = fs::temp_directory_path() / ("zel-bench-" + std::to_string(getpid()));
  const pid_t owner = getpid();
  TemporaryFolder() { fs::create_directories(path); }
  ~TemporaryFolder() {
    std::error_code ignored;
    if (getpid() == owner) fs::remove_all(path, ignored);
  }
};

const fs::path& temporaryFolder() {
  static const TemporaryFolder folder;
  return folder.path;
}

struct Setting {
  std::string section;
  std::string name;
  std::string value;
};

template <std::size_t count>
std::string_view anyOf(const std::array<std::string_view, count>& words, std::mt19937& random) {
  return words[random() % count];
}

std::string valueOf(std::mt19937& random) {
  static constexpr std::array<std::string_view, 14> words = {"C:/Program Files/Tools/Reports/templates ",
                                                             "True",
                                                             "Arial|Helvetica|sans-serif 10 bold ",
                                                             "1280",
                                                             "0.25",
                                                             "left=250 right=250 top=40 bottom=",
                                                             "#FFA500 on #FFFFFF when changed ",
                                                             "yyyy-mm-dd hh:nn:ss ",
                                                             "2",
                                                             "The report of the month with totals by region ",
                                                             "12.75",
                                                             "metric ",
                                                             "False",
                                                             "https://localhost:8080/index?page="};
  return std::string(anyOf(words, random)) + std::to_string(random() % 1000);
}

std::string nameOf(std::mt19937& random, int number) {
  static constexpr std::array<std::string_view, 10> words = {
      "Width",  "LastFolder", "FontName",    "ShowTips", "Colour",
      "Recent", "Decimals",   "ColumnWidth", "Url",      "Enabled"};
  return std::string(anyOf(words, random)) + std::to_string(number);
}

std::string sectionOf(std::mt19937& random, int number) {
  static constexpr std::array<std::string_view, 8> words = {"Paths ",  "Fonts ", "Grid ",   "Window ",
                                                            "Report ", "Units ", "Recent ", "Printer "};
  return std::string(anyOf(words, random)) + std::to_string(number);
}

// A generated file of so many megabytes, its settings, and 100,000 of them in random order.
struct IniFile {
  explicit IniFile(std::int64_t megabytes) : path(temporaryFolder() / (std::to_string(megabytes) + ".ini")) {
    std::mt19937 random(5);
    std::string text;
    const auto bytes = static_cast<std::size_t>(megabytes) * 1'000'000;
    while (text.size() < bytes) addSection(text, random);
    std::ofstream(path, std::ios::binary) << text;
    for (int i = 0; i < 100'000; ++i) asked.push_back(settings[random() % settings.size()]);
  }
  ~IniFile() { fs::remove(path); }
  IniFile(const IniFile&) = delete;
  IniFile& operator=(const IniFile&) = delete;

  const fs::path path;
  std::vector<Setting> settings;
  std::vector<Setting> asked;

 private:
  void addSection(std::string& text, std::mt19937& random) {
    const std::string section = sectionOf(random, ++sections_);
    text += "[" + section + "]\r\n";
    for (int i = 0; i < 50; ++i) {
      if (i % 25 == 0) text += "# Settings of page " + std::to_string(i / 25 + 1) + "\r\n";
      settings.push_back({section, nameOf(random, i), valueOf(random)});
      text += settings.back().name + "=" + settings.back().value + "\r\n";
    }
    text += "\r\n";
  }
  int sections_ = 0;
};

const IniFile& fileOf(std::int64_t megabytes) {
  static std::map<std::int64_t, std::unique_ptr<IniFile>> made;
  temporaryFolder();  // before the files, so that it ends after them
  std::unique_ptr<IniFile>& file = made[megabytes];
  if (!file) file = std::make_unique<IniFile>(megabytes);
  return *file;
}

std::u16string wide(std::string_view text) { return {text.begin(), text.end()}; }

// --- The node list and its peers: load on construction, read, save ---

class ZelIni {
 public:
  static constexpr const char* name = "zel";
  using Text = std::u16string;
  static Text text(std::string_view bytes) { return wide(bytes); }

  explicit ZelIni(const fs::path& path) {
    watch_ = list_->onNodeAdded.subscribe([this](const auto&) { ++lines_; });
    loaded_ = list_->LoadFromINI(wide(path.string()));
  }
  bool isWhole(std::size_t settings) const { return loaded_ && lines_ > settings; }
  std::size_t valueLength(const Text& section, const Text& key) const {
    return list_->ReadINIValue(section, key, u"").size();
  }
  void save(const fs::path& path) const { list_->SaveAsINI(wide(path.string())); }

 private:
  zelUtilities::Ref<zelUtilities::zelNodeList> list_ = zelUtilities::make<zelUtilities::zelNodeList>();
  zelUtilities::Subscription watch_;
  std::size_t lines_ = 0;
  bool loaded_ = false;
};

#if HAVE_GLIB
class GlibIni {
 public:
  static constexpr const char* name = "gkeyfile";
  using Text = std::string;
  static Text text(std::string_view bytes) { return Text(bytes); }

  explicit GlibIni(const fs::path& path) {
    loaded_ = g_key_file_load_from_file(file_, path.c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr) != 0;
  }
  ~GlibIni() { g_key_file_free(file_); }
  GlibIni(const GlibIni&) = delete;
  GlibIni& operator=(const GlibIni&) = delete;

  bool isWhole(std::size_t) const { return loaded_; }
  std::size_t valueLength(const Text& section, const Text& key) const {
    char* value = g_key_file_get_string(file_, section.c_str(), key.c_str(), nullptr);
    const std::size_t length = std::char_traits<char>::length(value);
    g_free(value);
    return length;
  }
  void save(const fs::path& path) const { g_key_file_save_to_file(file_, path.c_str(), nullptr); }

 private:
  GKeyFile* file_ = g_key_file_new();
  bool loaded_ = false;
};
#endif

#if HAVE_BOOST
class PtreeIni {
 public:
  static constexpr const char* name = "ptree";
  using Text = std::string;
  static Text text(std::string_view bytes) { return Text(bytes); }

  explicit PtreeIni(const fs::path& path) { boost::property_tree::read_ini(path.string(), tree_); }
  bool isWhole(std::size_t settings) const {
    std::size_t found = 0;
    for (const auto& section : tree_) found += section.second.size();
    return found == settings;
  }
  std::size_t valueLength(const Text& section, const Text& key) const {
    return std::string(tree_.find(section)->second.find(key)->second.data()).size();
  }
  void save(const fs::path& path) const { boost::property_tree::write_ini(path.string(), tree_); }

 private:
  boost::property_tree::ptree tree_;
};
#endif

#if HAVE_QT5
class QtIni {
 public:
  static constexpr const char* name = "qsettings";
  using Text = QString;
  static Text text(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
  }

  explicit QtIni(const fs::path& path)
      : settings_(QString::fromStdString(path.string()), QSettings::IniFormat) {
    settings_.childGroups();  // makes it parse all sections
  }
  bool isWhole(std::size_t settings) const {
    return static_cast<std::size_t>(settings_.allKeys().size()) == settings;
  }
  std::size_t valueLength(const Text& section, const Text& key) const {
    return static_cast<std::size_t>(settings_.value(section + '/' + key).toString().size());
  }

 private:
  QSettings settings_;
};
#endif

// --- The questions ---

const FreshProcesses* freshProcesses = nullptr;

template <class Ini>
double secondsToLoad(const std::string& path) {
  const double before = cpuSeconds();
  const Ini ini{fs::path(path)};
  return cpuSeconds() - before;
}

template <class Ini>
double bytesOfLoaded(const std::string& path) {
  const double before = bytesInUse();
  const Ini ini{fs::path(path)};
  return bytesInUse() - before;
}

template <class Ini>
void load(benchmark::State& state) {
  const IniFile& file = fileOf(state.range(0));
  const std::string path = file.path.string();
  require(Ini(file.path).isWhole(file.settings.size()), "settings loaded");
  const double bytes = freshProcesses->measure(&bytesOfLoaded<Ini>, path);
  state.counters["bytes"] = bytes / static_cast<double>(file.settings.size());
  for (auto _ : state) state.SetIterationTime(freshProcesses->measure(&secondsToLoad<Ini>, path));
  countItems(state, static_cast<std::int64_t>(file.settings.size()));
}

// The same in a loop, in which some allocators have kept the memory of the round before.
template <class Ini>
void loadAgain(benchmark::State& state) {
  const IniFile& file = fileOf(state.range(0));
  for (auto _ : state) {
    auto ini = std::make_unique<Ini>(file.path);
    untimed(state, [&] {
      require(ini->isWhole(file.settings.size()), "settings loaded");
      ini.reset();
    });
  }
  countItems(state, static_cast<std::int64_t>(file.settings.size()));
}

template <class Ini>
void read(benchmark::State& state) {
  const IniFile& file = fileOf(state.range(0));
  Ini ini(file.path);
  struct Asked {
    typename Ini::Text section;
    typename Ini::Text name;
  };
  std::vector<Asked> asked;
  std::size_t expected = 0;
  for (const Setting& setting : file.asked) {
    asked.push_back({Ini::text(setting.section), Ini::text(setting.name)});
    expected += setting.value.size();
  }
  for (auto _ : state) {
    std::size_t units = 0;
    for (const Asked& one : asked) units += ini.valueLength(one.section, one.name);
    require(units == expected, "characters of the values read");
  }
  countItems(state, static_cast<std::int64_t>(asked.size()));
}

template <class Ini>
void save(benchmark::State& state) {
  const IniFile& file = fileOf(state.range(0));
  const Ini ini(file.path);
  const fs::path saved = temporaryFolder() / "saved.ini";
  for (auto _ : state) {
    ini.save(saved);
    state.PauseTiming();
    require(Ini(saved).isWhole(file.settings.size()), "settings saved");
    fs::remove(saved);
    state.ResumeTiming();
  }
  countItems(state, static_cast<std::int64_t>(file.settings.size()));
}

// Arguments are megabytes.
template <class Ini>
void registerIni() {
  using benchmark::RegisterBenchmark;
  const std::string name = std::string("/MB/") + Ini::name;
  RegisterBenchmark(("load ini" + name).c_str(), load<Ini>)
      ->Arg(5)
      ->Arg(50)
      ->Unit(benchmark::kMillisecond)
      ->UseManualTime();
  RegisterBenchmark(("load ini again" + name).c_str(), loadAgain<Ini>)
      ->Arg(5)
      ->Arg(50)
      ->Unit(benchmark::kMillisecond);
  RegisterBenchmark(("read ini" + name).c_str(), read<Ini>)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);
  if constexpr (requires(const Ini& ini) { ini.save(fs::path()); })
    RegisterBenchmark(("save ini" + name).c_str(), save<Ini>)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond);
}

bool registerAll() {
  registerIni<ZelIni>();
#if HAVE_GLIB
  registerIni<GlibIni>();
#endif
#if HAVE_BOOST
  registerIni<PtreeIni>();
#endif
#if HAVE_QT5
  registerIni<QtIni>();
#endif
  return true;
}

const bool registered = registerAll();

}  // namespace

int main(int count, char** arguments) {
  const zelBenchmarks::FreshProcesses fresh;
  freshProcesses = &fresh;
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
