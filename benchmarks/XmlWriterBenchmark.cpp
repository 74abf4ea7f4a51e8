// What does an element cost in an indented document, each with two attributes and text in which something is
// escaped? Beside it libxml2's writer, which writes as it goes, too, and pugixml, which builds the document
// and then saves it.
//
// Times are CPU time per element; sizes are elements, ten of them in each parent.
#include "Measure.h"
#include "text/zelStringCat.h"

#if HAVE_LIBXML2
#include <libxml/xmlwriter.h>
#endif
#if HAVE_PUGIXML
#include <pugixml.hpp>
#endif

#include <vector>

namespace {

using namespace zelUtilities;
using zelBenchmarks::countItems;
using zelBenchmarks::require;

constexpr std::int64_t fanOut = 10;

// The texts of the elements, made beforehand.
template <class Text>
struct Texts {
  std::vector<Text> ids, names, values;
};

const Texts<String>& wideTexts(std::int64_t count) {
  static Texts<String> texts;
  for (auto i = static_cast<std::int64_t>(texts.ids.size()); i < count; ++i) {
    texts.ids.push_back(decimalText(i));
    texts.names.push_back(u"name & number " + decimalText(i % 1000));
    texts.values.push_back(u"a value <of> some length, " + decimalText(i % 100'000));
  }
  return texts;
}

[[maybe_unused]] const Texts<std::string>& narrowTexts(std::int64_t count) {
  static Texts<std::string> texts;
  const Texts<String>& wide = wideTexts(count);
  for (std::size_t i = texts.ids.size(); i < static_cast<std::size_t>(count); ++i) {
    texts.ids.push_back(toUtf8(wide.ids[i]));
    texts.names.push_back(toUtf8(wide.names[i]));
    texts.values.push_back(toUtf8(wide.values[i]));
  }
  return texts;
}

void write(benchmark::State& state) {
  const Texts<String>& texts = wideTexts(state.range(0));
  for (auto _ : state) {
    zelStringCat out;
    out.OpenElement(u"Root");
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
      const bool opens = i % fanOut == 0;
      if (opens && i > 0) out.CloseElement();
      out.StartElement(opens ? u"Group" : u"Element");
      out.AddAttribute(u"id", texts.ids[i]);
      out.AddAttribute(u"name", texts.names[i]);
      out.FinishElementEx(opens, texts.values[i]);
    }
    out.CloseElement();
    out.CloseElement();
    require(out.length() > state.range(0) * 60, "length");
  }
  countItems(state, state.range(0));
}

#if HAVE_LIBXML2
const xmlChar* xml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
const xmlChar* xml(const std::string& text) { return xml(text.c_str()); }

void writeByLibxml2(benchmark::State& state) {
  const Texts<std::string>& texts = narrowTexts(state.range(0));
  for (auto _ : state) {
    xmlBuffer* buffer = xmlBufferCreate();
    xmlTextWriter* out = xmlNewTextWriterMemory(buffer, 0);
    xmlTextWriterSetIndent(out, 1);
    xmlTextWriterStartElement(out, xml("Root"));
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
      const bool opens = i % fanOut == 0;
      if (opens && i > 0) xmlTextWriterEndElement(out);
      xmlTextWriterStartElement(out, xml(opens ? "Group" : "Element"));
      xmlTextWriterWriteAttribute(out, xml("id"), xml(texts.ids[i]));
      xmlTextWriterWriteAttribute(out, xml("name"), xml(texts.names[i]));
      if (opens) continue;
      xmlTextWriterWriteString(out, xml(texts.values[i]));
      xmlTextWriterEndElement(out);
    }
    xmlTextWriterEndDocument(out);
    xmlFreeTextWriter(out);
    require(xmlBufferLength(buffer) > state.range(0) * 60, "length");
    xmlBufferFree(buffer);
  }
  countItems(state, state.range(0));
}
#endif

#if HAVE_PUGIXML
struct TextSink : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

void writeByPugixml(benchmark::State& state) {
  const Texts<std::string>& texts = narrowTexts(state.range(0));
  for (auto _ : state) {
    pugi::xml_document document;
    const pugi::xml_node root = document.append_child("Root");
    pugi::xml_node group;
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) {
      const bool opens = i % fanOut == 0;
      if (opens) group = root;
      pugi::xml_node element = group.append_child(opens ? "Group" : "Element");
      element.append_attribute("id").set_value(texts.ids[i].c_str());
      element.append_attribute("name").set_value(texts.names[i].c_str());
      if (opens) {
        group = element;
      } else {
        element.append_child(pugi::node_pcdata).set_value(texts.values[i].c_str());
      }
    }
    TextSink sink;
    document.save(sink, "  ", pugi::format_indent | pugi::format_no_declaration);
    require(sink.text.size() > static_cast<std::size_t>(state.range(0)) * 60, "length");
  }
  countItems(state, state.range(0));
}
#endif

void registerWriter(const std::string& who, void (*measured)(benchmark::State&)) {
  benchmark::RegisterBenchmark(("write/indented/" + who).c_str(), measured)
      ->RangeMultiplier(10)
      ->Range(10'000, 1'000'000)
      ->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
  registerWriter("zel", write);
#if HAVE_LIBXML2
  registerWriter("libxml2", writeByLibxml2);
#endif
#if HAVE_PUGIXML
  registerWriter("pugixml", writeByPugixml);
#endif
  return true;
}();

}  // namespace
