// Fuzz target: the POSIX registry file (the .reg export text the add-in keeps
// its settings in, ~/.config/qorvane/registry.reg).
//
// First the text form alone: text that parses must format to text that
// parses back to the same tree and formats the same again. Then the text as
// the registry's file: open every key of every hive, enumerate and read
// every value through CWinReg as the add-in does, write and delete a value,
// create and delete a key and a sub-tree; afterwards the file the registry
// wrote must parse. A file that does not parse is set aside by the registry,
// which then starts empty; that is fine, a crash or a hang is not.
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "infra/cwinreg.h"
#include "platform/reg_text.h"
#include "platform/registry.h"

namespace reg = qorvane::registry;
using qorvane::fuzz::Check;

namespace {

// Enough to reach into any file the fuzzer writes and to keep a run short.
constexpr int kMaxDepth = 6;
constexpr int kMaxKeys = 200;

void CheckTextRoundTrip(const std::string& text) {
  reg::RegTree tree;
  std::string reason;
  if (!reg::ParseRegText(text, tree, reason)) return;
  const std::string formatted = reg::FormatRegText(tree);
  reg::RegTree again;
  Check(reg::ParseRegText(formatted, again, reason), "formatted text does not parse: " + reason);
  Check(again == tree, "formatted text parses to another tree");
  Check(reg::FormatRegText(again) == formatted, "formatting is not stable");
}

// Reads every value of the key and its sub-keys, as the tool's "list" does.
void Walk(CWinReg::HKEY hive, const std::string& path, int depth, int& keys) {
  if (++keys > kMaxKeys || depth > kMaxDepth) return;
  CWinReg key;
  if (!key.InitForRead(hive, path)) return;
  for (std::uint32_t i = 0;; ++i) {
    const std::string name = key.Values(i);
    if (name.empty()) break;
    key.ValueType(name);
    key.ReadString(name);
    key.ReadLong(name, 0);
    key.ReadBool(name);
  }
  std::vector<std::string> subkeys;
  for (std::uint32_t i = 0;; ++i) {
    const std::string name = key.Keys(i);
    if (name.empty()) break;
    subkeys.push_back(name);
  }
  for (const std::string& name : subkeys) Walk(hive, path.empty() ? name : path + "\\" + name, depth + 1, keys);
}

// The first sub-key of HKCU, if any, is changed the way the add-in changes
// its own key.
void Change() {
  CWinReg root;
  if (!root.InitForAllAccess(CWinReg::HKEY_CURRENT_USER, "", false)) return;
  const std::string first = root.Keys(0);
  if (first.empty()) return;
  CWinReg key;
  if (!key.InitForWrite(CWinReg::HKEY_CURRENT_USER, first, true)) return;
  if (key.WriteString("NextOccurence", "3/3/2025 9:30:00 AM")) {
    Check(key.ReadString("NextOccurence") == "3/3/2025 9:30:00 AM", "a written string reads back otherwise");
  }
  key.WriteLong("FirstDOW", 1);
  key.DeleteValue("NextOccurence");
  CWinReg child;
  if (child.InitForAllAccess(key.Handle(), "Fuzz\\Deeper", true)) child.CloseKey();
  key.DeleteKeyRec("Fuzz");
  key.CloseKey();
  root.DeleteKeyRec(first);
}

std::string FileText() {
  std::ifstream file(qorvane::fuzz::ScratchRegistryFile(), std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void IgnoreCorruption(const std::string&, const std::string&) {}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qorvane::fuzz::QuietLog();
  qorvane::fuzz::UseScratchRegistry();
  reg::SetCorruptionReporter(&IgnoreCorruption);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CheckTextRoundTrip(text);

  qorvane::fuzz::RemoveScratchRegistry();
  {
    std::ofstream file(qorvane::fuzz::ScratchRegistryFile(), std::ios::binary | std::ios::trunc);
    file << text;
  }
  int keys = 0;
  for (const CWinReg::HKEY hive : {CWinReg::HKEY_CLASSES_ROOT, CWinReg::HKEY_CURRENT_USER, CWinReg::HKEY_LOCAL_MACHINE})
    Walk(hive, "", 0, keys);
  Change();
  const std::string written = FileText();
  reg::RegTree tree;
  std::string reason;
  Check(written.empty() || reg::ParseRegText(written, tree, reason),
        "the registry wrote a file it cannot read: " + reason);
  return 0;
}
