// Registry data as Variants. The log reads its settings through these while the registry operations report to
// the log, so they lie below both: they report nothing, and a failure is an answer.
#pragma once

#include "automation/Variant.h"
#include "platform/Registry.h"

namespace zelUtilities {

// The data as clients see it: a text (unexpanded; the parts of a multi-text stay separated by NULs), a byte
// array from 0, or a 32-bit integer. False, with the result as it was, for data of any other type.
bool readRegistryData(const RegistryValue& value, Variant& result);

// The value under a key; otherwise, the given fallback: where the key or the value does not exist or cannot
// be read, or its type is not supported.
Variant readRegistryValue(RegistryHandle root, StringView key, StringView name, const Variant& fallback);

}  // namespace zelUtilities
