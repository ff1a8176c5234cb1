// The schema URL under which the client publishes a user property as a named
// property; views and DASL filters name user properties this way.
#pragma once

#include <string>
#include <string_view>

namespace Main {

inline constexpr const char* kPublicStringsNamespace =
    "http://schemas.microsoft.com/mapi/string/{00020329-0000-0000-C000-000000000046}";

inline std::string NamedPropertyUrl(std::string_view name) {
  return std::string(kPublicStringsNamespace) + "/" + std::string(name);
}

}  // namespace Main
