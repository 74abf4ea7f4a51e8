// Dialogs: what the library shows to the user.
//
// Where the system has no user interface, title and text go to standard error and every box is answered
// with OK. A program with an interface of its own puts its Dialogs in force with Service<Dialogs>::replace.
#pragma once

#include <cstdint>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

namespace MessageBoxStyle {
inline constexpr std::int32_t Exclamation = 48;  // with an OK button
}
namespace MessageBoxAnswer {
inline constexpr std::int32_t Ok = 1;
}

struct Dialogs {
  virtual ~Dialogs() = default;

  // Shows a modal box and returns the number of the button that closed it. Never raises.
  virtual std::int32_t messageBox(StringView text, StringView title, std::int32_t style) = 0;

  static Dialogs& system();
};

inline std::int32_t messageBox(StringView text, StringView title,
                               std::int32_t style = MessageBoxStyle::Exclamation) {
  return Service<Dialogs>::inForce().messageBox(text, title, style);
}

}  // namespace zelUtilities
