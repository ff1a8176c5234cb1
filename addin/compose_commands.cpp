// Connect: the compose window. Every compose window of an unsent mail gets a
// "Qorvane" button (on "Standard" right after Send, or on a bar of its own
// when "Standard" has no Send); pressing it schedules the mail: spell check
// as the client would before sending, recipients check, the schedule dialog,
// and the mail goes into the deferred folder.
#include "addin/connect.h"
#include "addin/frm_timer.h"
#include "base/runtime_error.h"
#include "dialogs/dialog_service.h"
#include "dialogs/hand_over.h"
#include "infra/cdebug.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "store/folder.h"
#include "store/marked_mails.h"
#include "store/sending.h"

using client::Require;

namespace {

constexpr const char* kButtonCaption = "Qorvane";
constexpr const char* kButtonTag = "KelmoraQorvane";
constexpr const char* kOwnBarButtonTag = "KelmoraQorvane2";
constexpr const char* kOwnBarName = "Qorvane";
constexpr const char* kStandardBar = "Standard";
// The client's Send command, and its id on some older versions.
constexpr long kSendControlId = 2617;
constexpr long kSendControlIdOld = 5469;
// The client's spelling command, and its id on some older versions.
constexpr long kSpellingControlId = 2;
constexpr long kSpellingControlIdOld = 2566;
// An application-defined error (the runtime's vbObjectError range).
constexpr std::int32_t kScheduleNotWritten = -2147221504 + 11;
// An item scheduled for a time already past goes out one second later.
constexpr long kRearmAfterSchedulingMs = 1000;

// The button shows the Send command's icon and the caption.
void SetUpButton(const client::Ref<client::CommandBarControl>& button, const char* tag) {
  button->Caption(kButtonCaption);
  button->FaceId(kSendControlId);
  button->Style(client::msoButtonIconAndCaption);
  button->Visible(true);
  button->Tag(tag);
}

client::Ref<client::CommandBarControl> FindById(const client::Ref<client::CommandBar>& bar, long id, long otherId) {
  auto control = bar->FindControl(0, id, "");
  return control ? control : bar->FindControl(0, otherId, "");
}

void RunSpellCheck(const client::Ref<client::Inspector>& inspector) {
  const auto bars = Require(inspector->CommandBars());
  auto spelling = bars->FindControl(0, kSpellingControlId, "");
  if (!spelling) spelling = bars->FindControl(0, kSpellingControlIdOld, "");
  if (!spelling) {
    g_debug.OutCustomError("QorvaneClick", "Cant find spell checking button in Menu Bar");
    return;
  }
  qorvane::Trap("QorvaneClick.ExecuteSpellCheck", [&] { spelling->Execute(); });
}

}  // namespace

void Connect::m_Inspectors_NewInspector(const client::Ref<client::Inspector>& inspector) {
  qorvane::GuardEntry("Connect.m_Inspectors_NewInspector", [&] {
    const auto item = Require(Require(inspector)->CurrentItem());
    if (item->Class() != client::olMail) return;
    g_debug.Out("NewMailInspector");
    AddComposeButtons(inspector, item);
  });
}

void Connect::AddComposeButtons(const client::Ref<client::Inspector>& inspector, const client::Ref<client::Item>& item) {
  if (m_UseRibbon) return;
  if (Require(item->AsMailItem())->Sent()) return;
  // The oldest generation cannot put buttons into a word-processor window.
  if (GetOutlookMajorVersion() == "9" && inspector->EditorType() == client::olEditorWord) return;
  const auto bars = Require(inspector->CommandBars());
  const auto standard = bars->Item(kStandardBar);
  const auto send = standard ? FindById(standard, kSendControlId, kSendControlIdOld) : nullptr;
  if (!send) {
    client::Ref<client::CommandBar> own;
    qorvane::IgnoreErrors([&] { own = bars->Item(kOwnBarName); });
    qorvane::Err.Clear();
    if (!own) {
      own = Require(bars->Add(kOwnBarName, client::msoBarTop, true));
      own->Visible(true);
    }
    // Looked up by tag first: a window hooked twice keeps one button.
    auto button = own->FindControl(0, 0, kOwnBarButtonTag);
    if (!button) {
      button = Require(Require(own->Controls())->Add(client::msoControlButton, 0, true));
      SetUpButton(button, kOwnBarButtonTag);
    }
    m_btnQorvane2.Set(button);
    return;
  }
  auto button = standard->FindControl(0, 0, kButtonTag);
  if (!button) {
    button = Require(Require(standard->Controls())->Add(client::msoControlButton, send->Index() + 1, true));
    SetUpButton(button, kButtonTag);
  }
  m_btnQorvane.Set(button);
}

