// The SendKeys notation turned into SendInput events.
#include "win/binding/send_keys.h"

#include <cstdint>
#include <string>

#include "base/runtime_error.h"
#include "base/runtime_text.h"
#include "win/com/wide_text.h"

namespace binding {
namespace {

constexpr std::int32_t kPermissionDenied = 70;

struct NamedKey {
  const char* name;
  WORD vk;
  bool extended;  // a key of the extended block (arrows, Insert, ...)
};

constexpr NamedKey kNamedKeys[] = {
    {"BACKSPACE", VK_BACK, false}, {"BS", VK_BACK, false},         {"BKSP", VK_BACK, false},
    {"BREAK", VK_CANCEL, true},    {"CAPSLOCK", VK_CAPITAL, false}, {"DELETE", VK_DELETE, true},
    {"DEL", VK_DELETE, true},      {"DOWN", VK_DOWN, true},        {"END", VK_END, true},
    {"ENTER", VK_RETURN, false},   {"ESC", VK_ESCAPE, false},      {"HELP", VK_HELP, false},
    {"HOME", VK_HOME, true},       {"INSERT", VK_INSERT, true},    {"INS", VK_INSERT, true},
    {"LEFT", VK_LEFT, true},       {"NUMLOCK", VK_NUMLOCK, true},  {"PGDN", VK_NEXT, true},
    {"PGUP", VK_PRIOR, true},      {"PRTSC", VK_SNAPSHOT, true},   {"RIGHT", VK_RIGHT, true},
    {"SCROLLLOCK", VK_SCROLL, false}, {"TAB", VK_TAB, false},      {"UP", VK_UP, true},
    {"ADD", VK_ADD, false},        {"SUBTRACT", VK_SUBTRACT, false}, {"MULTIPLY", VK_MULTIPLY, false},
    {"DIVIDE", VK_DIVIDE, true},
};

[[noreturn]] void NotNotation(std::string_view keys) {
  qorvane::Raise(qorvane::err::kInvalidCall, "Invalid procedure call or argument (SendKeys \"" + std::string(keys) + "\")");
}

class KeysParser {
 public:
  explicit KeysParser(std::string_view keys) : keys_(keys) {}

  std::vector<INPUT> Parse() {
    while (pos_ < keys_.size()) Item();
    return std::move(inputs_);
  }

 private:
  // One key, or a modified key or group.
  void Item() {
    const char c = keys_[pos_];
    switch (c) {
      case '+': case '^': case '%': Modified(); return;
      case '(': Group(); return;
      case '~': ++pos_; Tap(VK_RETURN, false); return;
      case '{': Braced(); return;
      case ')': case '}': NotNotation(keys_);
      default: Character(NextCodePoint()); return;
    }
  }

  void Modified() {
    std::vector<WORD> held;
    while (pos_ < keys_.size() && (keys_[pos_] == '+' || keys_[pos_] == '^' || keys_[pos_] == '%')) {
      const char c = keys_[pos_++];
      held.push_back(c == '+' ? VK_SHIFT : c == '^' ? VK_CONTROL : VK_MENU);
    }
    if (pos_ >= keys_.size()) NotNotation(keys_);
    for (WORD vk : held) Key(vk, false, false);
    ++holding_;
    Item();
    --holding_;
    for (auto vk = held.rbegin(); vk != held.rend(); ++vk) Key(*vk, false, true);
  }

  void Group() {
    ++pos_;
    while (pos_ < keys_.size() && keys_[pos_] != ')') Item();
    if (pos_ >= keys_.size()) NotNotation(keys_);
    ++pos_;
  }

