#include "datalist/DatalistClasses.h"

#include "datalist/zelNodeList.h"

namespace zelUtilities {

void registerDatalist(ClassRegistry& registry) {
  for (const ClassInfo* info :
       {&zelNodeList::describeClass(), &zelNode::describeClass(), &zelNodes::describeClass(),
        &zelCell::describeClass(), &zelCells::describeClass(), &zelNodeListColumn::describeClass(),
        &zelNodeListColumns::describeClass(), &zelCellButton::describeClass(),
        &zelCellButtons::describeClass(), &zelUOMNodeListFilter::describeClass()})
    registry.add(*info);
}

}  // namespace zelUtilities
