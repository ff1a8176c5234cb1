// Keystrokes in the runtime's SendKeys notation, typed into whichever window
// has the keyboard focus (the client's, when the add-in runs inside it):
//   + Shift, ^ Ctrl, % Alt   held for the next key, or for a group "(...)"
//   ~                        Enter
//   {F9} {ENTER} {TAB 3}     a named key, optionally repeated
//   {+} {^} {%} {~} {(} {)} {{} {}}   those characters themselves
//   anything else            the character, as the keyboard layout types it
// So "%{F9}" is Alt+F9 and "^(ac)" is Ctrl+A, Ctrl+C.
//
// Windows only; UI thread.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace binding {

// The input events that type the keys, each key pressed and released in
// order; raises 5 (invalid procedure call) for text that is not the notation
// (an unknown key name, unbalanced braces or parentheses, a modifier with
// nothing to hold it for) or asks for more than kMaxKeyInputs events.
std::vector<INPUT> InputsOfKeys(std::string_view keys);
inline constexpr std::size_t kMaxKeyInputs = 4096;

// Types the keys into the foreground window (SendInput); raises 5 as above,
// and 70 (permission denied) when the system refuses the input.
void SendKeysToForeground(std::string_view keys);

}  // namespace binding