  // {name}, {name count}, or a special character in braces ({}} included).
  void Braced() {
    const std::size_t open = pos_++;
    std::size_t close = keys_.find('}', pos_ == keys_.size() || keys_[pos_] != '}' ? pos_ : pos_ + 1);
    if (close == std::string_view::npos) NotNotation(keys_);
    const std::string_view inside = keys_.substr(open + 1, close - open - 1);
    pos_ = close + 1;
    const auto space = inside.find(' ');
    const std::string_view name = inside.substr(0, space);
    long count = 1;
    if (space != std::string_view::npos) {
      const std::string_view digits = inside.substr(space + 1);
      if (digits.empty() || digits.size() > 4) NotNotation(keys_);
      count = 0;
      for (char d : digits) {
        if (d < '0' || d > '9') NotNotation(keys_);
        count = count * 10 + (d - '0');
      }
    }
    if (name.empty()) NotNotation(keys_);
    for (long i = 0; i < count; ++i) Named(name);
  }

  void Named(std::string_view name) {
    for (const NamedKey& key : kNamedKeys) {
      if (qorvane::EqualsIgnoringCase(name, key.name)) return Tap(key.vk, key.extended);
    }
    if ((name[0] == 'F' || name[0] == 'f') && name.size() >= 2 && name.size() <= 3) {
      int number = 0;
      for (char d : name.substr(1)) {
        if (d < '0' || d > '9') NotNotation(keys_);
        number = number * 10 + (d - '0');
      }
      if (number >= 1 && number <= 16) return Tap(static_cast<WORD>(VK_F1 + number - 1), false);
      NotNotation(keys_);
    }
    // A single character in braces stands for itself ({+}, {~}, {{}).
    const std::wstring wide = qorvane::WideFromUtf8(name);
    if (wide.size() == 1 || (wide.size() == 2 && IS_HIGH_SURROGATE(wide[0]))) return Character(wide);
    NotNotation(keys_);
  }

  std::wstring NextCodePoint() {
    std::size_t length = 1;
    const auto lead = static_cast<unsigned char>(keys_[pos_]);
    if (lead >= 0xF0) length = 4;
    else if (lead >= 0xE0) length = 3;
    else if (lead >= 0xC0) length = 2;
    if (pos_ + length > keys_.size()) NotNotation(keys_);
    const std::wstring wide = qorvane::WideFromUtf8(keys_.substr(pos_, length));
    pos_ += length;
    if (wide.empty()) NotNotation(keys_);
    return wide;
  }

  // A character as the layout types it (with Shift when it needs it), or,
  // when no key of the layout gives it and no modifier is held, as text.
  void Character(const std::wstring& text) {
    if (text.size() == 1) {
      const SHORT scan = VkKeyScanW(text[0]);
      if (scan != -1) {
        const WORD vk = LOBYTE(scan);
        const bool shift = (HIBYTE(scan) & 1) != 0;
        if (shift) Key(VK_SHIFT, false, false);
        Tap(vk, false);
        if (shift) Key(VK_SHIFT, false, true);
        return;
      }
    }
    if (holding_ > 0) NotNotation(keys_);
    for (wchar_t unit : text) {
      for (bool up : {false, true}) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = unit;
        input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0);
        Add(input);
      }
    }
  }

  void Tap(WORD vk, bool extended) {
    Key(vk, extended, false);
    Key(vk, extended, true);
  }

  void Key(WORD vk, bool extended, bool up) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = vk;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(vk, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (extended ? KEYEVENTF_EXTENDEDKEY : 0) | (up ? KEYEVENTF_KEYUP : 0);
    Add(input);
  }

  void Add(const INPUT& input) {
    if (inputs_.size() >= kMaxKeyInputs) NotNotation(keys_.substr(0, 64));
    inputs_.push_back(input);
  }

  std::string_view keys_;
  std::size_t pos_ = 0;
  int holding_ = 0;
  std::vector<INPUT> inputs_;
};

}  // namespace

std::vector<INPUT> InputsOfKeys(std::string_view keys) { return KeysParser(keys).Parse(); }

void SendKeysToForeground(std::string_view keys) {
  std::vector<INPUT> inputs = InputsOfKeys(keys);
  if (inputs.empty()) return;
  const UINT sent = SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  if (sent != inputs.size()) qorvane::Raise(kPermissionDenied, "Permission denied (SendKeys)");
}

}  // namespace binding
