// Message boxes the add-in shows the user, through one replaceable service
// so that the simulated client can record them instead of showing them.
//
// Lifecycle: the platform's own box is current until SetMessageBox installs
// another (which must outlive its use); SetMessageBox(nullptr) restores it.
// UI thread only.
#pragma once

#include <string>

namespace qorvane {

// Buttons and icons, the runtime's values.
inline constexpr long vbOKOnly = 0;
inline constexpr long vbOKCancel = 1;
inline constexpr long vbYesNoCancel = 3;
inline constexpr long vbYesNo = 4;
inline constexpr long vbCritical = 16;
inline constexpr long vbQuestion = 32;
inline constexpr long vbExclamation = 48;
inline constexpr long vbInformation = 64;
inline constexpr long vbSystemModal = 4096;

// Answers.
inline constexpr long vbOK = 1;
inline constexpr long vbCancel = 2;
inline constexpr long vbYes = 6;
inline constexpr long vbNo = 7;

inline constexpr const char* kMessageBoxTitle = "Qorvane";

class MessageBoxService {
 public:
  virtual ~MessageBoxService() = default;
  virtual long Show(const std::string& prompt, long buttons, const std::string& title) = 0;
};

MessageBoxService& PlatformMessageBox();
MessageBoxService& CurrentMessageBox();
void SetMessageBox(MessageBoxService* service);

// MsgBox(prompt, buttons, title) through the current service.
long MsgBox(const std::string& prompt, long buttons = vbOKOnly, const std::string& title = kMessageBoxTitle);

}  // namespace qorvane
