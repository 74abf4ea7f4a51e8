// What does a value cost on its way into text and back: doubles beside the C++ library's own conversions,
// dates in ISO form beside the C library's?
//
// Times are CPU time per value; sizes are values.
#include <charconv>
#include <ctime>
#include <random>
#include <vector>

#include "Measure.h"
#include "automation/Conversions.h"
#include "text/XmlDates.h"

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

// Of all sizes that are written without an exponent, with as many digits as a double has.
std::vector<double> doubles(std::int64_t count) {
  std::mt19937_64 random(4);
  std::uniform_real_distribution<double> any(-1e6, 1e6);
  std::vector<double> values(static_cast<std::size_t>(count));
  for (double& value : values) value = any(random);
  return values;
}

// To the second, in 1950 to 2050.
std::vector<std::int64_t> seconds(std::int64_t count) {
  std::mt19937_64 random(5);
  std::uniform_int_distribution<std::int64_t> any(-631'152'000, 2'524'608'000);
  std::vector<std::int64_t> values(static_cast<std::size_t>(count));
  for (std::int64_t& value : values) value = any(random);
  return values;
}

std::vector<Variant> dates(std::int64_t count) {
  std::vector<Variant> values;
  for (const std::int64_t second : seconds(count))
    values.push_back(Variant::date(25569 + static_cast<double>(second) / 86400));
  return values;
}

template <class Value, class Text, class Write>
std::vector<Text> textsOf(const std::vector<Value>& values, const Write& write) {
  std::vector<Text> texts;
  for (const Value& value : values) texts.push_back(write(value));
  return texts;
}

// Times convert() over all values.
template <class Value, class Convert>
void measure(benchmark::State& state, const std::vector<Value>& values, const Convert& convert) {
  for (auto _ : state)
    for (const Value& value : values) benchmark::DoNotOptimize(convert(value));
  countItems(state, static_cast<std::int64_t>(values.size()));
}

String doubleText(double value) { return toText(value); }
double readDouble(const Variant& text) { return toDouble(text); }

std::string doubleTextByLibrary(double value) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}
double readDoubleByLibrary(const std::string& text) {
  double value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

double readDate(const Variant& text) { return toDate(text); }

std::string dateTextByLibrary(std::int64_t second) {
  const std::time_t time = second;
  std::tm parts{};
  gmtime_r(&time, &parts);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts)};
}
std::time_t readDateByLibrary(const std::string& text) {
  std::tm parts{};
  strptime(text.c_str(), "%Y-%m-%d %H:%M:%S", &parts);
  return timegm(&parts);
}

void writeDoubles(benchmark::State& state) { measure(state, doubles(state.range(0)), doubleText); }
void writeDoublesByLibrary(benchmark::State& state) {
  measure(state, doubles(state.range(0)), doubleTextByLibrary);
}
void readDoubles(benchmark::State& state) {
  const auto texts = textsOf<double, Variant>(doubles(state.range(0)), doubleText);
  require(toDouble(texts[0]) != 0, "number");
  measure(state, texts, readDouble);
}
void readDoublesByLibrary(benchmark::State& state) {
  measure(state, textsOf<double, std::string>(doubles(state.range(0)), doubleTextByLibrary),
          readDoubleByLibrary);
}
void writeDates(benchmark::State& state) { measure(state, dates(state.range(0)), mXML::ToXMLDate); }
void writeDatesByLibrary(benchmark::State& state) {
  measure(state, seconds(state.range(0)), dateTextByLibrary);
}
void readDates(benchmark::State& state) {
  const std::vector<Variant> values = dates(state.range(0));
  const auto texts = textsOf<Variant, Variant>(values, mXML::ToXMLDate);
  require(mXML::ToXMLDate(Variant::date(toDate(texts[0]))) == texts[0].text(), "date");
  measure(state, texts, readDate);
}
void readDatesByLibrary(benchmark::State& state) {
  measure(state, textsOf<std::int64_t, std::string>(seconds(state.range(0)), dateTextByLibrary),
          readDateByLibrary);
}

const bool registered = [] {
  const std::pair<const char*, void (*)(benchmark::State&)> all[] = {
      {"double/to text/zel", writeDoubles},  {"double/to text/charconv", writeDoublesByLibrary},
      {"double/from text/zel", readDoubles}, {"double/from text/charconv", readDoublesByLibrary},
      {"date/to ISO text/zel", writeDates},  {"date/to ISO text/libc", writeDatesByLibrary},
      {"date/from ISO text/zel", readDates}, {"date/from ISO text/libc", readDatesByLibrary}};
  for (const auto& [name, measured] : all)
    benchmark::RegisterBenchmark(name, measured)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace
