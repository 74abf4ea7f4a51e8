#include "automation/ClassInfo.h"

#include <algorithm>
#include <array>

#include "automation/ArrayData.h"
#include "automation/CaseFolding.h"
#include "automation/Error.h"

namespace zelUtilities {

namespace {

[[noreturn]] void refuse(const ClassTable& table, StringView what) {
  throw Error(ErrorNumber::InternalError, table.name, String(what));
}

// Few names, so that comparing each with each is quickest.
template <class Named>
void checkNames(const ClassTable& table, const std::vector<Named>& named, const String& where) {
  for (auto one = named.begin(); one != named.end(); ++one) {
    const auto isSame = [one](const Named& other) { return equalFolded(one->name, other.name); };
    if (std::any_of(named.begin(), one, isSame)) refuse(table, one->name + u" is described twice" + where);
  }
}

void checkParameters(const ClassTable& table, const Member& member) {
  checkNames(table, member.parameters, u" in " + member.name);
  bool optionalSeen = false;
  for (const Parameter& parameter : member.parameters) {
    if (optionalSeen && !parameter.optional)
      refuse(table, u"a required parameter follows an optional one in " + member.name);
    optionalSeen = optionalSeen || parameter.optional;
  }
}

// The value that a left-out optional argument counts as.
Variant leftOut(const Parameter& parameter) {
  if (parameter.hasDefault) return parameter.defaultValue;
  if (!parameter.optional) throw Error(ErrorNumber::ArgumentNotOptional);
  if (parameter.type.array) return ArrayData::create(parameter.type.kind, {});
  switch (parameter.type.kind) {
    case VariantKind::Variant:
      return Variant::missing();
    case VariantKind::String:
      return u"";
    case VariantKind::Object:
      return nullptr;
    case VariantKind::Boolean:
      return false;
    case VariantKind::Date:
      return Variant::date(0);
    default:
      return std::int32_t{0};
  }
}

// A member's arguments, completed from the defaults; few need memory of their own.
class CompleteArguments {
 public:
  CompleteArguments(const Member& member, std::span<Variant> given, std::size_t count) : given_(given) {
    const auto isComplete = [&] {
      return given.size() == count &&
             std::none_of(given.begin(), given.end(), [](const Variant& value) { return value.isMissing(); });
    };
    if (isComplete()) return;
    copied_ = true;
    std::span<Variant> complete = room(count);
    const bool hasValue = count > member.parameters.size();  // a put's value comes last
    if (hasValue && !given.empty()) given_ = given.first(given.size() - 1);
    for (std::size_t i = 0; i < member.parameters.size(); ++i)
      complete[i] = i < given_.size() && !given[i].isMissing() ? given[i] : leftOut(member.parameters[i]);
    if (hasValue)
      complete[count - 1] = given.empty() ? throw Error(ErrorNumber::ArgumentNotOptional) : given.back();
    complete_ = complete;
  }

  std::span<Variant> values() { return copied_ ? complete_ : given_; }
  void writeBack(const Member& member) {
    if (!copied_) return;
    for (std::size_t i = 0; i < member.parameters.size() && i < given_.size(); ++i)
      if (member.parameters[i].type.byReference) given_[i] = complete_[i];
  }

 private:
  std::span<Variant> room(std::size_t count) {
    if (count <= few_.size()) return std::span(few_).first(count);
    many_.resize(count);
    return many_;
  }

