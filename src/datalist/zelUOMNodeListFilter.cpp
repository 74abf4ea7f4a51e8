#include "datalist/zelUOMNodeListFilter.h"

#include "automation/Binder.h"

namespace zelUtilities {

void zelUOMNodeListFilter::set(bool bSimple, bool bComposite, bool bFavorites, bool bCanCustom,
                               std::int32_t eNumeratorDomains, std::int32_t eDenominatorDomains) {
  simpleUnits_ = bSimple;
  compositeUnits_ = bComposite;
  favoriteUnits_ = bFavorites;
  numeratorDomains_ = eNumeratorDomains;
  denominatorDomains_ = eDenominatorDomains;
  canCustom_ = bCanCustom;
}

const ClassInfo& zelUOMNodeListFilter::describeClass() {
  using T = zelUOMNodeListFilter;
  static const ClassInfo info =
      describe<T>("zelUOMNodeListFilter", "Which units of measure a chooser offers.")
          .creatable()
          .property("SimpleUnits", &T::SimpleUnits, &T::setSimpleUnits, "Offer simple units.")
          .property("CompositeUnits", &T::CompositeUnits, &T::setCompositeUnits, "Offer composite units.")
          .property("FavoriteUnits", &T::FavoriteUnits, &T::setFavoriteUnits,
                    "Offer the user's favourite units.")
          .property("CanCustom", &T::CanCustom, &T::setCanCustom, "The user may enter a unit of his own.")
          .property("NumeratorDomains", &T::NumeratorDomains, &T::setNumeratorDomains,
                    "The unit domains offered above the fraction line, as flags.")
          .property("DenominatorDomains", &T::DenominatorDomains, &T::setDenominatorDomains,
                    "The unit domains offered below the fraction line, as flags.");
  return info;
}

}  // namespace zelUtilities
