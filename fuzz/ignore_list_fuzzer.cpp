// Fuzz target: the ignore list as kept in the settings store ("IgnoreList",
// the names attached folders skip, separated by commas).
//
// The text is read with FromString. Then: ToString read back gives the same
// list (the round trip is idempotent), every name held is found, each piece
// of the text between commas is found exactly when it has a name in it,
// names are held once and never hold a comma, and Add refuses what is held.
// The ignore list lives in infra/ once it has moved there from dialogs/.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#if __has_include("infra/ignore_list.h")
#include "infra/ignore_list.h"
#else
#include "dialogs/ignore_list.h"
#endif
#include "fuzz/fuzz_support.h"

using qorvane::fuzz::Check;

namespace {

// Names are trimmed of spaces only, as the runtime's Trim does; a tab is a
// character of the name.
bool Blank(std::string_view piece) { return piece.find_first_not_of(' ') == std::string_view::npos; }

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CIgnoreList list;
  list.FromString(text);

  const std::string saved = list.ToString();
  CIgnoreList again;
  again.FromString(saved);
  Check(again.Names() == list.Names(), "\"" + saved + "\" reads back as another list");
  Check(again.ToString() == saved, "\"" + saved + "\" is not written back the same");

  std::unordered_set<std::string> seen;
  for (const std::string& name : list.Names()) {
    Check(!name.empty() && name.find(',') == std::string::npos, "a held name is empty or holds a comma");
    Check(seen.insert(name).second, "\"" + name + "\" is held twice");
    Check(list.Find(name), "\"" + name + "\" is held but not found");
    Check(!list.Add(name), "\"" + name + "\" is held but Add takes it again");
  }
  for (std::string_view rest = text;;) {
    const std::size_t comma = rest.find(',');
    const std::string_view piece = rest.substr(0, comma);
    Check(list.Find(piece) == !Blank(piece), "\"" + std::string(piece) + "\" is found wrongly");
    if (comma == std::string_view::npos) break;
    rest.remove_prefix(comma + 1);
  }
  return 0;
}