void Connect::OnInspectorTimer() {
  qorvane::GuardEntry("Connect.OnInspectorTimer", [&] {
    if (closed_) return;
    frmTimer& form = TimerForm();
    if (!m_NoExplorer) {
      form.ctlInspectorTimer.Enabled(false);
      return;
    }
    g_debug.Out("->OnInspectorTimer");
    const auto inspectors = Require(Require(m_app())->Inspectors());
    const long count = inspectors->Count();
    if (count == 0) return;
    form.ctlInspectorTimer.Enabled(false);
    g_debug.Out("NewInspector.Detected");
    for (long i = 1; i <= count; ++i) m_Inspectors_NewInspector(inspectors->Item(i));
  });
}

void Connect::m_btnQorvane_Click() {
  qorvane::GuardEntry("Connect.QorvaneClick", [&] { QorvaneClick(false); });
}

void Connect::m_btnQorvane2_Click() {
  qorvane::GuardEntry("Connect.QorvaneClick", [&] { QorvaneClick(true); });
}

void Connect::RibbonQorvane_Click() {
  qorvane::GuardEntry("Connect.QorvaneClick", [&] { QorvaneClick(false); });
}

void Connect::QorvaneClick(bool keepOnTop) {
  g_debug.Out("->QorvaneClick");
  // No scheduler pass while the user is choosing; the scheduler comes back
  // one second after the command however it ends.
  const SchedulerPause pause(*this, kRearmAfterSchedulingMs);
  const auto inspector = Require(Require(m_app())->ActiveInspector());
  const auto item = Require(inspector->CurrentItem());
  const auto mail = Require(item->AsMailItem());

  if (qorvane::settings::ClientWantsSpellingCheck(GetOutlookMajorVersion()) && !inspector->IsWordMail())
    RunSpellCheck(inspector);

  if (!Main::CheckRecipients(mail)) return;

  const auto record = std::make_shared<CMailProps>();
  record->ReadProps(item);
  const client::WindowRect window = inspector->Rect();
  dialogs::BeginHandOver(record, keepOnTop,
                         dialogs::DialogRectFromPixels(window.Left, window.Top, window.Width, window.Height));
  struct SlotRelease {
    ~SlotRelease() { dialogs::EndHandOver(); }
  } releaseSlot;
  if (!dialogs::ShowScheduleDialog()) return;

  record->SetFirstOccurrence();
  // A mail that does not carry its schedule stays in its window, where the
  // user can try again, instead of waiting unscheduled in the folder.
  if (!record->WriteProps(item)) qorvane::Raise(kScheduleNotWritten, "the schedule could not be written; the mail stays open");
  const std::string subject = item->Subject();
  if (Require(item->Parent())->Name() == Main::kQorvaneFolderName) {
    inspector->Close(client::olSave);
  } else if (m_NoExplorer) {
    // Moved when a main window opens (SpecialDo at attachment).
    mSpecial::SpecialAdd(item);
    inspector->Close(client::olSave);
  } else {
    inspector->Close(client::olSave);
    item->Move(Require(Main::GetQorvaneFolder(true)));
  }
  g_debug.Out("Add new Qorvane mail(" + subject + ")");
}
