// The SendKeys notation as input events: modifiers held around the next key
// or a group, named and repeated keys, characters in braces, characters the
// layout needs Shift for, and text that is not the notation.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "base/runtime_error.h"
#include "win/binding/send_keys.h"

namespace binding {
namespace {

// "Alt+ F9+ F9- Alt-": each event's key, + pressed, - released.
std::string Describe(const std::vector<INPUT>& inputs) {
  std::string text;
  for (const INPUT& input : inputs) {
    const KEYBDINPUT& key = input.ki;
    std::string name;
    if (key.dwFlags & KEYEVENTF_UNICODE) {
      name = "U" + std::to_string(key.wScan);
    } else if (key.wVk >= VK_F1 && key.wVk <= VK_F24) {
      name = "F" + std::to_string(key.wVk - VK_F1 + 1);
    } else {
      switch (key.wVk) {
        case VK_SHIFT: name = "Shift"; break;
        case VK_CONTROL: name = "Ctrl"; break;
        case VK_MENU: name = "Alt"; break;
        case VK_RETURN: name = "Enter"; break;
        case VK_TAB: name = "Tab"; break;
        case VK_LEFT: name = "Left*"; break;  // * an extended key
        default: name = std::string(1, static_cast<char>(key.wVk)); break;
      }
      if ((key.dwFlags & KEYEVENTF_EXTENDEDKEY) && name.back() != '*') name += "*";
    }
    if (!text.empty()) text += ' ';
    text += name + ((key.dwFlags & KEYEVENTF_KEYUP) ? "-" : "+");
  }
  return text;
}

TEST(SendKeysTest, NotationBecomesKeysPressedAndReleasedInOrder) {
  const std::tuple<const char*, const char*> cases[] = {
      {"%{F9}", "Alt+ F9+ F9- Alt-"},
      {"%{f5}", "Alt+ F5+ F5- Alt-"},
      {"~", "Enter+ Enter-"},
      {"{ENTER}{tab 2}", "Enter+ Enter- Tab+ Tab- Tab+ Tab-"},
      {"^(ac)", "Ctrl+ A+ A- C+ C- Ctrl-"},
      {"+^a", "Shift+ Ctrl+ A+ A- Ctrl- Shift-"},
      {"^ab", "Ctrl+ A+ A- Ctrl- B+ B-"},
      {"A", "Shift+ A+ A- Shift-"},
      {"{+}", "Shift+ \xBB+ \xBB- Shift-"},  // '+' is Shift and the '=' key (VK_OEM_PLUS)
      {"{{}{}}", "Shift+ \xDB+ \xDB- Shift- Shift+ \xDD+ \xDD- Shift-"},
      {"{LEFT}", "Left*+ Left*-"},
      {"\xC3\xA9", "U233+ U233-"},  // no key of the layout types it: sent as text
      {"", ""},
  };
  for (const auto& [keys, expected] : cases) {
    try {
      EXPECT_EQ(Describe(InputsOfKeys(keys)), expected) << keys;
    } catch (const qorvane::RuntimeError& error) {
      ADD_FAILURE() << keys << ": " << error.what();
    }
  }
}

TEST(SendKeysTest, TextThatIsNotTheNotationRaisesInvalidCall) {
  for (const char* keys : {"{F9", "F9}", "{NOPE}", "{F17}", "{F0}", "(ab", "ab)", "%", "{ENTER x}", "{ENTER 99999}",
                           "{}", "%\xC3\xA9", "\xC3"}) {
    try {
      InputsOfKeys(keys);
      ADD_FAILURE() << keys << " raised nothing";
    } catch (const qorvane::RuntimeError& error) {
      EXPECT_EQ(error.Number(), qorvane::err::kInvalidCall) << keys;
    }
  }
}

TEST(SendKeysTest, ALongRepeatIsRefusedInsteadOfFloodingTheInput) {
  EXPECT_EQ(InputsOfKeys("{TAB 2048}").size(), kMaxKeyInputs);
  try {
    InputsOfKeys("{TAB 2049}");
    ADD_FAILURE() << "raised nothing";
  } catch (const qorvane::RuntimeError& error) {
    EXPECT_EQ(error.Number(), qorvane::err::kInvalidCall);
  }
}

}  // namespace
}  // namespace binding
