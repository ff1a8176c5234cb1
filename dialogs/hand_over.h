// The hand-over between an opener of the schedule dialogs (the compose
// window's button, the main window's options entry) and the dialogs: one
// shared slot with the record being edited, the result flag, the
// keep-on-top flag and the opener's rectangle.
//
// The opener fills the slot (BeginHandOver), shows the dialog for the record
// (dialogs::ShowScheduleDialog, dialog_service.h), reads the result, and
// empties the slot (EndHandOver). The one-time and the recurrence dialog read
// and write the record in the slot; OK in either writes the record and sets
// the result flag to True (-1), and either may hand over to the other, which
// then answers through the same flag.
//
// Lifecycle: process-wide, one command at a time, UI thread only. Tests that
// change it restore it (it is plain data: save a copy, put it back).
#pragma once

#include <cstdint>
#include <memory>

#include "schedule/mail_props.h"

// The runtime's 16-bit Booleans, as the flag has always been kept.
inline constexpr std::int16_t kHandOverTrue = -1;
inline constexpr std::int16_t kHandOverFalse = 0;

// A window in the dialogs' units (twips).
struct DialogRect {
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Width = 0;
  std::int32_t Height = 0;
  friend bool operator==(const DialogRect&, const DialogRect&) = default;
};

struct DialogHandOver {
  std::shared_ptr<CMailProps> m_MailProps;  // the record being edited; null between commands
  std::int16_t m_Result = kHandOverFalse;   // True after OK
  bool m_OnTop = false;                     // the dialog is made topmost
  DialogRect m_OpenerRect;                  // where the dialog centres itself

  bool Confirmed() const noexcept { return m_Result != kHandOverFalse; }
};

extern DialogHandOver g_HandOver;

namespace dialogs {

// A client window's pixel rectangle in the dialogs' units: left and width by
// the screen's horizontal units per pixel, top and height by the vertical
// one, each rounded to a 32-bit integer (screen_metrics.h).
DialogRect DialogRectFromPixels(long left, long top, long width, long height);

// The opener's side: the record goes into the slot, the result flag is
// cleared, the keep-on-top flag and the rectangle are set.
void BeginHandOver(std::shared_ptr<CMailProps> record, bool keepOnTop, const DialogRect& opener);
// The slot lets go of the record.
void EndHandOver();

// The dialogs' side: OK.
void ConfirmHandOver();

}  // namespace dialogs
