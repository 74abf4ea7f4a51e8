// Machine: what and who runs the library, and where it keeps what is its own.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "automation/String.h"
#include "platform/Service.h"

namespace zelUtilities {

// The kinds of a computer's name, as the system numbers them; 4 to 7 are the same of the machine itself where
// it is one of a cluster.
namespace ComputerNameKind {
inline constexpr std::int32_t NetBios = 0;  // at most 15 units, in capitals
inline constexpr std::int32_t Host = 1;
inline constexpr std::int32_t Domain = 2;
inline constexpr std::int32_t Full = 3;  // host and domain
}  // namespace ComputerNameKind

struct SystemVersion {
  static constexpr std::uint32_t otherPlatform = 4;  // none of the system's that the library was made for

  std::uint32_t platform = otherPlatform;  // 0 to 2 as that system numbers itself
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
  std::uint32_t build = 0;
  String servicePack;  // up to its first NUL; a text without one does not count
};

// An identifier unlike any other.
struct Guid {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4{};
};

struct Machine {
  virtual ~Machine() = default;

  virtual std::uint32_t processId() = 0;
  // "" where the system does not say. Where the domain is unknown the full name is the host's. Nothing is
  // asked of the network.
  virtual String computerName(std::int32_t kind) = 0;
  // Who is logged on; "" where the system does not say.
  virtual String userName() = 0;
  // Nothing where the system does not say.
  virtual std::optional<SystemVersion> systemVersion() = 0;
  // Raises 51 where the system makes none.
  virtual Guid newGuid() = 0;

  // The folder of the library's own files (the log, the registry's store, the drive table), without a
  // separator at the end: what the environment variable ZELORA_HOME names, else a folder "zelora" among the
  // user's application data. It is created where it is missing; raises a file error when that fails.
  virtual String homeFolder() = 0;

  static Machine& system();
};

inline Machine& machine() { return Service<Machine>::inForce(); }

}  // namespace zelUtilities
