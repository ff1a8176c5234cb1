// UTF-8 <-> UTF-16, the one conversion of the Windows code: the add-in keeps
// text as UTF-8, Windows' wide APIs and BSTRs hold UTF-16. Windows code only.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace qorvane {

inline std::wstring WideFromUtf8(std::string_view utf8) {
  if (utf8.empty()) return {};
  const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), length);
  return wide;
}

// length < 0: up to the terminating zero.
inline std::string Utf8FromWide(const wchar_t* wide, int length = -1) {
  if (!wide) return {};
  if (length < 0) length = lstrlenW(wide);
  if (length == 0) return {};
  const int size = WideCharToMultiByte(CP_UTF8, 0, wide, length, nullptr, 0, nullptr, nullptr);
  std::string utf8(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wide, length, utf8.data(), size, nullptr, nullptr);
  return utf8;
}

}  // namespace qorvane
