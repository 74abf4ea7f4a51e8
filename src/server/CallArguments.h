// CallArguments: the arguments of a late-bound call, put in the member's order, and written back afterwards.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <array>
#include <span>
#include <vector>

#include "automation/ClassInfo.h"

namespace zelUtilities {

class CallArguments {
 public:
  // Arguments by name find their parameter; parameters in between are left out. The value of a put comes
  // last. Raises 448 for a name that is none of the member's or is given twice, 5 for an impossible record,
  // and 13 for a value that is no automation value.
  CallArguments(const Member& member, const DISPPARAMS& passed);

  std::span<Variant> values() { return values_; }

  // Stores what the call wrote into arguments that the client passed by reference.
  void writeBack();

 private:
  struct Origin {
    VARIANT* passed = nullptr;
    Variant before;              // only of references
    bool isScriptArray = false;  // converted for the call
  };
  static constexpr std::size_t usual = 8;

  void makeRoom(std::size_t count);
  void take(std::size_t position, VARIANT& passed);

  const Member& member_;
  std::span<Variant> values_;
  std::array<Variant, usual> few_;
  std::vector<Variant> many_;
  std::vector<Origin> origins_;  // only where a parameter is by reference
};

}  // namespace zelUtilities
