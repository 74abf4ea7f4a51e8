#include "foundation/ClassRegistry.h"

#include <atomic>

#include "automation/Error.h"
#include "automation/ThreadOwned.h"
#include "foundation/LibraryVersion.h"

namespace zelUtilities {

namespace {

const ClassRegistry emptyRegistry;
std::atomic<const ClassRegistry*> chosenRegistry{&emptyRegistry};

[[noreturn]] void refuse(StringView what) {
  throw Error(ErrorNumber::InternalError, u"ClassRegistry.add", what);
}

// The class's name behind "zelUtilities."; nothing where the text does not begin so.
std::optional<StringView> behindLibraryName(StringView name) {
  constexpr StringView library = libraryName;
  if (name.size() <= library.size() || name[library.size()] != u'.') return {};
  if (!equalFolded(name.substr(0, library.size()), library)) return {};
  return name.substr(library.size() + 1);
}

template <class Names>
auto valueUnder(const Names& names, StringView name) {
  const auto found = names.find(name);
  return found == names.end() ? typename Names::mapped_type{} : found->second;
}

}  // namespace

void ClassRegistry::add(const ClassInfo& info) {
  if (classByName_.contains(info.name())) refuse(u"the class " + info.name() + u" is there already");
  if (info.isGlobal()) {
    for (const Member& operation : info.members())
      if (operationByName_.contains(operation.name))
        refuse(u"the global operation " + operation.name + u" is there already");
  }
  addEnumerationsOf(info);
  classByName_.emplace(info.name(), &info);
  classes_.push_back(&info);
  if (!info.isGlobal()) return;
  for (const Member& operation : info.members())
    operationByName_.emplace(operation.name, GlobalOperation{&info, &operation});
}

void ClassRegistry::add(const EnumInfo& info) {
  if (valueUnder(enumerationByName_, info.name) == &info) return;
  if (enumerationByName_.contains(info.name)) refuse(u"the enumeration " + info.name + u" is there already");
  ByName<const EnumInfo*> values;
  for (const EnumInfo::Value& value : info.values) {
    const bool isNew = values.emplace(value.name, &info).second && !enumerationByValue_.contains(value.name);
    if (!isNew) refuse(u"the value " + value.name + u" of " + info.name + u" is there already");
  }
  enumerationByValue_.merge(values);
  enumerationByName_.emplace(info.name, &info);
  enumerations_.push_back(&info);
}

void ClassRegistry::addEnumerationsOf(const ClassInfo& info) {
  const auto addOne = [this](const TypeInfo& type) {
    if (type.enumeration) add(*type.enumeration());
  };
  for (const Member& member : info.members()) {
    addOne(member.result);
    for (const Parameter& parameter : member.parameters) addOne(parameter.type);
  }
  for (const EventInfo& event : info.events())
    for (const Parameter& parameter : event.parameters) addOne(parameter.type);
}

const ClassInfo* ClassRegistry::find(StringView name) const {
  return valueUnder(classByName_, behindLibraryName(name).value_or(name));
}

const EnumInfo* ClassRegistry::findEnumeration(StringView name) const {
  return valueUnder(enumerationByName_, name);
}

std::optional<ClassRegistry::GlobalOperation> ClassRegistry::findOperation(StringView name) const {
  const auto found = operationByName_.find(name);
  if (found == operationByName_.end()) return {};
  return found->second;
}

Ref<Object> ClassRegistry::create(StringView programmaticIdentifier) const {
  const std::optional<StringView> name = behindLibraryName(programmaticIdentifier);
  const ClassInfo* info = name ? valueUnder(classByName_, *name) : nullptr;
  if (!info) return {};
  if (info->isGlobal()) return instance(*info);
  return info->isCreatable() ? info->create() : Ref<Object>();
}

Ref<Object> ClassRegistry::instance(const ClassInfo& functionClass) {
  Ref<Object>& kept = ThreadOwned<std::map<const ClassInfo*, Ref<Object>>>::value()[&functionClass];
  if (!kept) {
    kept = functionClass.isCreatable() ? functionClass.create()
                                       : Ref<Object>(make<FunctionClass>(functionClass));
  }
  return kept;
}

const ClassRegistry& currentClassRegistry() { return *chosenRegistry.load(); }

void setCurrentClassRegistry(const ClassRegistry& registry) { chosenRegistry.store(&registry); }

}  // namespace zelUtilities
