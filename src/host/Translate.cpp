#include "host/Translate.h"

#include "automation/Conversions.h"
#include "automation/ItemWalk.h"
#include "host/LateCall.h"

namespace zelUtilities::host {

namespace {

String languageKeys(Object& table) {
  const Variant languages = call(table, u"Languages");
  const Ref<Enumerator> walk = itemsOf(&objectIn(languages));
  String keys;
  for (Variant language; walk->next(language);)
    keys += (keys.empty() ? u"" : u", ") + toText(call(objectIn(language), u"Key"));
  return keys.empty() ? String(u"no languages") : u"only " + keys;
}

}  // namespace

void translate(const ClassRegistry& registry, const String& file, const String& language,
               const TextName& name, Console& console) {
  const Ref<Object> table = create(registry, u"zelGlobalization");
  if (!toBoolean(call(*table, u"Load", file)))
    return console.complain(file + u" cannot be read as a translation file");
  if (!toBoolean(call(*table, u"SelectLanguage", language)))
    return console.complain(file + u" has no language " + language + u", " + languageKeys(*table));
  const auto text = [&](StringView ifMissing) {
    return toText(call(*table, u"Translate", name.section, name.control, name.part, name.use, ifMissing));
  };
  // What is missing answers with whatever default it is given.
  const String found = text(u"");
  if (found.empty() && !text(u"missing").empty())
    return console.complain(file + u" has no text for " + name.use + u" of \"" + name.control +
                            (name.part.empty() ? String() : u"\", \"" + name.part) + u"\" in \"" +
                            name.section + u"\"");
  console.print(found);
}

}  // namespace zelUtilities::host
