// zelUOMNodeListFilter: which units a unit-of-measure chooser offers for a cell. The library only
// stores these settings; the domain flags are those of the unit-of-measure library.
#pragma once

#include "automation/ClassInfo.h"

namespace zelUtilities {

class zelUOMNodeListFilter : public Object {
 public:
  static const ClassInfo& describeClass();
  const ClassInfo* classInfo() const override { return &describeClass(); }

  // Offer simple units, composite units, the user's favourite units: initially True.
  bool SimpleUnits() const { return simpleUnits_; }
  void setSimpleUnits(bool value) { simpleUnits_ = value; }
  bool CompositeUnits() const { return compositeUnits_; }
  void setCompositeUnits(bool value) { compositeUnits_ = value; }
  bool FavoriteUnits() const { return favoriteUnits_; }
  void setFavoriteUnits(bool value) { favoriteUnits_ = value; }
  // The user may enter a unit of his own: initially False.
  bool CanCustom() const { return canCustom_; }
  void setCanCustom(bool value) { canCustom_ = value; }
  // Sets of unit-domain flags: initially 0x403F and 0x7FFF.
  std::int32_t NumeratorDomains() const { return numeratorDomains_; }
  void setNumeratorDomains(std::int32_t value) { numeratorDomains_ = value; }
  std::int32_t DenominatorDomains() const { return denominatorDomains_; }
  void setDenominatorDomains(std::int32_t value) { denominatorDomains_ = value; }

  // All six at once, as columns and cells offer it.
  void set(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom, std::int32_t eNumeratorDomains,
           std::int32_t eDenominatorDomains);

 private:
  bool simpleUnits_ = true;
  bool compositeUnits_ = true;
  bool favoriteUnits_ = true;
  bool canCustom_ = false;
  std::int32_t numeratorDomains_ = 0x403F;
  std::int32_t denominatorDomains_ = 0x7FFF;
};

}  // namespace zelUtilities
