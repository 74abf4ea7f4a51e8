// NodePart: an object that lies inside a node and keeps it alive while somebody holds it.
#pragma once

#include <cstdint>

#include "automation/Object.h"

namespace zelUtilities {

class NodePart : public Object {
 public:
  // Those of Object, without the virtual call.
  void retain() const {
    if (countUp()) node().retain();
  }
  void release() const {
    if (countDown()) node().release();
  }

 protected:
  explicit NodePart(const Object& node)
      : offset_(static_cast<std::uint32_t>(reinterpret_cast<const char*>(this) -
                                           reinterpret_cast<const char*>(&node))) {}
  ~NodePart() override = default;

  Object& node() const {
    return *reinterpret_cast<Object*>(reinterpret_cast<char*>(const_cast<NodePart*>(this)) - offset_);
  }

 private:
  void firstReference() final { node().retain(); }
  void lastReference() final { node().release(); }

  std::uint32_t offset_;  // from the node's first byte
};

}  // namespace zelUtilities
