// XmlLimits: how far a document may go, for the implementations of Xml; the system's readers bound too
// little.
#pragma once

#include <cstdint>

#include "platform/Xml.h"

namespace zelUtilities {

class XmlLimits {
 public:
  // So much of the document was read, and so much given to the handler; in one unit or nearly so.
  void took(std::size_t units) { most_ += 10 * std::uint64_t{units}; }
  void gave(std::size_t units) { given_ += units; }
  // An element, too, is something given; entities can hold many.
  void entered() {
    ++depth_;
    ++given_;
  }
  void left() { --depth_; }

  bool exceeded() const { return depth_ > deepestXmlElement || given_ > most_; }
  StringView sentence() const {
    return depth_ > deepestXmlElement ? u"Elements are nested more than 5000 deep."
                                      : u"The document's entities stand for too much.";
  }

 private:
  static constexpr std::uint64_t harmless = 10'000'000;

  std::uint64_t most_ = harmless;  // that may be given
  std::uint64_t given_ = 0;
  int depth_ = 0;
};

}  // namespace zelUtilities