  std::span<Variant> given_;
  std::span<Variant> complete_;
  bool copied_ = false;
  std::array<Variant, 8> few_;
  std::vector<Variant> many_;
};

bool asksFor(InvokeKind kind, InvokeKind what) {
  return (static_cast<unsigned>(kind) & static_cast<unsigned>(what)) != 0;
}

// An object may be written either way where the member offers only one. A client that asks for both leaves
// the choice to the value.
const Callable& callableFor(const Member& member, InvokeKind kind, std::span<const Variant> arguments) {
  const bool byValue = asksFor(kind, InvokeKind::Put);
  const bool byReference = asksFor(kind, InvokeKind::PutRef);
  const bool isObject = !arguments.empty() && arguments.back().isObject();
  const Callable* chosen = &member.get;
  if (byReference && (isObject || !byValue)) {
    chosen = member.putRef ? &member.putRef : &member.put;
  } else if (byValue) {
    chosen = member.put || !isObject ? &member.put : &member.putRef;
  }
  if (!*chosen) throw Error(ErrorNumber::ObjectDoesNotSupport);
  return *chosen;
}

// list.Columns("A"): arguments that the member does not take are for the result's default member.
Variant invokeResult(Object& self, const Member& member, std::span<Variant> arguments) {
  const VariantKind kind = member.result.kind;
  if (kind != VariantKind::Object && kind != VariantKind::Variant)  // the member is not even called
    throw Error(ErrorNumber::WrongNumberOfArguments);
  const Variant result = invokeMember(self, member, InvokeKind::MethodOrGet, {});
  if (!result.isObject()) throw Error(ErrorNumber::WrongNumberOfArguments);
  if (!result.object()) throw Error(ErrorNumber::ObjectNotSet);
  return result.object()->Invoke({}, InvokeKind::MethodOrGet, arguments);
}

}  // namespace

ClassInfo::ClassInfo(ClassTable table) : table_(std::move(table)) {
  std::int32_t lastId = 0;
  for (Member& member : table_.members) {
    if (member.id != Member::enumeratorId && member.id != Member::defaultId) member.id = ++lastId;
    member.hash = foldedHash(member.name);
    if (index_.find(member.name)) refuse(table_, member.name + u" is described twice");
    index_.insert(&member);
  }
  std::int32_t lastEvent = 0;
  for (EventInfo& event : table_.events) event.id = ++lastEvent;
  check();
}

void ClassInfo::check() const {
  const auto countOf = [this](std::int32_t id) {
    return std::count_if(table_.members.begin(), table_.members.end(),
                         [id](const Member& member) { return member.id == id; });
  };
  if (countOf(Member::defaultId) > 1) refuse(table_, u"two default members");
  if (countOf(Member::enumeratorId) > 1) refuse(table_, u"two enumerators");
  for (const Member& member : table_.members) checkParameters(table_, member);
  checkNames(table_, table_.events, u" among the events");
}

Ref<Object> ClassInfo::create() const {
  if (!table_.create) throw Error(ErrorNumber::CannotCreateObject);
  return table_.create();
}

const Member* ClassInfo::find(StringView name) const {
  return name.empty() ? find(Member::defaultId) : index_.find(name);
}

const Member* ClassInfo::find(std::int32_t id) const {
  const auto found = std::find_if(table_.members.begin(), table_.members.end(),
                                  [id](const Member& member) { return member.id == id; });
  return found == table_.members.end() ? nullptr : &*found;
}

Variant invokeMember(Object& self, const Member& member, InvokeKind kind, std::span<Variant> arguments) {
  const Callable& callable = callableFor(member, kind, arguments);
  const bool isPut = &callable != &member.get;
  const std::size_t count = member.parameters.size() + (isPut ? 1 : 0);
  if (arguments.size() > count) {
    if (isPut || !member.parameters.empty()) throw Error(ErrorNumber::WrongNumberOfArguments);
    return invokeResult(self, member, arguments);
  }
  CompleteArguments complete(member, arguments, count);
  Variant result = callable(&self, complete.values());
  complete.writeBack(member);
  return result;
}

Variant Object::Invoke(StringView name, InvokeKind kind, std::span<Variant> arguments) {
  const ClassInfo* info = classInfo();
  const Member* member = info ? info->find(name) : nullptr;
  if (!member) throw Error(ErrorNumber::ObjectDoesNotSupport);
  return invokeMember(*this, *member, kind, arguments);
}

}  // namespace zelUtilities
